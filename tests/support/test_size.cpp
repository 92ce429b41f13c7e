#include "support/test_size.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <map>
#include <string_view>

namespace test_size {
namespace {

#if defined(_WIN32)
constexpr bool kSlow = true;
#else
constexpr bool kSlow = false;
#endif

std::map<std::string, int> &counts() {
    static std::map<std::string, int> counted;
    return counted;
}

class AtEnd : public testing::Environment {
  public:
    void TearDown() override {
        for (const auto &[what, number] : counts()) {
            std::cout << what << ": " << number << "\n";
            std::string key = "count_" + what;
            std::ranges::replace(key, ' ', '_');
            testing::Test::RecordProperty(key, number);
        }
    }
};

[[maybe_unused]] const auto *const at_end = testing::AddGlobalTestEnvironment(new AtEnd);

}  // namespace

bool full() {
    const char *size = std::getenv("KS_TEST_SIZE");
    return size != nullptr && std::string_view(size) == "full";
}

int random_acts() {
    return kSlow && !full() ? 2400 : 24000;
}

bool wipe_in_every_layout() {
    return !kSlow || full();
}

void count(const std::string &what, int number) {
    counts()[what] += number;
}

}  // namespace test_size

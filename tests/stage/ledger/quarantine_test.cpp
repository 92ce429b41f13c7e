#include "stage/ledger/quarantine.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "stage/ledger/strict.h"

namespace stage_test {
namespace {

constexpr std::size_t kBlock = std::size_t{256} << 10;
constexpr std::size_t kBlocks = 32;  // eight times what one look at the newest takes

struct FreedBlocks {
    FreedBlocks() {
        for (std::size_t i = 0; i < kBlocks; ++i) {
            stage::Bytes bytes = pool->take(kBlock);
            known.push_back(bytes.get());
            quarantine.take(std::move(bytes), kBlock, known.back(), "block " + std::to_string(i),
                            "freeing");
        }
    }

    // Checks until something is found; how many that took.
    int checks_until_found() {
        for (int checks = 1; checks <= 1000; ++checks) {
            quarantine.check("later", false);
            if (!strict.violations().empty()) return checks;
        }
        return -1;
    }

    std::shared_ptr<stage::BytePool> pool = std::make_shared<stage::BytePool>();
    stage::Strict strict;
    stage::Quarantine quarantine{strict, "use_after_free", kBlock *kBlocks};
    std::vector<std::uint8_t *> known;
};

TEST(Quarantine, write_into_a_block_just_freed_is_found_at_once) {
    FreedBlocks freed;
    freed.known.back()[kBlock - 1] = 1;
    EXPECT_EQ(freed.checks_until_found(), 1);
}

TEST(Quarantine, write_into_any_older_block_is_found_in_turn) {
    for (std::size_t i = 0; i < kBlocks; ++i) {
        FreedBlocks freed;
        for (std::size_t checks = 0; checks < i; ++checks) freed.quarantine.check("before", false);
        freed.known[i][7] = 1;
        const int checks = freed.checks_until_found();
        EXPECT_GE(checks, 1) << i;
        EXPECT_LE(checks, static_cast<int>(kBlock * kBlocks / stage::kBytesOfCheck)) << i;
    }
}

TEST(Quarantine, last_check_looks_at_everything) {
    for (std::size_t i = 0; i < kBlocks; ++i) {
        FreedBlocks freed;
        freed.known[i][7] = 1;
        freed.quarantine.check("last", true);
        ASSERT_EQ(freed.strict.violations().size(), 1u) << i;
    }
}

TEST(Quarantine, write_into_a_block_is_found_when_it_is_let_go) {
    FreedBlocks freed;
    freed.known.front()[7] = 1;
    freed.quarantine.take(freed.pool->take(kBlock), kBlock, nullptr, "one more", "freeing");
    EXPECT_EQ(freed.strict.violations().size(), 1u);
}

}  // namespace
}  // namespace stage_test

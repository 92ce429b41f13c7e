// A host with its suites and two small worlds, for tests of the pixel services.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "hostapi/host.h"
#include "stage/pixels/pixel_view.h"
#include "stage/services/suites/serving_host.h"
#include "stage/services/utility_callbacks.h"

namespace stage_test {

class SuiteFixture : public testing::Test {
  protected:
    template <class Suite>
    const Suite *suite(const char *name, std::int32_t number) {
        bool as_null = false;
        const void *table = host.suites.acquire(name, number, &as_null);
        EXPECT_NE(table, nullptr) << name << " " << number;
        return static_cast<const Suite *>(table);
    }

    /// A world of the host, cleared.
    PF_EffectWorld world(int width, int height, stage::Depth depth) {
        return host.worlds.create(width, height, depth, {8, 4, false})->def;
    }

    template <class Pixel>
    static Pixel &at(PF_EffectWorld &world, int x, int y) {
        auto *row = reinterpret_cast<std::byte *>(world.data) + std::ptrdiff_t{y} * world.rowbytes;
        return reinterpret_cast<Pixel *>(row)[x];
    }

    std::vector<std::string> checks() const {
        std::vector<std::string> names;
        for (const stage::Finding &finding : host.strict.all()) names.push_back(finding.check);
        return names;
    }
    using Names = std::vector<std::string>;

    stage::ServingHost host;
    PF_UtilCallbacks *utils = stage::utility_callbacks();
};

}  // namespace stage_test

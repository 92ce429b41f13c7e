// A surface on the doubles of the host and of GDI+, whose calls stand in one log.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "plugin/draw/draw_world.h"
#include "plugin/draw/gdiplus_double.h"

namespace draw_test {

using Log = std::vector<std::string>;

class CallsTest : public testing::Test {
  protected:
    CallsTest() { gdiplus() = {}; }
    ~CallsTest() override {
        EXPECT_EQ(gdiplus().alive.size(), 0u) << "GDI+ objects are left";
        EXPECT_EQ(gdiplus().misuse, Log{});
    }

    static gdiplus_double::State &gdiplus() { return gdiplus_double::state(); }

    PF_Err create() { return ks::draw::create_surface(&host.in, &host.out, surface); }
    PF_Err release() { return ks::draw::release_surface(&host.in, &host.out, surface); }

    // The calls since the last look.
    Log take_log() { return std::exchange(host.calls.log, {}); }

    DrawHost host;
    World<ks::Pixel8> world{4, 2};
    ks::draw::DrawSurface surface =
        ks::draw::describe_surface(host.in, ks::kFormat8, world.world, 1.0);
};

}  // namespace draw_test

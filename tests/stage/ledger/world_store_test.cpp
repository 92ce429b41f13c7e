#include "stage/ledger/world_store.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <stdexcept>

#include "hostapi/constants.h"
#include "stage/ledger/strict.h"

namespace stage {
namespace {

const std::string kCommand = "PF_Cmd_TEST";

class WorldStoreTest : public testing::Test {
  protected:
    using Names = std::vector<std::string>;
    Names checks() const {
        Names names;
        for (const Finding &finding : strict.all()) names.push_back(finding.check);
        return names;
    }
    static std::uint8_t *row(const World &world, int y) {
        return reinterpret_cast<std::uint8_t *>(world.def.data) +
               std::ptrdiff_t{y} * world.def.rowbytes;
    }

    Strict strict;
    WorldStore store{strict};
};

TEST_F(WorldStoreTest, depths_have_their_sizes_and_codes) {
    EXPECT_EQ(bytes_per_pixel(Depth::U8), 4);
    EXPECT_EQ(bytes_per_pixel(Depth::U16), 8);
    EXPECT_EQ(bytes_per_pixel(Depth::Float), 16);
    EXPECT_EQ(pixel_format(Depth::U8), 0x62677261);
    EXPECT_EQ(pixel_format(Depth::U16), 0x36316561);
    EXPECT_EQ(pixel_format(Depth::Float), 0x32336561);
}

TEST_F(WorldStoreTest, record_of_a_new_world) {
    const World *world = store.create(7, 5, Depth::U16, {16, 0, true});
    EXPECT_EQ(world->def.width, 7);
    EXPECT_EQ(world->def.height, 5);
    EXPECT_EQ(world->def.rowbytes, 7 * 8 + 16);
    EXPECT_EQ(world->def.world_flags, PF_WorldFlag_DEEP | PF_WorldFlag_WRITEABLE);
    EXPECT_EQ(world->def.extent_hint.right, 7);
    EXPECT_EQ(world->def.extent_hint.bottom, 5);
    EXPECT_EQ(world->def.pix_aspect_ratio.num, 1);
    EXPECT_EQ(store.create(1, 1, Depth::Float, {})->def.world_flags, PF_WorldFlag_WRITEABLE);
}

TEST_F(WorldStoreTest, base_offset_is_counted_from_a_64_byte_boundary) {
    for (const int offset : {0, 4, 20, 60}) {
        const World *world = store.create(3, 3, Depth::Float, {4, offset, true});
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(world->def.data) % 64,
                  static_cast<std::uintptr_t>(offset));
    }
}

TEST_F(WorldStoreTest, odd_layouts_are_rounded_up_to_channel_alignment) {
    const World *world = store.create(3, 3, Depth::Float, {1, 2, true});
    EXPECT_EQ(world->def.rowbytes, 3 * 16 + 4);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(world->def.data) % 64, 4u);
}

TEST_F(WorldStoreTest, new_pixels_are_poison_until_written) {
    for (const Depth depth : {Depth::U8, Depth::U16, Depth::Float}) {
        const World *world = store.create(4, 3, depth, {8, 4, true});
        EXPECT_TRUE(is_poison(*world, 0, 0));
        EXPECT_TRUE(is_poison(*world, 3, 2));
        row(*world, 2)[3 * bytes_per_pixel(depth) + 1] ^= 1;
        EXPECT_FALSE(is_poison(*world, 3, 2));
        EXPECT_TRUE(is_poison(*world, 2, 2));
    }
    EXPECT_FALSE(is_poison(*store.create(1, 1, Depth::U8, {0, 0, false}), 0, 0));
}

TEST_F(WorldStoreTest, cleared_worlds_are_transparent_black) {
    const World *world = store.create_for_plugin(5, 2, Depth::U16, true, {16, 0, true}, kCommand);
    ASSERT_NE(world, nullptr);
    for (int y = 0; y < 2; ++y) {
        for (int i = 0; i < 5 * 8; ++i) EXPECT_EQ(row(*world, y)[i], 0);
    }
    store.check(kCommand);
    EXPECT_EQ(checks(), Names{});
    EXPECT_TRUE(
        is_poison(*store.create_for_plugin(1, 1, Depth::U8, false, {0, 0, true}, kCommand), 0, 0));
}

TEST_F(WorldStoreTest, sizes_outside_1_to_30000_are_refused) {
    for (const int side : {0, -1, 30001, -2147483647}) {
        EXPECT_EQ(store.create_for_plugin(side, 1, Depth::U8, false, {}, kCommand), nullptr);
        EXPECT_EQ(store.create_for_plugin(1, side, Depth::U8, false, {}, kCommand), nullptr);
        EXPECT_THROW(store.create(side, 1, Depth::U8, {}), std::invalid_argument);
    }
    EXPECT_NE(store.create_for_plugin(30000, 1, Depth::U8, false, {}, kCommand), nullptr);
}

TEST_F(WorldStoreTest, the_largest_float_world_is_more_than_the_limit) {
    // 14.4 GB: the product needs 64 bits.
    EXPECT_EQ(store.create_for_plugin(30000, 30000, Depth::Float, false, {}, kCommand), nullptr);
    store.size_limit = 100 * 4 * 10;
    EXPECT_NE(store.create_for_plugin(100, 10, Depth::U8, false, {}, kCommand), nullptr);
    EXPECT_EQ(store.create_for_plugin(100, 10, Depth::U8, false, {4, 0, true}, kCommand), nullptr);
}

TEST_F(WorldStoreTest, worlds_are_found_by_their_pixels_through_a_copied_record) {
    World *world = store.create_for_plugin(3, 3, Depth::U8, true, {}, kCommand);
    const PF_EffectWorld copy = world->def;
    EXPECT_EQ(store.find(&copy), world);
    EXPECT_EQ(store.plugin_worlds(), std::vector<const World *>{world});
    PF_EffectWorld empty{};
    EXPECT_EQ(store.find(&empty), nullptr);
    EXPECT_EQ(store.find(nullptr), nullptr);
    store.destroy(world, kCommand);
    EXPECT_EQ(store.find(&copy), nullptr);
    EXPECT_EQ(store.freed_label(&copy), "the world of 3x3 argb8");
    EXPECT_TRUE(store.plugin_worlds().empty());
    store.destroy(nullptr, kCommand);
    EXPECT_EQ(checks(), Names{});
}

TEST_F(WorldStoreTest, worlds_of_the_stage_are_no_leak) {
    store.create(3, 3, Depth::U8, {});
    EXPECT_TRUE(store.plugin_worlds().empty());
}

TEST_F(WorldStoreTest, writes_outside_the_pixels_are_found_wherever_they_fall) {
    struct Place {
        int y, byte;
    };
    constexpr int kPixels = 3 * 4, kRow = kPixels + 16;
    for (const Place place :
         {Place{0, -1}, Place{0, kPixels}, Place{1, kRow - 1}, Place{3, 0}, Place{3, 60}}) {
        for (const bool check_first : {true, false}) {
            World *world = store.create(3, 3, Depth::U8, {16, 8, true});
            row(*world, 0)[place.y * kRow + place.byte] ^= 0x10;
            if (check_first) store.check(kCommand);
            store.destroy(world, kCommand);
            // Once, whichever looks first.
            EXPECT_EQ(checks(), Names{"world.guard"}) << place.y << " " << place.byte;
            strict.clear();
        }
    }
}

TEST_F(WorldStoreTest, any_change_of_a_protected_world_is_found_once) {
    World *world = store.create(5, 4, Depth::U16, {8, 0, true});
    store.protect(world);
    EXPECT_EQ(world->def.world_flags & PF_WorldFlag_WRITEABLE, 0);
    store.check(kCommand);
    EXPECT_EQ(checks(), Names{});
    row(*world, 3)[5 * 8 - 1] ^= 0x80;
    store.check(kCommand);
    store.check(kCommand);
    EXPECT_EQ(checks(), Names{"world.read_only"});
}

TEST_F(WorldStoreTest, every_single_bit_counts_in_a_protected_world) {
    for (const Depth depth : {Depth::U8, Depth::U16, Depth::Float}) {
        // 13 pixels: not a whole number of the steps that the checksum takes.
        World *world = store.create(13, 2, depth, {8, 4, true});
        store.protect(world);
        for (int y = 0; y < 2; ++y) {
            for (int i = 0; i < 13 * bytes_per_pixel(depth) * 8; ++i) {
                row(*world, y)[i / 8] ^= static_cast<std::uint8_t>(1 << i % 8);
                store.check(kCommand);
                EXPECT_EQ(checks(), Names{"world.read_only"}) << y << " " << i;
                strict.clear();
            }
        }
    }
}

TEST_F(WorldStoreTest, poison_is_counted_pixel_by_pixel) {
    for (const Depth depth : {Depth::U8, Depth::U16, Depth::Float}) {
        const World *world = store.create(7, 3, depth, {8, 0, true});
        EXPECT_EQ(count_poison(*world), 21);
        row(*world, 0)[0] ^= 1;
        row(*world, 2)[7 * bytes_per_pixel(depth) - 1] ^= 1;
        EXPECT_EQ(count_poison(*world), 19);
    }
    EXPECT_EQ(count_poison(*store.create(7, 3, Depth::U8, {0, 0, false})), 0);
}

TEST_F(WorldStoreTest, pixels_can_be_kept_beyond_their_world) {
    for (const bool checks_on : {true, false}) {
        strict.enabled = checks_on;
        World *world = store.create(100, 300, Depth::U16, {24, 12, true});
        const PF_EffectWorld record = world->def;
        row(*world, 299)[99 * 8 + 3] = 77;
        std::uint8_t *stale = row(*world, 0);
        const HostPixels pixels = store.destroy_and_keep(world, kCommand);
        EXPECT_EQ(store.find(&record), nullptr);
        EXPECT_EQ(pixels.width, 100);
        EXPECT_EQ(pixels.height, 300);
        EXPECT_EQ(pixels.depth, Depth::U16);
        EXPECT_EQ(pixels.view().row<std::uint8_t>(299)[99 * 8 + 3], 77);
        EXPECT_EQ(checks(), Names{});
        if (!checks_on) continue;
        // What is kept is a copy: a late writer neither harms it nor goes unseen.
        const std::uint8_t before = *pixels.data;
        stale[0] = 1;
        EXPECT_EQ(*pixels.data, before);
        store.check(kCommand);
        EXPECT_EQ(checks(), Names{"world.use_after_free"});
        strict.clear();
    }
    EXPECT_TRUE(store.destroy_and_keep(nullptr, kCommand).empty());
}

TEST_F(WorldStoreTest, damage_is_found_when_pixels_are_kept) {
    World *world = store.create(3, 3, Depth::U8, {16, 0, true});
    row(*world, 1)[3 * 4] ^= 1;
    store.destroy_and_keep(world, kCommand);
    EXPECT_EQ(checks(), Names{"world.guard"});
}

TEST_F(WorldStoreTest, memory_of_an_earlier_world_is_poison_in_the_next) {
    strict.enabled = false;
    World *world = store.create(200, 200, Depth::U8, {});
    std::memset(world->def.data, 5, 200 * 4);
    store.destroy(world, kCommand);
    EXPECT_EQ(count_poison(*store.create(200, 200, Depth::U8, {})), 200 * 200);
}

TEST_F(WorldStoreTest, writing_to_a_disposed_world_is_found) {
    World *world = store.create_for_plugin(8, 8, Depth::U8, true, {}, kCommand);
    std::uint8_t *stale = row(*world, 4);
    store.destroy(world, kCommand);
    EXPECT_EQ(stale[0], 0xDD);
    stale[0] = 1;
    store.check(kCommand);
    EXPECT_EQ(checks(), Names{"world.use_after_free"});
}

TEST_F(WorldStoreTest, pictures_go_in_and_out_at_every_depth) {
    Picture picture = make_picture(2, 2, SampleType::Float);
    for (std::size_t i = 0; i < picture.argb.size(); ++i) {
        picture.argb[i] = static_cast<float>(i % 2);  // exact at every depth
    }
    for (const Depth depth : {Depth::U8, Depth::U16, Depth::Float}) {
        World *world = store.create(2, 2, depth, {12, 4, true});
        to_rows(picture, depth, world->def.data, world->def.rowbytes);
        EXPECT_EQ(world_picture(*world).argb, picture.argb);
    }
    store.check(kCommand);
    EXPECT_EQ(checks(), Names{});
}

}  // namespace
}  // namespace stage

// What workers do per run of samples, and the sums over counters; memory.
#include <gtest/gtest.h>

#include <limits>
#include <numeric>
#include <random>

#include "scopes/merge/column_sums.h"
#include "scopes/sampling/arena.h"
#include "scopes/sampling/counting.h"

namespace ks {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInf = std::numeric_limits<float>::infinity();

template <class P>
class SampleBlockTest : public testing::Test {};
using PixelTypes = testing::Types<Pixel8, Pixel16, PixelF>;
TYPED_TEST_SUITE(SampleBlockTest, PixelTypes);

TYPED_TEST(SampleBlockTest, loads_every_count_at_every_step) {
    using Channel = typename PixelTraits<TypeParam>::Channel;
    std::vector<TypeParam> row(64 * 4);
    for (std::size_t i = 0; i < row.size(); ++i) {
        const auto code = [&](std::size_t k) { return static_cast<Channel>((i * 4 + k) % 251); };
        row[i] = {code(0), code(1), code(2), code(3)};
    }
    for (const int step : {1, 2, 4}) {
        for (int count = 1; count <= SampleBlock::kSize; ++count) {
            // Nothing behind the last sample is read: the run ends with the memory.
            const std::vector<TypeParam> run(row.begin(), row.begin() + (count - 1) * step + 1);
            SampleBlock block;
            load_block(run.data(), step, count, block);
            ASSERT_EQ(block.count, count);
            for (int i = 0; i < count; ++i) {
                const Colour want = to_colour(row[static_cast<std::size_t>(i * step)]);
                ASSERT_EQ(block.alpha[i], want.alpha);
                ASSERT_EQ(block.red[i], want.red);
                ASSERT_EQ(block.green[i], want.green);
                ASSERT_EQ(block.blue[i], want.blue);
            }
            for (int i = count; i < (count + 3) / 4 * 4; ++i) ASSERT_EQ(block.red[i], 0.0f);
        }
    }
}

SampleBlock block_of(const std::vector<PixelF> &pixels) {
    SampleBlock block;
    load_block(pixels.data(), 1, static_cast<int>(pixels.size()), block);
    return block;
}

TEST(SampleBlockLuma, is_summed_from_left_to_right_in_single_precision) {
    std::mt19937 random(51);
    std::uniform_real_distribution<float> any(-0.5f, 2.0f);
    for (const LumaMath math : {LumaMath::k601, LumaMath::k709}) {
        std::vector<PixelF> pixels(63);
        for (PixelF &p : pixels) p = {1.0f, any(random), any(random), any(random)};
        SampleBlock block = block_of(pixels);
        fill_luma(math, block);
        for (std::size_t i = 0; i < pixels.size(); ++i) {
            const PixelF &p = pixels[i];
            const float y = math == LumaMath::k709
                                ? 0.2126f * p.red + 0.7152f * p.green + 0.0722f * p.blue
                                : 0.299f * p.red + 0.587f * p.green + 0.114f * p.blue;
            EXPECT_EQ(block.luma[i], y);
            EXPECT_EQ(block.blue_y[i], p.blue - y);
            EXPECT_EQ(block.red_y[i], p.red - y);
        }
    }
}

TEST(SampleBlockLuma, neutral_samples_have_no_difference) {
    std::vector<PixelF> pixels;
    for (int i = 0; i < 60; ++i) {
        const float v = static_cast<float>(i) / 47.0f;
        pixels.push_back({1.0f, v, v, v});
    }
    pixels.push_back({1.0f, kInf, kInf, kInf});
    pixels.push_back({1.0f, -kInf, -kInf, -kInf});
    SampleBlock block = block_of(pixels);
    fill_luma(LumaMath::k601, block);
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        EXPECT_EQ(block.blue_y[i], 0.0f);
        EXPECT_EQ(block.red_y[i], 0.0f);
    }
}

TEST(SampleBlockRange, any_channel_above_the_limit_counts_and_nan_does_not) {
    const float over = std::nextafterf(kOverRange, 2.0f);
    const auto check = [](PixelF pixel, bool with_luma = false) {
        SampleBlock block = block_of({{}, {}, {}, {}, pixel});
        fill_luma(LumaMath::k601, block);
        return any_over_range(block, with_luma);
    };
    EXPECT_FALSE(check({1, kOverRange, kOverRange, kOverRange}));
    EXPECT_TRUE(check({1, over, 0, 0}));
    EXPECT_TRUE(check({1, 0, over, 0}));
    EXPECT_TRUE(check({1, 0, 0, over}));
    EXPECT_FALSE(check({over, 0, 0, 0}));
    EXPECT_FALSE(check({1, kNan, kNan, kNan}, true));
    EXPECT_TRUE(check({1, kNan, kInf, 0}));
    EXPECT_FALSE(check({1, -kInf, -5, 0}));
}

TEST(CountingTest, bins_of_four_at_once_are_those_of_one) {
    std::vector<PixelF> pixels;
    for (const float v : {0.0f, -0.0f, 1e-45f, 1.0f, 1.00001f, 0.5f, kNan, kInf, -kInf, -1.0f,
                          1e30f, -1e30f, 0.999999f}) {
        pixels.push_back({1.0f, v, 1.0f - v, v * 0.5f});
    }
    const SampleBlock block = block_of(pixels);
    std::vector<std::uint32_t> sets(kStripBins), bins(kBinSetCells), want(kBinSetCells);
    count_bins<3>({block.red, block.green, block.blue}, block.count, sets.data());
    for (std::size_t i = 0; i < sets.size(); ++i) bins[i % bins.size()] += sets[i];
    for (const PixelF &p : pixels) {
        std::size_t channel = 0;
        for (const float v : {p.red, p.green, p.blue}) {
            const int bin = histogram_bin(v);
            ++want[channel++ * kBinStride + static_cast<std::size_t>(bin < 0 ? 256 : bin)];
        }
    }
    EXPECT_EQ(bins, want);
}

// ---- colour cells ----

TEST(ColourCellTest, integer_sums_stop_at_their_end_in_any_order) {
    ColourCell<Pixel16> a{}, b{}, both{};
    const __m128 bright = _mm_setr_ps(1.0f, 2.0f, 0.5f, 0.25f);  // alpha, red, green, blue
    for (int i = 0; i < 3; ++i) a.add(bright, 1.0f);
    for (int i = 0; i < 2; ++i) b.add(bright, 1.0f);
    for (int i = 0; i < 5; ++i) both.add(bright, 1.0f);
    EXPECT_EQ(a.red, 65535);  // 3 times full scale, the most that one plot adds
    EXPECT_EQ(a.green, 49152);
    EXPECT_EQ(a.blue, 24576);
    EXPECT_EQ(a.weight, 192);
    a.merge(b);
    EXPECT_EQ(std::memcmp(&a, &both, sizeof a), 0);
}

TEST(ColourCellTest, float_sums_survive_whatever_is_added) {
    ColourCell<PixelF> cell{};
    cell.add(_mm_setr_ps(kNan, kNan, kInf, -kInf), 1.0f);
    EXPECT_EQ(cell.weight, 0);
    EXPECT_EQ(ColourCell<PixelF>::channel(cell.red), 0.0f);
    EXPECT_EQ(ColourCell<PixelF>::channel(cell.green), 64.0f);
    EXPECT_EQ(ColourCell<PixelF>::channel(cell.blue), -64.0f);
    cell.add(_mm_setr_ps(1.0f, 0.25f, 3e38f, 0.0f), 0.5f);
    EXPECT_EQ(ColourCell<PixelF>::channel(cell.red), 0.125f);
    EXPECT_EQ(ColourCell<PixelF>::channel(cell.green), 128.0f);
}

// ---- sums over cells ----

std::vector<std::uint16_t> some_cells(std::size_t count, std::uint32_t seed) {
    std::mt19937 random(seed);
    std::vector<std::uint16_t> cells(count);
    for (std::size_t i = 0; i < count; ++i) {
        // Whole runs of eight stay empty, which the sums skip.
        if (i / 8 % 3 != 1)
            cells[i] = static_cast<std::uint16_t>(random() % 4 == 0 ? 65535 : random() % 9);
    }
    return cells;
}

TEST(ColumnSumsTest, scaled_sums) {
    const std::vector<std::uint16_t> cells = some_cells(64, 61);
    std::vector<float> a(64, 1.0f), b(64, 2.0f), c(64, 3.0f);
    add_scaled<3>(cells.data(), 64, {2.0f, 0.0f, 7.0f}, {a.data(), b.data(), c.data()});
    for (std::size_t i = 0; i < 64; ++i) {
        EXPECT_EQ(a[i], 1.0f + 2.0f * static_cast<float>(cells[i]));
        EXPECT_EQ(b[i], 2.0f);
        EXPECT_EQ(c[i], 3.0f + 7.0f * static_cast<float>(cells[i]));
    }
}

TEST(ColumnSumsTest, planes_add_up_apart_and_together_up_to_65535) {
    const std::vector<std::uint16_t> cells = some_cells(3 * 40, 62);
    std::vector<float> sums(4 * 40, 5.0f);
    float *const at[4] = {&sums[0], &sums[40], &sums[80], &sums[120]};
    add_planes(cells.data(), 40, 3.0f, 2.0f, at);
    for (std::size_t i = 0; i < 40; ++i) {
        const unsigned all = cells[i] + cells[40 + i] + cells[80 + i];
        for (std::size_t k = 0; k < 3; ++k) {
            EXPECT_EQ(at[k][i], 5.0f + 3.0f * static_cast<float>(cells[k * 40 + i]));
        }
        EXPECT_EQ(at[3][i], 5.0f + 2.0f * static_cast<float>(std::min(all, 65535u)));
    }
}

TEST(ColumnSumsTest, counts) {
    const std::vector<std::uint16_t> cells = some_cells(48, 63);
    std::vector<std::uint32_t> sums(48, 70000);
    add_counts(cells.data(), 48, sums.data());
    for (std::size_t i = 0; i < 48; ++i) EXPECT_EQ(sums[i], 70000u + cells[i]);
}

// ---- memory ----

TEST(ArenaTest, arrays_start_on_lines_of_their_own_inside_the_block) {
    ArenaPlan plan;
    const auto a = plan.reserve<std::uint16_t>(3);
    const auto b = plan.reserve<std::uint32_t>(100);
    const auto none = plan.reserve<std::uint32_t>(0);
    const auto c = plan.reserve<std::byte>(1);
    std::vector<std::byte> memory(plan.bytes() + 16);
    for (std::size_t shift = 0; shift < 16; ++shift) {  // blocks come aligned to anything
        std::byte *const block = memory.data() + shift;
        const Arena arena(block);
        std::byte *last = block;
        for (std::byte *const at : {reinterpret_cast<std::byte *>(arena.at(a)),
                                    reinterpret_cast<std::byte *>(arena.at(b)), arena.at(c)}) {
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(at) % ArenaPlan::kLine, 0u);
            EXPECT_GE(at, last);
            last = at + 1;
        }
        EXPECT_GE(
            reinterpret_cast<std::byte *>(arena.at(b)) - reinterpret_cast<std::byte *>(arena.at(a)),
            64);
        EXPECT_LE(arena.at(c) + c.count, block + plan.bytes());
    }
    EXPECT_EQ(none.count, 0u);
}

}  // namespace
}  // namespace ks

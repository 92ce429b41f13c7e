#include "entry/rect_union.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

std::vector<int> united(PF_LRect into, PF_LRect rect) {
    ks::unite(into, rect);
    return {into.left, into.top, into.right, into.bottom};
}

TEST(UniteRects, two_rectangles_become_their_bounding_box) {
    EXPECT_EQ(united({10, 20, 30, 40}, {0, 25, 15, 60}), (std::vector<int>{0, 20, 30, 60}));
    EXPECT_EQ(united({10, 20, 30, 40}, {15, 25, 20, 30}), (std::vector<int>{10, 20, 30, 40}));
    EXPECT_EQ(united({-5, -6, -1, -2}, {1, 2, 3, 4}), (std::vector<int>{-5, -6, 3, 4}));
}

TEST(UniteRects, empty_destination_becomes_a_copy_even_of_an_empty_source) {
    for (PF_LRect empty : {PF_LRect{0, 0, 0, 0}, {5, 0, 5, 9}, {0, 5, 9, 5}, {9, 9, 1, 1}}) {
        EXPECT_EQ(united(empty, {1, 2, 3, 4}), (std::vector<int>{1, 2, 3, 4}));
        EXPECT_EQ(united(empty, {7, 7, 7, 9}), (std::vector<int>{7, 7, 7, 9}));
    }
}

TEST(UniteRects, empty_source_leaves_a_destination_alone) {
    for (PF_LRect empty : {PF_LRect{0, 0, 0, 0}, {50, 0, 50, 9}, {0, 50, 9, 50}, {99, 99, 1, 1}}) {
        EXPECT_EQ(united({1, 2, 3, 4}, empty), (std::vector<int>{1, 2, 3, 4}));
    }
}

}  // namespace

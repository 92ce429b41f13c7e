// The model itself, on sequences whose outcome was worked out by hand.
#include "whole/actions/order_model.h"

#include <gtest/gtest.h>

namespace actions {
namespace {

std::string order(const OrderModel &model) {
    return to_text(model.bytes());
}

TEST(OrderModel, adds_in_front_and_closes_the_gap_of_what_is_removed) {
    OrderModel model;
    model.show(5, true, false);
    EXPECT_EQ(order(model), "5, 1, 2, 3, 0; count 4");
    model.show(2, false, true);
    EXPECT_EQ(order(model), "5, 1, 3, 0, 0; count 3");
    EXPECT_TRUE(model.promised());
}

TEST(OrderModel, removing_from_a_full_list_moves_the_count_byte_up) {
    OrderModel model;
    model.show(4, true, false);
    model.show(5, true, false);
    model.show(4, false, true);
    EXPECT_EQ(order(model), "5, 1, 2, 3, 5; count 4") << "the fifth entry is stale";
}

TEST(OrderModel, removing_what_is_absent_costs_the_last_entry_and_the_promise) {
    OrderModel model;
    model.show(5, false, false);
    EXPECT_EQ(order(model), "1, 2, 3, 0, 0; count 2");
    EXPECT_FALSE(model.promised());
    model.reset(kDefaultBoxes);
    EXPECT_TRUE(model.promised());
}

TEST(OrderModel, moving_to_the_front_shifts_those_before) {
    OrderModel model;
    model.to_front(3, kDefaultBoxes);
    EXPECT_EQ(order(model), "3, 1, 2, 0, 0; count 3");
    model.to_front(3, kDefaultBoxes);
    EXPECT_EQ(order(model), "3, 1, 2, 0, 0; count 3");
    model.to_front(5, kDefaultBoxes);
    EXPECT_EQ(order(model), "5, 1, 2, 0, 0; count 3");
    EXPECT_FALSE(model.promised());
}

TEST(OrderModel, undo_ends_the_promise_until_a_frame_finds_another_number) {
    OrderModel model;
    model.show(5, true, false);
    Boxes boxes = kDefaultBoxes;
    boxes[5] = true;
    model.history_moved(boxes, kDefaultBoxes);
    EXPECT_FALSE(model.promised());
    model.rendered(kDefaultBoxes);
    EXPECT_EQ(order(model), "1, 3, 2, 0, 0; count 3") << "a frame lists the parade second";
    EXPECT_TRUE(model.promised());
    model.rendered(kDefaultBoxes);
    EXPECT_EQ(order(model), "1, 3, 2, 0, 0; count 3");
}

TEST(OrderModel, reset_alone_promises_nothing_while_the_boxes_differ) {
    OrderModel model;
    Boxes boxes = kDefaultBoxes;
    boxes[1] = false;
    model.reset(boxes);
    EXPECT_EQ(order(model), "1, 2, 3, 0, 0; count 3");
    EXPECT_FALSE(model.promised());
}

}  // namespace
}  // namespace actions

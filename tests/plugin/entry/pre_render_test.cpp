#include <cstring>

#include "plugin/entry/entry_fixture.h"

namespace {

class PreRender : public EntryTest {
  protected:
    PreRender() {
        pre_input.output_request.rect = {1, 2, 300, 400};
        pre_input.output_request.field = PF_Field_LOWER;
        pre_input.output_request.channel_mask = 15;
        pre_input.output_request.preserve_rgb_of_zero_alpha = 1;
        pre_input.output_request.reserved[3] = 99;
        input_result.result_rect = {10, 20, 110, 220};
        input_result.max_result_rect = {0, 0, 1920, 1080};
        original_result.result_rect = {-500, -500, 5000, 5000};
        original_result.max_result_rect = {-500, -500, 5000, 5000};
    }
    PF_Err pre_render() { return send(PF_Cmd_SMART_PRE_RENDER, &pre_extra); }
    static std::vector<int> sides(const PF_LRect &r) { return {r.left, r.top, r.right, r.bottom}; }
};

TEST_F(PreRender, asks_for_input_and_original_at_the_commands_time) {
    EXPECT_EQ(pre_render(), 0);
    EXPECT_EQ(host.calls.log,
              (Log{"checkout_layer 0 as 0 at -7/0/600", "checkout_layer 10 as 10 at -7/0/600"}));
}

TEST_F(PreRender, passes_the_whole_request_on_to_both) {
    pre_render();
    ASSERT_EQ(requests.size(), 2u);
    for (const PF_RenderRequest &request : requests) {
        EXPECT_EQ(std::memcmp(&request, &pre_input.output_request, sizeof request), 0);
    }
}

TEST_F(PreRender, reports_the_inputs_rectangles_as_solid) {
    EXPECT_EQ(pre_render(), 0);
    EXPECT_EQ(sides(pre_output.result_rect), (std::vector<int>{10, 20, 110, 220}));
    EXPECT_EQ(sides(pre_output.max_result_rect), (std::vector<int>{0, 0, 1920, 1080}));
    EXPECT_NE(pre_output.solid, 0);
}

TEST_F(PreRender, unites_with_rectangles_that_are_there_already) {
    pre_output.result_rect = {0, 30, 50, 300};
    EXPECT_EQ(pre_render(), 0);
    EXPECT_EQ(sides(pre_output.result_rect), (std::vector<int>{0, 20, 110, 300}));
}

TEST_F(PreRender, empty_input_reports_an_empty_result) {
    input_result = {};
    EXPECT_EQ(pre_render(), 0);
    EXPECT_EQ(sides(pre_output.result_rect), (std::vector<int>{0, 0, 0, 0}));
}

TEST_F(PreRender, failing_input_is_the_result_solid_is_set_and_original_is_not_asked_for) {
    host.calls.fail_at = 1;
    EXPECT_EQ(pre_render(), 77);
    EXPECT_NE(pre_output.solid, 0);
    EXPECT_EQ(requests.size(), 1u);
}

TEST_F(PreRender, failing_original_is_the_result_with_the_inputs_rectangles) {
    host.calls.fail_at = 2;
    EXPECT_EQ(pre_render(), 77);
    EXPECT_EQ(sides(pre_output.result_rect), (std::vector<int>{10, 20, 110, 220}));
}

}  // namespace

#include "stage/services/utility_callbacks.h"

#include <cmath>
#include <cstring>

#include "stage/services/pixel_suite_fixture.h"

namespace stage_test {
namespace {

using stage::Depth;

class UtilityCallbacks : public SuiteFixture {};

// Both tables of C functions, one after the other.
template <class F>
void for_both(PF_UtilCallbacks *utils, const PF_ANSICallbacksSuite1 *suite, F f) {
    f(utils->ansi);
    f(*suite);
}

TEST_F(UtilityCallbacks, ansi_functions_compute_what_their_slots_say) {
    for_both(utils, suite<PF_ANSICallbacksSuite1>(kPFANSISuite, 1), [](const auto &ansi) {
        EXPECT_EQ(ansi.atan(0.5), std::atan(0.5));
        EXPECT_EQ(ansi.atan2(1, 2), std::atan2(1.0, 2.0));
        EXPECT_EQ(ansi.ceil(1.2), 2);
        EXPECT_EQ(ansi.cos(0.5), std::cos(0.5));
        EXPECT_EQ(ansi.exp(0.5), std::exp(0.5));
        EXPECT_EQ(ansi.fabs(-3), 3);
        EXPECT_EQ(ansi.floor(-1.2), -2);
        EXPECT_EQ(ansi.fmod(7, 4), 3);
        EXPECT_EQ(ansi.hypot(3, 4), 5);
        EXPECT_EQ(ansi.log(0.5), std::log(0.5));
        EXPECT_EQ(ansi.log10(1000), 3);
        EXPECT_EQ(ansi.pow(2, 10), 1024);
        EXPECT_EQ(ansi.sin(0.5), std::sin(0.5));
        EXPECT_EQ(ansi.sqrt(9), 3);
        EXPECT_EQ(ansi.tan(0.5), std::tan(0.5));
        EXPECT_EQ(ansi.asin(0.5), std::asin(0.5));
        EXPECT_EQ(ansi.acos(0.5), std::acos(0.5));
    });
    EXPECT_EQ(host.faults.count(), 0u);  // none of them can fail
}

TEST_F(UtilityCallbacks, sprintf_and_strcpy_write_their_text) {
    for_both(utils, suite<PF_ANSICallbacksSuite1>(kPFANSISuite, 1), [](const auto &ansi) {
        char text[256] = {};
        EXPECT_EQ(ansi.sprintf(text, "%s %d.%d %.2f", "v", 2, 3, 0.25), 10);
        EXPECT_STREQ(text, "v 2.3 0.25");
        EXPECT_EQ(ansi.strcpy(text, "abc"), text);
        EXPECT_STREQ(text, "abc");
    });
    EXPECT_EQ(checks(), Names{});
}

TEST_F(UtilityCallbacks, a_text_longer_than_a_message_is_a_finding) {
    char target[600] = {};
    const std::string fits(255, 'x'), long_text(256, 'x');
    utils->ansi.strcpy(target, fits.c_str());
    EXPECT_EQ(checks(), Names{});
    utils->ansi.strcpy(target, long_text.c_str());
    utils->ansi.sprintf(target, "%s", long_text.c_str());
    EXPECT_EQ(checks(), (Names{"ansi.long_text", "ansi.long_text"}));
}

TEST_F(UtilityCallbacks, names_in_the_trace) {
    host.trace.enable(true);
    utils->ansi.pow(2, 2);
    suite<PF_ANSICallbacksSuite1>(kPFANSISuite, 1)->fabs(1);
    char text[16] = {};
    utils->ansi.sprintf(text, "%d", 7);
    EXPECT_EQ(host.trace.calls(),
              (Names{"utils.ansi.pow", "PF ANSI Suite.fabs", "utils.ansi.sprintf"}));
    EXPECT_EQ(host.trace.entries()[2].result, "\"7\"");
}

TEST_F(UtilityCallbacks, fill_converts_the_colour_and_null_is_transparent_black) {
    const PF_Pixel grey{255, 30, 30, 30};
    PF_EffectWorld deep = world(2, 2, Depth::U16), single = world(2, 2, Depth::Float);
    EXPECT_EQ(utils->fill(nullptr, &grey, nullptr, &deep), 0);
    EXPECT_EQ(utils->fill(nullptr, &grey, nullptr, &single), 0);
    EXPECT_EQ(at<PF_Pixel16>(deep, 1, 1).red, 3855);
    EXPECT_EQ(at<PF_PixelFloat>(single, 1, 1).red, 30 / 255.0f);
    const PF_LRect one{0, 0, 1, 1};
    EXPECT_EQ(utils->fill(nullptr, nullptr, &one, &deep), 0);
    EXPECT_EQ(at<PF_Pixel16>(deep, 0, 0).alpha, 0);
    EXPECT_EQ(at<PF_Pixel16>(deep, 1, 0).alpha, 32768);
    const PF_Pixel16 half{32768, 16384, 0, 0};
    EXPECT_EQ(utils->fill16(nullptr, &half, nullptr, &single), 0);
    EXPECT_EQ(at<PF_PixelFloat>(single, 0, 0).red, 0.5f);
}

TEST_F(UtilityCallbacks, new_world_makes_8_or_16_bit_worlds) {
    PF_EffectWorld made{};
    ASSERT_EQ(utils->new_world(nullptr, 3, 3,
                               PF_NewWorldFlag_DEEP_PIXELS | PF_NewWorldFlag_CLEAR_PIXELS, &made),
              0);
    EXPECT_NE(made.world_flags & PF_WorldFlag_DEEP, 0);
    EXPECT_EQ(at<PF_Pixel16>(made, 0, 0).alpha, 0);
    EXPECT_EQ(utils->dispose_world(nullptr, &made), 0);
    EXPECT_EQ(checks(), Names{});
}

TEST_F(UtilityCallbacks, handle_slots_share_the_ledger_of_the_suite) {
    PF_Handle handle = utils->host_new_handle(8);
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(utils->host_lock_handle(handle), *handle);
    utils->host_unlock_handle(handle);
    EXPECT_EQ(utils->host_resize_handle(80, &handle), 0);
    EXPECT_EQ(utils->host_get_handle_size(handle), 80u);
    suite<PF_HandleSuite1>(kPFHandleSuite, 2)->host_dispose_handle(handle);
    EXPECT_EQ(host.handles.live_count(), 0u);
    EXPECT_EQ(checks(), Names{});
}

TEST_F(UtilityCallbacks, slots_nobody_needs_are_findings) {
    EXPECT_EQ(utils->premultiply(nullptr, 1, nullptr), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_EQ(checks(), Names{"suite.unimplemented"});
    EXPECT_EQ(utils->app, nullptr);
}

}  // namespace
}  // namespace stage_test

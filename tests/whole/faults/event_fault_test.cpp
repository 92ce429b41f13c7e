// Each fallible host call of the events of a viewer failing in turn, alone and with all later ones.
#include <array>
#include <memory>

#include "hostapi/constants.h"
#include "stage/desk/viewer/viewer.h"
#include "stage/effect/effect_instance.h"
#include "whole/faults/fault_loop.h"

namespace ks::flow {
namespace {

using Bytes = std::vector<std::uint8_t>;
using stage::WindowKind;

// Every handle there is; the view shows a layer point at twice its coordinates, ten pixels on.
class EventFaults : public testing::TestWithParam<WindowKind> {
  protected:
    EventFaults() {
        flow.make_scene(random_image(5, 320, 240, oracle::Depth::kByte));
        flow.set_original(random_image(6, 40, 30, oracle::Depth::kByte));
        flow.set("Monitor Layout", 6);
        flow.set_point("Monitor Position", 20, 30);
        flow.set("Monitor Size", 40);
        flow.set("Compare with Original", 25);
        flow.set("Compare Opacity", 60);
        flow.set("Show Slice Waveform", 1);
        flow.set("Show Histogram", 1);
        values = streams();
        open();
    }

    std::vector<stage::EffectStream> &streams() {
        return flow.host().project.layer(flow.layer)->effects.front().streams;
    }

    // A viewer of its own for every run, and values as they were.
    void open() {
        viewer.reset();
        viewer = std::make_unique<stage::Viewer>(flow.session, *flow.effect, GetParam());
        viewer->viewport.zoom = 2;
        viewer->viewport.pan_x = viewer->viewport.pan_y = 10;
        streams() = values;
    }

    static int window(double layer) { return static_cast<int>(10 + 2 * layer); }

    Bytes outcome() {
        std::string text = stage::to_text(list) + std::to_string(viewer->dragging()) + " " +
                           std::to_string(viewer->cursor());
        for (const auto slot : viewer->click_record().continue_refcon) {
            text += " " + std::to_string(slot);
        }
        for (const stage::EffectStream &stream : streams()) {
            const stage::ParamValue &value = stream.value;
            text += " " + std::to_string(value.number) + "," + std::to_string(value.x) + "," +
                    std::to_string(value.y);
        }
        return {text.begin(), text.end()};
    }

    // Events never fail but for a suite that cannot be had. What follows a point that cannot be
    // converted is another handle's; what follows a failed drawing call is no drawing.
    int loop(const std::string &name, const std::function<stage::EventReply()> &run,
             const std::function<void()> &begin = {}) {
        bool conversion = false;
        const auto special = [&](const Strike &strike) -> std::optional<PF_Err> {
            conversion = strike.name.starts_with("event.");
            if (strike.form == stage::FailureForm::kSuite) return std::nullopt;
            return 0;
        };
        return run_fault_loop(flow, {name, [&](Flow &) { return run().error; },
                                     [&](Flow &) { return outcome(); }, special,
                                     [&](Flow &) {
                                         open();
                                         if (begin) begin();
                                     },
                                     [&](const std::string &call) {
                                         return conversion || call.starts_with("event.") ||
                                                call.ends_with("ReleaseObject");
                                     }});
    }

    bool in_comp() const { return GetParam() == WindowKind::kComp; }

    Flow flow;
    std::vector<stage::EffectStream> values;
    stage::DrawList list;
    std::unique_ptr<stage::Viewer> viewer;
};

TEST_P(EventFaults, draw) {
    EXPECT_GE(loop("draw",
                   [&] {
                       list.primitives.clear();
                       return viewer->draw(list);
                   }),
              in_comp() ? 44 : 38);
    EXPECT_EQ(list.primitives.size(), 4u) << "triangle, bar, stem and diamond";
}

TEST_P(EventFaults, click_on_every_kind_of_handle) {
    const struct {
        const char *name;
        double x, y;
    } spots[] = {{"monitor corner", 20 + 128, 30 + 96},    {"monitor bar", 30, 35},
                 {"wipe", 20 + 32, 30 + 96 * 0.66},        {"waveform bar", 2.5 + 40, 3.33 + 9},
                 {"histogram height", 160 + 100, 60 + 42}, {"nothing", 319, 239}};
    for (const auto &spot : spots) {
        const bool hits = std::string(spot.name) != "nothing";
        EXPECT_GE(loop(std::string("click on ") + spot.name,
                       [&] { return viewer->press(window(spot.x), window(spot.y)); }),
                  in_comp() ? 3 : 2)
            << spot.name;
        EXPECT_EQ(viewer->dragging(), hits) << spot.name;
    }
}

TEST_P(EventFaults, drag_and_release) {
    const auto grip = [&] { viewer->press(window(30), window(35)); };
    EXPECT_EQ(loop(
                  "drag", [&] { return viewer->move(window(50), window(60)); }, grip),
              in_comp() ? 2 : 1);
    EXPECT_EQ(loop(
                  "release", [&] { return viewer->release(window(50), window(60)); }, grip),
              in_comp() ? 2 : 1);
    EXPECT_EQ(streams()[4].value.x, 30)
        << "the grip is kept in window pixels: 20 of them at zoom 2";
    EXPECT_FALSE(viewer->dragging());
}

TEST_P(EventFaults, drag_whose_pointer_cannot_be_converted_changes_nothing_and_goes_on) {
    viewer->press(window(30), window(35));
    flow.host().faults.arm_name("event.frame_to_source");
    const stage::EventReply lost = viewer->move(window(50), window(60));
    EXPECT_EQ(lost.error, 0);
    EXPECT_TRUE(lost.handled);
    EXPECT_TRUE(lost.changed.empty());
    EXPECT_TRUE(viewer->dragging());
    flow.host().faults.reset();
    EXPECT_EQ(viewer->move(window(50), window(60)).changed, std::vector<int>{4});
    viewer->release(window(50), window(60));
}

TEST_P(EventFaults, cursor) {
    EXPECT_GE(loop("cursor", [&] { return viewer->move(window(42), window(12)); }),
              in_comp() ? 3 : 2);
    EXPECT_EQ(viewer->cursor(), 75);
}

TEST_P(EventFaults, other_events_call_nothing) {
    flow.host().faults.reset();
    viewer->idle();
    viewer->leave();
    viewer->key(65);
    EXPECT_EQ(flow.host().faults.count(), 0u);
}

std::string window_name(const testing::TestParamInfo<WindowKind> &tested) {
    return tested.param == WindowKind::kComp ? "comp" : "layer";
}

INSTANTIATE_TEST_SUITE_P(Flow, EventFaults, testing::Values(WindowKind::kComp, WindowKind::kLayer),
                         window_name);

}  // namespace
}  // namespace ks::flow

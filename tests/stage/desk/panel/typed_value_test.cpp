// Values as typed: layers by name, points in percent, and edits written NAME=VALUE.
#include "stage/desk/panel/typed_value.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

#include "stage/session/session.h"
#include "support/paths.h"

namespace {

using stage::LayerId;

constexpr int kOriginalSource = 10, kMonitorPosition = 4;

class TypedValue : public testing::Test {
  protected:
    TypedValue() : session(paths::plugin()) {
        session.start();
        stage::Project &project = session.project();
        comp = project.add_comp("comp", 640, 360, 1, 1, 1);
        project.active_comp = comp;
        plate = add_layer("plate");
        effect = session.apply(plate);
    }

    /// A layer of 200 by 100 pixels below all others.
    LayerId add_layer(const char *name) {
        stage::Project &project = session.project();
        const stage::ItemId solid = project.add_solid_item(name, 200, 100, {1, 0, 0, 0});
        return project.add_layer(comp, solid, -1, name);
    }

    LayerId typed_layer(const std::string &text) const {
        return typed_value(session, *effect, kOriginalSource, text).layer;
    }

    stage::Session session;
    stage::ItemId comp = 0;
    LayerId plate = 0;
    stage::EffectInstance *effect = nullptr;
};

std::string error_of(const std::function<void()> &act) {
    try {
        act();
    } catch (const std::runtime_error &error) {
        return error.what();
    }
    return "no error";
}

TEST_F(TypedValue, layers_go_by_name) {
    EXPECT_EQ(typed_layer("plate"), plate);
    EXPECT_EQ(typed_layer("none"), 0);
    EXPECT_THAT(error_of([&] { typed_layer("nobody"); }),
                testing::StartsWith("there is no layer \"nobody\" (there are \""));
    add_layer("plate");
    EXPECT_EQ(error_of([&] { typed_layer("plate"); }), "several layers are called \"plate\"");
}

TEST_F(TypedValue, a_comp_without_layers_says_so) {
    EXPECT_EQ(error_of([] { stage::layer_called(stage::Item(), "x"); }),
              "there is no layer \"x\" (there are none)");
}

TEST_F(TypedValue, percent_are_of_the_picture_that_carries_the_effect) {
    const stage::ParamValue value = typed_value(session, *effect, kMonitorPosition, "50%,10%");
    EXPECT_EQ(value.x, 100);
    EXPECT_EQ(value.y, 10);
}

TEST_F(TypedValue, assignments_are_edits) {
    const LayerId other = add_layer("other = this");
    assign(session, *effect, "Original Source=other = this");
    EXPECT_EQ(session.value(*effect, kOriginalSource).layer, other)
        << "the first equals sign divides";
    assign(session, *effect, "Original Source=none");
    EXPECT_EQ(session.value(*effect, kOriginalSource).layer, 0);
    assign(session, *effect, "2=Single");
    EXPECT_EQ(session.value(*effect, 2).number, 1);
}

TEST_F(TypedValue, what_is_no_assignment_is_refused) {
    EXPECT_EQ(error_of([&] { assign(session, *effect, "Monitor Layout"); }),
              "\"Monitor Layout\" is wrong: --set takes NAME=VALUE");
    EXPECT_THAT(error_of([&] { assign(session, *effect, "Nothing=1"); }),
                testing::HasSubstr("there is no parameter \"Nothing\""));
    EXPECT_THAT(error_of([&] { assign(session, *effect, "Original Source="); }),
                testing::HasSubstr("there is no layer \"\""));
}

}  // namespace

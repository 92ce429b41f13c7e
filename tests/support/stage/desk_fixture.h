// A desk over the product: a chart, an adjustment layer with the effect, all by a user's acts.
#pragma once

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "stage/desk/desk.h"
#include "support/paths.h"

namespace stage_test {

struct DeskTest : testing::Test {
    explicit DeskTest(const stage::HostOptions &options = {})
        : session(paths::plugin(), options), desk((session.start(), session)) {}

    /// A 640x360 chart with the effect on an adjustment layer above it.
    void set_the_scene() {
        footage = desk.add_chart("test-card", 640, 360);
        scopes = desk.add_adjustment("Scopes");
        const auto results = desk.apply();
        ASSERT_EQ(results.size(), 1u);
        ASSERT_EQ(results[0].error, 0) << results[0].message;
        ASSERT_NE(desk.effect(), nullptr);
    }
    int index(const std::string &name) { return session.plugin.catalog.find(name); }
    void set(const std::string &name, double number) {
        stage::ParamValue value = session.value(*desk.effect(), index(name));
        value.number = number;
        EXPECT_EQ(desk.set_value(index(name), value), 0) << name;
    }
    stage::ParamValue get(const std::string &name) {
        return session.value(*desk.effect(), index(name));
    }
    /// Stacking order as the flat record states it, front first: bytes 1 to 5, their count in
    /// byte 6.
    std::vector<int> order() {
        session.store_sequence(*desk.effect());
        const auto &flat = session.state_of(*desk.effect()).flat_sequence;
        std::vector<int> result;
        for (int i = 0; i < flat.at(6); ++i)
            result.push_back(flat.at(static_cast<std::size_t>(i + 1)));
        return result;
    }
    std::vector<std::string> layer_names() {
        std::vector<std::string> names;
        const auto &project = session.project();
        for (const stage::Layer &layer : project.comp(project.active_comp)->layers) {
            names.push_back(layer.name);
        }
        return names;
    }
    bool hidden(const std::string &name) {
        const auto &streams = session.state_of(*desk.effect()).streams;
        return streams.at(static_cast<std::size_t>(index(name))).hidden;
    }
    std::vector<std::string> violations() {
        std::vector<std::string> texts;
        for (const stage::Finding &finding : session.findings()) {
            texts.push_back(finding.check + ": " + finding.text);
        }
        return texts;
    }
    void TearDown() override { EXPECT_THAT(violations(), testing::IsEmpty()); }

    stage::Session session;
    stage::Desk desk;
    stage::LayerId footage = 0, scopes = 0;
};

}  // namespace stage_test

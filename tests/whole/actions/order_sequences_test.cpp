// Sequences of edits in the real plug-in's panel: after each, the record's stacking order is what
// the rules make of it, and names the scopes shown as long as that is promised.
#include <gtest/gtest.h>

#include <cstring>
#include <set>

#include "stage/effect/effect_instance.h"
#include "stage/session/session.h"
#include "support/paths.h"
#include "whole/actions/dice.h"
#include "whole/actions/order_model.h"

namespace actions {
namespace {

constexpr int kShow[6] = {0, 19, 20, 21, 22, 23}, kPosition[6] = {0, 27, 38, 43, 50, 55};
constexpr int kReset = 68;
// Edits of the sequences that are gone through one and all.
#if defined(_WIN32)
constexpr int kLength = 4;  // under Wine everything takes several times as long
#else
constexpr int kLength = 6;
#endif
constexpr std::size_t kOrderAt = 3080;  // in the instance's record

// What the rules make of a sequence.
struct Expected {
    OrderModel order;
    Boxes boxes = kDefaultBoxes;
};

std::string describe(const Expected &expected) {
    return to_text(expected.order.bytes()) + " with " + to_text(expected.boxes) +
           (expected.order.promised() ? "" : ", not promised");
}

// An edit of the panel: each of the five scopes switched on, switched off and moved, whether or not
// it is shown.
constexpr int kEdits = 15;
int kind_of(int edit) {
    return 1 + edit % 5;
}

class OrderSequences : public testing::Test {
  protected:
    OrderSequences() : session(paths::plugin()) {
        session.start();
        stage::Project &project = session.host.project;
        comp = project.active_comp = project.add_comp("comp", 100, 80, 1, 1, 1);
        layer = project.add_layer(comp, project.add_solid_item("solid", 100, 80, {1, 1, 0, 0}), 0,
                                  "solid");
        effect = session.apply(layer);
    }
    void TearDown() override {
        for (const stage::Finding &finding : session.host.strict.violations()) {
            ADD_FAILURE() << finding.check << " in " << finding.command << ": " << finding.text;
        }
    }

    stage::ParamValue &value(int index) {
        return session.host.project.layer(layer)
            ->effects.front()
            .streams.at(static_cast<std::size_t>(index))
            .value;
    }
    // The instance as it was when `expected` was.
    void go_back(const Expected &expected) {
        const ks::oracle::OrderBytes &bytes = expected.order.bytes();
        std::memcpy(static_cast<char *>(*effect->sequence_data) + kOrderAt, bytes.data(), 6);
        for (std::size_t kind = 1; kind <= 5; ++kind) {
            value(kShow[kind]).number = expected.boxes[kind] ? 1 : 0;
        }
    }
    void set(int index, double number) {
        stage::ParamValue edited = value(index);
        edited.number = number;
        ASSERT_EQ(session.set_value(*effect, index, edited), 0);
    }
    void edit(int number, Expected &expected) {
        const int kind = kind_of(number);
        if (number >= 10) {
            expected.order.to_front(kind, expected.boxes);
            return set(kPosition[kind], 0);
        }
        bool &box = expected.boxes[static_cast<std::size_t>(kind)];
        const bool on = number < 5;
        expected.order.show(kind, on, box);
        box = on;
        set(kShow[kind], on ? 1 : 0);
    }
    void reset(Expected &expected) {
        expected.order.reset(expected.boxes);
        set(kReset, 1);
    }
    void render(Expected &expected) {
        expected.order.rendered(expected.boxes);
        ASSERT_EQ(session.render(*effect, {}).error, 0);
    }
    // Whether the record agrees; says what it holds otherwise.
    testing::AssertionResult agrees(const Expected &expected) {
        const std::vector<std::uint8_t> record = session.sequence_bytes(*effect);
        ks::oracle::OrderBytes bytes{};
        for (std::size_t i = 0; i < 6; ++i) {
            bytes[i] = static_cast<std::int8_t>(record.at(kOrderAt + i));
        }
        const OrderModel &order = expected.order;
        const bool kept = !order.promised() || agree(order.entries(), expected.boxes);
        if (bytes != order.bytes() || !kept) {
            return testing::AssertionFailure() << to_text(bytes) << " for " << describe(expected);
        }
        promised += order.promised();
        ++checked;
        return testing::AssertionSuccess();
    }
    stage::Session session;
    stage::ItemId comp = 0;
    stage::LayerId layer = 0;
    stage::EffectInstance *effect = nullptr;
    long checked = 0, promised = 0;
};

// What an edit does hangs on order and boxes alone, so each pair of these that edits lead to is
// gone on from once. As long as the promise holds there is no end to the length.
TEST_F(OrderSequences, every_short_sequence_and_every_promised_one_keeps_to_the_rules) {
    session.panel_shown = false;
    std::set<std::string> seen;
    std::vector<Expected> ends{Expected{}};
    for (int length = 1; !ends.empty(); ++length) {
        std::vector<Expected> longer;
        for (const Expected &begin : ends) {
            if (length > kLength && !begin.order.promised()) continue;
            for (int number = 0; number < kEdits; ++number) {
                Expected expected = begin;
                go_back(expected);
                edit(number, expected);
                ASSERT_TRUE(agrees(expected))
                    << describe(begin) << ", then edit " << number << " after " << length - 1;
                if (seen.insert(describe(expected)).second) longer.push_back(expected);
            }
        }
        ends = std::move(longer);
    }
    EXPECT_GT(checked, 541 * kEdits) << "states in which the promise holds";
    EXPECT_GT(promised, 6000);
    RecordProperty("edits", static_cast<int>(checked));
}

TEST_F(OrderSequences, long_ones_with_resets_and_frames_keep_to_the_rules) {
    session.host.strict.enabled = false;  // keeps the memory of every frame and reads it over
    for (std::uint32_t seed = 1; seed <= 20; ++seed) {
        Dice dice(seed);
        Expected expected;
        go_back(expected);
        for (int act = 0; act < 100; ++act) {
            const int what = dice.below(40);
            if (what == 0) reset(expected);
            if (what == 1) render(expected);
            if (what > 1) edit(dice.below(kEdits), expected);
            ASSERT_TRUE(agrees(expected)) << "seed " << seed << ", act " << act << ": " << what;
        }
    }
    EXPECT_GT(promised, 100);
}

}  // namespace
}  // namespace actions

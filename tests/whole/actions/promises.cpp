#include "whole/actions/promises.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "hostapi/constants.h"
#include "stage/desk/panel/panel_model.h"
#include "stage/effect/effect_instance.h"

namespace actions {
namespace {

constexpr std::size_t kRecordSize = 3100, kOrderAt = 3080;

struct Range {
    int first, last;
};
// Heading and controls of each scope's group.
constexpr Range kGroups[6] = {{0, -1}, {25, 29}, {31, 40}, {42, 45}, {47, 51}, {53, 56}};

std::string at(const stage::EffectInstance &instance) {
    return "effect " + std::to_string(instance.id) + " on layer " + std::to_string(instance.layer);
}

void expect_no_finding(User &user) {
    for (const stage::Finding &finding : user.session.findings()) {
        ADD_FAILURE() << finding.check << " in " << finding.command << ": " << finding.text;
    }
    user.session.host.strict.clear();
    for (const stage::ShownMessage &message : user.session.host.messages) {
        EXPECT_EQ(message.command, "PF_Cmd_SEQUENCE_SETUP") << message.text;
    }
    user.session.host.messages.clear();
}

void expect_order(User &user, const stage::EffectInstance &instance) {
    const std::vector<std::uint8_t> record = user.session.sequence_bytes(instance);
    ASSERT_EQ(record.size(), kRecordSize) << at(instance);
    EXPECT_EQ(record[0], 1) << at(instance) << ": its panel was refreshed";
    std::array<std::int8_t, 6> bytes{};
    for (std::size_t i = 0; i < 6; ++i) bytes[i] = static_cast<std::int8_t>(record[kOrderAt + i]);
    const OrderModel &model = user.order(instance);
    EXPECT_EQ(to_text(bytes), to_text(model.bytes())) << at(instance);
    if (!model.promised()) return;
    EXPECT_TRUE(agree(model.entries(), user.boxes(instance)))
        << at(instance) << ": " << to_text(bytes) << " with " << to_text(user.boxes(instance));
}

bool in_range(const PF_ParamDef &def, const stage::ParamValue &value, bool limited) {
    const double number = value.number;
    switch (def.param_type) {
        case PF_Param_FLOAT_SLIDER:
            if (!limited) return std::isfinite(number);
            return number >= double{def.u.fs_d.valid_min} && number <= double{def.u.fs_d.valid_max};
        case PF_Param_POPUP:
            return number >= 1 && number <= def.u.pd.num_choices && number == std::floor(number);
        case PF_Param_CHECKBOX:
            return number == 0 || number == 1;
        case PF_Param_POINT:
            return std::abs(value.x) <= 32768 && std::abs(value.y) <= 32768;
        default:
            return true;
    }
}

void expect_values(User &user, const stage::EffectInstance &instance) {
    const stage::ParamCatalog &catalog = user.session.plugin.catalog;
    for (int index = 1; index < catalog.count(); ++index) {
        const stage::ParamValue &value = user.session.value(instance, index);
        EXPECT_TRUE(
            in_range(catalog.at(index).def, value, user.habits.options.clamp_written_values))
            << at(instance) << ": \"" << catalog.at(index).path << "\" is "
            << catalog.to_text(index, value);
    }
}

void expect_hidden(User &user, const stage::EffectInstance &instance) {
    const Boxes boxes = user.boxes(instance);
    const stage::EffectState &state = user.session.state_of(instance);
    std::vector<bool> hidden(state.streams.size());
    hidden[kReset] = true;
    for (std::size_t kind = 1; kind <= 5; ++kind) {
        for (int index = kGroups[kind].first; index <= kGroups[kind].last; ++index) {
            hidden[static_cast<std::size_t>(index)] = !boxes[kind];
        }
    }
    for (std::size_t index = 0; index < hidden.size(); ++index) {
        EXPECT_EQ(state.streams[index].hidden, hidden[index]) << at(instance) << ", " << index;
    }
}

std::vector<int> without_use(User &user, const stage::EffectInstance &instance) {
    const double layout = user.number(instance, kLayout);
    const stage::Layer *original =
        user.project().layer(user.session.value(instance, kOriginalSource).layer);
    const bool comparable = original != nullptr && original->source != 0 && layout != 7;
    std::vector<int> found;
    if (layout != 6) found.insert(found.end(), {4, 5});
    if (!comparable) found.insert(found.end(), {11, 12});
    if (user.number(instance, kReferenceLine) == 0) found.push_back(37);
    for (int kind = 1; kind <= 5; ++kind) {
        if (user.number(instance, kShow[kind]) == 0) found.push_back(kPosition[kind]);
    }
    std::ranges::sort(found);
    return found;
}

void expect_greyed(User &user, const stage::EffectInstance &instance) {
    std::vector<int> greyed;
    for (const stage::PanelEntry &entry : panel_entries(user.session, instance)) {
        if (entry.disabled) greyed.push_back(entry.index);
    }
    EXPECT_EQ(greyed, without_use(user, instance)) << at(instance);
}

}  // namespace

void expect_promises(User &user) {
    expect_no_finding(user);
    for (const auto &instance : user.session.instances()) {
        expect_order(user, *instance);
        expect_values(user, *instance);
        expect_hidden(user, *instance);
        user.last_boxes[instance->id] = user.boxes(*instance);
    }
    if (user.effect() != nullptr) expect_greyed(user, *user.effect());
    constexpr PF_CursorType kCursors[] = {0, 21, 22, 75};
    EXPECT_NE(std::ranges::find(kCursors, user.desk.cursor()), std::end(kCursors))
        << user.desk.cursor();
}

}  // namespace actions

#include "model/param_table.h"

#include <string_view>

#include "model/string_table.h"

namespace ks {
namespace {

constexpr std::int32_t kStatic = kFlagCannotTimeVary | kFlagCannotInterpolate;
constexpr std::int32_t kSwitch = kStatic | kFlagSupervise;

/// What every named row has: its permanent id, and the slot of its name in the string table.
struct Label {
    std::int32_t id;
    int name;
};

constexpr ParamRow group(Param index, Label label) {
    return {.index = index,
            .kind = ParamKind::group_start,
            .id = label.id,
            .name = string_at(label.name)};
}

constexpr ParamRow end(Param index) {
    return {.index = index, .kind = ParamKind::group_end, .id = 0};
}

struct Choices {
    int texts;   ///< slot of the string table
    int chosen;  ///< 1-based
};
constexpr ParamRow popup(Param index, Label label, Choices choices, std::int32_t flags = 0) {
    return {.index = index,
            .kind = ParamKind::popup,
            .id = label.id,
            .name = string_at(label.name),
            .flags = flags,
            .choices = string_at(choices.texts),
            .default_value = static_cast<double>(choices.chosen)};
}

constexpr ParamRow checkbox(Param index, std::int32_t id, const char *name, bool on,
                            std::int32_t flags, const char *label = "") {
    return {.index = index,
            .kind = ParamKind::checkbox,
            .id = id,
            .name = name,
            .flags = flags,
            .label = label,
            .default_value = on ? 1.0 : 0.0};
}

struct Place {
    std::int32_t x, y;
};
constexpr ParamRow point(Param index, Label label, Place place, std::int32_t flags) {
    return {.index = index,
            .kind = ParamKind::point,
            .id = label.id,
            .name = string_at(label.name),
            .flags = flags,
            .x_default = place.x,
            .y_default = place.y};
}

struct Range {
    double min, max;
};
struct Look {
    std::int32_t precision;
    bool percent = false;
};
constexpr ParamRow slider(Param index, Label label, double value, Range range, Look look,
                          std::int32_t flags = 0) {
    return {.index = index,
            .kind = ParamKind::float_slider,
            .id = label.id,
            .name = string_at(label.name),
            .flags = flags,
            .default_value = value,
            .min = range.min,
            .max = range.max,
            .precision = look.precision,
            .percent = look.percent};
}

// Left edge of the four left-hand scopes: 0.78125 % of the width, 15 pixels of 1920.
constexpr std::int32_t kLeft = 0x0000C800;
constexpr Range kBrightness{50.0, 150.0};
constexpr Range kWidth{200.0, 1000.0};
constexpr Range kWhole{0.0, 100.0};
constexpr Look kPercent{.precision = 1, .percent = true};
constexpr Look kWholePercent{.precision = 0, .percent = true};

}  // namespace

// The mute box is named "REN" and shows its text beside the box; scripts find it by that name.
// "RESET" is hidden and on: switching it on once more is what triggers a reset.
constexpr std::array<ParamRow, kParamCount> kParamTable{{
    {.index = kParamInput, .kind = ParamKind::layer, .id = 0},
    group(kParamMonitorGroup, {.id = 1, .name = 3}),
    popup(kParamMonitorLayout, {.id = 2, .name = 4}, {.texts = 5, .chosen = 4}, kStatic),
    group(kParamPrimaryMonitorGroup, {.id = 3, .name = 6}),
    point(kParamMonitorPosition, {.id = 4, .name = 7}, {.x = 0, .y = 0}, 0),
    slider(kParamMonitorSize, {.id = 5, .name = 8}, 50.0, {10.0, 100.0}, kPercent,
           kFlagCollapseTwirly),
    popup(kParamPrimaryMonitorView, {.id = 6, .name = 9}, {.texts = 10, .chosen = 1}, kStatic),
    slider(kParamMonitorGamma, {.id = 7, .name = 11}, 1.0, {0.1, 5.0}, {.precision = 2}),
    slider(kParamMonitorGain, {.id = 8, .name = 12}, 1.0, {0.0, 4.0}, {.precision = 2}),
    popup(kParamApplyCorrections, {.id = 9, .name = 13}, {.texts = 14, .chosen = 1}),
    {.index = kParamOriginalSource,
     .kind = ParamKind::layer,
     .id = 10,
     .name = string_at(15),
     .flags = kFlagSupervise,
     .ui_flags = kUiSeparator},
    slider(kParamCompareWithOriginal, {.id = 11, .name = 16}, 0.0, kWhole, kPercent,
           kFlagCollapseTwirly),
    slider(kParamCompareOpacity, {.id = 12, .name = 17}, 100.0, kWhole, kPercent,
           kFlagCollapseTwirly),
    end(kParamPrimaryMonitorEnd),
    group(kParamChannelsGroup, {.id = 13, .name = 18}),
    popup(kParamViewChannels, {.id = 14, .name = 19}, {.texts = 20, .chosen = 1}, kStatic),
    end(kParamChannelsEnd),
    end(kParamMonitorEnd),
    group(kParamScopesGroup, {.id = 15, .name = 21}),
    checkbox(kParamShowWaveformMonitor, 16, string_at(22), true, kSwitch),
    checkbox(kParamShowVectorscope, 17, string_at(23), true, kSwitch),
    checkbox(kParamShowChannelParade, 18, string_at(24), true, kSwitch),
    checkbox(kParamShowSliceWaveform, 19, string_at(25), false, kSwitch),
    checkbox(kParamShowHistogram, 20, string_at(26), false, kSwitch),
    checkbox(kParamMuteActiveScopes, 58, "REN", false, kStatic, string_at(27)),
    group(kParamWaveformGroup, {.id = 21, .name = 28}),
    popup(kParamWaveformShowChannels, {.id = 22, .name = 49}, {.texts = 50, .chosen = 3}),
    point(kParamWaveformPosition, {.id = 23, .name = 29}, {.x = kLeft, .y = 0x0001638E},
          kFlagSupervise),
    slider(kParamWaveformWidth, {.id = 24, .name = 30}, 200.0, kWidth, {.precision = 1}),
    slider(kParamWaveformBrightness, {.id = 25, .name = 31}, 100.0, kBrightness, kPercent),
    end(kParamWaveformEnd),
    group(kParamVectorscopeGroup, {.id = 26, .name = 32}),
    popup(kParamVectorscopeGraticule, {.id = 27, .name = 33}, {.texts = 34, .chosen = 1}),
    checkbox(kParamVectorscopeMonochrome, 28, string_at(35), true, 0),
    popup(kParamVectorscopeCalibrateFor, {.id = 29, .name = 36}, {.texts = 37, .chosen = 1}),
    checkbox(kParamVectorscopeSkinToneLine, 30, string_at(38), true, 0),
    checkbox(kParamVectorscopeReferenceLine, 31, string_at(39), false, 0),
    {.index = kParamVectorscopeReferenceColour,
     .kind = ParamKind::color,
     .id = 32,
     .name = string_at(40)},
    point(kParamVectorscopePosition, {.id = 33, .name = 41}, {.x = kLeft, .y = 0x001C5553},
          kFlagSupervise),
    slider(kParamVectorscopeSize, {.id = 34, .name = 42}, 200.0, {150.0, 1000.0}, {.precision = 1}),
    slider(kParamVectorscopeBrightness, {.id = 35, .name = 43}, 100.0, kBrightness, kPercent),
    end(kParamVectorscopeEnd),
    group(kParamParadeGroup, {.id = 36, .name = 44}),
    point(kParamParadePosition, {.id = 37, .name = 45}, {.x = kLeft, .y = 0x004984BC},
          kFlagSupervise),
    slider(kParamParadeWidth, {.id = 38, .name = 46}, 200.0, kWidth, {.precision = 1}),
    slider(kParamParadeBrightness, {.id = 39, .name = 47}, 100.0, kBrightness, kPercent),
    end(kParamParadeEnd),
    group(kParamSliceGroup, {.id = 40, .name = 48}),
    popup(kParamSliceShowChannels, {.id = 41, .name = 49}, {.texts = 50, .chosen = 1}),
    slider(kParamSliceLine, {.id = 42, .name = 51}, 50.0, kWhole, kWholePercent),
    point(kParamSlicePosition, {.id = 44, .name = 54}, {.x = kLeft, .y = 0x004B0000},
          kFlagSupervise),
    slider(kParamSliceWidth, {.id = 45, .name = 55}, 200.0, kWidth, {.precision = 1}),
    end(kParamSliceEnd),
    group(kParamHistogramGroup, {.id = 46, .name = 56}),
    popup(kParamHistogramShowChannels, {.id = 55, .name = 57}, {.texts = 58, .chosen = 1}),
    point(kParamHistogramPosition, {.id = 47, .name = 59}, {.x = 0x00320000, .y = 0},
          kFlagSupervise),
    slider(kParamHistogramHeight, {.id = 48, .name = 60}, 60.0, {60.0, 300.0}, {.precision = 1}),
    end(kParamHistogramEnd),
    group(kParamOptionsGroup, {.id = 49, .name = 61}),
    popup(kParamLuminanceMath, {.id = 56, .name = 62}, {.texts = 63, .chosen = 1}),
    slider(kParamMaxWaveformScale, {.id = 50, .name = 64}, 100.0, {100.0, 200.0}, kWholePercent),
    popup(kParamWaveformAspectRatio, {.id = 54, .name = 65}, {.texts = 66, .chosen = 1}),
    popup(kParamWaveformScale, {.id = 51, .name = 67}, {.texts = 68, .chosen = 1}),
    popup(kParamWaveformGuides, {.id = 52, .name = 69}, {.texts = 70, .chosen = 1}),
    popup(kParamSamplingQuality, {.id = 53, .name = 72}, {.texts = 73, .chosen = 2}, kStatic),
    checkbox(kParamLockLayerPosition, 59, string_at(74), true, kSwitch),
    end(kParamOptionsEnd),
    end(kParamScopesEnd),
    checkbox(kParamReset, 57, "RESET", true, kSwitch),
}};

namespace {

constexpr bool rows_stand_at_their_index() {
    for (std::size_t i = 0; i < kParamTable.size(); ++i) {
        if (kParamTable[i].index != static_cast<Param>(i)) return false;
    }
    return true;
}

constexpr bool ids_are_unique_and_43_is_retired() {
    std::array<bool, 10000> taken{};
    taken[43] = true;
    for (const ParamRow &row : kParamTable) {
        const bool unnamed = row.index == kParamInput || row.kind == ParamKind::group_end;
        if (unnamed != (row.id == 0)) return false;
        if (row.id == 0) continue;
        if (row.id < 0 || row.id > 9999 || taken[static_cast<std::size_t>(row.id)]) return false;
        taken[static_cast<std::size_t>(row.id)] = true;
    }
    return true;
}

constexpr bool groups_balance() {
    int depth = 0;
    for (const ParamRow &row : kParamTable) {
        if (row.kind == ParamKind::group_start) ++depth;
        if (row.kind == ParamKind::group_end && --depth < 0) return false;
    }
    return depth == 0;
}

constexpr bool names_fit_the_hosts_32_bytes() {
    for (const ParamRow &row : kParamTable) {
        if (std::string_view(row.name).size() > 31) return false;
    }
    return true;
}

constexpr bool defaults_are_valid() {
    constexpr std::int32_t hundred_percent = 100 << 16;
    for (const ParamRow &row : kParamTable) {
        const double value = row.default_value;
        if (row.kind == ParamKind::popup &&
            (value < 1.0 || value > static_cast<double>(count_choices(row.choices)))) {
            return false;
        }
        if (row.kind == ParamKind::float_slider &&
            !(row.min < row.max && row.min <= value && value <= row.max)) {
            return false;
        }
        if (row.x_default < 0 || row.x_default > hundred_percent) return false;
        if (row.y_default < 0 || row.y_default > hundred_percent) return false;
    }
    return true;
}

static_assert(rows_stand_at_their_index());
static_assert(ids_are_unique_and_43_is_retired());
static_assert(groups_balance());
static_assert(names_fit_the_hosts_32_bytes());
static_assert(defaults_are_valid());

}  // namespace
}  // namespace ks

#include "model/param_table.h"

#include <string_view>

#include "model/string_table.h"

namespace ks {
namespace {

constexpr std::int32_t kStatic = kFlagCannotTimeVary | kFlagCannotInterpolate;
constexpr std::int32_t kSwitch = kStatic | kFlagSupervise;
constexpr bool kPercent = true;

constexpr ParamRow group(Param index, std::int32_t id, int name) {
    return {.index = index, .kind = ParamKind::group_start, .id = id, .name = string_at(name)};
}

constexpr ParamRow end(Param index) {
    return {.index = index, .kind = ParamKind::group_end, .id = 0};
}

constexpr ParamRow popup(Param index, std::int32_t id, int name, int choices, int choice,
                         std::int32_t flags = 0) {
    return {.index = index,
            .kind = ParamKind::popup,
            .id = id,
            .name = string_at(name),
            .flags = flags,
            .choices = string_at(choices),
            .default_value = static_cast<double>(choice)};
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

constexpr ParamRow point(Param index, std::int32_t id, int name, std::int32_t x, std::int32_t y,
                         std::int32_t flags) {
    return {.index = index,
            .kind = ParamKind::point,
            .id = id,
            .name = string_at(name),
            .flags = flags,
            .x_default = x,
            .y_default = y};
}

struct Range {
    double min, max;
};

constexpr ParamRow slider(Param index, std::int32_t id, int name, double value, Range range,
                          std::int32_t precision, bool percent = false, std::int32_t flags = 0) {
    return {.index = index,
            .kind = ParamKind::float_slider,
            .id = id,
            .name = string_at(name),
            .flags = flags,
            .default_value = value,
            .min = range.min,
            .max = range.max,
            .precision = precision,
            .percent = percent};
}

// Left edge of the four left-hand scopes: 0.78125 % of the width, 15 pixels of 1920.
constexpr std::int32_t kLeft = 0x0000C800;
constexpr Range kBrightness{50.0, 150.0};
constexpr Range kWidth{200.0, 1000.0};
constexpr Range kWhole{0.0, 100.0};

}  // namespace

// The mute box is named "REN" and shows its text beside the box; scripts find it by that name.
// "RESET" is hidden and on: switching it on once more is what triggers a reset.
constexpr std::array<ParamRow, kParamCount> kParamTable{{
    {.index = kParamInput, .kind = ParamKind::layer, .id = 0},
    group(kParamMonitorGroup, 1, 3),
    popup(kParamMonitorLayout, 2, 4, 5, 4, kStatic),
    group(kParamPrimaryMonitorGroup, 3, 6),
    point(kParamMonitorPosition, 4, 7, 0, 0, 0),
    slider(kParamMonitorSize, 5, 8, 50.0, {10.0, 100.0}, 1, kPercent, kFlagCollapseTwirly),
    popup(kParamPrimaryMonitorView, 6, 9, 10, 1, kStatic),
    slider(kParamMonitorGamma, 7, 11, 1.0, {0.1, 5.0}, 2),
    slider(kParamMonitorGain, 8, 12, 1.0, {0.0, 4.0}, 2),
    popup(kParamApplyCorrections, 9, 13, 14, 1),
    {.index = kParamOriginalSource,
     .kind = ParamKind::layer,
     .id = 10,
     .name = string_at(15),
     .flags = kFlagSupervise,
     .ui_flags = kUiSeparator},
    slider(kParamCompareWithOriginal, 11, 16, 0.0, kWhole, 1, kPercent, kFlagCollapseTwirly),
    slider(kParamCompareOpacity, 12, 17, 100.0, kWhole, 1, kPercent, kFlagCollapseTwirly),
    end(kParamPrimaryMonitorEnd),
    group(kParamChannelsGroup, 13, 18),
    popup(kParamViewChannels, 14, 19, 20, 1, kStatic),
    end(kParamChannelsEnd),
    end(kParamMonitorEnd),
    group(kParamScopesGroup, 15, 21),
    checkbox(kParamShowWaveformMonitor, 16, string_at(22), true, kSwitch),
    checkbox(kParamShowVectorscope, 17, string_at(23), true, kSwitch),
    checkbox(kParamShowChannelParade, 18, string_at(24), true, kSwitch),
    checkbox(kParamShowSliceWaveform, 19, string_at(25), false, kSwitch),
    checkbox(kParamShowHistogram, 20, string_at(26), false, kSwitch),
    checkbox(kParamMuteActiveScopes, 58, "REN", false, kStatic, string_at(27)),
    group(kParamWaveformGroup, 21, 28),
    popup(kParamWaveformShowChannels, 22, 49, 50, 3),
    point(kParamWaveformPosition, 23, 29, kLeft, 0x0001638E, kFlagSupervise),
    slider(kParamWaveformWidth, 24, 30, 200.0, kWidth, 1),
    slider(kParamWaveformBrightness, 25, 31, 100.0, kBrightness, 1, kPercent),
    end(kParamWaveformEnd),
    group(kParamVectorscopeGroup, 26, 32),
    popup(kParamVectorscopeGraticule, 27, 33, 34, 1),
    checkbox(kParamVectorscopeMonochrome, 28, string_at(35), true, 0),
    popup(kParamVectorscopeCalibrateFor, 29, 36, 37, 1),
    checkbox(kParamVectorscopeSkinToneLine, 30, string_at(38), true, 0),
    checkbox(kParamVectorscopeReferenceLine, 31, string_at(39), false, 0),
    {.index = kParamVectorscopeReferenceColour,
     .kind = ParamKind::color,
     .id = 32,
     .name = string_at(40)},
    point(kParamVectorscopePosition, 33, 41, kLeft, 0x001C5553, kFlagSupervise),
    slider(kParamVectorscopeSize, 34, 42, 200.0, {150.0, 1000.0}, 1),
    slider(kParamVectorscopeBrightness, 35, 43, 100.0, kBrightness, 1, kPercent),
    end(kParamVectorscopeEnd),
    group(kParamParadeGroup, 36, 44),
    point(kParamParadePosition, 37, 45, kLeft, 0x004984BC, kFlagSupervise),
    slider(kParamParadeWidth, 38, 46, 200.0, kWidth, 1),
    slider(kParamParadeBrightness, 39, 47, 100.0, kBrightness, 1, kPercent),
    end(kParamParadeEnd),
    group(kParamSliceGroup, 40, 48),
    popup(kParamSliceShowChannels, 41, 49, 50, 1),
    slider(kParamSliceLine, 42, 51, 50.0, kWhole, 0, kPercent),
    point(kParamSlicePosition, 44, 54, kLeft, 0x004B0000, kFlagSupervise),
    slider(kParamSliceWidth, 45, 55, 200.0, kWidth, 1),
    end(kParamSliceEnd),
    group(kParamHistogramGroup, 46, 56),
    popup(kParamHistogramShowChannels, 55, 57, 58, 1),
    point(kParamHistogramPosition, 47, 59, 0x00320000, 0, kFlagSupervise),
    slider(kParamHistogramHeight, 48, 60, 60.0, {60.0, 300.0}, 1),
    end(kParamHistogramEnd),
    group(kParamOptionsGroup, 49, 61),
    popup(kParamLuminanceMath, 56, 62, 63, 1),
    slider(kParamMaxWaveformScale, 50, 64, 100.0, {100.0, 200.0}, 0, kPercent),
    popup(kParamWaveformAspectRatio, 54, 65, 66, 1),
    popup(kParamWaveformScale, 51, 67, 68, 1),
    popup(kParamWaveformGuides, 52, 69, 70, 1),
    popup(kParamSamplingQuality, 53, 72, 73, 2, kStatic),
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

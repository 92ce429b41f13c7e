// The 68 added parameters as an independent table, and a field-by-field comparison with a
// definition that the plug-in handed to the host.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "hostapi/param_def.h"

namespace ks::oracle {

// The host's numbers of the parameter types in use.
enum class ParamKind : std::int32_t {
    kLayer = 0,
    kCheckbox = 4,
    kColour = 5,
    kPoint = 6,
    kPopup = 7,
    kFloatSlider = 10,
    kGroupStart = 13,
    kGroupEnd = 14,
};

// One parameter as added. Fields that the kind does not use are zero or empty.
struct ParamRow {
    int index = 0;
    int id = 0;
    ParamKind kind = ParamKind::kGroupEnd;
    const char *name = "";
    int flags = 0;
    int ui_flags = 0;
    const char *popup_text = "";  // popup: choices, parted by "|"
    int num_choices = 0;          // popup: separators count
    int choice = 0;               // popup: 1-based value and default
    bool checked = false;         // checkbox: value and default
    const char *box_label = "";   // checkbox: text beside the box
    std::int32_t x_percent = 0;   // point: 16.16 percent of the layer's width
    std::int32_t y_percent = 0;   // point: 16.16 percent of the layer's height
    double value = 0.0;           // float slider: value and default
    double minimum = 0.0;         // float slider: valid and slider range alike
    double maximum = 0.0;
    int precision = 0;      // float slider: decimals
    int display_flags = 0;  // float slider: 1 percent
};

inline constexpr int kParamCount = 69;  // reported to the host; the input layer is number 0

// Rows of the indices 1 to 68, in order.
const std::array<ParamRow, 68> &param_rows();

// The names of the fields in which the definition differs from the row, with both values; empty
// when it is exactly as required, fields that stay zero included.
std::vector<std::string> param_differences(const ParamRow &row, const PF_ParamDef &actual);

}  // namespace ks::oracle

// Comparison of a definition as the host received it with a row of the table.
#include <algorithm>
#include <cstring>
#include <sstream>
#include <utility>

#include "oracle/param_oracle.h"

namespace ks::oracle {
namespace {

class Comparison {
  public:
    template <class Expected, class Actual>
    void field(const char *name, const Expected &expected, const Actual &actual) {
        if (actual == static_cast<Actual>(expected)) return;
        std::ostringstream text;
        text << name << ": expected " << expected << ", is " << actual;
        found_.push_back(text.str());
    }

    void text(const char *name, const char *expected, const char *actual) {
        const char *shown = actual == nullptr ? "(null)" : actual;
        if (actual != nullptr && std::strcmp(expected, actual) == 0) return;
        found_.push_back(std::string(name) + ": expected \"" + expected + "\", is \"" + shown +
                         '"');
    }

    // Every byte of the part must be zero.
    void zero(const char *name, const void *bytes, std::size_t count) {
        const auto *p = static_cast<const unsigned char *>(bytes);
        const bool cleared = std::all_of(p, p + count, [](unsigned char b) { return b == 0; });
        if (!cleared) found_.push_back(std::string(name) + ": not cleared");
    }

    std::vector<std::string> take() { return std::move(found_); }

  private:
    std::vector<std::string> found_;
};

void compare_popup(Comparison &c, const ParamRow &row, const PF_PopupDef &def) {
    c.field("value", row.choice, def.value);
    c.field("num_choices", row.num_choices, def.num_choices);
    c.field("dephault", row.choice, def.dephault);
    c.text("namesptr", row.popup_text, def.u.namesptr);
}

void compare_checkbox(Comparison &c, const ParamRow &row, const PF_CheckBoxDef &def) {
    c.field("value", row.checked ? 1 : 0, def.value);
    c.field("dephault", row.checked ? 1 : 0, static_cast<int>(def.dephault));
    c.text("nameptr", row.box_label, def.u.nameptr);
    c.zero("reserved", &def.reserved, sizeof def.reserved);
    c.zero("reserved1", &def.reserved1, sizeof def.reserved1);
}

// A point's initial value may be left cleared or be the default: only the default is promised.
void compare_point(Comparison &c, const ParamRow &row, const PF_PointDef &def) {
    if (def.x_value != 0 || def.y_value != 0) {
        c.field("x_value", row.x_percent, def.x_value);
        c.field("y_value", row.y_percent, def.y_value);
    }
    c.field("restrict_bounds", 1, static_cast<int>(def.restrict_bounds));
    c.field("x_dephault", row.x_percent, def.x_dephault);
    c.field("y_dephault", row.y_percent, def.y_dephault);
    c.zero("reserved", def.reserved, sizeof def.reserved);
}

void compare_slider(Comparison &c, const ParamRow &row, const PF_FloatSliderDef &def) {
    c.field("value", row.value, def.value);
    c.field("valid_min", row.minimum, def.valid_min);
    c.field("valid_max", row.maximum, def.valid_max);
    c.field("slider_min", row.minimum, def.slider_min);
    c.field("slider_max", row.maximum, def.slider_max);
    c.field("dephault", row.value, def.dephault);
    c.field("precision", row.precision, def.precision);
    c.field("display_flags", row.display_flags, def.display_flags);
    c.zero("phase", &def.phase, sizeof def.phase);
    c.zero("value_desc", def.value_desc, sizeof def.value_desc);
    c.field("fs_flags", 0, def.fs_flags);
    c.field("curve_tolerance", 0, def.curve_tolerance);
    c.field("useExponent", 0, static_cast<int>(def.useExponent));
    c.field("exponent", 0, def.exponent);
}

}  // namespace

std::vector<std::string> param_differences(const ParamRow &row, const PF_ParamDef &actual) {
    Comparison c;
    c.field("uu.id", row.id, actual.uu.id);
    c.field("param_type", static_cast<int>(row.kind), actual.param_type);
    c.field("flags", row.flags, actual.flags);
    c.field("ui_flags", row.ui_flags, actual.ui_flags);
    c.field("ui_width", 0, actual.ui_width);
    c.field("ui_height", 0, actual.ui_height);
    c.field("unused", 0, actual.unused);
    const char *name_end = std::find(actual.name, actual.name + sizeof actual.name, '\0');
    const std::string name(actual.name, name_end);
    c.text("name", row.name, name.c_str());
    switch (row.kind) {
        case ParamKind::kPopup:
            compare_popup(c, row, actual.u.pd);
            break;
        case ParamKind::kCheckbox:
            compare_checkbox(c, row, actual.u.bd);
            break;
        case ParamKind::kPoint:
            compare_point(c, row, actual.u.td);
            break;
        case ParamKind::kFloatSlider:
            compare_slider(c, row, actual.u.fs_d);
            break;
        case ParamKind::kColour:
            c.zero("colour", &actual.u, sizeof actual.u);
            break;
        case ParamKind::kLayer:
        case ParamKind::kGroupStart:
        case ParamKind::kGroupEnd:
            c.zero("type-specific part", &actual.u, sizeof actual.u);
            break;
    }
    return c.take();
}

}  // namespace ks::oracle

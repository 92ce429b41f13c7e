#include "oracle/param_oracle.h"

namespace ks::oracle {
namespace {

constexpr int kPlain = 0;
constexpr int kFixed = 6;             // cannot vary over time, cannot interpolate
constexpr int kTwirlyCollapsed = 32;  // the slider starts with its twirly closed
constexpr int kSupervised = 64;
constexpr int kFixedSupervised = 70;
constexpr int kSeparatorAbove = 16;  // of the UI flags
constexpr int kNumber = 0;
constexpr int kPercent = 1;

constexpr const char *kLayouts =
    "Single|(-|Four-Way Split|Four-Way Classic|(-|Windowed|Off (Scopes Only)";

constexpr ParamRow row(int index, int id, ParamKind kind, const char *name, int flags) {
    ParamRow r;
    r.index = index;
    r.id = id;
    r.kind = kind;
    r.name = name;
    r.flags = flags;
    return r;
}

constexpr ParamRow group(int index, int id, const char *name) {
    return row(index, id, ParamKind::kGroupStart, name, kPlain);
}

constexpr ParamRow end(int index) {
    return row(index, 0, ParamKind::kGroupEnd, "", kPlain);
}

constexpr ParamRow popup(int index, int id, const char *name, const char *text, int num_choices,
                         int choice, int flags) {
    ParamRow r = row(index, id, ParamKind::kPopup, name, flags);
    r.popup_text = text;
    r.num_choices = num_choices;
    r.choice = choice;
    return r;
}

constexpr ParamRow checkbox(int index, int id, const char *name, bool checked, int flags,
                            const char *label = "") {
    ParamRow r = row(index, id, ParamKind::kCheckbox, name, flags);
    r.checked = checked;
    r.box_label = label;
    return r;
}

constexpr ParamRow point(int index, int id, const char *name, std::int32_t x, std::int32_t y,
                         int flags) {
    ParamRow r = row(index, id, ParamKind::kPoint, name, flags);
    r.x_percent = x;
    r.y_percent = y;
    return r;
}

constexpr ParamRow slider(int index, int id, const char *name, double value, double minimum,
                          double maximum, int precision, int display_flags, int flags) {
    ParamRow r = row(index, id, ParamKind::kFloatSlider, name, flags);
    r.value = value;
    r.minimum = minimum;
    r.maximum = maximum;
    r.precision = precision;
    r.display_flags = display_flags;
    return r;
}

constexpr ParamRow layer(int index, int id, const char *name, int ui_flags, int flags) {
    ParamRow r = row(index, id, ParamKind::kLayer, name, flags);
    r.ui_flags = ui_flags;
    return r;
}

constexpr ParamRow colour(int index, int id, const char *name) {
    return row(index, id, ParamKind::kColour, name, kPlain);
}

constexpr std::array<ParamRow, 68> kRows{{
    group(1, 1, "Monitor"),
    popup(2, 2, "Monitor Layout", kLayouts, 7, 4, kFixed),
    group(3, 3, "Primary Monitor"),
    point(4, 4, "Monitor Position", 0, 0, kPlain),
    slider(5, 5, "Monitor Size", 50, 10, 100, 1, kPercent, kTwirlyCollapsed),
    popup(6, 6, "Primary Monitor View", "RGB|Alpha|Luminance", 3, 1, kFixed),
    slider(7, 7, "Monitor Gamma", 1.0, 0.1, 5.0, 2, kNumber, kPlain),
    slider(8, 8, "Monitor Gain", 1.0, 0, 4.0, 2, kNumber, kPlain),
    popup(9, 9, "Apply Corrections", "Pre-Scopes|Post Scopes", 2, 1, kPlain),
    layer(10, 10, "Original Source", kSeparatorAbove, kSupervised),
    slider(11, 11, "Compare with Original", 0, 0, 100, 1, kPercent, kTwirlyCollapsed),
    slider(12, 12, "Compare Opacity", 100, 0, 100, 1, kPercent, kTwirlyCollapsed),
    end(13),
    group(14, 13, "Channels"),
    popup(15, 14, "View Channels", "R,G,B|Y,Cb,Cr", 2, 1, kFixed),
    end(16),
    end(17),
    group(18, 15, "Scopes"),
    checkbox(19, 16, "Show Waveform Monitor", true, kFixedSupervised),
    checkbox(20, 17, "Show Vectorscope", true, kFixedSupervised),
    checkbox(21, 18, "Show Channel Parade", true, kFixedSupervised),
    checkbox(22, 19, "Show Slice Waveform", false, kFixedSupervised),
    checkbox(23, 20, "Show Histogram", false, kFixedSupervised),
    checkbox(24, 58, "REN", false, kFixed, "Mute Active Scopes"),
    group(25, 21, "Waveform Monitor"),
    popup(26, 22, "Show Channels", "RGB + Luma|RGB|Luma", 3, 3, kPlain),
    point(27, 23, "Scope Position", 0x0000C800, 0x0001638E, kSupervised),
    slider(28, 24, "Scope Width", 200, 200, 1000, 1, kNumber, kPlain),
    slider(29, 25, "Scope Brightness", 100, 50, 150, 1, kPercent, kPlain),
    end(30),
    group(31, 26, "Vectorscope"),
    popup(32, 27, "Graticule Layout", "Regular|Hue Vectors", 2, 1, kPlain),
    checkbox(33, 28, "Monochrome Display", true, kPlain),
    popup(34, 29, "Calibrate For", "100%|75%|50%|25%", 4, 1, kPlain),
    checkbox(35, 30, "Show Skin Tone Line", true, kPlain),
    checkbox(36, 31, "Show Reference Line", false, kPlain),
    colour(37, 32, "Reference Colour"),
    point(38, 33, "Scope Position", 0x0000C800, 0x001C5553, kSupervised),
    slider(39, 34, "Scope Size", 200, 150, 1000, 1, kNumber, kPlain),
    slider(40, 35, "Scope Brightness", 100, 50, 150, 1, kPercent, kPlain),
    end(41),
    group(42, 36, "Channel Parade"),
    point(43, 37, "Scope Position", 0x0000C800, 0x004984BC, kSupervised),
    slider(44, 38, "Scope Width", 200, 200, 1000, 1, kNumber, kPlain),
    slider(45, 39, "Scope Brightness", 100, 50, 150, 1, kPercent, kPlain),
    end(46),
    group(47, 40, "Slice Waveform"),
    popup(48, 41, "Show Channels", "RGB + Luma|RGB|Luma", 3, 1, kPlain),
    slider(49, 42, "Slice Position", 50, 0, 100, 0, kPercent, kPlain),
    point(50, 44, "Scope Position", 0x0000C800, 0x004B0000, kSupervised),
    slider(51, 45, "Scope Width", 200, 200, 1000, 1, kNumber, kPlain),
    end(52),
    group(53, 46, "Histogram"),
    popup(54, 55, "Show Channels", "RGB|Luma", 2, 1, kPlain),
    point(55, 47, "Scope Position", 0x00320000, 0, kSupervised),
    slider(56, 48, "Scope Height", 60, 60, 300, 1, kNumber, kPlain),
    end(57),
    group(58, 49, "Options"),
    popup(59, 56, "Luminance Math's", "601|709", 2, 1, kPlain),
    slider(60, 50, "Max Waveform Scale", 100, 100, 200, 0, kPercent, kPlain),
    popup(61, 54, "Waveform Scopes Aspect Ratio", "Auto (Comp Aspect Ratio)|16:9|4:3|Square", 4, 1,
          kPlain),
    popup(62, 51, "Waveform Scopes Scale", "IRE|Project Bit Depth", 2, 1, kPlain),
    popup(63, 52, "Show Waveform Guides", "Off|7.5 IRE|16-235", 3, 1, kPlain),
    popup(64, 53, "Sampling Quality", "Low (Fast)|Medium|High (Slow)", 3, 2, kFixed),
    checkbox(65, 59, "Lock Layer Position", true, kFixedSupervised),
    end(66),
    end(67),
    checkbox(68, 57, "RESET", true, kFixedSupervised),
}};

}  // namespace

const std::array<ParamRow, 68> &param_rows() {
    return kRows;
}

}  // namespace ks::oracle

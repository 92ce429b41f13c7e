// What the menus hold.

#include "kestrel-stage/window/widgets/menus.h"
#include "stage/image/charts/charts.h"

namespace stage_view {
namespace {

constexpr const char *kPictureHint =
    "A picture or video file, or a numbered sequence: shot.%04d.png";
constexpr const char *kProjectHint = "A project file of the stage.";

struct Ratio {
    const char *name;
    int numerator, denominator;
};

constexpr Ratio kAspects[] = {
    {"Square Pixels", 1, 1},  {"D1/DV NTSC (10/11)", 10, 11}, {"D1/DV PAL (12/11)", 12, 11},
    {"HDV 1080 (4/3)", 4, 3}, {"Anamorphic 2:1", 2, 1},       {"Half (1/2)", 1, 2},
};

struct Resolution {
    const char *name;
    int downsample;
};

constexpr Resolution kResolutions[] = {{"Full", 1}, {"Half", 2}, {"Quarter", 4}};

constexpr int kZooms[] = {25, 50, 100, 200, 400};

struct WindowName {
    const char *name;
    stage::WindowKind kind;
};

constexpr WindowName kWindows[] = {{"Composition Window", stage::WindowKind::kComp},
                                   {"Layer Window", stage::WindowKind::kLayer}};

}  // namespace

void Menus::ask_for_picture(bool as_layer) {
    dialog_.ask(as_layer ? "Add Picture as Layer" : "Open Picture", as_layer ? "Add" : "Open",
                kPictureHint, last_picture_, [this, as_layer](const std::filesystem::path &file) {
                    last_picture_ = file;
                    as_layer ? acts_.add_picture(file) : acts_.open_picture(file);
                });
}

void Menus::ask_for_project() {
    dialog_.ask("Load Project", "Load", kProjectHint, acts_.project_file,
                [this](const std::filesystem::path &file) { acts_.load_project(file); });
}

void Menus::ask_where_to_save() {
    dialog_.ask("Save Project", "Save", kProjectHint,
                acts_.project_file.empty() ? "project.json" : acts_.project_file,
                [this](const std::filesystem::path &file) { acts_.save_project(file); });
}

Menus::Lines Menus::bar_lines() {
    return {
        {.name = "File", .menu = [this] { return file_lines(); }},
        {.name = "Edit", .menu = [this] { return edit_lines(); }},
        {.name = "Layer", .menu = [this] { return layer_lines(); }},
        {.name = "View", .menu = [this] { return view_lines(); }},
        {.name = "Project", .menu = [this] { return project_lines(); }},
    };
}

Menus::Lines Menus::file_lines() {
    return {
        {.name = "Open Picture...", .keys = "Ctrl+O", .act = [this] { ask_for_picture(false); }},
        {.name = "Open Chart", .menu = [this] { return chart_lines(false); }},
        {},
        {.name = "Load Project...", .act = [this] { ask_for_project(); }},
        {.name = "Save Project...", .keys = "Ctrl+S", .act = [this] { ask_where_to_save(); }},
        {},
        {.name = "Quit", .keys = "Ctrl+Q", .act = [this] { acts_.quit = true; }},
    };
}

Menus::Lines Menus::chart_lines(bool as_layer) {
    Lines lines;
    for (const stage::Chart &chart : stage::charts()) {
        const std::string name(chart.name);
        lines.push_back({.name = name, .act = [this, name, as_layer] {
                             as_layer ? acts_.add_chart(name) : acts_.open_chart(name, 1920, 1080);
                         }});
    }
    return lines;
}

Menus::Lines Menus::edit_lines() {
    const stage::Undo &undo = acts_.session().history();
    const std::vector<std::string> steps = undo.steps();
    return {
        {.name = steps.empty() ? "Undo" : "Undo " + steps.back(),
         .keys = "Ctrl+Z",
         .act = [this] { acts_.undo(); },
         .enabled = undo.next_undo() != nullptr},
        {.name = "Redo",
         .keys = "Ctrl+Shift+Z",
         .act = [this] { acts_.redo(); },
         .enabled = undo.next_redo() != nullptr},
        {},
        {.name = "Reset Effect",
         .act = [this] { acts_.reset_effect(); },
         .enabled = acts_.desk().effect() != nullptr},
        {.name = "Duplicate Layer", .keys = "Ctrl+D", .act = [this] { acts_.duplicate_layer(); }},
        {.name = "Delete Layer", .act = [this] { acts_.delete_layer(); }},
    };
}

Menus::Lines Menus::layer_lines() {
    const auto act = [this](auto what) {
        return [this, what] { acts_.attempt([&] { what(acts_.desk()); }); };
    };
    return {
        {.name = "Add Picture...", .act = [this] { ask_for_picture(true); }},
        {.name = "Add Chart", .menu = [this] { return chart_lines(true); }},
        {.name = "Add Adjustment Layer",
         .act = act([](stage::Desk &desk) { desk.add_adjustment("Adjustment"); })},
        {.name = "Add Text Layer", .act = act([](stage::Desk &desk) { desk.add_text("Text"); })},
        {},
        {.name = "Apply Effect", .act = [this] { acts_.apply_effect(); }},
        {.name = "Remove Effect",
         .act = act([](stage::Desk &desk) { desk.remove_effect(); }),
         .enabled = acts_.desk().effect() != nullptr},
    };
}

Menus::Lines Menus::view_lines() {
    stage::Desk &desk = acts_.desk();
    Lines lines;
    for (const Resolution &row : kResolutions) {
        lines.push_back({.name = row.name,
                         .act = [this, row] { acts_.set_resolution(row.downsample); },
                         .checked = desk.resolution() == row.downsample});
    }
    lines.push_back({});
    lines.push_back({.name = "Fit", .keys = "Shift+/", .act = [this] { acts_.fit(); }});
    for (const int percent : kZooms) {
        lines.push_back({.name = std::to_string(percent) + " %",
                         .act = [this, percent] { acts_.zoom_middle(percent / 100.0); },
                         .checked = desk.viewport().zoom == percent / 100.0});
    }
    lines.push_back({});
    for (const WindowName &row : kWindows) {
        lines.push_back(
            {.name = row.name,
             .act = [this, row] { acts_.set_window(row.kind); },
             .enabled = row.kind == stage::WindowKind::kComp || desk.effect() != nullptr,
             .checked = desk.window == row.kind});
    }
    lines.push_back({});
    lines.push_back({.name = "Pixel Aspect Correction",
                     .act = [this] { acts_.correct_aspect = !acts_.correct_aspect; },
                     .checked = acts_.correct_aspect});
    return lines;
}

Menus::Lines Menus::project_lines() {
    return {
        {.name = "Depth", .menu = [this] { return depth_lines(); }},
        {.name = "Threads", .menu = [this] { return thread_lines(); }},
        {.name = "Pixel Aspect", .menu = [this] { return aspect_lines(); }},
        {.name = "Composition", .menu = [this] { return comp_lines(); }},
        {},
        {.name = "Strict Checks",
         .act = [this] { acts_.session().set_checks(!acts_.session().checks()); },
         .checked = acts_.session().checks()},
    };
}

Menus::Lines Menus::depth_lines() {
    Lines lines;
    for (const int bits : {8, 16, 32}) {
        const stage::Depth depth = stage::depth_from_bits(bits);
        lines.push_back({.name = std::to_string(bits) + " Bits per Channel",
                         .act = [this, depth] { acts_.set_depth(depth); },
                         .checked = acts_.session().options().depth == depth});
    }
    return lines;
}

Menus::Lines Menus::thread_lines() {
    Lines lines;
    for (const int count : {1, 2, 4, 0}) {
        const std::string name = count == 0 ? "All Processors" : std::to_string(count);
        lines.push_back({.name = name,
                         .act = [this, count] { acts_.set_threads(count); },
                         .checked = acts_.threads() == count});
    }
    return lines;
}

Menus::Lines Menus::aspect_lines() {
    const stage::Item *comp = acts_.comp();
    Lines lines;
    for (const Ratio &row : kAspects) {
        lines.push_back(
            {.name = row.name,
             .act = [this, row] { acts_.set_pixel_aspect(row.numerator, row.denominator); },
             .checked = comp != nullptr &&
                        comp->par_num * row.denominator == comp->par_den * row.numerator});
    }
    return lines;
}

Menus::Lines Menus::comp_lines() {
    const stage::Project &project = acts_.session().project();
    Lines lines;
    for (const auto &item : project.items()) {
        if (item->kind != stage::ItemKind::kComp) continue;
        lines.push_back({.name = item->name,
                         .act = [this, id = item->id] { acts_.show_comp(id); },
                         .checked = item->id == project.active_comp});
    }
    return lines;
}

}  // namespace stage_view

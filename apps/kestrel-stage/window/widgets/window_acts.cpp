#include "kestrel-stage/window/widgets/window_acts.h"

#include <algorithm>
#include <thread>

namespace stage_view {

using stage::Item;
using stage::Layer;
using stage::LayerId;

namespace {

/// A selected layer of the comp that can be acted on; 0 when there is none.
LayerId selected_layer(const Item &comp) {
    const auto found = std::ranges::find_if(comp.layers, [](const Layer &l) { return l.selected; });
    return found == comp.layers.end() ? 0 : found->id;
}

}  // namespace

Item *WindowActs::comp() {
    stage::Project &project = session().project();
    return project.comp(project.active_comp);
}

template <typename AddLayer>
void WindowActs::open(AddLayer &&add_layer) {
    stage::Project &project = session().project();
    const stage::ItemId before = project.active_comp;
    const bool opened = attempt([&] {
        project.active_comp = 0;
        add_layer();
        desk_.add_adjustment("Scopes");
    });
    if (!opened) {
        if (project.active_comp == 0) project.active_comp = before;
        return;
    }
    apply_effect();
    set_frame(0);
    fit();
}

void WindowActs::open_picture(const std::filesystem::path &file) {
    open([&] { desk_.add_footage(file); });
}

void WindowActs::open_chart(const std::string &chart, int width, int height) {
    open([&] { desk_.add_chart(chart, width, height); });
}

void WindowActs::add_picture(const std::filesystem::path &file) {
    attempt([&] { desk_.add_footage(file); });
}

void WindowActs::add_chart(const std::string &chart) {
    const Item *now = comp();
    attempt([&] {
        desk_.add_chart(chart, now != nullptr ? now->width : 1920,
                        now != nullptr ? now->height : 1080);
    });
}

void WindowActs::save_project(const std::filesystem::path &file) {
    if (attempt([&] { desk_.save(file); })) project_file = file;
}

void WindowActs::load_project(const std::filesystem::path &file) {
    if (!attempt([&] { desk_.load(file); })) return;
    project_file = file;
    desk_.set_frame(0);
    fit();
}

void WindowActs::show_comp(stage::ItemId id) {
    attempt([&] { desk_.show_comp(id); });
    set_frame(0);
    fit();
}

void WindowActs::apply_effect() {
    attempt([&] {
        for (const stage::CommandResult &result : desk_.apply()) {
            if (result.error == 0) continue;
            notify("The effect could not be applied: error " + std::to_string(result.error) + ".",
                   true);
        }
    });
}

void WindowActs::duplicate_layer() {
    const Item *now = comp();
    const LayerId layer = now != nullptr ? selected_layer(*now) : 0;
    if (layer != 0) attempt([&] { desk_.duplicate_layer(layer); });
}

void WindowActs::delete_layer() {
    const Item *now = comp();
    const LayerId layer = now != nullptr ? selected_layer(*now) : 0;
    if (layer != 0) attempt([&] { desk_.delete_layer(layer); });
}

void WindowActs::set_value(int index, const stage::ParamValue &value) {
    if (held_ && !edit_open_) {
        session().history().begin_group("Edit");
        edit_open_ = true;
    }
    attempt([&] {
        const PF_Err error = desk_.set_value(index, value);
        if (error != 0)
            notify("The effect answered with error " + std::to_string(error) + ".", true);
    });
}

void WindowActs::settle_edits(bool held) {
    held_ = held;
    if (held || !edit_open_) return;
    session().history().end_group();
    edit_open_ = false;
}

void WindowActs::reset_effect() {
    if (desk_.effect() == nullptr) return;
    attempt([&] {
        const PF_Err error = desk_.reset();
        if (error != 0)
            notify("The effect answered with error " + std::to_string(error) + ".", true);
    });
}

void WindowActs::undo() {
    settle_edits(false);
    if (!desk_.dragging()) attempt([&] { desk_.undo(); });
}

void WindowActs::redo() {
    settle_edits(false);
    if (!desk_.dragging()) attempt([&] { desk_.redo(); });
}

void WindowActs::fit() {
    fittings_[desk_.window] = {};
}

void WindowActs::zoom_to(double zoom, double x, double y) {
    fittings_[desk_.window].fitted = false;
    desk_.viewport().zoom_to(zoom, x, y);
}

void WindowActs::zoom_middle(double zoom) {
    zoom_to(zoom, desk_.viewport().width / 2.0, desk_.viewport().height / 2.0);
}

void WindowActs::pan_by(double dx, double dy) {
    fittings_[desk_.window].fitted = false;
    desk_.viewport().pan_x += dx;
    desk_.viewport().pan_y += dy;
}

void WindowActs::settle_view(int width, int height) {
    if (comp() == nullptr) return;
    Fitting &before = fittings_[desk_.window];
    const Fitting now{before.fitted,
                      width,
                      height,
                      desk_.source_width(),
                      desk_.source_height(),
                      correct_aspect ? pixel_aspect() : 1.0};
    stage::Viewport &viewport = desk_.viewport();
    viewport.width = width;
    viewport.height = height;
    viewport.stretch = now.stretch;
    if (now.fitted && now != before) viewport.fit(now.source_width, now.source_height);
    before = now;
}

void WindowActs::set_resolution(int downsample) {
    attempt([&] { desk_.set_resolution(downsample); });
}

void WindowActs::set_frame(std::int64_t frame) {
    const Item *now = comp();
    const std::int64_t last = now != nullptr ? std::max<std::int64_t>(now->frames, 1) - 1 : 0;
    attempt([&] { desk_.set_frame(std::clamp<std::int64_t>(frame, 0, last)); });
}

void WindowActs::set_window(stage::WindowKind kind) {
    desk_.window = kind;
    desk_.touch();
}

void WindowActs::set_depth(stage::Depth depth) {
    session().options().depth = depth;
    desk_.touch();
}

void WindowActs::set_threads(int count) {
    threads_ = count;
    const int cores = static_cast<int>(std::max(1U, std::thread::hardware_concurrency()));
    const int used = std::min(count > 0 ? count : cores, stage::kMaxScheduleThreads);
    session().options().schedule =
        used == 1 ? stage::Schedule::serial() : stage::Schedule::with_threads(used);
    desk_.touch();
}

double WindowActs::pixel_aspect() {
    const Item *now = comp();
    return now != nullptr ? double(now->par_num) / now->par_den : 1.0;
}

void WindowActs::set_pixel_aspect(int numerator, int denominator) {
    if (comp() != nullptr) attempt([&] { desk_.set_pixel_aspect(numerator, denominator); });
}

void WindowActs::notify(const std::string &text, bool as_error) {
    const bool shown =
        std::ranges::any_of(notices, [&](const Notice &n) { return n.text == text; });
    if (!shown) notices.push_back({text, as_error});
}

void WindowActs::collect_messages() {
    const std::vector<stage::ShownMessage> &all = session().messages();
    if (messages_taken_ > all.size()) messages_taken_ = 0;
    for (; messages_taken_ < all.size(); ++messages_taken_) {
        notify(all[messages_taken_].text, all[messages_taken_].as_error);
    }
}

}  // namespace stage_view

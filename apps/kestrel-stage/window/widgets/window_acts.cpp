#include "kestrel-stage/window/desk.h"

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

Item *Desk::comp() {
    stage::Project &project = session().host.project;
    return project.comp(project.active_comp);
}

template <typename AddLayer>
void Desk::open(AddLayer &&add_layer) {
    stage::Project &project = session().host.project;
    const stage::ItemId before = project.active_comp;
    const bool opened = attempt([&] {
        project.active_comp = 0;
        add_layer();
        workspace_.add_adjustment("Scopes");
    });
    if (!opened) {
        if (project.active_comp == 0) project.active_comp = before;
        return;
    }
    apply_effect();
    set_frame(0);
    fit();
}

void Desk::open_picture(const std::filesystem::path &file) {
    open([&] { workspace_.add_footage(file); });
}

void Desk::open_chart(const std::string &chart, int width, int height) {
    open([&] { workspace_.add_chart(chart, width, height); });
}

void Desk::add_picture(const std::filesystem::path &file) {
    attempt([&] { workspace_.add_footage(file); });
}

void Desk::add_chart(const std::string &chart) {
    const Item *now = comp();
    attempt([&] {
        workspace_.add_chart(chart, now != nullptr ? now->width : 1920,
                             now != nullptr ? now->height : 1080);
    });
}

void Desk::save_project(const std::filesystem::path &file) {
    if (attempt([&] { workspace_.save(file); })) project_file = file;
}

void Desk::load_project(const std::filesystem::path &file) {
    if (!attempt([&] { workspace_.load(file); })) return;
    project_file = file;
    workspace_.set_frame(0);
    fit();
}

void Desk::show_comp(stage::ItemId id) {
    session().host.project.active_comp = id;
    attempt([&] { workspace_.select({}); });
    // The effect in the comp becomes the one whose panel is shown.
    if (const Item *now = comp()) {
        for (const auto &instance : session().host.instances) {
            if (std::ranges::find(now->layers, instance->layer, &Layer::id) != now->layers.end()) {
                workspace_.choose(*instance);
                break;
            }
        }
    }
    workspace_.touch();
    set_frame(0);
    fit();
}

void Desk::apply_effect() {
    attempt([&] {
        for (const stage::CommandResult &result : workspace_.apply()) {
            if (result.error == 0) continue;
            notify("The effect could not be applied: error " + std::to_string(result.error) + ".",
                   true);
        }
    });
}

void Desk::duplicate_layer() {
    const Item *now = comp();
    const LayerId layer = now != nullptr ? selected_layer(*now) : 0;
    if (layer != 0) attempt([&] { workspace_.duplicate_layer(layer); });
}

void Desk::delete_layer() {
    const Item *now = comp();
    const LayerId layer = now != nullptr ? selected_layer(*now) : 0;
    if (layer != 0) attempt([&] { workspace_.delete_layer(layer); });
}

void Desk::set_value(int index, const stage::ParamValue &value) {
    if (held_ && !edit_open_) {
        session().host.undo.begin_group("Edit");
        edit_open_ = true;
    }
    attempt([&] {
        const PF_Err error = workspace_.set_value(index, value);
        if (error != 0)
            notify("The effect answered with error " + std::to_string(error) + ".", true);
    });
}

void Desk::settle_edits(bool held) {
    held_ = held;
    if (held || !edit_open_) return;
    session().host.undo.end_group();
    edit_open_ = false;
}

void Desk::reset_effect() {
    if (workspace_.effect() == nullptr) return;
    attempt([&] {
        const PF_Err error = workspace_.reset();
        if (error != 0)
            notify("The effect answered with error " + std::to_string(error) + ".", true);
    });
}

void Desk::undo() {
    settle_edits(false);
    if (!workspace_.dragging()) attempt([&] { workspace_.undo(); });
}

void Desk::redo() {
    settle_edits(false);
    if (!workspace_.dragging()) attempt([&] { workspace_.redo(); });
}

void Desk::fit() {
    fittings_[workspace_.window] = {};
}

void Desk::zoom_to(double zoom, double x, double y) {
    fittings_[workspace_.window].fitted = false;
    workspace_.viewport().zoom_to(zoom, x, y);
}

void Desk::zoom_middle(double zoom) {
    zoom_to(zoom, workspace_.viewport().width / 2.0, workspace_.viewport().height / 2.0);
}

void Desk::pan_by(double dx, double dy) {
    fittings_[workspace_.window].fitted = false;
    workspace_.viewport().pan_x += dx;
    workspace_.viewport().pan_y += dy;
}

void Desk::settle_view(int width, int height) {
    if (comp() == nullptr) return;
    Fitting &before = fittings_[workspace_.window];
    const Fitting now{before.fitted,
                      width,
                      height,
                      workspace_.source_width(),
                      workspace_.source_height(),
                      correct_aspect ? pixel_aspect() : 1.0};
    stage::Viewport &viewport = workspace_.viewport();
    viewport.width = width;
    viewport.height = height;
    viewport.stretch = now.stretch;
    if (now.fitted && now != before) viewport.fit(now.source_width, now.source_height);
    before = now;
}

void Desk::set_resolution(int downsample) {
    attempt([&] { workspace_.set_resolution(downsample); });
}

void Desk::set_frame(std::int64_t frame) {
    const Item *now = comp();
    const std::int64_t last = now != nullptr ? std::max<std::int64_t>(now->frames, 1) - 1 : 0;
    attempt([&] { workspace_.set_frame(std::clamp<std::int64_t>(frame, 0, last)); });
}

void Desk::set_window(stage::WindowKind kind) {
    workspace_.window = kind;
    workspace_.touch();
}

void Desk::set_depth(stage::Depth depth) {
    session().host.options.depth = depth;
    workspace_.touch();
}

void Desk::set_threads(int count) {
    threads_ = count;
    const int cores = static_cast<int>(std::max(1U, std::thread::hardware_concurrency()));
    const int used = std::min(count > 0 ? count : cores, stage::kMaxScheduleThreads);
    session().host.options.schedule =
        used == 1 ? stage::Schedule::serial() : stage::Schedule::with_threads(used);
    workspace_.touch();
}

double Desk::pixel_aspect() {
    const Item *now = comp();
    return now != nullptr ? double(now->par_num) / now->par_den : 1.0;
}

void Desk::set_pixel_aspect(int numerator, int denominator) {
    Item *now = comp();
    if (now == nullptr) return;
    stage::Host &host = session().host;
    host.undo.before_change("Pixel Aspect");
    const auto set = [&](Item &item) {
        item.par_num = numerator;
        item.par_den = denominator;
    };
    set(*now);
    for (const Layer &layer : now->layers) {
        Item *source = host.project.item(layer.source);
        if (source != nullptr && source->kind != stage::ItemKind::kComp) set(*source);
    }
    workspace_.touch();
}

void Desk::notify(const std::string &text, bool as_error) {
    const bool shown =
        std::ranges::any_of(notices, [&](const Notice &n) { return n.text == text; });
    if (!shown) notices.push_back({text, as_error});
}

void Desk::collect_messages() {
    const std::vector<stage::ShownMessage> &all = session().host.messages;
    if (messages_taken_ > all.size()) messages_taken_ = 0;
    for (; messages_taken_ < all.size(); ++messages_taken_) {
        notify(all[messages_taken_].text, all[messages_taken_].as_error);
    }
}

}  // namespace stage_view

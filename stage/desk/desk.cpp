#include "stage/desk/desk.h"

#include <algorithm>

#include "stage/session/footage.h"
#include "stage/text/utf8_path.h"

namespace stage {
namespace {

Layer &require_layer(Project &project, LayerId id) {
    Layer *layer = project.layer(id);
    if (layer == nullptr) throw SessionError("there is no layer " + std::to_string(id));
    return *layer;
}

void refuse_locked(const Layer &layer) {
    if (layer.has_flag(layer_flag::kLocked)) {
        throw SessionError("layer \"" + layer.name + "\" is locked");
    }
}

}  // namespace

Desk::Desk(Session &session) : session_(session) {
    viewports_[WindowKind::kComp];
    viewports_[WindowKind::kLayer];
    settle_effects();
}

Desk::~Desk() = default;

Item &Desk::active_comp() {
    Project &project = session_.host.project;
    Item *comp = project.comp(project.active_comp);
    if (comp == nullptr) throw SessionError("there is no composition");
    return *comp;
}

LayerId Desk::arrived(LayerId layer) {
    select({layer});
    return layer;
}

ItemId Desk::new_comp(const std::string &name, int width, int height, int par_num, int par_den,
                      std::int64_t frames) {
    Host &host = session_.host;
    host.undo.before_change("New Composition");
    const ItemId comp = host.project.add_comp(name, width, height, par_num, par_den, frames);
    host.project.active_comp = comp;
    set_frame(0);
    return comp;
}

LayerId Desk::add_item(const Footage &footage, const std::string &name, int par_num, int par_den,
                       const std::function<void(Item &)> &describe) {
    Project &project = session_.host.project;
    const OpenedFootage &opened = footage.opened;
    if (project.comp(project.active_comp) == nullptr) {
        const ItemId comp =
            new_comp("Comp 1", opened.width, opened.height, par_num, par_den, opened.frames);
        project.item(comp)->rate_num = footage.rate_num;
        project.item(comp)->rate_den = footage.rate_den;
    }
    session_.host.undo.before_change("Add Footage");
    const ItemId item = project.add_footage(name, opened.width, opened.height, par_num, par_den,
                                            opened.frames, opened.reader);
    describe(*project.item(item));
    return arrived(project.add_layer(project.active_comp, item, 0, name));
}

LayerId Desk::add_footage(const std::filesystem::path &file, int par_num, int par_den) {
    const Footage footage = open_footage_file(file);
    return add_item(footage, path_to_utf8(file.filename()), par_num, par_den,
                    [&](Item &item) { item.path = path_to_utf8(std::filesystem::absolute(file)); });
}

LayerId Desk::add_chart(const std::string &chart, int width, int height, int par_num, int par_den) {
    return add_item(open_chart(chart, width, height), chart, par_num, par_den,
                    [&](Item &item) { item.chart = chart; });
}

LayerId Desk::add_solid(const std::string &name, int width, int height,
                        const std::array<double, 4> &color) {
    const ItemId comp = active_comp().id;
    Host &host = session_.host;
    host.undo.before_change("New Solid");
    const ItemId item = host.project.add_solid_item(name, width, height, color);
    return arrived(host.project.add_layer(comp, item, 0, name));
}

LayerId Desk::add_adjustment(const std::string &name) {
    const ItemId comp = active_comp().id;
    session_.host.undo.before_change("New Adjustment Layer");
    return arrived(session_.host.project.add_adjustment_layer(comp, 0, name));
}

LayerId Desk::add_text(const std::string &name) {
    const ItemId comp = active_comp().id;
    session_.host.undo.before_change("New Text Layer");
    return arrived(session_.host.project.add_text_layer(comp, 0, name));
}

void Desk::select(const std::vector<LayerId> &layers) {
    Project &project = session_.host.project;
    for (const LayerId id : layers) refuse_locked(require_layer(project, id));
    for (Layer &layer : active_comp().layers) {
        layer.selected = std::ranges::find(layers, layer.id) != layers.end();
    }
    choose_selected();
    touch();
}

void Desk::delete_layer(LayerId id) {
    Host &host = session_.host;
    refuse_locked(require_layer(host.project, id));
    close_viewers();
    for (const auto &instance : host.instances) {
        if (instance->layer == id) session_.store_sequence(*instance);
    }
    host.undo.before_change("Delete Layer");
    host.project.remove_layer(id);
    session_.settle_instances();
    settle_effects();
}

LayerId Desk::duplicate_layer(LayerId id) {
    Host &host = session_.host;
    Project &project = host.project;
    const Layer original = require_layer(project, id);
    refuse_locked(original);
    const ItemId comp = project.comp_of(id)->id;
    host.undo.before_change("Duplicate Layer");
    const LayerId copy_id =
        original.source != 0
            ? project.add_layer(comp, original.source, project.index_of(id), original.name)
            : project.add_text_layer(comp, project.index_of(id), original.name);
    Layer &copy = *project.layer(copy_id);
    copy = original;
    copy.id = copy_id;
    copy.effects.clear();
    try {
        duplicate_effects(original, copy_id);
    } catch (...) {
        project.remove_layer(copy_id);
        session_.settle_instances();
        settle_effects();
        throw;
    }
    return arrived(copy_id);
}

void Desk::duplicate_effects(const Layer &original, LayerId copy) {
    Host &host = session_.host;
    for (std::size_t i = 0; i < original.effects.size(); ++i) {
        const auto running = std::ranges::find_if(host.instances, [&](const auto &instance) {
            return instance->id == original.effects[i].instance;
        });
        if (running != host.instances.end()) {
            session_.duplicate(**running, copy);
        } else {
            host.project.layer(copy)->effects.push_back(original.effects[i]);
        }
    }
}

void Desk::move_layer(LayerId id, int index) {
    Host &host = session_.host;
    refuse_locked(require_layer(host.project, id));
    host.undo.before_change("Move Layer");
    host.project.reorder_layer(id, index);
    touch();
}

void Desk::show_layer(LayerId id, bool video) {
    Host &host = session_.host;
    require_layer(host.project, id);
    host.undo.before_change("Video Switch");
    Layer &layer = *host.project.layer(id);
    layer.flags =
        video ? layer.flags | layer_flag::kVideoActive : layer.flags & ~layer_flag::kVideoActive;
    touch();
}

void Desk::place_layer(LayerId id, double x, double y, double scale) {
    Host &host = session_.host;
    refuse_locked(require_layer(host.project, id));
    host.undo.before_change("Transform");
    Layer &layer = *host.project.layer(id);
    layer.position_x = x;
    layer.position_y = y;
    layer.scale = scale;
    touch();
}

std::vector<CommandResult> Desk::apply() {
    std::vector<LayerId> layers;
    for (const Layer &layer : active_comp().layers) {
        if (layer.selected) layers.push_back(layer.id);
    }
    if (layers.empty()) throw SessionError("no layer is selected");
    std::vector<CommandResult> results;
    for (const LayerId layer : layers) {
        CommandResult result;
        EffectInstance *instance = session_.apply(layer, &result);
        if (instance != nullptr) chosen_ = instance;
        results.push_back(result);
    }
    settle_effects();
    return results;
}

void Desk::remove_effect() {
    if (chosen_ == nullptr) throw SessionError("no effect is chosen");
    close_viewers();
    session_.store_sequence(*chosen_);
    session_.host.undo.before_change("Remove Effect");
    session_.remove(*chosen_);
    settle_effects();
}

EffectInstance *Desk::effect() const {
    return chosen_;
}

void Desk::choose(EffectInstance &instance) {
    chosen_ = &instance;
    session_.refresh_panel(instance);
    touch();
}

void Desk::choose_selected() {
    const auto on_selected = [&](const auto &instance) {
        const Layer *layer = session_.host.project.layer(instance->layer);
        return layer != nullptr && layer->selected;
    };
    const auto found = std::ranges::find_if(session_.host.instances, on_selected);
    if (found != session_.host.instances.end() && found->get() != chosen_) choose(**found);
}

/// After anything that may have ended the chosen effect.
void Desk::settle_effects() {
    const auto &instances = session_.host.instances;
    const bool alive = std::ranges::any_of(
        instances, [this](const auto &instance) { return instance.get() == chosen_; });
    if (!alive) {
        chosen_ = instances.empty() ? nullptr : instances.front().get();
        if (chosen_ != nullptr) session_.refresh_panel(*chosen_);
    }
    touch();
}

PF_Err Desk::set_value(int index, const ParamValue &value) {
    if (chosen_ == nullptr) throw SessionError("no effect is chosen");
    touch();
    return session_.set_value(*chosen_, index, value);
}

PF_Err Desk::reset() {
    if (chosen_ == nullptr) throw SessionError("no effect is chosen");
    touch();
    return session_.reset_values(*chosen_);
}

bool Desk::undo() {
    if (session_.host.undo.next_undo() == nullptr) return false;
    close_viewers();
    const bool done = session_.undo();
    settle_effects();
    return done;
}

bool Desk::redo() {
    if (session_.host.undo.next_redo() == nullptr) return false;
    close_viewers();
    const bool done = session_.redo();
    settle_effects();
    return done;
}

void Desk::save(const std::filesystem::path &file) {
    session_.save(file);
    touch();  // the records were rebuilt
}

void Desk::load(const std::filesystem::path &file) {
    close_viewers();
    chosen_ = nullptr;
    try {
        session_.load(file);
    } catch (...) {
        settle_effects();
        throw;
    }
    settle_effects();
    choose_selected();
    set_frame(frame_);
}

void Desk::set_frame(std::int64_t frame) {
    const Project &project = session_.host.project;
    const Item *comp = project.comp(project.active_comp);
    const std::int64_t last = comp != nullptr ? comp->frames - 1 : 0;
    frame_ = std::clamp<std::int64_t>(frame, 0, last);
    if (chosen_ != nullptr) session_.refresh_panel(*chosen_);
    touch();
}

void Desk::set_resolution(int downsample) {
    downsample_ = std::max(downsample, 1);
    touch();
}

}  // namespace stage

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
    Project &project = session_.project();
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
    session_.history().before_change("New Composition");
    const ItemId comp = session_.project().add_comp(name, width, height, par_num, par_den, frames);
    session_.project().active_comp = comp;
    set_frame(0);
    return comp;
}

void Desk::show_comp(ItemId id) {
    session_.project().active_comp = id;
    select({});
    const auto in_comp = [&](const auto &instance) {
        return session_.project().comp_of(instance->layer) == &active_comp();
    };
    const auto found = std::ranges::find_if(session_.instances(), in_comp);
    if (found != session_.instances().end()) choose(**found);
    touch();
}

void Desk::set_pixel_aspect(int par_num, int par_den) {
    Item &comp = active_comp();
    session_.history().before_change("Pixel Aspect");
    const auto set = [&](Item &item) {
        item.par_num = par_num;
        item.par_den = par_den;
    };
    set(comp);
    for (const Layer &layer : comp.layers) {
        Item *source = session_.project().item(layer.source);
        if (source != nullptr && source->kind != ItemKind::kComp) set(*source);
    }
    touch();
}

LayerId Desk::add_item(const Footage &footage, const std::string &name, int par_num, int par_den) {
    Project &project = session_.project();
    Item picture = footage_item(footage, name, par_num, par_den);
    if (project.comp(project.active_comp) == nullptr) {
        const ItemId comp =
            new_comp("Comp 1", picture.width, picture.height, par_num, par_den, picture.frames);
        project.item(comp)->rate_num = footage.rate_num;
        project.item(comp)->rate_den = footage.rate_den;
    }
    session_.history().before_change("Add Footage");
    const ItemId item = project.add_footage(std::move(picture));
    return arrived(project.add_layer(project.active_comp, item, 0, name));
}

LayerId Desk::add_footage(const std::filesystem::path &file, int par_num, int par_den) {
    return add_item(open_footage_file(file), path_to_utf8(file.filename()), par_num, par_den);
}

LayerId Desk::add_chart(const std::string &chart, int width, int height, int par_num, int par_den) {
    return add_item(open_chart(chart, width, height), chart, par_num, par_den);
}

LayerId Desk::add_solid(const std::string &name, int width, int height,
                        const std::array<double, 4> &color) {
    const ItemId comp = active_comp().id;
    session_.history().before_change("New Solid");
    const ItemId item = session_.project().add_solid_item(name, width, height, color);
    return arrived(session_.project().add_layer(comp, item, 0, name));
}

LayerId Desk::add_adjustment(const std::string &name) {
    const ItemId comp = active_comp().id;
    session_.history().before_change("New Adjustment Layer");
    return arrived(session_.project().add_adjustment_layer(comp, 0, name));
}

LayerId Desk::add_text(const std::string &name) {
    const ItemId comp = active_comp().id;
    session_.history().before_change("New Text Layer");
    return arrived(session_.project().add_text_layer(comp, 0, name));
}

void Desk::select(const std::vector<LayerId> &layers) {
    Project &project = session_.project();
    for (const LayerId id : layers) refuse_locked(require_layer(project, id));
    for (Layer &layer : active_comp().layers) {
        layer.selected = std::ranges::find(layers, layer.id) != layers.end();
    }
    choose_selected();
    touch();
}

void Desk::delete_layer(LayerId id) {
    refuse_locked(require_layer(session_.project(), id));
    close_viewers();
    for (const auto &instance : session_.instances()) {
        if (instance->layer == id) session_.store_sequence(*instance);
    }
    session_.history().before_change("Delete Layer");
    session_.project().remove_layer(id);
    session_.settle_instances();
    settle_effects();
}

LayerId Desk::duplicate_layer(LayerId id) {
    Project &project = session_.project();
    const Layer original = require_layer(project, id);
    refuse_locked(original);
    const ItemId comp = project.comp_of(id)->id;
    session_.history().before_change("Duplicate Layer");
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
    for (std::size_t i = 0; i < original.effects.size(); ++i) {
        EffectInstance *running = session_.instance_at(original.id, static_cast<int>(i));
        if (running != nullptr) {
            session_.duplicate(*running, copy);
        } else {
            session_.project().layer(copy)->effects.push_back(original.effects[i]);
        }
    }
}

void Desk::move_layer(LayerId id, int index) {
    refuse_locked(require_layer(session_.project(), id));
    session_.history().before_change("Move Layer");
    session_.project().reorder_layer(id, index);
    touch();
}

void Desk::show_layer(LayerId id, bool video) {
    require_layer(session_.project(), id);
    session_.history().before_change("Video Switch");
    Layer &layer = *session_.project().layer(id);
    layer.flags =
        video ? layer.flags | layer_flag::kVideoActive : layer.flags & ~layer_flag::kVideoActive;
    touch();
}

void Desk::place_layer(LayerId id, double x, double y, double scale) {
    refuse_locked(require_layer(session_.project(), id));
    session_.history().before_change("Transform");
    Layer &layer = *session_.project().layer(id);
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
    session_.history().before_change("Remove Effect");
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
        const Layer *layer = session_.project().layer(instance->layer);
        return layer != nullptr && layer->selected;
    };
    const auto found = std::ranges::find_if(session_.instances(), on_selected);
    if (found != session_.instances().end() && found->get() != chosen_) choose(**found);
}

/// After anything that may have ended the chosen effect.
void Desk::settle_effects() {
    const auto &instances = session_.instances();
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
    if (session_.history().next_undo() == nullptr) return false;
    close_viewers();
    const bool done = session_.undo();
    settle_effects();
    return done;
}

bool Desk::redo() {
    if (session_.history().next_redo() == nullptr) return false;
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
    const Project &project = session_.project();
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

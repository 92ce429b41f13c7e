#include "stage/project/project.h"

#include <algorithm>
#include <utility>

namespace stage {
namespace {

void require(bool condition, const std::string &message) {
    if (!condition) throw ProjectError(message);
}

void set_pixel_aspect(Item &item, int num, int den) {
    item.par_num = num;
    item.par_den = den;
}

void check_aspect_and_frames(const std::string &name, int par_num, int par_den,
                             std::int64_t frames) {
    require(par_num > 0 && par_den > 0, name + ": the pixel aspect ratio must be above 0");
    require(frames > 0, name + ": the duration must be at least one frame");
}

/// Where a list of `size` elements takes a new one for `index`.
std::ptrdiff_t place(int index, std::size_t size) {
    const auto end = static_cast<std::ptrdiff_t>(size);
    return index < 0 || index > end ? end : static_cast<std::ptrdiff_t>(index);
}

template <class Items>
auto *find_item(Items &items, ItemId id) {
    const auto found = std::ranges::find_if(items, [&](const auto &it) { return it->id == id; });
    return found == items.end() ? nullptr : found->get();
}

/// The comp that holds a layer and the layer's position in it.
struct Place {
    Item *comp = nullptr;
    std::size_t index = 0;
};

Place find_layer(const std::vector<std::unique_ptr<Item>> &items, LayerId id) {
    if (id == 0) return {};
    for (const auto &item : items) {
        for (std::size_t i = 0; i < item->layers.size(); ++i) {
            if (item->layers[i].id == id) return {item.get(), i};
        }
    }
    return {};
}

}  // namespace

Item &Project::new_item(ItemKind kind, const std::string &name, int width, int height) {
    require(width >= 1 && height >= 1 && width <= kMaxPictureSide && height <= kMaxPictureSide,
            name + ": width and height must be 1.." + std::to_string(kMaxPictureSide));
    auto item = std::make_unique<Item>();
    item->id = next_id_++;
    item->kind = kind;
    item->name = name;
    item->width = width;
    item->height = height;
    items_.push_back(std::move(item));
    ++item_version_;
    if (kind == ItemKind::kComp) ++comp_version_;
    return *items_.back();
}

ItemId Project::add_comp(const std::string &name, int width, int height, int par_num, int par_den,
                         std::int64_t frames) {
    check_aspect_and_frames(name, par_num, par_den, frames);
    Item &item = new_item(ItemKind::kComp, name, width, height);
    set_pixel_aspect(item, par_num, par_den);
    item.frames = frames;
    if (active_comp == 0) active_comp = item.id;
    return item.id;
}

ItemId Project::add_footage(const std::string &name, int width, int height, int par_num,
                            int par_den, std::int64_t frames, FrameReader reader) {
    Item footage;
    footage.name = name;
    footage.width = width;
    footage.height = height;
    footage.par_num = par_num;
    footage.par_den = par_den;
    footage.frames = frames;
    footage.reader = std::move(reader);
    return add_footage(std::move(footage));
}

ItemId Project::add_footage(Item footage) {
    check_aspect_and_frames(footage.name, footage.par_num, footage.par_den, footage.frames);
    Item &item = new_item(ItemKind::kFootage, footage.name, footage.width, footage.height);
    footage.id = item.id;
    footage.kind = item.kind;
    item = std::move(footage);
    return item.id;
}

ItemId Project::add_solid_item(const std::string &name, int width, int height,
                               const std::array<double, 4> &color) {
    Item &item = new_item(ItemKind::kSolid, name, width, height);
    item.color = color;
    return item.id;
}

Item &Project::require_comp(ItemId id) {
    Item *found = comp(id);
    require(found != nullptr, "there is no composition " + std::to_string(id));
    return *found;
}

LayerId Project::insert_layer(Item &comp, Layer layer, int index) {
    layer.id = next_id_++;
    layer.position_x = comp.width / 2.0;
    layer.position_y = comp.height / 2.0;
    const LayerId id = layer.id;
    comp.layers.insert(comp.layers.begin() + place(index, comp.layers.size()), std::move(layer));
    ++layer_version_;
    return id;
}

LayerId Project::add_layer(ItemId comp, ItemId source, int index, const std::string &name) {
    Item &into = require_comp(comp);
    require(item(source) != nullptr, "there is no item " + std::to_string(source));
    require(!comp_contains(*this, source, comp),
            into.name + ": a composition cannot contain itself");
    Layer layer;
    layer.name = name;
    layer.source = source;
    return insert_layer(into, std::move(layer), index);
}

LayerId Project::add_adjustment_layer(ItemId comp, int index, const std::string &name) {
    const Item &into = require_comp(comp);
    const ItemId solid = add_solid_item(name, into.width, into.height, {1, 1, 1, 1});
    set_pixel_aspect(*item(solid), into.par_num, into.par_den);
    const LayerId id = add_layer(comp, solid, index, name);
    layer(id)->flags |= layer_flag::kAdjustment;
    return id;
}

LayerId Project::add_text_layer(ItemId comp, int index, const std::string &name) {
    Layer layer;
    layer.name = name;
    layer.kind = LayerKind::kText;
    return insert_layer(require_comp(comp), std::move(layer), index);
}

void Project::remove_layer(LayerId layer) {
    const Place at = find_layer(items_, layer);
    require(at.comp != nullptr, "there is no layer " + std::to_string(layer));
    at.comp->layers.erase(at.comp->layers.begin() + static_cast<std::ptrdiff_t>(at.index));
    ++layer_version_;
}

void Project::reorder_layer(LayerId layer, int index) {
    const Place at = find_layer(items_, layer);
    require(at.comp != nullptr, "there is no layer " + std::to_string(layer));
    std::vector<Layer> &layers = at.comp->layers;
    const auto from = layers.begin() + static_cast<std::ptrdiff_t>(at.index);
    const auto to = layers.begin() + place(index, layers.size() - 1);
    if (from < to) {
        std::rotate(from, from + 1, to + 1);
    } else {
        std::rotate(to, from, from + 1);
    }
}

Item *Project::item(ItemId id) {
    return find_item(items_, id);
}
const Item *Project::item(ItemId id) const {
    return find_item(items_, id);
}

Item *Project::comp(ItemId id) {
    Item *found = item(id);
    return found != nullptr && found->kind == ItemKind::kComp ? found : nullptr;
}
const Item *Project::comp(ItemId id) const {
    const Item *found = item(id);
    return found != nullptr && found->kind == ItemKind::kComp ? found : nullptr;
}

Layer *Project::layer(LayerId id) {
    const Place at = find_layer(items_, id);
    return at.comp == nullptr ? nullptr : &at.comp->layers[at.index];
}
const Layer *Project::layer(LayerId id) const {
    const Place at = find_layer(items_, id);
    return at.comp == nullptr ? nullptr : &at.comp->layers[at.index];
}

Item *Project::comp_of(LayerId layer) {
    return find_layer(items_, layer).comp;
}
const Item *Project::comp_of(LayerId layer) const {
    return find_layer(items_, layer).comp;
}

const Item *Project::extent_of(LayerId id) const {
    const Place at = find_layer(items_, id);
    if (at.comp == nullptr) return nullptr;
    const Item *source = item(at.comp->layers[at.index].source);
    return source != nullptr ? source : at.comp;
}

int Project::index_of(LayerId layer) const {
    const Place at = find_layer(items_, layer);
    return at.comp == nullptr ? -1 : static_cast<int>(at.index);
}

ProjectData Project::data() const {
    ProjectData copy;
    copy.items.reserve(items_.size());
    for (const auto &item : items_) copy.items.push_back(*item);
    copy.active_comp = active_comp;
    copy.next_id = next_id_;
    return copy;
}

void Project::restore(const ProjectData &data) {
    std::vector<std::unique_ptr<Item>> items;
    items.reserve(data.items.size());
    for (const Item &item : data.items) items.push_back(std::make_unique<Item>(item));
    items_ = std::move(items);
    active_comp = data.active_comp;
    next_id_ = std::max(next_id_, data.next_id);
    ++layer_version_;
    ++item_version_;
    ++comp_version_;
}

bool comp_contains(const Project &project, ItemId comp, ItemId item) {
    if (comp == item) return true;
    const Item *outer = project.comp(comp);
    if (outer == nullptr) return false;
    return std::ranges::any_of(outer->layers, [&](const Layer &layer) {
        return layer.source != 0 && comp_contains(project, layer.source, item);
    });
}

std::vector<EffectStream> match_streams(const std::vector<EffectStream> &saved,
                                        std::vector<EffectStream> current) {
    for (EffectStream &stream : current) {
        const auto found = std::ranges::find_if(saved, [&](const EffectStream &old) {
            return stream.id != 0 ? old.id == stream.id : old.id == 0 && old.name == stream.name;
        });
        if (found == saved.end()) continue;
        stream.value = found->value;
        stream.hidden = found->hidden;
    }
    return current;
}

}  // namespace stage

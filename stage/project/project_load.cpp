#include <fmt/format.h>

#include <fstream>
#include <set>
#include <sstream>

#include "stage/project/kind_names.h"
#include "stage/project/project_file.h"
#include "stage/text/hex.h"
#include "stage/text/json_value.h"
#include "stage/text/utf8_path.h"

namespace stage {
namespace {

constexpr int kMaxId = 1'000'000'000;
/// Comps within comps: beyond what anyone builds, and far from what recursion can stand.
constexpr std::size_t kMaxNesting = 64;

template <class Table>
auto kind_of(const Table &table, const JsonValue &value) {
    const std::string name = value.string();
    for (const auto &row : table) {
        if (name == row.name) return row.kind;
    }
    value.fail("\"" + name + "\" is not a known kind");
}

/// A pair of whole numbers above 0.
void read_ratio(const JsonValue &value, int *num, int *den) {
    *num = value.at(0).number32(1, kMaxId);
    *den = value.at(1).number32(1, kMaxId);
}

EffectStream read_stream(const JsonValue &json) {
    EffectStream stream;
    stream.id = static_cast<int>(json["id"].integer(INT32_MIN, INT32_MAX));
    stream.name = json["name"].string();
    stream.hidden = json["hidden"].boolean();
    stream.value.number = json["number"].number();
    stream.value.x = json["point"].at(0).number();
    stream.value.y = json["point"].at(1).number();
    for (std::size_t i = 0; i < 4; ++i) {
        stream.value.color[i] = static_cast<std::uint8_t>(json["color"].at(i).integer(0, 255));
    }
    stream.value.layer = json["layer"].number32(0, kMaxId);
    return stream;
}

EffectState read_effect(const JsonValue &json) {
    EffectState effect;
    effect.match_name = json["match_name"].string();
    const JsonValue flat = json["flat_sequence"];
    const auto bytes = from_hex(flat.string());
    if (!bytes) flat.fail("expected hexadecimal bytes");
    effect.flat_sequence = *bytes;
    for (const JsonValue &stream : json["streams"].elements()) {
        effect.streams.push_back(read_stream(stream));
    }
    return effect;
}

Layer read_layer(const JsonValue &json) {
    Layer layer;
    layer.id = json["id"].number32(1, kMaxId);
    layer.name = json["name"].string();
    layer.kind = kind_of(kLayerKindNames, json["kind"]);
    layer.source = json["source"].number32(0, kMaxId);
    layer.flags = static_cast<std::uint32_t>(json["flags"].integer(0, UINT32_MAX));
    layer.selected = json["selected"].boolean();
    layer.position_x = json["position"].at(0).number();
    layer.position_y = json["position"].at(1).number();
    layer.scale = json["scale"].number();
    layer.opacity = json["opacity"].number();
    layer.position_expression = json["position_expression"].string();
    layer.separated_position = json["separated_position"].boolean();
    for (const JsonValue &effect : json["effects"].elements()) {
        layer.effects.push_back(read_effect(effect));
    }
    return layer;
}

void read_footage(const JsonValue &json, Item &item, const std::filesystem::path &base) {
    if (const auto chart = json.find("chart")) {
        item.chart = chart->string();
        return;
    }
    item.path = json["path"].string();
    if (item.path.empty() || base.empty()) return;
    item.path = path_to_utf8((base / path_from_utf8(item.path)).lexically_normal());
}

Item read_item(const JsonValue &json, const std::filesystem::path &base) {
    Item item;
    item.id = json["id"].number32(1, kMaxId);
    item.kind = kind_of(kItemKindNames, json["kind"]);
    item.name = json["name"].string();
    item.width = json["width"].number32(1, kMaxPictureSide);
    item.height = json["height"].number32(1, kMaxPictureSide);
    read_ratio(json["pixel_aspect"], &item.par_num, &item.par_den);
    read_ratio(json["frame_rate"], &item.rate_num, &item.rate_den);
    item.frames = json["frames"].integer(1, INT32_MAX);
    if (item.kind == ItemKind::kComp) {
        for (const JsonValue &layer : json["layers"].elements()) {
            item.layers.push_back(read_layer(layer));
        }
    } else if (item.kind == ItemKind::kSolid) {
        for (std::size_t i = 0; i < 4; ++i) item.color[i] = json["color"].at(i).number();
    } else {
        read_footage(json, item, base);
    }
    return item;
}

void open_footage(Item &item, const JsonValue &json, const FootageOpener &open) {
    const bool placed = !item.path.empty() || !item.chart.empty();
    if (item.kind != ItemKind::kFootage || !open || !placed) return;
    OpenedFootage opened;
    try {
        opened = open({item.path, item.chart, item.width, item.height});
    } catch (const ProjectError &) {
        throw;
    } catch (const std::exception &error) {
        json.fail(error.what());
    }
    const bool sides = opened.width >= 1 && opened.width <= kMaxPictureSide && opened.height >= 1 &&
                       opened.height <= kMaxPictureSide;
    if (!sides || opened.frames < 1) json.fail("the footage is empty or too large");
    item.width = opened.width;
    item.height = opened.height;
    item.frames = opened.frames;
    item.reader = std::move(opened.reader);
}

/// The checks that need the whole file: ids used once and below next_id, sources that exist.
void check_references(const ProjectData &data, const JsonValue &json) {
    std::set<int> ids;
    const auto take = [&](int id, const JsonValue &where) {
        if (!ids.insert(id).second) where.fail("the id is used twice");
        if (id >= data.next_id) where.fail("the id is not below next_id");
    };
    std::set<int> items;
    for (std::size_t i = 0; i < data.items.size(); ++i) {
        take(data.items[i].id, json["items"].at(i)["id"]);
        items.insert(data.items[i].id);
    }
    for (std::size_t i = 0; i < data.items.size(); ++i) {
        const std::vector<Layer> &layers = data.items[i].layers;
        for (std::size_t k = 0; k < layers.size(); ++k) {
            const JsonValue layer = json["items"].at(i)["layers"].at(k);
            take(layers[k].id, layer["id"]);
            const bool text = layers[k].kind == LayerKind::kText;
            if (text ? layers[k].source != 0 : !items.contains(layers[k].source)) {
                layer["source"].fail(text ? "a text layer has no source" : "there is no such item");
            }
        }
    }
}

/// Nested comps must not form a ring; the active comp must be one.
void check_comps(const Project &project, const JsonValue &json) {
    if (project.active_comp != 0 && project.comp(project.active_comp) == nullptr) {
        json["active_comp"].fail("there is no such composition");
    }
    // A ring is found by walking down with the comps above at hand: comp_contains would not end.
    std::set<ItemId> above;
    std::set<ItemId> done;
    const auto walk = [&](const auto &self, ItemId id) -> void {
        const Item *comp = project.comp(id);
        if (comp == nullptr || done.contains(id)) return;
        if (!above.insert(id).second) {
            json["items"].fail(comp->name + ": a composition cannot contain itself");
        }
        if (above.size() > kMaxNesting) json["items"].fail(comp->name + ": is nested too deeply");
        for (const Layer &layer : comp->layers) self(self, layer.source);
        above.erase(id);
        done.insert(id);
    };
    for (const auto &item : project.items()) walk(walk, item->id);
}

ProjectData read_project(const JsonValue &json, const std::filesystem::path &base,
                         const FootageOpener &open) {
    const auto format = json.is_object() ? json.find("format") : std::nullopt;
    if (!format || format->string() != kProjectFormat) {
        json.fail("this is not a project file of the stage");
    }
    if (json["version"].integer(0, kMaxId) != kProjectVersion) {
        json["version"].fail("only version " + std::to_string(kProjectVersion) + " can be read");
    }
    ProjectData data;
    data.next_id = json["next_id"].number32(1, kMaxId);
    data.active_comp = json["active_comp"].number32(0, kMaxId);
    const std::vector<JsonValue> items = json["items"].elements();
    for (const JsonValue &item : items) data.items.push_back(read_item(item, base));
    check_references(data, json);
    Project probe;
    probe.restore(data);
    probe.active_comp = data.active_comp;
    check_comps(probe, json);
    for (std::size_t i = 0; i < items.size(); ++i) open_footage(data.items[i], items[i], open);
    return data;
}

/// "PATH: reason", as project files have always been refused.
std::string complaint(const JsonFault &fault) {
    using Kind = JsonFault::Kind;
    if (fault.kind == Kind::kSyntax) return fmt::format("no valid JSON at byte {}", fault.byte);
    if (fault.kind == Kind::kMissing) return member_path(fault.path, fault.text) + ": is missing";
    const std::string place = fault.path.empty() ? "" : fault.path + ": ";
    const std::string range = fault.low + ".." + fault.high;
    if (fault.kind == Kind::kNotWhole) return place + "expected a whole number " + range;
    if (fault.kind == Kind::kOutside) return place + "is outside " + range;
    return place + reason_text(fault);
}

}  // namespace

void project_from_text(Project &project, const std::string &text, const std::string &what,
                       const std::filesystem::path &base, const FootageOpener &open) {
    try {
        const JsonDocument document(text, what, JsonDocument::Lines::kNotCounted);
        project.restore(read_project(document.root(), base, open));
    } catch (const JsonError &error) {
        throw ProjectError(what + ": " + complaint(error.fault()));
    } catch (const std::exception &error) {
        throw ProjectError(what + ": " + error.what());
    }
}

void load_project(Project &project, const std::filesystem::path &file, const FootageOpener &open) {
    const std::string name = path_to_utf8(file);
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    if (stream) text << stream.rdbuf();
    if (!stream) throw ProjectError(name + ": the file cannot be read");
    const std::filesystem::path folder = std::filesystem::absolute(file).parent_path();
    project_from_text(project, std::move(text).str(), name, folder, open);
}

}  // namespace stage

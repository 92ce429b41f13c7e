#include <cmath>
#include <nlohmann/json.hpp>

#include "stage/image/replacement_file.h"
#include "stage/project/kind_names.h"
#include "stage/project/project_file.h"
#include "stage/text/hex.h"
#include "stage/text/utf8_path.h"

namespace stage {
namespace {

using Json = nlohmann::ordered_json;

/// JSON has no way to write NaN and infinities.
double finite(double value, const std::string &where) {
    if (!std::isfinite(value)) throw ProjectError(where + ": a number is not finite");
    return value;
}

template <class Table, class Kind>
const char *name_of(const Table &table, Kind kind) {
    for (const auto &row : table) {
        if (row.kind == kind) return row.name;
    }
    return "";
}

Json stream_to_json(const EffectStream &stream, const std::string &where) {
    const ParamValue &value = stream.value;
    return {{"id", stream.id},
            {"name", stream.name},
            {"hidden", stream.hidden},
            {"number", finite(value.number, where)},
            {"point", {finite(value.x, where), finite(value.y, where)}},
            {"color", value.color},
            {"layer", value.layer}};
}

Json effect_to_json(const EffectState &effect) {
    Json streams = Json::array();
    for (const EffectStream &stream : effect.streams) {
        streams.push_back(stream_to_json(stream, effect.match_name + "/" + stream.name));
    }
    return {{"match_name", effect.match_name},
            {"flat_sequence", to_hex(effect.flat_sequence)},
            {"streams", streams}};
}

Json layer_to_json(const Layer &layer) {
    Json effects = Json::array();
    for (const EffectState &effect : layer.effects) effects.push_back(effect_to_json(effect));
    return {
        {"id", layer.id},
        {"name", layer.name},
        {"kind", name_of(kLayerKindNames, layer.kind)},
        {"source", layer.source},
        {"flags", layer.flags},
        {"selected", layer.selected},
        {"position", {finite(layer.position_x, layer.name), finite(layer.position_y, layer.name)}},
        {"scale", finite(layer.scale, layer.name)},
        {"opacity", finite(layer.opacity, layer.name)},
        {"position_expression", layer.position_expression},
        {"separated_position", layer.separated_position},
        {"effects", effects}};
}

/// Relative to `base` when the footage lies beneath it.
std::string stored_path(const std::string &path, const std::filesystem::path &base) {
    if (base.empty()) return path;
    const std::filesystem::path absolute = std::filesystem::absolute(path_from_utf8(path));
    const std::filesystem::path relative =
        absolute.lexically_normal().lexically_relative(base.lexically_normal());
    const bool beneath = !relative.empty() && *relative.begin() != "..";
    return path_to_utf8(beneath ? relative : absolute.lexically_normal());
}

Json item_to_json(const Item &item, const std::filesystem::path &base) {
    Json json = {{"id", item.id},
                 {"kind", name_of(kItemKindNames, item.kind)},
                 {"name", item.name},
                 {"width", item.width},
                 {"height", item.height},
                 {"pixel_aspect", {item.par_num, item.par_den}},
                 {"frame_rate", {item.rate_num, item.rate_den}},
                 {"frames", item.frames}};
    if (item.kind == ItemKind::kComp) {
        json["layers"] = Json::array();
        for (const Layer &layer : item.layers) json["layers"].push_back(layer_to_json(layer));
    } else if (item.kind == ItemKind::kSolid) {
        for (const double part : item.color) finite(part, item.name);
        json["color"] = item.color;
    } else if (!item.chart.empty()) {
        json["chart"] = item.chart;
    } else {
        json["path"] = stored_path(item.path, base);
    }
    return json;
}

}  // namespace

std::string project_to_text(const Project &project, const std::filesystem::path &base) {
    Json json = {{"format", kProjectFormat},
                 {"version", kProjectVersion},
                 {"next_id", project.data().next_id},
                 {"active_comp", project.active_comp},
                 {"items", Json::array()}};
    for (const auto &item : project.items()) json["items"].push_back(item_to_json(*item, base));
    try {
        return json.dump(2) + "\n";
    } catch (const Json::exception &) {
        throw ProjectError("a name in the project is not valid UTF-8");
    }
}

void save_project(const Project &project, const std::filesystem::path &file) {
    try {
        const std::filesystem::path folder = std::filesystem::absolute(file).parent_path();
        write_whole_file(file, project_to_text(project, folder));
    } catch (const PictureError &error) {
        throw ProjectError(error.what());
    } catch (const std::exception &error) {
        throw ProjectError(path_to_utf8(file) + ": " + error.what());
    }
}

}  // namespace stage

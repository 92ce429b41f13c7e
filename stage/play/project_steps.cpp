// Steps about the composition, its layers, and files.
#include <array>
#include <string>
#include <vector>

#include "stage/play/session_steps.h"
#include "stage/text/utf8_path.h"

namespace stage {
namespace {

using Kind = SessionStep::Kind;

constexpr int kMaxRatio = 100'000;

std::pair<int, int> read_aspect(const JsonValue &object) {
    const auto aspect = object.find("pixel aspect");
    return aspect ? aspect->whole_pair(1, kMaxRatio) : std::pair(1, 1);
}

/// The name of a folder's own file: nothing that leads out of it.
std::string read_file_name(const JsonValue &value) {
    const std::string name = value.string();
    const bool plain = !name.empty() && name.find_first_of("/\\:") == std::string::npos &&
                       name != "." && name != "..";
    if (!plain) value.fail("must be a file name without a folder");
    return name;
}

SessionAct new_comp(const JsonValue &value) {
    value.only({"name", "size", "pixel aspect", "frames"});
    const auto named = value.find("name");
    const std::string name = named ? named->string() : "Comp 1";
    const auto [width, height] = value["size"].whole_pair(1, kMaxPictureSide);
    const auto [num, den] = read_aspect(value);
    const auto length = value.find("frames");
    const std::int64_t frames = length ? length->integer(1, INT32_MAX) : 1;
    return [=](SessionPlayer &player) {
        player.desk().new_comp(name, width, height, num, den, frames);
    };
}

/// A new layer has the name of its source unless the session gives one.
void rename(SessionPlayer &player, LayerId layer, const std::string &name) {
    if (!name.empty()) player.session().project().layer(layer)->name = name;
}

std::string read_optional_name(const JsonValue &value) {
    const auto name = value.find("name");
    return name ? name->string() : "";
}

SessionAct add_footage(const JsonValue &value) {
    value.only({"file", "name", "pixel aspect"});
    const std::string file = value["file"].string(), name = read_optional_name(value);
    const auto [num, den] = read_aspect(value);
    return [=](SessionPlayer &player) {
        const LayerId layer = player.desk().add_footage(player.input_file(file), num, den);
        rename(player, layer, name);
    };
}

SessionAct add_chart(const JsonValue &value) {
    value.only({"chart", "size", "name", "pixel aspect"});
    const std::string chart = value["chart"].string(), name = read_optional_name(value);
    const auto [width, height] = value["size"].whole_pair(1, kMaxPictureSide);
    const auto [num, den] = read_aspect(value);
    return [=](SessionPlayer &player) {
        const LayerId layer = player.desk().add_chart(chart, width, height, num, den);
        rename(player, layer, name);
    };
}

SessionAct add_solid(const JsonValue &value) {
    value.only({"name", "size", "color"});
    const std::string name = value["name"].string();
    std::pair<int, int> size{0, 0};
    if (const auto given = value.find("size")) size = given->whole_pair(1, kMaxPictureSide);
    std::array<double, 4> color{1, 0, 0, 0};
    if (const auto given = value.find("color")) {
        if (given->size() != 3) given->fail("expected red, green and blue, 0 to 1");
        for (std::size_t i = 0; i < 3; ++i) color[i + 1] = given->at(i).number(0, 1);
    }
    return [=](SessionPlayer &player) {
        const bool own_size = size.first > 0;
        player.desk().add_solid(name, own_size ? size.first : player.comp().width,
                                own_size ? size.second : player.comp().height, color);
    };
}

SessionAct add_adjustment(const JsonValue &value) {
    const std::string name = value.string();
    return [=](SessionPlayer &player) { player.desk().add_adjustment(name); };
}

SessionAct add_text(const JsonValue &value) {
    const std::string name = value.string();
    return [=](SessionPlayer &player) { player.desk().add_text(name); };
}

SessionAct select(const JsonValue &value) {
    std::vector<LayerName> names;
    for (const JsonValue &name : value.elements()) names.push_back(read_layer_name(name));
    return [=](SessionPlayer &player) {
        std::vector<LayerId> layers;
        for (const LayerName &name : names) layers.push_back(player.layer(name));
        player.desk().select(layers);
    };
}

SessionAct delete_layer(const JsonValue &value) {
    const LayerName name = read_layer_name(value);
    return [=](SessionPlayer &player) { player.desk().delete_layer(player.layer(name)); };
}

SessionAct duplicate(const JsonValue &value) {
    const LayerName name = read_layer_name(value);
    return [=](SessionPlayer &player) { player.desk().duplicate_layer(player.layer(name)); };
}

SessionAct move_layer(const JsonValue &value) {
    value.only({"layer", "to"});
    const LayerName name = read_layer_name(value["layer"]);
    const int to = value["to"].number32(1, INT32_MAX);
    return [=](SessionPlayer &player) { player.desk().move_layer(player.layer(name), to - 1); };
}

SessionAct place(const JsonValue &value) {
    value.only({"layer", "position", "scale"});
    const LayerName name = read_layer_name(value["layer"]);
    const auto [x, y] = value["position"].pair(-kLargestNumber, kLargestNumber);
    const auto given = value.find("scale");
    const double scale = given ? given->number(-1e6, 1e6) : 100;
    return
        [=](SessionPlayer &player) { player.desk().place_layer(player.layer(name), x, y, scale); };
}

SessionAct read_visibility(const JsonValue &value, bool video) {
    const LayerName name = read_layer_name(value);
    return [=](SessionPlayer &player) { player.desk().show_layer(player.layer(name), video); };
}

SessionAct show(const JsonValue &value) {
    return read_visibility(value, true);
}

SessionAct hide(const JsonValue &value) {
    return read_visibility(value, false);
}

SessionAct save(const JsonValue &value) {
    const std::string name = read_file_name(value);
    return [=](SessionPlayer &player) { player.desk().save(player.saved_file(name)); };
}

SessionAct load(const JsonValue &value) {
    const std::string name = value.string();
    return [=](SessionPlayer &player) { player.desk().load(player.project_file(name)); };
}

constexpr StepRow kRows[] = {
    {"new comp", Kind::kAct, false, new_comp},
    {"add footage", Kind::kAct, false, add_footage},
    {"add chart", Kind::kAct, false, add_chart},
    {"add solid", Kind::kAct, false, add_solid},
    {"add adjustment layer", Kind::kAct, false, add_adjustment},
    {"add text layer", Kind::kAct, false, add_text},
    {"select", Kind::kAct, false, select},
    {"delete layer", Kind::kAct, false, delete_layer},
    {"duplicate layer", Kind::kAct, false, duplicate},
    {"move layer", Kind::kAct, false, move_layer},
    {"place layer", Kind::kAct, false, place},
    {"show layer", Kind::kAct, false, show},
    {"hide layer", Kind::kAct, false, hide},
    {"save", Kind::kAct, false, save},
    {"load", Kind::kAct, false, load},
};

}  // namespace

std::span<const StepRow> project_steps() {
    return kRows;
}

LayerName read_layer_name(const JsonValue &value) {
    if (value.is_number()) return {value.where(), "", value.number32(1, INT32_MAX)};
    if (!value.is_string()) value.fail("expected the name of a layer, or its number from the top");
    return {value.where(), value.string(), 0};
}

}  // namespace stage

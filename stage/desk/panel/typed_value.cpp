#include "stage/desk/panel/typed_value.h"

#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>

#include "hostapi/constants.h"
#include "stage/session/session.h"

namespace stage {
namespace {

std::string layer_list(const Item &comp) {
    std::string list;
    for (const Layer &layer : comp.layers) {
        list += fmt::format("{}\"{}\"", list.empty() ? "" : ", ", layer.name);
    }
    return list.empty() ? "there are none" : "there are " + list;
}

}  // namespace

LayerId layer_called(const Item &comp, const std::string &name) {
    const auto count = std::ranges::count(comp.layers, name, &Layer::name);
    if (count == 1) return std::ranges::find(comp.layers, name, &Layer::name)->id;
    if (count > 1) throw SessionError(fmt::format("several layers are called \"{}\"", name));
    throw SessionError(fmt::format("there is no layer \"{}\" ({})", name, layer_list(comp)));
}

ParamValue typed_value(const Session &session, const EffectInstance &effect, int index,
                       const std::string &text) {
    const ParamCatalog &catalog = session.plugin.catalog;
    const Project &project = session.project();
    const Item &comp = *project.comp_of(effect.layer);
    if (catalog.at(index).def.param_type == PF_Param_LAYER) {
        ParamValue value;
        if (text != "none") value.layer = layer_called(comp, text);
        return value;
    }
    const ItemId source = project.layer(effect.layer)->source;
    const Item &picture = source != 0 ? *project.item(source) : comp;
    return catalog.parse(index, text, picture.width, picture.height);
}

void assign(Session &session, EffectInstance &effect, const std::string &assignment) {
    const std::size_t equals = assignment.find('=');
    if (equals == std::string::npos) {
        throw std::runtime_error(
            fmt::format("\"{}\" is wrong: --set takes NAME=VALUE", assignment));
    }
    const ParamCatalog &catalog = session.plugin.catalog;
    const int index = catalog.find(assignment.substr(0, equals));
    const ParamValue value = typed_value(session, effect, index, assignment.substr(equals + 1));
    if (const PF_Err error = session.set_value(effect, index, value)) {
        throw std::runtime_error(
            fmt::format("setting \"{}\" failed with error {}", catalog.at(index).path, error));
    }
}

}  // namespace stage

#include "stage/play/session_place.h"

#include <cmath>
#include <tuple>

#include "stage/project/layer_map.h"

namespace stage {
namespace {

/// No pointer gets farther from a window's corner than this, pixels.
constexpr double kFarthest = 1e6;

struct Point {
    double x = 0, y = 0;
};

/// In the pixels that the window in front shows.
Point source_point(SessionPlayer &player, const SessionPlace &place) {
    const bool layer_window = player.desk().window != WindowKind::kComp;
    if (place.base == SessionPlace::Base::kComp) {
        if (layer_window) throw SessionFileError(place.where + ": the window shows a layer");
        return {place.x, place.y};
    }
    const LayerId layer = place.of ? player.layer(*place.of) : player.effect().layer;
    if (layer_window) {
        if (layer != player.effect().layer) {
            throw SessionFileError(place.where + ": the window shows another layer");
        }
        return {place.x, place.y};
    }
    const LayerMap map = layer_map(player.session().project(), layer);
    return {map.comp_x(place.x), map.comp_y(place.y)};
}

}  // namespace

SessionPlace read_place(const JsonValue &value) {
    SessionPlace place;
    place.where = value.where();
    if (value.is_list()) {
        std::tie(place.x, place.y) = value.pair(-kFarthest, kFarthest);
        return place;
    }
    value.only({"layer", "comp", "of", "plus"});
    const auto layer = value.find("layer"), comp = value.find("comp"), of = value.find("of");
    if (layer.has_value() == comp.has_value()) value.fail("expected either \"layer\" or \"comp\"");
    if (comp && of) of->fail("goes with \"layer\" only");
    place.base = layer ? SessionPlace::Base::kLayer : SessionPlace::Base::kComp;
    std::tie(place.x, place.y) = (layer ? *layer : *comp).pair(-kLargestNumber, kLargestNumber);
    if (of) place.of = read_layer_name(*of);
    if (const auto plus = value.find("plus")) {
        std::tie(place.plus_x, place.plus_y) = plus->pair(-kFarthest, kFarthest);
    }
    return place;
}

WindowPixel window_pixel(SessionPlayer &player, const SessionPlace &place) {
    Point window{place.x, place.y};
    if (place.base != SessionPlace::Base::kWindow) {
        const Point source = source_point(player, place);
        const Viewport &viewport = player.desk().viewport();
        window = {viewport.window_x(source.x), viewport.window_y(source.y)};
    }
    window.x = std::floor(window.x + place.plus_x + 0.5);
    window.y = std::floor(window.y + place.plus_y + 0.5);
    if (!(std::abs(window.x) <= kFarthest && std::abs(window.y) <= kFarthest)) {
        throw SessionFileError(place.where + ": lies too far outside the window");
    }
    return {static_cast<int>(window.x), static_cast<int>(window.y)};
}

}  // namespace stage

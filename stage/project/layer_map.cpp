#include "stage/project/layer_map.h"

namespace stage {

LayerMap layer_map(const Project &project, LayerId id) {
    const Layer &layer = *project.layer(id);
    const Item &comp = *project.comp_of(id);
    const Item *source = layer.source != 0 ? project.item(layer.source) : nullptr;
    const Item &sized = source != nullptr ? *source : comp;
    const double aspect =
        double(sized.par_num) * comp.par_den / (double(sized.par_den) * comp.par_num);
    LayerMap map;
    map.center_x = layer.position_x;
    map.center_y = layer.position_y;
    map.middle_x = sized.width / 2.0;
    map.middle_y = sized.height / 2.0;
    map.scale_y = layer.scale / 100;
    map.scale_x = map.scale_y * aspect;
    return map;
}

}  // namespace stage

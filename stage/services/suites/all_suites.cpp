#include "stage/services/suites/suites.h"

namespace stage {

void add_all_suites(SuiteRegistry &suites) {
    add_handle_suite(suites);
    add_world_suite(suites);
    add_world_transform_suite(suites);
    add_iterate_suites(suites);
    add_ansi_suite(suites);
    add_generic_iterate_suite(suites);
    add_memory_suite(suites);
    add_pf_interface_suite(suites);
    add_layer_suite(suites);
    add_comp_suite(suites);
    add_item_suite(suites);
    add_stream_suites(suites);
    add_effect_suite(suites);
    add_utility_suite(suites);
    add_param_utils_suite(suites);
    add_custom_ui_suite(suites);
    add_overlay_theme_suite(suites);
    add_drawbot_draw_suites(suites);
    add_drawbot_supplier_suite(suites);
    add_drawbot_surface_suite(suites);
    add_drawbot_path_suite(suites);
}

}  // namespace stage

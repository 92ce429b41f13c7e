// One function per suite family: adds its tables, in every version offered, to the registry.
#pragma once

namespace stage {

class SuiteRegistry;

void add_handle_suite(SuiteRegistry &suites);
void add_world_suite(SuiteRegistry &suites);
void add_world_transform_suite(SuiteRegistry &suites);
void add_iterate_suites(SuiteRegistry &suites);
void add_ansi_suite(SuiteRegistry &suites);
void add_generic_iterate_suite(SuiteRegistry &suites);  // "AEGP Iterate Suite"
void add_memory_suite(SuiteRegistry &suites);           // "AEGP Memory Suite"
void add_pf_interface_suite(SuiteRegistry &suites);
void add_layer_suite(SuiteRegistry &suites);
void add_comp_suite(SuiteRegistry &suites);
void add_item_suite(SuiteRegistry &suites);
void add_stream_suites(SuiteRegistry &suites);  // streams and dynamic streams
void add_effect_suite(SuiteRegistry &suites);
void add_utility_suite(SuiteRegistry &suites);
void add_param_utils_suite(SuiteRegistry &suites);
void add_custom_ui_suite(SuiteRegistry &suites);
void add_overlay_theme_suite(SuiteRegistry &suites);
void add_drawbot_draw_suites(SuiteRegistry &suites);  // Draw, Pen and Image
void add_drawbot_supplier_suite(SuiteRegistry &suites);
void add_drawbot_surface_suite(SuiteRegistry &suites);
void add_drawbot_path_suite(SuiteRegistry &suites);

/// All of the above.
void add_all_suites(SuiteRegistry &suites);

}  // namespace stage

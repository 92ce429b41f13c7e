// The verbs of the program. Each adds its subcommand to the app and, when chosen, leaves its exit
// status in `status`. Verbs throw std::exception with one clear line; main() prints it.
#pragma once

#include <CLI/CLI.hpp>

namespace stage_cli {

void add_render_commands(CLI::App &app, int &status);  // render and trace
void add_params_command(CLI::App &app, int &status);
void add_panel_command(CLI::App &app, int &status);
void add_session_command(CLI::App &app, int &status);
void add_view_command(CLI::App &app, int &status);
void add_inspect_command(CLI::App &app, int &status);

}  // namespace stage_cli

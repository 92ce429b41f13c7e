// Which plug-in file to load.
#pragma once

#include <filesystem>

namespace stage_cli {

/// The plug-in beside the running program: KestrelScopes.so, on Windows KestrelScopes.aex.
std::filesystem::path default_plugin_file();

}  // namespace stage_cli

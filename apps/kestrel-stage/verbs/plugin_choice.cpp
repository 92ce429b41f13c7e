#include "kestrel-stage/verbs/plugin_choice.h"

#ifdef _WIN32
#include <windows.h>

#include <vector>
#endif

namespace stage_cli {

#ifdef _WIN32
std::filesystem::path default_plugin_file() {
    std::vector<wchar_t> path(32768);
    const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    return std::filesystem::path(path.data(), path.data() + length).parent_path() /
           "KestrelScopes.aex";
}
#else
std::filesystem::path default_plugin_file() {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path() / "KestrelScopes.so";
}
#endif

}  // namespace stage_cli

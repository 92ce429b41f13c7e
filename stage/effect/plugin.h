// A plug-in file loaded into the host.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "hostapi/entry_point.h"
#include "stage/binary/loaded_library.h"
#include "stage/binary/pipl.h"
#include "stage/effect/param_catalog.h"

namespace stage {

/// What GLOBAL_SETUP reported.
struct ReportedFlags {
    A_u_long my_version = 0;
    PF_OutFlags out_flags = 0;
    PF_OutFlags2 out_flags2 = 0;
};

/// Loaded library, entry point, property list where the file carries one, and what set-up reported.
struct Plugin {
    /// Opens the file and looks the entry point up: under the name the property list gives, else
    /// "EntryPointFunc". Throws LibraryError.
    explicit Plugin(const std::filesystem::path &file);

    LoadedLibrary library;
    std::optional<Pipl> pipl;  ///< none in libraries without resources (native builds)
    EntryPoint entry = nullptr;
    ReportedFlags reported;
    ParamCatalog catalog;
    PF_Handle global_data = nullptr;
    A_long num_params = 1;
    bool custom_ui = false;  ///< register_ui was called
    PF_CustomUIInfo ui_info{};

    /// Property list against set-up: one line per disagreement.
    std::vector<std::string> disagreements() const;
};

}  // namespace stage

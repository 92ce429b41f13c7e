// Scripts of the host: JavaScript, really executed against the project.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>

#include "stage/project/project.h"

namespace stage {

struct ScriptResult {
    bool ok = false;
    std::string value;  ///< value of the last statement as text, UTF-8, when ok
    std::string error;  ///< one line, with the line of the script, when not
};

struct ScriptOptions {
    bool read_only = false;               ///< setting anything throws inside the script
    std::function<void()> before_change;  ///< called before the first change; may be empty
    /// A script that runs longer ends with an error. Noticed wherever the script allocates memory
    /// or touches the project: a bare endless loop over numbers, which does neither, is not ended.
    std::chrono::milliseconds time_limit{5000};
    std::size_t memory_limit = std::size_t{64} << 20;  ///< bytes
};

/// Runs `source` (UTF-8) in an engine of its own; nothing is left from one script to the next. On
/// offer are `app.project.activeItem` (null without an active comp); `CompItem` with `name`,
/// `width`, `height`, `numLayers`, `selectedLayers` (top to bottom) and `layer(index or name)`;
/// `AVLayer` with `name`, `index` (1 is the top) and `position`; its `expression`, read and
/// written. With separate dimensions `position.expression` throws. What a script changed before it
/// threw stays changed. Never throws but std::bad_alloc. [host thread]
ScriptResult run_script(Project &project, const std::string &source,
                        const ScriptOptions &options = {});

}  // namespace stage

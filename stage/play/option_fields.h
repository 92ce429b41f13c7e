// The switches of the host as session files name them.
#pragma once

#include <functional>
#include <vector>

#include "stage/host/host_options.h"
#include "stage/text/json_value.h"

namespace stage {

using OptionChange = std::function<void(HostOptions &)>;

/// Reads an object of options and returns what sets them. With `running` only those that a host may
/// change while a plug-in is loaded.
std::vector<OptionChange> read_options(const JsonValue &value, bool running);

}  // namespace stage

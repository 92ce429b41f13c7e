// Which rows of the panel belong to a scope. No host types.
#pragma once

#include "model/param_table.h"

namespace ks {

/// Consecutive parameters, by index.
struct ParamRange {
    int first;
    int end;  ///< one past the last
};

/// The group that directly holds `inside`, a control: its heading and everything before its end
/// marker, which shows nothing.
ParamRange group_around(Param inside);

}  // namespace ks

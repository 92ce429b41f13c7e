// What set-up asks about layers and compositions. All on the UI thread; errors are the host's.
#pragma once

#include <optional>

#include "host/suite_cache.h"

namespace ks {

/// Item dimensions in source pixels, without scale and pixel aspect.
struct ItemSize {
    A_long width = 0;
    A_long height = 0;
    bool operator==(const ItemSize &) const = default;
};

/// Reads the dimensions of the composition. [host thread]
A_Err read_comp_size(SuiteCache &suites, AEGP_CompH comp, ItemSize &size);

/// Reads the dimensions of the layer's source item; none for a layer without one (text, shape,
/// camera, light). [host thread]
A_Err read_source_size(SuiteCache &suites, AEGP_LayerH layer, std::optional<ItemSize> &size);

/// Tells whether the layer goes by `name`, zero-terminated UTF-16: its own name, or its source's
/// where the user has given it none. [host thread]
A_Err layer_goes_by(SuiteCache &suites, AEGP_LayerH layer, const A_UTF16Char *name, bool &yes);

}  // namespace ks

// Small values of the command line, parsed with a clear message.
#pragma once

#include <optional>
#include <string>

#include "hostapi/effect_types.h"
#include "kestrel-stage/verbs/render_job.h"

namespace stage_cli {

struct Pair {
    int first = 1;
    int second = 1;
};

/// "N" (both the same) or "NxM", each 1..100.
Pair parse_downsample(const std::string &text);
/// "N" or "N/D", each 1..100000: pixel aspect ratio.
Pair parse_ratio(const std::string &text);
/// "WxH", each 1..30000.
Pair parse_size(const std::string &text);
/// "LEFT,TOP,RIGHT,BOTTOM", not empty.
PF_LRect parse_region(const std::string &text);

}  // namespace stage_cli

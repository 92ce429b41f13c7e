// Types and values of streams: what the stream suite reads out of the project.
#pragma once

#include <string>

#include "hostapi/aegp_types.h"
#include "stage/ledger/project_refs.h"

namespace stage {

class Host;

/// The stream's effect in the project, or null when the layer or the effect is gone.
EffectState *effect_of(Host &host, const EffectTarget &target);

/// AEGP_StreamType_* of a stream; NO_DATA for groups and for streams that are gone.
AEGP_StreamType stream_type(Host &host, const StreamTarget &target);

/// Fills `value` according to stream_type(): layer position in comp pixels, scale in percent (x and
/// y alike), opacity in percent; parameters as the panel shows them, points in layer pixels,
/// colours 0..1. False for streams without data.
bool stream_value(Host &host, const StreamTarget &target, AEGP_StreamVal2 *value);

/// Name as the panel shows it, UTF-8.
std::string stream_name(Host &host, const StreamTarget &target);

}  // namespace stage

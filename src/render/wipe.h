// The comparison wipe: the original laid over the left part of the corrected image.
#pragma once

#include "host/error_chain.h"
#include "render/frame.h"

namespace ks {

/// How far the wipe reaches, remembered for its edge.
struct Wipe {
    bool active = false;
    double fraction = 0.0;  ///< "Compare with Original" * 0.01, of the output's width
    double opacity = 0.0;   ///< "Compare Opacity" * 0.01, read only while active
};

/// Without an original nothing is read and nothing happens. Otherwise reads the wipe, and when it
/// is above 0 its opacity, and lays the original, centred on the input, over `corrected`.
/// [host thread]
Wipe apply_wipe(ErrorChain &chain, const Frame &frame, PF_EffectWorld *corrected);

}  // namespace ks

#include "render/wipe.h"

#include "geometry/monitor_layout.h"
#include "host/host_world.h"
#include "host/param_values.h"
#include "render/compositing.h"
#include "render/settings.h"

namespace ks {

Wipe apply_wipe(ErrorChain &chain, const Frame &frame, PF_EffectWorld *corrected) {
    Wipe wipe;
    if (frame.original == nullptr) return wipe;
    wipe.fraction = read_slider(chain, frame.in_data, kParamCompareWithOriginal) * 0.01;
    if (!(wipe.fraction > 0.0)) return wipe;
    wipe.active = true;
    wipe.opacity = read_slider(chain, frame.in_data, kParamCompareOpacity) * 0.01;
    chain.step([&] {
        const IntRect part = wipe_rect(size_of(*frame.output), wipe.fraction);
        const IntPoint at = wipe_offset(size_of(*frame.input), size_of(*frame.original));
        return place_world(frame, frame.original, host_rect(part), at,
                           opacity_from_fraction(wipe.opacity), corrected);
    });
    return wipe;
}

}  // namespace ks

#include "host/param_values.h"

#include "geometry/frame_scale.h"
#include "host/scoped.h"
#include "pixels/depth.h"

namespace ks {
namespace {

/// Checks `param` out, passes its union to `take` and checks it in.
template <class Take>
void read_param(ErrorChain &chain, PF_InData *in_data, Param param, Take &&take) {
    if (!chain.ok()) return;
    ParamCheckout checkout(in_data, param);
    chain.keep(checkout.error());
    if (chain.ok()) take(checkout.def().u);
    chain.always([&] { return checkout.close(); });
}

}  // namespace

double read_slider(ErrorChain &chain, PF_InData *in_data, Param param) {
    double value = 0.0;
    read_param(chain, in_data, param, [&](const auto &u) { value = u.fs_d.value; });
    return value;
}

std::int32_t read_popup(ErrorChain &chain, PF_InData *in_data, Param param) {
    std::int32_t value = 0;
    read_param(chain, in_data, param, [&](const auto &u) { value = u.pd.value; });
    return value;
}

bool read_checkbox(ErrorChain &chain, PF_InData *in_data, Param param) {
    bool on = false;
    read_param(chain, in_data, param, [&](const auto &u) { on = u.bd.value != 0; });
    return on;
}

IntPoint read_point(ErrorChain &chain, PF_InData *in_data, Param param) {
    IntPoint point;
    read_param(chain, in_data, param, [&](const auto &u) {
        point = {whole_pixels(u.td.x_value), whole_pixels(u.td.y_value)};
    });
    return point;
}

Colour read_colour(ErrorChain &chain, PF_InData *in_data, Param param) {
    Colour colour{};
    read_param(chain, in_data, param, [&](const auto &u) {
        const PF_Pixel &value = u.cd.value;
        colour = to_colour(Pixel8{value.alpha, value.red, value.green, value.blue});
    });
    return colour;
}

}  // namespace ks

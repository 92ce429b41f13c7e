// Values of single parameters at the command's time.
#pragma once

#include <cstdint>

#include "geometry/int_rect.h"
#include "host/error_chain.h"
#include "hostapi/in_out_data.h"
#include "model/param_table.h"
#include "pixels/pixel_format.h"

namespace ks {

// Each reads one parameter within `chain`: checked out while no error is kept, checked in at once.
// The value is 0 when it could not be read. [host thread]
double read_slider(ErrorChain &chain, PF_InData *in_data, Param param);
std::int32_t read_popup(ErrorChain &chain, PF_InData *in_data, Param param);
bool read_checkbox(ErrorChain &chain, PF_InData *in_data, Param param);
/// Whole output pixels: the host's 16.16 pixels shifted right by 16, no downsample scaling (the
/// host has applied it already).
IntPoint read_point(ErrorChain &chain, PF_InData *in_data, Param param);
/// The colour with full scale 1.0: each 8-bit component times 1/255 in single precision.
Colour read_colour(ErrorChain &chain, PF_InData *in_data, Param param);

}  // namespace ks

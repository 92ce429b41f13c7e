// The instance record's life in the host's sequence data: created, flattened, rebuilt, freed.
#pragma once

#include "hostapi/in_out_data.h"

namespace ks {

// All four throw PF_Err 516 when a suite cannot be had. The host's sequence handles are locked for
// the length of the call only.

/// Frees an old record, creates a new one in out_data->sequence_data and, when the layer that
/// carries the effect is an adjustment layer, pins the layer. With `check_layer` (first
/// application, not reset) it also looks at how the layer sits in its composition: see
/// set_up_composition(). Returns PF_Err_INTERNAL_STRUCT_DAMAGED (512) when the record cannot be
/// allocated, else the first error of the host; the new record stays in place then. [host thread]
PF_Err sequence_setup(PF_InData *in_data, PF_OutData *out_data, bool check_layer);

/// Builds a record from the flat form that the host hands back after loading or duplicating, with
/// bytes past the end of a short handle read as 0. Null data is left alone with 0; 512 when the
/// record cannot be allocated. The flat handle stays the host's. [host thread]
PF_Err sequence_resetup(PF_InData *in_data, PF_OutData *out_data);

/// Stores the 8-byte flat form in out_data->sequence_data; the record's own handle stays the
/// host's. 512 without data, or when the flat form cannot be allocated; 0 when the data cannot be
/// locked. Data that is flat already is copied. [host thread]
PF_Err sequence_flatten(PF_InData *in_data, PF_OutData *out_data);

/// Disposes of the data in whatever form it is, and nulls the field in both records. [host thread]
PF_Err sequence_setdown(PF_InData *in_data, PF_OutData *out_data);

}  // namespace ks

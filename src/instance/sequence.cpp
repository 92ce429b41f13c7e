#include "instance/sequence.h"

#include <algorithm>
#include <cstring>

#include "host/error_chain.h"
#include "host/scoped.h"
#include "host/suite_cache.h"
#include "instance/composition_setup.h"
#include "instance/lock_script.h"
#include "model/record.h"

namespace ks {
namespace {

/// Allocates a handle for a `Record`, zeroes it, lets `fill` write it and stores it in `slot`.
template <class Record, class Fill>
PF_Err store_new_record(PF_HandleSuite1 &handles, PF_Handle &slot, Fill &&fill) {
    OwnedHandle owned(handles, sizeof(Record));
    if (owned.get() == nullptr) return PF_Err_INTERNAL_STRUCT_DAMAGED;
    {
        LockedHandle<Record> record(handles, owned.get());
        if (record.get() == nullptr) return PF_Err_INTERNAL_STRUCT_DAMAGED;
        std::memset(record.get(), 0, sizeof(Record));
        fill(*record.get());
    }
    slot = owned.release();
    return PF_Err_NONE;
}

/// The flat form of `handle`'s contents, read as flat bytes.
FlatRecord read_flat(PF_HandleSuite1 &handles, PF_Handle handle, const void *contents) {
    FlatRecord flat{};
    const A_HandleSize size = handles.host_get_handle_size(handle);
    std::memcpy(&flat, contents, std::min<A_HandleSize>(size, sizeof flat));
    return flat;
}

PF_Err dispose_sequence_data(SuiteCache &suites, PF_InData *in_data, PF_OutData *out_data) {
    if (in_data->sequence_data == nullptr) return PF_Err_NONE;
    suites.handle().host_dispose_handle(in_data->sequence_data);
    in_data->sequence_data = nullptr;
    out_data->sequence_data = nullptr;
    return PF_Err_NONE;
}

}  // namespace

PF_Err sequence_setdown(PF_InData *in_data, PF_OutData *out_data) {
    // Nothing to free needs no suite, so this succeeds in a host without any.
    if (in_data->sequence_data == nullptr) return PF_Err_NONE;
    SuiteCache suites(in_data->pica_basicP);
    return dispose_sequence_data(suites, in_data, out_data);
}

PF_Err sequence_setup(PF_InData *in_data, PF_OutData *out_data, bool check_layer) {
    SuiteCache suites(in_data->pica_basicP);
    ErrorChain chain;
    chain.step([&] { return dispose_sequence_data(suites, in_data, out_data); });
    chain.step([&] {
        return store_new_record<InstanceRecord>(suites.handle(), out_data->sequence_data,
                                                init_new_instance);
    });
    AEGP_LayerH layer = nullptr;
    AEGP_LayerFlags flags = AEGP_LayerFlag_NONE;
    chain.step(
        [&] { return suites.pf_interface().AEGP_GetEffectLayer(in_data->effect_ref, &layer); });
    if (!chain.ok() || layer == nullptr) return chain.result();
    chain.step([&] { return suites.layer().AEGP_GetLayerFlags(layer, &flags); });
    const bool adjustment = (flags & AEGP_LayerFlag_ADJUSTMENT_LAYER) != 0;
    if (check_layer) {
        chain.step(
            [&] { return set_up_composition(suites, in_data, out_data, layer, adjustment); });
    }
    if (adjustment) chain.step([&] { return run_lock_script(in_data, 1); });
    return chain.result();
}

PF_Err sequence_flatten(PF_InData *in_data, PF_OutData *out_data) {
    if (in_data->sequence_data == nullptr) return PF_Err_INTERNAL_STRUCT_DAMAGED;
    PF_Handle source = in_data->sequence_data;
    SuiteCache suites(in_data->pica_basicP);
    LockedHandle<const InstanceRecord> record(suites.handle(), source);
    if (record.get() == nullptr) return PF_Err_NONE;
    const bool whole = suites.handle().host_get_handle_size(source) >= sizeof(InstanceRecord);
    FlatRecord flat =
        whole ? flatten(*record.get()) : read_flat(suites.handle(), source, record.get());
    flat.is_flat = 1;
    return store_new_record<FlatRecord>(suites.handle(), out_data->sequence_data,
                                        [&](FlatRecord &stored) { stored = flat; });
}

PF_Err sequence_resetup(PF_InData *in_data, PF_OutData *out_data) {
    if (in_data->sequence_data == nullptr) return PF_Err_NONE;
    PF_Handle source = in_data->sequence_data;
    SuiteCache suites(in_data->pica_basicP);
    LockedHandle<const void> contents(suites.handle(), source);
    if (contents.get() == nullptr) return PF_Err_NONE;
    const FlatRecord flat = read_flat(suites.handle(), source, contents.get());
    return store_new_record<InstanceRecord>(
        suites.handle(), out_data->sequence_data,
        [&](InstanceRecord &record) { unflatten(flat, record); });
}

}  // namespace ks

// Suites for the length of one command: acquired on first use, all released at the end.
#pragma once

#include <cstdint>
#include <tuple>

#include "hostapi/host.h"

namespace ks {

/// One suite: how AcquireSuite knows it, and its table while it is held.
template <class Table>
struct SuiteSlot {
    const char *name;
    std::int32_t number;  ///< the one AcquireSuite takes, not the generation in the table's name
    Table *table = nullptr;
};

/// A slot for every suite that the effect uses, none held.
constexpr auto empty_suite_slots() {
    return std::tuple{
        SuiteSlot<PF_HandleSuite1>{kPFHandleSuite, kPFHandleSuiteVersion1},
        SuiteSlot<PF_WorldTransformSuite1>{kPFWorldTransformSuite, kPFWorldTransformSuiteVersion1},
        SuiteSlot<PF_Iterate8Suite1>{kPFIterate8Suite, kPFIterate8SuiteVersion1},
        SuiteSlot<PF_iterate16Suite1>{kPFIterate16Suite, kPFIterate16SuiteVersion1},
        SuiteSlot<PF_iterateFloatSuite1>{kPFIterateFloatSuite, kPFIterateFloatSuiteVersion1},
        SuiteSlot<PF_ParamUtilsSuite3>{kPFParamUtilsSuite, kPFParamUtilsSuiteVersion3},
        SuiteSlot<PF_ANSICallbacksSuite1>{kPFANSISuite, kPFANSISuiteVersion1},
        SuiteSlot<PF_EffectCustomUISuite1>{kPFEffectCustomUISuite, kPFEffectCustomUISuiteVersion1},
        SuiteSlot<PF_EffectCustomUIOverlayThemeSuite1>{kPFEffectCustomUIOverlayThemeSuite,
                                                       kPFEffectCustomUIOverlayThemeSuiteVersion1},
        SuiteSlot<AEGP_PFInterfaceSuite1>{kAEGPPFInterfaceSuite, kAEGPPFInterfaceSuiteVersion1},
        SuiteSlot<AEGP_LayerSuite7>{kAEGPLayerSuite, kAEGPLayerSuiteVersion7},
        SuiteSlot<AEGP_CompSuite7>{kAEGPCompSuite, kAEGPCompSuiteVersion7},
        SuiteSlot<AEGP_ItemSuite8>{kAEGPItemSuite, kAEGPItemSuiteVersion8},
        SuiteSlot<AEGP_StreamSuite4>{kAEGPStreamSuite, kAEGPStreamSuiteVersion4},
        SuiteSlot<AEGP_DynamicStreamSuite4>{kAEGPDynamicStreamSuite,
                                            kAEGPDynamicStreamSuiteVersion4},
        SuiteSlot<AEGP_UtilitySuite5>{kAEGPUtilitySuite, kAEGPUtilitySuiteVersion5},
        SuiteSlot<AEGP_MemorySuite1>{kAEGPMemorySuite, kAEGPMemorySuiteVersion1},
        SuiteSlot<AEGP_IterateSuite1>{kAEGPIterateSuite, kAEGPIterateSuiteVersion1},
        SuiteSlot<AEGP_EffectSuite3>{kAEGPEffectSuite, kAEGPEffectSuiteVersion3},
    };
}

/// Hands out the host's suites. Lives on the stack of one command and is never shared between
/// threads. [host thread]
class SuiteCache {
  public:
    /// Throws PF_Err_BAD_CALLBACK_PARAM (516) when `basic` is null.
    explicit SuiteCache(SPBasicSuite *basic);
    /// Releases what was acquired, each by its own name and number; never throws.
    ~SuiteCache();
    SuiteCache(const SuiteCache &) = delete;
    SuiteCache &operator=(const SuiteCache &) = delete;

    /// Acquires the suite on first use; throws 516 when the host refuses it or hands back a null
    /// table.
    template <class Table>
    Table &get() {
        SuiteSlot<Table> &slot = std::get<SuiteSlot<Table>>(slots_);
        if (slot.table == nullptr)
            slot.table = static_cast<Table *>(acquire(slot.name, slot.number));
        return *slot.table;
    }

    // get() of the suites by what they are for.
    PF_HandleSuite1 &handle() { return get<PF_HandleSuite1>(); }
    PF_WorldTransformSuite1 &world_transform() { return get<PF_WorldTransformSuite1>(); }
    PF_Iterate8Suite1 &iterate8() { return get<PF_Iterate8Suite1>(); }
    PF_iterate16Suite1 &iterate16() { return get<PF_iterate16Suite1>(); }
    PF_iterateFloatSuite1 &iterate_float() { return get<PF_iterateFloatSuite1>(); }
    PF_ParamUtilsSuite3 &param_utils() { return get<PF_ParamUtilsSuite3>(); }
    PF_ANSICallbacksSuite1 &ansi() { return get<PF_ANSICallbacksSuite1>(); }
    PF_EffectCustomUISuite1 &custom_ui() { return get<PF_EffectCustomUISuite1>(); }
    PF_EffectCustomUIOverlayThemeSuite1 &overlay_theme() {
        return get<PF_EffectCustomUIOverlayThemeSuite1>();
    }
    AEGP_PFInterfaceSuite1 &pf_interface() { return get<AEGP_PFInterfaceSuite1>(); }
    AEGP_LayerSuite7 &layer() { return get<AEGP_LayerSuite7>(); }
    AEGP_CompSuite7 &comp() { return get<AEGP_CompSuite7>(); }
    AEGP_ItemSuite8 &item() { return get<AEGP_ItemSuite8>(); }
    AEGP_StreamSuite4 &stream() { return get<AEGP_StreamSuite4>(); }
    AEGP_DynamicStreamSuite4 &dynamic_stream() { return get<AEGP_DynamicStreamSuite4>(); }
    AEGP_UtilitySuite5 &utility() { return get<AEGP_UtilitySuite5>(); }
    AEGP_MemorySuite1 &memory() { return get<AEGP_MemorySuite1>(); }
    AEGP_IterateSuite1 &iterate_generic() { return get<AEGP_IterateSuite1>(); }
    AEGP_EffectSuite3 &effect() { return get<AEGP_EffectSuite3>(); }

  private:
    void *acquire(const char *name, std::int32_t number);

    SPBasicSuite *basic_;
    decltype(empty_suite_slots()) slots_ = empty_suite_slots();
};

}  // namespace ks

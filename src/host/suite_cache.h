// Suites for the length of one command: acquired on first use, all released at the end.
#pragma once

#include <array>
#include <cstddef>

#include "hostapi/host.h"

namespace ks {

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

    // Each accessor acquires its suite on first use and throws 516 when the host refuses it or
    // hands back a null table.
    PF_HandleSuite1 &handle();
    PF_WorldSuite2 &world();
    PF_WorldTransformSuite1 &world_transform();
    PF_Iterate8Suite1 &iterate8();
    PF_iterate16Suite1 &iterate16();
    PF_iterateFloatSuite1 &iterate_float();
    PF_ParamUtilsSuite3 &param_utils();
    PF_ANSICallbacksSuite1 &ansi();
    PF_EffectCustomUISuite1 &custom_ui();
    PF_EffectCustomUIOverlayThemeSuite1 &overlay_theme();
    AEGP_PFInterfaceSuite1 &pf_interface();
    AEGP_LayerSuite7 &layer();
    AEGP_CompSuite7 &comp();
    AEGP_ItemSuite8 &item();
    AEGP_StreamSuite4 &stream();
    AEGP_DynamicStreamSuite4 &dynamic_stream();
    AEGP_UtilitySuite5 &utility();
    AEGP_MemorySuite1 &memory();
    AEGP_IterateSuite1 &iterate_generic();
    AEGP_EffectSuite3 &effect();

  private:
    enum Slot : std::size_t {
        kHandle,
        kWorld,
        kWorldTransform,
        kIterate8,
        kIterate16,
        kIterateFloat,
        kParamUtils,
        kAnsi,
        kCustomUi,
        kOverlayTheme,
        kPfInterface,
        kLayer,
        kComp,
        kItem,
        kStream,
        kDynamicStream,
        kUtility,
        kMemory,
        kIterateGeneric,
        kEffect,
        kSlotCount
    };
    struct Identity {
        const char *name;
        std::int32_t number;
    };
    static const std::array<Identity, kSlotCount> kIdentities;

    template <class Suite>
    Suite &get(Slot slot);

    SPBasicSuite *basic_;
    std::array<const void *, kSlotCount> suites_{};
};

}  // namespace ks

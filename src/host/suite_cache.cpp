#include "host/suite_cache.h"

namespace ks {

// One row per slot, in the order of `Slot`: the number is the one AcquireSuite takes, not the
// generation in the struct's name.
const std::array<SuiteCache::Identity, SuiteCache::kSlotCount> SuiteCache::kIdentities{{
    {kPFHandleSuite, kPFHandleSuiteVersion1},
    {kPFWorldSuite, kPFWorldSuiteVersion2},
    {kPFWorldTransformSuite, kPFWorldTransformSuiteVersion1},
    {kPFIterate8Suite, kPFIterate8SuiteVersion1},
    {kPFIterate16Suite, kPFIterate16SuiteVersion1},
    {kPFIterateFloatSuite, kPFIterateFloatSuiteVersion1},
    {kPFParamUtilsSuite, kPFParamUtilsSuiteVersion3},
    {kPFANSISuite, kPFANSISuiteVersion1},
    {kPFEffectCustomUISuite, kPFEffectCustomUISuiteVersion1},
    {kPFEffectCustomUIOverlayThemeSuite, kPFEffectCustomUIOverlayThemeSuiteVersion1},
    {kAEGPPFInterfaceSuite, kAEGPPFInterfaceSuiteVersion1},
    {kAEGPLayerSuite, kAEGPLayerSuiteVersion7},
    {kAEGPCompSuite, kAEGPCompSuiteVersion7},
    {kAEGPItemSuite, kAEGPItemSuiteVersion8},
    {kAEGPStreamSuite, kAEGPStreamSuiteVersion4},
    {kAEGPDynamicStreamSuite, kAEGPDynamicStreamSuiteVersion4},
    {kAEGPUtilitySuite, kAEGPUtilitySuiteVersion5},
    {kAEGPMemorySuite, kAEGPMemorySuiteVersion1},
    {kAEGPIterateSuite, kAEGPIterateSuiteVersion1},
    {kAEGPEffectSuite, kAEGPEffectSuiteVersion3},
}};

SuiteCache::SuiteCache(SPBasicSuite *basic) : basic_(basic) {
    if (basic_ == nullptr) throw PF_Err{PF_Err_BAD_CALLBACK_PARAM};
}

SuiteCache::~SuiteCache() {
    for (std::size_t slot = 0; slot < kSlotCount; ++slot) {
        if (suites_[slot] != nullptr) {
            basic_->ReleaseSuite(kIdentities[slot].name, kIdentities[slot].number);
        }
    }
}

template <class Suite>
Suite &SuiteCache::get(Slot slot) {
    if (suites_[slot] == nullptr) {
        const void *suite = nullptr;
        const SPErr error =
            basic_->AcquireSuite(kIdentities[slot].name, kIdentities[slot].number, &suite);
        if (error != 0 || suite == nullptr) throw PF_Err{PF_Err_BAD_CALLBACK_PARAM};
        suites_[slot] = suite;
    }
    // Suite tables are the host's and read-only; the prototypes alone are not const-correct.
    return *static_cast<Suite *>(const_cast<void *>(suites_[slot]));
}

PF_HandleSuite1 &SuiteCache::handle() {
    return get<PF_HandleSuite1>(kHandle);
}
PF_WorldSuite2 &SuiteCache::world() {
    return get<PF_WorldSuite2>(kWorld);
}
PF_WorldTransformSuite1 &SuiteCache::world_transform() {
    return get<PF_WorldTransformSuite1>(kWorldTransform);
}
PF_Iterate8Suite1 &SuiteCache::iterate8() {
    return get<PF_Iterate8Suite1>(kIterate8);
}
PF_iterate16Suite1 &SuiteCache::iterate16() {
    return get<PF_iterate16Suite1>(kIterate16);
}
PF_iterateFloatSuite1 &SuiteCache::iterate_float() {
    return get<PF_iterateFloatSuite1>(kIterateFloat);
}
PF_ParamUtilsSuite3 &SuiteCache::param_utils() {
    return get<PF_ParamUtilsSuite3>(kParamUtils);
}
PF_ANSICallbacksSuite1 &SuiteCache::ansi() {
    return get<PF_ANSICallbacksSuite1>(kAnsi);
}
PF_EffectCustomUISuite1 &SuiteCache::custom_ui() {
    return get<PF_EffectCustomUISuite1>(kCustomUi);
}
PF_EffectCustomUIOverlayThemeSuite1 &SuiteCache::overlay_theme() {
    return get<PF_EffectCustomUIOverlayThemeSuite1>(kOverlayTheme);
}
AEGP_PFInterfaceSuite1 &SuiteCache::pf_interface() {
    return get<AEGP_PFInterfaceSuite1>(kPfInterface);
}
AEGP_LayerSuite7 &SuiteCache::layer() {
    return get<AEGP_LayerSuite7>(kLayer);
}
AEGP_CompSuite7 &SuiteCache::comp() {
    return get<AEGP_CompSuite7>(kComp);
}
AEGP_ItemSuite8 &SuiteCache::item() {
    return get<AEGP_ItemSuite8>(kItem);
}
AEGP_StreamSuite4 &SuiteCache::stream() {
    return get<AEGP_StreamSuite4>(kStream);
}
AEGP_DynamicStreamSuite4 &SuiteCache::dynamic_stream() {
    return get<AEGP_DynamicStreamSuite4>(kDynamicStream);
}
AEGP_UtilitySuite5 &SuiteCache::utility() {
    return get<AEGP_UtilitySuite5>(kUtility);
}
AEGP_MemorySuite1 &SuiteCache::memory() {
    return get<AEGP_MemorySuite1>(kMemory);
}
AEGP_IterateSuite1 &SuiteCache::iterate_generic() {
    return get<AEGP_IterateSuite1>(kIterateGeneric);
}
AEGP_EffectSuite3 &SuiteCache::effect() {
    return get<AEGP_EffectSuite3>(kEffect);
}

}  // namespace ks

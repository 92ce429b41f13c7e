// Visits every function that a plug-in can call, whatever its table.
#pragma once

#include <cstddef>
#include <string>
#include <type_traits>

#include "hostapi/host.h"
#include "hostapi/suite_names.h"
#include "stage/project/layer_map.h"
#include "stage/services/event_callbacks.h"
#include "stage/services/interact_callbacks.h"
#include "stage/services/smart_render_callbacks.h"
#include "stage/services/suites/serving_host.h"
#include "stage/services/utility_callbacks.h"

namespace stage_test {

template <class Member>
inline constexpr bool kIsFunction = false;
template <class R, class... A>
inline constexpr bool kIsFunction<R (*)(A...)> = true;
using Print = int (*)(A_char *, const A_char *, ...);
template <>
inline constexpr bool kIsFunction<Print> = true;

/// Calls `visit(name, function)` for each slot of a suite, with its name in the trace.
template <class Suite, class Visit>
void visit_suite(const std::string &prefix, const Suite &suite, Visit visit) {
#define KS_SUITE(type, slots)
#define KS_SLOT(type, function, slot)                  \
    if constexpr (std::is_same_v<Suite, type>) {       \
        visit(prefix + "." #function, suite.function); \
    }
#include "hostapi/tables/slots.inc"
#undef KS_SLOT
#undef KS_SUITE
}

/// The same for the functions among the members of any other table. utils.app, which takes any
/// arguments, is null and not visited.
template <class Table, class Visit>
void visit_table(const std::string &prefix, const Table &table, Visit visit) {
    const auto visit_member = [&](const char *name, const auto &member) {
        if constexpr (kIsFunction<std::remove_cvref_t<decltype(member)>>) {
            visit(prefix + "." + name, member);
        }
    };
#define KS_TYPE(type, size, alignment)
#define KS_MEMBER(type, member, offset, size) \
    if constexpr (std::is_same_v<Table, type>) visit_member(#member, table.member);
#include "hostapi/tables/layout.inc"
#undef KS_MEMBER
#undef KS_TYPE
}

/// KS_OFFERED(struct, name, number) for each suite that the host offers.
#define KS_EVERY_SUITE                                                                     \
    KS_OFFERED(PF_HandleSuite1, kPFHandleSuite, 2)                                         \
    KS_OFFERED(PF_WorldSuite2, kPFWorldSuite, 2)                                           \
    KS_OFFERED(PF_WorldTransformSuite1, kPFWorldTransformSuite, 1)                         \
    KS_OFFERED(PF_Iterate8Suite1, kPFIterate8Suite, 1)                                     \
    KS_OFFERED(PF_Iterate8Suite2, kPFIterate8Suite, 2)                                     \
    KS_OFFERED(PF_iterate16Suite1, kPFIterate16Suite, 1)                                   \
    KS_OFFERED(PF_iterate16Suite2, kPFIterate16Suite, 2)                                   \
    KS_OFFERED(PF_iterateFloatSuite1, kPFIterateFloatSuite, 1)                             \
    KS_OFFERED(PF_iterateFloatSuite2, kPFIterateFloatSuite, 2)                             \
    KS_OFFERED(PF_ParamUtilsSuite1, kPFParamUtilsSuite, 2)                                 \
    KS_OFFERED(PF_ParamUtilsSuite3, kPFParamUtilsSuite, 3)                                 \
    KS_OFFERED(PF_ANSICallbacksSuite1, kPFANSISuite, 1)                                    \
    KS_OFFERED(PF_EffectCustomUISuite1, kPFEffectCustomUISuite, 1)                         \
    KS_OFFERED(PF_EffectCustomUISuite2, kPFEffectCustomUISuite, 2)                         \
    KS_OFFERED(PF_EffectCustomUIOverlayThemeSuite1, kPFEffectCustomUIOverlayThemeSuite, 1) \
    KS_OFFERED(AEGP_PFInterfaceSuite1, kAEGPPFInterfaceSuite, 1)                           \
    KS_OFFERED(AEGP_LayerSuite7, kAEGPLayerSuite, 13)                                      \
    KS_OFFERED(AEGP_LayerSuite8, kAEGPLayerSuite, 14)                                      \
    KS_OFFERED(AEGP_LayerSuite9, kAEGPLayerSuite, 15)                                      \
    KS_OFFERED(AEGP_CompSuite7, kAEGPCompSuite, kAEGPCompSuiteVersion7)                    \
    KS_OFFERED(AEGP_CompSuite10, kAEGPCompSuite, kAEGPCompSuiteVersion10)                  \
    KS_OFFERED(AEGP_CompSuite11, kAEGPCompSuite, kAEGPCompSuiteVersion11)                  \
    KS_OFFERED(AEGP_CompSuite12, kAEGPCompSuite, kAEGPCompSuiteVersion12)                  \
    KS_OFFERED(AEGP_ItemSuite8, kAEGPItemSuite, 13)                                        \
    KS_OFFERED(AEGP_ItemSuite9, kAEGPItemSuite, 14)                                        \
    KS_OFFERED(AEGP_StreamSuite4, kAEGPStreamSuite, 9)                                     \
    KS_OFFERED(AEGP_StreamSuite5, kAEGPStreamSuite, 10)                                    \
    KS_OFFERED(AEGP_StreamSuite6, kAEGPStreamSuite, 11)                                    \
    KS_OFFERED(AEGP_DynamicStreamSuite4, kAEGPDynamicStreamSuite, 5)                       \
    KS_OFFERED(AEGP_UtilitySuite5, kAEGPUtilitySuite, kAEGPUtilitySuiteVersion5)           \
    KS_OFFERED(AEGP_UtilitySuite6, kAEGPUtilitySuite, kAEGPUtilitySuiteVersion6)           \
    KS_OFFERED(AEGP_MemorySuite1, kAEGPMemorySuite, 1)                                     \
    KS_OFFERED(AEGP_IterateSuite1, kAEGPIterateSuite, 1)                                   \
    KS_OFFERED(AEGP_IterateSuite2, kAEGPIterateSuite, 2)                                   \
    KS_OFFERED(AEGP_EffectSuite3, kAEGPEffectSuite, kAEGPEffectSuiteVersion3)              \
    KS_OFFERED(AEGP_EffectSuite4, kAEGPEffectSuite, kAEGPEffectSuiteVersion4)              \
    KS_OFFERED(AEGP_EffectSuite5, kAEGPEffectSuite, kAEGPEffectSuiteVersion5)              \
    KS_OFFERED(DRAWBOT_DrawbotSuite1, kDRAWBOT_DrawSuite, 1)                               \
    KS_OFFERED(DRAWBOT_SupplierSuite1, kDRAWBOT_SupplierSuite, 1)                          \
    KS_OFFERED(DRAWBOT_SurfaceSuite1, kDRAWBOT_SurfaceSuite, 1)                            \
    KS_OFFERED(DRAWBOT_SurfaceSuite2, kDRAWBOT_SurfaceSuite, 2)                            \
    KS_OFFERED(DRAWBOT_PathSuite1, kDRAWBOT_PathSuite, 1)                                  \
    KS_OFFERED(DRAWBOT_PenSuite1, kDRAWBOT_PenSuite, 1)                                    \
    KS_OFFERED(DRAWBOT_ImageSuite1, kDRAWBOT_ImageSuite, 1)

/// Every function of `host`: the suites that it offers, the basic suite, and the tables that come
/// with commands. A suite of KS_EVERY_SUITE that is not offered is visited with a null function.
template <class Visit>
void visit_every_function(stage::Host &host, Visit visit) {
    const auto table_of = [&](const char *name, int number) {
        bool refused = false;
        return host.suites.acquire(name, number, &refused);
    };
#define KS_OFFERED(type, name, number)                                                           \
    {                                                                                            \
        const void *table = table_of(name, number);                                              \
        visit_suite(name, table != nullptr ? *static_cast<const type *>(table) : type{}, visit); \
    }
    KS_EVERY_SUITE
#undef KS_OFFERED
    visit_suite("SPBasicSuite", *host.suites.basic(), visit);
    stage::EventConversion conversion;
    visit_table("inter", stage::interact_callbacks(), visit);
    visit_table("utils.ansi", stage::utility_callbacks()->ansi, visit);
    visit_table("event", stage::event_callbacks(conversion), visit);
    visit_table("pre_render", stage::pre_render_callbacks(), visit);
    visit_table("smart_render", stage::smart_render_callbacks(), visit);
    visit_table("utils", *stage::utility_callbacks(), visit);
}

/// Calls a function with zeros and nulls.
template <class R, class... A>
R call_with_nothing(R (*function)(A...)) {
    return function(A{}...);
}
inline int call_with_nothing(Print function) {
    return function(nullptr, nullptr);
}

}  // namespace stage_test

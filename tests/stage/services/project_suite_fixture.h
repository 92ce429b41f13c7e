// A host with a small project and one applied effect, and its suites.
#pragma once

#include <gmock/gmock.h>

#include "hostapi/host.h"
#include "hostapi/suite_names.h"
#include "stage/effect/effect_instance.h"
#include "stage/ledger/thread_role.h"
#include "stage/services/suites/serving_host.h"

namespace stage {

/// Comp "Comp" of 64x48 with, from the top: adjustment layer "Scopes" carrying the effect, text
/// layer "Title", layer "Picture" over a solid of 32x16.
struct SuiteTest : testing::Test {
    ServingHost host;
    ScopedThreadRole role{ThreadRole::kUi};
    ItemId comp = host.project.add_comp("Comp", 64, 48, 1, 1, 50);
    ItemId solid = host.project.add_solid_item("Small solid", 32, 16, {1, 0, 0, 1});
    LayerId picture = host.project.add_layer(comp, solid, 0, "Picture");
    LayerId title = host.project.add_text_layer(comp, 0, "Title");
    LayerId scopes = host.project.add_adjustment_layer(comp, 0, "Scopes");
    EffectInstance *instance = nullptr;

    SuiteTest() {
        EffectState effect;
        effect.match_name = "effect";
        effect.streams.resize(5);
        host.project.layer(scopes)->effects.push_back(effect);
        host.instances.push_back(std::make_unique<EffectInstance>(scopes, 0));
        instance = host.instances.back().get();
    }

    template <class Suite>
    const Suite &get(const char *name, std::int32_t version) {
        bool refused = false;
        const void *table = host.suites.acquire(name, version, &refused);
        EXPECT_NE(table, nullptr) << name << " " << version;
        return *static_cast<const Suite *>(table);
    }
    const AEGP_LayerSuite7 &layers() { return get<AEGP_LayerSuite7>(kAEGPLayerSuite, 13); }
    const AEGP_CompSuite7 &comps() { return get<AEGP_CompSuite7>(kAEGPCompSuite, 15); }
    const AEGP_ItemSuite8 &items() { return get<AEGP_ItemSuite8>(kAEGPItemSuite, 13); }
    const AEGP_StreamSuite4 &streams() { return get<AEGP_StreamSuite4>(kAEGPStreamSuite, 9); }
    const AEGP_DynamicStreamSuite4 &dynamic() {
        return get<AEGP_DynamicStreamSuite4>(kAEGPDynamicStreamSuite, 5);
    }
    const AEGP_EffectSuite3 &effects() { return get<AEGP_EffectSuite3>(kAEGPEffectSuite, 3); }
    const AEGP_MemorySuite1 &memory() { return get<AEGP_MemorySuite1>(kAEGPMemorySuite, 1); }
    const AEGP_UtilitySuite5 &utility() { return get<AEGP_UtilitySuite5>(kAEGPUtilitySuite, 11); }
    const AEGP_PFInterfaceSuite1 &effect_interface() {
        return get<AEGP_PFInterfaceSuite1>(kAEGPPFInterfaceSuite, 1);
    }

    AEGP_LayerH layer_h(LayerId id) { return host.refs.layer(host.project, id); }
    AEGP_CompH comp_h() { return host.refs.comp(host.project, comp); }
    AEGP_EffectRefH new_effect() {
        AEGP_EffectRefH effect = nullptr;
        EXPECT_EQ(effect_interface().AEGP_GetNewEffectForEffect(0, instance->effect_ref(), &effect),
                  0);
        return effect;
    }
    AEGP_StreamRefH new_stream(AEGP_EffectRefH effect, int param) {
        AEGP_StreamRefH stream = nullptr;
        EXPECT_EQ(streams().AEGP_GetNewEffectStreamByIndex(0, effect, param, &stream), 0);
        return stream;
    }

    /// Reads a UTF-16 handle as a plug-in would, and frees it.
    std::u16string take_text(AEGP_MemHandle handle) {
        void *data = nullptr;
        EXPECT_EQ(memory().AEGP_LockMemHandle(handle, &data), 0);
        const std::u16string text = static_cast<const char16_t *>(data);
        EXPECT_EQ(memory().AEGP_UnlockMemHandle(handle), 0);
        EXPECT_EQ(memory().AEGP_FreeMemHandle(handle), 0);
        return text;
    }
    /// Check names of all findings but known departures.
    std::vector<std::string> checks() const {
        std::vector<std::string> names;
        for (const Finding &finding : host.strict.violations()) names.push_back(finding.check);
        return names;
    }
};

}  // namespace stage

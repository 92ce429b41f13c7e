// The fake host with what panel commands use: all parameters, streams, looks, an instance record.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "model/record.h"
#include "params/params_setup.h"
#include "support/fake_host.h"
#include "support/fake_project.h"

/// Definitions as the host holds them after set-up, an applied effect with a new record.
class PanelTest : public testing::Test {
  protected:
    using Log = std::vector<std::string>;

    PanelTest() {
        current() = this;
        ks::params_setup(&host.in, &host.out);
        for (std::size_t i = 0; i < host.added.size(); ++i) {
            defs[i + 1] = host.added[i];
            defs[i + 1].uu.change_flags = 0;
        }
        for (std::size_t i = 0; i < defs.size(); ++i) params[i] = &defs[i];
        host.in.width = 1920;
        host.in.pixel_aspect_ratio = {1, 1};
        give_record(0, {1, 2, 3, 0, 0}, 3);
        fill_suites();
        host.calls.log.clear();
        host.calls.fallible = 0;
    }
    ~PanelTest() override { current() = nullptr; }

    void give_record(std::uint8_t state, std::array<std::int8_t, 5> order, std::int8_t count) {
        ks::InstanceRecord record{};
        ks::init_new_instance(record);
        record.state = state;
        std::copy(order.begin(), order.end(), record.scope_order);
        record.scope_count = count;
        host.in.sequence_data = host.out.sequence_data = host.make_handle(&record, sizeof record);
    }
    ks::InstanceRecord record() {
        ks::InstanceRecord copy;
        std::memcpy(&copy, host.bytes(host.out.sequence_data).data(), sizeof copy);
        return copy;
    }
    /// The valid entries, front first, as "5 1 2 3".
    std::string order() {
        const ks::InstanceRecord now = record();
        std::string text;
        for (int i = 0; i < ks::readable_scopes(now); ++i) {
            text += (i == 0 ? "" : " ") + std::to_string(now.scope_order[i]);
        }
        return text;
    }
    void check(int index, bool on) { defs[static_cast<std::size_t>(index)].u.bd.value = on; }
    PF_ParamDef &def(int index) { return defs[static_cast<std::size_t>(index)]; }

    void expect_nothing_left(const std::string &where = {}) {
        EXPECT_TRUE(streams.empty()) << where;
        EXPECT_TRUE(effects.empty()) << where;
        EXPECT_EQ(host.suites_held(), 0) << where;
        EXPECT_EQ(host.calls.open_locks(), 0) << where;
        EXPECT_EQ(checked_out, 0) << where;
        EXPECT_EQ(host.calls.misuse, Log{}) << where;
    }

    fake::FakeHost host;
    fake::FakeProject project{host};
    std::array<PF_ParamDef, 69> defs{};
    std::array<PF_ParamDef *, 70> params{};  ///< ends with a null pointer
    bool has_original = false;
    bool gives_effect = true;
    int checked_out = 0;
    std::map<std::intptr_t, PF_ParamIndex> streams;  ///< live ones, by handle
    std::set<std::intptr_t> effects;                 ///< live ones, by handle
    std::map<PF_ParamIndex, bool> hidden;
    std::map<PF_ParamIndex, PF_ParamDef> looks;  ///< what UpdateParamUI was last given

  private:
    AEGP_PFInterfaceSuite1 own_{};
    AEGP_EffectSuite3 effect_suite_{};
    AEGP_StreamSuite4 stream_suite_{};
    AEGP_DynamicStreamSuite4 dynamic_suite_{};
    PF_ParamUtilsSuite3 utils_suite_{};
    std::intptr_t next_ref_ = 1;
    PF_Pixel pixel_{};

    static PanelTest *&current() {
        static PanelTest *test = nullptr;
        return test;
    }
    static PF_Err step(const std::string &what) { return current()->host.calls.step(what); }
    static void blame(const std::string &what) { current()->host.calls.blame(what); }

    void fill_suites() {
        fill_references();
        fill_looks();
        own_.AEGP_GetEffectLayer =
            static_cast<const AEGP_PFInterfaceSuite1 *>(host.suites[{kAEGPPFInterfaceSuite, 1}])
                ->AEGP_GetEffectLayer;
        host.suites[{kAEGPPFInterfaceSuite, 1}] = &own_;
        host.suites[{kAEGPEffectSuite, kAEGPEffectSuiteVersion3}] = &effect_suite_;
        host.suites[{kAEGPStreamSuite, kAEGPStreamSuiteVersion4}] = &stream_suite_;
        host.suites[{kAEGPDynamicStreamSuite, kAEGPDynamicStreamSuiteVersion4}] = &dynamic_suite_;
        host.suites[{kPFParamUtilsSuite, kPFParamUtilsSuiteVersion3}] = &utils_suite_;
    }
    void fill_references() {
        own_.AEGP_GetNewEffectForEffect = [](AEGP_PluginID id, PF_ProgPtr effect,
                                             AEGP_EffectRefH *ref) {
            PanelTest &t = *current();
            const A_Err error = step("GetNewEffectForEffect");
            if (id != 0 || effect != t.host.in.effect_ref) blame("whose effect");
            if (error != 0 || !t.gives_effect) return error;
            t.effects.insert(t.next_ref_);
            *ref = reinterpret_cast<AEGP_EffectRefH>(t.next_ref_++);
            return error;
        };
        effect_suite_.AEGP_DisposeEffect = [](AEGP_EffectRefH ref) {
            PanelTest &t = *current();
            if (!t.streams.empty()) blame("effect before its streams");
            if (t.effects.erase(reinterpret_cast<std::intptr_t>(ref)) == 0) blame("no effect");
            return step("DisposeEffect");
        };
        stream_suite_.AEGP_GetNewEffectStreamByIndex = [](AEGP_PluginID id, AEGP_EffectRefH effect,
                                                          PF_ParamIndex index,
                                                          AEGP_StreamRefH *ref) {
            PanelTest &t = *current();
            const A_Err error = step(fake::text("stream", index));
            if (id != 0 || t.effects.count(reinterpret_cast<std::intptr_t>(effect)) == 0) {
                blame("whose stream");
            }
            if (error != 0) return error;
            t.streams[t.next_ref_] = index;
            *ref = reinterpret_cast<AEGP_StreamRefH>(t.next_ref_++);
            return error;
        };
        stream_suite_.AEGP_DisposeStream = [](AEGP_StreamRefH ref) {
            PanelTest &t = *current();
            const auto found = t.streams.find(reinterpret_cast<std::intptr_t>(ref));
            if (found == t.streams.end()) {
                blame("no stream");
                return PF_Err{0};
            }
            const PF_ParamIndex index = found->second;
            t.streams.erase(found);
            return step(fake::text("dispose stream", index));
        };
    }
    void fill_looks() {
        dynamic_suite_.AEGP_SetDynamicStreamFlag = [](AEGP_StreamRefH ref, AEGP_DynStreamFlags flag,
                                                      A_Boolean undoable, A_Boolean on) {
            PanelTest &t = *current();
            const auto found = t.streams.find(reinterpret_cast<std::intptr_t>(ref));
            if (found == t.streams.end() || flag != 2 || undoable != 0) {
                blame("SetDynamicStreamFlag arguments");
                return PF_Err{0};
            }
            const A_Err error = step(fake::text(on != 0 ? "hide" : "show", found->second));
            if (error == 0) t.hidden[found->second] = on != 0;
            return error;
        };
        utils_suite_.PF_UpdateParamUI = [](PF_ProgPtr effect, PF_ParamIndex index,
                                           const PF_ParamDef *look) {
            PanelTest &t = *current();
            const PF_Err error = step(fake::text("update", index));
            if (effect != t.host.in.effect_ref) blame("whose look");
            for (const PF_ParamDef &own : t.defs) {
                if (&own == look) blame("the definition itself instead of a copy");
            }
            if (error == 0) t.looks[index] = *look;
            return error;
        };
        host.in.inter.checkout_param = [](PF_ProgPtr, PF_ParamIndex index, A_long time, A_long lap,
                                          A_u_long scale, PF_ParamDef *to) {
            PanelTest &t = *current();
            const PF_Err error = step(fake::text("check out", index));
            if (time != -7 || lap != 0 || scale != 600) blame("check-out at another time");
            if (error != 0) return error;
            ++t.checked_out;
            if (t.has_original) to->u.ld.data = &t.pixel_;
            return error;
        };
        host.in.inter.checkin_param = [](PF_ProgPtr, PF_ParamDef *) {
            --current()->checked_out;
            return step("check in");
        };
    }
};

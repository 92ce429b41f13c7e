// What the tests of the entry point share: the edge, the smart-render records, the renderer's
// double.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "support/fake_host.h"
#include "support/fake_project.h"

extern "C" PF_Err EntryPointFunc(PF_Cmd cmd, PF_InData *in_data, PF_OutData *out_data,
                                 PF_ParamDef *params[], PF_LayerDef *output, void *extra);

/// What the stand-in for the frame's renderer does; reset by the fixture.
struct RenderDouble {
    std::function<PF_Err()> act;
    PF_EffectWorld *input = nullptr;
    PF_EffectWorld *original = nullptr;
    PF_EffectWorld *output = nullptr;
};
RenderDouble &render_double();

class EntryTest : public testing::Test {
  protected:
    using Log = std::vector<std::string>;

    EntryTest() {
        current() = this;
        render_double() = {};
        fill_pre_render();
        fill_smart_render();
    }

    PF_Err send(PF_Cmd command, void *extra = nullptr) {
        return EntryPointFunc(command, &host.in, &host.out, nullptr, nullptr, extra);
    }
    void give_sequence_data() {
        const char flat[8] = {0, 1, 2, 3, 0, 0, 3, 1};
        host.in.sequence_data = host.out.sequence_data = host.make_handle(flat, sizeof flat);
    }

    fake::FakeHost host;
    fake::FakeProject project{host};

    PF_PreRenderInput pre_input{};
    PF_PreRenderOutput pre_output{};
    PF_PreRenderCallbacks pre_callbacks{};
    PF_PreRenderExtra pre_extra{&pre_input, &pre_output, &pre_callbacks};
    std::vector<PF_RenderRequest> requests;  ///< as they reached checkout_layer
    PF_CheckoutResult input_result{};
    PF_CheckoutResult original_result{};

    PF_SmartRenderInput render_input{};
    PF_SmartRenderCallbacks callbacks{};
    PF_SmartRenderExtra render_extra{&render_input, &callbacks};
    PF_EffectWorld input_world{};
    PF_EffectWorld original_world{};
    PF_EffectWorld output_world{};
    PF_EffectWorld *input = &input_world;
    PF_EffectWorld *original = &original_world;
    PF_EffectWorld *output = &output_world;

  private:
    static EntryTest *&current() {
        static EntryTest *test = nullptr;
        return test;
    }
    void fill_pre_render() {
        pre_callbacks.checkout_layer = [](PF_ProgPtr, PF_ParamIndex index, A_long id,
                                          const PF_RenderRequest *request, A_long time, A_long step,
                                          A_u_long scale, PF_CheckoutResult *result) {
            EntryTest &test = *current();
            test.requests.push_back(*request);
            *result = index == 0 ? test.input_result : test.original_result;
            return test.host.calls.step("checkout_layer " + std::to_string(index) + " as " +
                                        std::to_string(id) + " at " + std::to_string(time) + "/" +
                                        std::to_string(step) + "/" + std::to_string(scale));
        };
    }
    void fill_smart_render() {
        output_world.height = 1080;
        callbacks.checkout_layer_pixels = [](PF_ProgPtr, A_long id, PF_EffectWorld **world) {
            EntryTest &test = *current();
            const PF_Err error = test.host.calls.step(fake::text("checkout_layer_pixels", id));
            if (error == 0) *world = id == 0 ? test.input : test.original;
            return error;
        };
        callbacks.checkout_output = [](PF_ProgPtr, PF_EffectWorld **world) {
            EntryTest &test = *current();
            const PF_Err error = test.host.calls.step("checkout_output");
            if (error == 0) *world = test.output;
            return error;
        };
        callbacks.checkin_layer_pixels = [](PF_ProgPtr, A_long id) {
            return current()->host.calls.step(fake::text("checkin_layer_pixels", id));
        };
        render_double().act = [this] { return host.calls.step("render"); };
    }
};

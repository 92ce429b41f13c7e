#include "stage/services/smart_render_callbacks.h"

#include <algorithm>
#include <string>

#include "hostapi/constants.h"
#include "stage/effect/plugin.h"
#include "stage/host/active_command.h"
#include "stage/host/call_table.h"
#include "stage/host/host.h"

namespace stage {
namespace {

SmartFrame *frame_of(HostCall &call, PF_Cmd wanted) {
    ActiveCommand *active = call.host().active;
    if (active == nullptr || active->frame == nullptr || active->cmd != wanted) {
        call.report("callback.outside", "a smart-render callback was used outside its command");
        return nullptr;
    }
    return active->frame;
}

std::string rect_text(const PF_LRect &rect) {
    return "[" + std::to_string(rect.left) + "," + std::to_string(rect.top) + " " +
           std::to_string(rect.right) + "," + std::to_string(rect.bottom) + "]";
}

PF_Err checkout_layer(HostCall &call, PF_ProgPtr, PF_ParamIndex index, A_long checkout_id,
                      const PF_RenderRequest &request, A_long, A_long, A_u_long,
                      PF_CheckoutResult &result) {
    SmartFrame *frame = frame_of(call, PF_Cmd_SMART_PRE_RENDER);
    if (frame == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
    const ActiveCommand &active = *call.host().active;
    if (index < 0 || index >= active.plugin->catalog.count() ||
        active.plugin->catalog.at(index).def.param_type != PF_Param_LAYER) {
        call.report("checkout.index", "parameter " + std::to_string(index) + " is no layer");
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    if (frame->layers.count(checkout_id) > 0) {
        call.report("checkout.id_twice",
                    "check-out id " + std::to_string(checkout_id) + " is taken");
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    if (checkout_id <= 0) {
        call.report("checkout.id_zero", "check-out id 0");
    }
    const bool own = index == 0;
    const SourceFacts &source = own ? frame->own : frame->original;
    LayerCheckout layer;
    layer.index = index;
    layer.rect = intersection(request.rect, source.rect);
    layer.world = own ? frame->input : frame->original_input;
    result = PF_CheckoutResult{};
    result.result_rect = layer.rect;
    result.max_result_rect = source.rect;
    result.par = source.par;
    result.solid = source.opaque ? 1 : 0;
    result.ref_width = source.full_width;
    result.ref_height = source.full_height;
    frame->layers[checkout_id] = layer;
    return PF_Err_NONE;
}
std::string describe_checkout(PF_ProgPtr, PF_ParamIndex index, A_long checkout_id,
                              const PF_RenderRequest *request, A_long, A_long, A_u_long,
                              PF_CheckoutResult *) {
    if (request == nullptr) return "";
    return "parameter " + std::to_string(index) + ", id " + std::to_string(checkout_id) + ", " +
           rect_text(request->rect);
}

PF_Err guid_mix_in(HostCall &, PF_ProgPtr, A_u_long, const void *) {
    return PF_Err_NONE;
}

/// Hands out null when it fails, whatever the reason.
PF_Err checkout_layer_pixels(HostCall &call, PF_ProgPtr, A_long checkout_id,
                             PF_EffectWorld *&pixels) {
    pixels = nullptr;
    if (call.must_fail()) return call.error();
    SmartFrame *frame = frame_of(call, PF_Cmd_SMART_RENDER);
    if (frame == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
    const auto found = frame->layers.find(checkout_id);
    if (found == frame->layers.end() || found->second.pixels_taken) {
        call.report("checkout.pixels", "pixels of id " + std::to_string(checkout_id) +
                                           " were not checked out before, or twice");
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    found->second.pixels_open = found->second.pixels_taken = true;
    frame->any_pixels = true;
    if (found->second.world != nullptr) pixels = &found->second.world->def;
    if (call.traced()) call.note(pixels != nullptr ? "0" : "0, null world");
    return PF_Err_NONE;
}
std::string describe_pixels(PF_ProgPtr, A_long checkout_id, PF_EffectWorld **) {
    return "id " + std::to_string(checkout_id);
}

PF_Err checkin_layer_pixels(HostCall &call, PF_ProgPtr, A_long checkout_id) {
    SmartFrame *frame = frame_of(call, PF_Cmd_SMART_RENDER);
    if (frame == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
    const auto found = frame->layers.find(checkout_id);
    if (found == frame->layers.end() || !found->second.pixels_open) {
        call.report("checkin.not_open",
                    "check-in of id " + std::to_string(checkout_id) + " without an open check-out");
    } else {
        found->second.pixels_open = false;
    }
    return PF_Err_NONE;
}
std::string describe_checkin(PF_ProgPtr, A_long checkout_id) {
    return "id " + std::to_string(checkout_id);
}

/// Hands out null when it fails, whatever the reason.
PF_Err checkout_output(HostCall &call, PF_ProgPtr, PF_EffectWorld *&output) {
    output = nullptr;
    SmartFrame *frame = frame_of(call, PF_Cmd_SMART_RENDER);
    if (call.must_fail()) {
        if (frame != nullptr) frame->output_failed = true;
        return call.error();
    }
    if (frame == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
    if (!frame->any_pixels) {
        call.report("checkout.order", "the output was checked out before any input");
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    if (frame->output != nullptr) output = &frame->output->def;
    if (call.traced()) call.note(output != nullptr ? "0" : "0, null world");
    return PF_Err_NONE;
}

constexpr auto pre_render_table() {
    CallTable<PF_PreRenderCallbacks, "pre_render"> table;
    KS_SERVE(checkout_layer, checkout_layer, describe_checkout);
    KS_SERVE(GuidMixInPtr, guid_mix_in);
    return table;
}

constexpr auto smart_render_table() {
    constexpr CallRules kAlwaysRuns{.fails = Fails::kAfter};
    CallTable<PF_SmartRenderCallbacks, "smart_render", kAlwaysRuns> table;
    KS_SERVE(checkout_layer_pixels, checkout_layer_pixels, describe_pixels);
    KS_SERVE(checkin_layer_pixels, checkin_layer_pixels, describe_checkin);
    KS_SERVE(checkout_output, checkout_output);
    return table;
}

}  // namespace

PF_PreRenderCallbacks pre_render_callbacks() {
    static constexpr auto kTable = pre_render_table();
    return kTable.get();
}

PF_SmartRenderCallbacks smart_render_callbacks() {
    static constexpr auto kTable = smart_render_table();
    return kTable.get();
}

bool is_empty(const PF_LRect &rect) {
    return rect.left >= rect.right || rect.top >= rect.bottom;
}

PF_LRect intersection(const PF_LRect &a, const PF_LRect &b) {
    const PF_LRect common{std::max(a.left, b.left), std::max(a.top, b.top),
                          std::min(a.right, b.right), std::min(a.bottom, b.bottom)};
    return is_empty(common) ? PF_LRect{} : common;
}

}  // namespace stage

#include "entry/smart_render.h"

#include "entry/rect_union.h"
#include "host/error_chain.h"
#include "hostapi/constants.h"
#include "model/param_table.h"
#include "render/pipeline.h"

namespace ks {
namespace {

// Check-out ids equal the parameters' indices. The host accepts 0.
constexpr A_long kInputId = kParamInput;
constexpr A_long kOriginalId = kParamOriginalSource;

/// Output rows, downsampled, from which on scopes are drawn.
constexpr A_long kLeastHeight = 75;

constexpr char kNoSequenceData[] = "Error: Sequence data has not been initialised";

/// Checks a layer's pixels in, once: by close(), or when a throw skips it.
class PixelCheckIn {
  public:
    PixelCheckIn(PF_InData *in_data, PF_SmartRenderCallbacks *callbacks, A_long id)
        : in_data_(in_data), callbacks_(callbacks), id_(id) {}
    ~PixelCheckIn() {
        if (open_) close();
    }
    PixelCheckIn(const PixelCheckIn &) = delete;
    PixelCheckIn &operator=(const PixelCheckIn &) = delete;

    PF_Err close() {
        open_ = false;
        return callbacks_->checkin_layer_pixels(in_data_->effect_ref, id_);
    }

  private:
    PF_InData *in_data_;
    PF_SmartRenderCallbacks *callbacks_;
    A_long id_;
    bool open_ = true;
};

PF_Err check_out_layer(PF_InData *in_data, PF_PreRenderExtra *extra, A_long index,
                       const PF_RenderRequest &request, PF_CheckoutResult &result) {
    return extra->cb->checkout_layer(in_data->effect_ref, index, index, &request,
                                     in_data->current_time, in_data->time_step, in_data->time_scale,
                                     &result);
}

PF_Err pass_through(PF_InData *in_data, PF_EffectWorld *input, PF_EffectWorld *output) {
    return in_data->utils->copy(in_data->effect_ref, input, output, nullptr, nullptr);
}

PF_Err clear(PF_InData *in_data, PF_EffectWorld *output) {
    return in_data->utils->fill(in_data->effect_ref, nullptr, nullptr, output);
}

PF_Err render_with_original(PF_InData *in_data, PF_OutData *out_data,
                            PF_SmartRenderCallbacks *callbacks, PF_EffectWorld *input,
                            PF_EffectWorld *output) {
    // Checked in even when the check-out fails: the host tolerates it and reclaims what is left.
    PixelCheckIn original_pixels(in_data, callbacks, kOriginalId);
    PF_EffectWorld *original = nullptr;
    ErrorChain chain;
    chain.step([&] {
        return callbacks->checkout_layer_pixels(in_data->effect_ref, kOriginalId, &original);
    });
    chain.step([&] { return in_data->inter.abort(in_data->effect_ref); });
    chain.step([&] { return render_frame(in_data, out_data, input, original, output); });
    chain.always([&] { return original_pixels.close(); });
    return chain.result();
}

PF_Err draw(PF_InData *in_data, PF_OutData *out_data, PF_SmartRenderCallbacks *callbacks,
            PF_EffectWorld *input, PF_EffectWorld *output) {
    if (output == nullptr) return PF_Err_NONE;
    if (input == nullptr) return clear(in_data, output);
    if (output->height < kLeastHeight) return pass_through(in_data, input, output);
    return render_with_original(in_data, out_data, callbacks, input, output);
}

}  // namespace

PF_Err smart_pre_render(PF_InData *in_data, PF_PreRenderExtra *extra) {
    const PF_RenderRequest request = extra->input->output_request;
    PF_CheckoutResult input{};
    const PF_Err error = check_out_layer(in_data, extra, kInputId, request, input);
    // Both are reported after a failed check-out too.
    unite(extra->output->result_rect, input.result_rect);
    unite(extra->output->max_result_rect, input.max_result_rect);
    extra->output->solid = 1;
    if (error != PF_Err_NONE) return error;
    PF_CheckoutResult original{};  // may lie anywhere: it has no say in the result
    return check_out_layer(in_data, extra, kOriginalId, request, original);
}

PF_Err smart_render(PF_InData *in_data, PF_OutData *out_data, PF_SmartRenderExtra *extra) {
    // The output record's handle, deliberately: it is the one that the frame will read and write.
    if (out_data->sequence_data == nullptr) {
        in_data->utils->ansi.strcpy(out_data->return_msg, kNoSequenceData);
        out_data->out_flags |= PF_OutFlag_DISPLAY_ERROR_MESSAGE;
        return PF_Err_INTERNAL_STRUCT_DAMAGED;
    }
    PF_EffectWorld *input = nullptr;
    PF_EffectWorld *output = nullptr;
    const PF_Err input_error =
        extra->cb->checkout_layer_pixels(in_data->effect_ref, kInputId, &input);
    if (input_error != PF_Err_NONE) return input_error;
    // Without an output the input stays checked out; the host reclaims it.
    const PF_Err output_error = extra->cb->checkout_output(in_data->effect_ref, &output);
    if (output_error != PF_Err_NONE) return output_error;

    PixelCheckIn input_pixels(in_data, extra->cb, kInputId);
    ErrorChain chain;
    chain.step([&] { return draw(in_data, out_data, extra->cb, input, output); });
    chain.always([&] { return input_pixels.close(); });
    return chain.result();
}

}  // namespace ks

#include "render/corrected_world.h"

#include "host/host_world.h"
#include "host/scoped.h"
#include "model/record.h"
#include "render/conversion.h"

namespace ks {

static_assert(kRampEntries == kRampEntries && kStepEntries == kStepEntries);

namespace {

void update_gamma_tables(InstanceRecord &record, double gamma, PowFunction power) {
    if (static_cast<double>(record.ramp_key) == gamma) return;
    record.ramp_key = static_cast<float>(gamma);
    build_gamma_tables(record.ramp_table(), gamma, power);
}

bool changes_nothing(const RenderSettings &settings) {
    return settings.primary_view == static_cast<std::int32_t>(View::kRgb) &&
           settings.monitor_gain == 1.0 && 1.0 / settings.monitor_gamma == 1.0;
}

PF_Err fill_corrected(const Frame &frame, const RenderSettings &settings,
                      PF_EffectWorld *corrected) {
    PF_InData *const in_data = frame.in_data;
    LockedHandle<InstanceRecord> instance(frame.suites.handle(), frame.out_data->sequence_data);
    InstanceRecord *const record = instance.get();
    if (record == nullptr) return PF_Err_INTERNAL_STRUCT_DAMAGED;
    update_gamma_tables(*record, settings.monitor_gamma, in_data->utils->ansi.pow);
    if (changes_nothing(settings)) {
        return in_data->utils->copy(in_data->effect_ref, frame.input, corrected, nullptr, nullptr);
    }
    ConversionRecord conversion =
        make_conversion_record(frame, settings, kCurveOnLuma, settings.primary_view);
    conversion.low_table = record->ramp_table();
    conversion.high_table = record->step_table();
    return run_conversion(frame.suites, in_data, frame.input, nullptr, conversion, corrected);
}

}  // namespace

ConversionRecord make_conversion_record(const Frame &frame, const RenderSettings &settings,
                                        std::uint8_t apply_curve, std::int32_t view_mode) {
    ConversionRecord record{};
    record.apply_curve = apply_curve;
    record.view_mode = view_mode;
    record.inverse_gamma = static_cast<float>(1.0 / settings.monitor_gamma);
    record.gain = static_cast<float>(settings.monitor_gain);
    record.pixel_format = frame.format;
    record.luma_math = settings.luma_math;
    return record;
}

void make_corrected_world(ErrorChain &chain, const Frame &frame, const RenderSettings &settings,
                          OwnedWorld &corrected) {
    chain.step([&] {
        // A pass over an input smaller than the output leaves the rest untouched: start cleared.
        const bool clear =
            frame.input->width < frame.output->width || frame.input->height < frame.output->height;
        return corrected.create(frame.worlds, frame.in_data->effect_ref, size_of(*frame.output),
                                clear, frame.format);
    });
    chain.step([&] { return fill_corrected(frame, settings, corrected.get()); });
}

}  // namespace ks

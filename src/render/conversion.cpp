#include "render/conversion.h"

#include "hostapi/constants.h"
#include "render/view_callbacks.h"

namespace ks {

PF_Err run_conversion(SuiteCache &suites, PF_InData *in_data, PF_EffectWorld *source,
                      const PF_Rect *area, ConversionRecord &record, PF_EffectWorld *destination) {
    const PF_Err aborted = in_data->inter.abort(in_data->effect_ref);
    if (aborted != PF_Err_NONE) return aborted;
    prepare_record(record);
    const auto iterate = [&](auto &suite, auto callback) {
        return suite.iterate(in_data, 0, destination->height, source, area, &record, callback,
                             destination);
    };
    switch (record.pixel_format) {
        case kFormat8:
            return iterate(suites.iterate8(), view_callback_8(record.view_mode));
        case kFormat16:
            return iterate(suites.iterate16(), view_callback_16(record.view_mode));
        case kFormatF:
            return iterate(suites.iterate_float(), view_callback_float(record.view_mode));
        default:
            return PF_Err_BAD_CALLBACK_PARAM;
    }
}

}  // namespace ks

#include "instance/composition_setup.h"

#include "host/error_chain.h"
#include "host/messages.h"
#include "instance/backing_solid.h"
#include "instance/layer_query.h"

namespace ks {
namespace {

constexpr char kDimensionWarning[] =
    "Warning: You have applied Kestrel Scopes to a source layer with different dimensions to the "
    "comp.\n\nIt is recommended that you apply Kestrel Scopes to an adjustment layer at the top of "
    "the stack";
static_assert(sizeof kDimensionWarning <= PF_MAX_EFFECT_MSG_LEN + 1);

PF_Err warn_about_dimensions(SuiteCache &suites, PF_InData *in_data, PF_OutData *out_data,
                             AEGP_LayerH layer, AEGP_CompH comp) {
    ItemSize comp_size;
    std::optional<ItemSize> source_size;
    ErrorChain chain;
    chain.step([&] { return read_comp_size(suites, comp, comp_size); });
    chain.step([&] { return read_source_size(suites, layer, source_size); });
    if (chain.ok() && source_size && *source_size != comp_size) {
        show_error_message(in_data, out_data, kDimensionWarning);
    }
    return chain.result();
}

PF_Err set_up_monitoring_layer(SuiteCache &suites, AEGP_LayerH layer, AEGP_CompH comp) {
    constexpr A_Boolean on = 1;
    ErrorChain chain;
    chain.step(
        [&] { return suites.layer().AEGP_SetLayerFlag(layer, AEGP_LayerFlag_GUIDE_LAYER, on); });
    chain.step([&] { return ensure_backing(suites, layer, comp); });
    return chain.result();
}

}  // namespace

PF_Err set_up_composition(SuiteCache &suites, PF_InData *in_data, PF_OutData *out_data,
                          AEGP_LayerH layer, bool adjustment) {
    AEGP_CompH comp = nullptr;
    const A_Err error = suites.layer().AEGP_GetLayerParentComp(layer, &comp);
    if (error != A_Err_NONE || comp == nullptr) return error;
    return adjustment ? set_up_monitoring_layer(suites, layer, comp)
                      : warn_about_dimensions(suites, in_data, out_data, layer, comp);
}

}  // namespace ks

#include "instance/backing_solid.h"

#include "host/error_chain.h"
#include "instance/layer_query.h"

namespace ks {
namespace {

constexpr A_UTF16Char kBackingName[] = u"KSTR_Backing";

enum class Backing { none, users, ours };

struct Stack {
    AEGP_CompH comp;
    ItemSize size;
    A_long layers;        ///< number of layers
    A_long effect_index;  ///< of the effect's layer, 0 at the top
};

struct Found {
    Backing kind = Backing::none;
    AEGP_LayerH layer = nullptr;
    A_long index = 0;
};

A_Err is_full_frame(SuiteCache &suites, AEGP_LayerH layer, ItemSize comp_size, bool &yes) {
    constexpr AEGP_LayerFlags unfit =
        AEGP_LayerFlag_GUIDE_LAYER | AEGP_LayerFlag_ADJUSTMENT_LAYER | AEGP_LayerFlag_NULL_LAYER;
    AEGP_LayerFlags flags = AEGP_LayerFlag_NONE;
    std::optional<ItemSize> source;
    ErrorChain chain;
    chain.step([&] { return suites.layer().AEGP_GetLayerFlags(layer, &flags); });
    yes = false;
    if ((flags & AEGP_LayerFlag_VIDEO_ACTIVE) == 0 || (flags & unfit) != 0) return chain.result();
    chain.step([&] { return read_source_size(suites, layer, source); });
    yes = source && source->width >= comp_size.width && source->height >= comp_size.height;
    return chain.result();
}

/// Examines the layer at `index`; `found` changes only when it can serve.
A_Err examine(SuiteCache &suites, const Stack &stack, A_long index, Found &found) {
    AEGP_LayerH layer = nullptr;
    bool ours = false;
    bool full_frame = false;
    ErrorChain chain;
    chain.step([&] { return suites.layer().AEGP_GetCompLayerByIndex(stack.comp, index, &layer); });
    chain.step([&] { return layer_goes_by(suites, layer, kBackingName, ours); });
    if (!ours && index > stack.effect_index) {
        chain.step([&] { return is_full_frame(suites, layer, stack.size, full_frame); });
    }
    if (chain.ok() && ours) found = {Backing::ours, layer, index};
    if (chain.ok() && full_frame) found = {Backing::users, layer, index};
    return chain.result();
}

/// Searches from beneath the effect's layer downward, then the layers above it.
A_Err find_backing(SuiteCache &suites, const Stack &stack, Found &found) {
    ErrorChain chain;
    auto search = [&](A_long first, A_long end) {
        for (A_long index = first; index < end && found.kind == Backing::none && chain.ok();
             ++index) {
            chain.step([&] { return examine(suites, stack, index, found); });
        }
    };
    search(stack.effect_index + 1, stack.layers);
    search(0, stack.effect_index);
    return chain.result();
}

A_Err make_solid(SuiteCache &suites, const Stack &stack, AEGP_LayerH &solid) {
    constexpr AEGP_ColorVal opaque_black{1.0, 0.0, 0.0, 0.0};
    AEGP_ItemH comp_item = nullptr;
    A_Time comp_length{};
    ErrorChain chain;
    chain.step([&] { return suites.comp().AEGP_GetItemFromComp(stack.comp, &comp_item); });
    chain.step([&] { return suites.item().AEGP_GetItemDuration(comp_item, &comp_length); });
    chain.step([&] {
        return suites.comp().AEGP_CreateSolidInComp(kBackingName, stack.size.width,
                                                    stack.size.height, &opaque_black, stack.comp,
                                                    &comp_length, &solid);
    });
    return chain.result();
}

A_Err move_to_bottom(SuiteCache &suites, AEGP_CompH comp, AEGP_LayerH layer) {
    A_long layers = 0;
    ErrorChain chain;
    chain.step([&] { return suites.layer().AEGP_GetCompNumLayers(comp, &layers); });
    chain.step([&] { return suites.layer().AEGP_ReorderLayer(layer, layers - 1); });
    return chain.result();
}

A_Err read_stack(SuiteCache &suites, AEGP_LayerH effect_layer, Stack &stack) {
    ErrorChain chain;
    chain.step([&] { return suites.layer().AEGP_GetCompNumLayers(stack.comp, &stack.layers); });
    chain.step(
        [&] { return suites.layer().AEGP_GetLayerIndex(effect_layer, &stack.effect_index); });
    chain.step([&] { return read_comp_size(suites, stack.comp, stack.size); });
    return chain.result();
}

}  // namespace

PF_Err ensure_backing(SuiteCache &suites, AEGP_LayerH effect_layer, AEGP_CompH comp) {
    constexpr A_Boolean on = 1;
    Stack stack{comp, {}, 0, 0};
    Found found;
    ErrorChain chain;
    chain.step([&] { return read_stack(suites, effect_layer, stack); });
    chain.step([&] { return find_backing(suites, stack, found); });
    if (found.kind == Backing::users) return chain.result();
    const bool in_place = found.kind == Backing::ours && found.index > stack.effect_index;
    // From the new solid on, its handle is the only layer handle that is known to be alive.
    if (found.kind == Backing::none) {
        chain.step([&] { return make_solid(suites, stack, found.layer); });
    }
    if (!in_place) chain.step([&] { return move_to_bottom(suites, comp, found.layer); });
    chain.step(
        [&] { return suites.layer().AEGP_SetLayerFlag(found.layer, AEGP_LayerFlag_LOCKED, on); });
    return chain.result();
}

}  // namespace ks

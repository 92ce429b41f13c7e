#include "instance/layer_query.h"

#include "host/error_chain.h"
#include "host/scoped.h"

namespace ks {
namespace {

enum class Match { empty, different, same };

/// Compares two zero-terminated texts, reading neither past its end nor past the first difference.
Match compare(const A_UTF16Char *text, const A_UTF16Char *name) {
    if (*text == 0) return Match::empty;
    while (*text != 0 && *text == *name) {
        ++text;
        ++name;
    }
    return *text == *name ? Match::same : Match::different;
}

A_Err compare_handle(AEGP_MemorySuite1 &memory, AEGP_MemHandle handle, const A_UTF16Char *name,
                     Match &match) {
    match = Match::empty;
    if (handle == nullptr) return A_Err_NONE;
    void *text = nullptr;
    const A_Err error = memory.AEGP_LockMemHandle(handle, &text);
    if (error != A_Err_NONE) return error;
    if (text != nullptr) match = compare(static_cast<const A_UTF16Char *>(text), name);
    return memory.AEGP_UnlockMemHandle(handle);
}

}  // namespace

A_Err read_comp_size(SuiteCache &suites, AEGP_CompH comp, ItemSize &size) {
    AEGP_ItemH item = nullptr;
    ErrorChain chain;
    chain.step([&] { return suites.comp().AEGP_GetItemFromComp(comp, &item); });
    chain.step(
        [&] { return suites.item().AEGP_GetItemDimensions(item, &size.width, &size.height); });
    return chain.result();
}

A_Err read_source_size(SuiteCache &suites, AEGP_LayerH layer, std::optional<ItemSize> &size) {
    size.reset();
    AEGP_ItemH item = nullptr;
    ErrorChain chain;
    chain.step([&] { return suites.layer().AEGP_GetLayerSourceItem(layer, &item); });
    // Dimensions asked of no item would be an error and would refuse the effect to text layers.
    if (!chain.ok() || item == nullptr) return chain.result();
    ItemSize read;
    chain.step(
        [&] { return suites.item().AEGP_GetItemDimensions(item, &read.width, &read.height); });
    if (chain.ok()) size = read;
    return chain.result();
}

A_Err layer_goes_by(SuiteCache &suites, AEGP_LayerH layer, const A_UTF16Char *name, bool &yes) {
    constexpr AEGP_PluginID plugin_id = 0;
    AEGP_MemorySuite1 &memory = suites.memory();
    OwnedMemHandle own_name(memory);
    OwnedMemHandle source_name(memory);
    Match match = Match::empty;
    ErrorChain chain;
    chain.step([&] {
        return suites.layer().AEGP_GetLayerName(plugin_id, layer, own_name.receive(),
                                                source_name.receive());
    });
    chain.step([&] { return compare_handle(memory, own_name.get(), name, match); });
    if (match == Match::empty) {
        chain.step([&] { return compare_handle(memory, source_name.get(), name, match); });
    }
    chain.always([&] { return own_name.close(); });
    chain.always([&] { return source_name.close(); });
    yes = match == Match::same;
    return chain.result();
}

}  // namespace ks

// What the host's callbacks need to know of the command under way.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "hostapi/in_out_data.h"
#include "hostapi/smart_render.h"
#include "stage/effect/param_catalog.h"
#include "stage/ledger/world_store.h"

namespace stage {

class EffectInstance;
struct Plugin;

/// A layer that a pre-render checked out.
struct LayerCheckout {
    PF_ParamIndex index = 0;
    PF_LRect rect{};            ///< result rectangle, layer pixels at the current resolution
    World *world = nullptr;     ///< null for "none", or where the test wants null
    bool pixels_open = false;   ///< between checkout_layer_pixels and its check-in
    bool pixels_taken = false;  ///< checked out at all: once per id is allowed
};

/// What a layer check-out tells of its layer.
struct SourceFacts {
    PF_LRect rect{};                         ///< layer pixels at the current resolution
    PF_RationalScale par{1, 1};              ///< of the layer's own source
    A_long full_width = 0, full_height = 0;  ///< of the source, full resolution
    bool opaque = false;
};

/// State of one smart render, shared by its two commands.
struct SmartFrame {
    std::map<A_long, LayerCheckout> layers;  ///< by check-out id
    SourceFacts own;                         ///< the effect's own layer
    SourceFacts original;  ///< the layer parameter's layer; an empty rectangle when none
    PF_LRect request{};
    PF_LRect result{};
    World *input = nullptr;
    World *original_input = nullptr;
    World *output = nullptr;
    bool any_pixels = false;  ///< checkout_output may come only after one
    bool output_failed = false;
};

/// One command of the plug-in, from before its call until after its checks.
struct ActiveCommand {
    PF_Cmd cmd = 0;
    Plugin *plugin = nullptr;
    EffectInstance *instance = nullptr;  ///< null in global commands
    PF_InData *in_data = nullptr;
    SmartFrame *frame = nullptr;              ///< smart-render pair only
    PointScale scale;                         ///< points at check-out
    std::vector<PF_ParamDef *> params_array;  ///< addresses inside the params array, by index
    std::multiset<PF_ParamDef *> param_checkouts;
    std::int64_t abort_calls = 0;
    int undo_groups = 0;  ///< open before the command
};

/// "PF_Cmd_SMART_RENDER"
const char *command_name(PF_Cmd cmd);

}  // namespace stage

// The project side of the fake host: the effect's layer, its composition, and scripts. What set-up
// does to the layers around it is tested on the stage; here are answers that no project gives.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "support/fake_host.h"

namespace fake {

struct Item {
    A_long width = 0;
    A_long height = 0;
};

struct Layer {
    AEGP_LayerFlags flags = AEGP_LayerFlag_VIDEO_ACTIVE;
    Item *source = nullptr;  ///< none for text, shapes, cameras
};

/// Serves the AEGP suites for one layer in one composition.
class FakeProject {
  public:
    explicit FakeProject(FakeHost &host) : host_(host) {
        current() = this;
        fill_layer_suite();
        fill_other_suites();
        host.suites[{kAEGPPFInterfaceSuite, 1}] = &pf_interface;
        host.suites[{kAEGPLayerSuite, kAEGPLayerSuiteVersion7}] = &layer_suite;
        host.suites[{kAEGPCompSuite, kAEGPCompSuiteVersion7}] = &comp_suite;
        host.suites[{kAEGPItemSuite, kAEGPItemSuiteVersion8}] = &item_suite;
        host.suites[{kAEGPMemorySuite, kAEGPMemorySuiteVersion1}] = &memory_suite;
        host.suites[{kAEGPUtilitySuite, kAEGPUtilitySuiteVersion5}] = &utility_suite;
    }
    ~FakeProject() { current() = nullptr; }
    FakeProject(const FakeProject &) = delete;
    FakeProject &operator=(const FakeProject &) = delete;

    static FakeProject *&current() {
        static FakeProject *project = nullptr;
        return project;
    }

    Item comp{1920, 1080};
    bool has_comp = true;
    bool has_effect_layer = true;
    Layer *effect_layer = nullptr;
    std::vector<std::string> scripts;
    bool script_gives_result = true;

    /// A layer with a source of the given size.
    Layer &add(AEGP_LayerFlags flags, A_long width, A_long height) {
        layers_.push_back({});
        Layer &layer = layers_.back();
        layer.flags = flags;
        items_.push_back({width, height});
        layer.source = &items_.back();
        return layer;
    }

  private:
    AEGP_PFInterfaceSuite1 pf_interface{};
    AEGP_LayerSuite7 layer_suite{};
    AEGP_CompSuite7 comp_suite{};
    AEGP_ItemSuite8 item_suite{};
    AEGP_MemorySuite1 memory_suite{};
    AEGP_UtilitySuite5 utility_suite{};
    FakeHost &host_;
    std::deque<Layer> layers_;
    std::deque<Item> items_;

    static A_Err step(const std::string &what) { return current()->host_.calls.step(what); }

    static AEGP_LayerH handle_of(Layer *layer) { return reinterpret_cast<AEGP_LayerH>(layer); }
    Layer *layer_of(AEGP_LayerH handle) {
        if (handle != handle_of(effect_layer)) host_.calls.blame("not the effect's layer");
        return effect_layer;
    }
    AEGP_CompH comp_handle() { return reinterpret_cast<AEGP_CompH>(&comp); }
    AEGP_MemHandle text_handle(const std::u16string &name) {
        const std::size_t size = (name.size() + 1) * sizeof(char16_t);
        Block *block = host_.calls.new_block(size);
        std::memcpy(block->data, name.c_str(), size);
        return reinterpret_cast<AEGP_MemHandle>(block);
    }

    void fill_layer_suite() {
        pf_interface.AEGP_GetEffectLayer = [](PF_ProgPtr, AEGP_LayerH *layer) {
            FakeProject &p = *current();
            const A_Err error = step("GetEffectLayer");
            if (error == 0 && p.has_effect_layer) *layer = handle_of(p.effect_layer);
            return error;
        };
        layer_suite.AEGP_GetLayerFlags = [](AEGP_LayerH layer, AEGP_LayerFlags *flags) {
            const A_Err error = step("GetLayerFlags");
            if (error == 0) *flags = current()->layer_of(layer)->flags;
            return error;
        };
        layer_suite.AEGP_SetLayerFlag = [](AEGP_LayerH layer, AEGP_LayerFlags flag, A_Boolean on) {
            const A_Err error = step(text("SetLayerFlag", flag) + (on != 0 ? " on" : " off"));
            if (error == 0) current()->layer_of(layer)->flags |= flag;
            return error;
        };
        layer_suite.AEGP_GetLayerParentComp = [](AEGP_LayerH, AEGP_CompH *comp_out) {
            const A_Err error = step("GetLayerParentComp");
            if (error == 0 && current()->has_comp) *comp_out = current()->comp_handle();
            return error;
        };
        layer_suite.AEGP_GetLayerSourceItem = [](AEGP_LayerH layer, AEGP_ItemH *item) {
            const A_Err error = step("GetLayerSourceItem");
            if (error == 0) {
                *item = reinterpret_cast<AEGP_ItemH>(current()->layer_of(layer)->source);
            }
            return error;
        };
    }

    void fill_other_suites() {
        comp_suite.AEGP_GetItemFromComp = [](AEGP_CompH, AEGP_ItemH *item) {
            const A_Err error = step("GetItemFromComp");
            if (error == 0) *item = reinterpret_cast<AEGP_ItemH>(&current()->comp);
            return error;
        };
        item_suite.AEGP_GetItemDimensions = [](AEGP_ItemH item, A_long *width, A_long *height) {
            const A_Err error = step("GetItemDimensions");
            if (error != 0) return error;
            if (item == nullptr) return A_Err_PARAMETER;
            *width = reinterpret_cast<Item *>(item)->width;
            *height = reinterpret_cast<Item *>(item)->height;
            return error;
        };
        memory_suite.AEGP_LockMemHandle = [](AEGP_MemHandle handle, void **data) {
            const A_Err error = step("LockMemHandle");
            Block *block = current()->host_.calls.block_of(handle, "mem lock");
            if (error == 0) ++block->locks;
            if (error == 0) *data = block->data;
            return error;
        };
        memory_suite.AEGP_UnlockMemHandle = [](AEGP_MemHandle handle) {
            --current()->host_.calls.block_of(handle, "mem unlock")->locks;
            return step("UnlockMemHandle");
        };
        memory_suite.AEGP_FreeMemHandle = [](AEGP_MemHandle handle) {
            current()->host_.calls.block_of(handle, "mem free")->live = false;
            return step("FreeMemHandle");
        };
        utility_suite.AEGP_ExecuteScript = [](AEGP_PluginID id, const A_char *script,
                                              A_Boolean platform, AEGP_MemHandle *result,
                                              AEGP_MemHandle *error_text) {
            FakeProject &p = *current();
            p.scripts.push_back(script);
            if (id != 0 || platform != 0 || error_text != nullptr) {
                p.host_.calls.blame("ExecuteScript arguments");
            }
            if (p.script_gives_result) *result = p.text_handle(u"undefined");
            return step("ExecuteScript");
        };
    }
};

}  // namespace fake

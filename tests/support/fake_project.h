// The project side of the fake host: one composition with layers, names, sizes and scripts.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "support/fake_host.h"

namespace fake {

struct Item {
    A_long width = 0;
    A_long height = 0;
    A_Time length{0, 1};
};

struct Layer {
    AEGP_LayerFlags flags = AEGP_LayerFlag_VIDEO_ACTIVE;
    Item *source = nullptr;  ///< none for text, shapes, cameras
    std::u16string name;
    std::u16string source_name;
};

/// A layer handle as given out: dead once the number of layers has changed.
struct Ticket {
    Layer *layer;
    int generation;
};

/// Serves the AEGP suites for one composition; layer 0 is at the top.
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

    Item comp{1920, 1080, {250, 25}};
    bool has_comp = true;
    bool has_effect_layer = true;
    std::vector<Layer *> stack;
    Layer *effect_layer = nullptr;
    std::vector<std::string> scripts;
    bool script_gives_result = true;
    std::vector<std::u16string> solid_names;
    AEGP_ColorVal solid_color{};
    A_Time solid_length{};

    /// Adds a layer at the bottom, with a source of the given size unless the width is 0.
    Layer &add(AEGP_LayerFlags flags, A_long width, A_long height, std::u16string name = {}) {
        layers_.push_back({});
        Layer &layer = layers_.back();
        layer.flags = flags;
        layer.name = std::move(name);
        if (width > 0) {
            items_.push_back({width, height, {0, 1}});
            layer.source = &items_.back();
        }
        stack.push_back(&layer);
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
    std::deque<Ticket> tickets_;
    int generation_ = 0;

    static A_Err step(const std::string &what) { return current()->host_.calls.step(what); }

    AEGP_LayerH ticket(Layer *layer) {
        tickets_.push_back({layer, generation_});
        return reinterpret_cast<AEGP_LayerH>(&tickets_.back());
    }
    Layer *layer_of(AEGP_LayerH handle) {
        for (const Ticket &ticket : tickets_) {
            if (static_cast<const void *>(&ticket) != static_cast<const void *>(handle)) continue;
            if (ticket.generation != generation_) host_.calls.blame("stale layer handle");
            return ticket.layer;
        }
        host_.calls.blame("no layer handle");
        return nullptr;
    }
    A_long index_of(const Layer *layer) const {
        for (std::size_t i = 0; i < stack.size(); ++i) {
            if (stack[i] == layer) return static_cast<A_long>(i);
        }
        return -1;
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
            if (error == 0 && p.has_effect_layer) *layer = p.ticket(p.effect_layer);
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
        layer_suite.AEGP_GetCompNumLayers = [](AEGP_CompH, A_long *count) {
            const A_Err error = step("GetCompNumLayers");
            if (error == 0) *count = static_cast<A_long>(current()->stack.size());
            return error;
        };
        layer_suite.AEGP_GetCompLayerByIndex = [](AEGP_CompH, A_long index, AEGP_LayerH *layer) {
            const A_Err error = step(text("GetCompLayerByIndex", index));
            if (error == 0) {
                *layer = current()->ticket(current()->stack.at(static_cast<std::size_t>(index)));
            }
            return error;
        };
        layer_suite.AEGP_GetLayerIndex = [](AEGP_LayerH layer, A_long *index) {
            const A_Err error = step("GetLayerIndex");
            if (error == 0) *index = current()->index_of(current()->layer_of(layer));
            return error;
        };
        layer_suite.AEGP_GetLayerName = [](AEGP_PluginID, AEGP_LayerH layer, AEGP_MemHandle *name,
                                           AEGP_MemHandle *source_name) {
            FakeProject &p = *current();
            const A_Err error = step("GetLayerName");
            if (error != 0) return error;
            *name = p.text_handle(p.layer_of(layer)->name);
            *source_name = p.text_handle(p.layer_of(layer)->source_name);
            return error;
        };
        layer_suite.AEGP_ReorderLayer = [](AEGP_LayerH layer, A_long index) {
            FakeProject &p = *current();
            const A_Err error = step(text("ReorderLayer", index));
            if (error != 0) return error;
            Layer *moved = p.layer_of(layer);
            p.stack.erase(p.stack.begin() + p.index_of(moved));
            p.stack.insert(p.stack.begin() + index, moved);
            return error;
        };
    }

    void fill_other_suites() {
        comp_suite.AEGP_GetItemFromComp = [](AEGP_CompH, AEGP_ItemH *item) {
            const A_Err error = step("GetItemFromComp");
            if (error == 0) *item = reinterpret_cast<AEGP_ItemH>(&current()->comp);
            return error;
        };
        comp_suite.AEGP_CreateSolidInComp = [](const A_UTF16Char *name, A_long width, A_long height,
                                               const AEGP_ColorVal *color, AEGP_CompH,
                                               const A_Time *length, AEGP_LayerH *solid) {
            FakeProject &p = *current();
            const A_Err error = step("CreateSolidInComp");
            if (error != 0) return error;
            p.solid_names.push_back(name);
            p.solid_color = *color;
            p.solid_length = *length;
            Layer &layer = p.add(AEGP_LayerFlag_VIDEO_ACTIVE, width, height);
            layer.source_name = name;
            p.stack.pop_back();
            p.stack.insert(p.stack.begin(), &layer);
            ++p.generation_;
            *solid = p.ticket(&layer);
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
        item_suite.AEGP_GetItemDuration = [](AEGP_ItemH item, A_Time *length) {
            const A_Err error = step("GetItemDuration");
            if (error == 0) *length = reinterpret_cast<Item *>(item)->length;
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

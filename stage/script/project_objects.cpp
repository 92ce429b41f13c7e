// The objects that scripts see. Engine errors unwind by longjmp: callbacks keep no C++ objects.
#include <cmath>
#include <cstdlib>
#include <string_view>

#include "stage/script/script_run.h"
#include "stage/script/script_text.h"

namespace stage {
namespace {

/// Property that holds the id of the item or layer behind an object; scripts cannot name it.
constexpr const char *kId = DUK_HIDDEN_SYMBOL("id");
/// Property that tells the kind of an object, so that no comp passes for a layer.
constexpr const char *kKind = DUK_HIDDEN_SYMBOL("kind");

constexpr int kCompObject = 1;
constexpr int kLayerObject = 2;
constexpr int kPositionObject = 3;

[[noreturn]] void raise(duk_context *engine, const char *message) {
    (void)duk_error(engine, DUK_ERR_ERROR, "%s", message);
    std::abort();  // duk_error does not return; the compiler is not told everywhere
}

/// Ends a script that has run for too long.
void check_time(duk_context *engine) {
    if (run_of(engine).late()) raise(engine, "the script takes too long");
}

/// The id behind `this`, which must be an object of `kind`.
int this_id(duk_context *engine, int kind) {
    check_time(engine);
    duk_push_this(engine);
    int id = 0;
    if (duk_is_object(engine, -1) && duk_get_prop_string(engine, -1, kKind) &&
        duk_get_int(engine, -1) == kind) {
        duk_get_prop_string(engine, -2, kId);
        id = duk_get_int(engine, -1);
    }
    if (id == 0) (void)duk_error(engine, DUK_ERR_TYPE_ERROR, "the object has no such property");
    return id;
}

Item &this_comp(duk_context *engine) {
    Item *comp = run_of(engine).project.comp(this_id(engine, kCompObject));
    if (comp == nullptr) raise(engine, "the composition is gone");
    return *comp;
}

Layer &this_layer(duk_context *engine, int kind) {
    Layer *layer = run_of(engine).project.layer(this_id(engine, kind));
    if (layer == nullptr) raise(engine, "the layer is gone");
    return *layer;
}

/// Pushes an object with the prototype of the global constructor `type`.
void push_object(duk_context *engine, const char *type, int kind, int id) {
    duk_push_object(engine);
    duk_push_int(engine, kind);
    duk_put_prop_string(engine, -2, kKind);
    duk_push_int(engine, id);
    duk_put_prop_string(engine, -2, kId);
    duk_push_global_stash(engine);
    duk_get_prop_string(engine, -1, type);
    duk_remove(engine, -2);
    duk_set_prototype(engine, -2);
}

void push_text(duk_context *engine, const std::string &text) {
    duk_push_lstring(engine, text.data(), text.size());
}

duk_ret_t get_active_item(duk_context *engine) {
    check_time(engine);
    const Project &project = run_of(engine).project;
    if (project.comp(project.active_comp) == nullptr) {
        duk_push_null(engine);
    } else {
        push_object(engine, "CompItem", kCompObject, project.active_comp);
    }
    return 1;
}

duk_ret_t get_comp_name(duk_context *engine) {
    push_text(engine, this_comp(engine).name);
    return 1;
}

duk_ret_t get_comp_width(duk_context *engine) {
    duk_push_int(engine, this_comp(engine).width);
    return 1;
}

duk_ret_t get_comp_height(duk_context *engine) {
    duk_push_int(engine, this_comp(engine).height);
    return 1;
}

duk_ret_t get_num_layers(duk_context *engine) {
    duk_push_uint(engine, static_cast<duk_uint_t>(this_comp(engine).layers.size()));
    return 1;
}

duk_ret_t get_selected_layers(duk_context *engine) {
    const Item &comp = this_comp(engine);
    duk_push_array(engine);
    duk_uarridx_t count = 0;
    for (const Layer &layer : comp.layers) {
        if (!layer.selected) continue;
        push_object(engine, "AVLayer", kLayerObject, layer.id);
        duk_put_prop_index(engine, -2, count++);
    }
    return 1;
}

/// By 1-based index or by name (the topmost of that name). Null when there is none.
const Layer *find_layer(duk_context *engine, const Item &comp) {
    if (duk_is_number(engine, 0)) {
        const double index = duk_get_number(engine, 0);
        const bool whole = index >= 1 && index <= static_cast<double>(comp.layers.size()) &&
                           std::floor(index) == index;
        return whole ? &comp.layers[static_cast<std::size_t>(index) - 1] : nullptr;
    }
    const std::string_view name = duk_to_string(engine, 0);
    for (const Layer &layer : comp.layers) {
        if (layer.name == name) return &layer;
    }
    return nullptr;
}

duk_ret_t comp_layer(duk_context *engine) {
    const Item &comp = this_comp(engine);
    const Layer *layer = find_layer(engine, comp);
    if (layer == nullptr) return duk_error(engine, DUK_ERR_RANGE_ERROR, "there is no such layer");
    push_object(engine, "AVLayer", kLayerObject, layer->id);
    return 1;
}

duk_ret_t get_layer_name(duk_context *engine) {
    push_text(engine, this_layer(engine, kLayerObject).name);
    return 1;
}

duk_ret_t get_layer_index(duk_context *engine) {
    const Layer &layer = this_layer(engine, kLayerObject);
    duk_push_int(engine, run_of(engine).project.index_of(layer.id) + 1);
    return 1;
}

duk_ret_t get_layer_position(duk_context *engine) {
    push_object(engine, "Property", kPositionObject, this_layer(engine, kLayerObject).id);
    return 1;
}

Layer &layer_of_position(duk_context *engine) {
    Layer &layer = this_layer(engine, kPositionObject);
    if (layer.separated_position) {
        raise(engine, "the position has separate dimensions and takes no expression");
    }
    return layer;
}

duk_ret_t get_expression(duk_context *engine) {
    push_text(engine, layer_of_position(engine).position_expression);
    return 1;
}

/// Plain C++: false when memory is short.
bool store_expression(ScriptRun &run, Layer &layer, std::string_view text) noexcept {
    try {
        std::string expression = utf8_from_engine(text);
        if (!run.changed && run.options.before_change) run.options.before_change();
        run.changed = true;
        layer.position_expression = std::move(expression);
        return true;
    } catch (...) {
        return false;
    }
}

duk_ret_t set_expression(duk_context *engine) {
    Layer &layer = layer_of_position(engine);
    duk_size_t length = 0;
    const char *text = duk_to_lstring(engine, 0, &length);
    ScriptRun &run = run_of(engine);
    if (run.options.read_only) raise(engine, "the project cannot be changed");
    if (!store_expression(run, layer, {text, length})) raise(engine, "out of memory");
    return 0;
}

duk_ret_t refuse_construction(duk_context *engine) {
    return duk_error(engine, DUK_ERR_TYPE_ERROR, "objects of this type come from the project");
}

struct Accessor {
    const char *name;
    duk_c_function get;
    duk_c_function set;  ///< null when read-only
};

constexpr Accessor kProjectAccessors[] = {{"activeItem", get_active_item, nullptr}};
constexpr Accessor kCompAccessors[] = {{"name", get_comp_name, nullptr},
                                       {"width", get_comp_width, nullptr},
                                       {"height", get_comp_height, nullptr},
                                       {"numLayers", get_num_layers, nullptr},
                                       {"selectedLayers", get_selected_layers, nullptr}};
constexpr Accessor kLayerAccessors[] = {{"name", get_layer_name, nullptr},
                                        {"index", get_layer_index, nullptr},
                                        {"position", get_layer_position, nullptr}};
constexpr Accessor kPropertyAccessors[] = {{"expression", get_expression, set_expression}};

/// Adds the accessors to the object on top of the stack. Setting a read-only one throws.
template <std::size_t N>
void define_accessors(duk_context *engine, const Accessor (&accessors)[N]) {
    for (const Accessor &accessor : accessors) {
        duk_uint_t flags = DUK_DEFPROP_HAVE_GETTER | DUK_DEFPROP_SET_ENUMERABLE;
        duk_push_string(engine, accessor.name);
        duk_push_c_function(engine, accessor.get, 0);
        if (accessor.set != nullptr) {
            duk_push_c_function(engine, accessor.set, 1);
            flags |= DUK_DEFPROP_HAVE_SETTER;
        }
        duk_def_prop(engine, accessor.set != nullptr ? -4 : -3, flags);
    }
}

/// Makes global constructor `type` and leaves its prototype on the stack; push_object finds the
/// prototype in the stash even after a script has changed the global.
void begin_type(duk_context *engine, const char *type) {
    duk_push_c_function(engine, refuse_construction, DUK_VARARGS);
    duk_push_object(engine);
    duk_dup_top(engine);
    duk_put_prop_string(engine, -3, "prototype");
    duk_push_global_stash(engine);
    duk_dup(engine, -2);
    duk_put_prop_string(engine, -2, type);
    duk_pop(engine);
    duk_dup(engine, -2);
    duk_put_global_string(engine, type);
    duk_remove(engine, -2);
}

}  // namespace

ScriptRun &run_of(duk_context *engine) {
    duk_memory_functions functions;
    duk_get_memory_functions(engine, &functions);
    return *static_cast<ScriptRun *>(functions.udata);
}

void define_project_objects(duk_context *engine) {
    begin_type(engine, "CompItem");
    define_accessors(engine, kCompAccessors);
    duk_push_c_function(engine, comp_layer, 1);
    duk_put_prop_string(engine, -2, "layer");
    duk_pop(engine);

    begin_type(engine, "AVLayer");
    define_accessors(engine, kLayerAccessors);
    duk_pop(engine);

    begin_type(engine, "Property");
    define_accessors(engine, kPropertyAccessors);
    duk_pop(engine);

    duk_push_object(engine);
    duk_push_object(engine);
    define_accessors(engine, kProjectAccessors);
    duk_put_prop_string(engine, -2, "project");
    duk_put_global_string(engine, "app");
}

}  // namespace stage

#include "stage/session/session.h"

#include <algorithm>
#include <cstring>

#include "hostapi/constants.h"
#include "hostapi/events.h"

namespace stage {
namespace {

/// One step of undo for everything within a scope.
class UndoGroup {
  public:
    UndoGroup(Undo &undo, const std::string &name) : undo_(undo) { undo.begin_group(name); }
    ~UndoGroup() { undo_.end_group(); }
    UndoGroup(const UndoGroup &) = delete;
    UndoGroup &operator=(const UndoGroup &) = delete;

  private:
    Undo &undo_;
};

std::string refusal(PF_Cmd cmd, const CommandResult &result) {
    std::string text = std::string("the plug-in answered ") + command_name(cmd) + " with error " +
                       std::to_string(result.error);
    if (!result.message.empty()) text += ": " + result.message;
    return text;
}

}  // namespace

Session::Session(const std::filesystem::path &plugin_file, HostOptions options)
    : host(options), plugin(plugin_file), caller(host, plugin) {
    host.catalog = &plugin.catalog;
}

Session::~Session() {
    stop();
}

void Session::start() {
    const CommandResult global = send(PF_Cmd_GLOBAL_SETUP);
    if (global.error != 0) throw SessionError(refusal(PF_Cmd_GLOBAL_SETUP, global));
    for (const std::string &line : plugin.disagreements()) {
        host.strict.report("pipl.agreement", command_name(PF_Cmd_GLOBAL_SETUP), line);
    }
    started_ = true;
    const CommandResult params = send(PF_Cmd_PARAMS_SETUP);
    if (params.error != 0) throw SessionError(refusal(PF_Cmd_PARAMS_SETUP, params));
    if (plugin.num_params != plugin.catalog.count()) {
        throw SessionError("the plug-in reports " + std::to_string(plugin.num_params) +
                           " parameters but added " + std::to_string(plugin.catalog.count() - 1) +
                           " to the input layer");
    }
    if (plugin.catalog.open_groups() != 0) throw SessionError("a parameter group is left open");
}

void Session::stop() {
    while (!host.instances.empty()) remove(*host.instances.back());
    if (!started_) return;
    started_ = false;
    send(PF_Cmd_GLOBAL_SETDOWN);
}

CommandResult Session::about() {
    return send(PF_Cmd_ABOUT);
}

CommandResult Session::send(PF_Cmd cmd, EffectInstance *instance, void *extra) {
    CommandContext context;
    if (instance != nullptr) context = context_of(*instance);
    context.extra = extra;
    return caller.call(cmd, context);
}

CommandContext Session::context_of(EffectInstance &instance) const {
    CommandContext context;
    context.instance = &instance;
    const Item *extent = host.project.extent_of(instance.layer);
    if (extent == nullptr) return context;  // an undone deletion of the layer is under way
    context.width = extent->width;
    context.height = extent->height;
    context.pixel_aspect = {extent->par_num, static_cast<A_u_long>(extent->par_den)};
    context.total_time = static_cast<A_long>(host.project.comp_of(instance.layer)->frames);
    return context;
}

EffectInstance *Session::instance_at(LayerId layer, int place) const {
    const auto found = std::ranges::find_if(host.instances, [&](const auto &instance) {
        return instance->layer == layer && instance->effect == place;
    });
    return found == host.instances.end() ? nullptr : found->get();
}

void Session::trace_to(std::function<void(const TraceEntry &)> sink) {
    host.trace.enable(true);
    host.trace.set_sink(std::move(sink));
}

EffectInstance &Session::add_instance(LayerId layer, int effect, int id) {
    if (id == 0) id = ++last_instance_;
    host.instances.push_back(std::make_unique<EffectInstance>(layer, effect, id));
    EffectInstance &instance = *host.instances.back();
    instance.looks = plugin.catalog.looks();
    state_of(instance).instance = instance.id;
    return instance;
}

std::string Session::match_name() const {
    // Libraries without a property list go by their file's name.
    if (plugin.pipl && plugin.pipl->match_name) return *plugin.pipl->match_name;
    return plugin.library.file().stem().string();
}

std::vector<EffectStream> Session::new_streams(EffectInstance &instance) const {
    const CommandContext context = context_of(instance);
    std::vector<EffectStream> streams;
    for (int index = 0; index < plugin.catalog.count(); ++index) {
        const ParamInfo &info = plugin.catalog.at(index);
        EffectStream stream;
        stream.value = plugin.catalog.initial_value(index, context.width, context.height);
        stream.id = info.id;
        stream.name = info.path;
        streams.push_back(stream);
    }
    return streams;
}

EffectInstance *Session::apply(LayerId layer_id, CommandResult *result) {
    Layer *layer = host.project.layer(layer_id);
    if (layer == nullptr) throw SessionError("there is no layer " + std::to_string(layer_id));
    host.undo.before_change("Apply " + match_name());
    EffectState state;
    state.match_name = match_name();
    layer->effects.push_back(state);
    EffectInstance &instance = add_instance(layer_id, static_cast<int>(layer->effects.size()) - 1);
    state_of(instance).streams = new_streams(instance);
    CommandContext context = context_of(instance);
    const CommandResult setup = caller.call(PF_Cmd_SEQUENCE_SETUP, context);
    if (result != nullptr) *result = setup;
    instance.state =
        instance.sequence_data != nullptr ? SequenceState::kLive : SequenceState::kNone;
    if (setup.error != 0) {
        remove(instance);
        return nullptr;
    }
    refresh_panel(instance);
    return &instance;
}

CommandResult Session::set_down(EffectInstance &instance) {
    CommandContext context = context_of(instance);
    if (instance.render_sequence_data != nullptr) {
        context.render_copy = true;
        caller.call(PF_Cmd_SEQUENCE_SETDOWN, context);
        context.render_copy = false;
    }
    const CommandResult result = caller.call(PF_Cmd_SEQUENCE_SETDOWN, context);
    if (instance.sequence_data != nullptr) {
        // The plug-in failed to free its record, or left it: the host does.
        if (result.error == 0) {
            host.strict.report("sequence.setdown", command_name(PF_Cmd_SEQUENCE_SETDOWN),
                               "set-down succeeded and left the sequence data");
        }
        host.handles.dispose(instance.sequence_data, "the host");
    }
    std::erase_if(host.instances, [&](const auto &held) { return held.get() == &instance; });
    return result;
}

CommandResult Session::remove(EffectInstance &instance) {
    const LayerId layer_id = instance.layer;
    const int effect = instance.effect;
    const CommandResult result = set_down(instance);
    Layer *layer = host.project.layer(layer_id);
    layer->effects.erase(layer->effects.begin() + effect);
    for (const auto &other : host.instances) {
        if (other->layer == layer_id && other->effect > effect) --other->effect;
    }
    return result;
}

CommandResult Session::flatten(EffectInstance &instance) {
    CommandContext context = context_of(instance);
    const CommandResult result = caller.call(PF_Cmd_SEQUENCE_FLATTEN, context);
    if (result.error == 0) instance.state = SequenceState::kFlat;
    return result;
}

CommandResult Session::resetup(EffectInstance &instance, PF_InFlags in_flags) {
    CommandContext context = context_of(instance);
    context.in_flags = in_flags;
    const CommandResult result = caller.call(PF_Cmd_SEQUENCE_RESETUP, context);
    if (result.error == 0 && instance.sequence_data != nullptr) {
        instance.state = SequenceState::kLive;
    }
    return result;
}

std::vector<std::uint8_t> Session::sequence_bytes(const EffectInstance &instance) const {
    if (instance.sequence_data == nullptr) return {};
    const auto *data = static_cast<const std::uint8_t *>(*instance.sequence_data);
    return {data, data + host.handles.size(instance.sequence_data)};
}

void Session::set_flat_data(EffectInstance &instance, const std::vector<std::uint8_t> &bytes) {
    if (instance.sequence_data != nullptr) {
        host.handles.dispose(instance.sequence_data, "the host");
        instance.sequence_data = nullptr;
        instance.state = SequenceState::kNone;
    }
    if (bytes.empty()) return;
    instance.sequence_data = host.handles.allocate(bytes.size(), "the host");
    std::memcpy(*instance.sequence_data, bytes.data(), bytes.size());
    host.handles.set_host_owned(instance.sequence_data, true);
    instance.state = SequenceState::kFlat;
}

const ParamValue &Session::value(const EffectInstance &instance, int index) const {
    return state_of(instance).streams.at(static_cast<std::size_t>(index)).value;
}

PF_Err Session::report_edit(EffectInstance &instance, int index) {
    if ((plugin.catalog.at(index).def.flags & PF_ParamFlag_SUPERVISE) == 0) return 0;
    CommandContext context = context_of(instance);
    PF_UserChangedParamExtra extra{};
    extra.param_index = index;
    context.extra = &extra;
    context.with_params = true;
    const CommandResult changed = caller.call(
        PF_Cmd_USER_CHANGED_PARAM, context,
        [&](const std::vector<PF_ParamDef> &params) { adopt_values(instance, params); });
    return changed.error;
}

PF_Err Session::set_value(EffectInstance &instance, int index, const ParamValue &new_value) {
    const UndoGroup group(host.undo, "Change " + plugin.catalog.at(index).name);
    host.undo.before_change("");
    state_of(instance).streams.at(static_cast<std::size_t>(index)).value = new_value;
    const PF_Err edited = report_edit(instance, index);
    const CommandResult refreshed = refresh_panel(instance);
    return edited != 0 ? edited : refreshed.error;
}

PF_Err Session::reset_values(EffectInstance &instance) {
    const UndoGroup group(host.undo, "Reset " + match_name());
    host.undo.before_change("");
    const CommandContext context = context_of(instance);
    for (int index = 1; index < plugin.catalog.count(); ++index) {
        state_of(instance).streams.at(static_cast<std::size_t>(index)).value =
            plugin.catalog.initial_value(index, context.width, context.height);
    }
    PF_Err first = 0;
    for (int index = 1; index < plugin.catalog.count(); ++index) {
        const PF_Err error = report_edit(instance, index);
        if (first == 0) first = error;
    }
    const CommandResult refreshed = refresh_panel(instance);
    return first != 0 ? first : refreshed.error;
}

CommandResult Session::refresh_panel(EffectInstance &instance) {
    if (!panel_shown) return {};
    CommandContext context = context_of(instance);
    context.with_params = true;
    return caller.call(PF_Cmd_UPDATE_PARAMS_UI, context,
                       [&](const std::vector<PF_ParamDef> &params) {
                           if (host.options.honour_refresh_values) adopt_values(instance, params);
                       });
}

ParamValue Session::accepted(EffectInstance &instance, int index, const PF_ParamDef &def) const {
    const HostOptions &options = host.options;
    ParamValue written = load_value(def, {1, 1});
    if (options.clamp_written_values) written = plugin.catalog.clamped(index, written);
    if (options.clamp_written_points && def.param_type == PF_Param_POINT &&
        plugin.catalog.at(index).def.u.td.restrict_bounds != 0) {
        const CommandContext context = context_of(instance);
        written.x = std::clamp(written.x, 0.0, double(context.width));
        written.y = std::clamp(written.y, 0.0, double(context.height));
    }
    return written;
}

std::vector<int> Session::adopt_values(EffectInstance &instance,
                                       const std::vector<PF_ParamDef> &params) {
    std::vector<int> taken;
    for (int index = 1; index < static_cast<int>(params.size()); ++index) {
        const PF_ParamDef &def = params[static_cast<std::size_t>(index)];
        if ((def.uu.change_flags & PF_ChangeFlag_CHANGED_VALUE) == 0) continue;
        if (taken.empty()) host.undo.before_change("Change Value");
        state_of(instance).streams.at(static_cast<std::size_t>(index)).value =
            accepted(instance, index, def);
        taken.push_back(index);
    }
    return taken;
}

EffectInstance &Session::duplicate(EffectInstance &instance, LayerId layer_id) {
    const CommandResult flat = flatten(instance);
    if (flat.error != 0) throw SessionError(refusal(PF_Cmd_SEQUENCE_FLATTEN, flat));
    const std::vector<std::uint8_t> bytes = sequence_bytes(instance);
    const CommandResult back = resetup(instance);
    if (back.error != 0) throw SessionError(refusal(PF_Cmd_SEQUENCE_RESETUP, back));
    Layer *layer = host.project.layer(layer_id);
    if (layer == nullptr) throw SessionError("there is no layer " + std::to_string(layer_id));
    layer->effects.push_back(EffectState(state_of(instance)));
    EffectInstance &copy = add_instance(layer_id, static_cast<int>(layer->effects.size()) - 1);
    copy.looks = instance.looks;
    set_flat_data(copy, bytes);
    const CommandResult made = resetup(copy);
    if (made.error != 0) throw SessionError(refusal(PF_Cmd_SEQUENCE_RESETUP, made));
    return copy;
}

}  // namespace stage

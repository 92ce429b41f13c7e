// The stage as its users hold it: a host with a plug-in, a project, and the acts of a user.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>

#include "hostapi/events.h"
#include "stage/binary/gdiplus_runtime.h"
#include "stage/commands/command_call.h"
#include "stage/commands/smart_render.h"
#include "stage/drawbot/viewport.h"
#include "stage/effect/effect_instance.h"
#include "stage/effect/plugin.h"
#include "stage/services/suites/serving_host.h"
#include "stage/session/input_cache.h"

namespace stage {

/// The plug-in refused to start, or an act was asked for that the host cannot do. One line.
class SessionError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// The window that an event happens in.
struct EventWindow {
    WindowKind kind = WindowKind::kComp;
    PF_Context **context = nullptr;  ///< the same one all the time that the window is open
    Viewport viewport;
    std::int64_t frame = 0;  ///< of the comp: time of the event
    int downsample = 1;      ///< of the view; reaches events with HostOptions::events_at_view_ratio
};

/// What the effect did with one event.
struct EventReply {
    PF_Err error = 0;
    bool sent = false;         ///< the effect takes events of this window at all
    bool handled = false;      ///< PF_EO_HANDLED_EVENT
    std::vector<int> changed;  ///< parameters that were taken over, by index
    std::string message;
};

/// One plug-in in one host. Construction only loads the file; start() sends the global commands.
/// Ends with every instance removed and GLOBAL_SETDOWN. One session per process at a time.
class Session {
  public:
    /// Throws LibraryError, BinaryError.
    explicit Session(const std::filesystem::path &plugin_file, HostOptions options = {});
    ~Session();
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    /// GLOBAL_SETUP, then PARAMS_SETUP, then the comparison with the property list (disagreements
    /// are strict findings). Throws SessionError when the plug-in refuses.
    void start();
    /// Removes every instance and sends GLOBAL_SETDOWN. The destructor does it otherwise.
    void stop();

    CommandResult about();
    /// A command with nothing but the records: what a test of the dispatch needs.
    CommandResult send(PF_Cmd cmd, EffectInstance *instance = nullptr, void *extra = nullptr);

    /// Applies the effect to `layer`: new streams with their initial values, SEQUENCE_SETUP, and a
    /// panel refresh. When set-up fails the effect is taken off again and null is returned;
    /// `result`, when given, gets what SEQUENCE_SETUP said.
    EffectInstance *apply(LayerId layer, CommandResult *result = nullptr);
    /// SEQUENCE_SETDOWN, then the effect is gone from its layer.
    CommandResult remove(EffectInstance &instance);
    /// Flattens the instance into the project, so that undo can bring it back; it goes on. An
    /// effect without a record leaves no data. Throws SessionError when the plug-in fails.
    void store_sequence(EffectInstance &instance);
    /// One step back or forth. Running effects that the project no longer holds are set down; those
    /// that it holds again get their flat data and RESETUP. The panels are refreshed. False when
    /// there is no such step.
    bool undo();
    bool redo();
    /// Brings the instances in line with the project: after changes to it that took layers away, or
    /// brought some back.
    void settle_instances();
    /// FLATTEN, then RESETUP of the old and of a new instance on `layer`. Throws SessionError when
    /// the plug-in fails.
    EffectInstance &duplicate(EffectInstance &instance, LayerId layer);

    /// FLATTEN: the instance's sequence data becomes flat.
    CommandResult flatten(EffectInstance &instance);
    /// RESETUP of whatever the instance's sequence data is.
    CommandResult resetup(EffectInstance &instance, PF_InFlags in_flags = 0);
    /// Gives the instance sequence data of these bytes, as loading a project does (no RESETUP).
    void set_flat_data(EffectInstance &instance, const std::vector<std::uint8_t> &bytes);
    /// Bytes of the instance's sequence data as they stand.
    std::vector<std::uint8_t> sequence_bytes(const EffectInstance &instance) const;

    /// What a user does in the panel: the value is set, USER_CHANGED_PARAM is sent when the
    /// parameter is supervised, then UPDATE_PARAMS_UI. First error of the two.
    PF_Err set_value(EffectInstance &instance, int index, const ParamValue &value);
    /// The panel's "Reset": every parameter gets its default, the supervised ones are reported in
    /// order, then one refresh. First error.
    PF_Err reset_values(EffectInstance &instance);
    const ParamValue &value(const EffectInstance &instance, int index) const;
    /// UPDATE_PARAMS_UI, as sent whenever the panel is shown.
    CommandResult refresh_panel(EffectInstance &instance);
    /// PF_Cmd_EVENT. `extra` comes with type and record; the rest is filled in here. Values that
    /// the effect marks as changed in clicks, drags and keys are taken over, clamped as the options
    /// say, and the panel is refreshed. Windows that the effect did not ask for get no events.
    EventReply send_event(EffectInstance &instance, PF_EventExtra &extra,
                          const EventWindow &window);
    /// DRAW over the whole window. What the effect drew replaces the contents of `list`.
    EventReply draw_event(EffectInstance &instance, const EventWindow &window, DrawList &list);

    /// Renders the effect's layer at `settings.frame`. Its input is the layer's source, or, for an
    /// adjustment layer, everything beneath it; the layer parameter's pixel aspect is its item's.
    RenderResult render(EffectInstance &instance, const RenderSettings &settings);
    /// The same with another input; its `picture` stays empty.
    RenderResult render_pixels(EffectInstance &instance, const RenderSettings &settings,
                               LayerPixels &input);

    /// Flattens every instance into the project and saves it; instances go on. Throws ProjectError
    /// or SessionError; the file is whole or untouched.
    void save(const std::filesystem::path &file);
    /// Replaces the project: instances are removed, those of the file get their flat data and
    /// RESETUP.
    void load(const std::filesystem::path &file);

    // What is asked of the host; the rest of it is the session's own business.
    Project &project() { return host.project; }
    const Project &project() const { return host.project; }
    Undo &history() { return host.undo; }
    const Undo &history() const { return host.undo; }
    HostOptions &options() { return host.options; }
    const HostOptions &options() const { return host.options; }
    /// Running effects in the order in which they came to be.
    const std::vector<std::unique_ptr<EffectInstance>> &instances() const { return host.instances; }
    /// The running effect at `place` of the layer's effects; null when none runs there.
    EffectInstance *instance_at(LayerId layer, int place) const;
    /// Values and flat record of a running effect, as the project has them.
    EffectState &state_of(const EffectInstance &instance) {
        return effect_state(host.project, instance);
    }
    const EffectState &state_of(const EffectInstance &instance) const {
        return effect_state(host.project, instance);
    }
    /// Everything that the user was shown.
    const std::vector<ShownMessage> &messages() const { return host.messages; }
    /// Rules that the plug-in broke, without known departures.
    std::vector<Finding> findings() const { return host.strict.violations(); }
    bool checks() const { return host.strict.enabled; }
    void set_checks(bool on) { host.strict.enabled = on; }
    /// Hands every call between host and plug-in to `sink` as it is made.
    void trace_to(std::function<void(const TraceEntry &)> sink);
    /// Memory that pictures come from and go back to.
    BytePool &pool() { return host.worlds.pool(); }
    const OverlayTheme &overlay_theme() const { return host.drawbot.theme; }

    ServingHost host;  ///< with all its organs; outside the session only tests look into it
    Plugin plugin;
    CommandCaller caller;
    InputCache inputs{host.worlds.pool()};
    bool panel_shown = true;  ///< UPDATE_PARAMS_UI is sent at all

  private:
    CommandContext context_of(EffectInstance &instance) const;
    /// A new number unless `id` is given.
    EffectInstance &add_instance(LayerId layer, int effect, int id = 0);
    std::vector<EffectStream> new_streams(EffectInstance &instance) const;
    std::string match_name() const;
    CommandResult set_down(EffectInstance &instance);
    PF_Err report_edit(EffectInstance &instance, int index);
    ParamValue accepted(EffectInstance &instance, int index, const PF_ParamDef &def) const;
    std::vector<int> adopt_values(EffectInstance &instance, const std::vector<PF_ParamDef> &params);
    std::vector<int> event_values(EffectInstance &instance, PF_EventType event,
                                  const std::vector<PF_ParamDef> &params);
    void store_leaving(const ProjectData &next);
    void find_places();
    void wake_new_effects();
    bool move_through_history(const ProjectData *next, bool (Undo::*move)());
    void synchronise_render_copy(EffectInstance &instance);
    /// The source of the layer that the effect's layer parameter names; null for none.
    const Item *original_item(const EffectInstance &instance) const;

    GdiplusRuntime gdiplus_;
    bool started_ = false;
    int last_instance_ = 0;
};

}  // namespace stage

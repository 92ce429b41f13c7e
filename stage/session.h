// The stage as its users hold it: a host with a plug-in, a project, and the acts of a user.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>

#include "stage/binary/gdiplus_runtime.h"
#include "stage/command_call.h"
#include "stage/effect_instance.h"
#include "stage/host.h"
#include "stage/plugin.h"
#include "stage/smart_render.h"

namespace stage {

/// The plug-in refused to start, or an act was asked for that the host cannot do. One line.
class SessionError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
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
    /// SEQUENCE_SETDOWN, then the instance is gone.
    CommandResult remove(EffectInstance &instance);
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
    const ParamValue &value(const EffectInstance &instance, int index) const;
    /// UPDATE_PARAMS_UI, as sent whenever the panel is shown.
    CommandResult refresh_panel(EffectInstance &instance);

    /// Renders the effect's layer at `settings.frame`. Its input is the layer's source, or, for an
    /// adjustment layer, everything beneath it; the layer parameter's pixel aspect is its item's.
    RenderResult render(EffectInstance &instance, const RenderSettings &asked);

    /// Flattens every instance into the project and saves it; instances go on. Throws ProjectError
    /// or SessionError; the file is whole or untouched.
    void save(const std::filesystem::path &file);
    /// Replaces the project: instances are removed, those of the file get their flat data and
    /// RESETUP.
    void load(const std::filesystem::path &file);

    Host host;
    Plugin plugin;
    CommandCaller caller;
    bool panel_shown = true;  ///< UPDATE_PARAMS_UI is sent at all

  private:
    CommandContext context_of(EffectInstance &instance) const;
    EffectState &state_of(const EffectInstance &instance);
    const EffectState &state_of(const EffectInstance &instance) const;
    EffectInstance &add_instance(LayerId layer, int effect);
    std::vector<EffectStream> new_streams(EffectInstance &instance) const;
    std::string match_name() const;
    void adopt_values(EffectInstance &instance, const std::vector<PF_ParamDef> &params);
    void synchronise_render_copy(EffectInstance &instance);

    GdiplusRuntime gdiplus_;
    bool started_ = false;
};

}  // namespace stage

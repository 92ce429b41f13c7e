// A host's desk as one user works at it: what can be clicked, typed and chosen, and what is seen.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "stage/desk/viewer/comp_render.h"
#include "stage/desk/viewer/viewer.h"
#include "stage/session/session.h"

namespace stage {

struct Footage;

/// What a press, move or release in a viewer did.
struct PointerReply {
    EventReply event;
    int native_point = 0;  ///< parameter whose cross-hair the host itself moves; 0 for none
    LayerId selected = 0;  ///< layer that a press on nothing else selected; 0 for none
};

/// The host's own mark of a point parameter, at a window point.
struct CrossHair {
    int index = 0;  ///< of the parameter
    double x = 0, y = 0;
};

/// Acts are a user's: each is one step of undo where the real host makes one. Layers are those of
/// the active comp; new ones arrive at the top, selected alone. Acts throw SessionError or
/// ProjectError with one line when the host cannot carry them out; what the plug-in answers is
/// returned. The chosen effect is the one whose panel is shown and whose handles work: the first of
/// the selected layers' own effects, else the last one chosen. [host thread]
class Desk {
  public:
    /// `session` must be started, and outlive the desk.
    explicit Desk(Session &session);
    ~Desk();

    Session &session() { return session_; }
    const Session &session() const { return session_; }

    // Project.
    ItemId new_comp(const std::string &name, int width, int height, int par_num, int par_den,
                    std::int64_t frames);
    /// Brings another comp to the front, with nothing selected in it; the first effect that runs in
    /// it is chosen.
    void show_comp(ItemId comp);
    /// Of the active comp and of the footage in it.
    void set_pixel_aspect(int par_num, int par_den);
    /// A picture, sequence or video file as a layer of the active comp; without an active comp, one
    /// of its size is made.
    LayerId add_footage(const std::filesystem::path &file, int par_num = 1, int par_den = 1);
    LayerId add_chart(const std::string &chart, int width, int height, int par_num = 1,
                      int par_den = 1);
    LayerId add_solid(const std::string &name, int width, int height,
                      const std::array<double, 4> &color);
    LayerId add_adjustment(const std::string &name);
    LayerId add_text(const std::string &name);
    void select(const std::vector<LayerId> &layers);
    void delete_layer(LayerId layer);
    /// The copy lies above the original; effects travel by FLATTEN and RESETUP.
    LayerId duplicate_layer(LayerId layer);
    void move_layer(LayerId layer, int index);
    void show_layer(LayerId layer, bool video);
    /// Position and scale of a layer, comp pixels and percent.
    void place_layer(LayerId layer, double x, double y, double scale);

    // Effect.
    /// To every selected layer, top to bottom, as one act. The results are in that order; layers
    /// whose set-up failed carry no effect.
    std::vector<CommandResult> apply();
    void remove_effect();
    EffectInstance *effect() const;  ///< the chosen one, null when there is none
    void choose(EffectInstance &instance);
    /// An edit in the panel: the value, USER_CHANGED_PARAM when supervised, a refresh.
    PF_Err set_value(int index, const ParamValue &value);
    /// The "Reset" link: every parameter gets its default, the supervised ones are reported in
    /// order, then one refresh. First error.
    PF_Err reset();
    bool undo();
    bool redo();
    void save(const std::filesystem::path &file);
    void load(const std::filesystem::path &file);

    // Time and view.
    void set_frame(std::int64_t frame);
    std::int64_t frame() const { return frame_; }
    /// 1, 2, 4: full, half, quarter.
    void set_resolution(int downsample);
    int resolution() const { return downsample_; }
    WindowKind window = WindowKind::kComp;  ///< the viewer in front
    Viewport &viewport() { return viewports_[window]; }

    /// Pointer in the viewer in front, window pixels. A press that the effect does not handle goes
    /// to the host's own cross-hairs of visible, enabled points (a user's edit at the release),
    /// then to the selection of layers.
    PointerReply press(int x, int y, int clicks = 1, PF_Modifiers modifiers = 0);
    PointerReply move(int x, int y, PF_Modifiers modifiers = 0);
    PointerReply release(int x, int y, PF_Modifiers modifiers = 0);
    void leave();
    bool dragging() const;
    /// As the effect chose it at the last move; 0 leaves it to the host.
    PF_CursorType cursor() const;

    /// The frame of the viewer in front; rendered anew only when something changed. Its source size
    /// is that of the comp, or of the layer in a layer window.
    const ViewFrame &view();
    int source_width() const;
    int source_height() const;
    /// What the chosen effect draws over it; empty without one.
    const DrawList &overlay();
    /// All that the window shows over the frame: the overlay, and the host's own cross-hairs.
    DrawList window_overlay();
    /// Goes up with everything that may change what is seen.
    std::uint64_t version() const { return version_; }
    /// After changes made past the desk, to the session itself.
    void touch() { ++version_; }

  private:
    Viewer *viewer();
    void close_viewers();
    Item &active_comp();
    LayerId add_item(const Footage &footage, const std::string &name, int par_num, int par_den);
    LayerId arrived(LayerId layer);
    void duplicate_effects(const Layer &original, LayerId copy);
    void choose_selected();
    void settle_effects();
    std::vector<CrossHair> cross_hairs() const;
    int cross_hair_at(int x, int y) const;
    PF_Err move_cross_hair(int x, int y);
    LayerId layer_at(int x, int y) const;
    std::optional<std::pair<double, double>> layer_point(double x, double y) const;
    std::pair<double, double> window_point(double layer_x, double layer_y) const;
    const Item *source_item() const;

    Session &session_;
    EffectInstance *chosen_ = nullptr;
    std::map<WindowKind, Viewport> viewports_;
    std::map<WindowKind, std::unique_ptr<Viewer>> viewers_;
    std::int64_t frame_ = 0;
    int downsample_ = 1;
    int native_point_ = 0;                ///< parameter of the cross-hair that is held
    double native_x_ = 0, native_y_ = 0;  ///< window point that it is held at
    std::uint64_t version_ = 1;
    std::uint64_t viewed_ = 0;  ///< version of view_
    WindowKind viewed_window_ = WindowKind::kComp;
    ViewFrame view_;
    std::uint64_t drawn_ = 0;  ///< version of overlay_
    WindowKind drawn_window_ = WindowKind::kComp;
    Viewport drawn_viewport_;
    DrawList overlay_;
};

}  // namespace stage

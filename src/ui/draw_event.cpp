#include "ui/draw_event.h"

#include "host/error_chain.h"
#include "host/suite_access.h"
#include "host/suite_cache.h"
#include "hostapi/constants.h"
#include "ui/drawbot_path.h"
#include "ui/handles/handle_drawing.h"

namespace ks {
namespace {

constexpr PF_Boolean kWithShadow = 1;

/// The Drawbot suites for the length of one draw event.
class HeldDrawbotSuites {
  public:
    /// Throws the acquisition's error.
    HeldDrawbotSuites(PF_InData *in_data, PF_OutData *out_data)
        : in_data_(in_data), out_data_(out_data) {
        const PF_Err error = AcquireDrawbotSuites(in_data, out_data, &suites_);
        if (error != PF_Err_NONE) throw PF_Err{error};
    }
    ~HeldDrawbotSuites() { ReleaseDrawbotSuites(in_data_, out_data_); }
    HeldDrawbotSuites(const HeldDrawbotSuites &) = delete;
    HeldDrawbotSuites &operator=(const HeldDrawbotSuites &) = delete;

    [[nodiscard]] const DrawbotSuites &get() const { return suites_; }

  private:
    PF_InData *in_data_;
    PF_OutData *out_data_;
    DrawbotSuites suites_{};
};

/// Where one event paints. The references are the host's and die with the event.
struct Canvas {
    const DrawbotSuites &suites;
    PF_EffectCustomUIOverlayThemeSuite1 &theme;
    DRAWBOT_DrawRef reference;
    DRAWBOT_SupplierRef supplier = nullptr;
    DRAWBOT_SurfaceRef surface = nullptr;
};

/// Fills in the supplier and the surface.
void open_canvas(ErrorChain &chain, Canvas &canvas) {
    DRAWBOT_ColorRGBA foreground{};
    chain.step([&] { return canvas.theme.PF_GetPreferredForegroundColor(&foreground); });
    chain.step(
        [&] { return canvas.suites.drawbot->GetSupplier(canvas.reference, &canvas.supplier); });
    chain.step(
        [&] { return canvas.suites.drawbot->GetSurface(canvas.reference, &canvas.surface); });
    if (canvas.supplier == nullptr || canvas.surface == nullptr) {
        chain.keep(PF_Err_BAD_CALLBACK_PARAM);
    }
}

/// Paints each kind of item. [host thread]
struct Painter {
    ErrorChain &chain;
    const Canvas &canvas;

    void operator()(const Bar &bar) const {
        const DRAWBOT_ColorRGBA colour{kBarColour[0], kBarColour[1], kBarColour[2], kBarColour[3]};
        const DRAWBOT_RectF32 rect{bar.left, bar.top, bar.width, bar.height};
        chain.step(
            [&] { return canvas.suites.surface->PaintRect(canvas.surface, &colour, &rect); });
    }
    void operator()(const FilledPath &path) const { paint(path, canvas.theme.PF_FillPath); }
    void operator()(const StrokedPath &path) const { paint(path, canvas.theme.PF_StrokePath); }

  private:
    template <class PaintPath>
    void paint(const Path &points, PaintPath paint_path) const {
        const DRAWBOT_PathSuite1 &paths = *canvas.suites.path;
        DrawbotPath path(canvas.suites, canvas.supplier);
        chain.keep(path.error());
        for (std::size_t i = 0; i < points.count; ++i) {
            const PathPoint &point = points.points[i];
            chain.step([&] {
                return point.starts ? paths.MoveTo(path.get(), point.x, point.y)
                                    : paths.LineTo(path.get(), point.x, point.y);
            });
        }
        chain.step([&] { return paint_path(canvas.reference, path.get(), kWithShadow); });
        path.release();
    }
};

void paint_handles(ErrorChain &chain, const Canvas &canvas, const HandleSettings &settings,
                   const WindowMap &window) {
    const Painter painter{chain, canvas};
    for (const HandleRow &row : kHandleTable) {
        const HandleDrawing drawing = drawing_of(row, settings, window);
        for (std::size_t i = 0; chain.ok() && i < drawing.count; ++i) {
            std::visit(painter, drawing.items[i]);
        }
    }
}

}  // namespace

void draw_handles(PF_InData *in_data, PF_OutData *out_data, PF_EventExtra &extra,
                  const HandleSettings &settings, const WindowMap &window) {
    SuiteCache suites(in_data->pica_basicP);
    DRAWBOT_DrawRef reference = nullptr;
    ErrorChain chain;
    chain.step(
        [&] { return suites.custom_ui().PF_GetDrawingReference(extra.contextH, &reference); });
    // The host may succeed without a reference, when there is nothing to paint into.
    if (!chain.ok() || reference == nullptr) return;
    PF_EffectCustomUIOverlayThemeSuite1 &theme = suites.overlay_theme();
    const HeldDrawbotSuites drawbot(in_data, out_data);
    Canvas canvas{drawbot.get(), theme, reference};
    open_canvas(chain, canvas);
    if (!chain.ok()) return;
    try {
        paint_handles(chain, canvas, settings, window);
    } catch (const DRAWBOT_Exception &) {
        // The path is lost to the host's accounting; painting ends here, the window stays usable.
    }
}

}  // namespace ks

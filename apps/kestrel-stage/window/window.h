// The window itself: SDL, its renderer, and ImGui on top of them.
#pragma once

#include <SDL.h>

#include <filesystem>
#include <memory>

namespace stage_view {

template <auto Destroy>
struct Destroyer {
    template <typename Thing>
    void operator()(Thing *thing) const {
        Destroy(thing);
    }
};
using TexturePtr = std::unique_ptr<SDL_Texture, Destroyer<SDL_DestroyTexture>>;

/// One per process. Throws std::runtime_error with one line when there is no display.
class Window {
  public:
    Window(const char *title, int width, int height);
    ~Window();
    Window(const Window &) = delete;
    Window &operator=(const Window &) = delete;

    SDL_Renderer *renderer() const { return renderer_.get(); }
    /// Opaque texture of `width` × `height` pixels 0x??RRGGBB, in the order of the window's own
    /// pixels where that is possible.
    TexturePtr make_picture_texture(int width, int height) const;
    int width() const;
    int height() const;
    /// Changes the pointer's shape; asks SDL only when it is another one.
    void set_cursor(SDL_SystemCursor shape);
    SDL_SystemCursor cursor() const { return cursor_shape_; }
    /// What was drawn since the last present(), as a picture file. Throws PictureError.
    void write_screenshot(const std::filesystem::path &file) const;
    void present() { SDL_RenderPresent(renderer_.get()); }

  private:
    struct SdlLibrary {
        SdlLibrary();
        ~SdlLibrary() { SDL_Quit(); }
    };
    struct ImGuiLibrary {
        ImGuiLibrary(SDL_Window *window, SDL_Renderer *renderer);
        ~ImGuiLibrary();
        TexturePtr font;
    };
    struct CursorDestroyer {
        void operator()(SDL_Cursor *cursor) const { SDL_FreeCursor(cursor); }
    };

    SdlLibrary sdl_;
    std::unique_ptr<SDL_Window, Destroyer<SDL_DestroyWindow>> window_;
    std::unique_ptr<SDL_Renderer, Destroyer<SDL_DestroyRenderer>> renderer_;
    std::unique_ptr<ImGuiLibrary> imgui_;
    std::unique_ptr<SDL_Cursor, CursorDestroyer> cursors_[SDL_NUM_SYSTEM_CURSORS];
    SDL_SystemCursor cursor_shape_ = SDL_SYSTEM_CURSOR_ARROW;
};

}  // namespace stage_view

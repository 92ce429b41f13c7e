#include "kestrel-stage/window/window.h"

#include <backends/imgui_impl_sdl.h>
#include <imgui.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "kestrel-stage/window/imgui_draw.h"
#include "kestrel-stage/window/style.h"
#include "stage/image/codecs/picture_io.h"

namespace stage_view {
namespace {

[[noreturn]] void refuse(const char *what) {
    throw std::runtime_error(std::string(what) + ": " + SDL_GetError());
}

template <typename Thing>
Thing *wanted(Thing *thing, const char *what) {
    if (thing == nullptr) refuse(what);
    return thing;
}

}  // namespace

Window::SdlLibrary::SdlLibrary() {
    // The picture is made by the processor anyway, and a window's own pixels take it without a trip
    // to a graphics card. SDL_RENDER_DRIVER in the environment chooses another one.
    SDL_SetHint(SDL_HINT_RENDER_DRIVER, "software");
    SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
    SDL_SetHint(SDL_HINT_VIDEO_ALLOW_SCREENSAVER, "1");
    SDL_SetHint(SDL_HINT_MOUSE_FOCUS_CLICKTHROUGH, "1");
    if (SDL_Init(SDL_INIT_VIDEO) != 0) refuse("no display can be opened");
}

Window::ImGuiLibrary::ImGuiLibrary(SDL_Window *window, SDL_Renderer *renderer) {
    IMGUI_CHECKVERSION();
    ImGui::CreateContext();
    ImGuiIO &io = ImGui::GetIO();
    io.IniFilename = nullptr;
    io.ConfigFlags |= ImGuiConfigFlags_NoMouseCursorChange;  // the handles choose cursors, too
    io.ConfigInputTextCursorBlink = false;                   // nothing moves while nobody acts
    io.BackendFlags |= ImGuiBackendFlags_RendererHasVtxOffset;
    apply_style();
    ImGui_ImplSDL2_InitForSDLRenderer(window);
    font.reset(wanted(make_font_texture(renderer), "no texture for the font"));
}

Window::ImGuiLibrary::~ImGuiLibrary() {
    ImGui_ImplSDL2_Shutdown();
    ImGui::DestroyContext();
}

Window::Window(const char *title, int width, int height)
    : window_(wanted(SDL_CreateWindow(title, SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, width,
                                      height, SDL_WINDOW_RESIZABLE),
                     "no window can be opened")),
      renderer_(wanted(SDL_CreateRenderer(window_.get(), -1, 0), "no renderer for the window")),
      imgui_(std::make_unique<ImGuiLibrary>(window_.get(), renderer_.get())) {
    SDL_SetWindowMinimumSize(window_.get(), 900, 500);
}

Window::~Window() = default;

TexturePtr Window::make_picture_texture(int width, int height) const {
    // Pixels of another order would be converted whenever the texture is shown.
    const Uint32 own = SDL_GetWindowPixelFormat(window_.get());
    const Uint32 format = own == SDL_PIXELFORMAT_RGB888 ? own : Uint32{SDL_PIXELFORMAT_ARGB8888};
    TexturePtr texture(wanted(
        SDL_CreateTexture(renderer_.get(), format, SDL_TEXTUREACCESS_STREAMING, width, height),
        "no texture for the picture"));
    SDL_SetTextureBlendMode(texture.get(), SDL_BLENDMODE_NONE);
    return texture;
}

int Window::width() const {
    int width = 0;
    SDL_GetWindowSize(window_.get(), &width, nullptr);
    return width;
}

int Window::height() const {
    int height = 0;
    SDL_GetWindowSize(window_.get(), nullptr, &height);
    return height;
}

void Window::set_cursor(SDL_SystemCursor shape) {
    auto &cursor = cursors_[shape];
    if (cursor != nullptr && shape == cursor_shape_) return;
    if (cursor == nullptr) cursor.reset(SDL_CreateSystemCursor(shape));
    if (cursor != nullptr) SDL_SetCursor(cursor.get());
    cursor_shape_ = shape;
}

void Window::write_screenshot(const std::filesystem::path &file) const {
    int width = 0;
    int height = 0;
    SDL_GetRendererOutputSize(renderer_.get(), &width, &height);
    std::vector<std::uint8_t> argb(static_cast<std::size_t>(width) *
                                   static_cast<std::size_t>(height) * 4);
    if (SDL_RenderReadPixels(renderer_.get(), nullptr, SDL_PIXELFORMAT_ARGB32, argb.data(),
                             width * 4) != 0) {
        refuse("the window cannot be read");
    }
    stage::Picture picture =
        stage::from_rows(stage::Depth::U8, argb.data(), width * 4, width, height);
    for (std::size_t i = 0; i < picture.argb.size(); i += 4) picture.argb[i] = 1;
    stage::write_picture(file, picture, stage::Depth::U8);
}

}  // namespace stage_view

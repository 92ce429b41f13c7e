// Draws what ImGui laid out, with SDL's renderer.
#pragma once

#include <SDL.h>
#include <imgui.h>

namespace stage_view {

/// The glyphs of the current ImGui context as a texture, which ImGui then refers to. Null when SDL
/// refuses; SDL_GetError() says why.
SDL_Texture *make_font_texture(SDL_Renderer *renderer);

/// Draws the lists of one frame over what is there. Positions are pixels of the renderer's output.
void draw_imgui(SDL_Renderer *renderer, const ImDrawData &data);

}  // namespace stage_view

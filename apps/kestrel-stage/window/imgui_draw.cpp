#include "kestrel-stage/window/imgui_draw.h"

#include <cstddef>

namespace stage_view {
namespace {

static_assert(sizeof(ImU32) == sizeof(SDL_Color), "vertex colours are handed over as they are");

constexpr unsigned kQuadIndices = 6;

SDL_Color color_of(ImU32 packed) {
    const auto part = [packed](int shift) { return static_cast<Uint8>(packed >> shift & 0xFF); };
    return {part(IM_COL32_R_SHIFT), part(IM_COL32_G_SHIFT), part(IM_COL32_B_SHIFT),
            part(IM_COL32_A_SHIFT)};
}

/// Draws one command. Boxes and glyphs, which are nearly everything, are taken apart into fills and
/// copies: SDL's software renderer would otherwise fill a plain box texel by texel.
class CommandDrawer {
  public:
    CommandDrawer(SDL_Renderer *renderer, const ImDrawList &list, const ImDrawCmd &command)
        : renderer_(renderer),
          list_(list),
          command_(command),
          texture_(static_cast<SDL_Texture *>(command.GetTexID())),
          vertices_(list.VtxBuffer.Data + command.VtxOffset),
          indices_(list.IdxBuffer.Data + command.IdxOffset) {
        SDL_QueryTexture(texture_, nullptr, nullptr, &texture_width_, &texture_height_);
    }

    void draw() {
        unsigned waiting = 0;  // first index that is not drawn yet
        unsigned at = 0;
        while (at < command_.ElemCount) {
            if (at + kQuadIndices <= command_.ElemCount && is_box(indices_ + at)) {
                draw_triangles(waiting, at);
                draw_box(vertices_[indices_[at]], vertices_[indices_[at + 2]]);
                waiting = at += kQuadIndices;
            } else {
                at += 3;
            }
        }
        draw_triangles(waiting, command_.ElemCount);
    }

  private:
    /// Corners a, b, c, d in turn as the triangles abc and acd, of one colour, upright, with the
    /// texture upright in it.
    bool is_box(const ImDrawIdx *i) const {
        if (i[3] != i[0] || i[4] != i[2]) return false;
        const ImDrawVert &a = vertices_[i[0]];
        const ImDrawVert &b = vertices_[i[1]];
        const ImDrawVert &c = vertices_[i[2]];
        const ImDrawVert &d = vertices_[i[5]];
        const bool upright = a.pos.y == b.pos.y && b.pos.x == c.pos.x && c.pos.y == d.pos.y &&
                             d.pos.x == a.pos.x && a.uv.y == b.uv.y && b.uv.x == c.uv.x &&
                             c.uv.y == d.uv.y && d.uv.x == a.uv.x;
        return upright && a.col == b.col && b.col == c.col && c.col == d.col &&
               a.pos.x <= c.pos.x && a.pos.y <= c.pos.y && a.uv.x <= c.uv.x && a.uv.y <= c.uv.y;
    }

    void draw_box(const ImDrawVert &low, const ImDrawVert &high) const {
        const SDL_FRect target{low.pos.x, low.pos.y, high.pos.x - low.pos.x,
                               high.pos.y - low.pos.y};
        const SDL_Color color = color_of(low.col);
        if (low.uv.x == high.uv.x && low.uv.y == high.uv.y) {  // the white texel
            SDL_SetRenderDrawBlendMode(renderer_,
                                       color.a == 255 ? SDL_BLENDMODE_NONE : SDL_BLENDMODE_BLEND);
            SDL_SetRenderDrawColor(renderer_, color.r, color.g, color.b, color.a);
            SDL_RenderFillRectF(renderer_, &target);
            return;
        }
        const auto texel = [](float part, int size) {
            return static_cast<int>(part * static_cast<float>(size) + 0.5f);
        };
        const SDL_Rect source{texel(low.uv.x, texture_width_), texel(low.uv.y, texture_height_),
                              texel(high.uv.x - low.uv.x, texture_width_),
                              texel(high.uv.y - low.uv.y, texture_height_)};
        SDL_SetTextureColorMod(texture_, color.r, color.g, color.b);
        SDL_SetTextureAlphaMod(texture_, color.a);
        SDL_RenderCopyF(renderer_, texture_, &source, &target);
    }

    void draw_triangles(unsigned from, unsigned to) const {
        if (from == to) return;
        const int stride = sizeof(ImDrawVert);
        // Left over from a glyph, these would tint the vertices' own colours.
        SDL_SetTextureColorMod(texture_, 255, 255, 255);
        SDL_SetTextureAlphaMod(texture_, 255);
        SDL_RenderGeometryRaw(renderer_, texture_, &vertices_->pos.x, stride,
                              reinterpret_cast<const SDL_Color *>(&vertices_->col), stride,
                              &vertices_->uv.x, stride,
                              list_.VtxBuffer.Size - static_cast<int>(command_.VtxOffset),
                              indices_ + from, static_cast<int>(to - from), sizeof(ImDrawIdx));
    }

    SDL_Renderer *renderer_;
    const ImDrawList &list_;
    const ImDrawCmd &command_;
    SDL_Texture *texture_;
    const ImDrawVert *vertices_;
    const ImDrawIdx *indices_;
    int texture_width_ = 0, texture_height_ = 0;
};

void draw_command(SDL_Renderer *renderer, const ImDrawList &list, const ImDrawCmd &command) {
    const ImVec4 &clip = command.ClipRect;
    const SDL_Rect area{static_cast<int>(clip.x), static_cast<int>(clip.y),
                        static_cast<int>(clip.z - clip.x), static_cast<int>(clip.w - clip.y)};
    if (area.w <= 0 || area.h <= 0) return;
    SDL_RenderSetClipRect(renderer, &area);
    CommandDrawer(renderer, list, command).draw();
}

}  // namespace

SDL_Texture *make_font_texture(SDL_Renderer *renderer) {
    ImFontAtlas &fonts = *ImGui::GetIO().Fonts;
    unsigned char *pixels = nullptr;
    int width = 0;
    int height = 0;
    fonts.GetTexDataAsRGBA32(&pixels, &width, &height);
    SDL_Texture *texture = SDL_CreateTexture(renderer, SDL_PIXELFORMAT_RGBA32,
                                             SDL_TEXTUREACCESS_STATIC, width, height);
    if (texture == nullptr) return nullptr;
    SDL_UpdateTexture(texture, nullptr, pixels, width * 4);
    SDL_SetTextureBlendMode(texture, SDL_BLENDMODE_BLEND);
    fonts.SetTexID(texture);
    return texture;
}

void draw_imgui(SDL_Renderer *renderer, const ImDrawData &data) {
    for (int i = 0; i < data.CmdListsCount; ++i) {
        const ImDrawList &list = *data.CmdLists[i];
        for (const ImDrawCmd &command : list.CmdBuffer) {
            if (command.UserCallback == nullptr) draw_command(renderer, list, command);
        }
    }
    SDL_RenderSetClipRect(renderer, nullptr);
}

}  // namespace stage_view

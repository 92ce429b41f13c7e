#include "kestrel-stage/window/style.h"

#include <imgui.h>

#include <filesystem>

namespace stage_view {
namespace {

constexpr float kFontPixels = 16;

/// Where Debian's fonts-liberation and fonts-dejavu-core keep their files.
constexpr const char *kFonts[] = {
    "/usr/share/fonts/truetype/liberation/LiberationSans-Regular.ttf",
    "/usr/share/fonts/truetype/liberation2/LiberationSans-Regular.ttf",
    "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf",
};

ImVec4 grey(float level, float alpha = 1) {
    return {level, level, level, alpha};
}

void load_font() {
    ImFontAtlas &fonts = *ImGui::GetIO().Fonts;
    for (const char *file : kFonts) {
        if (!std::filesystem::exists(file)) continue;
        ImFontConfig config;
        config.OversampleH = 1;
        config.PixelSnapH = true;
        if (fonts.AddFontFromFileTTF(file, kFontPixels, &config) != nullptr) return;
    }
    fonts.AddFontDefault();
}

struct ColorOf {
    ImGuiCol_ what;
    ImVec4 color;
};

void put_colors(ImGuiStyle &style) {
    const ImVec4 accent{0.29f, 0.49f, 0.71f, 1};
    const ImVec4 light_accent{0.38f, 0.60f, 0.83f, 1};
    const ColorOf colors[] = {
        {ImGuiCol_Text, grey(0.86f)},
        {ImGuiCol_TextDisabled, grey(0.46f)},
        {ImGuiCol_WindowBg, grey(0.155f)},
        {ImGuiCol_ChildBg, grey(0.155f)},
        {ImGuiCol_PopupBg, grey(0.125f)},
        {ImGuiCol_Border, grey(0.28f)},
        {ImGuiCol_FrameBg, grey(0.235f)},
        {ImGuiCol_FrameBgHovered, grey(0.29f)},
        {ImGuiCol_FrameBgActive, grey(0.31f)},
        {ImGuiCol_MenuBarBg, grey(0.20f)},
        {ImGuiCol_TitleBg, grey(0.20f)},
        {ImGuiCol_TitleBgActive, grey(0.24f)},
        {ImGuiCol_Button, grey(0.26f)},
        {ImGuiCol_ButtonHovered, grey(0.33f)},
        {ImGuiCol_ButtonActive, accent},
        {ImGuiCol_Header, grey(0.22f)},
        {ImGuiCol_HeaderHovered, grey(0.29f)},
        {ImGuiCol_HeaderActive, grey(0.33f)},
        {ImGuiCol_SliderGrab, accent},
        {ImGuiCol_SliderGrabActive, light_accent},
        {ImGuiCol_CheckMark, light_accent},
        {ImGuiCol_Separator, grey(0.30f)},
        {ImGuiCol_ScrollbarBg, grey(0.13f)},
        {ImGuiCol_ScrollbarGrab, grey(0.33f)},
        {ImGuiCol_ModalWindowDimBg, grey(0, 0.45f)},
        {ImGuiCol_TextSelectedBg, {0.29f, 0.49f, 0.71f, 0.55f}},
    };
    for (const ColorOf &entry : colors) style.Colors[entry.what] = entry.color;
}

}  // namespace

void apply_style() {
    load_font();
    ImGui::StyleColorsDark();
    ImGuiStyle &style = ImGui::GetStyle();
    put_colors(style);
    style.WindowPadding = {10, 8};
    style.FramePadding = {7, 3};
    style.ItemSpacing = {8, 4};
    style.ScrollbarSize = 13;
    style.GrabMinSize = 9;
    style.WindowBorderSize = 0;
    style.PopupBorderSize = 1;
    // Squares and whole pixels only: a software renderer draws those by copying.
    style.AntiAliasedLines = false;
    style.AntiAliasedFill = false;
}

}  // namespace stage_view

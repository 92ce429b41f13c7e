// Font and colours of the window.
#pragma once

namespace stage_view {

/// Neutral greys, so that nothing beside the picture tints the eye. Call with an ImGui context and
/// before its font texture is made.
void apply_style();

}  // namespace stage_view

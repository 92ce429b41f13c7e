// A picture of the window in front, for people.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "stage/play/session_player.h"

namespace stage {

/// Makes a picture of the window in front. With `folder` it is written there as NAME.png, whole or
/// not at all. Natively the picture shows what the effect drew; elsewhere NAME.txt lists it, a
/// primitive a line. Throws PictureError. [host thread]
void take_shot(Desk &desk, const std::optional<std::filesystem::path> &folder,
               const std::string &name);

}  // namespace stage

#include "stage/play/session_shot.h"

#include "stage/desk/viewer/window_picture.h"
#include "stage/image/codecs/picture_io.h"
#include "stage/image/replacement_file.h"
#include "stage/text/utf8_path.h"

namespace stage {
namespace {

Picture picture_of(const ViewImage &image) {
    Picture picture = make_picture(image.width, image.height, SampleType::U8);
    for (std::size_t i = 0; i < image.pixels.size(); ++i) {
        for (std::size_t c = 0; c < 4; ++c) {
            const std::uint32_t code = image.pixels[i] >> (24 - 8 * c) & 0xFF;
            picture.argb[i * 4 + c] = static_cast<float>(code) / 255.0f;
        }
    }
    return picture;
}

#ifdef _WIN32

/// The window with the frame alone.
ViewImage window_of(Desk &desk) {
    return frame_in_window(desk.view().image, desk.source_width(), desk.source_height(),
                           desk.viewport());
}

void write_overlay(Desk &desk, const std::filesystem::path &file) {
    write_whole_file(file, to_text(desk.window_overlay()));
}

#else

ViewImage window_of(Desk &desk) {
    return window_picture(desk.view().image, desk.source_width(), desk.source_height(),
                          desk.viewport(), desk.window_overlay(), desk.session().overlay_theme());
}

/// The overlay is in the picture.
void write_overlay(Desk &, const std::filesystem::path &) {}

#endif

}  // namespace

void take_shot(Desk &desk, const std::optional<std::filesystem::path> &folder,
               const std::string &name) {
    const Picture picture = picture_of(window_of(desk));
    if (!folder) return;
    write_picture(*folder / path_from_utf8(name + ".png"), picture, Depth::U8);
    write_overlay(desk, *folder / path_from_utf8(name + ".txt"));
}

}  // namespace stage

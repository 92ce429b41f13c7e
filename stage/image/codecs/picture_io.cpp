#include "stage/image/codecs/picture_io.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <new>
#include <string>
#include <system_error>

#include "stage/image/codecs/file_end.h"
#include "stage/image/codecs/netpbm.h"
#include "stage/image/codecs/picture_backend.h"
#include "stage/image/frame_pattern.h"
#include "stage/image/replacement_file.h"

namespace stage {
namespace {

namespace fs = std::filesystem;

// Runs `f` and puts the file name before the reason of an error.
template <typename F>
auto naming(const fs::path &path, F f) {
    try {
        return f();
    } catch (const std::bad_alloc &) {
        throw PictureError(path.string() + ": there is not enough memory for the picture");
    } catch (const PictureError &error) {
        throw PictureError(path.string() + ": " + error.what());
    }
}

void check_readable(const fs::path &path) {
    std::error_code error;
    const auto status = fs::status(path, error);
    if (!fs::exists(status)) {
        throw PictureError("cannot be read: " + error.message());
    }
    if (fs::is_directory(status)) throw PictureError("cannot be read: it is a folder");
}

std::string read_bytes(const fs::path &path) {
    std::ifstream in(path, std::ios::binary);
    std::string bytes{std::istreambuf_iterator<char>(in), {}};
    if (!in) throw PictureError("cannot be read");
    return bytes;
}

// The first bytes of a file, enough to tell its format.
std::string read_start(const fs::path &path) {
    std::ifstream in(path, std::ios::binary);
    std::string bytes(8, '\0');
    in.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(in.gcount()));
    return bytes;
}

bool is_netpbm(const fs::path &path) {
    return find_format(netpbm::formats(), extension_of(path)) != nullptr;
}

// Reads a file that is known to be a still.
Picture read_still(const fs::path &path) {
    return naming(path, [&] {
        check_readable(path);
        if (is_netpbm(path)) return netpbm::decode(read_bytes(path));
        if (may_be_cut_off(read_start(path)) && cut_off(read_bytes(path))) {
            throw PictureError("cannot be read: the file is cut off");
        }
        return backend::read(path);
    });
}

class StillSource final : public PictureSource {
  public:
    explicit StillSource(Picture picture) : picture_(std::move(picture)) {}
    bool still() const override { return true; }
    int first_frame() const override { return 0; }
    int frame_count() const override { return 1; }
    std::optional<FrameRate> frame_rate() const override { return std::nullopt; }
    Picture read(int) override { return picture_; }

  private:
    Picture picture_;
};

class SequenceSource final : public PictureSource {
  public:
    SequenceSource(const fs::path &path, FramePattern pattern) : pattern_(std::move(pattern)) {
        const fs::path folder = pattern_.folder().empty() ? fs::path(".") : pattern_.folder();
        std::error_code error;
        for (fs::directory_iterator it(folder, error), end; it != end; it.increment(error)) {
            if (const auto number = pattern_.number_in(it->path().filename().string())) {
                first_ = found_ ? std::min(first_, *number) : *number;
                last_ = found_ ? std::max(last_, *number) : *number;
                found_ = true;
            }
        }
        if (error) throw PictureError(path.string() + ": cannot be read: " + error.message());
        if (!found_) throw PictureError(path.string() + ": there is no file of this sequence");
    }
    bool still() const override { return false; }
    int first_frame() const override { return first_; }
    int frame_count() const override { return last_ - first_ + 1; }
    std::optional<FrameRate> frame_rate() const override { return std::nullopt; }
    Picture read(int frame) override {
        if (frame < 0) {
            throw PictureError(pattern_.file(first_).string() + ": the sequence has no frame " +
                               std::to_string(frame));
        }
        return read_still(pattern_.file(frame));
    }

  private:
    FramePattern pattern_;
    bool found_ = false;
    int first_ = 0;
    int last_ = 0;
};

// Puts the file name before the errors of a video source.
class NamedSource final : public PictureSource {
  public:
    NamedSource(fs::path path, std::unique_ptr<PictureSource> source)
        : path_(std::move(path)), source_(std::move(source)) {}
    bool still() const override { return source_->still(); }
    int first_frame() const override { return source_->first_frame(); }
    int frame_count() const override { return source_->frame_count(); }
    std::optional<FrameRate> frame_rate() const override { return source_->frame_rate(); }
    Picture read(int frame) override {
        return naming(path_, [&] { return source_->read(frame); });
    }

  private:
    fs::path path_;
    std::unique_ptr<PictureSource> source_;
};

struct FormatChoice {
    const PictureFormat *format;
    bool netpbm;
};

FormatChoice choose_format(const fs::path &path) {
    const std::string extension = extension_of(path);
    if (const auto *row = find_format(netpbm::formats(), extension)) return {row, true};
    if (const auto *row = find_format(backend::formats(), extension)) return {row, false};
    throw PictureError("pictures are not written as \"" + path.extension().string() +
                       "\": choose one of " + writable_extensions());
}

std::string encode_netpbm(const Picture &picture, SampleType stored) {
    switch (stored) {
        case SampleType::U8:
            return netpbm::encode_pam(picture, kWhite8);
        case SampleType::U16:
            return netpbm::encode_pam(picture,
                                      picture.native == SampleType::HostU16 ? kWhite16 : 65535);
        default:
            return netpbm::encode_pfm(picture);
    }
}

std::string encode(const Picture &picture, const FormatChoice &choice, Depth depth) {
    const SampleType stored = choice.format->stored(depth);
    if (choice.netpbm) return encode_netpbm(picture, stored);
    if (choice.format->alpha != AlphaStorage::Premultiplied) {
        return backend::encode(picture, *choice.format, stored);
    }
    Picture premultiplied = picture;
    premultiply(premultiplied);
    return backend::encode(premultiplied, *choice.format, stored);
}

}  // namespace

std::unique_ptr<PictureSource> open_pictures(const fs::path &path) {
    if (auto pattern = FramePattern::parse(path)) {
        return std::make_unique<SequenceSource>(path, std::move(*pattern));
    }
    auto video = naming(path, [&] {
        check_readable(path);
        return is_netpbm(path) ? nullptr : backend::open_video(path);
    });
    if (video) return std::make_unique<NamedSource>(path, std::move(video));
    return std::make_unique<StillSource>(read_still(path));
}

Picture read_picture(const fs::path &path, int frame) {
    return open_pictures(path)->read(frame);
}

void write_picture(const fs::path &path, const Picture &picture, Depth depth) {
    const std::string bytes = naming(path, [&] {
        check_picture(picture);
        return encode(picture, choose_format(path), depth);
    });
    write_whole_file(path, bytes);
}

std::string writable_extensions() {
    return list_extensions(backend::formats(), netpbm::formats());
}

}  // namespace stage

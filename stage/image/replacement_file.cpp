#include "stage/image/replacement_file.h"

#include <cerrno>
#include <fstream>
#include <random>
#include <string>
#include <system_error>

#include "stage/image/picture.h"

namespace stage {
namespace {

namespace fs = std::filesystem;

// Two writers that draw the same one of 2^32 names at the same time do not occur.
fs::path unused_name_beside(const fs::path &path) {
    std::random_device random;
    fs::path candidate;
    std::error_code ignored;
    do {
        candidate = path;
        candidate.replace_filename("." + path.stem().string() + "." + std::to_string(random()) +
                                   ".part" + path.extension().string());
    } while (fs::exists(candidate, ignored));
    return candidate;
}

[[noreturn]] void fail(const fs::path &path, const std::string &reason) {
    throw PictureError(path.string() + ": " + reason);
}

}  // namespace

ReplacementFile::ReplacementFile(fs::path final_path) : final_(std::move(final_path)) {
    if (!final_.has_filename()) fail(final_, "cannot be written: the name of a file is missing");
    temporary_ = unused_name_beside(final_);
    errno = 0;
    if (!std::ofstream(temporary_, std::ios::binary)) {
        fail(final_, "cannot be written: " + std::generic_category().message(errno));
    }
}

ReplacementFile::~ReplacementFile() {
    std::error_code ignored;
    if (!committed_) fs::remove(temporary_, ignored);
}

void ReplacementFile::commit() {
    std::error_code error;
    fs::rename(temporary_, final_, error);
    if (error) fail(final_, "cannot be written: " + error.message());
    committed_ = true;
}

void write_whole_file(const fs::path &path, std::string_view bytes) {
    ReplacementFile file(path);
    std::ofstream out(file.temporary(), std::ios::binary);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out.close();
    if (!out) fail(path, "cannot be written: the device is full or failed");
    file.commit();
}

}  // namespace stage

// Files that are written whole or not at all.
#pragma once

#include <filesystem>
#include <string_view>

namespace stage {

// A file being written beside the one that it will replace. Write to temporary(), close it, then
// commit(). Without a commit the temporary file is removed and an older file at the final place
// stays as it was.
class ReplacementFile {
  public:
    // Chooses an unused name in the folder of `final_path`, with the same extension, and creates
    // the empty file. Throws PictureError "FINAL: reason" when that is not possible.
    explicit ReplacementFile(std::filesystem::path final_path);
    ~ReplacementFile();
    ReplacementFile(const ReplacementFile &) = delete;
    ReplacementFile &operator=(const ReplacementFile &) = delete;

    const std::filesystem::path &temporary() const { return temporary_; }

    // Puts the file into its final place in one step, replacing a file there. Throws PictureError.
    void commit();

  private:
    std::filesystem::path final_;
    std::filesystem::path temporary_;
    bool committed_ = false;
};

// Writes `bytes` as a whole file through a ReplacementFile. Throws PictureError "PATH: reason".
void write_whole_file(const std::filesystem::path &path, std::string_view bytes);

}  // namespace stage

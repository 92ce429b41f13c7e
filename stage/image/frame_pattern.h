// File names of numbered sequences, such as "shot.%04d.exr".
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace stage {

// A file name with one frame number in it. Only the last component of a path is looked at.
class FramePattern {
  public:
    // Reads %d or %0Nd (N from 1 to 9), as printf writes a number; "%%" stands for "%". Nothing
    // when the name holds no number: it is then an ordinary file. Throws PictureError when it holds
    // two, or a "%" of any other kind beside the number.
    static std::optional<FramePattern> parse(const std::filesystem::path &path);

    // The file of frame `number`, which must not be negative.
    std::filesystem::path file(int number) const;

    // The number in `name`, a file name without folder, when file() gives that name for it.
    std::optional<int> number_in(const std::string &name) const;

    // The folder of the files; empty when the pattern names none.
    const std::filesystem::path &folder() const { return folder_; }

  private:
    std::string name_of(int number) const;

    std::filesystem::path folder_;
    std::string before_;
    std::string after_;
    int digits_ = 0;  // least number of digits, 0 for as many as the number has
};

// The file to write frame `number` to: the pattern's file, or `path` itself when it is no pattern.
std::filesystem::path frame_file(const std::filesystem::path &path, int number);

}  // namespace stage

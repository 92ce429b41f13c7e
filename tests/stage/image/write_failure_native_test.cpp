// A device that fills up while a picture is being written.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>

#include "stage/image/charts/charts.h"
#include "stage/image/codecs/picture_io.h"
#include "stage/image/scratch.h"

namespace stage::test {
namespace {

// While it lives no file of this process grows beyond `bytes`.
class FileSizeLimit {
  public:
    explicit FileSizeLimit(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &before_);
        rlimit limit = before_;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }

  private:
    rlimit before_{};
    void (*handler_)(int);
};

class WriteFailure : public ScratchTest, public ::testing::WithParamInterface<const char *> {};

TEST_P(WriteFailure, a_full_device_leaves_the_older_file_and_nothing_else) {
    const fs::path path = file(GetParam());
    write_bytes(path, "the older file");
    const Picture chart = draw_chart("test-card", 640, 360);
    std::string message;
    for (const rlim_t limit : {0, 100, 5000}) {
        {
            const FileSizeLimit full(limit);
            message = error_of([&] { write_picture(path, chart, Depth::U8); });
        }
        EXPECT_TRUE(message.starts_with(path.string() + ": cannot be written")) << message;
        EXPECT_EQ(bytes_of(path), "the older file");
        EXPECT_EQ(files_in_folder(), 1u);
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, WriteFailure,
                         ::testing::Values("a.png", "a.tif", "a.dpx", "a.jpg", "a.exr", "a.hdr",
                                           "a.pam", "a.pfm"),
                         [](const auto &row) { return std::string(row.param).substr(2); });

}  // namespace
}  // namespace stage::test

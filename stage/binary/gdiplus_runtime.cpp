#include "stage/binary/gdiplus_runtime.h"

#include <array>
#include <cstdint>
#include <mutex>

#include "stage/binary/loaded_library.h"

// For the sanitizers in every program that starts GDI+. libgdiplus sets text with Pango, which
// looks for fonts on a thread of its own and keeps them as long as the process lives. fontconfig
// stores offsets where others store pointers, so that the leak check takes its part of them for
// lost; and what that thread hands over is guarded by locks inside libraries that the race check
// cannot see into. Left out is what fontconfig itself allocates, and nothing else: GDI+ objects
// that an effect forgets are still found.
#if defined(__SANITIZE_ADDRESS__) && !defined(_WIN32)
extern "C" [[gnu::visibility("default")]] const char *__lsan_default_suppressions() {
    return "leak:libfontconfig.so\n";
}
extern "C" [[gnu::visibility("default")]] const char *__lsan_default_options() {
    return "print_suppressions=0";
}
#elif defined(__SANITIZE_THREAD__) && !defined(_WIN32)
extern "C" [[gnu::visibility("default")]] const char *__tsan_default_suppressions() {
    return "race:libfontconfig.so\n";
}
extern "C" [[gnu::visibility("default")]] const char *__tsan_default_options() {
    return "print_suppressions=0";
}
#endif

namespace stage {
namespace {

#ifdef _WIN32
constexpr std::array<const char *, 1> kLibraryNames = {"gdiplus.dll"};
constexpr bool kShutsDown = true;
#else
constexpr std::array<const char *, 2> kLibraryNames = {"libgdiplus.so.0", "libgdiplus.so"};
constexpr bool kShutsDown = false;  // see the class
#endif

// Declarations of the flat interface, as its public reference gives them.
struct GdiplusStartupInput {
    std::uint32_t version;  // 1
    void *debug_event_callback;
    std::int32_t suppress_background_thread;
    std::int32_t suppress_external_codecs;
};

using StartupFunction = int(std::uintptr_t *token, const GdiplusStartupInput *input, void *output);
using ShutdownFunction = void(std::uintptr_t token);

struct Library {
    LoadedLibrary file;
    StartupFunction *startup;
    ShutdownFunction *shutdown;

    explicit Library(const char *name)
        : file(name),
          startup(file.function<StartupFunction>("GdiplusStartup")),
          shutdown(file.function<ShutdownFunction>("GdiplusShutdown")) {}
};

// The library, opened once; null with a reason when there is none. Never closed.
const Library *library(std::string &reason) {
    static std::string failure;
    static const Library *const opened = [] {
        for (const char *name : kLibraryNames) {
            try {
                return new Library(name);
            } catch (const LibraryError &error) {
                if (failure.empty()) failure = error.what();
            }
        }
        return static_cast<Library *>(nullptr);
    }();
    if (!opened) reason = "GDI+ is not available: " + failure;
    return opened;
}

// The process's one start of GDI+.
struct Start {
    std::mutex mutex;
    bool running = false;
    int users = 0;  // runtimes alive, while running
    std::uintptr_t token = 0;
};

Start &the_start() {
    static Start start;
    return start;
}

}  // namespace

GdiplusRuntime::GdiplusRuntime() {
    const Library *const gdiplus = library(reason_);
    if (!gdiplus) return;
    Start &start = the_start();
    const std::lock_guard lock(start.mutex);
    if (!start.running) {
        const GdiplusStartupInput input = {1, nullptr, 0, 0};
        const int status = gdiplus->startup(&start.token, &input, nullptr);
        if (status != 0) {
            reason_ = "GDI+ does not start: status " + std::to_string(status);
            return;
        }
        start.running = true;
    }
    ++start.users;
    started_ = true;
}

GdiplusRuntime::~GdiplusRuntime() {
    if (!started_) return;
    Start &start = the_start();
    const std::lock_guard lock(start.mutex);
    if (--start.users > 0 || !kShutsDown) return;
    std::string ignored;
    library(ignored)->shutdown(start.token);
    start.running = false;
}

}  // namespace stage

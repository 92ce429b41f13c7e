#include <cstdlib>
#include <cstring>

#include "stage/script/script_run.h"

namespace stage {
namespace {

/// In front of each block: its size, in as many bytes as keep the block aligned.
constexpr std::size_t kHeader = alignof(std::max_align_t);
static_assert(kHeader >= sizeof(std::size_t));

/// The clock is read once for so many allocations.
constexpr unsigned kClockStride = 64;

std::size_t size_of(const void *block) {
    std::size_t size = 0;
    std::memcpy(&size, static_cast<const char *>(block) - kHeader, sizeof size);
    return size;
}

/// Whether the run may hold `wanted` more bytes now.
bool permitted(ScriptRun &run, std::size_t wanted) {
    if (run.out_of_time) return false;
    if (++run.allocations % kClockStride == 0 && run.late()) return false;
    if (wanted > run.options.memory_limit - run.used) {
        run.out_of_memory = true;
        return false;
    }
    return true;
}

void *with_header(void *raw, std::size_t size) {
    std::memcpy(raw, &size, sizeof size);
    return static_cast<char *>(raw) + kHeader;
}

}  // namespace

bool ScriptRun::late() {
    out_of_time = out_of_time || std::chrono::steady_clock::now() >= deadline;
    return out_of_time;
}

void *script_allocate(void *user, std::size_t size) {
    auto &run = *static_cast<ScriptRun *>(user);
    if (size == 0 || !permitted(run, size)) return nullptr;
    void *raw = std::malloc(size + kHeader);
    if (raw == nullptr) return nullptr;
    run.used += size;
    return with_header(raw, size);
}

void *script_reallocate(void *user, void *block, std::size_t size) {
    if (block == nullptr) return script_allocate(user, size);
    if (size == 0) {
        script_free(user, block);
        return nullptr;
    }
    auto &run = *static_cast<ScriptRun *>(user);
    const std::size_t old = size_of(block);
    if (size > old && !permitted(run, size - old)) return nullptr;
    void *raw = std::realloc(static_cast<char *>(block) - kHeader, size + kHeader);
    if (raw == nullptr) return nullptr;
    run.used = run.used - old + size;
    return with_header(raw, size);
}

void script_free(void *user, void *block) {
    if (block == nullptr) return;
    static_cast<ScriptRun *>(user)->used -= size_of(block);
    std::free(static_cast<char *>(block) - kHeader);
}

}  // namespace stage

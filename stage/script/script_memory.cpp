#include <cstdlib>
#include <cstring>

#include "stage/script/session.h"

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

/// Whether the session may hold `wanted` more bytes now.
bool permitted(ScriptSession &session, std::size_t wanted) {
    if (session.out_of_time) return false;
    if (++session.allocations % kClockStride == 0 && session.late()) return false;
    if (wanted > session.options.memory_limit - session.used) {
        session.out_of_memory = true;
        return false;
    }
    return true;
}

void *with_header(void *raw, std::size_t size) {
    std::memcpy(raw, &size, sizeof size);
    return static_cast<char *>(raw) + kHeader;
}

}  // namespace

bool ScriptSession::late() {
    out_of_time = out_of_time || std::chrono::steady_clock::now() >= deadline;
    return out_of_time;
}

void *script_allocate(void *user, std::size_t size) {
    auto &session = *static_cast<ScriptSession *>(user);
    if (size == 0 || !permitted(session, size)) return nullptr;
    void *raw = std::malloc(size + kHeader);
    if (raw == nullptr) return nullptr;
    session.used += size;
    return with_header(raw, size);
}

void *script_reallocate(void *user, void *block, std::size_t size) {
    if (block == nullptr) return script_allocate(user, size);
    if (size == 0) {
        script_free(user, block);
        return nullptr;
    }
    auto &session = *static_cast<ScriptSession *>(user);
    const std::size_t old = size_of(block);
    if (size > old && !permitted(session, size - old)) return nullptr;
    void *raw = std::realloc(static_cast<char *>(block) - kHeader, size + kHeader);
    if (raw == nullptr) return nullptr;
    session.used = session.used - old + size;
    return with_header(raw, size);
}

void script_free(void *user, void *block) {
    if (block == nullptr) return;
    static_cast<ScriptSession *>(user)->used -= size_of(block);
    std::free(static_cast<char *>(block) - kHeader);
}

}  // namespace stage

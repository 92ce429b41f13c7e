#include "stage/services/failing_memory.h"

#include <cstdlib>
#include <new>

namespace {

thread_local int t_until_failure = 0;
thread_local bool t_failed = false;

bool fails_now() {
    if (t_until_failure == 0 || --t_until_failure > 0) return false;
    return t_failed = true;
}

}  // namespace

namespace stage_test {

void fail_allocation(int nth) {
    t_until_failure = nth;
    t_failed = false;
}

bool allocation_failed() {
    return t_failed;
}

}  // namespace stage_test

void *operator new(std::size_t size) {
    void *block = fails_now() ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (block == nullptr) throw std::bad_alloc();
    return block;
}
void operator delete(void *block) noexcept {
    std::free(block);
}
void operator delete(void *block, std::size_t) noexcept {
    std::free(block);
}

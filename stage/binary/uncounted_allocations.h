// For calls into fontconfig by way of libgdiplus, in builds with the address sanitizer.
#pragma once

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#endif

namespace stage {

// While one lives, what its thread allocates is not counted as leaked. fontconfig keeps offsets
// where others keep pointers, so the leak check takes its process-wide store of fonts for lost.
// Put around single calls into that library only, never around a call into an effect: leaks of the
// effect's own must show.
class UncountedAllocations {
  public:
    UncountedAllocations() = default;
    ~UncountedAllocations() {}
    UncountedAllocations(const UncountedAllocations &) = delete;
    UncountedAllocations &operator=(const UncountedAllocations &) = delete;

#if defined(__SANITIZE_ADDRESS__)
  private:
    __lsan::ScopedDisabler disabler_;
#endif
};

}  // namespace stage

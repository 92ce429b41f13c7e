// GDI+ for the process: the host starts it, effects that draw with it only use it.
#pragma once

#include <string>

namespace stage {

// Keeps GDI+ started from construction to destruction. Where the system has no GDI+ (gdiplus.dll on
// Windows, libgdiplus natively) or it does not start, nothing is thrown: drawing calls then fail by
// themselves, and available() and reason() tell the user why. The library stays loaded until the
// process ends, since effects may hold addresses in it. Must outlive the last call into an effect.
// Several may live at once, on any threads: the process starts GDI+ with the first, since not every
// implementation counts its starts. On Windows the last one shuts it down. Natively GDI+ then stays
// started until the process ends: the shut-down of libgdiplus also closes fontconfig, which now and
// then aborts the process when text has been drawn, because Pango still holds fonts.
class GdiplusRuntime {
  public:
    GdiplusRuntime();
    ~GdiplusRuntime();
    GdiplusRuntime(const GdiplusRuntime &) = delete;
    GdiplusRuntime &operator=(const GdiplusRuntime &) = delete;

    bool available() const { return started_; }

    // Why GDI+ is not available, one line; empty when it is.
    const std::string &reason() const { return reason_; }

  private:
    bool started_ = false;
    std::string reason_;
};

}  // namespace stage

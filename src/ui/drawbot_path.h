// A Drawbot path for the length of one painting.
#pragma once

#include "host/suite_access.h"

namespace ks {

/// Raised when a path cannot be released. Never leaves the draw event.
struct DRAWBOT_Exception {
    SPErr error;
};

/// A new path of the supplier, released once whatever happens. [host thread]
class DrawbotPath {
  public:
    /// Makes the path; error() tells how that went.
    DrawbotPath(const DrawbotSuites &suites, DRAWBOT_SupplierRef supplier);
    /// Releases the path if release() was not called; never throws.
    ~DrawbotPath();
    DrawbotPath(const DrawbotPath &) = delete;
    DrawbotPath &operator=(const DrawbotPath &) = delete;

    /// The supplier's error; 516 when it made no path without saying why.
    [[nodiscard]] SPErr error() const { return error_; }
    /// Null when there is an error.
    [[nodiscard]] DRAWBOT_PathRef get() const { return path_; }

    /// Releases the path; throws DRAWBOT_Exception when the supplier refuses.
    void release();

  private:
    SPErr give_back();

    const DrawbotSuites &suites_;
    DRAWBOT_PathRef path_ = nullptr;
    SPErr error_;
};

}  // namespace ks

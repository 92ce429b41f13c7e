// Strict mode: what a plug-in must not do, noticed and written down.
#pragma once

#include <cstddef>
#include <mutex>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace stage {

/// A rule that was broken.
struct Finding {
    std::string check;    ///< identifier of the check, for example "leak.handle"
    std::string command;  ///< command during which it was noticed
    std::string text;     ///< what was seen, one line
    bool known = false;   ///< listed among the known departures
};

/// A departure from host practice that this plug-in makes on purpose.
struct KnownDeparture {
    const char *check;     ///< identifier of the check
    const char *command;   ///< command during which it is expected, "" for any
    const char *contains;  ///< text that the finding must contain, "" for any
    const char *reason;    ///< why it stays
};

/// The table of known departures with the reason of each.
std::span<const KnownDeparture> known_departures();

/// Collects findings. On by default. Thread-safe.
class Strict {
  public:
    /// Known departures beyond this many are not kept: they come with every event, for hours.
    static constexpr std::size_t kMaxKnown = 10000;

    bool enabled = true;

    void report(std::string_view check, std::string_view command, std::string text);
    /// Findings that are no known departure.
    std::vector<Finding> violations() const;
    std::vector<Finding> all() const;
    void clear();

  private:
    mutable std::mutex mutex_;
    std::vector<Finding> findings_;
    std::vector<Finding> violations_;
    std::size_t known_count_ = 0;
};

}  // namespace stage

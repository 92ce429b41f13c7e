// The basic suite: suites by name and number, counted.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "hostapi/base.h"

namespace stage {

/// Every suite that this host offers. Names are case-sensitive; numbers must match exactly.
class SuiteRegistry {
  public:
    using Key = std::pair<std::string, std::int32_t>;

    /// `table` must outlive the registry.
    void add(const char *name, std::int32_t number, const void *table);
    /// Makes the host refuse this suite, as an older release would. Null-table refusal hands back
    /// error 0 with a null table.
    void refuse(const std::string &name, std::int32_t number, bool with_null_table = false);
    void accept_all();

    /// Counted per (name, number). Null when unknown or refused.
    const void *acquire(const std::string &name, std::int32_t number, bool *refused_as_null);
    /// False when it was not acquired.
    bool release(const std::string &name, std::int32_t number);

    /// Suites acquired more often than released (positive) or the reverse (negative).
    std::map<Key, int> imbalance() const;
    void clear_counts();
    /// Whether an acquisition has failed since the counts were cleared.
    bool any_refused() const { return any_refused_; }
    void note_refusal() { any_refused_ = true; }
    std::vector<Key> offered() const;

    /// The table handed to plug-ins as pica_basicP.
    SPBasicSuite *basic() { return &basic_; }

    SuiteRegistry();

  private:
    SPBasicSuite basic_{};
    std::map<Key, const void *> tables_;
    std::map<Key, bool> refused_;
    std::map<Key, int> counts_;
    bool any_refused_ = false;
};

}  // namespace stage

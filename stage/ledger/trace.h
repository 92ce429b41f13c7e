// A readable log of every call between host and plug-in.
#pragma once

#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace stage {

/// One line of the log.
struct TraceEntry {
    std::uint64_t number;  ///< 1, 2, 3 ... over the life of the log
    std::string command;   ///< PF_Cmd during which the call was made; "" outside any
    std::string call;  ///< "PF Handle Suite.host_new_handle", "inter.add_param", "> PF_Cmd_ABOUT"
    std::string arguments;  ///< readable, may be empty
    std::string result;     ///< readable, may be empty
};

/// Off by default: nothing is formatted then. Thread-safe.
class Trace {
  public:
    void enable(bool on) { enabled_ = on; }
    bool enabled() const { return enabled_; }
    /// Also hands each entry to `sink` as it is written; entries are kept anyway.
    void set_sink(std::function<void(const TraceEntry &)> sink) { sink_ = std::move(sink); }
    void set_command(std::string command) { command_ = std::move(command); }
    const std::string &command() const { return command_; }

    void record(std::string call, std::string arguments, std::string result);
    const std::vector<TraceEntry> &entries() const { return entries_; }
    /// The `call` column alone, in order: what tests of call order compare.
    std::vector<std::string> calls() const;
    void clear();

    /// "  12 PF_Cmd_SMART_RENDER  PF World Suite.PF_NewWorld(200x130 argb) -> 0"
    static std::string to_line(const TraceEntry &entry);

  private:
    bool enabled_ = false;
    std::string command_;
    std::mutex mutex_;
    std::uint64_t next_ = 1;
    std::vector<TraceEntry> entries_;
    std::function<void(const TraceEntry &)> sink_;
};

}  // namespace stage

#include "stage/ledger/trace.h"

#include <cstdio>
#include <utility>

namespace stage {

void Trace::record(std::string call, std::string arguments, std::string result) {
    if (!enabled_) return;
    const std::lock_guard lock(mutex_);
    entries_.push_back(
        {next_++, command_, std::move(call), std::move(arguments), std::move(result)});
    if (sink_) sink_(entries_.back());
}

std::vector<std::string> Trace::calls() const {
    std::vector<std::string> names;
    names.reserve(entries_.size());
    for (const TraceEntry &entry : entries_) names.push_back(entry.call);
    return names;
}

void Trace::clear() {
    const std::lock_guard lock(mutex_);
    entries_.clear();
}

std::string Trace::to_line(const TraceEntry &entry) {
    char number[24];
    std::snprintf(number, sizeof number, "%6llu ", static_cast<unsigned long long>(entry.number));
    std::string line = number;
    line += entry.command.empty() ? std::string("-") : entry.command;
    line += "  " + entry.call;
    if (!entry.arguments.empty()) line += "(" + entry.arguments + ")";
    if (!entry.result.empty()) line += " -> " + entry.result;
    return line;
}

}  // namespace stage

#include "whole/support/call_log.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string_view>

namespace ks::flow {
namespace {

std::string slot_of(const std::string &call) {
    return call.substr(call.rfind('.') + 1);
}

// The word behind `before` in `text`, up to a comma or the end.
std::string after(const std::string &text, std::string_view before) {
    const std::size_t at = text.find(before) + before.size();
    return text.substr(at, text.find_first_of(", ", at) - at);
}

std::string first_word(const std::string &text) {
    return text.substr(0, text.find_first_of(", "));
}

std::string placed(const std::string &text) {
    const std::size_t at = text.find("at (");
    return first_word(text) + " " + text.substr(at, text.find(')', at) + 1 - at);
}

std::string digest(const stage::TraceEntry &entry) {
    const std::string slot = slot_of(entry.call);
    const std::string &text = entry.arguments;
    if (slot == "checkout_param") return slot + " " + first_word(text);
    if (slot == "checkout_layer") {
        return slot + " " + after(text, "parameter ") + " as " + after(text, "id ");
    }
    if (slot == "checkout_layer_pixels" || slot == "checkin_layer_pixels") {
        return slot + " " + after(text, "id ");
    }
    if (slot == "PF_NewWorld") return "new_world " + first_word(text);
    if (slot == "PF_DisposeWorld") return "dispose_world";
    if (slot == "transfer_rect") return slot + " " + placed(text);
    if (slot == "add_param" || slot == "AEGP_SetLayerFlag") return slot + " " + text;
    return slot;
}

bool is_of_handles(const std::string &slot) {
    return slot.starts_with("host_") && slot.ends_with("_handle");
}

void append(Calls &calls, const std::string &call, int &run) {
    const auto repeated = [&](int count) { return call + " x" + std::to_string(count); };
    if (!calls.empty() && (calls.back() == call || calls.back() == repeated(run)) &&
        (call == "pow" || call == "strcpy")) {
        calls.back() = repeated(++run);
        return;
    }
    run = 1;
    calls.push_back(call);
}

}  // namespace

Calls calls_of(const std::vector<stage::TraceEntry> &entries, const std::string &command) {
    Calls calls;
    int run = 1;
    for (const stage::TraceEntry &entry : entries) {
        const bool marker = entry.call.starts_with("> ") || entry.call.starts_with("< ");
        if (entry.command != command || marker) continue;
        if (entry.call.starts_with("SPBasicSuite.") || is_of_handles(slot_of(entry.call))) continue;
        append(calls, digest(entry), run);
    }
    return calls;
}

std::vector<std::size_t> handles_made(const std::vector<stage::TraceEntry> &entries,
                                      const std::string &command) {
    std::vector<std::size_t> sizes;
    for (const stage::TraceEntry &entry : entries) {
        if (entry.command != command || slot_of(entry.call) != "host_new_handle") continue;
        sizes.push_back(std::stoull(entry.arguments));
    }
    return sizes;
}

int locked_during(const std::vector<stage::TraceEntry> &entries, const std::string &command,
                  const std::string &slot) {
    int locked = 0, fewest = std::numeric_limits<int>::max();
    for (const stage::TraceEntry &entry : entries) {
        if (entry.command != command) continue;
        const std::string called = slot_of(entry.call);
        locked += called == "host_lock_handle";
        locked -= called == "host_unlock_handle";
        if (called == slot) fewest = std::min(fewest, locked);
    }
    return fewest;
}

std::size_t first_with(const std::vector<stage::TraceEntry> &entries, const std::string &name,
                       const std::string &result) {
    const auto found = std::find_if(entries.begin(), entries.end(), [&](const auto &entry) {
        return entry.call == name && entry.result == result;
    });
    return static_cast<std::size_t>(found - entries.begin());
}

bool is_clean_up(const std::string &call) {
    static constexpr std::array<std::string_view, 12> kSlots{"checkin_param",
                                                             "checkin_layer_pixels",
                                                             "host_unlock_handle",
                                                             "host_dispose_handle",
                                                             "PF_DisposeWorld",
                                                             "ReleaseSuite",
                                                             "sprintf",
                                                             "strcpy",
                                                             "AEGP_FreeMemHandle",
                                                             "AEGP_UnlockMemHandle",
                                                             "AEGP_DisposeStream",
                                                             "AEGP_DisposeEffect"};
    return std::find(kSlots.begin(), kSlots.end(), slot_of(call)) != kSlots.end();
}

}  // namespace ks::flow

#include "stage/strict.h"

#include <algorithm>

namespace stage {
namespace {

// What this plug-in does on purpose although a real host would rather not see it.
constexpr KnownDeparture kDepartures[] = {
    {"in_data.write", "version",
     "GLOBAL_SETUP writes the version pair into the input record; the host never reads it back"},
    {"sequence.unflat_left", "",
     "SEQUENCE_FLATTEN leaves the live record to the host: one small handle per save"},
    {"sequence.flat_left", "",
     "SEQUENCE_RESETUP leaves the flat record to the host: eight bytes per load"},
    {"checkout.id_zero", "", "the input layer is checked out under id 0"},
    {"checkout.left_open", "checkout_output failed",
     "the input layer stays checked out when the output cannot be had; the host takes it back"},
    {"checkin.not_open", "",
     "the original source is checked in whether or not its check-out succeeded"},
    {"aegp.plugin_id", "", "no plug-in id is registered; id 0 is passed everywhere"},
    {"solid.alpha", "", "every frame is declared opaque, also where it is passed through"},
    {"sequence.replaced", "PF_Cmd_USER_CHANGED_PARAM",
     "RESET replaces the sequence record in a command after which a host may not look for it"},
};

}  // namespace

std::span<const KnownDeparture> known_departures() {
    return kDepartures;
}

void Strict::report(std::string_view check, std::string_view command, std::string text) {
    if (!enabled) return;
    const bool known = std::ranges::any_of(kDepartures, [&](const KnownDeparture &departure) {
        return check == departure.check && text.find(departure.contains) != std::string::npos;
    });
    const std::lock_guard lock(mutex_);
    findings_.push_back({std::string(check), std::string(command), std::move(text), known});
}

std::vector<Finding> Strict::violations() const {
    const std::lock_guard lock(mutex_);
    std::vector<Finding> result;
    std::ranges::copy_if(findings_, std::back_inserter(result),
                         [](const Finding &finding) { return !finding.known; });
    return result;
}

std::vector<Finding> Strict::all() const {
    const std::lock_guard lock(mutex_);
    return findings_;
}

void Strict::clear() {
    const std::lock_guard lock(mutex_);
    findings_.clear();
}

}  // namespace stage

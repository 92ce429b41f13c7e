#include "stage/ledger/strict.h"

#include <algorithm>

namespace stage {
namespace {

// What this plug-in does on purpose although a real host would rather not see it.
constexpr KnownDeparture kDepartures[] = {
    {"in_data.write", "PF_Cmd_GLOBAL_SETUP", "in_data->version was",
     "GLOBAL_SETUP writes the version pair into the input record; the host never reads it back"},
    {"sequence.unflat_left", "PF_Cmd_SEQUENCE_FLATTEN", "",
     "SEQUENCE_FLATTEN leaves the live record to the host: one small handle per save"},
    {"sequence.flat_left", "PF_Cmd_SEQUENCE_RESETUP", "",
     "SEQUENCE_RESETUP leaves the flat record to the host: eight bytes per load"},
    {"checkout.id_zero", "PF_Cmd_SMART_PRE_RENDER", "",
     "the input layer is checked out under id 0"},
    {"checkout.left_open", "PF_Cmd_SMART_RENDER", "checkout_output failed",
     "the input layer stays checked out when the output cannot be had; the host takes it back"},
    {"checkin.not_open", "PF_Cmd_SMART_RENDER", "of id 10 ",
     "the original source is checked in whether or not its check-out succeeded"},
    {"aegp.plugin_id", "", "", "no plug-in id is registered; id 0 is passed everywhere"},
    {"solid.alpha", "PF_Cmd_SMART_RENDER", "",
     "every frame is declared opaque, also where it is passed through"},
    {"sequence.replaced", "PF_Cmd_USER_CHANGED_PARAM", "",
     "RESET replaces the sequence record in a command after which a host may not look for it"},
    {"params.refresh_value", "PF_Cmd_UPDATE_PARAMS_UI", "",
     "the first panel refresh sets scope sizes, in a command whose values a host may ignore"},
    {"params.update_ui_ignored", "PF_Cmd_UPDATE_PARAMS_UI", "valid range",
     "the first panel refresh widens valid ranges, which a host takes from PARAMS_SETUP alone"},
    {"params.update_ui_ignored", "PF_Cmd_USER_CHANGED_PARAM", "valid range",
     "RESET refreshes the panel of the new record, and so widens valid ranges as the first "
     "refresh"},
    {"leak.suite", "PF_Cmd_EVENT", "\"DRAWBOT Surface Suite\" 1: acquired minus released is 1",
     "the Surface suite is acquired as number 1 and released as number 2: 1 is never given back"},
    {"leak.suite", "PF_Cmd_EVENT", "\"DRAWBOT Surface Suite\" 2: acquired minus released is -1",
     "the Surface suite is acquired as number 1 and released as number 2: 2 was never taken"},
    {"suite.release", "PF_Cmd_EVENT", "\"DRAWBOT Surface Suite\", 2 released",
     "the Surface suite is acquired as number 1 and released as number 2: 2 was never taken"},
    {"leak.suite", "PF_Cmd_EVENT",
     "\"DRAWBOT Draw Suite\" 1: acquired minus released is 1 after a refusal",
     "the Drawbot suites acquired before one that is refused stay held: one count per failure"},
    {"leak.suite", "PF_Cmd_EVENT",
     "\"DRAWBOT Supplier Suite\" 1: acquired minus released is 1 after a refusal",
     "the Drawbot suites acquired before one that is refused stay held: one count per failure"},
};

bool is_known(std::string_view check, std::string_view command, std::string_view text) {
    return std::ranges::any_of(kDepartures, [&](const KnownDeparture &departure) {
        const std::string_view wanted = departure.command;
        return check == departure.check && (wanted.empty() || command == wanted) &&
               text.find(departure.contains) != std::string_view::npos;
    });
}

}  // namespace

std::span<const KnownDeparture> known_departures() {
    return kDepartures;
}

void Strict::report(std::string_view check, std::string_view command, std::string text) {
    if (!enabled) return;
    const bool known = is_known(check, command, text);
    const std::lock_guard lock(mutex_);
    if (known && ++known_count_ > kMaxKnown) return;
    findings_.push_back({std::string(check), std::string(command), std::move(text), known});
    if (!known) violations_.push_back(findings_.back());
}

std::vector<Finding> Strict::violations() const {
    const std::lock_guard lock(mutex_);
    return violations_;
}

std::vector<Finding> Strict::all() const {
    const std::lock_guard lock(mutex_);
    return findings_;
}

void Strict::clear() {
    const std::lock_guard lock(mutex_);
    findings_.clear();
    violations_.clear();
    known_count_ = 0;
}

}  // namespace stage

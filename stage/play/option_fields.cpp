#include "stage/play/option_fields.h"

#include <algorithm>

namespace stage {
namespace {

/// A switch that is on or off.
struct Switch {
    const char *name;
    bool HostOptions::*field;
    bool running;  ///< may be changed while the plug-in is loaded
};

constexpr Switch kSwitches[] = {
    {"strict", &HostOptions::strict, false},
    {"separate render copy", &HostOptions::separate_render_copy, false},
    {"adopt replaced sequence", &HostOptions::adopt_replaced_sequence, true},
    {"honour refresh values", &HostOptions::honour_refresh_values, true},
    {"clamp written values", &HostOptions::clamp_written_values, true},
    {"clamp written points", &HostOptions::clamp_written_points, true},
    {"carry send drag", &HostOptions::carry_send_drag, true},
    {"drags as clicks", &HostOptions::drags_as_clicks, true},
    {"events at view ratio", &HostOptions::events_at_view_ratio, true},
    {"null drawing reference", &HostOptions::null_drawing_reference, true},
    {"events say do not draw", &HostOptions::events_say_dont_draw, true},
    {"project locked", &HostOptions::project_locked, true},
    {"scripts fail", &HostOptions::scripts_fail, true},
    {"null basic suite", &HostOptions::null_basic_suite, true},
    {"user cancels", &HostOptions::user_cancels, true},
};

/// An option with a value.
struct Field {
    const char *name;
    bool running;
    OptionChange (*read)(const JsonValue &value);
};

OptionChange read_depth(const JsonValue &value) {
    const std::int64_t bits = value.integer(8, 32);
    if (bits != 8 && bits != 16 && bits != 32) value.fail("must be 8, 16 or 32");
    const Depth depth = depth_from_bits(static_cast<int>(bits));
    return [depth](HostOptions &options) { options.depth = depth; };
}

OptionChange read_threads(const JsonValue &value) {
    const int threads = value.number32(1, kMaxScheduleThreads);
    return [threads](HostOptions &options) {
        options.schedule = threads == 1 ? Schedule::serial() : Schedule::with_threads(threads);
    };
}

OptionChange read_shuffle(const JsonValue &value) {
    value.only({"seed", "threads"});
    const auto seed = static_cast<std::uint64_t>(value["seed"].integer(0, INT64_MAX));
    const int threads = value["threads"].number32(1, kMaxScheduleThreads);
    return [seed, threads](HostOptions &options) {
        options.schedule = Schedule::shuffled(seed, threads);
    };
}

OptionChange read_cancel(const JsonValue &value) {
    const std::int64_t call = value.integer(0, INT32_MAX);
    return [call](HostOptions &options) { options.cancel_at_abort_call = call; };
}

OptionChange read_worlds(const JsonValue &value) {
    value.only({"row padding", "base offset", "poison"});
    constexpr int kMost = 4096;
    WorldLayout layout;
    if (const auto padding = value.find("row padding")) {
        layout.row_padding = padding->number32(0, kMost);
    }
    if (const auto offset = value.find("base offset")) {
        layout.base_offset = offset->number32(0, kMost);
    }
    if (const auto poison = value.find("poison")) layout.poison = poison->boolean();
    return [layout](HostOptions &options) { options.worlds = layout; };
}

constexpr Field kFields[] = {
    {"depth", true, read_depth},     {"threads", true, read_threads},
    {"shuffle", true, read_shuffle}, {"cancel at abort call", true, read_cancel},
    {"worlds", true, read_worlds},
};

OptionChange read_option(const std::string &name, const JsonValue &value, bool running) {
    const auto row = std::ranges::find(kSwitches, name, &Switch::name);
    const auto field = std::ranges::find(kFields, name, &Field::name);
    const bool is_switch = row != std::end(kSwitches);
    if (!is_switch && field == std::end(kFields)) value.fail("there is no such option");
    if (running && !(is_switch ? row->running : field->running)) {
        value.fail("can be set at the top of the file only");
    }
    if (!is_switch) return field->read(value);
    bool HostOptions::*const member = row->field;
    const bool on = value.boolean();
    return [member, on](HostOptions &options) { options.*member = on; };
}

}  // namespace

std::vector<OptionChange> read_options(const JsonValue &value, bool running) {
    std::vector<OptionChange> changes;
    for (const auto &[name, member] : value.members()) {
        changes.push_back(read_option(name, member, running));
    }
    return changes;
}

}  // namespace stage

// The step "expect".
#include <algorithm>
#include <vector>

#include "stage/play/session_steps.h"

namespace stage {
namespace {

const ExpectRow *find_row(const std::string &name) {
    for (const auto rows : {panel_expectations(), project_expectations(), outcome_expectations(),
                            view_expectations()}) {
        const auto found = std::ranges::find(rows, name, &ExpectRow::name);
        if (found != rows.end()) return &*found;
    }
    return nullptr;
}

}  // namespace

SessionAct read_expect(const JsonValue &value) {
    std::vector<std::pair<std::string, SessionAct>> checks;
    for (const auto &[name, member] : value.members()) {
        const ExpectRow *row = find_row(name);
        if (row == nullptr) member.fail("there is nothing of that name to expect");
        checks.emplace_back(member.where(), row->read(member));
    }
    return [checks](SessionPlayer &player) {
        for (const auto &[where, check] : checks) {
            at(where, [&] { check(player); });
        }
    };
}

}  // namespace stage

// The steps and expectations of session files, one table per subject.
#pragma once

#include <span>
#include <string>

#include "stage/play/session_file.h"
#include "stage/play/session_player.h"
#include "stage/text/json_value.h"

namespace stage {

/// Leaves out no number that a layout could mean.
inline constexpr double kLargestNumber = 1e9;

/// One kind of step.
struct StepRow {
    const char *name;
    SessionStep::Kind kind;
    bool bare;  ///< written as the name alone; `read` then gets that text
    /// Checks the value and returns what does the step.
    SessionAct (*read)(const JsonValue &value);
};

std::span<const StepRow> project_steps();  ///< comp, layers, files
std::span<const StepRow> effect_steps();   ///< apply, panel, undo
std::span<const StepRow> pointer_steps();  ///< presses, drags, moves
std::span<const StepRow> view_steps();     ///< zoom, time, shots, host options, expectations

/// One kind of expectation.
struct ExpectRow {
    const char *name;
    SessionAct (*read)(const JsonValue &value);
};

std::span<const ExpectRow> panel_expectations();    ///< values, looks, the record
std::span<const ExpectRow> project_expectations();  ///< layers and selection
std::span<const ExpectRow> outcome_expectations();  ///< what the last step brought about
std::span<const ExpectRow> view_expectations();     ///< pixels and drawing

/// The step "expect": every member by its row.
SessionAct read_expect(const JsonValue &value);

/// A layer by its name, or by its number from the top.
LayerName read_layer_name(const JsonValue &value);
/// Calls `act`; what it throws gets `where` in front, unless it says so already.
void at(const std::string &where, const std::function<void()> &act);

}  // namespace stage

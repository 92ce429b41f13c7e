// The stacking order of the visible scopes, as edits in the panel change it. No host types.
//
// Damaged projects hold any count from -128 to 127. The count is then stepped as it is, while
// entries are read and written only at positions 0 to 4: those beyond them count as absent.
#pragma once

#include "model/record.h"
#include "model/scope_kind.h"

namespace ks {

/// Takes `kind` out of the order: from its first position on, every valid entry becomes the one
/// behind it, and the last valid entry becomes the byte behind it in the record (with five entries
/// that is the count, still undiminished). The count goes down by one even when `kind` was absent.
/// Nothing happens while the count is 0 or less.
void remove_scope(InstanceRecord &record, ScopeKind kind);

/// Puts `kind` in front of all valid entries and raises the count by one. Nothing happens when it
/// is among them, or when the count is 5 or more.
void add_scope(InstanceRecord &record, ScopeKind kind);

/// Moves `kind` to position 0, the entries before it one back. An absent `kind` overwrites
/// position 0 and moves nothing. The count stays, even at 0 or less, and nothing happens when
/// `kind` is at position 0 already.
void bring_scope_to_front(InstanceRecord &record, ScopeKind kind);

}  // namespace ks

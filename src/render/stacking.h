// Compositing the scope panels into the output, back to front.
#pragma once

#include "host/error_chain.h"
#include "render/frame.h"
#include "render/scope_panels.h"

namespace ks {

/// Updates the stacking order in the instance record (replaced by this frame's list when the number
/// of enabled scopes changed, else kept) and places each panel at its "Scope Position", the last of
/// the order first, disposing of it then. Entries of a damaged order that name no scope, a scope
/// that is off, or one already placed are passed over. [host thread]
void stack_scopes(ErrorChain &chain, const Frame &frame, ScopePanels &panels);

}  // namespace ks

// Slots that a table leaves null are declined: calling one is a finding, not a crash.
#pragma once

#include <type_traits>

#include "hostapi/host.h"
#include "stage/host/call_table.h"

namespace stage {

/// The tables of suites. A declined slot is traced as "<struct>.<slot>", which tells the number.
template <class Suite, CallName kPrefix, CallRules kRules>
constexpr auto with_all_slots(CallTable<Suite, kPrefix, kRules> table) {
#define KS_SUITE(type, slots)
#define KS_SLOT(type, function, slot)          \
    if constexpr (std::is_same_v<Suite, type>) \
        table.template decline<&Suite::function, #type "." #function>();
#include "hostapi/tables/slots.inc"
#undef KS_SLOT
#undef KS_SUITE
    return table;
}

/// The tables that come with a command. A declined slot is traced as the others are.
template <class Table, CallName kPrefix, CallRules kRules>
constexpr auto with_all_callbacks(CallTable<Table, kPrefix, kRules> table) {
#define KS_TYPE(type, size, alignment)
#define KS_MEMBER(type, member, offset, size)  \
    if constexpr (std::is_same_v<Table, type>) \
        table.template decline<&Table::member, kPrefix + CallName("." #member)>();
#include "hostapi/tables/layout.inc"
#undef KS_MEMBER
#undef KS_TYPE
    return table;
}

}  // namespace stage

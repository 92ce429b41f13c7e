// Suite tables: complete, and offered by name and number.
#pragma once

#include <cstdint>

#include "hostapi/host.h"
#include "stage/host/call_table.h"
#include "stage/host/suite_registry.h"

namespace stage {

/// Every slot of a suite that is still null is declined.
template <class Suite, CallName kPrefix, CallRules kRules>
constexpr auto with_all_slots(CallTable<Suite, kPrefix, kRules> table) {
#define KS_SUITE(type, slots)
#define KS_SLOT(type, function, slot)          \
    if constexpr (std::is_same_v<Suite, type>) \
        table.template decline<&Suite::function, #function>();
#include "hostapi/tables/slots.inc"
#undef KS_SLOT
#undef KS_SUITE
    return table;
}

/// The same for the tables that come with a command.
template <class Table, CallName kPrefix, CallRules kRules>
constexpr auto with_all_callbacks(CallTable<Table, kPrefix, kRules> table) {
#define KS_TYPE(type, size, alignment)
#define KS_MEMBER(type, member, offset, size) \
    if constexpr (std::is_same_v<Table, type>) table.template decline<&Table::member, #member>();
#include "hostapi/tables/layout.inc"
#undef KS_MEMBER
#undef KS_TYPE
    return table;
}

/// Adds the table that `kMake` makes, under its own name and this number.
template <auto kMake>
void offer(SuiteRegistry &suites, std::int32_t number) {
    static constexpr auto table = with_all_slots(kMake());
    suites.add(table.name(), number, &table.get());
}

}  // namespace stage

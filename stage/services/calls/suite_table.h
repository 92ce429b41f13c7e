// Suite tables: complete, and offered by name and number.
#pragma once

#include <cstdint>

#include "stage/host/complete_table.h"
#include "stage/host/suite_registry.h"

namespace stage {

/// Adds the table that `kMake` makes, under its own name and this number.
template <auto kMake>
void offer(SuiteRegistry &suites, std::int32_t number) {
    static constexpr auto table = with_all_slots(kMake());
    suites.add(table.name(), number, &table.get());
}

}  // namespace stage

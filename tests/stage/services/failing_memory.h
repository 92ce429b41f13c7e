// The program's allocations, one of which can be made to fail.
#pragma once

namespace stage_test {

/// Makes the `nth` allocation of this thread from here on fail, once; 0 for none.
void fail_allocation(int nth);
/// Whether it has come to that since.
bool allocation_failed();

}  // namespace stage_test

// How much the long tests do, and how much they have done. The usual run leaves out what is said
// here, and nothing else; `./dev test full` leaves nothing out.
#pragma once

#include <string>

namespace test_size {

// KS_TEST_SIZE is "full".
bool full();

// Random acts over all cases of a program together. Under Wine, where everything takes several
// times as long, the usual run makes a tenth.
int random_acts();

// Fails every call of the frames of every layout that a wipe is drawn over, or of one layout of
// them. Without the wipe the loops go over every layout in both sizes. One layout under Wine in the
// usual run.
bool wipe_in_every_layout();

// Adds to what this program has counted. Printed at its end as "WHAT: N", and kept in its account
// of its cases for the report of the whole run. `what` is lower-case words.
void count(const std::string &what, int number);

}  // namespace test_size

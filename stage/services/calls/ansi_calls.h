// The host's C library functions, shared by the ANSI suite and the block in the callback table. All
// of them count as calls that cannot fail.
#pragma once

#include <cmath>
#include <cstdarg>

#include "stage/host/call_table.h"

namespace stage::calls {

/// Size of the one text buffer that the interface has, out_data->return_msg. sprintf and strcpy do
/// not know the size of their target: a text that would not fit is the finding "ansi.long_text".
inline constexpr std::size_t kMessageSize = 256;

int print(HostCall &call, A_char *target, const A_char *format, MoreArguments &arguments);
A_char *copy_text(HostCall &call, A_char *target, const A_char *source);

using Math1 = A_FpLong (*)(A_FpLong);
using Math2 = A_FpLong (*)(A_FpLong, A_FpLong);
template <Math1 kFunction>
A_FpLong math1(HostCall &, A_FpLong x) {
    return kFunction(x);
}
template <Math2 kFunction>
A_FpLong math2(HostCall &, A_FpLong x, A_FpLong y) {
    return kFunction(x, y);
}

/// Any table with the slots of PF_ANSICallbacksSuite1, traced as "<prefix>.<slot>".
template <class Table, CallName kPrefix>
constexpr auto ansi_table() {
    CallTable<Table, kPrefix, CallRules{.fails = Fails::kNever}> table;
#define KS_MATH(n, slot) KS_SERVE(slot, math##n<static_cast<Math##n>(std::slot)>)
    KS_MATH(1, atan);
    KS_MATH(2, atan2);
    KS_MATH(1, ceil);
    KS_MATH(1, cos);
    KS_MATH(1, exp);
    KS_MATH(1, fabs);
    KS_MATH(1, floor);
    KS_MATH(2, fmod);
    KS_MATH(2, hypot);
    KS_MATH(1, log);
    KS_MATH(1, log10);
    KS_MATH(2, pow);
    KS_MATH(1, sin);
    KS_MATH(1, sqrt);
    KS_MATH(1, tan);
    KS_MATH(1, asin);
    KS_MATH(1, acos);
#undef KS_MATH
    KS_SERVE(sprintf, print);
    KS_SERVE(strcpy, copy_text);
    return table;
}

}  // namespace stage::calls

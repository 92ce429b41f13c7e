// The host's C library functions, shared by the ANSI suite and the block in the callback table. All
// of them count as calls that cannot fail.
#pragma once

#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <string>

#include "stage/services/calls/world_access.h"

namespace stage::calls {

/// Size of the one text buffer that the interface has, out_data->return_msg. sprintf and strcpy do
/// not know the size of their target: a text that would not fit is the finding "ansi.long_text".
inline constexpr std::size_t kMessageSize = 256;

/// Notes a written text in the trace and checks its length.
void note_text(HostCall &call, const char *name, const char *text) noexcept;

template <CallName kName, class Function, class... Numbers>
A_FpLong math(Function function, Numbers... arguments) noexcept {
    const HostCall call(kName.text, Fallible::kNo);
    return function(arguments...);
}

template <CallName kName>
int print(A_char *target, const A_char *format, ...) noexcept {
    HostCall call(kName.text, Fallible::kNo);
    std::va_list arguments;
    va_start(arguments, format);
    const int length = std::vsprintf(target, format, arguments);
    va_end(arguments);
    note_text(call, kName.text, target);
    return length;
}

template <CallName kName>
A_char *copy_text(A_char *target, const A_char *source) noexcept {
    HostCall call(kName.text, Fallible::kNo);
    std::strcpy(target, source);
    note_text(call, kName.text, target);
    return target;
}

/// Any table with the slots of PF_ANSICallbacksSuite1, traced as "<prefix>.<slot>".
template <class Table, CallName kPrefix>
constexpr Table ansi_table() {
    using F = A_FpLong;
    Table table{};
#define KS_MATH1(slot)                                                                   \
    table.slot = [](F x) noexcept {                                                      \
        return math<kPrefix + CallName("." #slot)>([](F v) { return std::slot(v); }, x); \
    }
#define KS_MATH2(slot)                                                                          \
    table.slot = [](F a, F b) noexcept {                                                        \
        return math<kPrefix + CallName("." #slot)>([](F v, F w) { return std::slot(v, w); }, a, \
                                                   b);                                          \
    }
    KS_MATH1(atan);
    KS_MATH2(atan2);
    KS_MATH1(ceil);
    KS_MATH1(cos);
    KS_MATH1(exp);
    KS_MATH1(fabs);
    KS_MATH1(floor);
    KS_MATH2(fmod);
    KS_MATH2(hypot);
    KS_MATH1(log);
    KS_MATH1(log10);
    KS_MATH2(pow);
    KS_MATH1(sin);
    KS_MATH1(sqrt);
    KS_MATH1(tan);
    KS_MATH1(asin);
    KS_MATH1(acos);
#undef KS_MATH1
#undef KS_MATH2
    table.sprintf = print<kPrefix + CallName(".sprintf")>;
    table.strcpy = copy_text<kPrefix + CallName(".strcpy")>;
    return table;
}

}  // namespace stage::calls

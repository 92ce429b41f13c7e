#include "stage/services/calls/ansi_calls.h"

#include <cstdio>
#include <cstring>
#include <string>

namespace stage::calls {
namespace {

/// Notes a written text in the trace and checks its length.
void note_text(HostCall &call, const char *text) {
    const std::size_t size = std::strlen(text) + 1;
    if (call.traced()) call.note("\"" + std::string(text) + "\"");
    if (size <= kMessageSize) return;
    call.report("ansi.long_text", std::string(call.name()) + " wrote " + std::to_string(size) +
                                      " bytes; a message has " + std::to_string(kMessageSize));
}

}  // namespace

int print(HostCall &call, A_char *target, const A_char *format, MoreArguments &arguments) {
    const int length = std::vsprintf(target, format, arguments.list);
    note_text(call, target);
    return length;
}

A_char *copy_text(HostCall &call, A_char *target, const A_char *source) {
    std::strcpy(target, source);
    note_text(call, target);
    return target;
}

}  // namespace stage::calls

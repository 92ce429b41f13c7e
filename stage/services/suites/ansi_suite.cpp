#include "hostapi/pf_suites.h"
#include "hostapi/suite_names.h"
#include "stage/host/suite_registry.h"
#include "stage/services/calls/ansi_calls.h"
#include "stage/services/suites/suites.h"

namespace stage {
namespace calls {

void note_text(HostCall &call, const char *name, const char *text) noexcept {
    try {
        const std::size_t size = std::strlen(text) + 1;
        if (call.traced()) call.note("\"" + std::string(text) + "\"");
        if (size <= kMessageSize) return;
        call.host().strict.report("ansi.long_text", call.command(),
                                  std::string(name) + " wrote " + std::to_string(size) +
                                      " bytes; a message has " + std::to_string(kMessageSize));
    } catch (const std::bad_alloc &) {
        // The text is written; only the note of it is lost.
    }
}

}  // namespace calls

namespace {
constexpr auto kAnsiSuite = calls::ansi_table<PF_ANSICallbacksSuite1, CallName("PF ANSI Suite")>();
}

void add_ansi_suite(SuiteRegistry &suites) {
    suites.add(kPFANSISuite, kPFANSISuiteVersion1, &kAnsiSuite);
}

}  // namespace stage

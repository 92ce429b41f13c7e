#include "kestrel-stage/verbs/findings.h"

#include <cstdio>

#include "stage/session/session.h"

namespace stage_cli {

bool report_findings(const std::vector<stage::ShownMessage> &messages,
                     const std::vector<stage::Finding> &findings) {
    for (const stage::ShownMessage &message : messages) {
        std::fprintf(stderr, "%s: %s\n", message.as_error ? "warning" : "message",
                     message.text.c_str());
    }
    for (const stage::Finding &finding : findings) {
        std::fprintf(stderr, "finding [%s] %s: %s\n", finding.check.c_str(),
                     finding.command.c_str(), finding.text.c_str());
    }
    return !findings.empty();
}

bool report_findings(const stage::Session &session) {
    return report_findings(session.messages(), session.findings());
}

}  // namespace stage_cli

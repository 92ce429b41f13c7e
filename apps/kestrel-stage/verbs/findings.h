// What the host showed and noticed in a run.
#pragma once

#include <vector>

namespace stage {
class Session;
struct Finding;
struct ShownMessage;
}  // namespace stage

namespace stage_cli {

/// Prints to standard error the messages that the host would have shown, and the findings. True
/// when there are any findings.
bool report_findings(const std::vector<stage::ShownMessage> &messages,
                     const std::vector<stage::Finding> &findings);
/// The same of a whole run, without the findings that are known departures.
bool report_findings(const stage::Session &session);

}  // namespace stage_cli

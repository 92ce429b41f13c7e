// Exit status of the program: the verdict of a run.
#pragma once

namespace stage_cli {

inline constexpr int kSuccess = 0;
inline constexpr int kFailure =
    1;                            ///< a file, the plug-in or the host failed; nothing half-written
inline constexpr int kUsage = 2;  ///< the command line is wrong
inline constexpr int kFindings = 3;  ///< all done, but the plug-in broke rules of the host

}  // namespace stage_cli

// The words of the command line as UTF-8.
#pragma once

#include <string>
#include <vector>

namespace stage_cli {

/// Arguments after the program's name, in order. On Windows they are taken from the system's own
/// UTF-16 command line, since `argv` has lost what the ANSI code page lacks.
std::vector<std::string> command_line_words(int argc, char **argv);

}  // namespace stage_cli

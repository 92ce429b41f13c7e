// The program kestrel-stage.
#pragma once

namespace stage_cli {

/// Carries out a command line; its exit status. Every failure is one clear line on stderr.
int run_program(int argc, char **argv);

}  // namespace stage_cli

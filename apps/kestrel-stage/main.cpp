// kestrel-stage: drives the plug-in as After Effects does, from a command line.
#include "kestrel-stage/verbs/program.h"

int main(int argc, char **argv) {
    return stage_cli::run_program(argc, argv);
}

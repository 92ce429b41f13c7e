#include "kestrel-stage/verbs/program.h"

#include <algorithm>
#include <cstdio>
#include <exception>

#include "kestrel-stage/verbs/command_line.h"
#include "kestrel-stage/verbs/commands.h"
#include "kestrel-stage/verbs/exit_status.h"

namespace stage_cli {

int run_program(int argc, char **argv) {
    CLI::App app{"Runs Kestrel Scopes in an embedded host that behaves like the real one."};
    app.name("kestrel-stage");
    app.require_subcommand(1);
    app.allow_windows_style_options(false);  // a word that begins with / is a path everywhere
    app.footer("Exit status: 0 done, 1 failed, 2 wrong command line, 3 done with findings.");
    int status = kSuccess;
    add_render_commands(app, status);
    add_params_command(app, status);
    add_panel_command(app, status);
    add_session_command(app, status);
    add_view_command(app, status);
    add_inspect_command(app, status);
    try {
        std::vector<std::string> words = command_line_words(argc, argv);
        std::ranges::reverse(words);  // the parser takes them from the back
        app.parse(words);
    } catch (const CLI::ParseError &error) {
        if (error.get_exit_code() == 0) return app.exit(error);
        std::fprintf(stderr, "kestrel-stage: %s\n", error.what());
        return kUsage;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "kestrel-stage: %s\n", error.what());
        return kFailure;
    }
    return status;
}

}  // namespace stage_cli

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>

#include "kestrel-stage/verbs/commands.h"
#include "kestrel-stage/verbs/exit_status.h"
#include "kestrel-stage/verbs/findings.h"
#include "kestrel-stage/verbs/plugin_choice.h"
#include "stage/play/session_player.h"
#include "stage/text/utf8_path.h"

namespace stage_cli {
namespace {

struct Options {
    std::string file;
    std::string output;
    std::string plugin;
};

int run_session(const Options &options) {
    const auto file = stage::path_from_utf8(options.file);
    const stage::SessionFile session = stage::read_session_file(file);
    stage::PlayFolders folders{file.parent_path(), std::nullopt};
    if (!options.output.empty()) {
        folders.output = stage::path_from_utf8(options.output);
        std::filesystem::create_directories(*folders.output);
    }
    const auto plugin =
        options.plugin.empty() ? default_plugin_file() : stage::path_from_utf8(options.plugin);
    const stage::PlayReport report = stage::play_session(plugin, session, folders);
    for (const std::string &failure : report.failures) {
        std::fprintf(stderr, "%s\n", failure.c_str());
    }
    const bool findings = report_findings(report.messages, report.findings);
    std::printf("%s: %d steps, %d checks, %zu failed%s\n", options.file.c_str(), report.steps,
                report.checks, report.failures.size(),
                report.stopped ? ", stopped before the end" : "");
    if (!report.failures.empty()) return kFailure;
    return findings ? kFindings : kSuccess;
}

}  // namespace

void add_session_command(CLI::App &app, int &status) {
    const auto options = std::make_shared<Options>();
    CLI::App *verb = app.add_subcommand(
        "session", "Replay what a user does, from a session file, and check what it expects");
    verb->add_option("FILE", options->file, "Session file (see docs/stage)")->required();
    verb->add_option("-o,--output", options->output,
                     "Folder for the shots and the projects that the session saves; it is made "
                     "when it is not there. Without it shots are made but not written");
    verb->add_option("--plugin", options->plugin,
                     "Plug-in file; the one beside this program by default");
    verb->callback([options, &status] { status = run_session(*options); });
}

}  // namespace stage_cli

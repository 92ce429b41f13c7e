#include <cstdio>
#include <memory>
#include <string>

#include "kestrel-stage/verbs/commands.h"
#include "kestrel-stage/verbs/exit_status.h"
#include "stage/binary/inspect.h"
#include "stage/text/utf8_path.h"

namespace stage_cli {

void add_inspect_command(CLI::App &app, int &status) {
    struct Options {
        std::string file;
        bool json = false;
    };
    const auto options = std::make_shared<Options>();
    CLI::App *verb = app.add_subcommand(
        "inspect", "Show property list, exports, imports and version of a plug-in file");
    verb->add_option("FILE", options->file, "Plug-in file, Windows or native")->required();
    verb->add_flag("--json", options->json, "As JSON");
    verb->callback([options, &status] {
        const stage::PluginReport report =
            stage::inspect_plugin(stage::path_from_utf8(options->file));
        const std::string text =
            options->json ? stage::report_json(report) : stage::report_text(report);
        std::fputs(text.c_str(), stdout);
        status = report.pipl_findings.empty() ? kSuccess : kFindings;
    });
}

}  // namespace stage_cli

#include <cstdio>
#include <memory>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "kestrel-stage/verbs/commands.h"
#include "kestrel-stage/verbs/exit_status.h"
#include "kestrel-stage/verbs/findings.h"
#include "kestrel-stage/verbs/job_text.h"
#include "kestrel-stage/verbs/plugin_choice.h"
#include "stage/desk/panel/panel_json.h"
#include "stage/desk/panel/panel_model.h"
#include "stage/desk/panel/typed_value.h"
#include "stage/session/scene.h"
#include "stage/text/utf8_path.h"

namespace stage_cli {
namespace {

struct PanelJob {
    std::string size = "1920x1080";
    std::vector<std::string> settings;
    std::string plugin;
    bool all = false;
    bool json = false;
};

/// Over an empty composition.
stage::EffectInstance &apply_to_adjustment(stage::Session &session, const Pair &size) {
    stage::SceneParts parts;
    parts.picture.width = size.first;
    parts.picture.height = size.second;
    parts.selected = true;
    return *build_scene(session, std::move(parts)).effect;
}

int run_panel(const PanelJob &job) {
    const Pair size = parse_size(job.size);
    stage::Session session(job.plugin.empty() ? default_plugin_file()
                                              : stage::path_from_utf8(job.plugin));
    session.start();
    stage::EffectInstance &instance = apply_to_adjustment(session, size);
    for (const std::string &setting : job.settings) assign(session, instance, setting);
    const std::vector<stage::PanelEntry> entries = panel_entries(session, instance);
    if (job.json) {
        std::printf("%s\n", stage::panel_json(entries, job.all).dump(2).c_str());
    } else {
        std::fputs(stage::panel_text(entries, job.all).c_str(), stdout);
    }
    session.stop();
    return report_findings(session) ? kFindings : kSuccess;
}

}  // namespace

void add_panel_command(CLI::App &app, int &status) {
    const auto job = std::make_shared<PanelJob>();
    CLI::App *verb =
        app.add_subcommand("panel", "Show the Effect Controls panel as a user would see it");
    verb->add_option("--set", job->settings,
                     "Set a parameter first, NAME=VALUE; repeat for more. They take effect in the "
                     "order given, as a user's edits do")
        ->allow_extra_args(false);
    verb->add_option("--size", job->size, "Size of the composition, WIDTHxHEIGHT")
        ->capture_default_str();
    verb->add_flag("--all", job->all, "Hidden entries too, marked");
    verb->add_flag("--json", job->json, "As JSON");
    verb->add_option("--plugin", job->plugin,
                     "Plug-in file; the one beside this program by default");
    verb->callback([job, &status] { status = run_panel(*job); });
}

}  // namespace stage_cli

#include <cstdio>
#include <memory>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "hostapi/constants.h"
#include "kestrel-stage/verbs/commands.h"
#include "kestrel-stage/verbs/exit_status.h"
#include "kestrel-stage/verbs/findings.h"
#include "kestrel-stage/verbs/job_text.h"
#include "kestrel-stage/verbs/plugin_choice.h"
#include "stage/desk/panel/panel_model.h"
#include "stage/session/scene.h"
#include "stage/text/utf8_path.h"

namespace stage_cli {
namespace {

using stage::PanelEntry;
using Kind = PanelEntry::Kind;

struct PanelJob {
    std::string size = "1920x1080";
    std::vector<std::string> settings;
    std::string plugin;
    bool all = false;
    bool json = false;
};

constexpr const char *kKindNames[] = {"group",  "slider", "popup", "checkbox",
                                      "colour", "point",  "layer"};

nlohmann::ordered_json value_json(const PanelEntry &entry) {
    const stage::ParamValue &value = entry.value;
    switch (entry.kind) {
        case Kind::kSlider:
        case Kind::kPopup:
            return value.number;
        case Kind::kCheckbox:
            return value.number != 0;
        case Kind::kColor:
            return {value.color[0], value.color[1], value.color[2], value.color[3]};
        case Kind::kPoint:
            return {value.x, value.y};
        default:
            return value.layer;
    }
}

nlohmann::ordered_json entry_json(const PanelEntry &entry) {
    nlohmann::ordered_json json = {{"index", entry.index},
                                   {"depth", entry.depth},
                                   {"kind", kKindNames[static_cast<std::size_t>(entry.kind)]},
                                   {"name", entry.name}};
    if (entry.kind != Kind::kGroup) {
        json["value"] = value_json(entry);
        json["text"] = entry.text;
    }
    if (entry.kind == Kind::kCheckbox) json["label"] = entry.label;
    if (entry.kind == Kind::kPopup) json["choices"] = entry.choices;
    if (entry.kind == Kind::kSlider) {
        json["range"] = {entry.minimum, entry.maximum};
        json["slider"] = {entry.slider_minimum, entry.slider_maximum};
        json["precision"] = entry.precision;
        json["percent"] = entry.percent;
    }
    json["hidden"] = entry.hidden;
    json["disabled"] = entry.disabled;
    json["collapsed"] = entry.collapsed;
    return json;
}

void print_json(const std::vector<PanelEntry> &entries, bool with_hidden) {
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    for (const PanelEntry &entry : entries) {
        if (!entry.hidden || with_hidden) list.push_back(entry_json(entry));
    }
    std::printf("%s\n", list.dump(2).c_str());
}

/// Over an empty composition.
stage::EffectInstance &apply_to_adjustment(stage::Session &session, const Pair &size) {
    stage::SceneParts parts;
    parts.picture.width = size.first;
    parts.picture.height = size.second;
    parts.selected = true;
    return *build_scene(session, std::move(parts)).effect;
}

/// "none", or the name of a layer of the composition.
stage::ParamValue parse_layer(const stage::Project &project, const std::string &text) {
    stage::ParamValue value;
    if (text == "none") return value;
    for (const stage::Layer &layer : project.comp(project.active_comp)->layers) {
        if (layer.name == text) value.layer = layer.id;
    }
    if (value.layer == 0) throw std::runtime_error("there is no layer \"" + text + "\"");
    return value;
}

void set_value(stage::Session &session, stage::EffectInstance &instance, const std::string &setting,
               const Pair &size) {
    const stage::ParamCatalog &catalog = session.plugin.catalog;
    const std::size_t equals = setting.find('=');
    if (equals == std::string::npos) {
        throw std::runtime_error("\"" + setting + "\" is wrong: --set takes NAME=VALUE");
    }
    const int index = catalog.find(setting.substr(0, equals));
    const std::string text = setting.substr(equals + 1);
    const bool layer = catalog.at(index).def.param_type == PF_Param_LAYER;
    const stage::ParamValue value = layer ? parse_layer(session.project(), text)
                                          : catalog.parse(index, text, size.first, size.second);
    if (const PF_Err error = session.set_value(instance, index, value)) {
        throw std::runtime_error("setting \"" + catalog.at(index).path + "\" failed with error " +
                                 std::to_string(error));
    }
}

int run_panel(const PanelJob &job) {
    const Pair size = parse_size(job.size);
    stage::Session session(job.plugin.empty() ? default_plugin_file()
                                              : stage::path_from_utf8(job.plugin));
    session.start();
    stage::EffectInstance &instance = apply_to_adjustment(session, size);
    for (const std::string &setting : job.settings) set_value(session, instance, setting, size);
    const std::vector<PanelEntry> entries = panel_entries(session, instance);
    if (job.json) {
        print_json(entries, job.all);
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

#include <fmt/format.h>

#include <cstdio>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>

#include "hostapi/constants.h"
#include "kestrel-stage/verbs/commands.h"
#include "kestrel-stage/verbs/exit_status.h"
#include "kestrel-stage/verbs/plugin_choice.h"
#include "stage/session/session.h"
#include "stage/text/utf8_path.h"

namespace stage_cli {
namespace {

using stage::ParamCatalog;
using stage::ParamInfo;

nlohmann::ordered_json ranges_json(const ParamInfo &info) {
    const PF_FloatSliderDef &slider = info.def.u.fs_d;
    return {{"valid", {slider.valid_min, slider.valid_max}},
            {"slider", {slider.slider_min, slider.slider_max}},
            {"precision", slider.precision},
            {"percent", (slider.display_flags & PF_ValueDisplayFlag_PERCENT) != 0}};
}

nlohmann::ordered_json param_json(const ParamCatalog &catalog, int index) {
    const ParamInfo &info = catalog.at(index);
    nlohmann::ordered_json entry = {{"index", index},
                                    {"id", info.id},
                                    {"type", stage::param_type_name(info.def.param_type)},
                                    {"name", info.name},
                                    {"path", info.path},
                                    {"flags", info.def.flags},
                                    {"ui_flags", info.def.ui_flags}};
    if (ParamCatalog::has_value(info.def)) {
        entry["default"] = catalog.to_text(index, catalog.initial_value(index, 1920, 1080));
    }
    if (info.def.param_type == PF_Param_FLOAT_SLIDER) entry["range"] = ranges_json(info);
    if (info.def.param_type == PF_Param_POPUP) entry["choices"] = info.choices;
    if (info.def.param_type == PF_Param_CHECKBOX) entry["label"] = info.text;
    return entry;
}

void print_json(const ParamCatalog &catalog) {
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    for (int index = 0; index < catalog.count(); ++index) {
        list.push_back(param_json(catalog, index));
    }
    std::printf("%s\n", list.dump(2).c_str());
}

std::string limits_text(const ParamInfo &info) {
    std::string result;
    if (info.def.param_type == PF_Param_FLOAT_SLIDER) {
        const PF_FloatSliderDef &slider = info.def.u.fs_d;
        result = fmt::format("{:g} to {:g}", double{slider.valid_min}, double{slider.valid_max});
    }
    if (info.def.param_type == PF_Param_POPUP) {
        for (int choice = 1; choice <= static_cast<int>(info.choices.size()); ++choice) {
            if (info.is_separator(choice)) continue;
            result +=
                (result.empty() ? "" : " | ") + info.choices[static_cast<std::size_t>(choice - 1)];
        }
    }
    return result;
}

void print_text(const ParamCatalog &catalog) {
    std::printf("Defaults of points are for a layer of 1920x1080 pixels.\n");
    int depth = 0;
    for (int index = 1; index < catalog.count(); ++index) {
        const ParamInfo &info = catalog.at(index);
        if (info.def.param_type == PF_Param_GROUP_END) {
            --depth;
            continue;
        }
        const std::string indent(static_cast<std::size_t>(2 * depth), ' ');
        if (info.def.param_type == PF_Param_GROUP_START) {
            std::printf("%3d  %s%s\n", index, indent.c_str(), info.name.c_str());
            ++depth;
            continue;
        }
        const std::string value = catalog.to_text(index, catalog.initial_value(index, 1920, 1080));
        const std::string limits = limits_text(info);
        std::printf("%3d  %-34s %-13s %s%s\n", index, (indent + info.name).c_str(),
                    stage::param_type_name(info.def.param_type), value.c_str(),
                    limits.empty() ? "" : ("   (" + limits + ")").c_str());
    }
}

}  // namespace

void add_params_command(CLI::App &app, int &status) {
    struct Options {
        std::string plugin;
        bool json = false;
    };
    const auto options = std::make_shared<Options>();
    CLI::App *verb = app.add_subcommand("params", "List the parameters that the plug-in adds");
    verb->add_flag("--json", options->json, "As JSON");
    verb->add_option("--plugin", options->plugin,
                     "Plug-in file; the one beside this program by default");
    verb->callback([options, &status] {
        const auto file = options->plugin.empty() ? default_plugin_file()
                                                  : stage::path_from_utf8(options->plugin);
        stage::Session session(file);
        session.start();
        options->json ? print_json(session.plugin.catalog) : print_text(session.plugin.catalog);
        status = kSuccess;
    });
}

}  // namespace stage_cli

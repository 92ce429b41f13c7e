#include <memory>
#include <stdexcept>
#include <string>

#include "kestrel-stage/verbs/commands.h"
#include "kestrel-stage/verbs/exit_status.h"
#include "kestrel-stage/verbs/job_text.h"
#include "kestrel-stage/verbs/plugin_choice.h"
#include "stage/text/utf8_path.h"

#ifndef _WIN32
#include "kestrel-stage/window/view.h"
#endif

namespace stage_cli {
namespace {

struct Words {
    std::string picture, project, plugin, report, screenshot;
    std::string size = "1600x900";
    int frames = 0;
};

#ifdef _WIN32
int run(const Words &) {
    throw std::runtime_error("view: the window is part of the native build only");
}
#else
int run(const Words &words) {
    if (!words.picture.empty() && !words.project.empty()) {
        throw std::runtime_error("give PICTURE or --project, not both");
    }
    const Pair size = parse_size(words.size);
    stage_view::ViewOptions options;
    options.picture = stage::path_from_utf8(words.picture);
    options.project = stage::path_from_utf8(words.project);
    options.plugin =
        words.plugin.empty() ? default_plugin_file() : stage::path_from_utf8(words.plugin);
    options.report = stage::path_from_utf8(words.report);
    options.screenshot = stage::path_from_utf8(words.screenshot);
    options.width = size.first;
    options.height = size.second;
    options.frames = words.frames;
    return stage_view::run_view(options) ? kFindings : kSuccess;
}
#endif

}  // namespace

void add_view_command(CLI::App &app, int &status) {
    const auto words = std::make_shared<Words>();
    CLI::App *verb = app.add_subcommand("view", "Open a window to work in (native build)");
    verb->add_option(
        "PICTURE", words->picture,
        "Picture, numbered sequence (shot.%04d.exr) or video file; a test card without "
        "one");
    verb->add_option("--project", words->project, "Open this project file");
    verb->add_option("--plugin", words->plugin,
                     "Plug-in file; the one beside this program by default");
    verb->add_option("--size", words->size, "Size of the window, WIDTHxHEIGHT")
        ->capture_default_str();
    verb->add_option("--report", words->report,
                     "JSON file that tells programs what the window shows, kept up to date");
    verb->add_option("--screenshot", words->screenshot, "Write a picture of the window at the end");
    verb->add_option("--frames", words->frames, "End after that many settled frames")
        ->check(CLI::NonNegativeNumber);
    verb->callback([words, &status] { status = run(*words); });
}

}  // namespace stage_cli

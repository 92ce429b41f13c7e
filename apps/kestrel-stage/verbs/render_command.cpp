#include <memory>

#include "kestrel-stage/verbs/commands.h"
#include "kestrel-stage/verbs/render_job.h"
#include "stage/image/charts/charts.h"
#include "stage/image/codecs/picture_io.h"

namespace stage_cli {
namespace {

std::string chart_help() {
    std::string text = "Render a built-in chart instead of INPUT:";
    for (const stage::Chart &chart : stage::charts()) {
        text += "\n  " + std::string(chart.name) + ": " + std::string(chart.description);
    }
    return text;
}

void add_options(CLI::App &verb, RenderJob &job, bool trace) {
    verb.add_option("INPUT", job.input, "Picture, numbered sequence (shot.%04d.exr) or video file");
    auto *output = verb.add_option("-o,--output", job.output,
                                   "Picture to write, for several frames with a number pattern "
                                   "(out.%04d.png); formats: " +
                                       stage::writable_extensions());
    if (!trace) output->required();
    verb.add_option("--chart", job.chart, chart_help());
    verb.add_option("--size", job.size, "Size of the chart, WIDTHxHEIGHT")->capture_default_str();
    verb.add_option("--frames", job.frames, "Frames to render, A-B or A; all by default");
    verb.add_option("--set", job.settings,
                    "Set a parameter by name or index, NAME=VALUE; repeat for more. Where a name "
                    "repeats, add its group: \"Vectorscope/Scope Position=20,40\"")
        ->allow_extra_args(false);
    verb.add_option("--original", job.original, "Picture for the Original Source layer");
    verb.add_option("--depth", job.depth, "Bits per channel: 8, 16 or 32; as INPUT by default")
        ->check(CLI::IsMember({8, 16, 32}));
    verb.add_option("--downsample", job.downsample, "Resolution 1/N, or 1/N by 1/M as NxM")
        ->capture_default_str();
    verb.add_option("--par", job.pixel_aspect, "Pixel aspect ratio, N/D")->capture_default_str();
    verb.add_option("--threads", job.threads, "Threads of the host, 1 to 96; all by default")
        ->check(CLI::Range(1, 96));
    verb.add_option("--shuffle", job.shuffle, "Shuffle the host's iterations with this seed");
    verb.add_option("--quality", job.quality, "Layer quality")
        ->check(CLI::IsMember({"hi", "lo"}))
        ->capture_default_str();
    verb.add_option("--apply-to", job.apply_to,
                    "Layer that carries the effect: an adjustment layer on top, or the footage")
        ->check(CLI::IsMember({"adjustment", "footage"}))
        ->capture_default_str();
    verb.add_option("--region", job.region,
                    "Region of interest, LEFT,TOP,RIGHT,BOTTOM in pixels at this resolution");
    verb.add_option("--plugin", job.plugin, "Plug-in file; the one beside this program by default");
    verb.add_option("--project", job.project,
                    "Render the first effect of this project file instead of INPUT");
    verb.add_option("--save-project", job.save_project, "Save the project file afterwards");
    verb.add_flag("--separate-render-copy", job.separate_render_copy,
                  "Render against a copy of the effect's data, as newer hosts do");
}

void add_verb(CLI::App &app, int &status, const char *name, const char *help, bool trace) {
    const auto job = std::make_shared<RenderJob>();
    CLI::App *verb = app.add_subcommand(name, help);
    add_options(*verb, *job, trace);
    verb->callback([job, trace, &status] { status = run_render(*job, trace); });
}

}  // namespace

void add_render_commands(CLI::App &app, int &status) {
    add_verb(app, status, "render", "Render pictures, sequences or video through the effect",
             false);
    add_verb(app, status, "trace", "Render, and print every host call", true);
}

}  // namespace stage_cli

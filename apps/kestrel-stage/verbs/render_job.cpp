#include "kestrel-stage/verbs/render_job.h"

#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <thread>

#include "kestrel-stage/verbs/exit_status.h"
#include "kestrel-stage/verbs/findings.h"
#include "kestrel-stage/verbs/job_text.h"
#include "kestrel-stage/verbs/plugin_choice.h"
#include "kestrel-stage/verbs/progress.h"
#include "stage/desk/panel/typed_value.h"
#include "stage/image/codecs/picture_io.h"
#include "stage/image/frame_pattern.h"
#include "stage/image/frame_range.h"
#include "stage/session/footage.h"
#include "stage/session/session.h"
#include "stage/text/utf8_path.h"

namespace stage_cli {
namespace {

using namespace stage;

/// Project changes of this program are a user's: the comp, its footage, and the layer with the
/// effect.
struct Scene {
    EffectInstance *instance = nullptr;
    std::int64_t first_frame = 0;  ///< number of the project's frame 0 in file names
    std::int64_t frames = 1;
};

Depth depth_of(const RenderJob &job, SampleType native) {
    if (job.depth != 0) return depth_from_bits(job.depth);
    switch (native) {
        case SampleType::U8:
            return Depth::U8;
        case SampleType::U16:
        case SampleType::HostU16:
            return Depth::U16;
        default:
            return Depth::Float;
    }
}

Footage open_input(const RenderJob &job) {
    if (!job.chart.empty()) {
        if (!job.input.empty()) throw std::runtime_error("give INPUT or --chart, not both");
        const Pair size = parse_size(job.size);
        return open_chart(job.chart, size.first, size.second);
    }
    if (job.input.empty()) throw std::runtime_error("nothing to render: give INPUT or --chart");
    return open_footage_file(path_from_utf8(job.input));
}

HostOptions host_options(const RenderJob &job, Depth depth) {
    HostOptions options;
    options.depth = depth;
    options.separate_render_copy = job.separate_render_copy;
    const int cores = static_cast<int>(std::max(1U, std::thread::hardware_concurrency()));
    const int threads = job.threads != 0 ? job.threads : std::min(cores, 96);
    options.schedule =
        job.shuffle ? Schedule::shuffled(*job.shuffle, threads) : Schedule::with_threads(threads);
    return options;
}

void refuse_start(const CommandResult &result) {
    throw std::runtime_error("the effect could not be applied (error " +
                             std::to_string(result.error) + ")" +
                             (result.message.empty() ? "" : ": " + result.message));
}

ItemId add_picture(Project &project, const Footage &footage, const std::string &name,
                   const std::string &path, const Pair &par) {
    const ItemId id =
        project.add_footage(name, footage.opened.width, footage.opened.height, par.first,
                            par.second, footage.opened.frames, footage.opened.reader);
    project.item(id)->path = path;
    return id;
}

/// An absolute path in UTF-8: what a project file keeps.
std::string kept_path(const std::string &path) {
    return path.empty() ? path : path_to_utf8(std::filesystem::absolute(path_from_utf8(path)));
}

Scene build_scene(Session &session, const RenderJob &job, const Footage &footage) {
    Project &project = session.host.project;
    const Pair par = parse_ratio(job.pixel_aspect);
    const ItemId picture = add_picture(project, footage, job.chart.empty() ? job.input : job.chart,
                                       kept_path(job.input), par);
    project.item(picture)->chart = job.chart;
    const ItemId comp = project.add_comp("Comp 1", footage.opened.width, footage.opened.height,
                                         par.first, par.second, footage.opened.frames);
    project.active_comp = comp;
    const LayerId below = project.add_layer(comp, picture, 0, "Footage");
    LayerId original_layer = 0;
    if (!job.original.empty()) {
        const Footage original = open_footage_file(path_from_utf8(job.original));
        const ItemId item =
            add_picture(project, original, job.original, kept_path(job.original), par);
        original_layer = project.add_layer(comp, item, -1, "Original");
        project.layer(original_layer)->flags &= ~layer_flag::kVideoActive;
    }
    LayerId carrier = below;
    if (job.apply_to == "adjustment") {
        carrier = project.add_adjustment_layer(comp, 0, "Scopes");
    }
    project.layer(carrier)->selected = true;
    CommandResult applied;
    Scene scene;
    scene.instance = session.apply(carrier, &applied);
    if (scene.instance == nullptr) refuse_start(applied);
    scene.first_frame = footage.first_frame;
    scene.frames = footage.opened.frames;
    if (original_layer != 0) {
        ParamValue value;
        value.layer = original_layer;
        session.set_value(*scene.instance, session.plugin.catalog.find("Original Source"), value);
    }
    return scene;
}

Scene load_scene(Session &session, const RenderJob &job) {
    session.load(path_from_utf8(job.project));
    if (session.host.instances.empty()) {
        throw std::runtime_error(job.project + ": no layer carries the effect");
    }
    Scene scene;
    scene.instance = session.host.instances.front().get();
    scene.frames = session.host.project.comp_of(scene.instance->layer)->frames;
    return scene;
}

FrameRange range_of(const RenderJob &job, const Scene &scene) {
    const int first = static_cast<int>(scene.first_frame);
    const int last = static_cast<int>(scene.first_frame + scene.frames) - 1;
    if (job.frames.empty()) return {first, last};
    const FrameRange range = parse_frame_range(job.frames);
    // A still has the same picture at every frame.
    const bool still = scene.frames == 1;
    if (!still && (range.first < first || range.last > last)) {
        throw std::runtime_error("--frames " + job.frames + " leaves the input's frames " +
                                 std::to_string(first) + "-" + std::to_string(last));
    }
    return range;
}

void check_output(const RenderJob &job, const FrameRange &range) {
    if (job.output.empty() || range.count() == 1) return;
    if (!FramePattern::parse(path_from_utf8(job.output))) {
        throw std::runtime_error(job.output + ": " + std::to_string(range.count()) +
                                 " frames need a number in the name, such as out.%04d.png");
    }
}

RenderSettings settings_of(const RenderJob &job) {
    RenderSettings settings;
    const Pair downsample = parse_downsample(job.downsample);
    settings.downsample_x = downsample.first;
    settings.downsample_y = downsample.second;
    settings.high_quality = job.quality == "hi";
    if (!job.region.empty()) settings.request = parse_region(job.region);
    return settings;
}

void render_frame(Session &session, Scene &scene, RenderSettings settings, const RenderJob &job,
                  int number) {
    settings.frame = number - scene.first_frame;
    const RenderResult result = session.render(*scene.instance, settings);
    if (result.error != 0) {
        throw std::runtime_error("frame " + std::to_string(number) +
                                 ": the effect failed with error " + std::to_string(result.error) +
                                 (result.message.empty() ? "" : ": " + result.message));
    }
    if (result.skipped) {
        throw std::runtime_error("frame " + std::to_string(number) +
                                 ": there is nothing beneath the effect, so no frame is rendered");
    }
    if (job.output.empty()) return;
    const auto file = frame_file(path_from_utf8(job.output), number);
    write_picture(file, result.picture, session.host.options.depth);
}

}  // namespace

int run_render(const RenderJob &job, bool trace) {
    const bool from_project = !job.project.empty();
    if (from_project && (!job.input.empty() || !job.chart.empty())) {
        throw std::runtime_error("give INPUT or --project, not both");
    }
    Footage footage;
    if (!from_project) footage = open_input(job);
    const RenderSettings settings = settings_of(job);
    const auto plugin_file =
        job.plugin.empty() ? default_plugin_file() : path_from_utf8(job.plugin);
    Session session(plugin_file, host_options(job, depth_of(job, footage.native)));
    if (trace) {
        session.host.trace.enable(true);
        session.host.trace.set_sink(
            [](const TraceEntry &entry) { std::printf("%s\n", Trace::to_line(entry).c_str()); });
    }
    session.start();
    Scene scene = from_project ? load_scene(session, job) : build_scene(session, job, footage);
    for (const std::string &setting : job.settings) assign(session, *scene.instance, setting);
    const FrameRange range = range_of(job, scene);
    check_output(job, range);
    {
        Progress progress(range.count());
        for (int number = range.first; number <= range.last; ++number) {
            render_frame(session, scene, settings, job, number);
            progress.step();
        }
    }
    if (!job.save_project.empty()) session.save(path_from_utf8(job.save_project));
    session.stop();
    return report_findings(session) ? kFindings : kSuccess;
}

}  // namespace stage_cli

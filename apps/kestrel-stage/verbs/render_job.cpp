#include "kestrel-stage/verbs/render_job.h"

#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <thread>
#include <utility>

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
#include "stage/session/scene.h"
#include "stage/text/utf8_path.h"

namespace stage_cli {
namespace {

using namespace stage;

/// What is rendered, and which frames there are.
struct Subject {
    EffectInstance *effect = nullptr;
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

Subject build_subject(Session &session, const RenderJob &job, const Footage &footage) {
    const Pair par = parse_ratio(job.pixel_aspect);
    SceneParts parts;
    parts.picture =
        footage_item(footage, job.chart.empty() ? job.input : job.chart, par.first, par.second);
    if (!job.original.empty()) {
        parts.original = footage_item(open_footage_file(path_from_utf8(job.original)), job.original,
                                      par.first, par.second);
    }
    parts.adjustment = job.apply_to == "adjustment";
    parts.selected = true;
    const Scene scene = build_scene(session, std::move(parts));
    if (scene.original != 0) {
        ParamValue value;
        value.layer = scene.original;
        session.set_value(*scene.effect, session.plugin.catalog.find("Original Source"), value);
    }
    return {scene.effect, footage.first_frame, footage.opened.frames};
}

Subject load_subject(Session &session, const RenderJob &job) {
    session.load(path_from_utf8(job.project));
    if (session.instances().empty()) {
        throw std::runtime_error(job.project + ": no layer carries the effect");
    }
    EffectInstance *const effect = session.instances().front().get();
    return {effect, 0, session.project().comp_of(effect->layer)->frames};
}

FrameRange range_of(const RenderJob &job, const Subject &subject) {
    const int first = static_cast<int>(subject.first_frame);
    const int last = static_cast<int>(subject.first_frame + subject.frames) - 1;
    if (job.frames.empty()) return {first, last};
    const FrameRange range = parse_frame_range(job.frames);
    // A still has the same picture at every frame.
    const bool still = subject.frames == 1;
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

void render_frame(Session &session, const Subject &subject, RenderSettings settings,
                  const RenderJob &job, int number) {
    settings.frame = number - subject.first_frame;
    const RenderResult result = session.render(*subject.effect, settings);
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
    write_picture(file, result.picture, session.options().depth);
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
        session.trace_to(
            [](const TraceEntry &entry) { std::printf("%s\n", Trace::to_line(entry).c_str()); });
    }
    session.start();
    const Subject subject =
        from_project ? load_subject(session, job) : build_subject(session, job, footage);
    for (const std::string &setting : job.settings) assign(session, *subject.effect, setting);
    const FrameRange range = range_of(job, subject);
    check_output(job, range);
    {
        Progress progress(range.count());
        for (int number = range.first; number <= range.last; ++number) {
            render_frame(session, subject, settings, job, number);
            progress.step();
        }
    }
    if (!job.save_project.empty()) session.save(path_from_utf8(job.save_project));
    session.stop();
    return report_findings(session) ? kFindings : kSuccess;
}

}  // namespace stage_cli

#include "kestrel-stage/window/view.h"

#include "kestrel-stage/window/frame_loop.h"
#include "kestrel-stage/window/widgets/window_acts.h"
#include "kestrel-stage/window/window.h"
#include "stage/desk/desk.h"
#include "stage/session/session.h"

namespace stage_view {
namespace {

constexpr const char *kDefaultChart = "test-card";

void open_first(WindowActs &acts, const ViewOptions &options) {
    if (!options.project.empty()) {
        acts.load_project(options.project);
    } else if (!options.picture.empty()) {
        acts.open_picture(options.picture);
    } else {
        acts.open_chart(kDefaultChart, 1920, 1080);
    }
}

}  // namespace

bool run_view(const ViewOptions &options) {
    stage::Session session(options.plugin);
    session.start();
    bool findings = false;
    {
        stage::Desk desk(session);
        WindowActs acts(desk);
        acts.set_threads(0);
        open_first(acts, options);
        Window window("Kestrel Scopes", options.width, options.height);
        FrameLoop(acts, window, options).run();
        acts.settle_edits(false);
    }
    session.stop();
    findings = !session.findings().empty();
    return findings;
}

}  // namespace stage_view

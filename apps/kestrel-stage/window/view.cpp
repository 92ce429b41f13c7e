#include "kestrel-stage/window/view.h"

#include "kestrel-stage/window/desk.h"
#include "kestrel-stage/window/frame_loop.h"
#include "kestrel-stage/window/window.h"
#include "stage/desk/workspace.h"
#include "stage/session/session.h"

namespace stage_view {
namespace {

constexpr const char *kDefaultChart = "test-card";

void open_first(Desk &desk, const ViewOptions &options) {
    if (!options.project.empty()) {
        desk.load_project(options.project);
    } else if (!options.picture.empty()) {
        desk.open_picture(options.picture);
    } else {
        desk.open_chart(kDefaultChart, 1920, 1080);
    }
}

}  // namespace

bool run_view(const ViewOptions &options) {
    stage::Session session(options.plugin);
    session.start();
    bool findings = false;
    {
        stage::Workspace workspace(session);
        Desk desk(workspace);
        desk.set_threads(0);
        open_first(desk, options);
        Window window("Kestrel Scopes", options.width, options.height);
        FrameLoop(desk, window, options).run();
        desk.settle_edits(false);
    }
    session.stop();
    findings = !session.host.strict.violations().empty();
    return findings;
}

}  // namespace stage_view

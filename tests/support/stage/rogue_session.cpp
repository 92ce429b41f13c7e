#include "support/stage/rogue_session.h"
#include "support/paths.h"

#include <utility>

#include "stage/session/footage.h"
#include "stage/session/scene.h"

namespace stage_test {
namespace {

Names names_of(const std::vector<stage::Finding> &findings, bool known) {
    Names names;
    for (const stage::Finding &finding : findings) {
        if (finding.known == known) names.push_back(finding.check + " in " + finding.command);
    }
    return names;
}

stage::Item item_of(const RogueScene &scene, const stage::Picture &picture) {
    stage::Item item =
        footage_item(stage::still_footage(picture), "footage", scene.par_num, scene.par_den);
    item.frames = 10;
    return item;
}

}  // namespace

stage::Picture test_picture(int width, int height, stage::Depth depth) {
    stage::Picture picture = stage::make_picture(width, height, stage::SampleType::Float);
    const float top = depth == stage::Depth::U8 ? 255.0f : 32768.0f;
    int code = 0;
    for (std::size_t i = 0; i < picture.argb.size(); ++i) {
        code = (code + 37) % 251;
        picture.argb[i] = i % 4 == 0 ? 1.0f : static_cast<float>(code) / top;
    }
    return picture;
}

RogueSession::RogueSession(const std::string &act, stage::HostOptions options)
    : session(paths::rogue(), options) {
    session.panel_shown = false;
    choose(act);
}

void RogueSession::choose(const std::string &act) {
    EXPECT_EQ(session.plugin.library.function<rogue::Choose>("rogue_choose")(act.c_str()), 1)
        << act << " is no act";
}

const rogue::Seen &RogueSession::seen() const {
    return *session.plugin.library.function<rogue::GetSeen>("rogue_seen")();
}

void RogueSession::open(const RogueScene &scene) {
    session.start();
    picture = test_picture(scene.width, scene.height, session.options().depth);
    stage::SceneParts parts;
    parts.picture = item_of(scene, picture);
    parts.adjustment = false;
    const stage::Scene built = build_scene(session, std::move(parts));
    comp = built.comp;
    layer = built.carrier;
    effect = built.effect;
}

void RogueSession::set_original(const RogueScene &scene) {
    const stage::Picture other = test_picture(scene.width, scene.height, session.options().depth);
    value(rogue::kOriginal).layer = add_original(session.project(), comp, item_of(scene, other));
}

void RogueSession::set_point(double x, double y) {
    value(rogue::kCentre).x = x;
    value(rogue::kCentre).y = y;
}

stage::ParamValue &RogueSession::value(int index) {
    return session.state_of(*effect).streams.at(static_cast<std::size_t>(index)).value;
}

stage::RenderResult RogueSession::render(const stage::RenderSettings &settings) {
    return session.render(*effect, settings);
}

Names RogueSession::violations() const {
    return names_of(session.host.strict.all(), false);
}

Names RogueSession::known() const {
    return names_of(session.host.strict.all(), true);
}

}  // namespace stage_test

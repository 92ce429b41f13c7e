// A session with the rogue plug-in, a small scene, and its findings.
#pragma once

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "hostapi/constants.h"
#include "stage/session/session.h"
#include "support/rogue/rogue_interface.h"

namespace stage_test {

using Names = std::vector<std::string>;

/// A picture of codes that every depth holds exactly, opaque, no two neighbours alike.
stage::Picture test_picture(int width, int height, stage::Depth depth);

struct RogueScene {
    int width = 8, height = 6;
    int par_num = 1, par_den = 1;
};

/// The plug-in is loaded and not yet started. Findings are not looked at unless asked for.
class RogueSession {
  public:
    explicit RogueSession(const std::string &act = "", stage::HostOptions options = {});

    /// From now on the plug-in plays `act`, "" for none.
    void choose(const std::string &act);
    const rogue::Seen &seen() const;

    /// Starts, makes a comp with one layer, applies the effect. The panel stays hidden.
    void open(const RogueScene &scene = {});
    /// A second layer for the plug-in's layer parameter.
    void set_original(const RogueScene &scene);
    void set_point(double x, double y);
    stage::ParamValue &value(int index);

    stage::RenderResult render(const stage::RenderSettings &settings = {});
    /// Checks and commands of the findings so far that are no known departures, "check in command".
    Names violations() const;
    Names known() const;

    stage::Session session;
    stage::ItemId comp = 0;
    stage::LayerId layer = 0;
    stage::EffectInstance *effect = nullptr;
    stage::Picture picture;

    stage::Host &host() { return session.host; }
};

inline stage::HostOptions at_depth(stage::Depth depth) {
    stage::HostOptions options;
    options.depth = depth;
    return options;
}

}  // namespace stage_test

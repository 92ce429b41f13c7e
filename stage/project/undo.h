// Undo and redo: snapshots of the project before each user-visible change.
#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <vector>

#include "stage/project/project.h"

namespace stage {

/// Steps of undo, oldest dropped beyond kMaxSteps. Sequence data is no part of a step: what
/// EffectState::flat_sequence holds now stays where the running effect still exists.
/// [host thread]
class Undo {
  public:
    static constexpr std::size_t kMaxSteps = 100;

    explicit Undo(Project &project) : project_(project) {}

    /// Call before each undoable change. Changes within a group make one step, named as the
    /// outermost group; others make a step each. Clears what could be redone.
    void before_change(const std::string &name);

    /// Groups may be nested; only the outermost counts.
    void begin_group(const std::string &name);
    /// False when no group is open.
    bool end_group();
    int open_groups() const { return open_groups_; }

    /// False when there is nothing to undo or redo, or a group is open.
    bool undo();
    bool redo();
    /// What undo() or redo() would bring back; null when they would do nothing.
    const ProjectData *next_undo() const { return next(done_); }
    const ProjectData *next_redo() const { return next(undone_); }

    /// Names of the steps that can be undone, oldest first.
    std::vector<std::string> steps() const;
    void clear();

  private:
    struct Step {
        std::string name;
        ProjectData data;
    };
    bool move_step(std::deque<Step> &from, std::deque<Step> &to);
    const ProjectData *next(const std::deque<Step> &steps) const;

    Project &project_;
    std::deque<Step> undone_;
    std::deque<Step> done_;
    std::string group_name_;
    int open_groups_ = 0;
    bool group_has_step_ = false;
};

}  // namespace stage

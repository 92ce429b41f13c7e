#include "stage/project/undo.h"

#include <algorithm>
#include <utility>

namespace stage {
namespace {

/// The effect that runs as `instance`; null when there is none.
const EffectState *running(const Project &project, int instance) {
    for (const auto &item : project.items()) {
        for (const Layer &layer : item->layers) {
            for (const EffectState &effect : layer.effects) {
                if (effect.instance == instance) return &effect;
            }
        }
    }
    return nullptr;
}

/// Puts the flat sequence data of `now` in place of what `snapshot` remembers.
void keep_sequence_data(ProjectData &snapshot, const Project &now) {
    for (Item &item : snapshot.items) {
        for (Layer &layer : item.layers) {
            for (EffectState &effect : layer.effects) {
                if (effect.instance == 0) continue;
                const EffectState *current = running(now, effect.instance);
                if (current != nullptr) effect.flat_sequence = current->flat_sequence;
            }
        }
    }
}

}  // namespace

void Undo::before_change(const std::string &name) {
    if (open_groups_ > 0 && group_has_step_) return;
    undone_.clear();
    done_.push_back({open_groups_ > 0 ? group_name_ : name, project_.data()});
    group_has_step_ = open_groups_ > 0;
    if (done_.size() > kMaxSteps) done_.pop_front();
}

void Undo::begin_group(const std::string &name) {
    if (open_groups_++ > 0) return;
    group_name_ = name;
    group_has_step_ = false;
}

bool Undo::end_group() {
    if (open_groups_ == 0) return false;
    --open_groups_;
    return true;
}

bool Undo::move_step(std::deque<Step> &from, std::deque<Step> &to) {
    if (open_groups_ > 0 || from.empty()) return false;
    Step step = std::move(from.back());
    from.pop_back();
    to.push_back({step.name, project_.data()});
    keep_sequence_data(step.data, project_);
    project_.restore(step.data);
    return true;
}

const ProjectData *Undo::next(const std::deque<Step> &steps) const {
    return open_groups_ > 0 || steps.empty() ? nullptr : &steps.back().data;
}

bool Undo::undo() {
    return move_step(done_, undone_);
}
bool Undo::redo() {
    return move_step(undone_, done_);
}

std::vector<std::string> Undo::steps() const {
    std::vector<std::string> names;
    for (const Step &step : done_) names.push_back(step.name);
    return names;
}

void Undo::clear() {
    done_.clear();
    undone_.clear();
}

}  // namespace stage

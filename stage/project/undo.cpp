#include "stage/project/undo.h"

#include <algorithm>
#include <utility>

namespace stage {
namespace {

/// Puts the flat sequence data of `now` in place of what `snapshot` remembers.
void keep_sequence_data(ProjectData &snapshot, const Project &now) {
    for (Item &item : snapshot.items) {
        for (Layer &layer : item.layers) {
            const Layer *current = now.layer(layer.id);
            if (current == nullptr) continue;
            const std::size_t count = std::min(layer.effects.size(), current->effects.size());
            for (std::size_t i = 0; i < count; ++i) {
                if (layer.effects[i].match_name != current->effects[i].match_name) continue;
                layer.effects[i].flat_sequence = current->effects[i].flat_sequence;
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

#include "stage/play/session_player.h"

#include <algorithm>
#include <random>
#include <utility>

#include "stage/desk/panel/typed_value.h"
#include "stage/play/session_steps.h"
#include "stage/text/utf8_path.h"

namespace stage {
namespace {

std::filesystem::path new_scratch_folder() {
    std::random_device numbers;
    const auto base = std::filesystem::temp_directory_path();
    for (int attempt = 0; attempt < 100; ++attempt) {
        const auto folder = base / ("kestrel-session-" + std::to_string(numbers()));
        if (std::filesystem::create_directory(folder)) return folder;
    }
    throw std::runtime_error(path_to_utf8(base) + ": no folder can be made here");
}

/// What is behind the first `taken` of a list that others may have cut short.
template <class T>
std::vector<T> rest_of(const std::vector<T> &list, std::size_t &taken) {
    const auto begin = list.begin() + static_cast<std::ptrdiff_t>(std::min(taken, list.size()));
    taken = list.size();
    return {begin, list.end()};
}

template <class T>
void append(std::vector<T> &list, const std::vector<T> &more) {
    list.insert(list.end(), more.begin(), more.end());
}

}  // namespace

void at(const std::string &where, const std::function<void()> &act) {
    try {
        act();
    } catch (const SessionFileError &) {
        throw;
    } catch (const std::exception &error) {
        throw SessionFileError(where + ": " + error.what());
    }
}

SessionPlayer::SessionPlayer(Session &session, PlayFolders folders)
    : desk_(session), folders_(std::move(folders)) {}

SessionPlayer::~SessionPlayer() {
    std::error_code ignored;
    if (!scratch_.empty()) std::filesystem::remove_all(scratch_, ignored);
}

PlayReport SessionPlayer::play(const SessionFile &file) {
    report_ = {};
    try {
        for (const SessionStep &step : file.steps) do_step(step);
    } catch (const SessionFileError &error) {
        report_.failures.push_back(error.what());
        report_.stopped = true;
    }
    report_unasked_error();
    append(report_.messages, take_messages());
    append(report_.findings, take_findings());
    return std::exchange(report_, {});
}

void SessionPlayer::do_step(const SessionStep &step) {
    if (step.kind == SessionStep::Kind::kAct) {
        report_unasked_error();
        error_where_ = step.where;
    }
    at(step.where, [&] { step.act(*this); });
    ++report_.steps;
}

void SessionPlayer::report_unasked_error() {
    const PF_Err error = std::exchange(error_, 0);
    if (error == 0) return;
    report_.failures.push_back(error_where_ + ": the plug-in answered with error " +
                               std::to_string(error) + ", which no expectation asks about");
}

const Item &SessionPlayer::comp() {
    const Project &project = session().project();
    const Item *comp = project.comp(project.active_comp);
    if (comp == nullptr) throw SessionError("there is no composition yet");
    return *comp;
}

LayerId SessionPlayer::layer(const LayerName &name) {
    const std::vector<Layer> &layers = comp().layers;
    if (name.number > 0) {
        if (name.number > static_cast<int>(layers.size())) {
            throw SessionFileError(name.where + ": there are only " +
                                   std::to_string(layers.size()) + " layers");
        }
        return layers[static_cast<std::size_t>(name.number - 1)].id;
    }
    if (std::ranges::count(layers, name.name, &Layer::name) > 1) {
        throw SessionFileError(name.where + ": several layers are called \"" + name.name +
                               "\"; give the number, 1 is the top");
    }
    LayerId id = 0;
    at(name.where, [&] { id = layer_called(comp(), name.name); });
    return id;
}

EffectInstance &SessionPlayer::effect() {
    EffectInstance *chosen = desk_.effect();
    if (chosen == nullptr) throw SessionError("no effect is chosen");
    return *chosen;
}

void SessionPlayer::answered(const PointerReply &reply, bool press) {
    if (press) press_ = reply;
    if (error_ == 0) error_ = reply.event.error;
}

std::filesystem::path SessionPlayer::input_file(const std::string &name) const {
    return folders_.session / path_from_utf8(name);
}

std::filesystem::path SessionPlayer::project_file(const std::string &name) const {
    if (std::ranges::find(saved_, name) == saved_.end()) return input_file(name);
    return folders_.output.value_or(scratch_) / path_from_utf8(name);
}

std::filesystem::path SessionPlayer::saved_file(const std::string &name) {
    if (!folders_.output && scratch_.empty()) scratch_ = new_scratch_folder();
    if (std::ranges::find(saved_, name) == saved_.end()) saved_.push_back(name);
    return project_file(name);
}

void SessionPlayer::check(bool holds, const std::string &where, const std::string &wanted,
                          const std::string &found) {
    ++report_.checks;
    if (holds) return;
    report_.failures.push_back(where + ": wanted " + wanted + ", found " + found);
}

PF_Err SessionPlayer::take_error() {
    return std::exchange(error_, 0);
}

std::vector<ShownMessage> SessionPlayer::take_messages() {
    return rest_of(session().messages(), messages_taken_);
}

std::vector<Finding> SessionPlayer::take_findings() {
    return rest_of(session().findings(), findings_taken_);
}

PlayReport play_session(const std::filesystem::path &plugin, const SessionFile &file,
                        const PlayFolders &folders) {
    Session session(plugin, file.options);
    session.start();
    PlayReport report;
    std::size_t messages = 0, findings = 0;
    {
        SessionPlayer player(session, folders);
        report = player.play(file);
        messages = session.messages().size();
        findings = session.findings().size();
    }
    session.stop();
    append(report.messages, rest_of(session.messages(), messages));
    append(report.findings, rest_of(session.findings(), findings));
    return report;
}

}  // namespace stage

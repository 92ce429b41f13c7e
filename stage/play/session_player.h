// Plays a session: does what a user did, step by step, and notes every expectation that fails.
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "stage/desk/desk.h"
#include "stage/play/session_file.h"

namespace stage {

/// Where a session keeps its files.
struct PlayFolders {
    /// Footage and projects that the session brings along go by this folder; empty for the current
    /// one.
    std::filesystem::path session;
    /// Gets the shots and the projects that are saved. Must exist. Without it shots are made and
    /// dropped, and saved projects live in a folder that is removed at the end.
    std::optional<std::filesystem::path> output;
};

/// How a session went.
struct PlayReport {
    std::vector<std::string> failures;   ///< "FILE:LINE: PATH: what was wanted and what was found"
    std::vector<ShownMessage> messages;  ///< those that no step expected
    std::vector<Finding> findings;       ///< those that no step expected
    int steps = 0;                       ///< done, expectations included
    int checks = 0;                      ///< single expectations that were looked at
    bool stopped = false;                ///< a step could not be done; those after it were left out
};

/// A layer of the active comp as a session names it.
struct LayerName {
    std::string where;  ///< of the name, for errors
    std::string name;   ///< empty when `number` says which
    int number = 0;     ///< from the top, 1 is the top
};

/// What the steps of a session work with. [host thread]
class SessionPlayer {
  public:
    /// `session` must be started and outlive the player.
    SessionPlayer(Session &session, PlayFolders folders);
    ~SessionPlayer();
    SessionPlayer(const SessionPlayer &) = delete;
    SessionPlayer &operator=(const SessionPlayer &) = delete;

    /// Does every step; a failed expectation does not stop the session, a step that cannot be done
    /// does. An error code that no later step asks about is a failure too.
    PlayReport play(const SessionFile &file);

    // For the steps.
    Desk &desk() { return desk_; }
    Session &session() { return desk_.session(); }
    /// The active comp. Throws SessionError without one.
    const Item &comp();
    /// Throws SessionFileError when there is no such layer, or several have the name.
    LayerId layer(const LayerName &name);
    /// The chosen effect. Throws SessionError without one.
    EffectInstance &effect();

    /// Says how the plug-in took a step.
    void answered(PF_Err error) { error_ = error; }
    /// The same of a pointer's event. A press starts what the moves after it belong to: their first
    /// error and the press's reply are kept.
    void answered(const PointerReply &reply, bool press);

    std::filesystem::path input_file(const std::string &name) const;
    /// Of a project that this session saved, else input_file().
    std::filesystem::path project_file(const std::string &name) const;
    /// Where a project of that name is to be saved.
    std::filesystem::path saved_file(const std::string &name);
    const std::optional<std::filesystem::path> &output() const { return folders_.output; }

    // For the expectations.
    /// Notes a failure unless `holds`.
    void check(bool holds, const std::string &where, const std::string &wanted,
               const std::string &found);
    /// The code of the last step that the plug-in answered; now it has been asked about.
    PF_Err take_error();
    const PointerReply &last_press() const { return press_; }
    /// Messages and findings since the last time they were taken.
    std::vector<ShownMessage> take_messages();
    std::vector<Finding> take_findings();
    bool skipped = false;  ///< the last frame of the step "render" was empty

  private:
    void do_step(const SessionStep &step);
    void report_unasked_error();

    Desk desk_;
    PlayFolders folders_;
    std::filesystem::path scratch_;  ///< made when first needed; removed at the end
    std::vector<std::string> saved_;
    PlayReport report_;
    PF_Err error_ = 0;
    std::string error_where_;  ///< of the step that brought an error nobody asked about
    PointerReply press_;
    std::size_t messages_taken_ = 0;
    std::size_t findings_taken_ = 0;
};

/// Loads the plug-in, plays the file and ends everything; what the end brings to light is part of
/// the report. Throws LibraryError, BinaryError, SessionError when the plug-in does not start.
PlayReport play_session(const std::filesystem::path &plugin, const SessionFile &file,
                        const PlayFolders &folders);

}  // namespace stage

#include "kestrel-stage/window/widgets/file_dialog.h"

#include <imgui.h>
#include <imgui_stdlib.h>

#include <algorithm>
#include <system_error>

#include "stage/text/utf8_path.h"

namespace stage_view {

namespace fs = std::filesystem;
using stage::path_from_utf8;
using stage::path_to_utf8;

void FileDialog::ask(const std::string &title, const std::string &agree, const std::string &hint,
                     const fs::path &start, std::function<void(const fs::path &)> chosen) {
    open_ = just_opened_ = true;
    title_ = title;
    agree_ = agree;
    hint_ = hint;
    std::error_code error;
    const fs::path where =
        start.empty() ? fs::current_path(error) / "" : fs::absolute(start, error);
    path_ = path_to_utf8(where);
    listed_.clear();
    chosen_ = std::move(chosen);
}

/// The list shows the folder of what is typed; names beginning with a dot are left out.
void FileDialog::list_folder() {
    const fs::path typed = path_from_utf8(path_);
    std::error_code error;
    fs::path folder = fs::is_directory(typed, error) ? typed : typed.parent_path();
    if (folder.empty()) folder = ".";
    if (!listed_.empty() && path_to_utf8(folder) == listed_) return;
    listed_ = path_to_utf8(folder);
    folder_ = folder;
    folders_.clear();
    files_.clear();
    for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
        const std::string name = path_to_utf8(at->path().filename());
        if (name.starts_with('.')) continue;
        std::error_code unknown;
        (at->is_directory(unknown) ? folders_ : files_).push_back(name);
    }
    std::ranges::sort(folders_);
    std::ranges::sort(files_);
}

void FileDialog::rows(WidgetLog &log) {
    std::string next;
    if (ImGui::Selectable("../")) next = path_to_utf8(fs::absolute(folder_).parent_path());
    log.add("file", "../");
    if (!next.empty() && !next.ends_with('/')) next += '/';
    for (const std::string &name : folders_) {
        if (ImGui::Selectable((name + "/").c_str())) next = path_to_utf8(folder_ / name) + "/";
        log.add("file", name + "/");
    }
    for (const std::string &name : files_) {
        const std::string path = path_to_utf8(folder_ / name);
        if (ImGui::Selectable(name.c_str(), path == path_, ImGuiSelectableFlags_AllowDoubleClick)) {
            next = path;
            if (ImGui::IsMouseDoubleClicked(ImGuiMouseButton_Left)) {
                path_ = path;
                finish(true);
                return;
            }
        }
        log.add("file", name);
    }
    if (!next.empty()) path_ = next;
}

void FileDialog::finish(bool agreed) {
    open_ = false;
    ImGui::CloseCurrentPopup();
    if (agreed && chosen_) chosen_(path_from_utf8(path_));
    chosen_ = nullptr;
}

void FileDialog::draw(WidgetLog &log) {
    if (!open_) return;
    if (just_opened_) ImGui::OpenPopup(title_.c_str());
    const ImVec2 screen = ImGui::GetIO().DisplaySize;
    ImGui::SetNextWindowPos({screen.x / 2, screen.y / 2}, ImGuiCond_Always, {0.5f, 0.5f});
    ImGui::SetNextWindowSize(
        {std::min(640.0f, screen.x * 0.9f), std::min(520.0f, screen.y * 0.9f)});
    if (!ImGui::BeginPopupModal(title_.c_str(), nullptr,
                                ImGuiWindowFlags_NoResize | ImGuiWindowFlags_NoMove)) {
        open_ = false;
        return;
    }
    if (just_opened_) ImGui::SetKeyboardFocusHere();
    just_opened_ = false;
    ImGui::SetNextItemWidth(-1);
    const bool entered = ImGui::InputText("##path", &path_, ImGuiInputTextFlags_EnterReturnsTrue);
    log.add("text", "Path");
    ImGui::TextDisabled("%s", hint_.c_str());
    list_folder();
    const float row = ImGui::GetFrameHeightWithSpacing();
    ImGui::BeginChild("files", {0, -row}, true);
    const bool was_open = open_;
    rows(log);
    ImGui::EndChild();
    if (open_ && was_open) {
        const bool agreed = ImGui::Button(agree_.c_str(), {110, 0}) || entered;
        log.add("button", agree_);
        ImGui::SameLine();
        const bool refused = ImGui::Button("Cancel", {110, 0}) ||
                             ImGui::IsKeyPressed(ImGui::GetKeyIndex(ImGuiKey_Escape));
        log.add("button", "Cancel");
        if (agreed || refused) finish(agreed);
    }
    ImGui::EndPopup();
}

}  // namespace stage_view

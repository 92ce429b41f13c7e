#include "whole/actions/user.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>

#include "hostapi/constants.h"
#include "support/paths.h"

namespace actions {
namespace {

constexpr std::size_t kRemembered = 20;

std::filesystem::path own_file(std::uint32_t seed) {
    const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
    return std::filesystem::temp_directory_path() /
           ("kestrel-actions-" + std::to_string(seed) + "-" + std::to_string(now) + ".json");
}

// To standard error at once, so that it is there when the process dies.
void say(const std::string &text) {
    static const bool aloud = std::getenv("KS_RANDOM_VERBOSE") != nullptr;
    if (aloud) std::fputs(text.c_str(), stderr);
}

std::string value_text(const stage::ParamInfo &info, const stage::ParamValue &value) {
    switch (info.def.param_type) {
        case PF_Param_POINT:
            return number_text(value.x) + "," + number_text(value.y);
        case PF_Param_COLOR:
            return std::to_string(value.color[1]) + "," + std::to_string(value.color[2]) + "," +
                   std::to_string(value.color[3]);
        case PF_Param_LAYER:
            return "layer " + std::to_string(value.layer);
        default:
            return number_text(value.number);
    }
}

}  // namespace

std::string number_text(double number) {
    char text[40];
    std::snprintf(text, sizeof text, "%.10g", number);
    return text;
}

User::User(const Habits &own_habits, std::uint32_t seed)
    : habits(own_habits),
      dice(seed),
      session(paths::plugin(), own_habits.options),
      project_file(own_file(seed)) {
    session.start();
    desk.new_comp("comp", habits.comp_width, habits.comp_height, habits.par_num, habits.par_den, 5);
    desk.add_chart("test-card", habits.comp_width, habits.comp_height, habits.par_num,
                   habits.par_den);
    desk.add_adjustment("scopes");
    desk.apply();
    desk.viewport().fit(habits.comp_width, habits.comp_height);
    note("new comp " + std::to_string(habits.comp_width) + "x" +
         std::to_string(habits.comp_height) + " par " + std::to_string(habits.par_num) + "/" +
         std::to_string(habits.par_den) + ", test-card, adjustment layer with the effect");
    orders[effect()->id] = OrderModel();
}

User::~User() {
    std::error_code ignored;
    std::filesystem::remove(project_file, ignored);
}

std::vector<stage::Layer> &User::layers() {
    return project().comp(project().active_comp)->layers;
}

Boxes User::boxes(const stage::EffectInstance &instance) const {
    Boxes boxes{};
    for (std::size_t kind = 1; kind <= 5; ++kind) boxes[kind] = number(instance, kShow[kind]) != 0;
    return boxes;
}

const stage::Item &User::layer_item(const stage::EffectInstance &instance) const {
    return *session.project().extent_of(instance.layer);
}

int User::scope_of(const int (&table)[6], int index) {
    for (int kind = 1; kind <= 5; ++kind) {
        if (table[kind] == index) return kind;
    }
    return 0;
}

void User::edit(int index, double value) {
    stage::ParamValue now = session.value(*effect(), index);
    now.number = value;
    edit(index, now);
}

void User::edit(int index, const stage::ParamValue &value) {
    const stage::ParamInfo &info = session.plugin.catalog.at(index);
    note("set \"" + info.path + "\" " + value_text(info, value));
    const Boxes before = boxes(*effect());
    EXPECT_EQ(desk.set_value(index, value), 0) << info.path;
    follow_edit(index, before);
}

void User::follow_edit(int index, const Boxes &before) {
    const Boxes now = boxes(*effect());
    OrderModel &model = order(*effect());
    if (const int shown = scope_of(kShow, index)) {
        const auto place = static_cast<std::size_t>(shown);
        model.show(shown, now[place], before[place]);
    }
    if (const int moved = scope_of(kPosition, index)) model.to_front(moved, now);
    if (index == kReset && number(*effect(), kReset) != 0) model.reset(now);
}

void User::note(const std::string &text) {
    log_.push_back(std::to_string(actions) + ": " + text);
    if (log_.size() > kRemembered) log_.pop_front();
    say("\n" + log_.back());
}

void User::add_to_note(const std::string &text) {
    log_.back() += text;
    say(text);
}

std::string User::log() const {
    std::string text;
    for (const std::string &line : log_) text += "  " + line + "\n";
    return text;
}

}  // namespace actions

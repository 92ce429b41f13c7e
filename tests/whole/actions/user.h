// One user with the real plug-in: the desk, what was done so far, and what is known of every
// instance's stacking order.
#pragma once

#include <deque>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "stage/desk/desk.h"
#include "whole/actions/dice.h"
#include "whole/actions/order_model.h"

namespace actions {

// Parameters by index.
inline constexpr int kLayout = 2, kOriginalSource = 10, kReferenceLine = 36, kLock = 65,
                     kReset = 68;
// By scope, 1 to 5; element 0 is unused.
inline constexpr int kShow[6] = {0, 19, 20, 21, 22, 23};
inline constexpr int kPosition[6] = {0, 27, 38, 43, 50, 55};
inline constexpr int kSize[6] = {0, 28, 39, 44, 51, 56};

inline constexpr std::size_t kMostLayers = 7;
inline constexpr std::size_t kMostEffects = 4;

// How a host and its user differ from the usual.
struct Habits {
    const char *name = "";
    stage::HostOptions options;
    int comp_width = 160, comp_height = 120;
    int par_num = 1, par_den = 1;
    // Without limits on what drags write, sizes of panels can exceed any memory: no frames then.
    bool renders = true;
};

class User {
  public:
    User(const Habits &habits, std::uint32_t seed);
    ~User();
    User(const User &) = delete;
    User &operator=(const User &) = delete;

    stage::Project &project() { return session.project(); }
    stage::EffectInstance *effect() const { return desk.effect(); }
    std::vector<stage::Layer> &layers();
    double number(const stage::EffectInstance &instance, int index) const {
        return session.value(instance, index).number;
    }
    Boxes boxes(const stage::EffectInstance &instance) const;
    // Of the source of the instance's layer, or, without one, of its comp.
    const stage::Item &layer_item(const stage::EffectInstance &instance) const;
    OrderModel &order(const stage::EffectInstance &instance) { return orders[instance.id]; }
    // Scope whose "Show" box or "Scope Position" parameter `index` is; 0 for none.
    static int scope_of(const int (&table)[6], int index);

    // An edit of the chosen effect as the panel makes it, with what the rules make of it.
    void edit(int index, const stage::ParamValue &value);
    void edit(int index, double number);
    // To be called behind an edit that the desk has made by itself.
    void follow_edit(int index, const Boxes &before);

    // What the user does next: the first words of a line of the log.
    void note(const std::string &text);
    void add_to_note(const std::string &text);
    // The last lines, oldest first.
    std::string log() const;

    Habits habits;
    Dice dice;
    stage::Session session;
    stage::Desk desk{session};
    std::map<int, OrderModel> orders;  // by id of the instance
    std::map<int, Boxes> last_boxes;   // after the last act in which it was there
    std::filesystem::path project_file;
    std::vector<OrderModel> saved_orders;  // of the saved project's instances, in their order
    int actions = 0;

  private:
    std::deque<std::string> log_;
};

std::string number_text(double number);

}  // namespace actions

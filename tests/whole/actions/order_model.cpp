#include "whole/actions/order_model.h"

#include <algorithm>

namespace actions {

void OrderModel::reset(const Boxes &boxes) {
    bytes_ = {1, 2, 3, 0, 0, 3};
    promised_ = boxes == kDefaultBoxes;
}

void OrderModel::show(int kind, bool on, bool was) {
    const auto end = bytes_.begin() + count();
    const auto found = std::find(bytes_.begin(), end, kind);
    if (on) {
        if (found != end || count() >= 5) return;
        std::copy_backward(bytes_.begin(), end, end + 1);
        bytes_[0] = static_cast<std::int8_t>(kind);
        resize(1);
        return;
    }
    if (count() == 0) return;
    // The byte behind the last entry moves up too; behind the fifth one that is the count.
    if (found != end) std::copy(found + 1, end + 1, found);
    resize(-1);
    if (!was) promised_ = false;
}

void OrderModel::to_front(int kind, const Boxes &boxes) {
    if (!boxes[static_cast<std::size_t>(kind)] && count() > 0) promised_ = false;
    if (bytes_[0] == kind) return;
    for (int at = count() - 1; at > 0; --at) {
        const auto place = bytes_.begin() + at;
        if (*place != kind) continue;
        std::copy_backward(bytes_.begin(), place, place + 1);
        break;
    }
    bytes_[0] = static_cast<std::int8_t>(kind);
}

void OrderModel::history_moved(const Boxes &before, const Boxes &after) {
    if (before != after) promised_ = false;
}

void OrderModel::rendered(const Boxes &boxes) {
    const std::vector<int> list = listed_by_a_frame(boxes);
    if (static_cast<int>(list.size()) == count()) return;
    bytes_ = {};
    for (std::size_t i = 0; i < list.size() && i < 5; ++i) {
        bytes_[i] = static_cast<std::int8_t>(list[i]);
    }
    resize(static_cast<int>(list.size()));
    promised_ = true;
}

std::vector<int> listed_by_a_frame(const Boxes &boxes) {
    std::vector<int> list;
    for (const int kind : {1, 3, 2, 4, 5}) {
        if (boxes[static_cast<std::size_t>(kind)]) list.push_back(kind);
    }
    return list;
}

bool agree(std::vector<int> entries, const Boxes &boxes) {
    std::vector<int> shown = listed_by_a_frame(boxes);
    std::ranges::sort(entries);
    std::ranges::sort(shown);
    return entries == shown;
}

std::string to_text(const std::array<std::int8_t, 6> &bytes) {
    std::string text;
    for (std::size_t i = 0; i < 5; ++i) text += (i == 0 ? "" : ", ") + std::to_string(bytes[i]);
    return text + "; count " + std::to_string(bytes[5]);
}

std::string to_text(const Boxes &boxes) {
    std::string text;
    for (std::size_t kind = 1; kind <= 5; ++kind) text += boxes[kind] ? '1' : '0';
    return text;
}

}  // namespace actions

#include "whole/actions/order_model.h"

#include <algorithm>

namespace actions {

void OrderModel::reset(const Boxes &boxes) {
    bytes_ = {1, 2, 3, 0, 0, 3};
    promised_ = boxes == kDefaultBoxes;
}

void OrderModel::show(int kind, bool on, bool was) {
    if (on) return ks::oracle::order_add(bytes_, kind);
    if (!was && bytes_[5] > 0) promised_ = false;
    ks::oracle::order_remove(bytes_, kind);
}

void OrderModel::to_front(int kind, const Boxes &boxes) {
    if (!boxes[static_cast<std::size_t>(kind)] && bytes_[5] > 0) promised_ = false;
    ks::oracle::order_to_front(bytes_, kind);
}

void OrderModel::history_moved(const Boxes &before, const Boxes &after) {
    if (before != after) promised_ = false;
}

void OrderModel::rendered(const Boxes &boxes) {
    const std::vector<int> list = listed_by_a_frame(boxes);
    if (static_cast<int>(list.size()) == bytes_[5]) return;
    bytes_ = {};
    for (std::size_t i = 0; i < list.size() && i < 5; ++i) {
        bytes_[i] = static_cast<std::int8_t>(list[i]);
    }
    bytes_[5] = static_cast<std::int8_t>(list.size());
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

std::string to_text(const ks::oracle::OrderBytes &bytes) {
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

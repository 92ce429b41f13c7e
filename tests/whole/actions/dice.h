// Random choices that come out the same on every platform.
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <span>

namespace actions {

class Dice {
  public:
    explicit Dice(std::uint32_t seed) : engine_(seed) {}

    // 0 to count - 1; count is above 0.
    int below(int count) { return static_cast<int>(engine_() % static_cast<std::uint32_t>(count)); }
    // lowest to highest, both included.
    int between(int lowest, int highest) { return lowest + below(highest - lowest + 1); }
    bool one_in(int count) { return below(count) == 0; }
    // In steps of 1/1024 of the way, both ends included.
    double real(double lowest, double highest) {
        return lowest + (highest - lowest) * below(1025) / 1024.0;
    }
    template <class T, std::size_t count>
    const T &pick(const T (&list)[count]) {
        return list[static_cast<std::size_t>(below(static_cast<int>(count)))];
    }
    template <class List>
    auto &pick(List &list) {
        return list[static_cast<std::size_t>(below(static_cast<int>(list.size())))];
    }

  private:
    std::mt19937 engine_;
};

}  // namespace actions

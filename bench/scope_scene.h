// One frame for the sampling pass: a picture at a depth, panels and settings.
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "oracle/scope_oracle.h"
#include "scopes/context/context_setup.h"
#include "stage/image/picture.h"

namespace ks_bench {

/// Milliseconds since it was made or asked the last time.
class Stopwatch {
  public:
    double lap() {
        const auto now = std::chrono::steady_clock::now();
        return std::chrono::duration<double, std::milli>(now - std::exchange(start_, now)).count();
    }

  private:
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

/// What is shown and how large.
struct ScopePreset {
    const char *name;
    int quality;                  ///< "Sampling Quality": 2 medium, 3 high
    ks::TraceMode waveform_mode;  ///< "Show Channels" of the waveform
    int size;  ///< widths of the waveforms and the parade, the vectorscope's size
    bool all;  ///< slice and histogram too
};
/// Parameter values as the effect has them at first; these with all five scopes on; and the most
/// that can be asked for.
inline constexpr ScopePreset kPresets[] = {
    {"default", 2, ks::TraceMode::kLuma, 200, false},
    {"five", 2, ks::TraceMode::kLuma, 200, true},
    {"max", 3, ks::TraceMode::kRgbAndLuma, 1000, true},
};

struct SceneKey {
    std::string picture;
    int width = 0, height = 0, bits = 0;
    const ScopePreset *preset = nullptr;

    /// "1920x1080/8bit/max/natural"
    [[nodiscard]] std::string path() const;
    bool operator==(const SceneKey &) const = default;
};

/// Wall times of one pass, milliseconds.
struct PassTimes {
    double set_up = 0;  ///< context, plan and memory
    double count = 0;
    double merge = 0;       ///< memory given back included
    std::size_t bytes = 0;  ///< of the accumulators

    [[nodiscard]] double total() const { return set_up + count + merge; }
};

class ScopeScene {
  public:
    explicit ScopeScene(const SceneKey &key);
    ScopeScene(const ScopeScene &) = delete;
    ScopeScene &operator=(const ScopeScene &) = delete;

    /// The product's pass over cleared panels; as many parts as threads.
    PassTimes run_pass(int threads);
    /// The literal implementation's pass on one thread over cleared panels, milliseconds.
    double run_literal();
    /// Size of the accumulators for that many parts.
    [[nodiscard]] std::size_t accumulator_bytes(int parts) const;

    [[nodiscard]] const ks::SampledFrame &frame() const { return frame_; }
    [[nodiscard]] const ks::LayoutUnits &units() const { return units_; }
    /// Clears the bins.
    [[nodiscard]] ks::ScopeSampleContext context() const;

  private:
    void make_panels();
    void make_literal();

    SceneKey key_;
    ks::oracle::Image source_;
    ks::SampledFrame frame_;
    ks::ScopeSettings settings_;
    ks::LayoutUnits units_;
    std::array<std::vector<std::byte>, ks::kScopeKinds> panels_;
    std::vector<std::uint32_t> bins_;
    ks::oracle::ScopeContext literal_;
    ks::oracle::PanelExtents extents_{};
};

/// The scene of that key; the latest is kept.
ScopeScene &scope_scene(const SceneKey &key);

}  // namespace ks_bench

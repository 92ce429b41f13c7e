#include "scopes/merge/merger.h"

#include <algorithm>
#include <vector>

#include "scopes/merge/histogram_merge.h"
#include "scopes/merge/parade_merge.h"
#include "scopes/merge/vectorscope_merge.h"
#include "scopes/merge/waveform_merge.h"

namespace ks {
namespace {

/// First of share `part`'s things of `count`, when `parts` share them.
int share(int count, int part, int parts) {
    return static_cast<int>(std::int64_t{count} * part / parts);
}

template <class P>
class DepthMerger final : public Merger {
  public:
    DepthMerger(const Sampler &sampler, int parts)
        : parts_(parts),
          chunks_(std::max(sampler.plan().columns / (kChunkColumns * parts), 1)),
          waveform_(sampler),
          parade_(sampler),
          vectorscope_(sampler),
          histogram_(sampler, parts),
          waveform_scratch_(waveform_.scratch_size() * static_cast<std::size_t>(parts)),
          parade_scratch_(parade_.scratch_size() * static_cast<std::size_t>(parts)) {}

    // In chunks of columns: the waveform, the parade and the histogram read the same counters, and
    // find a chunk's still in the cache.
    void run_part(int part) override {
        if (part < 0 || part >= parts_) return;
        for (int i = 0; i < chunks_; ++i) run_chunk(part, part * chunks_ + i);
    }

    std::array<std::uint32_t, 3> finish_histogram() override { return histogram_.finish(); }

  private:
    static constexpr int kChunkColumns = 64;

    void run_chunk(int part, int chunk) {
        const auto at = static_cast<std::size_t>(part);
        const int shares = parts_ * chunks_;
        const auto each = [&](int count, auto &&draw) {
            for (int i = share(count, chunk, shares); i < share(count, chunk + 1, shares); ++i) {
                draw(i);
            }
        };
        float *const sums = waveform_scratch_.data() + at * waveform_.scratch_size();
        each(waveform_.columns(),
             [&](int i) { waveform_.draw_column(waveform_.first() + i, sums); });
        std::uint32_t *const counts = parade_scratch_.data() + at * parade_.scratch_size();
        each(parade_.positions(), [&](int i) { parade_.draw_position(i, counts); });
        each(histogram_.slots(), [&](int slot) { histogram_.add_slot(part, slot); });
        each(vectorscope_.rows(), [&](int row) { vectorscope_.draw_row(row); });
    }

    int parts_;
    int chunks_;  ///< per part
    WaveformMerge<P> waveform_;
    ParadeMerge<P> parade_;
    VectorscopeMerge<P> vectorscope_;
    HistogramMerge histogram_;
    std::vector<float> waveform_scratch_;
    std::vector<std::uint32_t> parade_scratch_;
};

}  // namespace

std::unique_ptr<Merger> make_merger(const Sampler &sampler, int parts) {
    std::unique_ptr<Merger> merger;
    visit_format(sampler.plan().context->pixelFormat, [&]<class P>(P) {
        merger = std::make_unique<DepthMerger<P>>(sampler, parts);
        return 0;
    });
    return merger;
}

}  // namespace ks

#include "scopes/sampling_pass.h"

#include <algorithm>
#include <new>

#include "host/error_chain.h"
#include "host/scoped.h"
#include "scopes/merge/merger.h"

namespace ks {
namespace {

constexpr A_long kMaxParts = 64;

bool has_work(const ScopeSampleContext &c) {
    const bool any =
        c.waveformOn != 0 || c.vectorscopeOn != 0 || c.paradeOn != 0 || c.histogramOn != 0;
    return c.muted == 0 && any && c.source.base != nullptr;
}

/// Runs `f` and turns what must not cross the host into its code.
template <class F>
A_Err guarded(F &&f) noexcept {
    try {
        return f();
    } catch (const std::bad_alloc &) {
        return PF_Err_OUT_OF_MEMORY;
    } catch (...) {
        return PF_Err_INTERNAL_STRUCT_DAMAGED;
    }
}

A_Err sample_part(void *refcon, A_long, A_long part, A_long parts) {
    return guarded([&] { return static_cast<Sampler *>(refcon)->run_part(part, parts); });
}

A_Err merge_part(void *refcon, A_long, A_long part, A_long) {
    return guarded([&] {
        static_cast<Merger *>(refcon)->run_part(part);
        return A_Err_NONE;
    });
}

}  // namespace

PF_Err run_sampling_pass(SuiteCache &suites, ScopeSampleContext &context) {
    if (!has_work(context)) return PF_Err_NONE;
    if (visit_format(context.pixelFormat, [](auto) { return 0; }) != 0) {
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    AEGP_IterateSuite1 &iterate = suites.iterate_generic();
    A_long threads = 0;
    if (const A_Err error = iterate.AEGP_GetNumThreads(&threads)) return error;
    const A_long parts =
        threads > 0 ? std::min(threads, kMaxParts) : PF_Iterations_ONCE_PER_PROCESSOR;

    const SamplePlan plan = make_sample_plan(context, threads);
    PF_HandleSuite1 &handles = suites.handle();
    const OwnedHandle memory(handles, plan.bytes);
    const LockedHandle<void> block(handles, memory.get());
    if (block.get() == nullptr) return PF_Err_OUT_OF_MEMORY;
    Sampler sampler(plan, block.get());
    ErrorChain chain;
    chain.step([&] { return iterate.AEGP_IterateGeneric(parts, &sampler, sample_part); });
    if (!chain.ok()) return chain.result();
    const A_long shares = std::clamp(threads, A_long{1}, kMaxParts);
    const std::unique_ptr<Merger> merger = make_merger(sampler, shares);
    chain.step([&] { return iterate.AEGP_IterateGeneric(shares, merger.get(), merge_part); });
    context.waveformOverRange = context.waveformOn != 0 && sampler.over_range() ? 1 : 0;
    context.paradeOverRange = context.paradeOn != 0 && sampler.over_range() ? 1 : 0;
    context.histogramMax = merger->finish_histogram();
    return chain.result();
}

}  // namespace ks

// The generic iteration of a stand-in host: serial, reversed or on threads of its own.
#pragma once

#include <string>
#include <thread>
#include <vector>

#include "support/fake_host.h"

namespace ks {

/// Serves the iteration suite to `host` while it lives; one at a time.
class IterateHost {
  public:
    explicit IterateHost(fake::FakeHost &host) : host_(host) {
        current() = this;
        suite_.AEGP_GetNumThreads = [](A_long *count) {
            const A_Err error = current()->host_.calls.step("get_num_threads");
            if (error == 0) *count = current()->threads;
            return error;
        };
        suite_.AEGP_IterateGeneric = &IterateHost::iterate;
        host.suites[{kAEGPIterateSuite, 1}] = &suite_;
    }
    ~IterateHost() { current() = nullptr; }
    IterateHost(const IterateHost &) = delete;
    IterateHost &operator=(const IterateHost &) = delete;

    A_long threads = 2;     ///< what the host says it has
    int processors = 3;     ///< what -1 iterations stand for
    bool parallel = false;  ///< every part on a thread of its own
    bool reversed = false;

  private:
    using Work = A_Err (*)(void *, A_long, A_long, A_long);

    static A_Err iterate(A_long parts, void *refcon, Work work) {
        IterateHost &self = *current();
        const A_Err refused = self.host_.calls.step("iterate " + std::to_string(parts));
        if (refused != 0) return refused;
        const int count = parts == PF_Iterations_ONCE_PER_PROCESSOR ? self.processors : parts;
        std::vector<A_Err> errors(static_cast<std::size_t>(count));
        const auto run = [&](int i) {
            errors[static_cast<std::size_t>(i)] = work(refcon, self.parallel ? i : 0, i, count);
        };
        if (self.parallel) {
            std::vector<std::thread> workers;
            for (int i = 0; i < count; ++i) workers.emplace_back(run, i);
            for (std::thread &worker : workers) worker.join();
        } else {
            for (int i = 0; i < count; ++i) run(self.reversed ? count - 1 - i : i);
        }
        for (const A_Err error : errors) {
            if (error != 0) return error;
        }
        return A_Err_NONE;
    }

    static IterateHost *&current() {
        static IterateHost *host = nullptr;
        return host;
    }

    fake::FakeHost &host_;
    AEGP_IterateSuite1 suite_{};
};

}  // namespace ks

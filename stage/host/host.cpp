#include "stage/host/host.h"

#include <cstdio>
#include <cstdlib>

#include "stage/effect/effect_instance.h"

namespace stage {
namespace {
Host *g_host = nullptr;
}

Host::Host(HostOptions host_options)
    : options(host_options), handles(strict), mem_handles(strict), worlds(strict) {
    if (g_host != nullptr) {
        std::fputs("stage: a second host was made while one is alive\n", stderr);
        std::abort();
    }
    g_host = this;
    strict.enabled = options.strict;
}

Host::~Host() {
    instances.clear();
    g_host = nullptr;
}

Host &Host::current() {
    if (g_host == nullptr) {
        std::fputs("stage: a host callback was used while no host is alive\n", stderr);
        std::abort();
    }
    return *g_host;
}

EffectInstance *Host::instance(PF_ProgPtr effect_ref) {
    for (const auto &candidate : instances) {
        if (candidate->effect_ref() == effect_ref) return candidate.get();
    }
    return nullptr;
}

}  // namespace stage

#include "stage/ledger/thread_role.h"

namespace stage {
namespace {
thread_local ThreadRole t_role = ThreadRole::kNone;
}

ThreadRole current_thread_role() {
    return t_role;
}

const char *thread_role_name(ThreadRole role) {
    switch (role) {
        case ThreadRole::kNone:
            return "stage";
        case ThreadRole::kUi:
            return "ui";
        case ThreadRole::kRender:
            return "render";
        case ThreadRole::kWorker:
            return "worker";
    }
    return "?";
}

ScopedThreadRole::ScopedThreadRole(ThreadRole role) : before_(t_role) {
    t_role = role;
}
ScopedThreadRole::~ScopedThreadRole() {
    t_role = before_;
}

}  // namespace stage

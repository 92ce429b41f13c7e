#include "model/stacking_order.h"

namespace ks {
namespace {

std::int8_t code_of(ScopeKind kind) {
    return static_cast<std::int8_t>(kind);
}

/// First position of `kind` among the valid entries, or their number when it is absent.
int position_of(const InstanceRecord &record, ScopeKind kind) {
    int position = 0;
    while (position < readable_scopes(record) && record.scope_order[position] != code_of(kind)) {
        ++position;
    }
    return position;
}

/// The byte behind position `position`. Behind the last one lies the count.
std::int8_t byte_behind(const InstanceRecord &record, int position) {
    static_assert(offsetof(InstanceRecord, scope_count) ==
                  offsetof(InstanceRecord, scope_order) + kMaxScopes);
    return position + 1 < kMaxScopes ? record.scope_order[position + 1] : record.scope_count;
}

}  // namespace

void remove_scope(InstanceRecord &record, ScopeKind kind) {
    if (record.scope_count <= 0) return;
    const int end = readable_scopes(record);
    for (int i = position_of(record, kind); i < end; ++i) {
        record.scope_order[i] = byte_behind(record, i);
    }
    --record.scope_count;  // even when nothing was found
}

void add_scope(InstanceRecord &record, ScopeKind kind) {
    const int count = readable_scopes(record);
    if (position_of(record, kind) < count || record.scope_count >= kMaxScopes) return;
    for (int i = count; i > 0; --i) record.scope_order[i] = record.scope_order[i - 1];
    record.scope_order[0] = code_of(kind);
    ++record.scope_count;
}

void bring_scope_to_front(InstanceRecord &record, ScopeKind kind) {
    if (record.scope_order[0] == code_of(kind)) return;
    bool found = false;
    for (int i = readable_scopes(record) - 1; i >= 1; --i) {
        found = found || record.scope_order[i] == code_of(kind);
        if (found) record.scope_order[i] = record.scope_order[i - 1];
    }
    record.scope_order[0] = code_of(kind);  // even when nothing was found
}

}  // namespace ks

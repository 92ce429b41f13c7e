#include "render/stacking.h"

#include <algorithm>

#include "host/host_world.h"
#include "host/scoped.h"
#include "model/record.h"
#include "render/compositing.h"

namespace ks {
namespace {

static_assert(kMaxScopes == kScopeKinds);

/// The order this frame stacks its scopes in: kind codes, front first.
struct StackingOrder {
    std::array<std::int8_t, kMaxScopes> kinds{};
    int count = 0;
};

void update_stacking_order(InstanceRecord &record, const ScopeSet &scopes) {
    if (record.scope_count == scopes.count) return;
    for (int i = 0; i < kMaxScopes; ++i) {
        const auto slot = static_cast<std::size_t>(i);
        record.scope_order[i] =
            i < scopes.count ? static_cast<std::int8_t>(scopes.kinds[slot]) : std::int8_t{0};
    }
    record.scope_count = static_cast<std::int8_t>(scopes.count);
}

PF_Err current_stacking_order(const Frame &frame, const ScopeSet &scopes, StackingOrder &order) {
    LockedHandle<InstanceRecord> instance(frame.suites.handle(), frame.out_data->sequence_data);
    InstanceRecord *const record = instance.get();
    if (record == nullptr) return PF_Err_INTERNAL_STRUCT_DAMAGED;
    update_stacking_order(*record, scopes);
    order.count = readable_scopes(*record);
    std::copy_n(record->scope_order, order.kinds.size(), order.kinds.begin());
    return PF_Err_NONE;
}

void place_scope(ErrorChain &chain, const Frame &frame, ScopePanels &panels, ScopeKind kind) {
    ParamCheckout position(frame.in_data, kScopeTable[scope_slot(kind)].position);
    chain.keep(position.error());
    chain.step([&]() -> PF_Err {
        const PF_EffectWorld *const panel = panels.panel(kind);
        if (panel == nullptr) return PF_Err_NONE;
        const PF_PointDef &point = position.def().u.td;
        return place_world(frame, panel, full_rect(size_of(*panel)),
                           {whole_pixels(point.x_value), whole_pixels(point.y_value)}, {},
                           frame.output);
    });
    chain.always([&] { return panels.dispose(kind); });
    chain.always([&] { return position.close(); });
}

}  // namespace

void stack_scopes(ErrorChain &chain, const Frame &frame, ScopePanels &panels) {
    StackingOrder order;
    chain.step([&] { return current_stacking_order(frame, panels.set(), order); });
    std::array<bool, kScopeKinds> placed{};
    for (int i = order.count - 1; i >= 0 && chain.ok(); --i) {
        const int code = order.kinds[static_cast<std::size_t>(i)];
        if (!is_scope_code(code)) continue;
        const ScopeKind kind = static_cast<ScopeKind>(code);
        bool &done = placed[scope_slot(kind)];
        if (done || !panels.set().enabled(kind)) continue;
        done = true;
        place_scope(chain, frame, panels, kind);
    }
}

}  // namespace ks

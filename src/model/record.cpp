#include "model/record.h"

#include <algorithm>
#include <iterator>

namespace ks {

void init_instance_record(InstanceRecord &record) {
    for (int i = 0; i < kRampEntries; ++i) {
        record.ramp_table()[i] = static_cast<float>(i) * kRampStep;
    }
    for (int j = 0; j < kStepEntries; ++j) {
        record.step_table()[j] = 1.0f + static_cast<float>(j + 1) * kHighStep;
    }
    record.ramp_key = 1.0f;
    record.cached_value = 1.0;
    record.cached_flags = 0;
}

void init_new_instance(InstanceRecord &record) {
    // Matches the scopes whose "Show" boxes start switched on.
    constexpr std::int8_t order[kMaxScopes] = {1, 2, 3, 0, 0};
    init_instance_record(record);
    record.state = 0;
    std::copy(std::begin(order), std::end(order), record.scope_order);
    record.scope_count = 3;
}

FlatRecord flatten(const InstanceRecord &record) {
    FlatRecord flat{};
    flat.state = record.state;
    std::copy(std::begin(record.scope_order), std::end(record.scope_order), flat.scope_order);
    flat.scope_count = record.scope_count;
    flat.is_flat = 1;
    return flat;
}

void unflatten(const FlatRecord &flat, InstanceRecord &record) {
    init_instance_record(record);
    record.state = flat.state;
    std::copy(std::begin(flat.scope_order), std::end(flat.scope_order), record.scope_order);
    record.scope_count = flat.scope_count;
}

}  // namespace ks

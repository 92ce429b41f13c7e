// The instance record in the host's sequence data, and its flat form in projects. No host types.
#pragma once

#include <cstddef>
#include <cstdint>

namespace ks {

inline constexpr int kRampEntries = 512;  ///< gamma curve for inputs in (0, 1]
inline constexpr int kStepEntries = 256;  ///< gamma curve for inputs in (1, 8)
/// Single-precision 1/511: the step of the ramp's inputs. 511 steps are exactly 1.0, so a rebuild
/// for gamma 1.0 gives the very ramp a new record starts with.
inline constexpr float kRampStep = 0.0019569471f;
inline constexpr float kHighStep = 0.03125f;  ///< of the inputs above 1
inline constexpr int kMaxScopes = 5;

#pragma pack(push, 4)
/// One per applied effect. Offsets are a promise: projects that are open across an update share it.
struct InstanceRecord {
    std::uint8_t state;  ///< 0 until the panel has sized the scopes from the layer, then 1
    std::uint8_t reserved_a[3];
    float ramp_key;  ///< gamma for which the tables hold their values
    /// `ramp_table` (512 entries) with `step_table` (256) directly behind it. One array, because a
    /// lookup of exactly 1.0 reads one past the ramp on purpose.
    float gamma_tables[kRampEntries + kStepEntries];
    std::int8_t scope_order[kMaxScopes];  ///< scope kind codes, front first; 0 past scope_count
    std::int8_t scope_count;  ///< valid entries; any value -128..127 in damaged projects
    std::uint8_t reserved_b[2];
    double cached_value;
    std::uint32_t cached_flags;

    float *ramp_table() { return gamma_tables; }
    float *step_table() { return gamma_tables + kRampEntries; }
};
#pragma pack(pop)

static_assert(sizeof(InstanceRecord) == 3100);
static_assert(offsetof(InstanceRecord, ramp_key) == 4);
static_assert(offsetof(InstanceRecord, gamma_tables) == 8);
static_assert(offsetof(InstanceRecord, scope_order) == 3080);
static_assert(offsetof(InstanceRecord, scope_count) == 3085);
static_assert(offsetof(InstanceRecord, cached_value) == 3088);
static_assert(offsetof(InstanceRecord, cached_flags) == 3096);

/// What the host saves in the project; byte for byte.
struct FlatRecord {
    std::uint8_t state;
    std::int8_t scope_order[kMaxScopes];
    std::int8_t scope_count;
    std::uint8_t is_flat;  ///< always 1
};
static_assert(sizeof(FlatRecord) == 8);

/// Number of entries of `scope_order` that may be read: scope_count clamped to 0..5.
inline int readable_scopes(const InstanceRecord &record) {
    if (record.scope_count < 0) return 0;
    return record.scope_count > kMaxScopes ? kMaxScopes : record.scope_count;
}

/// Fills the tables and cached values of a new record: identity ramps for gamma 1.0. Leaves `state`
/// and the stacking order alone.
void init_instance_record(InstanceRecord &record);

/// Makes `record`, zeroed before, the record of a newly applied effect: tables and cached values,
/// state 0, and the scopes that are shown by default in the order 1, 2, 3.
void init_new_instance(InstanceRecord &record);

/// The flat form of `record`: state, order and count as they are, valid or not.
FlatRecord flatten(const InstanceRecord &record);

/// Rebuilds `record`, zeroed before, from its flat form. `is_flat` is not looked at: hosts do hand
/// in records that were never flattened, and whatever order they spell must be survived.
void unflatten(const FlatRecord &flat, InstanceRecord &record);

}  // namespace ks

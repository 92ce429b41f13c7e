// References to parts of the project that the plug-in holds: AEGP handles, with a ledger.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "hostapi/aegp_types.h"
#include "stage/project/project.h"

namespace stage {

/// What a reference turned out to be.
enum class RefState {
    kGood,
    kStale,    ///< handed out before the number of layers (items, comps) changed
    kUnknown,  ///< null, disposed of, of another kind, or never handed out
};

/// A layer, comp or item behind a reference; `id` is 0 unless the state is kGood.
struct FoundRef {
    RefState state = RefState::kUnknown;
    int id = 0;
};

/// An effect in a layer's effect list.
struct EffectTarget {
    LayerId layer = 0;
    int effect = 0;  ///< position in the list, 0-based
};

/// What a stream reference stands for.
struct StreamTarget {
    enum class Kind { kEffectParam, kPosition, kScale, kOpacity };
    Kind kind = Kind::kEffectParam;
    EffectTarget owner;  ///< layer streams use only the layer
    int param = 0;       ///< parameter index, for kEffectParam
};

/// Hands out opaque handles and finds again what they stand for. Layers, comps and items: the same
/// handle for the same object until the number of such objects changes; nothing to dispose of.
/// Streams and effects: a new handle each time, to be disposed of. Serialised by the host, as its
/// calls are; not thread-safe.
class ProjectRefs {
  public:
    ProjectRefs();
    ~ProjectRefs();
    ProjectRefs(const ProjectRefs &) = delete;
    ProjectRefs &operator=(const ProjectRefs &) = delete;

    /// Null for id 0.
    AEGP_LayerH layer(const Project &project, LayerId id);
    AEGP_CompH comp(const Project &project, ItemId id);
    AEGP_ItemH item(const Project &project, ItemId id);
    FoundRef find(const Project &project, AEGP_LayerH handle) const;
    FoundRef find(const Project &project, AEGP_CompH handle) const;
    FoundRef find(const Project &project, AEGP_ItemH handle) const;

    AEGP_EffectRefH new_effect(const EffectTarget &target, const std::string &command);
    /// `made_from` is the effect whose stream it is; null for layer streams.
    AEGP_StreamRefH new_stream(const StreamTarget &target, AEGP_EffectRefH made_from,
                               const std::string &command);
    /// Null unless the handle is live. The layer or effect itself may be gone meanwhile.
    const EffectTarget *effect(AEGP_EffectRefH handle) const;
    const StreamTarget *stream(AEGP_StreamRefH handle) const;
    /// False when the handle is not live.
    bool dispose(AEGP_StreamRefH handle);
    bool dispose(AEGP_EffectRefH handle);
    /// Live streams that were made from this effect reference.
    int streams_of(AEGP_EffectRefH handle) const;

    /// One line for each stream and effect not disposed of: what, and the command that got it.
    std::vector<std::string> leaks() const;
    /// Forgets streams and effects, live and disposed of: the command is over.
    void clear_command();

    /// True the first time only: the host notes a plug-in id of 0 once.
    bool first_zero_plugin_id();

  private:
    enum class Kind { kLayer, kComp, kItem };
    struct ObjectRef;
    struct EffectRef;
    struct StreamRef;
    static std::uint64_t version_of(const Project &project, Kind kind);
    void *object(const Project &project, Kind kind, int id);
    FoundRef find_object(const Project &project, Kind kind, const void *handle) const;

    std::map<const void *, std::unique_ptr<ObjectRef>> objects_;
    std::map<std::pair<Kind, int>, ObjectRef *> current_;  ///< newest handle of each object
    std::map<const void *, std::unique_ptr<EffectRef>> effects_;
    std::map<const void *, std::unique_ptr<StreamRef>> streams_;
    bool zero_id_noted_ = false;
};

}  // namespace stage

#include "stage/ledger/project_refs.h"

#include <utility>

namespace stage {

// A handle is the address of its record; `opaque` is there because a handle points to a pointer.
struct ProjectRefs::ObjectRef {
    void *opaque = nullptr;
    Kind kind = Kind::kLayer;
    int id = 0;
    std::uint64_t version = 0;
};

struct ProjectRefs::EffectRef {
    void *opaque = nullptr;
    EffectTarget target;
    std::string command;
    bool disposed = false;
};

struct ProjectRefs::StreamRef {
    void *opaque = nullptr;
    StreamTarget target;
    const void *made_from = nullptr;
    std::string command;
    bool disposed = false;
};

namespace {

template <class Map>
auto *find_live(const Map &refs, const void *handle) {
    const auto found = refs.find(handle);
    const bool live = found != refs.end() && !found->second->disposed;
    return live ? found->second.get() : nullptr;
}

std::string from_command(const std::string &command) {
    return " from " + (command.empty() ? "outside any command" : command);
}

const char *stream_kind_name(StreamTarget::Kind kind) {
    switch (kind) {
        case StreamTarget::Kind::kPosition:
            return "position stream";
        case StreamTarget::Kind::kScale:
            return "scale stream";
        case StreamTarget::Kind::kOpacity:
            return "opacity stream";
        case StreamTarget::Kind::kEffectParam:
            break;
    }
    return "stream of parameter ";
}

}  // namespace

ProjectRefs::ProjectRefs() = default;
ProjectRefs::~ProjectRefs() = default;

std::uint64_t ProjectRefs::version_of(const Project &project, Kind kind) {
    switch (kind) {
        case Kind::kLayer:
            return project.layer_version();
        case Kind::kComp:
            return project.comp_version();
        case Kind::kItem:
            break;
    }
    return project.item_version();
}

void *ProjectRefs::object(const Project &project, Kind kind, int id) {
    if (id == 0) return nullptr;
    const std::uint64_t version = version_of(project, kind);
    ObjectRef *&newest = current_[{kind, id}];
    if (newest == nullptr || newest->version != version) {
        // The old record stays, so that a stale handle is told from a new one.
        auto ref = std::make_unique<ObjectRef>();
        ref->kind = kind;
        ref->id = id;
        ref->version = version;
        newest = ref.get();
        objects_[newest] = std::move(ref);
    }
    return newest;
}

FoundRef ProjectRefs::find_object(const Project &project, Kind kind, const void *handle) const {
    const auto found = objects_.find(handle);
    if (found == objects_.end() || found->second->kind != kind) return {};
    if (found->second->version != version_of(project, kind)) return {RefState::kStale, 0};
    return {RefState::kGood, found->second->id};
}

AEGP_LayerH ProjectRefs::layer(const Project &project, LayerId id) {
    return static_cast<AEGP_LayerH>(object(project, Kind::kLayer, id));
}
AEGP_CompH ProjectRefs::comp(const Project &project, ItemId id) {
    return static_cast<AEGP_CompH>(object(project, Kind::kComp, id));
}
AEGP_ItemH ProjectRefs::item(const Project &project, ItemId id) {
    return static_cast<AEGP_ItemH>(object(project, Kind::kItem, id));
}

FoundRef ProjectRefs::find(const Project &project, AEGP_LayerH handle) const {
    return find_object(project, Kind::kLayer, handle);
}
FoundRef ProjectRefs::find(const Project &project, AEGP_CompH handle) const {
    return find_object(project, Kind::kComp, handle);
}
FoundRef ProjectRefs::find(const Project &project, AEGP_ItemH handle) const {
    return find_object(project, Kind::kItem, handle);
}

AEGP_EffectRefH ProjectRefs::new_effect(const EffectTarget &target, const std::string &command) {
    auto ref = std::make_unique<EffectRef>();
    ref->target = target;
    ref->command = command;
    void *handle = ref.get();
    effects_[handle] = std::move(ref);
    return static_cast<AEGP_EffectRefH>(handle);
}

AEGP_StreamRefH ProjectRefs::new_stream(const StreamTarget &target, AEGP_EffectRefH made_from,
                                        const std::string &command) {
    auto ref = std::make_unique<StreamRef>();
    ref->target = target;
    ref->made_from = made_from;
    ref->command = command;
    void *handle = ref.get();
    streams_[handle] = std::move(ref);
    return static_cast<AEGP_StreamRefH>(handle);
}

const EffectTarget *ProjectRefs::effect(AEGP_EffectRefH handle) const {
    const EffectRef *ref = find_live(effects_, handle);
    return ref == nullptr ? nullptr : &ref->target;
}

const StreamTarget *ProjectRefs::stream(AEGP_StreamRefH handle) const {
    const StreamRef *ref = find_live(streams_, handle);
    return ref == nullptr ? nullptr : &ref->target;
}

bool ProjectRefs::dispose(AEGP_StreamRefH handle) {
    StreamRef *ref = find_live(streams_, handle);
    if (ref != nullptr) ref->disposed = true;
    return ref != nullptr;
}

bool ProjectRefs::dispose(AEGP_EffectRefH handle) {
    EffectRef *ref = find_live(effects_, handle);
    if (ref != nullptr) ref->disposed = true;
    return ref != nullptr;
}

int ProjectRefs::streams_of(AEGP_EffectRefH handle) const {
    int count = 0;
    for (const auto &[address, ref] : streams_) {
        count += !ref->disposed && ref->made_from == handle ? 1 : 0;
    }
    return count;
}

std::vector<std::string> ProjectRefs::leaks() const {
    std::vector<std::string> lines;
    for (const auto &[handle, ref] : effects_) {
        if (!ref->disposed) lines.push_back("effect reference" + from_command(ref->command));
    }
    for (const auto &[handle, ref] : streams_) {
        if (ref->disposed) continue;
        std::string what = stream_kind_name(ref->target.kind);
        if (ref->target.kind == StreamTarget::Kind::kEffectParam) {
            what += std::to_string(ref->target.param);
        }
        lines.push_back(what + from_command(ref->command));
    }
    return lines;
}

void ProjectRefs::clear_command() {
    effects_.clear();
    streams_.clear();
}

bool ProjectRefs::first_zero_plugin_id() {
    return !std::exchange(zero_id_noted_, true);
}

}  // namespace stage

// A small project: items, compositions, layers, effects. No host types.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "stage/image/picture.h"
#include "stage/project/param_value.h"

namespace stage {

using ItemId = int;   ///< 1, 2, 3 ...; 0 is none
using LayerId = int;  ///< unique over the project; 0 is none

/// What a project refuses to do: one clear line.
class ProjectError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

enum class ItemKind { kComp, kFootage, kSolid };

/// Flags of a layer, values as the host's AEGP_LayerFlag_*.
namespace layer_flag {
inline constexpr std::uint32_t kVideoActive = 1;
inline constexpr std::uint32_t kLocked = 32;
inline constexpr std::uint32_t kAdjustment = 512;
inline constexpr std::uint32_t kNull = 65536;
inline constexpr std::uint32_t kGuide = 262144;
}  // namespace layer_flag

enum class LayerKind { kAv, kText };  ///< text layers have no source item

/// One stream (parameter) of an applied effect.
struct EffectStream {
    ParamValue value;
    bool hidden = false;
    int id = 0;        ///< the parameter's id, by which a saved value is found again
    std::string name;  ///< UTF-8; shown name, the second choice where the id is 0

    bool operator==(const EffectStream &) const = default;
};

/// An applied effect as the project file keeps it.
struct EffectState {
    std::string match_name;
    std::vector<EffectStream> streams;        ///< by parameter index; 0 is the input layer
    std::vector<std::uint8_t> flat_sequence;  ///< as flattened last; may be empty
    int instance = 0;  ///< the running effect that this is; 0 for none. Not part of a file

    bool operator==(const EffectState &) const = default;
};

struct Layer {
    LayerId id = 0;
    std::string name;  ///< UTF-8; shown name
    LayerKind kind = LayerKind::kAv;
    ItemId source = 0;  ///< 0 for text layers
    std::uint32_t flags = layer_flag::kVideoActive;
    bool selected = false;
    double position_x = 0, position_y = 0;  ///< comp pixels of the layer's centre
    double scale = 100;                     ///< percent, both axes
    double opacity = 100;                   ///< percent
    std::string position_expression;        ///< "" when none
    bool separated_position = false;        ///< separate dimensions: no combined position property
    std::vector<EffectState> effects;

    bool has_flag(std::uint32_t flag) const { return (flags & flag) != 0; }
    bool operator==(const Layer &) const = default;
};

/// Hands out the picture of a footage item at a frame, 0-based, the same one whenever asked. May
/// throw PictureError. Copies are equal: they read the same footage. A reader made anew from a
/// callable is equal to no other, so pictures that were made from an earlier one are out of date.
class FrameReader {
  public:
    FrameReader() = default;
    FrameReader(std::nullptr_t) {}  // NOLINT: as a function's
    template <class F>
    requires(!std::is_same_v<std::remove_cvref_t<F>, FrameReader> &&
             std::is_invocable_r_v<Picture, F &, std::int64_t>)
        FrameReader(F &&read)  // NOLINT: callables are meant to convert
        : read_(std::make_shared<Function>(std::forward<F>(read))) {}

    Picture operator()(std::int64_t frame) const { return (*read_)(frame); }
    explicit operator bool() const { return read_ != nullptr && *read_ != nullptr; }
    bool operator==(const FrameReader &) const = default;

  private:
    using Function = std::function<Picture(std::int64_t)>;
    std::shared_ptr<Function> read_;
};

struct Item {
    ItemId id = 0;
    ItemKind kind = ItemKind::kFootage;
    std::string name;                 ///< UTF-8
    int width = 0, height = 0;        ///< pixels, 1..kMaxPictureSide
    int par_num = 1, par_den = 1;     ///< pixel aspect ratio, both above 0
    std::int64_t frames = 1;          ///< duration in frames of the comp's time step
    int rate_num = 25, rate_den = 1;  ///< frames per second, both above 0
    // comp
    std::vector<Layer> layers;  ///< [0] is the top
    // solid
    std::array<double, 4> color{1, 0, 0, 0};  ///< alpha, red, green, blue
    // footage
    std::string path;    ///< UTF-8; file or printf pattern; "" for charts
    std::string chart;   ///< name of a built-in chart, or ""
    FrameReader reader;  ///< set when opened
};

/// Everything that a project consists of, by value: what undo keeps and a project file restores.
struct ProjectData {
    std::vector<Item> items;
    ItemId active_comp = 0;
    int next_id = 1;  ///< the smallest id that was never given out
};

/// Items, layers and the active composition. Undo keeps whole copies.
/// Ids are never reused. Errors are ProjectError. Pointers to layers hold until the number or order
/// of layers of that comp changes; pointers to items until restore(). [host thread]
class Project {
  public:
    ItemId add_comp(const std::string &name, int width, int height, int par_num, int par_den,
                    std::int64_t frames);
    ItemId add_footage(const std::string &name, int width, int height, int par_num, int par_den,
                       std::int64_t frames, FrameReader reader);
    /// The same from an item that says it all; its id and kind are set here.
    ItemId add_footage(Item footage);
    ItemId add_solid_item(const std::string &name, int width, int height,
                          const std::array<double, 4> &color);
    /// New layer at `index` (0 is the top; -1 or past the end is the bottom), centred in the comp,
    /// not selected. A comp cannot be put into itself, not even by way of other comps.
    LayerId add_layer(ItemId comp, ItemId source, int index, const std::string &name);
    /// An adjustment layer over a comp-sized solid of its own, as the host makes them.
    LayerId add_adjustment_layer(ItemId comp, int index, const std::string &name);
    LayerId add_text_layer(ItemId comp, int index, const std::string &name);
    /// Items stay in the project.
    void remove_layer(LayerId layer);
    /// Moves a layer to 0-based `index`; -1 or past the end is the bottom.
    void reorder_layer(LayerId layer, int index);

    Item *item(ItemId id);
    const Item *item(ItemId id) const;
    /// Like item(), for comps only: null when the item is of another kind.
    Item *comp(ItemId id);
    const Item *comp(ItemId id) const;
    Layer *layer(LayerId id);
    const Layer *layer(LayerId id) const;
    Item *comp_of(LayerId layer);
    const Item *comp_of(LayerId layer) const;
    int index_of(LayerId layer) const;  ///< -1 when there is none
    /// The item that gives a layer its size: its source or, without one, its comp. Null when there
    /// is no such layer.
    const Item *extent_of(LayerId layer) const;
    const std::vector<std::unique_ptr<Item>> &items() const { return items_; }

    ItemId active_comp = 0;
    /// Counts of changes to the number of layers, items and comps: a reference to such a thing is
    /// stale once its count has moved on. A change of order alone leaves references valid.
    std::uint64_t layer_version() const { return layer_version_; }
    std::uint64_t item_version() const { return item_version_; }
    std::uint64_t comp_version() const { return comp_version_; }
    /// Goes up whenever one of the three does.
    std::uint64_t structure_version() const {
        return layer_version_ + item_version_ + comp_version_;
    }

    /// A copy of everything.
    ProjectData data() const;
    /// Replaces everything. Ids that this project gave out stay used up, and all references go
    /// stale. The data must be consistent, as that of data() or of a loaded file is.
    void restore(const ProjectData &data);

  private:
    Item &new_item(ItemKind kind, const std::string &name, int width, int height);
    Item &require_comp(ItemId id);
    LayerId insert_layer(Item &comp, Layer layer, int index);

    std::vector<std::unique_ptr<Item>> items_;
    int next_id_ = 1;
    std::uint64_t layer_version_ = 1;
    std::uint64_t item_version_ = 1;
    std::uint64_t comp_version_ = 1;
};

/// True when `comp` shows `item`, directly or by way of nested comps, or is it.
bool comp_contains(const Project &project, ItemId comp, ItemId item);

/// Values of `saved` for the parameters that a plug-in has now: each stream of `current` whose
/// non-zero id, or else name, occurs in `saved` takes that value and hidden flag. Streams that only
/// `saved` knows are dropped. The result has the length and the ids and names of `current`.
std::vector<EffectStream> match_streams(const std::vector<EffectStream> &saved,
                                        std::vector<EffectStream> current);

}  // namespace stage

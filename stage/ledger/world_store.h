// Pixel worlds that the host hands out, with guard bytes and a ledger.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "hostapi/effect_types.h"
#include "stage/image/picture.h"
#include "stage/ledger/quarantine.h"
#include "stage/pixels/host_pixels.h"

namespace stage {

class Strict;

/// 4, 8 or 16.
int bytes_per_pixel(Depth depth);
/// PF_PixelFormat_ARGB32, _ARGB64 or _ARGB128.
PF_PixelFormat pixel_format(Depth depth);
const char *depth_name(Depth depth);

/// Largest width and height of a world, pixels.
inline constexpr int kMaxWorldSide = 30000;

/// How a world is laid out in memory beyond its pixels. Both numbers are rounded up to a multiple
/// of 4, which every channel type is aligned to.
struct WorldLayout {
    int row_padding = 0;  ///< bytes behind each row, filled with guard bytes
    int base_offset = 0;  ///< bytes between a 64-byte boundary and pixel (0, 0)
    bool poison = true;   ///< fill with a pattern, else with zeros
};

/// One world as the stage keeps it; `def` is what the plug-in sees.
struct World {
    PF_EffectWorld def{};
    Depth depth = Depth::U8;
    std::string command;     ///< command that made it
    bool by_plugin = false;  ///< made by PF_NewWorld, so the plug-in must dispose of it
    Bytes storage;
    std::size_t storage_size = 0;
    std::size_t origin = 0;      ///< offset of pixel (0, 0) in storage
    std::uint64_t checksum = 0;  ///< of the pixels, when `read_only`
    bool read_only = false;
    bool overrun = false;  ///< damage to the guard bytes has been reported
};

/// All live worlds, found again by their data pointer, since a plug-in may copy the record itself.
/// Thread-safe. Guard bytes surround the pixels and fill the row padding; pixels of disposed worlds
/// are poisoned and kept aside for a while.
///
/// Findings: "world.dead", "world.guard", "world.read_only", "world.use_after_free".
class WorldStore {
  public:
    explicit WorldStore(Strict &strict);

    /// A world of the stage's own (input, output, layer), writeable until protect(). Never null:
    /// sizes that are not 1..30000 throw std::invalid_argument, short memory std::bad_alloc.
    World *create(int width, int height, Depth depth, const WorldLayout &layout);
    /// For PF_NewWorld: null for sizes that are not 1..30000, above `size_limit` bytes of pixels,
    /// or when memory is short. `clear` makes it transparent black.
    World *create_for_plugin(int width, int height, Depth depth, bool clear,
                             const WorldLayout &layout, const std::string &command);
    /// The record of `world`, or null when its data is no live world's.
    World *find(const PF_EffectWorld *world) const;
    /// The label of a world that was disposed of lately and had these pixels; "" for any other.
    std::string freed_label(const PF_EffectWorld *world) const;
    /// Forgets `world` and frees its pixels; guard damage is reported. Null is ignored.
    void destroy(World *world, const std::string &command);
    /// destroy() for a world of the host's own whose pixels are wanted on. With checks on they are
    /// copied, so that later writes into the world are noticed; else its memory is taken over.
    HostPixels destroy_and_keep(World *world, const std::string &command);

    /// Takes a checksum that `check()` compares: the plug-in must not write. Takes the writeable
    /// flag off.
    void protect(World *world);
    /// Guards of all live worlds, the pixels of protected ones, and the disposed ones: the newest,
    /// and the others in turn, unless `everything` is wanted.
    void check(const std::string &command, bool everything = true);
    /// Worlds made by the plug-in that are still alive.
    std::vector<const World *> plugin_worlds() const;

    /// Bytes of pixels and padding that one world of a plug-in may have; larger requests fail.
    std::uint64_t size_limit = std::uint64_t{8} << 30;

    /// Where the memory of worlds comes from.
    BytePool &pool() const { return *pool_; }

  private:
    std::unique_ptr<World> make(int width, int height, Depth depth,
                                const WorldLayout &layout) const;
    World *keep(std::unique_ptr<World> world);
    std::unique_ptr<World> forget(World *world, const std::string &command);
    void check_world(World &world, const std::string &command) const;

    mutable std::mutex mutex_;
    Strict &strict_;
    std::shared_ptr<BytePool> pool_ = std::make_shared<BytePool>();
    std::map<const void *, std::unique_ptr<World>> live_;
    Quarantine freed_;
};

/// "200x130 argb8", for messages.
std::string world_label(const World &world);

/// The world's pixels as a picture.
Picture world_picture(const World &world);

/// How many pixels still are what is_poison() finds.
std::int64_t count_poison(const World &world);
/// True when every byte of pixel (x, y) still holds the poison that a new world is filled with: the
/// bytes 0B AD F0 0D over and over. At 16 bit that is no legal pixel, at 8 bit an unlikely one.
bool is_poison(const World &world, int x, int y);

}  // namespace stage

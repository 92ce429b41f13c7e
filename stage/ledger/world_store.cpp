#include "stage/ledger/world_store.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <new>
#include <stdexcept>
#include <utility>

#include "hostapi/constants.h"
#include "stage/ledger/strict.h"

namespace stage {
namespace {

constexpr std::size_t kAlignment = 64;
constexpr std::size_t kGuardBytes = 64;
constexpr std::uint8_t kGuardByte = 0xC3;
constexpr std::array<std::uint8_t, 4> kPoison{0x0B, 0xAD, 0xF0, 0x0D};
constexpr std::size_t kQuarantineBytes = std::size_t{16} << 20;

struct DepthRow {
    Depth depth;
    int bytes;
    PF_PixelFormat format;
    const char *name;
};
constexpr DepthRow kDepths[] = {
    {Depth::U8, 4, PF_PixelFormat_ARGB32, "argb8"},
    {Depth::U16, 8, PF_PixelFormat_ARGB64, "argb16"},
    {Depth::Float, 16, PF_PixelFormat_ARGB128, "argb32f"},
};
const DepthRow &row_of(Depth depth) {
    return *std::find_if(std::begin(kDepths), std::end(kDepths) - 1,
                         [&](const DepthRow &row) { return row.depth == depth; });
}

std::size_t round_up(std::size_t value, std::size_t step) {
    return (value + step - 1) / step * step;
}

std::size_t pixel_bytes_per_row(const World &world) {
    return static_cast<std::size_t>(world.def.width) *
           static_cast<std::size_t>(bytes_per_pixel(world.depth));
}
std::uint8_t *row_start(const World &world, int y) {
    return world.storage.get() + world.origin +
           static_cast<std::size_t>(y) * static_cast<std::size_t>(world.def.rowbytes);
}

// The poison as it lies in memory.
std::uint32_t poison_word() {
    return std::bit_cast<std::uint32_t>(kPoison);
}

// Rows start at multiples of 4 and hold whole words; memcpy is how they may be read as such.
std::uint32_t word_at(const std::uint8_t *bytes) {
    std::uint32_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

void fill_pattern(std::uint8_t *bytes, std::size_t size) {
    const std::uint32_t word = poison_word();
    for (std::size_t i = 0; i < size; i += sizeof word) std::memcpy(bytes + i, &word, sizeof word);
}

// Equal to itself shifted by one is the fast way to see that all bytes are the same.
bool all_guard(const std::uint8_t *from, const std::uint8_t *to) {
    if (from == to) return true;
    return *from == kGuardByte &&
           std::memcmp(from, from + 1, static_cast<std::size_t>(to - from) - 1) == 0;
}

// Position of the first damaged stretch of guard bytes, "" when all are intact.
std::string damage(const World &world) {
    const std::uint8_t *begin = world.storage.get(), *end = begin + world.storage_size;
    if (!all_guard(begin, row_start(world, 0))) return "before the first row";
    const std::size_t pixels = pixel_bytes_per_row(world);
    for (int y = 0; y < world.def.height; ++y) {
        const std::uint8_t *row = row_start(world, y);
        if (!all_guard(row + pixels, row + world.def.rowbytes)) {
            return "behind row " + std::to_string(y);
        }
    }
    if (!all_guard(row_start(world, world.def.height), end)) return "behind the last row";
    return "";
}

// Steps of a checksum: one-to-one in `sum` and in `word`.
constexpr std::uint64_t step(std::uint64_t sum, std::uint64_t word) {
    sum = (sum ^ word) * 0x100000001B3u;
    return sum ^ (sum >> 29);
}

// Not for security, but any one changed byte changes it: the lanes take turns at the words of a
// row, and so run side by side in the processor.
std::uint64_t checksum_of(const World &world) {
    constexpr std::size_t kLanes = 4;
    std::array<std::uint64_t, kLanes> lanes{0x9E3779B97F4A7C15u, 1, 2, 3};
    const std::size_t size = pixel_bytes_per_row(world);  // a multiple of 4
    for (int y = 0; y < world.def.height; ++y) {
        const std::uint8_t *row = row_start(world, y);
        std::size_t i = 0;
        for (; i + sizeof lanes <= size; i += sizeof lanes) {
            std::array<std::uint64_t, kLanes> words;
            std::memcpy(words.data(), row + i, sizeof words);
            for (std::size_t lane = 0; lane < kLanes; ++lane) {
                lanes[lane] = step(lanes[lane], words[lane]);
            }
        }
        for (; i < size; i += 4) lanes[0] = step(lanes[0], word_at(row + i));
    }
    std::uint64_t sum = 0;
    for (const std::uint64_t lane : lanes) sum = step(sum, lane);
    return sum;
}

template <Depth kDepth>
std::int64_t poison_in_row(const std::uint8_t *row, std::size_t size) {
    constexpr std::size_t kWords = sizeof(typename DepthTraits<kDepth>::Pixel) / 4;
    const std::uint32_t poison = poison_word();
    std::int32_t count = 0;
    for (std::size_t i = 0; i < size; i += kWords * 4) {
        bool all = true;
        for (std::size_t word = 0; word < kWords; ++word) {
            all &= word_at(row + i + word * 4) == poison;
        }
        count += all ? 1 : 0;
    }
    return count;
}

bool valid_side(int side) {
    return side >= 1 && side <= kMaxWorldSide;
}

void clear_pixels(const World &world) {
    for (int y = 0; y < world.def.height; ++y) {
        std::memset(row_start(world, y), 0, pixel_bytes_per_row(world));
    }
}

}  // namespace

int bytes_per_pixel(Depth depth) {
    return row_of(depth).bytes;
}
PF_PixelFormat pixel_format(Depth depth) {
    return row_of(depth).format;
}
const char *depth_name(Depth depth) {
    return row_of(depth).name;
}
std::string world_label(const World &world) {
    return std::to_string(world.def.width) + "x" + std::to_string(world.def.height) + " " +
           depth_name(world.depth);
}

WorldStore::WorldStore(Strict &strict)
    : strict_(strict), freed_(strict, "world.use_after_free", kQuarantineBytes) {}

std::unique_ptr<World> WorldStore::make(int width, int height, Depth depth,
                                        const WorldLayout &layout) const {
    const auto padding = round_up(static_cast<std::size_t>(std::max(layout.row_padding, 0)), 4);
    const auto offset = round_up(static_cast<std::size_t>(std::max(layout.base_offset, 0)), 4);
    const auto rowbytes =
        static_cast<std::size_t>(width) * static_cast<std::size_t>(bytes_per_pixel(depth)) +
        padding;
    auto world = std::make_unique<World>();
    world->depth = depth;
    world->storage_size = kGuardBytes + kAlignment + offset +
                          rowbytes * static_cast<std::size_t>(height) + kGuardBytes;
    world->storage = pool_->take(world->storage_size);
    std::uint8_t *storage = world->storage.get();
    const auto misalignment = reinterpret_cast<std::uintptr_t>(storage + kGuardBytes) % kAlignment;
    world->origin = kGuardBytes + (kAlignment - misalignment) + offset;

    PF_EffectWorld &def = world->def;
    def.world_flags = PF_WorldFlag_WRITEABLE | (depth == Depth::U16 ? PF_WorldFlag_DEEP : 0);
    def.data = reinterpret_cast<PF_PixelPtr>(storage + world->origin);
    def.rowbytes = static_cast<A_long>(rowbytes);
    def.width = width;
    def.height = height;
    def.extent_hint = {0, 0, width, height};
    def.pix_aspect_ratio = {1, 1};

    const std::size_t pixels = rowbytes - padding;
    std::memset(storage, kGuardByte, world->origin);
    for (int y = 0; y < height; ++y) {
        std::uint8_t *row = row_start(*world, y);
        if (layout.poison) {
            fill_pattern(row, pixels);
        } else {
            std::memset(row, 0, pixels);
        }
        std::memset(row + pixels, kGuardByte, padding);
    }
    std::uint8_t *tail = row_start(*world, height);
    std::memset(tail, kGuardByte, static_cast<std::size_t>(storage + world->storage_size - tail));
    return world;
}

World *WorldStore::keep(std::unique_ptr<World> world) {
    World *kept = world.get();
    const std::lock_guard lock(mutex_);
    live_.emplace(kept->def.data, std::move(world));
    return kept;
}

World *WorldStore::create(int width, int height, Depth depth, const WorldLayout &layout) {
    if (!valid_side(width) || !valid_side(height)) {
        throw std::invalid_argument("a world of " + std::to_string(width) + "x" +
                                    std::to_string(height) + " pixels cannot be made");
    }
    return keep(make(width, height, depth, layout));
}

World *WorldStore::create_for_plugin(int width, int height, Depth depth, bool clear,
                                     const WorldLayout &layout, const std::string &command) {
    if (!valid_side(width) || !valid_side(height)) return nullptr;
    const std::uint64_t row =
        static_cast<std::uint64_t>(width) * static_cast<std::uint64_t>(bytes_per_pixel(depth)) +
        static_cast<std::uint64_t>(std::max(layout.row_padding, 0));
    if (row * static_cast<std::uint64_t>(height) > size_limit) return nullptr;
    try {
        auto world = make(width, height, depth, layout);
        world->by_plugin = true;
        world->command = command;
        if (clear) clear_pixels(*world);
        return keep(std::move(world));
    } catch (const std::bad_alloc &) {
        return nullptr;
    }
}

World *WorldStore::find(const PF_EffectWorld *world) const {
    if (world == nullptr || world->data == nullptr) return nullptr;
    const std::lock_guard lock(mutex_);
    const auto found = live_.find(world->data);
    return found == live_.end() ? nullptr : found->second.get();
}

std::string WorldStore::freed_label(const PF_EffectWorld *world) const {
    if (world == nullptr || world->data == nullptr) return "";
    const std::lock_guard lock(mutex_);
    const std::string *label = freed_.label_of(world->data);
    return label == nullptr ? "" : *label;
}

std::unique_ptr<World> WorldStore::forget(World *world, const std::string &command) {
    check_world(*world, command);
    auto node = live_.extract(world->def.data);
    return node.empty() ? nullptr : std::move(node.mapped());
}

void WorldStore::destroy(World *world, const std::string &command) {
    if (world == nullptr) return;
    const std::lock_guard lock(mutex_);
    const std::unique_ptr<World> gone = forget(world, command);
    if (gone == nullptr) return;
    freed_.take(std::move(gone->storage), gone->storage_size, gone->def.data,
                "the world of " + world_label(*gone), command);
}

HostPixels WorldStore::destroy_and_keep(World *world, const std::string &command) {
    if (world == nullptr) return {};
    const PF_EffectWorld def = world->def;
    HostPixels pixels{def.width, def.height, world->depth, def.rowbytes, nullptr};
    if (strict_.enabled) {
        const PixelView view{reinterpret_cast<std::byte *>(def.data), def.rowbytes, def.width,
                             def.height, world->depth};
        pixels = make_host_pixels(def.width, def.height, world->depth, *pool_);
        copy_rows(view, pixels.view());
        destroy(world, command);
        return pixels;
    }
    const std::lock_guard lock(mutex_);
    const std::unique_ptr<World> gone = forget(world, command);
    if (gone == nullptr) return {};
    const std::shared_ptr<std::uint8_t[]> storage = std::move(gone->storage);
    pixels.data = {storage, storage.get() + gone->origin};
    return pixels;
}

void WorldStore::protect(World *world) {
    const std::lock_guard lock(mutex_);
    world->def.world_flags &= ~PF_WorldFlag_WRITEABLE;
    world->read_only = true;
    if (strict_.enabled) world->checksum = checksum_of(*world);
}

void WorldStore::check(const std::string &command, bool everything) {
    const std::lock_guard lock(mutex_);
    for (const auto &[data, world] : live_) check_world(*world, command);
    if (strict_.enabled) freed_.check(command, everything);
}

void WorldStore::check_world(World &world, const std::string &command) const {
    if (!strict_.enabled) return;
    const std::string where = world.overrun ? "" : damage(world);
    if (!where.empty()) {
        world.overrun = true;
        strict_.report("world.guard", command,
                       "the world of " + world_label(world) + " was overrun " + where);
    }
    if (!world.read_only) return;
    const std::uint64_t now = checksum_of(world);
    if (now == world.checksum) return;
    strict_.report("world.read_only", command,
                   "pixels of the read-only world of " + world_label(world) + " were changed");
    world.checksum = now;  // once per change
}

std::vector<const World *> WorldStore::plugin_worlds() const {
    const std::lock_guard lock(mutex_);
    std::vector<const World *> result;
    for (const auto &[data, world] : live_) {
        if (world->by_plugin) result.push_back(world.get());
    }
    return result;
}

Picture world_picture(const World &world) {
    return from_rows(world.depth, world.def.data, world.def.rowbytes, world.def.width,
                     world.def.height);
}

std::int64_t count_poison(const World &world) {
    return visit_depth(world.depth, [&]<Depth kDepth>() {
        std::int64_t count = 0;
        for (int y = 0; y < world.def.height; ++y) {
            count += poison_in_row<kDepth>(row_start(world, y), pixel_bytes_per_row(world));
        }
        return count;
    });
}

bool is_poison(const World &world, int x, int y) {
    const auto size = static_cast<std::size_t>(bytes_per_pixel(world.depth));
    const std::uint8_t *pixel = row_start(world, y) + static_cast<std::size_t>(x) * size;
    for (std::size_t i = 0; i < size; i += kPoison.size()) {
        if (std::memcmp(pixel + i, kPoison.data(), kPoison.size()) != 0) return false;
    }
    return true;
}

}  // namespace stage

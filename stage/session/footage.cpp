#include "stage/session/footage.h"

#include <memory>
#include <utility>

#include "stage/image/charts/charts.h"
#include "stage/image/codecs/picture_io.h"
#include "stage/text/utf8_path.h"

namespace stage {
namespace {

/// A source with the frame it gave last, so that rendering a still twice does not decode it twice.
struct CachedSource {
    std::unique_ptr<PictureSource> source;
    std::int64_t cached = -1;
    Picture picture;

    const Picture &read(std::int64_t frame) {
        const std::int64_t wanted = source->still() ? 0 : frame;
        if (wanted != cached) {
            picture = source->read(source->first_frame() + static_cast<int>(wanted));
            cached = wanted;
        }
        return picture;
    }
};

}  // namespace

Footage open_footage_file(const std::filesystem::path &file) {
    auto cache = std::make_shared<CachedSource>();
    cache->source = open_pictures(file);
    const Picture &first = cache->read(0);
    Footage footage;
    footage.path = path_to_utf8(std::filesystem::absolute(file));
    footage.first_frame = cache->source->first_frame();
    footage.still = cache->source->still();
    footage.native = first.native;
    if (const auto rate = cache->source->frame_rate()) {
        footage.rate_num = rate->numerator;
        footage.rate_den = rate->denominator;
    }
    footage.opened.width = first.width;
    footage.opened.height = first.height;
    footage.opened.frames = cache->source->frame_count();
    footage.opened.reader = [cache](std::int64_t frame) { return cache->read(frame); };
    return footage;
}

Footage still_footage(Picture picture) {
    auto held = std::make_shared<const Picture>(std::move(picture));
    Footage footage;
    footage.native = held->native;
    footage.opened.width = held->width;
    footage.opened.height = held->height;
    footage.opened.reader = [held](std::int64_t) { return *held; };
    return footage;
}

Footage open_chart(const std::string &name, int width, int height) {
    Footage footage = still_footage(draw_chart(name, width, height));
    footage.chart = name;
    return footage;
}

Item footage_item(const Footage &footage, const std::string &name, int par_num, int par_den) {
    Item item;
    item.name = name;
    item.width = footage.opened.width;
    item.height = footage.opened.height;
    item.par_num = par_num;
    item.par_den = par_den;
    item.frames = footage.opened.frames;
    item.path = footage.path;
    item.chart = footage.chart;
    item.reader = footage.opened.reader;
    return item;
}

OpenedFootage open_footage(const FootageRequest &request) {
    if (!request.chart.empty()) {
        return open_chart(request.chart, request.width, request.height).opened;
    }
    return open_footage_file(path_from_utf8(request.path)).opened;
}

}  // namespace stage

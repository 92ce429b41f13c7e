#include "plugin/support/render_host.h"

#include <algorithm>

#include "render/pipeline.h"

namespace ks {
namespace {

template <class... Parts>
std::string joined(const Parts &...parts) {
    std::ostringstream text;
    (text << ... << parts);
    return text.str();
}

std::string size_text(const PF_EffectWorld &world) {
    return joined(world.width, "x", world.height);
}

std::string rect_text(const PF_Rect &r) {
    return joined(r.left, ",", r.top, ",", r.right, ",", r.bottom);
}

}  // namespace

RenderHost::RenderHost(PF_PixelFormat world_format, int width, int height) : format(world_format) {
    current() = this;
    fill_params();
    fill_callbacks();
    fill_world_suite();
    fill_transform_suite();
    fill_iterate<PF_Iterate8Suite1, PF_Pixel>(iterate8_, kPFIterate8Suite, 1);
    fill_iterate<PF_iterate16Suite1, PF_Pixel16>(iterate16_, kPFIterate16Suite, 1);
    fill_iterate<PF_iterateFloatSuite1, PF_PixelFloat>(iterate_float_, kPFIterateFloatSuite, 1);
    fill_generic_iterate();
    host.in.quality = PF_Quality_HI;
    host.in.width = width;
    host.in.height = height;
    host.in.pixel_aspect_ratio = {1, 1};
    host.in.downsample_x = {1, 1};
    host.in.downsample_y = {1, 1};
    input = make_world(width, height);
    output = make_world(width, height);
    InstanceRecord fresh{};
    init_new_instance(fresh);
    host.out.sequence_data = host.make_handle(&fresh, sizeof fresh);
}

PF_Err RenderHost::render() {
    host.calls.log.clear();
    host.calls.fallible = 0;
    try {
        return render_frame(&host.in, &host.out, &input, has_original ? &original : nullptr,
                            &output);
    } catch (PF_Err error) {
        return error;
    }
}

void RenderHost::show_only(std::vector<Param> shown) {
    for (const Param param :
         {kParamShowWaveformMonitor, kParamShowVectorscope, kParamShowChannelParade,
          kParamShowSliceWaveform, kParamShowHistogram}) {
        show(param, std::find(shown.begin(), shown.end(), param) != shown.end());
    }
}

std::string RenderHost::calls(const std::vector<std::string> &starts) const {
    const auto starts_with = [](const std::string &call, const std::string &start) {
        if (call.rfind(start, 0) != 0) return false;
        const auto digit = [](char c) { return c >= '0' && c <= '9'; };
        return call.size() == start.size() || !digit(start.back()) || !digit(call[start.size()]);
    };
    std::string text;
    for (const std::string &call : host.calls.log) {
        const bool wanted = std::any_of(starts.begin(), starts.end(), [&](const auto &start) {
            return starts_with(call, start);
        });
        if (wanted) text += call + "\n";
    }
    return text;
}

void RenderHost::expect_clean() {
    EXPECT_EQ(live_worlds_, 0);
    EXPECT_EQ(open_params_, 0);
    EXPECT_EQ(host.calls.open_locks(), 0);
    EXPECT_EQ(host.calls.live_blocks(), 1);  // the instance record
    EXPECT_EQ(host.suites_held(), 0);
    EXPECT_TRUE(host.calls.misuse.empty()) << host.calls.misuse.front();
}

PF_EffectWorld RenderHost::make_world(int width, int height) {
    PF_EffectWorld world{};
    world.width = width;
    world.height = height;
    world.rowbytes = (width + 2) * pixel_bytes();
    std::vector<char> bytes(static_cast<std::size_t>(world.rowbytes) *
                            static_cast<std::size_t>(height));
    world.data = reinterpret_cast<PF_Pixel *>(bytes.data());
    pixels_[world.data] = std::move(bytes);
    return world;
}

int RenderHost::pixel_bytes() const {
    if (format == PF_PixelFormat_ARGB128) return 16;
    return format == PF_PixelFormat_ARGB64 ? 8 : 4;
}

void RenderHost::fill_params() {
    for (const ParamRow &row : kParamTable) {
        PF_ParamDefUnion &u = params[row.index];
        u = PF_ParamDefUnion{};
        const auto value = static_cast<A_long>(row.default_value);
        if (row.kind == ParamKind::popup) u.pd.value = value;
        if (row.kind == ParamKind::checkbox) u.bd.value = value;
        if (row.kind == ParamKind::float_slider) u.fs_d.value = row.default_value;
    }
}

void RenderHost::fill_callbacks() {
    host.in.inter.checkout_param = [](PF_ProgPtr, PF_ParamIndex index, A_long, A_long, A_u_long,
                                      PF_ParamDef *def) {
        const PF_Err error = current()->host.calls.step(joined("checkout ", index));
        if (error != 0) return error;
        def->u = current()->params.at(index);
        ++current()->open_params_;
        return PF_Err{0};
    };
    host.in.inter.checkin_param = [](PF_ProgPtr, PF_ParamDef *) {
        --current()->open_params_;
        return current()->host.calls.step("checkin");
    };
    host.utils.ansi.pow = [](A_FpLong base, A_FpLong exponent) {
        ++current()->powers;
        return std::pow(base, exponent);
    };
    host.utils.copy = [](PF_ProgPtr, PF_EffectWorld *from, PF_EffectWorld *to, PF_Rect *a,
                         PF_Rect *b) {
        if (a != nullptr || b != nullptr) current()->host.calls.blame("copy of a part");
        return current()->host.calls.step(
            joined("copy ", size_text(*from), " to ", size_text(*to)));
    };
    host.utils.fill = [](PF_ProgPtr, const PF_Pixel *c, const PF_Rect *rect, PF_EffectWorld *to) {
        if (rect != nullptr) current()->host.calls.blame("fill of a part");
        const std::string colour =
            c == nullptr ? "clear" : joined(+c->alpha, ",", +c->red, ",", +c->green, ",", +c->blue);
        return current()->host.calls.step(joined("fill ", size_text(*to), " ", colour));
    };
}

void RenderHost::fill_world_suite() {
    worlds_.PF_GetPixelFormat = [](const PF_EffectWorld *world, PF_PixelFormat *out_format) {
        if (world != &current()->output) current()->host.calls.blame("format of another world");
        const PF_Err error = current()->host.calls.step("get_pixel_format");
        if (error == 0) *out_format = current()->format;
        return error;
    };
    worlds_.PF_NewWorld = [](PF_ProgPtr, A_long width, A_long height, PF_Boolean clear,
                             PF_PixelFormat world_format, PF_EffectWorld *world) {
        if (width <= 0 || height <= 0) current()->host.calls.blame("world without pixels");
        if (world_format != current()->format)
            current()->host.calls.blame("world of another format");
        const PF_Err error = current()->host.calls.step(
            joined("new_world ", width, "x", height, clear != 0 ? " cleared" : ""));
        if (error != 0) return error;
        *world = current()->make_world(width, height);
        ++current()->live_worlds_;
        return PF_Err{0};
    };
    worlds_.PF_DisposeWorld = [](PF_ProgPtr, PF_EffectWorld *world) {
        if (current()->pixels_.erase(world->data) != 1) {
            current()->host.calls.blame("dispose of a dead world");
        }
        --current()->live_worlds_;
        return current()->host.calls.step(joined("dispose_world ", size_text(*world)));
    };
    host.suites[{kPFWorldSuite, 2}] = &worlds_;
}

void RenderHost::fill_transform_suite() {
    const auto check_mode = [](const PF_CompositeMode &mode) {
        if (mode.xfer != 2 || mode.rand_seed != 0) current()->host.calls.blame("another mode");
    };
    static const auto checked = check_mode;
    transform_.transfer_rect = [](PF_ProgPtr, PF_Quality, PF_ModeFlags, PF_Field,
                                  const PF_Rect *rect, const PF_EffectWorld *,
                                  const PF_CompositeMode *mode, const PF_MaskWorld *, A_long x,
                                  A_long y, PF_EffectWorld *to) {
        checked(*mode);
        return current()->host.calls.step(joined("transfer ", rect_text(*rect), " at ", x, ",", y,
                                                 " opacity ", +mode->opacity, "/", mode->opacitySu,
                                                 " to ", size_text(*to)));
    };
    transform_.transform_world = [](PF_ProgPtr, PF_Quality, PF_ModeFlags, PF_Field,
                                    const PF_EffectWorld *from, const PF_CompositeMode *mode,
                                    const PF_MaskWorld *, const PF_FloatMatrix *m, A_long count,
                                    PF_Boolean src2dst, const PF_Rect *rect, PF_EffectWorld *to) {
        checked(*mode);
        if (count != 1 || src2dst != 0) current()->host.calls.blame("another kind of matrix");
        return current()->host.calls.step(joined(
            "transform ", size_text(*from), " scale ", m->mat[0][0], ",", m->mat[1][1], " by ",
            m->mat[2][0], ",", m->mat[2][1], " rect ", rect_text(*rect), " to ", size_text(*to)));
    };
    host.suites[{kPFWorldTransformSuite, 1}] = &transform_;
}

template <class Pixel>
PF_Err RenderHost::iterate_pixels(const char *name, A_long from, A_long to, PF_EffectWorld *src,
                                  const PF_Rect *area, void *refcon,
                                  PF_Err (*f)(void *, A_long, A_long, Pixel *, Pixel *),
                                  PF_EffectWorld *dst) {
    if (area != nullptr) current()->host.calls.blame("iteration over a part");
    const PF_Err error = current()->host.calls.step(joined(
        name, " ", size_text(*src), src == dst ? " in place" : "", " progress ", from, "..", to));
    if (error != 0) return error;
    const auto pixel = [](PF_EffectWorld *world, int x, int y) {
        char *row = reinterpret_cast<char *>(world->data) + std::ptrdiff_t{y} * world->rowbytes;
        return reinterpret_cast<Pixel *>(row) + x;
    };
    for (int y = 0; y < std::min(src->height, dst->height); ++y) {
        for (int x = 0; x < std::min(src->width, dst->width); ++x) {
            const PF_Err stopped = f(refcon, x, y, pixel(src, x, y), pixel(dst, x, y));
            if (stopped != 0) return stopped;
        }
    }
    return PF_Err{0};
}

template <class Suite, class Pixel>
void RenderHost::fill_iterate(Suite &suite, const char *name, int version) {
    suite.iterate = [](PF_InData *, A_long from, A_long to, PF_EffectWorld *src,
                       const PF_Rect *area, void *refcon,
                       PF_Err (*f)(void *, A_long, A_long, Pixel *, Pixel *), PF_EffectWorld *dst) {
        const char *const call = sizeof(Pixel) == 4   ? "iterate8"
                                 : sizeof(Pixel) == 8 ? "iterate16"
                                                      : "iterate_float";
        return iterate_pixels<Pixel>(call, from, to, src, area, refcon, f, dst);
    };
    host.suites[{name, version}] = &suite;
}

void RenderHost::fill_generic_iterate() {
    static constexpr A_long kProcessors = 2;
    iterate_generic_.AEGP_GetNumThreads = [](A_long *threads) {
        *threads = kProcessors;
        return current()->host.calls.step("get_num_threads");
    };
    iterate_generic_.AEGP_IterateGeneric = [](A_long parts, void *refcon,
                                              A_Err (*f)(void *, A_long, A_long, A_long)) {
        const A_Err error = current()->host.calls.step(joined("iterate_generic ", parts));
        if (error != 0) return error;
        for (A_long i = 0; i < parts; ++i) {
            const A_Err stopped = f(refcon, 0, i, parts);
            if (stopped != 0) return stopped;
        }
        return A_Err{0};
    };
    host.suites[{kAEGPIterateSuite, kAEGPIterateSuiteVersion1}] = &iterate_generic_;
}

}  // namespace ks

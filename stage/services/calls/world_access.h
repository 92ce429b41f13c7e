// What suite functions share: the frame around a call, slots nobody needs, worlds as pixels.
#pragma once

#include <cstddef>
#include <exception>
#include <new>
#include <string>

#include "hostapi/constants.h"
#include "hostapi/effect_types.h"
#include "stage/host/host.h"
#include "stage/host/host_call.h"
#include "stage/pixels/pixel_view.h"

namespace stage {

/// A call's trace name as a template argument. Two can be joined with +.
template <std::size_t kSize>
struct CallName {
    char text[kSize]{};
    constexpr CallName() = default;
    // NOLINTNEXTLINE: a literal is meant to convert
    constexpr CallName(const char (&literal)[kSize]) {
        for (std::size_t i = 0; i < kSize; ++i) text[i] = literal[i];
    }
};
template <std::size_t kA, std::size_t kB>
constexpr CallName<kA + kB - 1> operator+(const CallName<kA> &a, const CallName<kB> &b) {
    CallName<kA + kB - 1> joined;
    for (std::size_t i = 0; i + 1 < kA; ++i) joined.text[i] = a.text[i];
    for (std::size_t i = 0; i < kB; ++i) joined.text[kA - 1 + i] = b.text[i];
    return joined;
}

/// Runs one call that returns a code: `describe(call)` when traced, then the injected failure, then
/// `body(call)`. No exception goes to the plug-in: short memory is error 4, anything else a finding
/// "host.exception" and error 512.
template <class Describe, class Body>
PF_Err code_call(const char *name, Describe &&describe, Body &&body) noexcept {
    HostCall call(name);
    try {
        if (call.traced()) describe(call);
        if (call.must_fail()) return call.result(call.error());
        return call.result(body(call));
    } catch (const std::bad_alloc &) {
        return call.result(PF_Err_OUT_OF_MEMORY);
    } catch (const std::exception &reason) {
        call.host().strict.report("host.exception", call.command(),
                                  std::string(name) + ": " + reason.what());
        return call.result(PF_Err_INTERNAL_STRUCT_DAMAGED);
    }
}

/// Fills a slot that this host does not carry out, whatever its arguments: a finding
/// "suite.unimplemented" and error 516.
template <CallName kName, class... Arguments>
PF_Err unimplemented(Arguments...) noexcept {
    HostCall call(kName.text, Fallible::kNo);
    call.host().strict.report("suite.unimplemented", call.command(), kName.text);
    return call.result(PF_Err_BAD_CALLBACK_PARAM);
}

/// The pixels of a plug-in's world record. False after a finding: "world.dead" for null and for
/// records whose pixels are no live world's, "world.record" for one that was changed to reach
/// beyond its pixels. `role` names the argument, for example "src".
bool view_of(HostCall &call, const PF_EffectWorld *world, const char *role, PixelView &view);

/// Both worlds; false as above, and when their depths differ.
bool views_of(HostCall &call, const PF_EffectWorld *src, const PF_EffectWorld *dst,
              PixelView &src_view, PixelView &dst_view);

/// "200x130", "null"; safe for dead worlds.
std::string describe_world(const PF_EffectWorld *world);
/// "[0,0,200,130]", "all" for null.
std::string describe_rect(const PF_LRect *rect);

}  // namespace stage

// What the sampling pass promises against plotting every sample in turn, checked pixel by pixel.
#pragma once

#include "plugin/scopes/merge/trace_case.h"

namespace ks {

struct TraceCase {
    oracle::Image source;
    oracle::ScopeSettings settings;
    oracle::PanelExtents extents{};
    TraceRun run;
};

/// What was compared, so that a test can tell that a promise was put to the test.
struct PromiseCount {
    std::size_t lit = 0;        ///< pixels that some trace lights
    std::size_t uncertain = 0;  ///< of them, those with a hit that may be off by one code
    std::size_t off = 0;        ///< of these, those that are
    double worst = 0.0;         ///< largest colour difference of the waveform, in codes or units
};

/// Measures the case and expects of it, as the oracle's own plots of it allow:
///   waveform     8 bit equal; 16 bit at most as many codes below as hits with a channel within
///                1/1024 below a whole number of codes, and never above; float within 1e-5. Alpha
///                equal (float within 1e-5); with sub-pixel plotting at 8 and 16 bits equal or that
///                of the whole number of full plots that the hits amount to, at float within 1e-4;
///   parade       equal at every depth;
///   vectorscope  monochrome equal at every depth. In the samples' colours, 8 and 16 bit at most
///                as many codes below, in each channel, as plots whose code lies within 1/10000 or
///                1/1000 below a whole number, and never above; float equal but for the roundings
///                of the additions, 2^-25 each and 2^-30 each, higher by no more than what was
///                subtracted where negative colours meet positive ones, and of no promise where a
///                colour is beyond +-64. Alpha equal in opaque pictures;
///   histogram    equal bins and maxima;
///   over-range   equal flags.
PromiseCount expect_promises(const TraceCase &c);

}  // namespace ks

// Comparison of two pictures that explains itself: how many components differ, where first, by how
// much at most and in all, and three picture files to look at.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

#include "oracle/image.h"

namespace ks::test_support {

// A permitted difference per component: codes at 8 and 16 bits, an absolute difference at float.
// Without a reason the comparison fails whatever the pictures are.
struct Tolerance {
    double amount = 0.0;
    std::string reason;
};

struct Difference {
    bool same_shape = true;          // width, height and depth agree
    std::size_t count = 0;           // components that differ by more than the tolerance
    double greatest = 0.0;           // over all components; infinite where only one side is NaN
    double sum = 0.0;                // over all components
    std::vector<std::string> first;  // up to 5 positions with both pixels
};

// Compares component by component. Two NaN are equal, and so are 0.0 and -0.0.
Difference measure_difference(const oracle::Image &expected, const oracle::Image &actual,
                              double tolerance);

// Exact comparison. On failure the message names the files
// <build folder>/image-diff/<name>-{expected,actual,difference}.{ppm,pfm}: PPM for the integer
// depths (16 bits with a maximum of 32768), PFM for float; alpha is left out of the first two, and
// in the amplified difference it brightens all three channels.
testing::AssertionResult images_equal(const std::string &name, const oracle::Image &expected,
                                      const oracle::Image &actual);

// The same, with a tolerance that carries its reason.
testing::AssertionResult images_near(const std::string &name, const oracle::Image &expected,
                                     const oracle::Image &actual, const Tolerance &tolerance);

}  // namespace ks::test_support

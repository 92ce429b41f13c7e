#include "support/image_diff.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <sstream>

#include "support/image_files.h"

namespace ks::test_support {
namespace {

using oracle::Image;
using oracle::Stored;

double component_difference(double expected, double actual) {
    if (std::isnan(expected) && std::isnan(actual)) return 0.0;
    if (expected == actual) return 0.0;
    const double difference = std::fabs(expected - actual);
    return std::isnan(difference) ? std::numeric_limits<double>::infinity() : difference;
}

std::string pixel_text(const Stored &pixel) {
    std::ostringstream text;
    text.precision(9);
    text << '(' << pixel[0] << ", " << pixel[1] << ", " << pixel[2] << ", " << pixel[3] << ')';
    return text.str();
}

// Differences scaled so that the greatest finite one reaches full scale.
Image amplified_difference(const Image &expected, const Image &actual, double greatest) {
    const double top = oracle::full_scale(expected.depth);
    const double gain = greatest > 0.0 && std::isfinite(greatest) ? top / greatest : 1.0;
    Image result = oracle::make_image(expected.width, expected.height, expected.depth);
    for (int y = 0; y < result.height; ++y) {
        for (int x = 0; x < result.width; ++x) {
            const Stored e = oracle::stored_pixel(expected, x, y);
            const Stored a = oracle::stored_pixel(actual, x, y);
            const double alpha = component_difference(e[0], a[0]);
            Stored shown{top, 0, 0, 0};
            for (std::size_t c = 1; c < 4; ++c) {
                const double difference = std::max(component_difference(e[c], a[c]), alpha);
                shown[c] = std::min(difference * gain, top);
            }
            oracle::store_pixel(result, x, y, shown);
        }
    }
    return result;
}

std::string file_stem(const std::string &name) {
    std::string stem = name.empty() ? "unnamed" : name;
    for (char &c : stem) {
        const bool plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
                           (c >= '0' && c <= '9') || c == '-' || c == '_';
        if (!plain) c = '_';
    }
    return stem;
}

std::string shape_text(const Image &image) {
    static constexpr const char *kDepths[] = {"8 bit", "16 bit", "float"};
    std::ostringstream text;
    text << image.width << " x " << image.height << ", " << kDepths[static_cast<int>(image.depth)];
    return text.str();
}

testing::AssertionResult compare(const std::string &name, const Image &expected,
                                 const Image &actual, double tolerance) {
    const Difference found = measure_difference(expected, actual, tolerance);
    if (!found.same_shape) {
        return testing::AssertionFailure()
               << name << ": expected " << shape_text(expected) << ", is " << shape_text(actual);
    }
    if (found.count == 0) return testing::AssertionSuccess();
    auto failure = testing::AssertionFailure();
    failure << name << ": " << found.count << " components differ by more than " << tolerance
            << "; greatest difference " << found.greatest << ", sum " << found.sum;
    for (const std::string &position : found.first) failure << "\n  " << position;
    const Image difference = amplified_difference(expected, actual, found.greatest);
    const std::string stem = file_stem(name);
    failure << "\n  " << write_picture(stem + "-expected", expected) << "\n  "
            << write_picture(stem + "-actual", actual) << "\n  "
            << write_picture(stem + "-difference", difference);
    return failure;
}

}  // namespace

Difference measure_difference(const Image &expected, const Image &actual, double tolerance) {
    Difference found;
    found.same_shape = expected.width == actual.width && expected.height == actual.height &&
                       expected.depth == actual.depth;
    if (!found.same_shape) return found;
    for (int y = 0; y < expected.height; ++y) {
        for (int x = 0; x < expected.width; ++x) {
            const Stored e = oracle::stored_pixel(expected, x, y);
            const Stored a = oracle::stored_pixel(actual, x, y);
            const std::size_t before = found.count;
            for (std::size_t c = 0; c < 4; ++c) {
                const double difference = component_difference(e[c], a[c]);
                found.greatest = std::max(found.greatest, difference);
                found.sum += difference;
                if (difference > tolerance) ++found.count;
            }
            if (found.count != before && found.first.size() < 5) {
                std::ostringstream text;
                text << "at (" << x << ", " << y << "): expected " << pixel_text(e) << ", is "
                     << pixel_text(a);
                found.first.push_back(text.str());
            }
        }
    }
    return found;
}

testing::AssertionResult images_equal(const std::string &name, const Image &expected,
                                      const Image &actual) {
    return compare(name, expected, actual, 0.0);
}

testing::AssertionResult images_near(const std::string &name, const Image &expected,
                                     const Image &actual, const Tolerance &tolerance) {
    if (tolerance.reason.empty()) {
        return testing::AssertionFailure() << name << ": the tolerance has no reason";
    }
    auto result = compare(name, expected, actual, tolerance.amount);
    if (!result)
        result << "\n  tolerated, because " << tolerance.reason << ": " << tolerance.amount;
    return result;
}

}  // namespace ks::test_support

// Compares pictures in files with those that are kept for that. Other versions of the drawing
// libraries may round colours along edges in another way.
#pragma once

#include <cairo.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

namespace test_support {

struct Destroy {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using Surface = std::unique_ptr<cairo_surface_t, Destroy>;

inline Surface LoadPicture(const std::string& path) {
    return Surface(cairo_image_surface_create_from_png(path.c_str()));
}

// How much two pictures of one size differ.
struct Comparison {
    // The share of pixels with a colour that is clearly another one.
    double other = 0.0;
    // The mean difference of all colours, of 255.
    double mean = 0.0;
};

inline Comparison ComparePictures(cairo_surface_t* a, cairo_surface_t* b) {
    constexpr int kClearly = 64;
    const int width = cairo_image_surface_get_width(a);
    const int height = cairo_image_surface_get_height(a);
    long long other = 0;
    long long sum = 0;
    for (int y = 0; y < height; ++y) {
        const unsigned char* row_a =
            cairo_image_surface_get_data(a) + y * cairo_image_surface_get_stride(a);
        const unsigned char* row_b =
            cairo_image_surface_get_data(b) + y * cairo_image_surface_get_stride(b);
        for (int x = 0; x < width; ++x) {
            int largest = 0;
            for (int i = 4 * x; i < 4 * x + 3; ++i) {
                const int difference = std::abs(row_a[i] - row_b[i]);
                largest = std::max(largest, difference);
                sum += difference;
            }
            other += largest > kClearly ? 1 : 0;
        }
    }
    const double pixels = static_cast<double>(width) * height;
    return {static_cast<double>(other) / pixels, static_cast<double>(sum) / (3.0 * pixels)};
}

// Expects the PNG to look like the one of the same name in the test data, and removes it then.
inline void ExpectAsKept(const std::string& actual, const std::string& name) {
    const Surface drawn = LoadPicture(actual);
    const Surface kept = LoadPicture(NODELINE_TEST_DATA "/pictures/" + name);
    ASSERT_EQ(cairo_surface_status(drawn.get()), CAIRO_STATUS_SUCCESS) << actual;
    ASSERT_EQ(cairo_surface_status(kept.get()), CAIRO_STATUS_SUCCESS) << name;
    ASSERT_EQ(cairo_image_surface_get_width(drawn.get()), cairo_image_surface_get_width(kept.get()))
        << actual;
    ASSERT_EQ(cairo_image_surface_get_height(drawn.get()),
              cairo_image_surface_get_height(kept.get()))
        << actual;
    const Comparison comparison = ComparePictures(drawn.get(), kept.get());
    EXPECT_LT(comparison.other, 0.002) << "the new picture is " << actual;
    EXPECT_LT(comparison.mean, 0.5) << "the new picture is " << actual;
    if (!testing::Test::HasFailure()) std::filesystem::remove(actual);
}

}  // namespace test_support

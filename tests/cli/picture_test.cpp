#include <cli/program.h>
#include <support/fonts/test_fonts.h>

#include <cairo.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <memory>

namespace {

using test_support::ProgramResult;

struct Destroy {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using Surface = std::unique_ptr<cairo_surface_t, Destroy>;

Surface Load(const std::string& path) {
    return Surface(cairo_image_surface_create_from_png(path.c_str()));
}

// How much two pictures of one size differ.
struct Comparison {
    // The share of pixels with a colour that is clearly another one.
    double other = 0.0;
    // The mean difference of all colours, of 255.
    double mean = 0.0;
};

Comparison Compare(cairo_surface_t* a, cairo_surface_t* b) {
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

class Picture : public test_support::ProgramTest {
protected:
    // Draws an example and compares it with the picture of its name that is kept for that. Other
    // versions of the drawing libraries may round colours along edges in another way.
    void ExpectAsKept(const std::string& name, const std::string& options) const {
        const std::string actual = testing::TempDir() + "nodeline-" + name + ".png";
        const ProgramResult result =
            RunProgram("render " NODELINE_EXAMPLES "/graphs/" + name + ".txt -o '" + actual +
                       "' --handler simple " + options);
        ASSERT_EQ(result.status, 0) << result.err;
        const Surface drawn = Load(actual);
        const Surface kept = Load(NODELINE_TEST_DATA "/pictures/" + name + ".png");
        ASSERT_EQ(cairo_surface_status(drawn.get()), CAIRO_STATUS_SUCCESS);
        ASSERT_EQ(cairo_surface_status(kept.get()), CAIRO_STATUS_SUCCESS);
        ASSERT_EQ(cairo_image_surface_get_width(drawn.get()),
                  cairo_image_surface_get_width(kept.get()))
            << actual;
        ASSERT_EQ(cairo_image_surface_get_height(drawn.get()),
                  cairo_image_surface_get_height(kept.get()))
            << actual;
        const Comparison comparison = Compare(drawn.get(), kept.get());
        EXPECT_LT(comparison.other, 0.002) << "the new picture is " << actual;
        EXPECT_LT(comparison.mean, 0.5) << "the new picture is " << actual;
        if (!HasFailure()) std::filesystem::remove(actual);
    }
};

TEST_F(Picture, OfNestedCallsIsAsKept) { ExpectAsKept("zlib-calls", "--scale 0.5"); }

TEST_F(Picture, OfAStateMachineWithSelfLoopsIsAsKept) {
    ExpectAsKept("http-parser", "--scale 0.75");
}

TEST_F(Picture, OfALoopWithManyBackEdgesIsAsKept) { ExpectAsKept("inflate-blocks", "--scale 0.2"); }

// Otherwise the comparisons above would prove nothing.
TEST_F(Picture, ThatMovedByOnePixelIsNoLongerTheSame) {
    const Surface kept = Load(NODELINE_TEST_DATA "/pictures/zlib-calls.png");
    ASSERT_EQ(cairo_surface_status(kept.get()), CAIRO_STATUS_SUCCESS);
    const Surface moved(cairo_image_surface_create(cairo_image_surface_get_format(kept.get()),
                                                   cairo_image_surface_get_width(kept.get()),
                                                   cairo_image_surface_get_height(kept.get())));
    cairo_t* context = cairo_create(moved.get());
    cairo_set_source_surface(context, kept.get(), 1.0, 0.0);
    cairo_paint(context);
    cairo_destroy(context);
    EXPECT_GT(Compare(kept.get(), moved.get()).other, 0.01);
}

}  // namespace

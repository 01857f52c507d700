#include <cli/pictures.h>
#include <cli/program.h>
#include <support/fonts/test_fonts.h>

#include <gtest/gtest.h>

namespace {

using test_support::ComparePictures;
using test_support::LoadPicture;
using test_support::ProgramResult;
using test_support::Surface;

class Picture : public test_support::ProgramTest {
protected:
    // Draws an example and compares it with the picture of its name that is kept for that.
    void ExpectAsKept(const std::string& name, const std::string& options) const {
        const std::string actual = testing::TempDir() + "nodeline-" + name + ".png";
        const ProgramResult result =
            RunProgram("render " NODELINE_EXAMPLES "/graphs/" + name + ".txt -o '" + actual +
                       "' --handler simple " + options);
        ASSERT_EQ(result.status, 0) << result.err;
        test_support::ExpectAsKept(actual, name + ".png");
    }
};

TEST_F(Picture, OfNestedCallsIsAsKept) { ExpectAsKept("zlib-calls", "--scale 0.5"); }

TEST_F(Picture, OfAStateMachineWithSelfLoopsIsAsKept) {
    ExpectAsKept("http-parser", "--scale 0.75");
}

TEST_F(Picture, OfALoopWithManyBackEdgesIsAsKept) { ExpectAsKept("inflate-blocks", "--scale 0.2"); }

// Otherwise the comparisons above would prove nothing.
TEST_F(Picture, ThatMovedByOnePixelIsNoLongerTheSame) {
    const Surface kept = LoadPicture(NODELINE_TEST_DATA "/pictures/zlib-calls.png");
    ASSERT_EQ(cairo_surface_status(kept.get()), CAIRO_STATUS_SUCCESS);
    const Surface moved(cairo_image_surface_create(cairo_image_surface_get_format(kept.get()),
                                                   cairo_image_surface_get_width(kept.get()),
                                                   cairo_image_surface_get_height(kept.get())));
    cairo_t* context = cairo_create(moved.get());
    cairo_set_source_surface(context, kept.get(), 1.0, 0.0);
    cairo_paint(context);
    cairo_destroy(context);
    EXPECT_GT(ComparePictures(kept.get(), moved.get()).other, 0.01);
}

}  // namespace

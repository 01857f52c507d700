#include <gtest/gtest.h>

#include <backends/cairo/picture.h>
#include <support/fonts/test_fonts.h>
#include <support/xml.h>

#include <cairo.h>
#include <unistd.h>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>
#include <string>

using nodeline::cairo::GetPictureFormat;
using nodeline::cairo::MakePicture;
using nodeline::cairo::PictureFormat;
using paintcore::IPainter;
using paintcore::rectangle;
using paintcore::SysPalette;

namespace fs = std::filesystem;

namespace {

using paintcore::_color;

constexpr PictureFormat kFormats[] = {PictureFormat::kSvg, PictureFormat::kPdf,
                                      PictureFormat::kPng};

void DrawScene(IPainter& painter) {
    painter.GradientFill({10.0, 10.0, 60.0, 30.0}, _color(255, 255, 255), _color(127, 127, 127),
                         100, 0);
    painter.Rectangle(10.0, 10.0, 60.0, 30.0);
    painter.DrawString({10.0, 10.0, 60.0, 30.0}, "a < b & c", 0x24, -1);
    painter.MoveTo(60.0, 20.0);
    painter.LineTo(90.0, 20.0);
}

std::string EncodeScene(PictureFormat format, double scale) {
    const auto picture = MakePicture(format, {100.0, 50.0}, scale);
    picture->Draw(DrawScene);
    return picture->Encode(nullptr).value_or("");
}

// An image that was read from the bytes of a PNG.
class Image {
public:
    explicit Image(const std::string& bytes) {
        std::istringstream stream(bytes);
        surface_ = cairo_image_surface_create_from_png_stream(&ReadBytes, &stream);
    }
    ~Image() { cairo_surface_destroy(surface_); }
    Image(const Image&) = delete;
    Image& operator=(const Image&) = delete;

    [[nodiscard]] bool IsGood() const {
        return cairo_surface_status(surface_) == CAIRO_STATUS_SUCCESS;
    }
    [[nodiscard]] int Width() const { return cairo_image_surface_get_width(surface_); }
    [[nodiscard]] int Height() const { return cairo_image_surface_get_height(surface_); }
    [[nodiscard]] std::uint32_t Pixel(int x, int y) const {
        std::uint32_t pixel = 0;
        std::memcpy(&pixel,
                    cairo_image_surface_get_data(surface_) +
                        static_cast<std::ptrdiff_t>(y) * cairo_image_surface_get_stride(surface_) +
                        static_cast<std::ptrdiff_t>(x) * 4,
                    sizeof pixel);
        return pixel & 0xFFFFFF;
    }

private:
    static cairo_status_t ReadBytes(void* closure, unsigned char* data, unsigned int length) {
        auto& stream = *static_cast<std::istringstream*>(closure);
        stream.read(reinterpret_cast<char*>(data), length);
        return stream ? CAIRO_STATUS_SUCCESS : CAIRO_STATUS_READ_ERROR;
    }

    cairo_surface_t* surface_;
};

class PictureFile : public testing::Test {
public:
    PictureFile()
        : folder_(fs::path(testing::TempDir()) /
                  ("nodeline-pictures-" + std::to_string(::getpid()) + "-" +
                   testing::UnitTest::GetInstance()->current_test_info()->name())) {
        fs::create_directory(folder_);
    }
    ~PictureFile() override { fs::remove_all(folder_); }

protected:
    fs::path folder_;
};

}  // namespace

TEST(Picture, TheFormatFollowsTheEndingOfTheName) {
    EXPECT_EQ(GetPictureFormat("a/b.svg"), PictureFormat::kSvg);
    EXPECT_EQ(GetPictureFormat("b.PDF"), PictureFormat::kPdf);
    EXPECT_EQ(GetPictureFormat("b.txt.Png"), PictureFormat::kPng);
    EXPECT_EQ(GetPictureFormat("b.jpg"), std::nullopt);
    EXPECT_EQ(GetPictureFormat("svg"), std::nullopt);
    EXPECT_EQ(GetPictureFormat(""), std::nullopt);
}

TEST(Picture, ASvgHasTheSizeInPixelsAndABackground) {
    const auto root = test_support::XmlReader::Read(EncodeScene(PictureFormat::kSvg, 1.5));
    EXPECT_EQ(root.Get("width"), "150");
    EXPECT_EQ(root.Get("height"), "75");
    EXPECT_EQ(root.Get("viewBox"), "0 0 150 75");
    const auto boxes = root.FindAll("rect");
    ASSERT_GE(boxes.size(), 3U);
    // The first box is that of a clip.
    EXPECT_EQ(boxes[1]->Get("width"), "150");
    EXPECT_EQ(boxes[1]->Get("height"), "75");
    EXPECT_EQ(boxes[1]->Get("fill"), "#ffffff");
    EXPECT_EQ(boxes[2]->Get("x"), "15");
    EXPECT_EQ(boxes[2]->Get("width"), "75");
    EXPECT_EQ(root.FindAll("text").at(0)->text, "a < b & c");
    EXPECT_EQ(root.FindAll("path").at(0)->Get("d"), "M90 30L135 30");
}

TEST(Picture, APngCanBeReadAndHasTheSizeInPixels) {
    const Image image(EncodeScene(PictureFormat::kPng, 2.0));
    ASSERT_TRUE(image.IsGood());
    EXPECT_EQ(image.Width(), 200);
    EXPECT_EQ(image.Height(), 100);
    EXPECT_EQ(image.Pixel(0, 0), 0xFFFFFFU);
    EXPECT_EQ(image.Pixel(199, 99), 0xFFFFFFU);
    EXPECT_EQ(image.Pixel(20, 40), 0x000000U);
    EXPECT_EQ(image.Pixel(150, 40), 0x000000U);
    EXPECT_EQ(image.Pixel(150, 42), 0xFFFFFFU);
}

TEST(Picture, APdfIsAPdf) {
    const std::string bytes = EncodeScene(PictureFormat::kPdf, 1.0);
    EXPECT_EQ(bytes.substr(0, 5), "%PDF-");
    EXPECT_NE(bytes.find("%%EOF"), std::string::npos);
    // Pixels are three quarters of a point.
    EXPECT_NE(bytes.find("/MediaBox [ 0 0 75 37.5 ]"), std::string::npos);
}

TEST(Picture, TheSamePictureIsTheSameBytes) {
    for (const PictureFormat format : kFormats) {
        const std::string first = EncodeScene(format, 1.25);
        ASSERT_FALSE(first.empty());
        EXPECT_EQ(EncodeScene(format, 1.25), first);
    }
}

TEST(Picture, TheBackgroundIsThatOfThePalette) {
    SysPalette dark;
    dark.Set(SysPalette::kBackground, _color(16, 32, 48));
    paintcore::SetSysPalette(dark);
    const std::string png = EncodeScene(PictureFormat::kPng, 1.0);
    const std::string svg = EncodeScene(PictureFormat::kSvg, 1.0);
    paintcore::SetSysPalette(SysPalette());
    EXPECT_EQ(Image(png).Pixel(0, 0), 0x102030U);
    EXPECT_EQ(test_support::XmlReader::Read(svg).FindAll("rect").at(1)->Get("fill"), "#102030");
}

TEST(Picture, PartsOfPixelsAreRoundedUpAndThereIsAtLeastOne) {
    const auto size_of = [](double cx, double cy, double scale) {
        return MakePicture(PictureFormat::kPng, {cx, cy}, scale)->GetCoordInfo().device_extent;
    };
    EXPECT_EQ(size_of(10.2, 20.0, 1.0), (paintcore::size<int>{11, 20}));
    // 110.00000000000001 in floating point.
    EXPECT_EQ(size_of(100.0, 10.0, 1.1), (paintcore::size<int>{110, 11}));
    EXPECT_EQ(size_of(0.0, -5.0, 1.0), (paintcore::size<int>{1, 1}));
}

TEST(Picture, TheScaleIsExactWhateverTheRounding) {
    const auto picture = MakePicture(PictureFormat::kSvg, {10.2, 20.7}, 1.5);
    picture->Draw([](IPainter& painter) { painter.Rectangle(0.0, 0.0, 2.0, 4.0); });
    const auto root = test_support::XmlReader::Read(*picture->Encode(nullptr));
    EXPECT_EQ(root.FindAll("rect").at(1)->Get("width"), "3");
    EXPECT_EQ(root.FindAll("rect").at(1)->Get("height"), "6");
}

TEST(Picture, DrawsInsideOfABracketAndTellsWhatThereIsToPaint) {
    for (const PictureFormat format : kFormats) {
        const auto picture = MakePicture(format, {100.0, 50.0}, 2.0);
        EXPECT_EQ(picture->GetPainter().GetPaintRect(),
                  (rectangle<double>{0.0, 0.0, 200.0, 100.0}));
        bool was_painting = false;
        rectangle<double> paint_rect;
        picture->Draw([&](IPainter& painter) {
            was_painting = painter.IsPainting();
            paint_rect = painter.GetPaintRect();
        });
        EXPECT_TRUE(was_painting);
        EXPECT_EQ(paint_rect, (rectangle<double>{0.0, 0.0, 100.0, 50.0}));
        EXPECT_FALSE(picture->GetPainter().IsPainting());
    }
}

TEST(Picture, ALineThatIsStillOpenIsPartOfThePicture) {
    const auto picture = MakePicture(PictureFormat::kSvg, {100.0, 50.0}, 1.0);
    picture->GetPainter().MoveTo(0.0, 0.0);
    picture->GetPainter().LineTo(9.0, 9.0);
    const auto root = test_support::XmlReader::Read(*picture->Encode(nullptr));
    EXPECT_EQ(root.FindAll("path").size(), 1U);
}

TEST(Picture, CanBeWrittenMoreThanOnce) {
    for (const PictureFormat format : kFormats) {
        const auto picture = MakePicture(format, {100.0, 50.0}, 1.0);
        picture->Draw(DrawScene);
        std::ostringstream first;
        std::ostringstream second;
        EXPECT_TRUE(picture->WriteTo(first));
        EXPECT_TRUE(picture->WriteTo(second));
        EXPECT_EQ(first.str(), EncodeScene(format, 1.0));
        EXPECT_EQ(second.str(), first.str());
    }
}

TEST(Picture, DrawingOnAFinishedPdfDoesNoHarm) {
    const auto picture = MakePicture(PictureFormat::kPdf, {100.0, 50.0}, 1.0);
    picture->Draw(DrawScene);
    const auto bytes = picture->Encode(nullptr);
    picture->Draw(DrawScene);
    EXPECT_EQ(picture->Encode(nullptr), bytes);
}

TEST(Picture, AStreamThatFailsIsReported) {
    const auto picture = MakePicture(PictureFormat::kSvg, {100.0, 50.0}, 1.0);
    std::ofstream full("/dev/full");
    std::string error;
    EXPECT_FALSE(picture->WriteTo(full, &error));
    EXPECT_EQ(error, "cannot write to the stream");
}

TEST(Picture, APngThatIsTooLargeIsRefused) {
    std::string error;
    EXPECT_EQ(MakePicture(PictureFormat::kPng, {32768.0, 10.0}, 1.0, &error), nullptr);
    EXPECT_EQ(error,
              "a picture of 32768 by 10 pixels is too large: the most is 32767 pixels each "
              "way");
    EXPECT_EQ(MakePicture(PictureFormat::kPng, {10.0, 20000.0}, 2.0, &error), nullptr);
    EXPECT_EQ(error,
              "a picture of 20 by 40000 pixels is too large: the most is 32767 pixels each "
              "way");
    EXPECT_EQ(MakePicture(PictureFormat::kPng, {30000.0, 30000.0}, 1.0, &error), nullptr);
    EXPECT_EQ(error,
              "a picture of 30000 by 30000 pixels is too large: the most is 268435456 pixels "
              "in all");
    EXPECT_EQ(MakePicture(PictureFormat::kPng, {1.0e300, 1.0}, 1.0), nullptr);
    EXPECT_NE(MakePicture(PictureFormat::kPng, {32767.0, 2.0}, 1.0), nullptr);
}

TEST(Picture, OtherFormatsTakeWhatAPngCannot) {
    EXPECT_NE(MakePicture(PictureFormat::kSvg, {1.0e6, 1.0e6}, 1.0), nullptr);
    const auto picture = MakePicture(PictureFormat::kPdf, {1.0e6, 1.0e6}, 1.0);
    ASSERT_NE(picture, nullptr);
    picture->Draw(DrawScene);
    EXPECT_TRUE(picture->Encode(nullptr).has_value());
    std::string error;
    EXPECT_EQ(MakePicture(PictureFormat::kPdf, {4000001.0, 1.0}, 1.0, &error), nullptr);
    EXPECT_EQ(error,
              "a picture of 4000001 by 1 pixels is too large: the most is 4000000 pixels "
              "each way");
    EXPECT_EQ(MakePicture(PictureFormat::kSvg, {1.0e300, 1.0}, 1.0), nullptr);
}

TEST(Picture, NumbersThatMakeNoPictureAreRefused) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinite = std::numeric_limits<double>::infinity();
    for (const PictureFormat format : kFormats) {
        std::string error;
        EXPECT_EQ(MakePicture(format, {nan, 1.0}, 1.0, &error), nullptr);
        EXPECT_EQ(error, "a picture needs a finite size and a scale above 0");
        EXPECT_EQ(MakePicture(format, {1.0, infinite}, 1.0), nullptr);
        EXPECT_EQ(MakePicture(format, {1.0, 1.0}, nan), nullptr);
        EXPECT_EQ(MakePicture(format, {1.0, 1.0}, 0.0), nullptr);
        EXPECT_EQ(MakePicture(format, {1.0, 1.0}, -1.0), nullptr);
    }
}

TEST_F(PictureFile, IsWrittenAsAWhole) {
    for (const PictureFormat format : kFormats) {
        const auto picture = MakePicture(format, {100.0, 50.0}, 1.0);
        picture->Draw(DrawScene);
        const fs::path path = folder_ / "picture";
        std::string error;
        EXPECT_TRUE(picture->Save(path, &error)) << error;
        std::ifstream file(path, std::ios::binary);
        std::ostringstream content;
        content << file.rdbuf();
        EXPECT_EQ(content.str(), EncodeScene(format, 1.0));
        EXPECT_EQ(std::distance(fs::directory_iterator(folder_), fs::directory_iterator()), 1);
    }
}

TEST_F(PictureFile, SaysWhyItCannotBeWritten) {
    for (const PictureFormat format : kFormats) {
        const auto picture = MakePicture(format, {100.0, 50.0}, 1.0);
        const std::string path = folder_ / "missing" / "picture";
        std::string error;
        EXPECT_FALSE(picture->Save(path, &error));
        EXPECT_EQ(error, "cannot write " + path + ": No such file or directory");
        EXPECT_FALSE(picture->Save(path));
    }
    EXPECT_TRUE(fs::is_empty(folder_));
}

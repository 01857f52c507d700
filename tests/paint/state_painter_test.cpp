#include <gtest/gtest.h>

#include <backends/headless/recording_painter.h>
#include <paintcore/state_painter.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <optional>

using nodeline::headless::RecordingPainter;
using paintcore::brush;
using paintcore::CoordInfo;
using paintcore::font;
using paintcore::IPainter;
using paintcore::MapMode;
using paintcore::pen;
using paintcore::point;
using paintcore::rectangle;
using paintcore::size;

namespace {

using paintcore::_color;

// Opens what a backend sees.
class OpenPainter : public RecordingPainter {
public:
    using StatePainter::GetArrowSize;
    using StatePainter::GetBrush;
    using StatePainter::GetClip;
    using StatePainter::GetFont;
    using StatePainter::GetPen;
    using StatePainter::GetScale;
    using StatePainter::GetTextColor;
    using StatePainter::ToDevice;
};

void Disarrange(IPainter& painter) {
    painter.SetPen({_color(1, 2, 3), 9, 1, 1, 1});
    painter.SetBrush({_color(1, 2, 3), 1});
    painter.SetFont({"Arial", 1, 20, 0, 0, 2.0});
    painter.SetArrowSize(30, 40);
    painter.SetTextColor(_color(4, 5, 6));
    const CoordInfo info{{1.0, 2.0}, {10.0, 10.0}, {3, 4}, {20, 40}};
    painter.SetCoordSystem(MapMode::Rectangle, &info);
    painter.SetClipRect(1.0, 2.0, 3.0, 4.0, false);
}

void ExpectStandardStyles(const OpenPainter& painter) {
    EXPECT_EQ(painter.GetPen(), (pen{_color(0, 0, 0), 1, 1, 0, 0}));
    EXPECT_EQ(painter.GetBrush().style, 0);
    EXPECT_EQ(painter.GetFont(), (font{"", 4, 8, 0, 0, 1.0}));
    EXPECT_EQ(painter.GetArrowSize(), (size<int>{7, 5}));
    EXPECT_EQ(painter.GetTextColor(), _color(0, 0, 0));
}

void ExpectStandardCoords(const OpenPainter& painter) {
    EXPECT_EQ(painter.GetClip(), std::nullopt);
    EXPECT_EQ(painter.ToDevice(12.5, -3.0), (point<double>{12.5, -3.0}));
    MapMode mode = MapMode::Rectangle;
    painter.GetCoordSystem(mode, nullptr);
    EXPECT_EQ(mode, MapMode::Identity);
}

}  // namespace

TEST(StatePainter, AFreshOneHasTheStandardSettingsAndNoBracket) {
    const OpenPainter painter;
    EXPECT_FALSE(painter.IsPainting());
    ExpectStandardStyles(painter);
    ExpectStandardCoords(painter);
}

TEST(StatePainter, ABracketIsOpenFromBeginToEnd) {
    OpenPainter painter;
    painter.BeginPaint(IPainter::StdSettings::All);
    EXPECT_TRUE(painter.IsPainting());
    painter.BeginPaint(IPainter::StdSettings::All);
    painter.EndPaint();
    EXPECT_FALSE(painter.IsPainting());
    painter.EndPaint();
    EXPECT_FALSE(painter.IsPainting());
}

TEST(StatePainter, BeginningWithAllSetsEverythingBack) {
    OpenPainter painter;
    Disarrange(painter);
    painter.BeginPaint(static_cast<IPainter::StdSettings>(3));
    ExpectStandardStyles(painter);
    ExpectStandardCoords(painter);
}

TEST(StatePainter, BeginningWithAPartSetsThatPartBack) {
    OpenPainter painter;
    Disarrange(painter);
    painter.BeginPaint(IPainter::StdSettings::Styles);
    ExpectStandardStyles(painter);
    EXPECT_TRUE(painter.GetClip().has_value());

    Disarrange(painter);
    painter.BeginPaint(IPainter::StdSettings::Coords);
    ExpectStandardCoords(painter);
    EXPECT_EQ(painter.GetPen().width, 9);

    Disarrange(painter);
    painter.BeginPaint(IPainter::StdSettings::None);
    EXPECT_EQ(painter.GetPen().width, 9);
    EXPECT_TRUE(painter.GetClip().has_value());
}

TEST(StatePainter, EndingKeepsTheSettings) {
    OpenPainter painter;
    painter.BeginPaint(IPainter::StdSettings::All);
    painter.SetTextColor(_color(4, 5, 6));
    painter.EndPaint();
    EXPECT_EQ(painter.GetTextColor(), _color(4, 5, 6));
}

TEST(StatePainter, AGradientLeavesTheBrushAtStyleZero) {
    OpenPainter painter;
    painter.SetBrush({_color(1, 2, 3), 1});
    painter.GradientFill({}, _color(0, 0, 0), _color(9, 9, 9), 100, 0);
    EXPECT_EQ(painter.GetBrush(), (brush{_color(1, 2, 3), 0}));
}

TEST(StatePainter, ModeThreeMapsTheLogicalRectangleOntoTheDeviceRectangle) {
    OpenPainter painter;
    const CoordInfo info{{100.0, 200.0}, {50.0, 20.0}, {10, 30}, {100, 10}};
    painter.SetCoordSystem(static_cast<MapMode>(3), &info);
    EXPECT_EQ(painter.ToDevice(100.0, 200.0), (point<double>{10.0, 30.0}));
    EXPECT_EQ(painter.ToDevice(150.0, 220.0), (point<double>{110.0, 40.0}));
    EXPECT_EQ(painter.ToDevice(90.0, 180.0), (point<double>{-10.0, 20.0}));
    EXPECT_EQ(painter.GetScale(), (size<double>{2.0, 0.5}));

    MapMode mode{};
    CoordInfo read;
    painter.GetCoordSystem(mode, &read);
    EXPECT_EQ(mode, MapMode::Rectangle);
    EXPECT_EQ(read, info);
}

TEST(StatePainter, AnExtentOfZeroCountsAsFactorOne) {
    OpenPainter painter;
    const CoordInfo flat{{0.0, 0.0}, {0.0, 10.0}, {0, 0}, {100, 0}};
    painter.SetCoordSystem(MapMode::Rectangle, &flat);
    EXPECT_EQ(painter.GetScale(), (size<double>{1.0, 1.0}));
    painter.SetCoordSystem(MapMode::Rectangle, nullptr);
    EXPECT_EQ(painter.ToDevice(3.0, 4.0), (point<double>{3.0, 4.0}));
}

TEST(StatePainter, ThePaintRectangleIsToldInLogicalCoordinates) {
    OpenPainter painter;
    painter.SetDevicePaintRect({0.0, 0.0, 100.0, 50.0});
    EXPECT_EQ(painter.GetPaintRect(), (rectangle<double>{0.0, 0.0, 100.0, 50.0}));
    const CoordInfo info{{7.0, 8.0}, {50.0, 100.0}, {0, 0}, {100, 50}};
    painter.SetCoordSystem(MapMode::Rectangle, &info);
    EXPECT_EQ(painter.GetPaintRect(), (rectangle<double>{7.0, 8.0, 57.0, 108.0}));
}

TEST(StatePainter, AClipStaysWhereItIsOnTheDevice) {
    OpenPainter painter;
    const CoordInfo info{{0.0, 0.0}, {10.0, 10.0}, {0, 0}, {20, 20}};
    painter.SetCoordSystem(MapMode::Rectangle, &info);
    painter.SetClipRect(4.0, 5.0, 1.0, 2.0, false);
    const rectangle<double> expected{2.0, 4.0, 8.0, 10.0};
    EXPECT_EQ(painter.GetClip(), expected);
    painter.SetCoordSystem(MapMode::Identity, nullptr);
    EXPECT_EQ(painter.GetClip(), expected);
    painter.ResetClip();
    EXPECT_EQ(painter.GetClip(), std::nullopt);
}

TEST(StatePainter, AClipNeverHoldsANumberThatIsNone) {
    OpenPainter painter;
    const double infinite = std::numeric_limits<double>::infinity();
    painter.SetClipRect(std::numeric_limits<double>::quiet_NaN(), -infinite, infinite, 4.0, false);
    EXPECT_EQ(painter.GetClip(), (rectangle<double>{0.0, -1.0e9, 1.0e9, 4.0}));
}

#if defined(__x86_64__) || defined(__i386__)
TEST(IPainter, SettingTheArrowSizeIsTheSixthOperation) {
    // On these machines a pointer to a virtual member is the offset of its slot, and one.
    const auto member = &IPainter::SetArrowSize;
    std::uintptr_t slot = 0;
    std::memcpy(&slot, &member, sizeof slot);
    EXPECT_EQ(slot, 5 * sizeof(void*) + 1);
}
#endif

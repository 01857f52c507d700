#include <gtest/gtest.h>

#include <paintcore/painter.h>
#include <paintcore/tooltip.h>

using paintcore::brush;
using paintcore::CTooltipEvent;
using paintcore::font;
using paintcore::pen;
using paintcore::rectangle;

namespace {

using paintcore::_color;

}  // namespace

TEST(Style, AFreshFontIsTheDefaultFaceWithoutASize) {
    const font f;
    EXPECT_EQ(f.face, "");
    EXPECT_EQ(f.style, 4);
    EXPECT_EQ(f.size, 0);
    EXPECT_EQ(f.angle, 0);
    EXPECT_EQ(f.charset, 0);
    EXPECT_EQ(f.scale, 1.0);
}

TEST(Style, PensAndBrushesAreWrittenFieldByField) {
    const pen p{_color(180, 20, 20), 2, 1, 0, 0};
    EXPECT_EQ(p.color, _color(180, 20, 20));
    EXPECT_EQ(p.width, 2);
    EXPECT_EQ(p.style, 1);
    const brush b{_color(1, 2, 3), 1};
    EXPECT_EQ(b.color, _color(1, 2, 3));
    EXPECT_EQ(b.style, 1);
    EXPECT_FALSE(p == (pen{_color(180, 20, 20), 2, 1, 0, 1}));
    EXPECT_FALSE(b == (brush{_color(1, 2, 3), 0}));
}

TEST(Style, NumbersOfButtonsKeysAndModesAreFixed) {
    EXPECT_EQ(static_cast<int>(paintcore::MouseButton::None), 0);
    EXPECT_EQ(static_cast<int>(paintcore::MouseButton::Left), 1);
    EXPECT_EQ(static_cast<int>(paintcore::MouseButton::Right), 2);
    EXPECT_EQ(static_cast<int>(paintcore::MouseButton::Middle), 3);
    EXPECT_EQ(paintcore::KeyShift, 1);
    EXPECT_EQ(paintcore::KeyControl, 2);
    EXPECT_EQ(paintcore::KeyAlt, 4);
    EXPECT_EQ(static_cast<int>(paintcore::MapMode::Rectangle), 3);
    EXPECT_EQ(static_cast<int>(paintcore::IPainter::StdSettings::All), 3);
}

TEST(Style, AFreshTooltipEventLeavesEverythingToTheHost) {
    const CTooltipEvent event;
    EXPECT_EQ(event.trackRect, rectangle<int>());
    EXPECT_EQ(event.tipRect, rectangle<int>());
    EXPECT_EQ(event.text, "");
    EXPECT_EQ(event.textColor, _color());
    EXPECT_EQ(event.backColor, _color());
    EXPECT_EQ(event.font, font());
}

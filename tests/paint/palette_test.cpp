#include <gtest/gtest.h>

#include <paintcore/painter.h>

using paintcore::GetSysPalette;
using paintcore::SetSysPalette;
using paintcore::SysPalette;

namespace {

using paintcore::_color;

// Puts the palette of the process back at the end.
class Palette : public testing::Test {
public:
    ~Palette() override { SetSysPalette(SysPalette()); }
};

}  // namespace

TEST_F(Palette, BackgroundIsWhiteByDefault) {
    EXPECT_EQ(GetSysPalette()[3], _color(255, 255, 255));
    EXPECT_EQ(SysPalette::kBackground, 3);
    EXPECT_EQ(GetSysPalette()[0], _color(0, 0, 0));
}

TEST_F(Palette, AnApplicationMaySetADarkOne) {
    SysPalette dark;
    dark.Set(SysPalette::kBackground, _color(30, 30, 40));
    SetSysPalette(dark);
    EXPECT_EQ(GetSysPalette()[3], _color(30, 30, 40));
}

TEST_F(Palette, NumbersOutsideOfThePaletteDoNoHarm) {
    SysPalette palette;
    palette.Set(0, _color(1, 2, 3));
    palette.Set(-1, _color(9, 9, 9));
    palette.Set(SysPalette::kSize, _color(9, 9, 9));
    EXPECT_EQ(palette[-1], _color(1, 2, 3));
    EXPECT_EQ(palette[SysPalette::kSize], _color(1, 2, 3));
    EXPECT_EQ(palette[1000000], _color(1, 2, 3));
}

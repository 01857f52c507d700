// A colour of red, green and blue with an alpha value, and the rule by which colours are lightened.
#pragma once

#include <corvex/export.h>

namespace paintcore {

// A value of one byte per channel, which may also be no colour at all.
class NODELINE_API _color {
public:
    // No colour at all: every byte is 0 and `flag` is 1.
    constexpr _color() : flag(1) {}

    // Each value runs from 0 to 255; of a larger one the lowest eight bits count. An `a` of 255 is
    // opaque, 0 leaves no trace.
    constexpr _color(int r, int g, int b, int a = 255)
        : red(static_cast<unsigned char>(r)),
          green(static_cast<unsigned char>(g)),
          blue(static_cast<unsigned char>(b)),
          alpha(static_cast<unsigned char>(a)) {}

    // Byte by byte: no colour at all is not the same as a transparent black.
    friend constexpr bool operator==(const _color&, const _color&) = default;

    // The colour as lightness and saturation, from 0 to 1, and hue, in degrees from 0 to below 360.
    // A grey has the saturation 0 and the hue 0.
    void GetHLS(double& lightness, double& saturation, double& hue) const;

    // Sets red, green and blue from the same three values; alpha and flag stay. A hue outside 0 to
    // 360 is taken round the circle. The bytes are truncated, not rounded, so a colour read with
    // `GetHLS` and set again may come out darker by one.
    void SetHLS(double lightness, double saturation, double hue);

    // This colour with three tenths of the way to white added to its lightness; hue, saturation and
    // alpha stay. This is how whatever is hovered or marked lights up.
    [[nodiscard]] _color Lightened() const;

    // From 0 to 255.
    unsigned char red = 0;
    unsigned char green = 0;
    unsigned char blue = 0;
    unsigned char alpha = 0;
    // 1 while the colour has not been set, 0 otherwise.
    unsigned char flag = 0;
};

}  // namespace paintcore

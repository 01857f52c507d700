#include <paintcore/color.h>

#include <algorithm>
#include <cmath>

namespace paintcore {
namespace {

double WrapHue(double hue) {
    const double rest = std::fmod(hue, 360.0);
    return rest < 0.0 ? rest + 360.0 : rest;
}

// The brightness of one channel whose place on the circle of hues is `hue`.
double ChannelValue(double m1, double m2, double hue) {
    const double h = WrapHue(hue);
    if (h < 60.0) return m1 + (m2 - m1) * h / 60.0;
    if (h < 180.0) return m2;
    if (h < 240.0) return m1 + (m2 - m1) * (240.0 - h) / 60.0;
    return m1;
}

unsigned char ToByte(double value) {
    const double scaled = value * 255.0;
    if (!(scaled > 0.0)) return 0;
    return static_cast<unsigned char>(std::min(scaled, 255.0));
}

}  // namespace

void _color::GetHLS(double& lightness, double& saturation, double& hue) const {
    const int r = red;
    const int g = green;
    const int b = blue;
    const int low = std::min({r, g, b});
    const int high = std::max({r, g, b});
    if (low == high) {
        lightness = low / 255.0;
        saturation = 0.0;
        hue = 0.0;
        return;
    }
    const double d = high - low;
    lightness = (low + high) / 510.0;
    saturation = lightness <= 0.5 ? d / (low + high) : d / (510 - low - high);
    // Where two channels are equally bright, the first one of red, green and blue counts.
    if (r == high) {
        hue = (g - b) * 60.0 / d + 360.0;
    } else if (g == high) {
        hue = (b - r) * 60.0 / d + 120.0;
    } else {
        hue = (r - g) * 60.0 / d + 240.0;
    }
    if (hue >= 360.0) hue -= 360.0;
}

void _color::SetHLS(double lightness, double saturation, double hue) {
    if (saturation == 0.0) {
        red = green = blue = ToByte(lightness);
        return;
    }
    const double m2 = lightness <= 0.5 ? lightness + lightness * saturation
                                       : saturation + lightness - lightness * saturation;
    const double m1 = 2.0 * lightness - m2;
    red = ToByte(ChannelValue(m1, m2, hue + 120.0));
    green = ToByte(ChannelValue(m1, m2, hue));
    blue = ToByte(ChannelValue(m1, m2, hue - 120.0));
}

_color _color::Lightened() const {
    double lightness = 0.0;
    double saturation = 0.0;
    double hue = 0.0;
    GetHLS(lightness, saturation, hue);
    _color lighter = *this;
    lighter.SetHLS(std::min(1.0, lightness + (1.0 - lightness) * 30.0 / 100.0), saturation, hue);
    return lighter;
}

}  // namespace paintcore

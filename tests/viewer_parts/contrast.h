// Contrast ratios of colours as people see them, from 1 for equal ones to 21 for black on white.
#pragma once

#include <paintcore/color.h>

#include <QColor>
#include <algorithm>
#include <cmath>

namespace nodeline::test {

inline double Luminance(const QColor& color) {
    const auto linear = [](double v) {
        return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

inline double Contrast(const QColor& a, const QColor& b) {
    const double first = Luminance(a);
    const double second = Luminance(b);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

inline double Contrast(const paintcore::_color& a, const paintcore::_color& b) {
    return Contrast(QColor(a.red, a.green, a.blue), QColor(b.red, b.green, b.blue));
}

}  // namespace nodeline::test

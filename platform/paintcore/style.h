// Pens, brushes and fonts: how lines, areas and texts look.
#pragma once

#include <paintcore/color.h>

#include <string>

namespace paintcore {

// What lines and outlines are drawn with.
struct pen {
    _color color{0, 0, 0};
    // In pixels, whatever the scale; 0 is the thinnest line there is, one pixel.
    int width = 1;
    // 0 draws nothing, 1 a solid line.
    int style = 1;
    // Ends of lines: 0 flat, 1 round, 2 square.
    int cap = 0;
    // Corners of lines: 0 pointed, 1 round, 2 cut off.
    int join = 0;

    // Member by member.
    friend bool operator==(const pen&, const pen&) = default;
};

// What areas are filled with.
struct brush {
    _color color{0, 0, 0};
    // 0 does not fill, 1 fills with the colour.
    int style = 0;

    // Member by member.
    friend bool operator==(const brush&, const brush&) = default;
};

// Bits of `font::style`.
enum FontStyle { FontPlain = 1, FontBold = 2, FontHostDefault = 4 };

// What texts are drawn with.
struct font {
    // The name of the family; an empty one is the host's default face.
    std::string face;
    // A word of `FontStyle` bits.
    int style = FontHostDefault;
    // In points at 96 pixels to the inch, on the device and whatever the scale of the painter. Text
    // of size 0 or less is not drawn.
    int size = 0;
    // Both are handed on to hosts that know them; text runs level from left to right otherwise.
    int angle = 0;
    int charset = 0;
    // A factor on `size`.
    double scale = 1.0;

    // Member by member: two names of one family are not equal.
    friend bool operator==(const font&, const font&) = default;
};

}  // namespace paintcore

// The question for a tooltip: where the pointer is, and what is to be shown there.
#pragma once

#include <paintcore/geometry.h>
#include <paintcore/style.h>

#include <string>

namespace paintcore {

// Goes to the element under the pointer, which fills in the answer. Coordinates are pixels of the
// element. A font that was left alone (empty face, size 0) is the host's tooltip font, a colour
// that was left alone the host's tooltip colour.
struct CTooltipEvent {
    // Where the pointer is.
    point<int> pos;
    // While the pointer stays in it, the tooltip need not be asked for anew.
    rectangle<int> trackRect;
    // Where the tooltip is to stand; empty to leave that to the host.
    rectangle<int> tipRect;
    // UTF-8; an empty text shows no tooltip.
    std::string text;
    // Handed on to hosts that know styles of tooltips.
    int style = 0;
    // The look; see above.
    _color textColor;
    _color backColor;
    paintcore::font font;
};

}  // namespace paintcore

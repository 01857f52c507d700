// What handlers are asked with and what they answer with: results, frames and tooltip events.
#pragma once

#include <nodeline/model/geometry.h>
#include <paintcore/color.h>
#include <paintcore/style.h>

#include <string>

namespace nodeline {

// The answer of a handler to an event: what the viewer does next. The answers to the parts of one
// gesture are joined with a bitwise or, so the viewer looks at ranges: from 2 it repaints, from 4
// it recalculates.
enum HandlerResult {
    // Nothing further; the event may be offered to others.
    HandlerIgnored = 0,
    // Nothing further; the event was dealt with.
    HandlerDone = 1,
    // The look has changed.
    HandlerRepaint = 2,
    // The graph has changed: the layout work that has been asked for, by `Node::ResizeSelf` or
    // `Node::UpdateLayout` say, is done before the repaint. The answer alone asks for none.
    HandlerRecalculate = 4
};

// The room that a node takes around an inner graph.
struct NodeFrame {
    // The outer size of the node.
    size<double> outer;
    // Where the inner graph starts.
    point<double> start;

    // Member by member.
    friend bool operator==(const NodeFrame&, const NodeFrame&) = default;
};

// The question for the tooltip of a node or an edge, in logical coordinates. A handler reads `pos`
// and fills in the rest. A font that is left alone (empty face, size 0) is the host's tooltip font,
// a colour that is left alone the host's tooltip colour.
struct CGraphTooltipEvent {
    // Where the pointer is.
    point<double> pos;
    // While the pointer stays in it, the tooltip need not be asked for anew.
    rectangle<double> trackRect;
    // Where the tooltip is to stand; empty to leave that to the host.
    rectangle<double> tipRect;
    // UTF-8; an empty text shows no tooltip.
    std::string text;
    // Handed on to hosts that know styles of tooltips.
    int style = 0;
    // The look; see above.
    paintcore::_color textColor;
    paintcore::_color backColor;
    paintcore::font font;
};

}  // namespace nodeline

// A visible rubber rectangle on a surface, with a drawer that writes down what it is asked.
#pragma once

#include <nodeline/viewer/internal/rubber_rect_members.h>

#include "rubber_surface.h"

namespace nodeline::test {

// Writes down what is asked of a drawer.
class DrawerLog {
public:
    void DrawRect(paintcore::IPainter* /*painter*/, double x1, double y1, double x2, double y2) {
        Write("DrawRect", {x1, y1, x2, y2});
    }
    void DrawSelection(paintcore::IPainter* /*painter*/, double oldX1, double oldY1, double newX1,
                       double newY1, double oldX2, double oldY2, double newX2, double newY2,
                       bool active, bool erased) {
        Write("DrawSelection", {oldX1, oldY1, newX1, newY1, oldX2, oldY2, newX2, newY2});
        drawn.back() += active ? " active" : "";
        drawn.back() += erased ? " erased" : "";
    }
    void PaintOutline(paintcore::IPainter* /*painter*/) { Write("PaintOutline", {}); }
    Lines TakeDrawn() { return std::exchange(drawn, {}); }

    Lines drawn;

private:
    void Write(std::string line, const std::vector<double>& values) {
        for (const double value : values) line += " " + paintcore::NumberText(value);
        drawn.push_back(std::move(line));
    }
};

using Rect = viewkit::CRubberRectEx<DrawerLog>;

class RubberRectEx : public OnSurface<Rect> {
protected:
    // Has the rectangle scroll what the surface shows.
    void LetScroll() {
        rect->SetHorzScroll(&surface->horz);
        rect->SetVertScroll(&surface->vert);
    }

    Rect* rect = rubber;
};

}  // namespace nodeline::test

// Focus rectangle: the outline of an area that the user is drawing with the pointer.
#pragma once

#include <corvex/export.h>
#include <paintcore/geometry.h>
#include <paintcore/painter.h>

#include <optional>

namespace viewkit {

// Nothing, for rubber rectangles that are not to be seen.
class NODELINE_API DummyDrawer {};

// Keeps the one outline that is shown. The outline is never painted into the picture of the window:
// it lies over it (see `CVisualElement::DrawOverlay`), so nothing has to be restored where it was.
class NODELINE_API FocusRectDrawer {
public:
    // The outline between two corners, in logical coordinates; the same corners once more take it
    // away.
    void DrawRect(paintcore::IPainter* painter, double x1, double y1, double x2, double y2);
    // Takes the outline from (`oldX1`, `oldY1`) to (`oldX2`, `oldY2`) away, unless it is `erased`
    // already, and shows the one between the new corners if it is `active`.
    void DrawSelection(paintcore::IPainter* painter, double oldX1, double oldY1, double newX1,
                       double newY1, double oldX2, double oldY2, double newX2, double newY2,
                       bool active, bool erased);

protected:
    FocusRectDrawer() = default;

    // Paints the outline that is shown, if there is one, in the coordinate system of the painter.
    void PaintOutline(paintcore::IPainter* painter) const;

private:
    int halo_width_ = 3;
    std::optional<paintcore::rectangle<double>> outline_;
};

}  // namespace viewkit

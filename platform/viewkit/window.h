// Window: what a backend puts under a tree of elements.
#pragma once

#include <corvex/export.h>
#include <paintcore/geometry.h>
#include <paintcore/painter.h>

namespace viewkit {

// The shape of the pointer over a window.
enum class Cursor {
    Arrow = 0,
    Hand = 1,
    Move = 2,
    Cross = 3,
    SizeHorz = 4,
    SizeVert = 5,
    SizeFalling = 6,  // from the top left to the bottom right
    SizeRising = 7    // from the bottom left to the top right
};

// A surface on a screen, or in memory, that keeps a picture of what was painted on it. A backend
// implements this and tells a `CControl` what the user does.
class NODELINE_API IWindow {
public:
    virtual ~IWindow() = default;

    // A painter of this window, also outside of a paint: for measuring. Owned by the window.
    [[nodiscard]] virtual paintcore::IPainter* GetPainter() = 0;
    // The area of the window, in its own pixels.
    [[nodiscard]] virtual paintcore::rectangle<int> GetRect() const = 0;
    // Paints what is pending, at once. Within a paint this only asks for another one.
    virtual void Repaint(const paintcore::rectangle<int>& area) = 0;
    // The same at the next idle.
    virtual void RequestPaint(const paintcore::rectangle<int>& area) = 0;
    // Moves the painted pixels of `area` by (`dx`, `dy`); what leaves the area is lost, and what it
    // uncovers is undefined. `area` may reach beyond the window, where there are none. False if the
    // window cannot: then everything is painted anew.
    virtual bool MovePixels(const paintcore::rectangle<int>& area, int dx, int dy) = 0;
    // Shows a cursor until the next call or `RestoreCursor`.
    virtual void SetCursor(Cursor cursor) = 0;
    // Goes back to the cursor that stood before the last `SetCursor`.
    virtual void RestoreCursor() = 0;
    // Calls `CControl::Timer` every so many milliseconds; 0 stops it.
    virtual void SetRepeatTimer(int milliseconds) = 0;
};

}  // namespace viewkit

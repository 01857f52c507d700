// What a user does, from the words of Qt into those of `viewkit`.
#pragma once

#include <paintcore/painter.h>
#include <viewkit/window.h>

#include <QPoint>
#include <Qt>

class QKeyEvent;
class QWheelEvent;

namespace nodeline::qt {

// A word of `paintcore::KeyState` bits.
[[nodiscard]] int ToKeys(Qt::KeyboardModifiers modifiers);
// `None` for buttons that elements do not know.
[[nodiscard]] paintcore::MouseButton ToButton(Qt::MouseButton button);
// The first of the buttons that are held.
[[nodiscard]] paintcore::MouseButton ToHeldButton(Qt::MouseButtons buttons);
// The pixel that a point lies in.
[[nodiscard]] QPoint ToPixel(const QPointF& at);
// 37 to 40 for the arrows, 0 for keys that elements do not know.
[[nodiscard]] int ToKeyCode(const QKeyEvent& event);
// The character that a key stands for, if it is a plain one, or 0.
[[nodiscard]] char ToChar(const QKeyEvent& event);
[[nodiscard]] Qt::CursorShape ToCursorShape(viewkit::Cursor cursor);

// Clicks of a wheel on both axes, above 0 away from the user or to the right.
struct Notches {
    double vertical = 0.0;
    double horizontal = 0.0;
};
[[nodiscard]] Notches ToNotches(const QWheelEvent& event);

}  // namespace nodeline::qt

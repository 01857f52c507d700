#include <backends/qt/internal/input.h>

#include <QKeyEvent>
#include <QWheelEvent>
#include <cmath>

namespace nodeline::qt {

using paintcore::MouseButton;

namespace {

// What Qt tells for one click of a wheel, and how many pixels of a touch pad are one.
constexpr double kAnglePerNotch = 120.0;
constexpr double kPixelsPerNotch = 48.0;
// Codes beyond belong to keys that stand for no character.
constexpr int kEndOfKeyCodes = 256;

}  // namespace

int ToKeys(Qt::KeyboardModifiers modifiers) {
    int keys = 0;
    if (modifiers.testFlag(Qt::ShiftModifier)) keys |= paintcore::KeyShift;
    if (modifiers.testFlag(Qt::ControlModifier)) keys |= paintcore::KeyControl;
    if (modifiers.testFlag(Qt::AltModifier)) keys |= paintcore::KeyAlt;
    return keys;
}

MouseButton ToButton(Qt::MouseButton button) {
    switch (button) {
        case Qt::LeftButton:
            return MouseButton::Left;
        case Qt::RightButton:
            return MouseButton::Right;
        case Qt::MiddleButton:
            return MouseButton::Middle;
        default:
            return MouseButton::None;
    }
}

MouseButton ToHeldButton(Qt::MouseButtons buttons) {
    for (const auto button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
        if (buttons.testFlag(button)) return ToButton(button);
    }
    return MouseButton::None;
}

QPoint ToPixel(const QPointF& at) {
    return {static_cast<int>(std::floor(at.x())), static_cast<int>(std::floor(at.y()))};
}

int ToKeyCode(const QKeyEvent& event) {
    switch (event.key()) {
        case Qt::Key_Left:
            return 37;
        case Qt::Key_Up:
            return 38;
        case Qt::Key_Right:
            return 39;
        case Qt::Key_Down:
            return 40;
        // Characters that have the numbers of the arrows.
        case Qt::Key_Percent:
        case Qt::Key_Ampersand:
        case Qt::Key_Apostrophe:
        case Qt::Key_ParenLeft:
            return 0;
        default:
            return event.key() < kEndOfKeyCodes ? event.key() : 0;
    }
}

char ToChar(const QKeyEvent& event) {
    const QString text = event.text();
    if (text.size() != 1 || text[0] < u' ' || text[0] > u'~') return 0;
    return text[0].toLatin1();
}

Qt::CursorShape ToCursorShape(viewkit::Cursor cursor) {
    switch (cursor) {
        case viewkit::Cursor::Hand:
            return Qt::PointingHandCursor;
        case viewkit::Cursor::Move:
            return Qt::SizeAllCursor;
        case viewkit::Cursor::Cross:
            return Qt::CrossCursor;
        case viewkit::Cursor::SizeHorz:
            return Qt::SizeHorCursor;
        case viewkit::Cursor::SizeVert:
            return Qt::SizeVerCursor;
        case viewkit::Cursor::SizeFalling:
            return Qt::SizeFDiagCursor;
        case viewkit::Cursor::SizeRising:
            return Qt::SizeBDiagCursor;
        default:
            return Qt::ArrowCursor;
    }
}

// To the left is positive for Qt.
Notches ToNotches(const QWheelEvent& event) {
    if (!event.pixelDelta().isNull()) {
        return {event.pixelDelta().y() / kPixelsPerNotch,
                -event.pixelDelta().x() / kPixelsPerNotch};
    }
    return {event.angleDelta().y() / kAnglePerNotch, -event.angleDelta().x() / kAnglePerNotch};
}

}  // namespace nodeline::qt

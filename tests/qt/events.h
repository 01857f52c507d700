// What a user does to a widget, as Qt tells it.
#pragma once

#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QWheelEvent>
#include <QWidget>

namespace nodeline::test {

// Lets the event loop come to rest.
inline void Settle() {
    for (int i = 0; i < 3; ++i) {
        QApplication::sendPostedEvents();
        QApplication::processEvents();
    }
}

inline bool Send(QWidget* widget, QEvent&& event) {
    return QApplication::sendEvent(widget, &event);
}

inline void Mouse(QWidget* widget, QEvent::Type type, QPoint at, Qt::MouseButton button,
                  Qt::MouseButtons held, Qt::KeyboardModifiers keys = Qt::NoModifier) {
    Send(widget,
         QMouseEvent(type, QPointF(at), QPointF(widget->mapToGlobal(at)), button, held, keys));
}
inline void Press(QWidget* widget, QPoint at, Qt::MouseButton button = Qt::LeftButton,
                  Qt::KeyboardModifiers keys = Qt::NoModifier) {
    Mouse(widget, QEvent::MouseButtonPress, at, button, button, keys);
}
inline void Release(QWidget* widget, QPoint at, Qt::MouseButton button = Qt::LeftButton,
                    Qt::KeyboardModifiers keys = Qt::NoModifier) {
    Mouse(widget, QEvent::MouseButtonRelease, at, button, Qt::NoButton, keys);
}
inline void Move(QWidget* widget, QPoint at, Qt::MouseButtons held = Qt::NoButton) {
    Mouse(widget, QEvent::MouseMove, at, Qt::NoButton, held);
}
inline void Click(QWidget* widget, QPoint at) {
    const QPointer<QWidget> life(widget);
    Press(widget, at);
    if (life) Release(widget, at);
}
// As Qt sends it: press, release, double click, release.
inline void DoubleClick(QWidget* widget, QPoint at) {
    const QPointer<QWidget> life(widget);
    Click(widget, at);
    if (life) Mouse(widget, QEvent::MouseButtonDblClick, at, Qt::LeftButton, Qt::LeftButton);
    if (life) Release(widget, at);
}
inline void Drag(QWidget* widget, QPoint from, QPoint to) {
    Press(widget, from);
    Move(widget, to, Qt::LeftButton);
    Release(widget, to);
}
inline bool Wheel(QWidget* widget, QPoint at, QPoint angle, QPoint pixels = {},
                  Qt::KeyboardModifiers keys = Qt::NoModifier) {
    QWheelEvent event(QPointF(at), QPointF(widget->mapToGlobal(at)), pixels, angle, Qt::NoButton,
                      keys, Qt::NoScrollPhase, false);
    QApplication::sendEvent(widget, &event);
    return event.isAccepted();
}
inline bool Key(QWidget* widget, QEvent::Type type, int key,
                Qt::KeyboardModifiers keys = Qt::NoModifier, const QString& text = {}) {
    QKeyEvent event(type, key, keys, text);
    QApplication::sendEvent(widget, &event);
    return event.isAccepted();
}

}  // namespace nodeline::test

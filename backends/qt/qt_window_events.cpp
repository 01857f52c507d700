#include <backends/qt/internal/input.h>
#include <backends/qt/qt_window.h>

#include <QContextMenuEvent>
#include <QDragEnterEvent>
#include <QDragMoveEvent>
#include <QDropEvent>
#include <QFocusEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QTextDocument>
#include <QTimerEvent>
#include <QToolTip>
#include <QWheelEvent>
#include <utility>

namespace nodeline::qt {

using viewkit::CControl;
using viewkit::CVisualElement;

// An event that is left accepted ends at this widget, and Qt does not look at the widget again.
template <class Use>
void QtWindow::hand_on(QEvent* event, Use use) {
    const QPointer<QtWindow> self(this);
    const bool is_used = use(GetControl());
    if (self) event->setAccepted(is_used);
}

bool QtWindow::event(QEvent* event) {
    const QPointer<QtWindow> self(this);
    switch (event->type()) {
        case QEvent::ToolTip: {
            const auto* help = static_cast<QHelpEvent*>(event);
            show_tooltip(help->pos(), help->globalPos());
            return true;
        }
        case QEvent::Leave:
            GetControl().MouseLeave();
            break;
        case QEvent::UngrabMouse:
        case QEvent::WindowDeactivate:
        case QEvent::Hide:
            lose_capture();
            break;
        case QEvent::EnabledChange:
            if (!isEnabled()) lose_capture();
            break;
        case QEvent::ScreenChangeInternal:
            follow_pixel_ratio();
            break;
        default:
            break;
    }
    return self ? QWidget::event(event) : true;
}

void QtWindow::lose_capture() {
    if (GetControl().GetCaptured() != nullptr) GetControl().LoseCapture();
}

// A press that no element has used up may have begun a drag, and is not for others either.
void QtWindow::mousePressEvent(QMouseEvent* event) {
    const QPoint at = ToPixel(event->position());
    const auto button = ToButton(event->button());
    if (button == paintcore::MouseButton::None) return event->ignore();
    if (event->button() == Qt::RightButton) right_is_down_ = true;
    GetControl().ButtonDown(at.x(), at.y(), ToKeys(event->modifiers()), button);
}

void QtWindow::mouseReleaseEvent(QMouseEvent* event) {
    const QPoint at = ToPixel(event->position());
    const auto button = ToButton(event->button());
    if (button == paintcore::MouseButton::None) return event->ignore();
    // The elements had it ahead of a context menu.
    if (event->button() == Qt::RightButton && !std::exchange(right_is_down_, false)) return;
    GetControl().ButtonUp(at.x(), at.y(), ToKeys(event->modifiers()), button);
}

void QtWindow::mouseDoubleClickEvent(QMouseEvent* event) {
    const QPoint at = ToPixel(event->position());
    const auto button = ToButton(event->button());
    if (button == paintcore::MouseButton::None) return event->ignore();
    GetControl().DoubleClick(at.x(), at.y(), ToKeys(event->modifiers()), button);
}

void QtWindow::mouseMoveEvent(QMouseEvent* event) {
    const QPoint at = ToPixel(event->position());
    const QPointer<QtWindow> self(this);
    // A menu or a dialog that opened between has had the release.
    if (event->buttons() == Qt::NoButton) lose_capture();
    if (!self) return;
    GetControl().MouseMove(at.x(), at.y(), ToKeys(event->modifiers()),
                           ToHeldButton(event->buttons()));
}

void QtWindow::wheelEvent(QWheelEvent* event) {
    const QPoint at = ToPixel(event->position());
    const int keys = ToKeys(event->modifiers());
    const Notches notches = ToNotches(*event);
    hand_on(event, [&](CControl& control) {
        const viewkit::Watch<CControl> life(&control);
        bool is_used = false;
        if (notches.vertical != 0.0) {
            is_used = control.MouseWheel(at.x(), at.y(), keys, notches.vertical, false);
        }
        if (life && notches.horizontal != 0.0) {
            is_used |= control.MouseWheel(at.x(), at.y(), keys, notches.horizontal, true);
        }
        return is_used;
    });
}

void QtWindow::keyPressEvent(QKeyEvent* event) {
    const int keys = ToKeys(event->modifiers());
    const int code = ToKeyCode(*event);
    const char c = ToChar(*event);
    hand_on(event, [keys, code, c](CControl& control) {
        const viewkit::Watch<CControl> life(&control);
        const bool is_used = code != 0 && control.KeyDown(keys, code);
        return is_used || (life && c != 0 && control.Char(c));
    });
}

void QtWindow::keyReleaseEvent(QKeyEvent* event) {
    const int keys = ToKeys(event->modifiers());
    const int code = ToKeyCode(*event);
    hand_on(event,
            [keys, code](CControl& control) { return code != 0 && control.KeyUp(keys, code); });
}

// Where menus open at the press, the release goes to the menu, and elements would wait for it.
void QtWindow::contextMenuEvent(QContextMenuEvent* event) {
    const QPoint at = event->pos();
    const QPointer<QtWindow> self(this);
    if (event->reason() == QContextMenuEvent::Mouse && std::exchange(right_is_down_, false)) {
        GetControl().ButtonUp(at.x(), at.y(), ToKeys(event->modifiers()),
                              paintcore::MouseButton::Right);
    }
    if (!self) return;
    hand_on(event, [at](CControl& control) { return control.ContextMenu(at.x(), at.y()); });
}

void QtWindow::dragEnterEvent(QDragEnterEvent* event) { dragMoveEvent(event); }

void QtWindow::dragMoveEvent(QDragMoveEvent* event) {
    const QPoint at = ToPixel(event->position());
    hand_on(event, [at](CControl& control) { return control.DragOver(at.x(), at.y()); });
}

void QtWindow::dropEvent(QDropEvent* event) {
    const QPoint at = ToPixel(event->position());
    hand_on(event, [at](CControl& control) { return control.DragDrop(at.x(), at.y()); });
}

// Keys go on where they went before the widget lost the focus.
void QtWindow::focusInEvent(QFocusEvent* /*event*/) {
    if (GetControl().GetFocused() == nullptr && last_focused_) last_focused_.get()->SetFocus();
}

void QtWindow::focusOutEvent(QFocusEvent* /*event*/) {
    last_focused_ = viewkit::Watch<CVisualElement>(GetControl().GetFocused());
    GetControl().LoseFocus();
}

void QtWindow::timerEvent(QTimerEvent* event) {
    if (event->timerId() == repeat_timer_.timerId()) {
        GetControl().Timer();
    } else {
        QWidget::timerEvent(event);
    }
}

// The text is not ours: without escaping, Qt would take it for a document of its own.
void QtWindow::show_tooltip(const QPoint& at, const QPoint& global) {
    const QPointer<QtWindow> self(this);
    paintcore::CTooltipEvent question;
    question.pos = {at.x(), at.y()};
    GetControl().Tooltip(&question);
    if (!self) return;
    if (question.text.empty()) {
        QToolTip::hideText();
        return;
    }
    const auto& r = question.trackRect;
    const QString text =
        QString::fromUtf8(question.text.data(), static_cast<qsizetype>(question.text.size()));
    QToolTip::showText(global, Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal), this,
                       QRect(r.left, r.top, r.right - r.left, r.bottom - r.top));
}

void QtWindow::SetCursor(viewkit::Cursor cursor) {
    WindowBase::SetCursor(cursor);
    setCursor(ToCursorShape(GetCursor()));
}

void QtWindow::RestoreCursor() {
    WindowBase::RestoreCursor();
    setCursor(ToCursorShape(GetCursor()));
}

void QtWindow::SetRepeatTimer(int milliseconds) {
    WindowBase::SetRepeatTimer(milliseconds);
    if (milliseconds > 0) {
        repeat_timer_.start(milliseconds, this);
    } else {
        repeat_timer_.stop();
    }
}

}  // namespace nodeline::qt

#include <apps/viewer/tile_button.h>

#include <QFocusEvent>
#include <QFontMetrics>
#include <QPainter>
#include <algorithm>

namespace nodeline::app {

namespace {

constexpr double kRadius = 6.0;
constexpr int kMarginX = 12;
constexpr int kMarginY = 8;
constexpr int kPathMarginY = 4;
constexpr int kPrimaryMarginX = 24;
constexpr int kLineGap = 2;
constexpr int kGap = 12;

// `part` of the way from one colour to another.
QColor Mix(const QColor& from, const QColor& to, double part) {
    const auto mix = [part](int a, int b) { return static_cast<int>(a + (b - a) * part); };
    return {mix(from.red(), to.red()), mix(from.green(), to.green()), mix(from.blue(), to.blue())};
}

}  // namespace

TileButton::TileButton(Kind kind, const QString& title, const QString& description, QWidget* parent)
    : QAbstractButton(parent), kind_(kind), description_(description) {
    setText(title);
    setAccessibleDescription(description);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(kind == Kind::kPrimary ? QSizePolicy::Fixed : QSizePolicy::Expanding,
                  QSizePolicy::Fixed);
    if (kind != Kind::kPrimary) setToolTip(title + QLatin1Char('\n') + description);
}

QFont TileButton::title_font() const {
    QFont made = font();
    if (kind_ != Kind::kPath) made.setWeight(QFont::DemiBold);
    return made;
}

QRect TileButton::inside() const {
    const int y = kind_ == Kind::kPath ? kPathMarginY : kMarginY;
    return rect().adjusted(kMarginX, y, -kMarginX, -y);
}

QSize TileButton::sizeHint() const {
    const QFontMetrics title(title_font());
    const int line = QFontMetrics(font()).height();
    switch (kind_) {
        case Kind::kPrimary:
            return {title.horizontalAdvance(text()) + 2 * kPrimaryMarginX,
                    title.height() + 2 * kMarginY};
        case Kind::kPath:
            return {20 * line, title.height() + 2 * kPathMarginY};
        case Kind::kPlain:
            break;
    }
    return {20 * line, title.height() + kLineGap + line + 2 * kMarginY};
}

QSize TileButton::minimumSizeHint() const {
    const QSize hint = sizeHint();
    return kind_ == Kind::kPrimary ? hint : QSize(hint.height() * 3, hint.height());
}

void TileButton::enterEvent(QEnterEvent* event) {
    QAbstractButton::enterEvent(event);
    update();
}

void TileButton::leaveEvent(QEvent* event) {
    QAbstractButton::leaveEvent(event);
    update();
}

void TileButton::focusInEvent(QFocusEvent* event) {
    is_focus_shown_ = event->reason() == Qt::TabFocusReason ||
                      event->reason() == Qt::BacktabFocusReason ||
                      event->reason() == Qt::ShortcutFocusReason;
    QAbstractButton::focusInEvent(event);
}

void TileButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    draw_ground(painter);
    switch (kind_) {
        case Kind::kPrimary:
            return draw_primary(painter);
        case Kind::kPlain:
            return draw_plain(painter);
        case Kind::kPath:
            return draw_path(painter);
    }
}

// Under the pointer and held down the ground comes nearer to the colour of texts, so that it
// changes alike in light and dark.
void TileButton::draw_ground(QPainter& painter) const {
    const QPalette& p = palette();
    const QColor text = p.color(QPalette::WindowText);
    const QColor window = p.color(QPalette::Window);
    const double lit = isDown() ? 0.14 : underMouse() ? 0.07 : 0.0;
    QColor ground = Mix(p.color(QPalette::Base), text, lit);
    QColor outline = Mix(window, text, 0.2);
    if (kind_ == Kind::kPrimary) {
        ground = outline = Mix(p.color(QPalette::Highlight), QColor(0, 0, 0), lit * 2.0);
    } else if (kind_ == Kind::kPath) {
        ground = outline = Mix(window, text, lit);
    }
    double width = 1.0;
    if (hasFocus() && is_focus_shown_) {
        outline = kind_ == Kind::kPrimary ? text : p.color(QPalette::Highlight);
        width = 2.0;
    }
    painter.setPen(QPen(outline, width));
    painter.setBrush(ground);
    const double half = width / 2.0;
    painter.drawRoundedRect(QRectF(rect()).adjusted(half, half, -half, -half), kRadius, kRadius);
}

void TileButton::draw_primary(QPainter& painter) const {
    painter.setFont(title_font());
    painter.setPen(palette().color(QPalette::HighlightedText));
    painter.drawText(rect(), Qt::AlignCenter, text());
}

void TileButton::draw_plain(QPainter& painter) const {
    const QRect area = inside();
    const QFontMetrics title(title_font());
    const QFontMetrics line(font());
    painter.setFont(title_font());
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(area, Qt::AlignLeft | Qt::AlignTop | Qt::TextSingleLine,
                     title.elidedText(text(), Qt::ElideRight, area.width()));
    painter.setFont(font());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(area, Qt::AlignLeft | Qt::AlignBottom | Qt::TextSingleLine,
                     line.elidedText(description_, Qt::ElideRight, area.width()));
}

void TileButton::draw_path(QPainter& painter) const {
    QRect area = inside();
    const QFontMetrics line(font());
    const QString title = line.elidedText(text(), Qt::ElideMiddle, area.width());
    painter.setFont(font());
    painter.setPen(palette().color(QPalette::Link));
    painter.drawText(area, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, title);
    area.setLeft(area.left() + line.horizontalAdvance(title) + kGap);
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(area, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     line.elidedText(description_, Qt::ElideMiddle, std::max(0, area.width())));
}

}  // namespace nodeline::app

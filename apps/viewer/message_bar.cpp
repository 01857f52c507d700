#include <apps/viewer/message_bar.h>

#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>
#include <QToolButton>

namespace nodeline::app {

MessageBar::MessageBar(QWidget* parent) : QFrame(parent), label_(new QLabel(this)) {
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::ToolTipBase);
    auto* const icon = new QLabel(this);
    const int extent = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(extent));
    // Messages hold names of files, which are not ours.
    label_->setTextFormat(Qt::PlainText);
    label_->setForegroundRole(QPalette::ToolTipText);
    label_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label_->setWordWrap(true);
    auto* const close = new QToolButton(this);
    close->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    close->setAutoRaise(true);
    close->setToolTip(tr("Close this message"));
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(8, 4, 4, 4);
    row->addWidget(icon);
    row->addWidget(label_, 1);
    row->addWidget(close);
    connect(close, &QToolButton::clicked, this, &QWidget::hide);
    hide();
}

void MessageBar::tell(const QString& message) {
    label_->setText(message);
    show();
}

QString MessageBar::text() const { return isHidden() ? QString() : label_->text(); }

}  // namespace nodeline::app

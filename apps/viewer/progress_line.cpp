#include <apps/viewer/progress_line.h>

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <utility>

namespace nodeline::app {

namespace {

constexpr int kDelay = 500;  // in milliseconds
constexpr int kRefresh = 100;
constexpr int kBarWidth = 120;  // in pixels

}  // namespace

ProgressLine::ProgressLine(QWidget* parent) : QWidget(parent), label_(new QLabel(this)) {
    auto* const bar = new QProgressBar(this);
    bar->setRange(0, 0);
    bar->setFixedWidth(kBarWidth);
    bar->setTextVisible(false);
    auto* const button = new QPushButton(tr("Cancel"), this);
    button->setToolTip(tr("Give up loading; what is shown stays"));
    label_->setTextFormat(Qt::PlainText);
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(label_);
    row->addWidget(bar);
    row->addWidget(button);
    delay_.setSingleShot(true);
    delay_.setInterval(kDelay);
    refresh_.setInterval(kRefresh);
    connect(button, &QPushButton::clicked, this, &ProgressLine::cancelled);
    connect(&refresh_, &QTimer::timeout, this, &ProgressLine::show_phase);
    connect(&delay_, &QTimer::timeout, this, [this] {
        show_phase();
        show();
        refresh_.start();
    });
    hide();
}

void ProgressLine::start(std::function<QString()> phase) {
    phase_ = std::move(phase);
    if (!isVisible()) delay_.start();
}

void ProgressLine::stop() {
    delay_.stop();
    refresh_.stop();
    hide();
}

void ProgressLine::show_phase() { label_->setText(phase_()); }

}  // namespace nodeline::app

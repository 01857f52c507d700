#include <apps/viewer/start_page.h>
#include <apps/viewer/tile_button.h>

#include <QDir>
#include <QEvent>
#include <QFileInfo>
#include <QFontInfo>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QScrollArea>
#include <QVBoxLayout>
#include <algorithm>

namespace nodeline::app {

namespace {

constexpr int kMargin = 24;
constexpr int kSpacing = 8;
constexpr int kSectionGap = 20;
constexpr double kHeadingScale = 1.8;
constexpr int kColumnWidth = 760;
// From this width on, examples stand in two columns.
constexpr int kWideColumn = 600;

QLabel* MakeLabel(const QString& text, QWidget* parent) {
    auto* const label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

template <class Widget>
void Remove(std::vector<Widget*>& widgets) {
    for (Widget* const widget : widgets) {
        widget->hide();
        widget->deleteLater();
    }
    widgets.clear();
}

}  // namespace

StartPage::StartPage(QWidget* parent) : QWidget(parent) {
    scroll_ = new QScrollArea(this);
    scroll_->setFrameShape(QFrame::NoFrame);
    scroll_->setWidgetResizable(true);
    scroll_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll_->setFocusPolicy(Qt::NoFocus);
    auto* const outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->addWidget(scroll_);

    auto* const ground = new QWidget;
    column_ = new QWidget(ground);
    column_->setMaximumWidth(kColumnWidth);
    auto* const sides = new QHBoxLayout(ground);
    sides->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    sides->addStretch(1);
    sides->addWidget(column_, 1000);
    sides->addStretch(1);

    auto* const column = new QVBoxLayout(column_);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(kSpacing);
    // What is left over stands for one third above the column.
    column->addStretch(1);
    make_top(column);
    recent_heading_ = MakeLabel(QStringLiteral("Recent files"), column_);
    recent_layout_ = new QVBoxLayout;
    recent_layout_->setSpacing(0);
    examples_heading_ = MakeLabel(QStringLiteral("Examples"), column_);
    examples_layout_ = new QGridLayout;
    examples_layout_->setSpacing(kSpacing);
    column->addWidget(recent_heading_);
    column->addLayout(recent_layout_);
    column->addWidget(examples_heading_);
    column->addLayout(examples_layout_);
    make_hints(column);
    column->addStretch(2);
    recent_heading_->hide();
    examples_heading_->hide();
    style_texts();
    scroll_->setWidget(ground);
    setFocusProxy(open_);
}

void StartPage::make_top(QVBoxLayout* column) {
    heading_ = MakeLabel(QStringLiteral("Look at a graph"), column_);
    sentence_ = MakeLabel({}, column_);
    say_how_to_begin();
    open_ = new TileButton(TileButton::Kind::kPrimary, QStringLiteral("Open a graph\u2026"), {},
                           column_);
    connect(open_, &TileButton::clicked, this, &StartPage::openRequested);
    auto* const drop = MakeLabel(QStringLiteral("or drop a file here"), column_);
    dimmed_.push_back(drop);

    auto* const row = new QHBoxLayout;
    row->setSpacing(2 * kSpacing);
    row->addWidget(open_);
    row->addWidget(drop, 1);
    column->addWidget(heading_);
    column->addWidget(sentence_);
    column->addSpacing(kSpacing);
    column->addLayout(row);
}

void StartPage::say_how_to_begin() {
    sentence_->setText(
        examples_.empty()
            ? QStringLiteral("Open a graph file to see it drawn.")
            : QStringLiteral("Open a graph file, or begin with one of the examples below."));
}

void StartPage::make_hints(QVBoxLayout* column) {
    column->addSpacing(kSectionGap);
    for (const char* const text :
         {"Click a port beside a node to fold or unfold what lies behind it.",
          "Drag the ground to pan.", "Turn the wheel with Ctrl held down to zoom."}) {
        QLabel* const hint = MakeLabel(QString::fromUtf8(text), column_);
        dimmed_.push_back(hint);
        column->addWidget(hint);
    }
}

void StartPage::setExamples(const std::vector<Example>& examples) {
    Remove(examples_);
    for (const Example& example : examples) {
        auto* const button =
            new TileButton(TileButton::Kind::kPlain, example.title, example.description, column_);
        connect(button, &TileButton::clicked, this,
                [this, path = example.path] { Q_EMIT fileChosen(path); });
        examples_.push_back(button);
    }
    examples_heading_->setVisible(!examples_.empty());
    say_how_to_begin();
    example_columns_ = 0;
    arrange_examples();
}

void StartPage::setRecentFiles(const QStringList& paths) {
    Remove(recent_);
    for (const QString& path : paths.mid(0, kMaxRecentFiles)) {
        const QFileInfo file(path);
        auto* const button = new TileButton(TileButton::Kind::kPath, file.fileName(),
                                            QDir::toNativeSeparators(file.absolutePath()), column_);
        connect(button, &TileButton::clicked, this, [this, path] { Q_EMIT fileChosen(path); });
        recent_layout_->addWidget(button);
        recent_.push_back(button);
    }
    recent_heading_->setVisible(!recent_.empty());
}

// The width of the column is not known before the layout has run, that of the page is.
void StartPage::arrange_examples() {
    const int room = std::min(width() - 2 * kMargin, kColumnWidth);
    const int columns = room >= kWideColumn ? 2 : 1;
    if (columns == example_columns_) return;
    example_columns_ = columns;
    for (std::size_t i = 0; i < examples_.size(); ++i) {
        const int index = static_cast<int>(i);
        examples_layout_->addWidget(examples_[i], index / columns, index % columns);
    }
    examples_layout_->setColumnStretch(0, 1);
    examples_layout_->setColumnStretch(1, columns == 2 ? 1 : 0);
    examples_layout_->setHorizontalSpacing(columns == 2 ? kSpacing : 0);
    for (std::size_t i = 1; i < examples_.size(); ++i) {
        QWidget::setTabOrder(examples_[i - 1], examples_[i]);
    }
}

void StartPage::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    arrange_examples();
}

void StartPage::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    const bool concerns_texts = event->type() == QEvent::PaletteChange ||
                                event->type() == QEvent::FontChange ||
                                event->type() == QEvent::StyleChange;
    if (concerns_texts && scroll_ != nullptr) style_texts();
}

void StartPage::style_texts() {
    QFont large = font();
    large.setPointSizeF(QFontInfo(large).pointSizeF() * kHeadingScale);
    large.setWeight(QFont::DemiBold);
    heading_->setFont(large);
    QFont strong = font();
    strong.setWeight(QFont::DemiBold);
    for (QLabel* const label : {recent_heading_, examples_heading_}) {
        label->setFont(strong);
        label->setContentsMargins(0, kSectionGap, 0, 0);
    }
    QPalette quiet;
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
        quiet.setColor(group, QPalette::WindowText,
                       palette().color(group, QPalette::PlaceholderText));
    }
    for (QLabel* const label : dimmed_) label->setPalette(quiet);
}

}  // namespace nodeline::app

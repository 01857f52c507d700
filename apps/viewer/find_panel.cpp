#include <apps/viewer/find_panel.h>
#include <apps/viewer/hit_model.h>

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QLocale>
#include <QVBoxLayout>
#include <cstddef>

namespace nodeline::app {

namespace {

constexpr int kMargin = 8;
constexpr int kSpacing = 6;

QString Number(std::size_t n) { return QLocale().toString(static_cast<qulonglong>(n)); }

QString Counted(std::size_t n, const QString& one) {
    return Number(n) + QLatin1Char(' ') + one + (n == 1 ? QString() : QStringLiteral("s"));
}

bool IsEnter(int key) { return key == Qt::Key_Return || key == Qt::Key_Enter; }

bool MovesByRows(int key) {
    return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp ||
           key == Qt::Key_PageDown;
}

}  // namespace

FindPanel::FindPanel(QWidget* parent)
    : QWidget(parent), model_(std::make_unique<HitModel>(kMaxRows)) {
    line_ = new QLineEdit(this);
    line_->setClearButtonEnabled(true);
    line_->setPlaceholderText(QStringLiteral("Find nodes"));
    line_->setAccessibleName(QStringLiteral("Find nodes"));
    line_->installEventFilter(this);

    list_ = new QListView(this);
    auto* const delegate = new HitDelegate(list_);
    list_->setAccessibleName(QStringLiteral("Nodes found"));
    list_->setItemDelegate(delegate);
    list_->setModel(model_.get());
    list_->setUniformItemSizes(true);
    list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list_->installEventFilter(this);

    count_ = new QLabel(this);
    count_->setWordWrap(true);
    // A line that is as tall as before it says something, so that the list does not jump.
    count_->setMinimumHeight(count_->fontMetrics().height());

    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->setSpacing(kSpacing);
    layout->addWidget(line_);
    layout->addWidget(list_, 1);
    layout->addWidget(count_);
    setFocusProxy(line_);

    connect(line_, &QLineEdit::textChanged, this, [this] { search(); });
    connect(list_, &QListView::clicked, this,
            [this](const QModelIndex& index) { choose(index.row()); });
    connect(model_.get(), &QAbstractItemModel::modelReset, this,
            [this, delegate] { delegate->setShowsPaths(model_->search().IsNested()); });
    show_count();
}

// The list goes with the other children, after the model.
FindPanel::~FindPanel() { list_->setModel(nullptr); }

void FindPanel::setGraph(const graph_ptr2<Graph>& graph) {
    model_->setGraph(graph);
    set_current(0);
    show_count();
}

void FindPanel::refresh() {
    model_->refresh();
    show_count();
}

void FindPanel::activate() {
    line_->setFocus(Qt::ShortcutFocusReason);
    line_->selectAll();
}

QSize FindPanel::sizeHint() const {
    const int em = fontMetrics().height();
    return {16 * em, 24 * em};
}

void FindPanel::search() {
    model_->find(line_->text());
    set_current(0);
    show_count();
}

void FindPanel::show_count() {
    const NodeSearch::Result& result = model_->result();
    const bool is_blank = line_->text().trimmed().isEmpty();
    if (result.count == 0) {
        count_->setText(is_blank ? QString() : QStringLiteral("no hits"));
        return;
    }
    QString text = Counted(result.count, is_blank ? QStringLiteral("node") : QStringLiteral("hit"));
    if (result.hidden_count > 0) {
        text += QStringLiteral(", ") + Number(result.hidden_count) + QStringLiteral(" hidden");
    }
    if (result.rows.size() < result.count) {
        text += QStringLiteral(", the first ") + Number(result.rows.size()) +
                QStringLiteral(" are listed");
    }
    count_->setText(text);
}

bool FindPanel::is_own_key(const QObject* watched, const QKeyEvent& event) const {
    // The keys of a keypad have a modifier of their own.
    if ((event.modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier)) != Qt::NoModifier) {
        return false;
    }
    const int key = event.key();
    if (key == Qt::Key_Escape || IsEnter(key)) return true;
    return watched == line_ && MovesByRows(key);
}

// Shortcuts of the window do not get keys that the panel has a use for.
bool FindPanel::eventFilter(QObject* watched, QEvent* event) {
    const bool is_press = event->type() == QEvent::KeyPress;
    if (is_press || event->type() == QEvent::ShortcutOverride) {
        auto* const key = static_cast<QKeyEvent*>(event);
        if (is_own_key(watched, *key)) {
            if (is_press) take_key(key);
            event->accept();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void FindPanel::take_key(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        Q_EMIT closed();
    } else if (IsEnter(event->key())) {
        choose(list_->currentIndex().row());
    } else {
        QApplication::sendEvent(list_, event);
    }
}

void FindPanel::choose(int row) {
    const Node node = model_->node(row);
    if (node) Q_EMIT nodeChosen(node);
}

void FindPanel::set_current(int row) {
    const QModelIndex index = model_->index(row);
    if (index.isValid()) list_->setCurrentIndex(index);
    list_->scrollToTop();
}

}  // namespace nodeline::app

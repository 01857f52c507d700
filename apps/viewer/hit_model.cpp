#include <apps/viewer/hit_model.h>

#include <QApplication>
#include <QFontInfo>
#include <QFontMetrics>
#include <QPainter>
#include <algorithm>

namespace nodeline::app {

namespace {

constexpr int kMarginX = 8;
constexpr int kMarginY = 4;
constexpr int kGap = 8;

QString HiddenWord() { return QStringLiteral("hidden"); }

QFont Italic(QFont font) {
    font.setItalic(true);
    return font;
}

QFont Small(QFont font) {
    font.setPointSizeF(QFontInfo(font).pointSizeF() * 0.9);
    return font;
}

QPalette::ColorGroup GroupOf(const QStyleOptionViewItem& option) {
    if ((option.state & QStyle::State_Enabled) == 0) return QPalette::Disabled;
    return (option.state & QStyle::State_Active) != 0 ? QPalette::Active : QPalette::Inactive;
}

}  // namespace

void HitModel::setGraph(const graph_ptr2<Graph>& graph) {
    beginResetModel();
    search_.Collect(graph);
    result_ = search_.Find(text_, static_cast<std::size_t>(most_));
    endResetModel();
}

void HitModel::find(const QString& text) {
    beginResetModel();
    text_ = text;
    result_ = search_.Find(text_, static_cast<std::size_t>(most_));
    endResetModel();
}

// The hits and their order do not depend on what is hidden.
void HitModel::refresh() {
    search_.Refresh();
    result_ = search_.Find(text_, static_cast<std::size_t>(most_));
    const int count = rowCount();
    if (count > 0) Q_EMIT dataChanged(index(0), index(count - 1));
}

Node HitModel::node(int row) const {
    if (row < 0 || row >= rowCount()) return {};
    return search_.GetNode(result_.rows[static_cast<std::size_t>(row)]);
}

int HitModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(result_.rows.size());
}

QVariant HitModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount()) return {};
    const std::size_t entry = result_.rows[static_cast<std::size_t>(index.row())];
    const bool is_hidden = search_.IsHidden(entry);
    switch (role) {
        case Qt::DisplayRole:
            return search_.GetCaption(entry);
        case kPathRole:
            return search_.GetPath(entry);
        case kHiddenRole:
            return is_hidden;
        case Qt::ToolTipRole:
        case Qt::AccessibleTextRole: {
            QString text = search_.GetCaption(entry);
            const QString path = search_.GetPath(entry);
            if (!path.isEmpty()) text += QStringLiteral("\nin ") + path;
            if (is_hidden) text += QLatin1Char('\n') + HiddenWord();
            return text;
        }
        default:
            return {};
    }
}

void HitDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const {
    QStyleOptionViewItem row = option;
    initStyleOption(&row, index);
    row.text.clear();
    const QStyle* const style = row.widget != nullptr ? row.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &row, painter, row.widget);

    const bool is_hidden = index.data(HitModel::kHiddenRole).toBool();
    const bool is_current = (row.state & QStyle::State_Selected) != 0;
    const QPalette::ColorGroup group = GroupOf(row);
    const QPalette::ColorRole strong = is_current ? QPalette::HighlightedText : QPalette::Text;
    const QPalette::ColorRole dimmed =
        is_current ? QPalette::HighlightedText : QPalette::PlaceholderText;
    QRect area = row.rect.adjusted(kMarginX, kMarginY, -kMarginX, -kMarginY);

    painter->save();
    if (shows_paths_) {
        const QFont font = Small(row.font);
        const QFontMetrics metrics(font, painter->device());
        const QRect line(area.left(), area.bottom() + 1 - metrics.height(), area.width(),
                         metrics.height());
        const QString path = index.data(HitModel::kPathRole).toString();
        painter->setFont(font);
        painter->setPen(row.palette.color(group, dimmed));
        painter->drawText(line, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                          metrics.elidedText(path, Qt::ElideMiddle, line.width()));
        area.setBottom(line.top() - 1);
    }
    if (is_hidden) {
        const QFont font = Italic(Small(row.font));
        const int width = QFontMetrics(font, painter->device()).horizontalAdvance(HiddenWord());
        painter->setFont(font);
        painter->setPen(row.palette.color(group, dimmed));
        painter->drawText(area, Qt::AlignRight | Qt::AlignVCenter, HiddenWord());
        area.setRight(area.right() - width - kGap);
    }
    const QFont font = is_hidden ? Italic(row.font) : row.font;
    const QFontMetrics metrics(font, painter->device());
    painter->setFont(font);
    painter->setPen(row.palette.color(group, strong));
    painter->drawText(
        area, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
        metrics.elidedText(index.data().toString(), Qt::ElideRight, std::max(0, area.width())));
    painter->restore();
}

QSize HitDelegate::sizeHint(const QStyleOptionViewItem& option,
                            const QModelIndex& /*index*/) const {
    int height = QFontMetrics(option.font).height() + 2 * kMarginY;
    if (shows_paths_) height += QFontMetrics(Small(option.font)).height();
    return {kMarginX * 2, height};
}

}  // namespace nodeline::app

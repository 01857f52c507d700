// Hit model: the rows of the find panel, and how they are painted.
#pragma once

#include <apps/viewer/node_search.h>

#include <QAbstractListModel>
#include <QStyledItemDelegate>

namespace nodeline::app {

// One row for each hit. Its text is the caption, its tooltip all that there is to tell.
class HitModel : public QAbstractListModel {
public:
    enum Role { kPathRole = Qt::UserRole, kHiddenRole };

    explicit HitModel(int most) : most_(most) {}

    void setGraph(const graph_ptr2<Graph>& graph);
    void find(const QString& text);
    void refresh();

    [[nodiscard]] const NodeSearch& search() const { return search_; }
    [[nodiscard]] const NodeSearch::Result& result() const { return result_; }
    // Empty for a row that is not there.
    [[nodiscard]] Node node(int row) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

private:
    NodeSearch search_;
    NodeSearch::Result result_;
    QString text_;
    int most_;
};

// Paints the caption, and under it, smaller and dimmed, the owners; hidden nodes in italics, with a
// word at the right that says so. What is too long loses its end, a path its middle.
class HitDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    // Leaves out the line of the owners where no node has any.
    void setShowsPaths(bool shows_paths) { shows_paths_ = shows_paths; }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override;

private:
    bool shows_paths_ = false;
};

}  // namespace nodeline::app

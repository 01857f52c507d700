// Status line: how much of the graph is shown, how large, and what is selected.
#pragma once

#include <backends/qt/graph_widget.h>

#include <QLabel>
#include <QPointer>
#include <QStatusBar>
#include <vector>

namespace nodeline::app {

// The selected nodes of a widget that are not hidden. Hidden ones are selected when they come back.
[[nodiscard]] std::vector<Node> SelectedInSight(const qt::GraphWidget& widget);

// Follows a graph widget in the labels of a status bar.
class StatusLine : public QObject {
    Q_OBJECT

public:
    // Both are not owned and live longer.
    StatusLine(QStatusBar* bar, qt::GraphWidget* widget);

    // Counts anew, after the graph has changed by other ways than those of the widget.
    void renew();
    // Empties the line, as long as no graph is shown.
    void clear();
    // The same in one line: "12 of 15 nodes, 100 %, 1 selected: parse".
    [[nodiscard]] QString text() const;

Q_SIGNALS:
    void changed();

private:
    void count();
    void show_zoom();
    void show_selection();
    void set(QLabel* label, const QString& text);

    qt::GraphWidget* widget_;
    QLabel* nodes_;
    QLabel* zoom_;
    QLabel* selection_;
};

}  // namespace nodeline::app

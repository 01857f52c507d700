// Find panel: a line to type into, and below it the nodes whose captions contain what is typed; all
// nodes as long as nothing is.
//
//   auto* panel = new FindPanel(dock);
//   connect(panel, &FindPanel::nodeChosen, graph_widget, &GraphWidget::reveal);
//   panel->setGraph(graph);
//   panel->activate();
#pragma once

#include <nodeline/model/graph.h>

#include <QWidget>
#include <memory>

class QLabel;
class QLineEdit;
class QListView;

namespace nodeline::app {

class HitModel;

// In the line, Up and Down, and Page Up and Page Down, move through the list, Enter chooses the
// current row and Escape closes; so do Enter and Escape in the list, where a click chooses, too.
// Whoever owns the panel hides it.
class FindPanel : public QWidget {
    Q_OBJECT

public:
    // As many rows are shown at most; the line below the list counts all hits.
    static constexpr int kMaxRows = 1000;

    explicit FindPanel(QWidget* parent = nullptr);
    ~FindPanel() override;

    // Looks through another graph, or through the same one once nodes or captions have changed;
    // null for none. What is typed stays.
    void setGraph(const graph_ptr2<Graph>& graph);
    // Tells hidden nodes anew; the current row stays on its node.
    void refresh();
    // Takes the keyboard, and selects what is typed.
    void activate();

    [[nodiscard]] QSize sizeHint() const override;

Q_SIGNALS:
    void nodeChosen(const nodeline::Node& node);
    void closed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void search();
    void show_count();
    // Whether the panel has a use for the key.
    [[nodiscard]] bool is_own_key(const QObject* watched, const QKeyEvent& event) const;
    void take_key(QKeyEvent* event);
    void choose(int row);
    void set_current(int row);

    QLineEdit* line_ = nullptr;
    QListView* list_ = nullptr;
    QLabel* count_ = nullptr;
    std::unique_ptr<HitModel> model_;
};

}  // namespace nodeline::app

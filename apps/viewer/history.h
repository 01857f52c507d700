// History: what a person has hidden, shown and moved, to be undone and done again.
#pragma once

#include <backends/qt/graph_widget.h>

#include <QPointF>
#include <QUndoStack>
#include <unordered_map>
#include <vector>

namespace nodeline::app {

// Watches a widget, and takes down every change of which nodes are hidden, whoever made it, and
// every node that was dragged. A dragged node keeps its distance from where the layout wants it.
class History : public QObject {
    Q_OBJECT

public:
    // The widget is not owned and lives longer.
    explicit History(qt::GraphWidget* widget, QObject* parent = nullptr);

    [[nodiscard]] QUndoStack* stack() { return &stack_; }

    // Another graph is shown: forgets everything.
    void start();
    // Nodes have come and gone in a change of the widget: what remains can still be undone.
    void adopt();

private:
    friend class VisibilityCommand;
    friend class MoveCommand;

    struct State {
        Node node;
        bool is_hidden = false;
    };
    // A node that was dragged: how far the layout's place is from where it was put, and where it
    // stands for now, from its owner.
    struct Drag {
        Node node;
        point<double> offset;
        point<double> place;
    };

    // Slots of the widget.
    void record_change(const Node& at);
    void record_move(const Node& node, const QPointF& from);

    void put_dragged_back();
    void set_hidden(const std::vector<State>& states, const Node& at);
    void move(const Node& node, const point<double>& way);
    void note_states();

    qt::GraphWidget* widget_;
    QUndoStack stack_;
    std::vector<State> states_;
    std::unordered_map<int, Drag> drags_;
    // While a command runs, changes are its own.
    bool is_replaying_ = false;
};

}  // namespace nodeline::app

#include <apps/viewer/history.h>
#include <apps/viewer/wording.h>
#include <nodeline/ops/graph_ops.h>

#include <QUndoCommand>
#include <algorithm>
#include <cmath>
#include <utility>

namespace nodeline::app {

namespace {

// Longer captions would make a menu as wide as the screen.
constexpr int kMostCharacters = 24;
// In units of the graph; far less than a pixel at any scale.
constexpr double kNear = 1e-4;

QString Quoted(const Node& node) {
    const QString caption = ShortCaption(node, kMostCharacters);
    return caption.isEmpty() ? QObject::tr("a node") : u'“' + caption + u'”';
}

// From its owner, with which it moves.
point<double> PlaceOf(const Node& node) {
    const Node owner = node.GetOwner();
    return owner ? node.GetPosition() - owner.GetPosition() : node.GetPosition();
}

bool IsNear(const point<double>& a, const point<double>& b) {
    return std::abs(a.x - b.x) < kNear && std::abs(a.y - b.y) < kNear;
}

void MoveBy(const Node& node, const point<double>& way) {
    const point<double> p = node.GetPosition();
    MoveNode(node, p.x + way.x, p.y + way.y);
}

}  // namespace

// The first `redo` is the change itself, which has been made by then.
class VisibilityCommand : public QUndoCommand {
public:
    VisibilityCommand(History* history, std::vector<History::State> before,
                      std::vector<History::State> after, const Node& at)
        : history_(history), before_(std::move(before)), after_(std::move(after)), at_(at) {
        const auto hidden = std::count_if(after_.begin(), after_.end(),
                                          [](const auto& state) { return state.is_hidden; });
        const auto shown = static_cast<std::ptrdiff_t>(after_.size()) - hidden;
        const QString what = hidden > 0 && shown > 0 ? QObject::tr("changing what is shown")
                             : hidden > 0            ? QObject::tr("hiding")
                                                     : QObject::tr("showing");
        const bool is_change = hidden > 0 && shown > 0;
        const QString whom = after_.size() == 1 ? Quoted(after_.front().node)
                                                : QObject::tr("%L1 nodes").arg(after_.size());
        setText(is_change ? what : what + u' ' + whom);
    }

    void undo() override { history_->set_hidden(before_, at_); }
    void redo() override {
        if (std::exchange(is_new_, false)) return;
        history_->set_hidden(after_, at_);
    }

private:
    History* history_;
    std::vector<History::State> before_;
    std::vector<History::State> after_;
    Node at_;
    bool is_new_ = true;
};

class MoveCommand : public QUndoCommand {
public:
    MoveCommand(History* history, const Node& node, const point<double>& way)
        : history_(history), node_(node), way_(way) {
        setText(QObject::tr("moving %1").arg(Quoted(node)));
    }

    void undo() override { history_->move(node_, {-way_.x, -way_.y}); }
    void redo() override {
        if (std::exchange(is_new_, false)) return;
        history_->move(node_, way_);
    }

private:
    History* history_;
    Node node_;
    point<double> way_;
    bool is_new_ = true;
};

History::History(qt::GraphWidget* widget, QObject* parent) : QObject(parent), widget_(widget) {
    connect(widget, &qt::GraphWidget::graphChanged, this, &History::record_change);
    connect(widget, &qt::GraphWidget::nodeMoved, this, &History::record_move);
}

void History::start() {
    stack_.clear();
    drags_.clear();
    note_states();
}

void History::adopt() { note_states(); }

void History::note_states() {
    states_.clear();
    const auto note = [this](const Node& node) {
        states_.push_back({node, IsFlagSet(node, NodeHidden)});
    };
    ForEachNodeIn(widget_->viewer()->GetGraph()->GetRoot(), note, false, false);
}

void History::record_change(const Node& at) {
    put_dragged_back();
    std::vector<State> before;
    std::vector<State> after;
    for (State& state : states_) {
        const bool is_hidden = IsFlagSet(state.node, NodeHidden);
        if (is_hidden == state.is_hidden) continue;
        before.push_back(state);
        state.is_hidden = is_hidden;
        after.push_back(state);
    }
    if (after.empty() || is_replaying_) return;
    stack_.push(new VisibilityCommand(this, std::move(before), std::move(after), at));
}

void History::record_move(const Node& node, const QPointF& from) {
    const point<double> way = node.GetPosition() - point<double>{from.x(), from.y()};
    Drag& drag = drags_[node.GetID()];
    drag.node = node;
    drag.offset = drag.offset + way;
    drag.place = PlaceOf(node);
    stack_.push(new MoveCommand(this, node, way));
}

// A node that does not stand where it was left, from its owner, was placed anew by a layout. Nodes
// that move with their owners are off by what rounding does.
void History::put_dragged_back() {
    for (auto& [id, drag] : drags_) {
        if (drag.node.IsDummy() || IsNear(PlaceOf(drag.node), drag.place)) continue;
        MoveBy(drag.node, drag.offset);
        drag.place = PlaceOf(drag.node);
    }
}

void History::set_hidden(const std::vector<State>& states, const Node& at) {
    is_replaying_ = true;
    const auto edit = [this, &states] {
        ForEachNodeIn(widget_->viewer()->GetGraph()->GetRoot(), MarkOld, true, false);
        for (const State& state : states) {
            Node node = state.node;
            if (node.IsDummy()) continue;
            if (state.is_hidden) {
                Hide(node);
            } else {
                Show(node);
            }
            node.GetOwner().UpdateLayout();
        }
    };
    widget_->change(edit, at);
    is_replaying_ = false;
}

void History::move(const Node& node, const point<double>& way) {
    if (node.IsDummy()) return;
    const auto edit = [this, &node, &way] {
        MoveBy(node, way);
        Drag& drag = drags_[node.GetID()];
        drag.node = node;
        drag.offset = drag.offset + way;
        drag.place = PlaceOf(node);
    };
    widget_->change(edit);
}

}  // namespace nodeline::app

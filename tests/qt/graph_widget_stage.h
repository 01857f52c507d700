// A small graph in a widget.
#pragma once

#include <backends/qt/graph_widget.h>
#include <gtest/gtest.h>
#include <nodeline/handlers/handlers.h>
#include <nodeline/ops/graph_ops.h>
#include <qt/events.h>

#include <string>

namespace nodeline::qt {

inline Node AddNode(Node owner, const std::string& caption) {
    Node node = owner.AddNode();
    node.SetCaption(caption);
    return node;
}

// a -> b -> c, and d, which owns e, in a widget of 500 by 300.
class GraphWidgetTest : public testing::Test {
protected:
    void SetUp() override {
        a.LinkTo(b);
        b.LinkTo(c);
        widget->viewer()->ScrollbarsEnable(false);
        widget->setGraph(graph);
        widget->resize(500, 300);
        widget->show();
        test::Settle();
    }
    void TearDown() override { delete widget.data(); }

    [[nodiscard]] QPoint PixelAt(double x, double y) const {
        const point<int> p = widget->viewer()->GetContent()->ConvertL2P({x, y});
        return {p.x, p.y};
    }
    [[nodiscard]] QPoint MiddleOf(const Node& node) const {
        const point<double> p = node.GetPosition();
        const nodeline::size<double> s = node.GetSize();
        return PixelAt(p.x + s.cx / 2.0, p.y + s.cy / 2.0);
    }
    [[nodiscard]] QPoint RightPortOf(const Node& node) const {
        const point<double> p = node.GetPosition();
        const nodeline::size<double> s = node.GetSize();
        return PixelAt(p.x + s.cx - 2.0, p.y + s.cy / 2.0);
    }
    [[nodiscard]] point<double> Start() const {
        return {widget->viewer()->GetStartX(), widget->viewer()->GetStartY()};
    }

    graph_ptr2<Graph> graph{new Graph(), true};
    Node a = AddNode(graph->GetRoot(), "first");
    Node b = AddNode(graph->GetRoot(), "second");
    Node c = AddNode(graph->GetRoot(), "third");
    Node d = AddNode(graph->GetRoot(), "owner");
    Node e = AddNode(d, "inner");
    // A test may destroy it.
    QPointer<GraphWidget> widget = new GraphWidget;
};

}  // namespace nodeline::qt

// The port node handler: boxes with a port on each side, which fold and unfold the graph.
//
//   graph_ptr2<PortNodeHandler> nodes(new PortNodeHandler, true);
//   nodes->SetIPainter(painter);
//   nodes->OnClick.connect(&status_line, &StatusLine::ShowNode);
//   graph->SetDefaultNodeHandler(nodes);
#pragma once

#include <corvex/export.h>
#include <nodeline/handlers/drawers.h>
#include <nodeline/handlers/node_handler.h>
#include <nodeline/model/graph.h>

#include <optional>

namespace nodeline {

// The handler of interactive nodes, drawn and measured as by `CRectPortNodeDrawer`. The left port
// of a leaf stands for its parents, the right one for its children. A click on a port folds that
// side, or unfolds it if anything of it is hidden; a click elsewhere selects the node, or takes the
// selection back. A node lights up under the pointer, and its tooltip is its caption. Nodes that
// own others show no ports, and answer neither clicks nor the pointer.
//
// Each reaction raises its signal after its own work. All others are as in `INodeHandler`.
class NODELINE_API PortNodeHandler : public INodeHandler {
public:
    // Sets the look: brown on grey, orange where selected, blue where new, and all nodes of the
    // same width.
    PortNodeHandler();
    ~PortNodeHandler() override;

    void Draw(Node node, IPainter* painter) override;
    size<double> GetSize(Node node) override;
    NodeFrame GetSize(Node node, size<double> inner) override;

    // Holds the ports down that the point lies in. Answers `HandlerRepaint` if there is one.
    int HandleButtonDown(Node node, double x, double y, int keys, MouseButton button) override;
    // Lets the ports go. Answers `HandlerRepaint` on the node on which a button first went down,
    // `HandlerRecalculate` on another, because then something was dragged, and `HandlerDone` if no
    // button was down.
    int HandleButtonUp(Node node, double x, double y, int keys, MouseButton button) override;
    // Answers `HandlerRecalculate`; only raises `OnClick` if the button is not the left one or the
    // node owns others. Where both ports lie under the point, the left one is taken.
    int HandleClick(Node node, double x, double y, int keys, MouseButton button) override;
    // Set and clear `NodeHovered` of a leaf and answer `HandlerRepaint`. Let the ports go.
    int HandleMouseHover(Node node) override;
    int HandleMouseLeave(Node node) override;
    // Fills in the caption and the rectangle of the node, and answers `HandlerDone`. A node that
    // owns others has no tooltip and raises no signal.
    int HandleOnTooltip(Node node, CGraphTooltipEvent* event) override;

    void SetZoomFactor(double factor) override;

    // How many neighbours the ports go by, in all and without those that carry `NodeHidden`. Each
    // is linear in the edges on its side.
    [[nodiscard]] virtual int CountVisibleChildren(Node node);
    [[nodiscard]] virtual int CountVisibleParents(Node node);
    [[nodiscard]] virtual int CountAllChildren(Node node);
    [[nodiscard]] virtual int CountAllParents(Node node);

    // The painter to measure captions with while the layout runs. Not owned; without one, all nodes
    // have the size zero.
    void SetIPainter(IPainter* painter);
    [[nodiscard]] IPainter* GetIPainter() const;

    // The look, to be read and changed.
    [[nodiscard]] CPortNodeDrawInfo& GetDrawInfo() { return drawer_.GetDrawInfo(); }
    [[nodiscard]] const CPortNodeDrawInfo& GetDrawInfo() const { return drawer_.GetDrawInfo(); }

private:
    void TakeClick(Node node, double x, double y);
    void LetGo();

    // The node on which a button first went down, until one comes up. An id, because a graph owns
    // its handlers and a node keeps the store of its graph alive: each would keep the other.
    std::optional<int> pressed_node_;
    bool right_port_pressed_ = false;
    bool left_port_pressed_ = false;
    CRectPortNodeDrawer drawer_;
};

}  // namespace nodeline

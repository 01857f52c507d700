// Drawers: what paints and measures a node, kept apart from how it reacts.
#pragma once

#include <corvex/export.h>
#include <nodeline/handlers/handler_values.h>
#include <nodeline/model/graph.h>
#include <paintcore/color.h>
#include <paintcore/painter.h>
#include <paintcore/style.h>

#include <string>

namespace nodeline {

// The operations of a handler that concern its look. They mean what they mean in `INodeHandler`.
class NODELINE_API INodeDrawer {
public:
    // The size of the node without regard to what it owns, and around a graph that is `inner`
    // large.
    virtual size<double> GetSize(Node node) = 0;
    virtual NodeFrame GetSize(Node node, size<double> inner) = 0;
    // Paints the node itself, without what it owns.
    virtual void Draw(Node node, IPainter* painter) = 0;
    // The painter to measure captions with while nothing is painted. Not owned; null for none.
    virtual void SetIPainter(IPainter* painter) = 0;
    [[nodiscard]] virtual IPainter* GetIPainter() const = 0;
    // The scale of the viewer, in pixels per logical unit.
    virtual void SetZoomFactor(double factor) = 0;
    virtual ~INodeDrawer() = default;
};

// How much of a node's neighbours on one side is in view. Without any bit there are none, and no
// port is drawn.
enum PortState {
    PortVisible = 1,  // all of them
    PortHidden = 2,   // none
    PortPartial = 4,  // some
    PortPressed = 8   // added to the above while the port is held down
};

// The drawer of a node with ports: a left one for its parents and a right one for its children.
class NODELINE_API IPortNodeDrawer : public INodeDrawer {
public:
    // Whether a point, in the coordinates of the graph, lies in a port; the border is in it.
    [[nodiscard]] virtual bool IsLeftPortClicked(Node node, double x, double y) const = 0;
    [[nodiscard]] virtual bool IsRightPortClicked(Node node, double x, double y) const = 0;
    // How the port is drawn next: 0, or bits of `PortState`.
    virtual void SetLeftPortState(int state) = 0;
    virtual void SetRightPortState(int state) = 0;
};

// The look of a rectangular node, and the rules by which its caption is measured and shortened.
//
// Captions are UTF-8 and their lengths are counted in code points, so a caption is never cut inside
// one; a broken byte counts as a character of its own.
struct NODELINE_API CNodeDrawInfo {
    // Sets the caption font, scaled by the zoom factor and cut to whole points. Near a factor of 1,
    // from 0.9 to 1.1, the painter's font stays as it is, so that texts do not jitter.
    void SetScaledFont() const;

    // The size of a node for its caption in the scaled font, in logical units: as wide as the
    // caption and two blanks, but no more than `max_caption_length` + 2 characters of a longer one,
    // and one and a half lines high. An empty caption is taken as five blanks. Zero without a
    // painter.
    [[nodiscard]] size<double> GetSizeByCaption(Node node) const;

    // The caption as it fits into that width: if it does not, its end is replaced by three dots, or
    // all of it by as many as fit. Empty without a painter.
    [[nodiscard]] std::string GetTruncatedCaption(Node node) const;

    // Width of all outlines, in pixels.
    int pen_width = 1;
    // The caption font at a zoom factor of 1: the host's default face at 8 points.
    paintcore::font font{"", paintcore::FontHostDefault, 8, 0, 0, 1.0};
    // The colour of the caption, and of the outline.
    paintcore::_color text_color{0, 0, 0};
    paintcore::_color border_color{0, 0, 0};
    // The gradient, from top to bottom.
    paintcore::_color fill_top{255, 255, 255};
    paintcore::_color fill_bottom{127, 127, 127};
    // These five serve drawers that show selected and new nodes.
    paintcore::_color selected_fill_top{255, 255, 255};
    paintcore::_color selected_fill_bottom{127, 127, 127};
    paintcore::_color new_fill_top{255, 255, 255};
    paintcore::_color new_fill_bottom{127, 127, 127};
    paintcore::_color selected_border_color{255, 0, 0};
    // The longest caption, in characters, that counts for the width of a node.
    int max_caption_length = 24;
    // Every node is as wide as the longest caption that counts.
    bool fixed_width = false;
    // The scale of the viewer, in pixels per logical unit; above 0.
    double zoom_factor = 1.0;
    // The painter to measure and draw with; not owned, and null at first.
    IPainter* painter = nullptr;
};

// Paints a node as a rectangle with a gradient and its caption: in the middle, or at the top left
// if the node owns others. A marked node is lighter. Nodes without `NodeDrawn` are not painted.
class NODELINE_API CRectNodeDrawer : public INodeDrawer {
public:
    // Sizes do not depend on the zoom factor: the layout runs between paints at different scales.
    // They are zero until there is a painter.
    size<double> GetSize(Node node) override;
    // The inner graph starts under a strip that is `GetSize(node)` high, and the node is as wide as
    // the wider of the two. The root has no caption and is as large as its contents.
    NodeFrame GetSize(Node node, size<double> inner) override;
    // Measures with `painter` too, for the length of the call.
    void Draw(Node node, IPainter* painter) override;
    void SetIPainter(IPainter* painter) override;
    [[nodiscard]] IPainter* GetIPainter() const override;
    // A factor of 0 or less is ignored.
    void SetZoomFactor(double factor) override;

    // The look, to be read and changed.
    [[nodiscard]] CNodeDrawInfo& GetDrawInfo() { return info_; }
    [[nodiscard]] const CNodeDrawInfo& GetDrawInfo() const { return info_; }

private:
    CNodeDrawInfo info_;
};

// The look of a node with ports. The colour of a port tells how much of its side is in view.
struct NODELINE_API CPortNodeDrawInfo : CNodeDrawInfo {
    CPortNodeDrawInfo();

    // No neighbour is in view: red, a tenth darker.
    paintcore::_color port_hidden_color{255, 0, 0};
    // All are in view: green, three tenths darker.
    paintcore::_color port_visible_color{0, 255, 0};
    // Some are in view.
    paintcore::_color port_partial_color{255, 204, 51};
};

// Paints a leaf as a box with a gradient and its caption, and up to two ports beside it: round
// boxes, as wide as they are high, that bear "-" with all neighbours of their side in view, "+"
// with none, and "<" or ">" with some. A node that owns others has no ports: its box fills it, with
// the caption at the top left. Selected, new and hovered nodes have gradients of their own, marked
// nodes a frame around everything. Nodes without `NodeDrawn` are not painted.
class NODELINE_API CRectPortNodeDrawer : public IPortNodeDrawer {
public:
    // The box of the caption and room for two ports, whether they are there or not. Like that of
    // `CRectNodeDrawer`, the size does not depend on the zoom factor and is zero until there is a
    // painter.
    size<double> GetSize(Node node) override;
    // As in `CRectNodeDrawer`.
    NodeFrame GetSize(Node node, size<double> inner) override;
    // Measures with `painter` too, for the length of the call.
    void Draw(Node node, IPainter* painter) override;
    void SetIPainter(IPainter* painter) override;
    [[nodiscard]] IPainter* GetIPainter() const override;
    // A factor of 0 or less is ignored.
    void SetZoomFactor(double factor) override;

    // Both are true where the ports of a narrow node overlap. A point in a port counts whatever the
    // states of the ports, and in an owner as well; a node of height 0 has no ports.
    [[nodiscard]] bool IsLeftPortClicked(Node node, double x, double y) const override;
    [[nodiscard]] bool IsRightPortClicked(Node node, double x, double y) const override;
    // The states hold until they are set anew; they are 0 at first.
    void SetLeftPortState(int state) override;
    void SetRightPortState(int state) override;

    // The look, to be read and changed.
    [[nodiscard]] CPortNodeDrawInfo& GetDrawInfo() { return info_; }
    [[nodiscard]] const CPortNodeDrawInfo& GetDrawInfo() const { return info_; }

private:
    void FillBox(Node node, const rectangle<double>& box) const;
    void DrawPorts(rectangle<double>& box) const;
    void DrawPort(const rectangle<double>& port, int state, const char* partial_mark) const;
    void DrawFrame(rectangle<double> box) const;

    CPortNodeDrawInfo info_;
    int left_port_state_ = 0;
    int right_port_state_ = 0;
};

}  // namespace nodeline

#include <apps/viewer/viewer_node_handler.h>
#include <formats/attribute_handlers.h>
#include <nodeline/ops/graph_ops.h>

namespace nodeline::app {

namespace {

constexpr int kStrongPen = 2;

bool IsOwner(const Node& node) { return node.GetOwned().GetCount() > 0; }

// Whether an even number of owners, the root not counted, stands around the node.
bool IsOuter(const Node& node) {
    bool is_outer = true;
    for (Node owner = node.GetOwner(); owner && !IsRoot(owner); owner = owner.GetOwner()) {
        is_outer = !is_outer;
    }
    return is_outer;
}

}  // namespace

// Lends a node its own look for as long as it is drawn or measured. All that differs between nodes
// is put back at the end.
class ViewerNodeHandler::Scope {
public:
    Scope(ViewerNodeHandler& handler, const Node& node)
        : look_(handler.GetDrawInfo()),
          fill_top_(look_.fill_top),
          fill_bottom_(look_.fill_bottom),
          text_(look_.text_color),
          border_(look_.border_color),
          font_style_(look_.font.style),
          pen_width_(look_.pen_width) {
        const bool is_owner = IsOwner(node);
        if (is_owner) TakeOwner(handler.states_, IsOuter(node));
        const auto found = handler.looks_.find(node.GetID());
        if (found != handler.looks_.end()) formats::ApplyLook(found->second, node, look_);
        if (!is_owner) TakeLeaf(handler.states_, node);
    }
    ~Scope() {
        look_.fill_top = fill_top_;
        look_.fill_bottom = fill_bottom_;
        look_.text_color = text_;
        look_.border_color = border_;
        look_.font.style = font_style_;
        look_.pen_width = pen_width_;
    }

    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

private:
    void TakeOwner(const StateLook& states, bool is_outer) {
        look_.fill_top = is_outer ? states.outer_fill : states.inner_fill;
        look_.fill_bottom = look_.fill_top;
        look_.text_color = states.owner_text;
        look_.border_color = states.owner_border;
        look_.font.style |= paintcore::FontBold;
    }

    void TakeLeaf(const StateLook& states, const Node& node) {
        // Twice as strong as the frame of the drawer alone.
        if (IsFlagSet(node, NodeMarked)) look_.border_color = look_.selected_border_color;
        if (IsFlagSet(node, NodeNew)) look_.border_color = states.new_border;
        if (IsFlagSet(node, NodeHovered)) look_.border_color = states.hovered_border;
        if (IsFlagSet(node, NodeSelected)) look_.border_color = states.selected_border;
        // A hovered node is painted over and back alone, which a wider outline would not survive.
        if (IsFlagSet(node, NodeSelected)) look_.pen_width = kStrongPen;
    }

    CPortNodeDrawInfo& look_;
    paintcore::_color fill_top_;
    paintcore::_color fill_bottom_;
    paintcore::_color text_;
    paintcore::_color border_;
    int font_style_;
    int pen_width_;
};

ViewerNodeHandler::ViewerNodeHandler() { SetIPainter(&measure_); }

ViewerNodeHandler::~ViewerNodeHandler() = default;

// The drawer leaves the font of the painter alone where the scale is nearly 1, so it is set here.
void ViewerNodeHandler::Draw(Node node, IPainter* painter) {
    const Scope scope(*this, node);
    if (painter != nullptr) painter->SetFont(GetDrawInfo().font);
    PortNodeHandler::Draw(node, painter);
}

size<double> ViewerNodeHandler::GetSize(Node node) {
    const Scope scope(*this, node);
    measure_.SetFont(GetDrawInfo().font);
    return PortNodeHandler::GetSize(node);
}

NodeFrame ViewerNodeHandler::GetSize(Node node, size<double> inner) {
    const Scope scope(*this, node);
    measure_.SetFont(GetDrawInfo().font);
    return PortNodeHandler::GetSize(node, inner);
}

}  // namespace nodeline::app

#include <nodeline/viewer/content.h>
#include <nodeline/viewer/coords_keeper.h>
#include <nodeline/viewer/internal/arrow_keys.h>

namespace nodeline {
namespace {

using Watch = viewkit::Watch<CVisualElement>;

}  // namespace

void CContent::note_result(const Node& node, int result) {
    if (result == HandlerRepaint) NoteRepaint(node);
}

void CContent::handle_epilogue(int result) {
    if (result >= HandlerRecalculate) {
        redraw_nodes_.clear();
        redraw_edges_.clear();
        RenewView(true);
    } else if (result >= HandlerRepaint) {
        RenewView(false);
    }
}

bool CContent::HandleMouseMove(int x, int y, int /*keys*/, MouseButton button) {
    // A handler takes a hover for the end of its press.
    if (tell_hover_ && button == MouseButton::None && !has_mouse()) hover_at({x, y});
    return true;
}

bool CContent::HandleButtonDown(int x, int y, int keys, MouseButton button) {
    const Watch watch(this);
    const Node target = GetNodeAt({x, y});
    const point<double> p = ConvertP2L({x, y});
    if (single_press_) pressed_nodes_.clear();
    pressed_nodes_.push_back(target);
    press_button_ = button;
    grab_offset_ = p - pressed_nodes_.front().GetPosition();
    const int result = target.GetHandler()->HandleButtonDown(target, p.x, p.y, keys, button);
    if (!watch) return true;
    note_result(target, result);
    OnButtonDown(this, x, y, keys, button);
    if (!watch) return true;
    handle_epilogue(result);
    if (!watch) return true;
    // A drag begins only when the window offers a press that was not used up.
    drag_tracker_->Reset();
    zoom_rect_->Reset();
    zoom_rect_->OnChange(zoom_rect_, viewkit::UpdateType::Content);
    // A rubber rectangle that goes on with the press takes the mouse over.
    if (watch && single_press_) CaptureMouse();
    return !watch || result != HandlerIgnored;
}

bool CContent::is_in_view(const point<int>& pixel) const {
    const rectangle<int> r = GetContentRect();
    return pixel.x >= r.left && pixel.x < r.right && pixel.y >= r.top && pixel.y < r.bottom;
}

bool CContent::HandleButtonUp(int x, int y, int keys, MouseButton button) {
    const Watch watch(this);
    const int result = release(x, y, keys, button);
    return !watch || result != HandlerIgnored;
}

int CContent::release(int x, int y, int keys, MouseButton button) {
    const Watch watch(this);
    const Node target = GetNodeAt({x, y});
    const point<double> p = ConvertP2L({x, y});
    const bool ends_press = !single_press_ || button == press_button_;
    const CoordsKeeper keeper(this, target, GetLife());
    int result = target.GetHandler()->HandleButtonUp(target, p.x, p.y, keys, button);
    if (!watch) return result;
    note_result(target, result);
    const bool is_dropped = single_press_ && ends_press && !is_in_view({x, y});
    if (ends_press && !is_dropped && !pressed_nodes_.empty() && pressed_nodes_.front() == target) {
        const int click = target.GetHandler()->HandleClick(target, p.x, p.y, keys, button);
        if (!watch) return result;
        note_result(target, click);
        result |= click;
    }
    if (ends_press) pressed_nodes_.clear();
    if (is_dropped) OnPressDropped(this);
    if (!watch) return result;
    OnButtonUp(this, x, y, keys, button);
    if (!watch) return result;
    handle_epilogue(result);
    if (!watch || !ends_press) return result;
    drag_tracker_->Reset();
    if (single_press_) forget_press();
    return result;
}

bool CContent::HandleDoubleClick(int x, int y, int keys, MouseButton button) {
    const Watch watch(this);
    const Node target = GetNodeAt({x, y});
    const point<double> p = ConvertP2L({x, y});
    const int result = target.GetHandler()->HandleDoubleClick(target, p.x, p.y, keys, button);
    if (!watch) return true;
    note_result(target, result);
    OnDoubleClick(this, x, y, keys, button);
    if (watch) handle_epilogue(result);
    return !watch || result != HandlerIgnored;
}

bool CContent::HandleContextMenu(int x, int y) {
    const Watch watch(this);
    const Node target = GetNodeAt({x, y});
    const point<double> p = ConvertP2L({x, y});
    const int result = target.GetHandler()->HandleContextMenu(target, p.x, p.y);
    if (!watch) return true;
    note_result(target, result);
    OnContextMenu(this, x, y);
    if (watch) handle_epilogue(result);
    return !watch || result != HandlerIgnored;
}

void CContent::HandleMouseHover(CVisualElement* /*element*/) {}

void CContent::HandleMouseLeave(CVisualElement* /*element*/) {
    const Watch watch(this);
    end_hover();
    if (!watch) return;
    // What has changed is repainted already, unless the application has noted something itself.
    const bool repaints = !tell_hover_ || !hover_nodes_.empty() || !hover_edges_.empty();
    zoom_rect_->SetOutlineOn(false);
    const std::vector<Node> nodes = hover_nodes_;
    for (const Node& node : nodes) {
        node.GetHandler()->HandleMouseLeave(node);
        if (!watch) return;
    }
    hover_nodes_.clear();
    const std::vector<Edge> edges = hover_edges_;
    for (const Edge& edge : edges) {
        edge.GetHandler()->HandleMouseLeave(edge);
        if (!watch) return;
    }
    hover_edges_.clear();
    OnMouseLeave(this);
    if (watch && repaints) handle_epilogue(HandlerRecalculate);
    if (watch) zoom_rect_->SetOutlineOn(true);
}

bool CContent::HandleKeyDown(int /*keys*/, int code) {
    const std::optional<internal::ArrowKey> arrow = internal::ToArrowKey(code);
    if (!arrow) return false;
    if (arrow->is_horz) {
        SetStartX(GetHorzStart() + arrow->sign * (GetHorzStepInPixels() / scale_));
    } else {
        SetStartY(GetVertStart() + arrow->sign * (GetVertStepInPixels() / scale_));
    }
    return true;
}

bool CContent::HandleKeyUp(int /*keys*/, int /*code*/) { return false; }

bool CContent::HandleChar(char /*c*/) { return false; }

bool CContent::HandleDragOver(int /*x*/, int /*y*/) { return true; }

bool CContent::HandleDragDrop(int /*x*/, int /*y*/) { return true; }

}  // namespace nodeline

// How a control paints: which elements draw, with which painter, and what has to wait.
#include <viewkit/control.h>
#include <viewkit/internal/element_painter.h>

#include <algorithm>

namespace viewkit {

namespace {

rectangle<int> common_part(const rectangle<int>& a, const rectangle<int>& b) {
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
            std::min(a.bottom, b.bottom)};
}

bool is_empty(const rectangle<int>& r) { return r.left >= r.right || r.top >= r.bottom; }

rectangle<int> window_rect_of(const CVisualElement* element) {
    const point<int> origin = element->GetWindowOrigin();
    const rectangle<int> own = element->GetContentRect();
    return {origin.x, origin.y, origin.x + own.right, origin.y + own.bottom};
}

bool holds(const CVisualElement* parent, const CVisualElement* child) {
    const auto& children = parent->GetChildren();
    return std::find(children.begin(), children.end(), child) != children.end();
}

// Hands an element a painter whose pixels are its own and that does not reach beyond it. Elements
// that are there for capture alone draw in the pixels of their parent.
template <class Draw>
void draw_in_own_pixels(CVisualElement* element, IPainter* painter, Draw draw) {
    const CVisualElement* frame = element->IsCaptureOnly() ? element->GetParent() : element;
    const CVisualElement* top = frame;
    rectangle<int> visible = window_rect_of(frame);
    const rectangle<int> own = visible;
    for (; top->GetParent() != nullptr; top = top->GetParent()) {
        visible = common_part(visible, window_rect_of(top->GetParent()));
    }
    if (is_empty(visible)) return;
    if (visible == top->GetBounds()) {
        painter->BeginPaint(IPainter::StdSettings::All);
        draw(painter);
        return;
    }
    internal::ElementPainter local(painter, {own.left, own.top}, visible);
    local.BeginPaint(IPainter::StdSettings::All);
    draw(&local);
}

// Ends a paint, whether it returns or throws, unless the control has died in it.
class PaintScope {
public:
    PaintScope(CControl* control, bool* flag) : life_(control), flag_(flag) { *flag = true; }
    ~PaintScope() {
        if (life_) *flag_ = false;
    }
    PaintScope(const PaintScope&) = delete;
    PaintScope& operator=(const PaintScope&) = delete;

    [[nodiscard]] bool IsAlive() const { return static_cast<bool>(life_); }

private:
    Watch<CControl> life_;
    bool* flag_;
};

}  // namespace

bool CControl::Paint(IPainter* painter) {
    if (painting_) {
        pending_ = true;
        return false;
    }
    pending_ = false;
    ++paint_number_;
    const PaintScope scope(this, &painting_);
    painter->BeginPaint(IPainter::StdSettings::All);
    prepare(root_.get());
    if (scope.IsAlive()) paint(root_.get(), painter, false);
    if (scope.IsAlive()) prepare(root_.get());
    if (scope.IsAlive()) painter->EndPaint();
    return scope.IsAlive();
}

void CControl::prepare(CVisualElement* element) {
    const Watch<CVisualElement> life(element);
    element->PreparePaint();
    if (!life) return;
    const std::vector<CVisualElement*> children = element->GetChildren();
    for (CVisualElement* child : children) {
        if (!life) return;
        if (holds(element, child) && child->IsVisible()) prepare(child);
    }
}

void CControl::paint(CVisualElement* element, IPainter* painter, bool repaint) {
    const Watch<CControl> life(this);
    const Watch<CVisualElement> watch(element);
    if (repaint) element->valid_ = false;
    element->BeginDraw();
    const bool was_valid = element->valid_;
    draw_in_own_pixels(element, painter, [element](IPainter* p) { element->DrawContent(p); });
    if (!life || !watch) return;
    const bool is_painted_over = !was_valid || !element->valid_;
    element->EndDraw();
    element->painted_in_ = paint_number_;
    if (!element->valid_) request_paint(element);
    const std::vector<CVisualElement*> children = element->GetChildren();
    for (CVisualElement* child : children) {
        if (holds(element, child) && child->IsVisible()) paint(child, painter, is_painted_over);
        if (!life || !watch) return;
    }
}

void CControl::draw_all(CVisualElement* element, IPainter* painter, Draw draw) {
    const bool was_valid = element->valid_;
    element->valid_ = false;
    draw_in_own_pixels(element, painter, [element, draw](IPainter* p) { (element->*draw)(p); });
    element->valid_ = was_valid;
    for (CVisualElement* child : element->GetChildren()) {
        if (child->IsVisible()) draw_all(child, painter, draw);
    }
}

void CControl::DrawOverlays(IPainter* painter) {
    painter->BeginPaint(IPainter::StdSettings::All);
    draw_all(root_.get(), painter, &CVisualElement::DrawOverlay);
    painter->EndPaint();
}

void CControl::DrawPicture(IPainter* painter) {
    painter->BeginPaint(IPainter::StdSettings::All);
    draw_all(root_.get(), painter, &CVisualElement::DrawPicture);
    draw_all(root_.get(), painter, &CVisualElement::DrawOverlay);
    painter->EndPaint();
}

void CControl::InvalidateAll() {
    // An invalid parent has its children painted anew.
    root_->Invalidate();
}

void CControl::request_paint(CVisualElement* element) {
    // Its turn in the paint under way is still to come, or has not ended.
    if (painting_ && element->painted_in_ != paint_number_) return;
    if (pending_) return;
    pending_ = true;
    if (window_ != nullptr) window_->RequestPaint(window_->GetRect());
}

}  // namespace viewkit

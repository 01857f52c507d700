#include <viewkit/control.h>
#include <viewkit/element.h>

#include <algorithm>

namespace viewkit {

namespace {

// Cuts a strip of the child's own size off one side of `rest`.
rectangle<int> dock(rectangle<int>& rest, Alignment side, const rectangle<int>& own) {
    rectangle<int> strip = rest;
    const int width = std::min(own.right - own.left, rest.right - rest.left);
    const int height = std::min(own.bottom - own.top, rest.bottom - rest.top);
    switch (side) {
        case Alignment::Top:
            strip.bottom = rest.top += height;
            break;
        case Alignment::Bottom:
            strip.top = rest.bottom -= height;
            break;
        case Alignment::Left:
            strip.right = rest.left += width;
            break;
        case Alignment::Right:
            strip.left = rest.right -= width;
            break;
        case Alignment::None:
        case Alignment::Client:
            break;
    }
    return strip;
}

}  // namespace

CVisualElement::CVisualElement(CVisualElement* parent, const size<int>& initial,
                               Alignment alignment)
    : alignment_(alignment), bounds_{0, 0, initial.cx, initial.cy} {
    if (parent == nullptr) return;
    parent_ = parent;
    parent->children_.push_back(this);
    parent->AlignChildren();
}

CVisualElement::~CVisualElement() {
    detach();
    // A child that dies takes itself out of the list.
    while (!children_.empty()) delete children_.back();
}

void CVisualElement::detach() {
    if (CControl* const control = GetControl()) control->forget(this);
    if (parent_ == nullptr) return;
    std::vector<CVisualElement*>& siblings = parent_->children_;
    siblings.erase(std::remove(siblings.begin(), siblings.end(), this), siblings.end());
    parent_->Invalidate();
    parent_ = nullptr;
}

void CVisualElement::SetParent(CVisualElement* parent) {
    if (parent == parent_ || (parent != nullptr && parent->IsIn(this))) return;
    CVisualElement* const old = parent_;
    detach();
    parent_ = parent;
    if (parent != nullptr) {
        parent->children_.push_back(this);
        const Watch<CVisualElement> watch(this);
        parent->AlignChildren();
        if (!watch) return;
        Invalidate();
    }
    ChangeParent(old);
}

CControl* CVisualElement::GetControl() const {
    const CVisualElement* top = this;
    while (top->parent_ != nullptr) top = top->parent_;
    return top->control_;
}

void CVisualElement::SetAlignment(Alignment alignment) {
    alignment_ = alignment;
    if (parent_ != nullptr) parent_->AlignChildren();
}

rectangle<int> CVisualElement::GetContentRect() const {
    return {0, 0, bounds_.right - bounds_.left, bounds_.bottom - bounds_.top};
}

void CVisualElement::SetPos(const rectangle<int>& bounds, bool repaint) {
    if (bounds == bounds_) {
        if (repaint) Invalidate();
        return;
    }
    const size<int> old{bounds_.right - bounds_.left, bounds_.bottom - bounds_.top};
    bounds_ = bounds;
    // What the element leaves behind belongs to the parent.
    if (parent_ != nullptr) parent_->Invalidate();
    Invalidate();
    if (old != size<int>{bounds.right - bounds.left, bounds.bottom - bounds.top}) AlignChildren();
}

void CVisualElement::SetVisible(bool visible) {
    if (visible == visible_) return;
    visible_ = visible;
    if (!visible) {
        if (CControl* const control = GetControl()) control->forget(this);
    }
    if (parent_ == nullptr) return;
    parent_->Invalidate();
    parent_->AlignChildren();
}

point<int> CVisualElement::GetWindowOrigin() const {
    point<int> origin;
    for (const CVisualElement* e = this; e != nullptr; e = e->parent_) {
        origin += point<int>{e->bounds_.left, e->bounds_.top};
    }
    return origin;
}

bool CVisualElement::IsCovered() const {
    const rectangle<int> area = window_area();
    const auto covers = [&](const CVisualElement* e) {
        if (!e->visible_ || e->capture_only_) return false;
        const rectangle<int> r = e->window_area();
        return std::max(r.left, area.left) < std::min(r.right, area.right) &&
               std::max(r.top, area.top) < std::min(r.bottom, area.bottom);
    };
    if (std::any_of(children_.begin(), children_.end(), covers)) return true;
    for (const CVisualElement* e = this; e->parent_ != nullptr; e = e->parent_) {
        const std::vector<CVisualElement*>& siblings = e->parent_->children_;
        const auto self = std::find(siblings.begin(), siblings.end(), e);
        if (std::any_of(self + 1, siblings.end(), covers)) return true;
    }
    return false;
}

bool CVisualElement::IsCutOff() const {
    const rectangle<int> area = window_area();
    for (const CVisualElement* e = parent_; e != nullptr; e = e->parent_) {
        const rectangle<int> around = e->window_area();
        if (area.left < around.left || area.top < around.top || area.right > around.right ||
            area.bottom > around.bottom) {
            return true;
        }
    }
    return false;
}

rectangle<int> CVisualElement::window_area() const {
    const point<int> origin = GetWindowOrigin();
    const rectangle<int> own = GetContentRect();
    return {origin.x, origin.y, origin.x + own.right, origin.y + own.bottom};
}

bool CVisualElement::IsIn(const CVisualElement* other) const {
    const CVisualElement* e = this;
    while (e != nullptr && e != other) e = e->parent_;
    return e != nullptr;
}

void CVisualElement::AlignChildren() {
    rectangle<int> rest = GetContentRect();
    const Watch<CVisualElement> watch(this);
    // Placing a child may run code that changes the list.
    const std::vector<CVisualElement*> children = children_;
    const auto place = [&](CVisualElement* child, const rectangle<int>& where) {
        if (child->bounds_ != where) child->SetPos(where, true);
        return static_cast<bool>(watch);
    };
    const auto is_here = [this](const CVisualElement* child) {
        return std::find(children_.begin(), children_.end(), child) != children_.end();
    };
    for (CVisualElement* child : children) {
        if (!is_here(child) || !child->visible_ || child->alignment_ == Alignment::None ||
            child->alignment_ == Alignment::Client) {
            continue;
        }
        if (!place(child, dock(rest, child->alignment_, child->bounds_))) return;
    }
    for (CVisualElement* child : children) {
        if (!is_here(child) || !child->visible_ || child->alignment_ != Alignment::Client) continue;
        if (!place(child, rest)) return;
    }
}

void CVisualElement::PutToBack(CVisualElement* child) {
    const auto at = std::find(children_.begin(), children_.end(), child);
    if (at != children_.end()) std::rotate(children_.begin(), at, at + 1);
}

void CVisualElement::Invalidate() {
    valid_ = false;
    invalid_since_asked_ = valid_was_asked_;
    if (CControl* const control = GetControl()) control->request_paint(this);
}

void CVisualElement::OnChange(CVisualElement* element, UpdateType /*type*/) {
    if (CControl* const control = GetControl()) control->request_paint(element);
}

void CVisualElement::DrawContent(IPainter* painter) { OnDraw(this, painter); }

void CVisualElement::DrawOverlay(IPainter* /*painter*/) {}

void CVisualElement::DrawPicture(IPainter* painter) { DrawContent(painter); }

void CVisualElement::SetCoordSystem(IPainter* painter) {
    painter->SetCoordSystem(paintcore::MapMode::Identity, nullptr);
}

void CVisualElement::DP2LP(point<double>* /*p*/) {}

void CVisualElement::LP2DP(point<double>* /*p*/) {}

rectangle<double> CVisualElement::GetDrawRect(IPainter* /*painter*/) {
    const rectangle<int> r = GetContentRect();
    return {0.0, 0.0, static_cast<double>(r.right), static_cast<double>(r.bottom)};
}

rectangle<double> CVisualElement::GetDrawValidRect(IPainter* painter) {
    valid_was_asked_ = true;
    return valid_ ? GetDrawRect(painter) : rectangle<double>{};
}

void CVisualElement::BeginDraw() {
    valid_was_asked_ = false;
    invalid_since_asked_ = false;
}

void CVisualElement::EndDraw() {
    valid_ = !invalid_since_asked_;
    valid_was_asked_ = false;
    invalid_since_asked_ = false;
}

void CVisualElement::CaptureMouse() {
    if (CControl* const control = GetControl()) control->capture(this);
}

void CVisualElement::ReleaseMouse() {
    if (CControl* const control = GetControl()) control->release(this);
}

bool CVisualElement::HasCapture() const {
    const CControl* const control = GetControl();
    return control != nullptr && control->GetCaptured() == this;
}

void CVisualElement::SetFocus() {
    if (CControl* const control = GetControl()) control->focus(this);
}

bool CVisualElement::HasFocus() const {
    const CControl* const control = GetControl();
    return control != nullptr && control->GetFocused() == this;
}

bool CVisualElement::HandleMouseMove(int, int, int, MouseButton) { return false; }

bool CVisualElement::HandleButtonDown(int, int, int, MouseButton) { return false; }

bool CVisualElement::HandleButtonUp(int x, int y, int keys, MouseButton button) {
    OnButtonUp(this, x, y, keys, button);
    return false;
}

bool CVisualElement::HandleDoubleClick(int x, int y, int keys, MouseButton button) {
    OnDoubleClick(this, x, y, keys, button);
    return false;
}

void CVisualElement::HandleMouseHover(CVisualElement*) {}

void CVisualElement::HandleMouseLeave(CVisualElement*) { OnMouseLeave(this); }

bool CVisualElement::HandleMouseWheel(int, int, int, double, bool) { return false; }

bool CVisualElement::HandleKeyDown(int, int) { return false; }

bool CVisualElement::HandleKeyUp(int, int) { return false; }

bool CVisualElement::HandleChar(char) { return false; }

bool CVisualElement::HandleOnTooltip(CTooltipEvent* event) {
    OnTooltip(this, event);
    return false;
}

bool CVisualElement::HandleOnTooltipTrack(CTooltipEvent* event) {
    OnTooltipTrack(this, event);
    return false;
}

bool CVisualElement::HandleContextMenu(int x, int y) {
    OnContextMenu(this, x, y);
    return false;
}

bool CVisualElement::HandleDragOver(int, int) { return false; }

bool CVisualElement::HandleDragDrop(int, int) { return false; }

void CVisualElement::HandleGetFocus() {}

void CVisualElement::HandleLostFocus() {}

void CVisualElement::HandleCaptureLost() {}

void CVisualElement::HandleTimer() {}

void CVisualElement::ChangeParent(CVisualElement*) {}

}  // namespace viewkit

#include <viewkit/control.h>

#include <algorithm>

namespace viewkit {

namespace {

// Covers the window, and shows the background where no child fills it.
class RootElement : public CVisualElement {
public:
    explicit RootElement(const rectangle<int>& r)
        : CVisualElement(nullptr, {r.right - r.left, r.bottom - r.top}, Alignment::None) {}

    void DrawContent(IPainter* painter) override {
        const bool is_filled =
            std::any_of(GetChildren().begin(), GetChildren().end(), [](const CVisualElement* e) {
                return e->IsVisible() && e->GetAlignment() == Alignment::Client;
            });
        const rectangle<double> area = GetDrawRect(painter);
        if (!is_filled && GetDrawValidRect(painter) != area) {
            const auto& colour = paintcore::GetSysPalette()[paintcore::SysPalette::kBackground];
            painter->SetBrush({colour, 1});
            painter->FillRect(area);
        }
        CVisualElement::DrawContent(painter);
    }
};

point<int> to_local(const CVisualElement* element, int x, int y) {
    return point<int>{x, y} - element->GetWindowOrigin();
}

void shift(rectangle<int>& r, const point<int>& by) {
    if (r == rectangle<int>{}) return;
    r = {r.left + by.x, r.top + by.y, r.right + by.x, r.bottom + by.y};
}

}  // namespace

CControl::CControl(IWindow* window)
    : window_(window), root_(std::make_unique<RootElement>(window->GetRect())) {
    root_->control_ = this;
}

CControl::~CControl() {
    window_ = nullptr;
    root_.reset();
}

CVisualElement* CControl::GetElementAt(int x, int y) const {
    const rectangle<int>& window = root_->GetBounds();
    if (x < window.left || x >= window.right || y < window.top || y >= window.bottom) {
        return nullptr;
    }
    CVisualElement* element = root_.get();
    point<int> at{x, y};
    const auto is_hit = [&at](const CVisualElement* e) {
        const rectangle<int>& r = e->GetBounds();
        return e->IsVisible() && !e->IsCaptureOnly() && at.x >= r.left && at.x < r.right &&
               at.y >= r.top && at.y < r.bottom;
    };
    for (;;) {
        const auto& children = element->GetChildren();
        const auto hit = std::find_if(children.rbegin(), children.rend(), is_hit);
        if (hit == children.rend()) return element;
        element = *hit;
        at -= point<int>{element->GetBounds().left, element->GetBounds().top};
    }
}

bool CControl::ButtonDown(int x, int y, int keys, MouseButton button) {
    const Watch<CControl> life(this);
    const Watch<CVisualElement> target(GetElementAt(x, y));
    pressed_ = button;
    if (!captured_) enter(target.get());
    if (!life || !target) return true;
    focus(target.get());
    if (!life || !target) return true;
    const point<int> at = to_local(target.get(), x, y);
    const bool is_used = target.get()->HandleButtonDown(at.x, at.y, keys, button);
    if (!life || !target || is_used) return true;
    target.get()->OnButtonDown(target.get(), at.x, at.y, keys, button);
    return false;
}

template <class Handle>
bool CControl::offer(CVisualElement* first, int x, int y, Handle handle) {
    const Watch<CControl> life(this);
    Watch<CVisualElement> element(first);
    while (element) {
        const Watch<CVisualElement> parent(element.get()->GetParent());
        const bool is_used = handle(element.get(), to_local(element.get(), x, y));
        // An element that is gone has used the event up.
        if (is_used || !life || !element) return true;
        element = parent;
    }
    return false;
}

bool CControl::ButtonUp(int x, int y, int keys, MouseButton button) {
    const Watch<CControl> life(this);
    pressed_ = MouseButton::None;
    const bool is_used = offer(captured_ ? captured_ : GetElementAt(x, y), x, y,
                               [=](CVisualElement* element, const point<int>& at) {
                                   return element->HandleButtonUp(at.x, at.y, keys, button);
                               });
    if (life && !captured_) enter(GetElementAt(x, y));
    return is_used;
}

bool CControl::MouseMove(int x, int y, int keys, MouseButton button) {
    const Watch<CControl> life(this);
    if (!captured_) enter(GetElementAt(x, y));
    if (!life) return true;
    const MouseButton held = button == MouseButton::None ? pressed_ : button;
    return offer(captured_ ? captured_ : GetElementAt(x, y), x, y,
                 [=](CVisualElement* element, const point<int>& at) {
                     return element->HandleMouseMove(at.x, at.y, keys, held);
                 });
}

template <class Handle>
bool CControl::aim(int x, int y, Handle handle) {
    CVisualElement* const target = GetElementAt(x, y);
    return target != nullptr && handle(target, to_local(target, x, y));
}

bool CControl::DoubleClick(int x, int y, int keys, MouseButton button) {
    const Watch<CControl> life(this);
    if (!captured_) enter(GetElementAt(x, y));
    return life && aim(x, y, [=](CVisualElement* element, const point<int>& at) {
               return element->HandleDoubleClick(at.x, at.y, keys, button);
           });
}

bool CControl::ContextMenu(int x, int y) {
    return aim(x, y, [](CVisualElement* element, const point<int>& at) {
        return element->HandleContextMenu(at.x, at.y);
    });
}

bool CControl::MouseWheel(int x, int y, int keys, double notches, bool horizontal) {
    return offer(GetElementAt(x, y), x, y, [=](CVisualElement* element, const point<int>& at) {
        return element->HandleMouseWheel(at.x, at.y, keys, notches, horizontal);
    });
}

void CControl::MouseLeave() {
    if (!captured_) enter(nullptr);
}

void CControl::enter(CVisualElement* element) {
    if (element == hovered_) return;
    const Watch<CControl> life(this);
    const Watch<CVisualElement> entered(element);
    CVisualElement* const left = hovered_;
    hovered_ = element;
    if (left != nullptr) left->HandleMouseLeave(left);
    if (!life || !entered || hovered_ != element) return;
    element->HandleMouseHover(element);
}

bool CControl::KeyDown(int keys, int code) {
    return focused_ != nullptr && focused_->HandleKeyDown(keys, code);
}

bool CControl::KeyUp(int keys, int code) {
    return focused_ != nullptr && focused_->HandleKeyUp(keys, code);
}

bool CControl::Char(char c) { return focused_ != nullptr && focused_->HandleChar(c); }

bool CControl::ask_tooltip(CTooltipEvent* event, bool (CVisualElement::*ask)(CTooltipEvent*)) {
    const Watch<CVisualElement> target(GetElementAt(event->pos.x, event->pos.y));
    if (!target) return false;
    const point<int> origin = target.get()->GetWindowOrigin();
    event->pos -= origin;
    shift(event->trackRect, -origin);
    shift(event->tipRect, -origin);
    const bool is_used = (target.get()->*ask)(event);
    event->pos += origin;
    shift(event->trackRect, origin);
    shift(event->tipRect, origin);
    return is_used;
}

bool CControl::Tooltip(CTooltipEvent* event) {
    return ask_tooltip(event, &CVisualElement::HandleOnTooltip);
}

bool CControl::TooltipTrack(CTooltipEvent* event) {
    return ask_tooltip(event, &CVisualElement::HandleOnTooltipTrack);
}

bool CControl::DragOver(int x, int y) {
    return aim(x, y, [](CVisualElement* element, const point<int>& at) {
        return element->HandleDragOver(at.x, at.y);
    });
}

bool CControl::DragDrop(int x, int y) {
    return aim(x, y, [](CVisualElement* element, const point<int>& at) {
        return element->HandleDragDrop(at.x, at.y);
    });
}

void CControl::LoseFocus() { focus(nullptr); }

void CControl::LoseCapture() {
    pressed_ = MouseButton::None;
    CVisualElement* const loser = captured_;
    captured_ = nullptr;
    if (loser != nullptr) loser->HandleCaptureLost();
}

void CControl::Timer() {
    if (captured_ != nullptr) captured_->HandleTimer();
}

void CControl::Resize(const size<int>& extent) {
    root_->SetPos({0, 0, extent.cx, extent.cy}, true);
}

void CControl::capture(CVisualElement* element) {
    if (captured_ == element) return;
    CVisualElement* const loser = captured_;
    captured_ = element;
    if (loser != nullptr) loser->HandleCaptureLost();
}

void CControl::release(const CVisualElement* element) {
    if (captured_ == element) captured_ = nullptr;
}

void CControl::focus(CVisualElement* element) {
    if (focused_ == element) return;
    const Watch<CControl> life(this);
    const Watch<CVisualElement> gainer(element);
    CVisualElement* const loser = focused_;
    focused_ = element;
    if (loser != nullptr) loser->HandleLostFocus();
    if (life && gainer && focused_ == element) element->HandleGetFocus();
}

void CControl::forget(const CVisualElement* element) {
    if (captured_ != nullptr && captured_->IsIn(element)) release(captured_);
    if (focused_ != nullptr && focused_->IsIn(element)) focused_ = nullptr;
    if (hovered_ != nullptr && hovered_->IsIn(element)) hovered_ = nullptr;
}

}  // namespace viewkit

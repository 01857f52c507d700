// Members of the rubber rectangles, for whoever instantiates them.
#pragma once

#include <nodeline/handlers/internal/truncate.h>
#include <nodeline/viewer/rubber_rect.h>
#include <viewkit/control.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace viewkit {
namespace internal {

inline point<double> logical_point(CVisualElement* surface, const point<int>& pixel) {
    point<double> p{static_cast<double>(pixel.x), static_cast<double>(pixel.y)};
    surface->DP2LP(&p);
    return p;
}

inline int held_between(int low, int at, int high) { return std::max(low, std::min(at, high)); }

inline void clip_to_content(IPainter* painter, const CVisualElement* element) {
    const rectangle<int> r = element->GetContentRect();
    painter->SetClipRect(r.left, r.top, r.right, r.bottom, false);
}

// Where the view starts once it has followed the pointer. `at`, `low` and `high` are the logical
// coordinates of the pointer and of the edges of the view, which is `pixels` long.
inline double start_after(const IScrollModel& model, double at, double low, double high,
                          int pixels) {
    double start = model.GetStart();
    if (low - at > 0.0) start -= low - at;
    if (high - at < 0.0) start -= high - at;
    const auto [units, unit_pixels] = model.GetMeasure();
    const double last = model.GetTo() - pixels * units / unit_pixels;
    // In this order, so that a range narrower than the view stays at its beginning.
    if (start > last) start = last;
    if (start < model.GetFrom()) start = model.GetFrom();
    return start;
}

// True if the model has moved. `low` and `high` are the edges of the view, `logical` the coordinate
// of a pixel. Without a model `at` is held between the edges instead.
template <class Logical>
bool scroll_axis(IScrollModel* model, int low, int* at, int high, const Logical& logical) {
    if (model == nullptr) {
        *at = held_between(low, *at, high);
        return false;
    }
    const double start = start_after(*model, logical(*at), logical(low), logical(high), high - low);
    if (start == model->GetStart()) return false;
    model->SetStart(start);
    return true;
}

inline std::unique_ptr<nodeline::IPosConverter> converter_or_none(
    std::unique_ptr<nodeline::IPosConverter> converter) {
    if (converter) return converter;
    return std::make_unique<nodeline::CBothPosConverter>();
}

}  // namespace internal

template <class D>
CRubberRect<D>::CRubberRect(CVisualElement* parent)
    : CVisualElement(parent, {1, 1}, Alignment::None),
      pos_converter_(internal::converter_or_none(nullptr)) {
    SetCaptureOnly();
    OnButtonDown.connect(this, &CRubberRect::StartDragging);
    listen_to(parent);
}

template <class D>
void CRubberRect<D>::listen_to(CVisualElement* parent) {
    if (parent != nullptr) parent->OnButtonDown.connect(this, &CRubberRect::StartDragging);
}

template <class D>
void CRubberRect<D>::ChangeParent(CVisualElement* old) {
    Reset();
    if (old != nullptr) old->OnButtonDown.disconnect(this, &CRubberRect::StartDragging);
    listen_to(GetParent());
}

template <class D>
void CRubberRect<D>::SetPosConverter(std::unique_ptr<nodeline::IPosConverter> converter) {
    pos_converter_ = internal::converter_or_none(std::move(converter));
}

template <class D>
void CRubberRect<D>::Reset() {
    ReleaseMouse();
    pressed_ = false;
    active_ = false;
}

template <class D>
void CRubberRect<D>::HandleCaptureLost() {
    const bool was_pressed = pressed_;
    Reset();
    if (was_pressed) OnCancel(this);
}

template <class D>
void CRubberRect<D>::StartDragging(CVisualElement* /*element*/, int x, int y, int /*keys*/,
                                   MouseButton button) {
    CVisualElement* const parent = GetParent();
    if (!enabled_ || button != MouseButton::Left || parent == nullptr) return;
    pos_converter_->ConvertStart(&x, &y, parent->GetContentRect());
    start_pos_ = cur_pos_ = prev_pos_ = {x, y};
    const point<double> p = internal::logical_point(parent, start_pos_);
    const Watch<CVisualElement> watch(this);
    CaptureMouse();
    if (!watch) return;
    pressed_ = true;
    OnStart(this, p, p);
}

template <class D>
bool CRubberRect<D>::HandleMouseMove(int x, int y, int /*keys*/, MouseButton /*button*/) {
    CVisualElement* const parent = GetParent();
    if (!pressed_ || parent == nullptr) return false;
    active_ = true;
    const rectangle<int> r = parent->GetContentRect();
    if (clamp_to_parent_) {
        x = internal::held_between(r.left, x, r.right);
        y = internal::held_between(r.top, y, r.bottom);
    }
    pos_converter_->ConvertCur(&x, &y, r);
    cur_pos_ = {x, y};
    // All before the emission: a slot that scrolls the parent changes the mapping.
    const point<double> start = internal::logical_point(parent, start_pos_);
    const point<double> cur = internal::logical_point(parent, cur_pos_);
    const point<double> prev = internal::logical_point(parent, prev_pos_);
    const Watch<CVisualElement> watch(this);
    OnShift(this, start, cur, prev);
    if (!watch) return false;
    prev_pos_ = cur_pos_;
    OnChange(this, UpdateType::Content);
    return false;
}

template <class D>
bool CRubberRect<D>::HandleButtonUp(int /*x*/, int /*y*/, int /*keys*/, MouseButton button) {
    if (own_button_ends_ && button != MouseButton::Left) return false;
    CVisualElement* const parent = GetParent();
    if (active_ && parent != nullptr) {
        const point<double> start = internal::logical_point(parent, start_pos_);
        const point<double> end = internal::logical_point(parent, cur_pos_);
        const Watch<CVisualElement> watch(this);
        OnEnd(this, start, end);
        if (!watch) return false;
    }
    Reset();
    OnChange(this, UpdateType::Content);
    return false;
}

template <class D>
void CRubberRect<D>::DrawContent(IPainter* painter) {
    if (!active_ || GetParent() == nullptr) return;
    internal::clip_to_content(painter, GetParent());
    painter->ResetClip();
}

template <class D>
CRubberRectEx<D>::CRubberRectEx(CVisualElement* parent)
    : CCentralPart(parent, {1, 1}, Alignment::None),
      pos_converter_(internal::converter_or_none(nullptr)) {
    SetCaptureOnly();
    OnButtonDown.connect(this, &CRubberRectEx::StartDragging);
    listen_to(parent);
}

template <class D>
void CRubberRectEx<D>::listen_to(CVisualElement* parent) {
    if (parent == nullptr) return;
    parent->OnButtonDown.connect(this, &CRubberRectEx::StartDragging);
    parent->OnDraw.connect(this, &CRubberRectEx::BeforeDrawProcess);
}

template <class D>
void CRubberRectEx<D>::ChangeParent(CVisualElement* old) {
    Reset();
    if (old != nullptr) {
        old->OnButtonDown.disconnect(this, &CRubberRectEx::StartDragging);
        old->OnDraw.disconnect(this, &CRubberRectEx::BeforeDrawProcess);
    }
    listen_to(GetParent());
}

template <class D>
void CRubberRectEx<D>::SetPosConverter(std::unique_ptr<nodeline::IPosConverter> converter) {
    pos_converter_ = internal::converter_or_none(std::move(converter));
}

template <class D>
void CRubberRectEx<D>::Reset() {
    ReleaseMouse();
    pressed_ = false;
    active_ = false;
    erased_ = true;
}

template <class D>
void CRubberRectEx<D>::SetOutlineOn(bool on) {
    outline_on_ = on;
    erased_ = true;
}

template <class D>
void CRubberRectEx<D>::HandleCaptureLost() {
    const bool was_pressed = pressed_;
    Reset();
    if (was_pressed) OnCancel(this);
}

template <class D>
void CRubberRectEx<D>::StartDragging(CVisualElement* /*element*/, int x, int y, int /*keys*/,
                                     MouseButton button) {
    CVisualElement* const parent = GetParent();
    if (!enabled_ || button != MouseButton::Left || parent == nullptr) return;
    start_pix_ = {x, y};
    pos_converter_->ConvertStart(&start_pix_.x, &start_pix_.y, parent->GetContentRect());
    const point<double> p = internal::logical_point(parent, start_pix_);
    drawn_start_ = cur_start_ = drawn_end_ = cur_end_ = prev_end_ = p;
    const Watch<CVisualElement> watch(this);
    CaptureMouse();
    if (!watch) return;
    pressed_ = true;
    OnStart(this, p, p);
}

template <class D>
int CRubberRectEx<D>::limited_x(int x, int y) const {
    if (unbounded_) return x;
    point<double> p = internal::logical_point(GetParent(), {x, y});
    // The least positive number, not the lowest one: no drag reaches a logical x of 0 or below.
    constexpr double kLeast = std::numeric_limits<double>::min();
    constexpr double kGreatest = std::numeric_limits<double>::max();
    if (p.x > kGreatest) {
        p.x = kGreatest;
    } else if (p.x < kLeast) {
        p.x = kLeast;
    } else {
        return x;
    }
    GetParent()->LP2DP(&p);
    return nodeline::internal::Truncate(p.x);
}

template <class D>
void CRubberRectEx<D>::follow_edges() {
    pos_converter_->ConvertStart(&start_pix_.x, &start_pix_.y, GetParent()->GetContentRect());
    const point<double> start = internal::logical_point(GetParent(), start_pix_);
    pos_converter_->ConvertStart(&cur_start_.x, &cur_start_.y, start.x, start.y);
}

template <class D>
bool CRubberRectEx<D>::scroll(point<int>* pointer) {
    CVisualElement* const parent = GetParent();
    const rectangle<int> r = parent->GetContentRect();
    const Watch<CVisualElement> watch(this);
    const bool horz =
        internal::scroll_axis(GetHorzScroll(), r.left, &pointer->x, r.right, [&](int x) {
            return internal::logical_point(parent, {x, pointer->y}).x;
        });
    if (!watch || GetParent() != parent) return false;
    if (horz) erased_ = !outline_on_;
    const bool vert =
        internal::scroll_axis(GetVertScroll(), r.top, &pointer->y, r.bottom, [&](int y) {
            return internal::logical_point(parent, {pointer->x, y}).y;
        });
    if (!watch || GetParent() != parent) return false;
    if (vert) erased_ = !outline_on_;
    scrolled_ = horz || vert;
    return true;
}

template <class D>
bool CRubberRectEx<D>::HandleMouseMove(int x, int y, int /*keys*/, MouseButton /*button*/) {
    if (!pressed_ || GetParent() == nullptr) return false;
    active_ = true;
    point<int> pointer{limited_x(x, y), y};
    follow_edges();
    if (!scroll(&pointer)) return false;
    pos_converter_->ConvertCur(&pointer.x, &pointer.y, GetParent()->GetContentRect());
    cur_end_ = internal::logical_point(GetParent(), pointer);
    const Watch<CVisualElement> watch(this);
    OnShift(this, drawn_start_, cur_end_, prev_end_);
    if (!watch) return false;
    prev_end_ = cur_end_;
    if (!scrolled_) {
        OnChange(this, UpdateType::Content);
    } else if (CControl* const control = GetControl()) {
        // At once: the picture moves under the outline.
        control->GetWindow()->Repaint(control->GetWindow()->GetRect());
    }
    return false;
}

template <class D>
bool CRubberRectEx<D>::HandleButtonUp(int /*x*/, int /*y*/, int keys, MouseButton button) {
    if (own_button_ends_ && button != MouseButton::Left) return false;
    release_keys_ = keys;
    if (!pressed_) return false;
    const Watch<CVisualElement> watch(this);
    OnEnd(this, drawn_start_, drawn_end_);
    if (!watch) return false;
    Reset();
    OnChange(this, UpdateType::Content);
    return false;
}

template <class D>
void CRubberRectEx<D>::DrawContent(IPainter* painter) {
    if (!active_ || GetParent() == nullptr) return;
    internal::clip_to_content(painter, GetParent());
    SetCoordSystem(painter);
    if (scrolled_ && outline_on_) {
        // `BeforeDrawProcess` has taken the old outline away.
        D::DrawRect(painter, cur_start_.x, cur_start_.y, cur_end_.x, cur_end_.y);
    } else {
        D::DrawSelection(painter, drawn_start_.x, drawn_start_.y, drawn_start_.x, drawn_start_.y,
                         drawn_end_.x, drawn_end_.y, cur_end_.x, cur_end_.y, active_, erased_);
    }
    erased_ = false;
    scrolled_ = false;
    drawn_end_ = cur_end_;
    drawn_start_ = cur_start_;
    painter->ResetClip();
}

template <class D>
void CRubberRectEx<D>::DrawOverlay(IPainter* painter) {
    if (!active_ || !HasCapture()) return;
    internal::clip_to_content(painter, GetParent());
    GetParent()->SetCoordSystem(painter);
    D::PaintOutline(painter);
    painter->ResetClip();
}

template <class D>
void CRubberRectEx<D>::BeforeDrawProcess(CVisualElement* element, IPainter* painter) {
    if (!active_ || GetParent() == nullptr || !scrolled_ || !outline_on_) return;
    const rectangle<double> r = element->GetDrawRect(painter);
    painter->SetClipRect(r.left, r.top, r.right, r.bottom, false);
    D::DrawRect(painter, drawn_start_.x, drawn_start_.y, drawn_end_.x, drawn_end_.y);
    painter->ResetClip();
}

}  // namespace viewkit

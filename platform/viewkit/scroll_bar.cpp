#include <viewkit/control.h>
#include <viewkit/scroll_bar.h>

#include <algorithm>
#include <cmath>

namespace viewkit {

namespace {

constexpr int kMinThumb = 16;
constexpr int kFirstRepeat = 400;  // milliseconds
constexpr int kNextRepeats = 50;
// Of the view, what a page keeps in sight.
constexpr double kPageOverlap = 0.1;
// Of a pixel, what a range may be longer than the view before it needs a bar.
constexpr double kSlack = 0.01;

struct Colors {
    paintcore::_color trough;
    paintcore::_color thumb;
    paintcore::_color pressed_thumb;
    paintcore::_color arrow;
};
const Colors kOnLight{{240, 240, 240}, {205, 205, 205}, {166, 166, 166}, {96, 96, 96}};
const Colors kOnDark{{40, 43, 48}, {84, 90, 98}, {122, 130, 140}, {176, 182, 190}};

// Those that go with the background of the process.
const Colors& colors() {
    double lightness = 0.0;
    double saturation = 0.0;
    double hue = 0.0;
    paintcore::GetSysPalette()[paintcore::SysPalette::kBackground].GetHLS(lightness, saturation,
                                                                          hue);
    return lightness < 0.5 ? kOnDark : kOnLight;
}

void set_repeat(const CVisualElement* element, int milliseconds) {
    CControl* const control = element->GetControl();
    if (control != nullptr && control->GetWindow() != nullptr) {
        control->GetWindow()->SetRepeatTimer(milliseconds);
    }
}

}  // namespace

CScrollBar::CScrollBar(CVisualElement* parent, bool vertical)
    : CVisualElement(parent, {kThickness, kThickness}, Alignment::None), vertical_(vertical) {}

paintcore::_color CScrollBar::GetTroughColor() { return colors().trough; }

void CScrollBar::SetModel(IScrollModel* model) {
    model_ = model;
    Invalidate();
}

void CScrollBar::SetViewExtent(int view) { view_ = view; }

int CScrollBar::length() const {
    const rectangle<int> r = GetContentRect();
    return vertical_ ? r.bottom : r.right;
}

double CScrollBar::view_in_units() const {
    const std::pair<double, int> measure = model_->GetMeasure();
    return view_ * measure.first / measure.second;
}

bool CScrollBar::IsNeeded(int view) const {
    if (model_ == nullptr) return false;
    const std::pair<double, int> measure = model_->GetMeasure();
    const double pixels = (model_->GetTo() - model_->GetFrom()) * measure.second / measure.first;
    return pixels > view + kSlack;
}

CScrollBar::Thumb CScrollBar::GetThumb() const {
    const int trough = length() - 2 * kThickness;
    if (model_ == nullptr || trough < kMinThumb) return {};
    const double range = model_->GetTo() - model_->GetFrom();
    const double view = view_in_units();
    // Not a number fails this comparison as well.
    if (!(range > view) || !(view > 0.0)) return {kThickness, kThickness + trough};
    const int thumb = std::clamp(static_cast<int>(trough * (view / range)), kMinThumb, trough);
    const double at = (model_->GetStart() - model_->GetFrom()) / (range - view);
    const int from =
        kThickness + static_cast<int>(std::lround((trough - thumb) * std::clamp(at, 0.0, 1.0)));
    return {from, from + thumb};
}

CScrollBar::Part CScrollBar::part_at(int at) const {
    if (at < 0 || at >= length()) return Part::kNone;
    if (at < kThickness) return Part::kBack;
    if (at >= length() - kThickness) return Part::kOn;
    const Thumb thumb = GetThumb();
    if (at < thumb.from) return Part::kPageBack;
    return at < thumb.to ? Part::kThumb : Part::kPageOn;
}

void CScrollBar::DrawContent(IPainter* painter) {
    CVisualElement::DrawContent(painter);
    const Thumb thumb = GetThumb();
    const rectangle<double> r = GetDrawRect(painter);
    if (GetDrawValidRect(painter) == r && thumb == drawn_) return;
    drawn_ = thumb;
    painter->SetBrush({GetTroughColor(), 1});
    painter->FillRect(r);
    painter->SetBrush({pressed_ == Part::kThumb ? colors().pressed_thumb : colors().thumb, 1});
    const double breadth = vertical_ ? r.right : r.bottom;
    if (vertical_) {
        painter->FillRect(2.0, thumb.from, breadth - 2.0, thumb.to);
    } else {
        painter->FillRect(thumb.from, 2.0, thumb.to, breadth - 2.0);
    }
    painter->SetPen({colors().arrow, 1, 1, 0, 0});
    const double middle = breadth / 2.0;
    // Where the tip of an arrow lies and where its ends do, along the axis.
    const auto arrow = [&](double tip, double ends) {
        const auto at = [&](double a, double b) {
            return vertical_ ? point<double>{b, a} : point<double>{a, b};
        };
        const point<double> first = at(ends, middle - 3.0);
        const point<double> second = at(tip, middle);
        const point<double> third = at(ends, middle + 3.0);
        painter->MoveTo(first.x, first.y);
        painter->LineTo(second.x, second.y);
        painter->LineTo(third.x, third.y);
    };
    arrow(5.0, 8.0);
    arrow(length() - 5.0, length() - 8.0);
}

bool CScrollBar::HandleButtonDown(int x, int y, int /*keys*/, MouseButton button) {
    if (button != MouseButton::Left || model_ == nullptr) return false;
    pointer_ = along(x, y);
    pressed_ = part_at(pointer_);
    grab_ = pointer_ - GetThumb().from;
    repeating_ = false;
    const Watch<CVisualElement> watch(this);
    CaptureMouse();
    if (!watch) return true;
    Invalidate();
    if (pressed_ != Part::kThumb) {
        set_repeat(this, kFirstRepeat);
        step(pressed_);
    }
    return true;
}

bool CScrollBar::HandleMouseMove(int x, int y, int /*keys*/, MouseButton /*button*/) {
    pointer_ = along(x, y);
    if (pressed_ != Part::kThumb || model_ == nullptr) return true;
    const Thumb thumb = GetThumb();
    const int room = length() - 2 * kThickness - (thumb.to - thumb.from);
    if (room <= 0) return true;
    const double share =
        std::clamp(static_cast<double>(pointer_ - grab_ - kThickness) / room, 0.0, 1.0);
    const double range = model_->GetTo() - model_->GetFrom();
    scroll_to(model_->GetFrom() + share * (range - view_in_units()));
    return true;
}

bool CScrollBar::HandleButtonUp(int /*x*/, int /*y*/, int /*keys*/, MouseButton /*button*/) {
    end_press();
    return true;
}

void CScrollBar::HandleCaptureLost() { end_press(); }

void CScrollBar::end_press() {
    if (pressed_ == Part::kNone) return;
    pressed_ = Part::kNone;
    set_repeat(this, 0);
    Invalidate();
    ReleaseMouse();
}

void CScrollBar::HandleTimer() {
    if (!repeating_) {
        repeating_ = true;
        set_repeat(this, kNextRepeats);
    }
    // A trough that is held stops paging when the thumb has come to the pointer.
    if (part_at(pointer_) == pressed_) step(pressed_);
}

void CScrollBar::step(Part part) {
    if (model_ == nullptr) return;
    const std::pair<double, int> measure = model_->GetMeasure();
    const double line = model_->GetMinScrollDistance() * measure.first / measure.second;
    const double page = view_in_units() * (1.0 - kPageOverlap);
    switch (part) {
        case Part::kBack:
            return scroll_to(model_->GetStart() - line);
        case Part::kPageBack:
            return scroll_to(model_->GetStart() - page);
        case Part::kPageOn:
            return scroll_to(model_->GetStart() + page);
        case Part::kOn:
            return scroll_to(model_->GetStart() + line);
        case Part::kThumb:
        case Part::kNone:
            return;
    }
}

void CScrollBar::ScrollBy(double units) {
    if (model_ != nullptr) scroll_to(model_->GetStart() + units);
}

void CScrollBar::scroll_to(double start) {
    // A range narrower than the view ends at its start.
    const double last = model_->GetTo() - view_in_units();
    const double held = std::max(std::min(start, last), model_->GetFrom());
    if (held == model_->GetStart()) return;
    const Watch<CVisualElement> watch(this);
    model_->SetStart(held);
    if (!watch) return;
    OnChange(this, UpdateType::Content);
    if (watch) OnScroll();
}

}  // namespace viewkit

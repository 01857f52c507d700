#include <viewkit/central_part.h>
#include <viewkit/scroll_bar.h>
#include <viewkit/scroll_box.h>

#include <algorithm>
#include <cmath>

namespace viewkit {

namespace {

constexpr double kWheelPixels = 48.0;  // to a notch
constexpr double kWheelZoom = 1.25;

double scale_of(const IScrollModel& model) {
    const std::pair<double, int> measure = model.GetMeasure();
    return measure.second / measure.first;
}

}  // namespace

// Forwards to a model that may change or be missing; an axis without one stays at 0.
class CScrollBox::WrappedModel : public IScrollModel {
public:
    explicit WrappedModel(CVisualElement* bar) : bar_(bar) {}

    void Wrap(IScrollModel* model) { model_ = model; }
    [[nodiscard]] IScrollModel* wrapped() const { return model_; }

    double GetFrom() const override { return model_ ? model_->GetFrom() : 0.0; }
    double GetTo() const override { return model_ ? model_->GetTo() : 0.0; }
    void SetStart(double start) override {
        if (model_ == nullptr) return;
        const Watch<CVisualElement> bar(bar_);
        model_->SetStart(start);
        if (bar) bar.get()->OnChange(bar.get(), UpdateType::Content);
    }
    double GetStart() const override { return model_ ? model_->GetStart() : 0.0; }
    int GetMinScrollDistance() const override {
        return model_ ? model_->GetMinScrollDistance() : 0;
    }
    bool IsFixedStepSize() const override { return !model_ || model_->IsFixedStepSize(); }
    double GetStepSize(double at) const override { return model_ ? model_->GetStepSize(at) : 1.0; }
    void SetStepSize(double at, double step) const override {
        if (model_ != nullptr) model_->SetStepSize(at, step);
    }
    void SetMeasure(std::pair<double, int> measure) override {
        if (model_ != nullptr) model_->SetMeasure(measure);
    }
    std::pair<double, int> GetMeasure() const override {
        return model_ ? model_->GetMeasure() : std::pair<double, int>{1.0, 1};
    }
    bool IsInseparableStep() const override { return model_ && model_->IsInseparableStep(); }
    void Update() override {
        if (model_ != nullptr) model_->Update();
    }

private:
    IScrollModel* model_ = nullptr;
    CVisualElement* bar_;
};

CScrollBox::CScrollBox(CVisualElement* parent, const size<int>& initial, Alignment alignment)
    : CVisualElement(parent, initial, alignment),
      vert_bar_(new CScrollBar(this, true)),
      horz_bar_(new CScrollBar(this, false)) {
    vert_model_ = std::make_unique<WrappedModel>(vert_bar_);
    horz_model_ = std::make_unique<WrappedModel>(horz_bar_);
    vert_bar_->SetVisible(false);
    horz_bar_->SetVisible(false);
    vert_bar_->OnScroll.connect(&OnScroll, &signal_t<>::operator());
    horz_bar_->OnScroll.connect(&OnScroll, &signal_t<>::operator());
}

CScrollBox::~CScrollBox() = default;

void CScrollBox::SetVertModel(IScrollModel* model) {
    vert_model_->Wrap(model);
    vert_bar_->SetModel(model);
}

void CScrollBox::SetHorzModel(IScrollModel* model) {
    horz_model_->Wrap(model);
    horz_bar_->SetModel(model);
}

void CScrollBox::SetCentralPane(CVisualElement* pane) {
    pane_ = Watch<CVisualElement>(pane);
    if (pane != nullptr) pane->SetParent(this);
    // The bars are drawn after the pane, whose paint may change the range.
    PutToBack(pane);
    AlignChildren();
}

void CScrollBox::DrawContent(IPainter* painter) {
    CVisualElement::DrawContent(painter);
    if (GetDrawValidRect(painter) == GetDrawRect(painter)) return;
    if (!vert_bar_->IsVisible() || !horz_bar_->IsVisible()) return;
    // The corner between the bars.
    const rectangle<int>& vert = vert_bar_->GetBounds();
    const rectangle<int>& horz = horz_bar_->GetBounds();
    painter->SetBrush({CScrollBar::GetTroughColor(), 1});
    painter->FillRect(horz.right, vert.bottom, vert.right, horz.bottom);
}

void CScrollBox::SetVertBarMode(int mode) {
    vert_mode_ = mode;
    AlignChildren();
}

void CScrollBox::SetHorzBarMode(int mode) {
    horz_mode_ = mode;
    AlignChildren();
}

IScrollModel* CScrollBox::GetWrappedVertScroll() const { return vert_model_.get(); }

IScrollModel* CScrollBox::GetWrappedHorzScroll() const { return horz_model_.get(); }

void CScrollBox::PreparePaint() { AlignChildren(); }

void CScrollBox::AlignChildren() {
    const rectangle<int> r = GetContentRect();
    const Watch<CVisualElement> watch(this);
    // While the box is made there is nothing to place but what fills it.
    const bool has_bars = vert_model_ && horz_model_;
    bool vert = false;
    bool horz = false;
    if (has_bars) {
        // A bar takes room, which may make the other one necessary.
        for (int round = 0; round < 2; ++round) {
            vert = vert_mode_ == ScrollBarAsNeeded &&
                   vert_bar_->IsNeeded(r.bottom - (horz ? CScrollBar::kThickness : 0));
            horz = horz_mode_ == ScrollBarAsNeeded &&
                   horz_bar_->IsNeeded(r.right - (vert ? CScrollBar::kThickness : 0));
        }
    }
    const int right = std::max(0, r.right - (vert ? CScrollBar::kThickness : 0));
    const int bottom = std::max(0, r.bottom - (horz ? CScrollBar::kThickness : 0));
    const rectangle<int> rest{0, 0, right, bottom};
    if (has_bars) {
        const auto place = [](CScrollBar* bar, bool is_shown, const rectangle<int>& where,
                              int view) {
            bar->SetViewExtent(view);
            if (bar->IsVisible() != is_shown) bar->SetVisible(is_shown);
            if (is_shown) bar->SetPos(where, false);
        };
        place(vert_bar_, vert, {right, 0, r.right, bottom}, bottom);
        if (!watch) return;
        place(horz_bar_, horz, {0, bottom, right, r.bottom}, right);
        if (!watch) return;
    }
    if (pane_ && pane_.get()->GetBounds() != rest) pane_.get()->SetPos(rest, true);
}

bool CScrollBox::HandleMouseWheel(int x, int y, int keys, double notches, bool horizontal) {
    if ((keys & paintcore::KeyControl) != 0) {
        zoom(x, y, notches);
        return true;
    }
    const bool is_horz = horizontal || (keys & paintcore::KeyShift) != 0;
    const double way = notches * kWheelPixels / scale_of(is_horz ? *horz_model_ : *vert_model_);
    (is_horz ? horz_bar_ : vert_bar_)->ScrollBy(horizontal ? way : -way);
    return true;
}

void CScrollBox::zoom(int x, int y, double notches) {
    const CVisualElement* const pane = pane_.get();
    if (pane == nullptr) return;
    const double old_scale = scale_of(*horz_model_);
    const double scale =
        std::clamp(old_scale * std::pow(kWheelZoom, notches), kMinWheelScale, kMaxWheelScale);
    if (!(old_scale > 0.0) || scale == old_scale) return;
    const point<int> at =
        point<int>{x, y} - point<int>{pane->GetBounds().left, pane->GetBounds().top};
    const point<double> fixed{horz_model_->GetStart() + at.x / old_scale,
                              vert_model_->GetStart() + at.y / scale_of(*vert_model_)};
    const Watch<CVisualElement> watch(this);
    // A surface may have one scale for both axes; setting it twice does no harm.
    horz_model_->SetMeasure({1.0 / scale, 1});
    if (watch) vert_model_->SetMeasure({1.0 / scale, 1});
    if (watch) horz_model_->SetStart(fixed.x - at.x / scale);
    if (watch) vert_model_->SetStart(fixed.y - at.y / scale);
    if (watch) OnScroll();
}

}  // namespace viewkit

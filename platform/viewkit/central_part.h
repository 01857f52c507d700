// Central part: an element that shows a part of a logical plane, as its scroll models say.
#pragma once

#include <corvex/export.h>
#include <viewkit/element.h>
#include <viewkit/scroll_model.h>

#include <optional>

namespace viewkit {

// An element over a logical plane. Its pixel (0, 0) is the logical point at which the models start,
// and their measures are the scale. An axis without a model starts at 0, at one pixel to the unit.
//
// While the scale stays and the start moves by whole pixels, what was painted is moved along, and
// only what that uncovers is painted anew.
class NODELINE_API CCentralPart : public CVisualElement {
public:
    // As an element; it has no models at first.
    CCentralPart(CVisualElement* parent, const size<int>& initial, Alignment alignment);

    // The models are not owned; null takes one away.
    virtual void SetHorzScroll(IScrollModel* model);
    virtual void SetVertScroll(IScrollModel* model);
    [[nodiscard]] IScrollModel* GetHorzScroll() const { return horz_scroll_; }
    [[nodiscard]] IScrollModel* GetVertScroll() const { return vert_scroll_; }

    // The mapping of the element: its visible logical rectangle onto its pixels.
    virtual void FillCoordInfo(CoordInfo* info);
    void SetCoordSystem(IPainter* painter) override;
    void DP2LP(point<double>* p) override;
    void LP2DP(point<double>* p) override;
    rectangle<double> GetDrawRect(IPainter* painter) override;
    rectangle<double> GetDrawValidRect(IPainter* painter) override;

protected:
    // The scale of the models, in pixels to the unit, and the logical point at the top left.
    [[nodiscard]] virtual point<double> GetViewScale() const;
    [[nodiscard]] virtual point<double> GetViewStart() const;

    void BeginDraw() override;
    void EndDraw() override;

private:
    // What the pixels of the element show.
    struct View {
        point<double> start;
        point<double> scale;
        size<int> extent;
        friend bool operator==(const View&, const View&) = default;
    };
    [[nodiscard]] View present_view() const;
    [[nodiscard]] rectangle<double> to_logical(const rectangle<double>& pixels);
    void move_pixels(const View& now);

    IScrollModel* horz_scroll_ = nullptr;
    IScrollModel* vert_scroll_ = nullptr;
    // What the painted pixels show. The start follows moves by whole pixels, so that what is lost
    // in rounding does not add up.
    std::optional<View> painted_;
    View begun_;                   // when the paint under way began
    rectangle<int> valid_pixels_;  // at that moment
};

}  // namespace viewkit

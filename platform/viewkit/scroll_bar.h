// Scroll bar: a thumb on a trough between two arrows, for one axis of a scroll model.
#pragma once

#include <corvex/export.h>
#include <viewkit/element.h>
#include <viewkit/scroll_model.h>

namespace viewkit {

// The bar of one axis. The thumb can be dragged; the trough pages by a view less a tenth; an arrow
// steps by the least distance of the model. What is held repeats.
class NODELINE_API CScrollBar : public CVisualElement {
public:
    // The width of a vertical bar, in pixels.
    static constexpr int kThickness = 14;

    // A bar without a model, which `parent` places by `SetPos`.
    CScrollBar(CVisualElement* parent, bool vertical);

    // The ground of all bars, light or dark as the background of the palette is.
    [[nodiscard]] static paintcore::_color GetTroughColor();

    // Not owned; null shows an empty trough.
    void SetModel(IScrollModel* model);
    // The view has `view` pixels along the bar's axis.
    void SetViewExtent(int view);
    // Moves the start of the model, within its range.
    void ScrollBy(double units);
    // Whether the range of the model is longer than the view.
    [[nodiscard]] bool IsNeeded(int view) const;

    void DrawContent(IPainter* painter) override;
    bool HandleButtonDown(int x, int y, int keys, MouseButton button) override;
    bool HandleMouseMove(int x, int y, int keys, MouseButton button) override;
    bool HandleButtonUp(int x, int y, int keys, MouseButton button) override;
    void HandleCaptureLost() override;
    void HandleTimer() override;

    // The user has moved the start of the model.
    signal_t<> OnScroll;

    // The thumb from its first pixel to behind its last, along the axis.
    struct Thumb {
        int from = 0;
        int to = 0;

        // Member by member.
        friend bool operator==(const Thumb&, const Thumb&) = default;
    };
    // Empty without a model and where the trough has no room for one.
    [[nodiscard]] Thumb GetThumb() const;

private:
    enum class Part { kNone, kBack, kPageBack, kThumb, kPageOn, kOn };

    [[nodiscard]] int along(int x, int y) const { return vertical_ ? y : x; }
    [[nodiscard]] int length() const;
    [[nodiscard]] double view_in_units() const;
    [[nodiscard]] Part part_at(int at) const;
    void step(Part part);
    void scroll_to(double start);
    void end_press();

    bool vertical_;
    IScrollModel* model_ = nullptr;
    int view_ = 0;
    Part pressed_ = Part::kNone;
    int pointer_ = 0;         // along the axis
    int grab_ = 0;            // from the start of the thumb to the pointer
    bool repeating_ = false;  // the first, longer wait is over
    Thumb drawn_;
};

}  // namespace viewkit

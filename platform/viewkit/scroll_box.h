// Scroll box: a pane with a scroll bar beside it for either axis.
//
//   auto* box = new CScrollBox(parent, {100, 100}, Alignment::Client);
//   auto* map = new Map(box);           // an element, and its own scroll models
//   box->SetVertModel(map->GetVertModel());
//   box->SetHorzModel(map->GetHorzModel());
//   map->SetVertScroll(box->GetWrappedVertScroll());
//   map->SetHorzScroll(box->GetWrappedHorzScroll());
//   box->SetCentralPane(map);
#pragma once

#include <corvex/export.h>
#include <viewkit/element.h>
#include <viewkit/scroll_model.h>

#include <memory>

namespace viewkit {

class CScrollBar;

// When a scroll bar is shown.
enum ScrollBarMode { ScrollBarAsNeeded = 0, ScrollBarNever = 2 };

// The scales that the wheel stays between, in pixels to the unit.
inline constexpr double kMinWheelScale = 0.01;
inline constexpr double kMaxWheelScale = 32.0;

// An element that scrolls another one. The wheel scrolls vertically, with shift horizontally, and
// with control it zooms about the pointer: the logical point there stays where it is.
class NODELINE_API CScrollBox : public CVisualElement {
public:
    // As an element; it has neither models nor a pane at first.
    CScrollBox(CVisualElement* parent, const size<int>& initial, Alignment alignment);
    ~CScrollBox() override;

    // The models that the bars read and write. Not owned; null takes one away.
    void SetVertModel(IScrollModel* model);
    void SetHorzModel(IScrollModel* model);
    // A child of the box that fills what the bars leave; null for none.
    void SetCentralPane(CVisualElement* pane);
    [[nodiscard]] CVisualElement* GetCentralPane() const { return pane_.get(); }
    // A `ScrollBarMode` each.
    void SetVertBarMode(int mode);
    void SetHorzBarMode(int mode);
    [[nodiscard]] int GetVertBarMode() const { return vert_mode_; }
    [[nodiscard]] int GetHorzBarMode() const { return horz_mode_; }
    // Children of the box, which live as long as it does.
    [[nodiscard]] CScrollBar* GetVertBar() const { return vert_bar_; }
    [[nodiscard]] CScrollBar* GetHorzBar() const { return horz_bar_; }

    // Models that forward to the given ones and keep the bars up to date. They are owned by the box
    // and stay the same for its life.
    [[nodiscard]] IScrollModel* GetWrappedVertScroll() const;
    [[nodiscard]] IScrollModel* GetWrappedHorzScroll() const;

    void DrawContent(IPainter* painter) override;
    bool HandleMouseWheel(int x, int y, int keys, double notches, bool horizontal) override;
    void PreparePaint() override;

    // The user has scrolled or zoomed with a bar or the wheel; the models know of it already.
    signal_t<> OnScroll;

protected:
    void AlignChildren() override;

private:
    class WrappedModel;

    void zoom(int x, int y, double notches);

    std::unique_ptr<WrappedModel> vert_model_;
    std::unique_ptr<WrappedModel> horz_model_;
    Watch<CVisualElement> pane_;
    CScrollBar* vert_bar_;  // children
    CScrollBar* horz_bar_;
    int vert_mode_ = ScrollBarAsNeeded;
    int horz_mode_ = ScrollBarAsNeeded;
};

}  // namespace viewkit

// A window without a screen: it is driven by calls, and its picture is a list of painter calls.
//
//   HeadlessWindow window({800, 600});
//   auto* viewer = new CGraphViewer(window.GetRoot(), graph, true);
//   window.PaintPending();
//   window.Click(120, 80);
//   EXPECT_EQ(viewer->GetScale(), 1.0);
#pragma once

#include <backends/headless/recording_painter.h>
#include <corvex/export.h>
#include <viewkit/window_base.h>

#include <functional>
#include <string>
#include <vector>

namespace nodeline::headless {

// A window for tests and for programs that nobody watches.
class NODELINE_API HeadlessWindow : public viewkit::WindowBase {
public:
    // With a `target`, what is painted also goes there, and texts measure as they do without. The
    // target is not owned and outlives the window.
    explicit HeadlessWindow(const paintcore::size<int>& extent,
                            paintcore::IPainter* target = nullptr);
    ~HeadlessWindow() override;

    // The pointer, as a user would use it: `GetControl()` has every single event. After each the
    // window paints what is pending.
    void Press(int x, int y, paintcore::MouseButton button = paintcore::MouseButton::Left,
               int keys = 0);
    void Release(int x, int y, paintcore::MouseButton button = paintcore::MouseButton::Left,
                 int keys = 0);
    void Move(int x, int y, int keys = 0);
    void Click(int x, int y);
    // From one pixel to another, in `steps` moves of about the same length.
    void Drag(const paintcore::point<int>& from, const paintcore::point<int>& to, int steps = 1);

    // The painter of the window, which owns it.
    [[nodiscard]] RecordingPainter& GetRecorder() { return painter_; }
    // What each paint has recorded goes to `listener`, and is forgotten then. Without one, the
    // recorder keeps it.
    using PaintListener = std::function<void(const std::vector<std::string>& lines)>;
    void SetPaintListener(PaintListener listener);
    // How many paints there have been.
    [[nodiscard]] int GetPaintCount() const { return paint_count_; }

    void Resize(const paintcore::size<int>& extent) override;
    [[nodiscard]] paintcore::IPainter* GetPainter() override { return &painter_; }
    // Without a target there are no pixels, so they are where they should be.
    bool MovePixels(const paintcore::rectangle<int>& area, int dx, int dy) override;

protected:
    void PaintBegins() override;
    void Painted() override;

private:
    RecordingPainter painter_;
    bool has_target_;
    PaintListener listener_;
    int paint_count_ = 0;
};

}  // namespace nodeline::headless

// A window into an image: elements on pixels, without a screen.
//
//   ImageWindow window({800, 600});
//   auto* viewer = new CGraphViewer(window.GetRoot(), graph, true);
//   window.PaintPending();
//   window.SavePng("view.png");
#pragma once

#include <corvex/export.h>
#include <viewkit/window_base.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace nodeline::cairo {

// A window whose screen is an image. It is kept from paint to paint, and what scrolls is moved in
// it.
class NODELINE_API ImageWindow : public viewkit::WindowBase {
public:
    // Sides below 1 count as 1.
    explicit ImageWindow(const paintcore::size<int>& extent);
    ~ImageWindow() override;

    // What the elements have painted, row by row from the top, as 0xRRGGBB.
    [[nodiscard]] std::vector<std::uint32_t> GetPixels() const;
    // The same with what is shown over it, as a user sees it.
    [[nodiscard]] std::vector<std::uint32_t> GetShownPixels();
    // Writes what a user sees in one step, or answers false and says why in `error`, which may be
    // null.
    bool SavePng(const std::string& path, std::string* error = nullptr);

    // The picture begins anew.
    void Resize(const paintcore::size<int>& extent) override;
    [[nodiscard]] paintcore::IPainter* GetPainter() override;
    bool MovePixels(const paintcore::rectangle<int>& area, int dx, int dy) override;

protected:
    void Painted() override;

private:
    class Image;

    [[nodiscard]] std::unique_ptr<Image> make_shown();

    std::unique_ptr<Image> image_;
    // Former images, on one of which the paint under way may be drawing.
    std::vector<std::unique_ptr<Image>> retired_;
};

}  // namespace nodeline::cairo

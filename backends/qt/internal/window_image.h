// The picture of a window: pixels that a painter draws on and that can be moved.
#pragma once

#include <backends/qt/qt_painter.h>
#include <paintcore/geometry.h>

#include <QImage>
#include <cstdint>
#include <vector>

namespace nodeline::qt {

class WindowImage {
public:
    // An `extent` of logical pixels, at `ratio` device pixels to one; the background of the
    // palette.
    WindowImage(const paintcore::size<int>& extent, double ratio);
    // The painter knows where the image is.
    WindowImage(const WindowImage&) = delete;
    WindowImage& operator=(const WindowImage&) = delete;

    [[nodiscard]] QtPainter& GetPainter() { return painter_; }
    // The pixels themselves, not a copy.
    [[nodiscard]] const QImage& GetImage() const { return image_; }
    [[nodiscard]] double GetRatio() const { return ratio_; }

    // Takes over the pixels of another image of the same ratio, as far as both have them.
    void Take(const WindowImage& other);
    // As `IWindow::MovePixels`.
    bool Move(const paintcore::rectangle<int>& area, int dx, int dy);

private:
    int width_;  // in device pixels
    int height_;
    double ratio_;
    // Not left to the image, which would copy them while a painter holds it.
    std::vector<std::uint32_t> pixels_;
    QImage image_;
    QtPainter painter_;
};

}  // namespace nodeline::qt

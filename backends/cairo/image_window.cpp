#include <backends/cairo/cairo_painter.h>
#include <backends/cairo/image_window.h>
#include <backends/cairo/internal/handles.h>
#include <corvex/file_writer.h>
#include <paintcore/pixel_rows.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <utility>

namespace nodeline::cairo {

using paintcore::rectangle;
using paintcore::size;

namespace {

constexpr std::ptrdiff_t kPixelBytes = 4;

cairo_status_t append_bytes(void* closure, const unsigned char* data, unsigned int length) {
    static_cast<std::string*>(closure)->append(reinterpret_cast<const char*>(data), length);
    return CAIRO_STATUS_SUCCESS;
}

}  // namespace

class ImageWindow::Image {
public:
    explicit Image(const size<int>& extent)
        : surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, std::max(1, extent.cx),
                                             std::max(1, extent.cy))),
          context(cairo_create(surface.get())),
          painter(context.get(), EdgeMode::kAligned),
          width(std::max(1, extent.cx)),
          height(std::max(1, extent.cy)) {
        painter.SetDevicePaintRect(
            {0.0, 0.0, static_cast<double>(width), static_cast<double>(height)});
    }

    // How many bytes a row takes.
    [[nodiscard]] std::ptrdiff_t GetStride() const {
        return cairo_image_surface_get_stride(surface.get());
    }
    // All that has been painted, as bytes; null if Cairo could not make the image.
    [[nodiscard]] unsigned char* GetData() {
        cairo_surface_flush(surface.get());
        return cairo_image_surface_get_data(surface.get());
    }

    [[nodiscard]] std::vector<std::uint32_t> GetPixels() {
        std::vector<std::uint32_t> all;
        const unsigned char* const data = GetData();
        if (data == nullptr) return all;
        all.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
        for (int y = 0; y < height; ++y) {
            const unsigned char* pixel = data + y * GetStride();
            for (int x = 0; x < width; ++x, pixel += kPixelBytes) {
                std::uint32_t colour = 0;
                std::memcpy(&colour, pixel, sizeof colour);
                all.push_back(colour & 0xffffffU);
            }
        }
        return all;
    }

    Surface surface;
    Context context;
    CairoPainter painter;
    int width;
    int height;
};

ImageWindow::ImageWindow(const size<int>& extent)
    : WindowBase(extent), image_(std::make_unique<Image>(extent)) {}

ImageWindow::~ImageWindow() { Close(); }

std::vector<std::uint32_t> ImageWindow::GetPixels() const { return image_->GetPixels(); }

std::vector<std::uint32_t> ImageWindow::GetShownPixels() { return make_shown()->GetPixels(); }

std::unique_ptr<ImageWindow::Image> ImageWindow::make_shown() {
    auto shown = std::make_unique<Image>(size<int>{image_->width, image_->height});
    cairo_set_source_surface(shown->context.get(), image_->surface.get(), 0.0, 0.0);
    cairo_paint(shown->context.get());
    GetControl().DrawOverlays(&shown->painter);
    return shown;
}

bool ImageWindow::SavePng(const std::string& path, std::string* error) {
    const std::unique_ptr<Image> shown = make_shown();
    std::string bytes;
    const cairo_status_t status =
        cairo_surface_write_to_png_stream(shown->surface.get(), &append_bytes, &bytes);
    if (status != CAIRO_STATUS_SUCCESS) {
        if (error != nullptr) *error = cairo_status_to_string(status);
        return false;
    }
    return corvex::WriteFile(path, bytes, error);
}

void ImageWindow::Resize(const size<int>& extent) {
    retired_.push_back(std::move(image_));
    image_ = std::make_unique<Image>(extent);
    WindowBase::Resize(extent);
    GetControl().InvalidateAll();
}

void ImageWindow::Painted() { retired_.clear(); }

paintcore::IPainter* ImageWindow::GetPainter() { return &image_->painter; }

bool ImageWindow::MovePixels(const rectangle<int>& area, int dx, int dy) {
    unsigned char* const data = image_->GetData();
    if (data == nullptr) return false;
    paintcore::MovePixels({data, image_->GetStride(), {image_->width, image_->height}}, area, dx,
                          dy);
    cairo_surface_mark_dirty(image_->surface.get());
    return true;
}

}  // namespace nodeline::cairo

#include <backends/cairo/cairo_painter.h>
#include <backends/cairo/internal/handles.h>
#include <backends/cairo/picture.h>
#include <backends/cairo/svg_painter.h>
#include <corvex/file_writer.h>

#include <paintcore/number_text.h>

#include <cairo-pdf.h>
#include <cairo.h>
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <ostream>
#include <utility>

namespace nodeline::cairo {

using paintcore::CoordInfo;
using paintcore::IPainter;
using paintcore::MapMode;
using paintcore::rectangle;
using paintcore::size;

namespace {

constexpr double kPdfPointsPerPixel = 0.75;
// Part of every PDF; a clock would make each one different.
constexpr const char* kPdfCreationDate = "2000-01-01T00:00:00Z";
// Rounding that took a size just above a whole number of pixels does not cost another one.
constexpr double kSlack = 1.0e-6;

rectangle<double> PixelRect(const CoordInfo& coords) {
    const size<int>& pixels = coords.device_extent;
    return {0.0, 0.0, static_cast<double>(pixels.cx), static_cast<double>(pixels.cy)};
}

void SetError(std::string* error, std::string text) {
    if (error != nullptr) *error = std::move(text);
}

// Lets Cairo append to the string that `closure` points to.
cairo_status_t AppendBytes(void* closure, const unsigned char* data, unsigned int length) {
    static_cast<std::string*>(closure)->append(reinterpret_cast<const char*>(data), length);
    return CAIRO_STATUS_SUCCESS;
}

class SvgPicture : public Picture {
public:
    explicit SvgPicture(const CoordInfo& coords)
        : Picture(coords), painter_({PixelRect(coords).right, PixelRect(coords).bottom}) {
        painter_.SetDevicePaintRect(PixelRect(coords));
    }

    IPainter& GetPainter() override { return painter_; }

    std::optional<std::string> Encode(std::string* /*error*/) override {
        painter_.EndPaint();
        return painter_.GetDocument();
    }

private:
    SvgPainter painter_;
};

class PngPicture : public Picture {
public:
    explicit PngPicture(const CoordInfo& coords)
        : Picture(coords),
          surface_(cairo_image_surface_create(CAIRO_FORMAT_RGB24, coords.device_extent.cx,
                                              coords.device_extent.cy)),
          context_(cairo_create(surface_.get())),
          painter_(context_.get(), EdgeMode::kAligned) {
        painter_.SetDevicePaintRect(PixelRect(coords));
    }

    [[nodiscard]] cairo_status_t GetStatus() const { return cairo_status(context_.get()); }

    IPainter& GetPainter() override { return painter_; }

    std::optional<std::string> Encode(std::string* error) override {
        painter_.EndPaint();
        std::string bytes;
        cairo_status_t status = cairo_status(context_.get());
        if (status == CAIRO_STATUS_SUCCESS) {
            status = cairo_surface_write_to_png_stream(surface_.get(), &AppendBytes, &bytes);
        }
        if (status == CAIRO_STATUS_SUCCESS) return bytes;
        SetError(error, cairo_status_to_string(status));
        return std::nullopt;
    }

private:
    Surface surface_;
    Context context_;
    CairoPainter painter_;
};

class PdfPicture : public Picture {
public:
    explicit PdfPicture(const CoordInfo& coords)
        : Picture(coords),
          surface_(cairo_pdf_surface_create_for_stream(
              &AppendBytes, &bytes_, coords.device_extent.cx * kPdfPointsPerPixel,
              coords.device_extent.cy * kPdfPointsPerPixel)),
          context_(MakeContext(surface_.get())),
          painter_(context_.get(), EdgeMode::kExact) {
        painter_.SetDevicePaintRect(PixelRect(coords));
    }

    IPainter& GetPainter() override { return painter_; }

    std::optional<std::string> Encode(std::string* error) override {
        painter_.EndPaint();
        // A finished surface refuses what is drawn on it; that is no fault of what was drawn
        // before.
        if (!finished_) {
            status_ = cairo_status(context_.get());
            cairo_surface_finish(surface_.get());
            if (status_ == CAIRO_STATUS_SUCCESS) status_ = cairo_surface_status(surface_.get());
            finished_ = true;
        }
        if (status_ == CAIRO_STATUS_SUCCESS) return bytes_;
        SetError(error, cairo_status_to_string(status_));
        return std::nullopt;
    }

private:
    static Context MakeContext(cairo_surface_t* surface) {
        cairo_pdf_surface_set_metadata(surface, CAIRO_PDF_METADATA_CREATE_DATE, kPdfCreationDate);
        Context context(cairo_create(surface));
        cairo_scale(context.get(), kPdfPointsPerPixel, kPdfPointsPerPixel);
        return context;
    }

    // Outlives the surface, which may still write to it when it is destroyed.
    std::string bytes_;
    bool finished_ = false;
    cairo_status_t status_ = CAIRO_STATUS_SUCCESS;
    Surface surface_;
    Context context_;
    CairoPainter painter_;
};

int MaxSide(PictureFormat format) {
    switch (format) {
        case PictureFormat::kPng:
            return kMaxPngSide;
        case PictureFormat::kPdf:
            return kMaxPdfSide;
        case PictureFormat::kSvg:
            break;
    }
    return std::numeric_limits<int>::max();
}

// What is wrong with a picture of that size, or nothing.
std::string CheckSize(PictureFormat format, const size<double>& pixels) {
    const int max_side = MaxSide(format);
    const bool is_too_long = pixels.cx > max_side || pixels.cy > max_side;
    const bool is_too_large =
        format == PictureFormat::kPng && pixels.cx * pixels.cy > kMaxPngPixels;
    if (!is_too_long && !is_too_large) return {};
    std::string fault = "a picture of ";
    paintcore::AppendNumber(fault, pixels.cx);
    fault += " by ";
    paintcore::AppendNumber(fault, pixels.cy);
    fault += " pixels is too large: the most is ";
    fault += std::to_string(is_too_long ? max_side : kMaxPngPixels);
    return fault + (is_too_long ? " pixels each way" : " pixels in all");
}

std::unique_ptr<Picture> MakePng(const CoordInfo& coords, std::string* error) {
    auto picture = std::make_unique<PngPicture>(coords);
    if (picture->GetStatus() == CAIRO_STATUS_SUCCESS) return picture;
    SetError(error, cairo_status_to_string(picture->GetStatus()));
    return nullptr;
}

}  // namespace

std::optional<PictureFormat> GetPictureFormat(std::string_view path) {
    constexpr std::array<std::pair<std::string_view, PictureFormat>, 3> kEndings = {
        {{".svg", PictureFormat::kSvg},
         {".pdf", PictureFormat::kPdf},
         {".png", PictureFormat::kPng}}};
    for (const auto& [ending, format] : kEndings) {
        if (path.size() < ending.size()) continue;
        const std::string_view tail = path.substr(path.size() - ending.size());
        const bool same = std::equal(tail.begin(), tail.end(), ending.begin(), [](char a, char b) {
            return (a >= 'A' && a <= 'Z' ? a - 'A' + 'a' : a) == b;
        });
        if (same) return format;
    }
    return std::nullopt;
}

void Picture::Draw(const std::function<void(IPainter&)>& draw) {
    IPainter& painter = GetPainter();
    painter.BeginPaint(IPainter::StdSettings::All);
    painter.SetBrush({paintcore::GetSysPalette()[paintcore::SysPalette::kBackground], 1});
    painter.FillRect(PixelRect(coords_));
    painter.SetBrush({});
    painter.SetCoordSystem(MapMode::Rectangle, &coords_);
    draw(painter);
    painter.EndPaint();
}

bool Picture::Save(const std::string& path, std::string* error) {
    std::string reason;
    const std::optional<std::string> bytes = Encode(&reason);
    if (!bytes) {
        SetError(error, "cannot write " + path + ": " + reason);
        return false;
    }
    return corvex::WriteFile(path, *bytes, error);
}

bool Picture::WriteTo(std::ostream& out, std::string* error) {
    const std::optional<std::string> bytes = Encode(error);
    if (!bytes) return false;
    out.write(bytes->data(), static_cast<std::streamsize>(bytes->size()));
    out.flush();
    if (!out) SetError(error, "cannot write to the stream");
    return static_cast<bool>(out);
}

std::unique_ptr<Picture> MakePicture(PictureFormat format, const size<double>& logical,
                                     double scale, std::string* error) {
    const size<double> exact{logical.cx * scale, logical.cy * scale};
    const bool has_size = std::isfinite(exact.cx) && std::isfinite(exact.cy) && scale > 0.0;
    const size<double> pixels{std::max(1.0, std::ceil(exact.cx - kSlack)),
                              std::max(1.0, std::ceil(exact.cy - kSlack))};
    const std::string fault =
        has_size ? CheckSize(format, pixels) : "a picture needs a finite size and a scale above 0";
    if (!fault.empty()) {
        SetError(error, fault);
        return nullptr;
    }
    CoordInfo coords;
    coords.device_extent = {static_cast<int>(pixels.cx), static_cast<int>(pixels.cy)};
    // The extent that fills the last pixels as well, so that the scale is exact.
    coords.logical_extent = {pixels.cx / scale, pixels.cy / scale};
    switch (format) {
        case PictureFormat::kSvg:
            return std::make_unique<SvgPicture>(coords);
        case PictureFormat::kPdf:
            return std::make_unique<PdfPicture>(coords);
        case PictureFormat::kPng:
            return MakePng(coords, error);
    }
    return nullptr;
}

}  // namespace nodeline::cairo

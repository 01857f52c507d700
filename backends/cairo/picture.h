// Pictures in files: SVG, PDF and PNG.
//
//   auto picture = MakePicture(PictureFormat::kSvg, graph->GetRoot().GetSize(), 1.0, &error);
//   if (picture == nullptr) return Fail(error);
//   picture->Draw([&](paintcore::IPainter& painter) { DrawGraph(graph, &painter, 1.0); });
//   if (!picture->Save("graph.svg", &error)) return Fail(error);
#pragma once

#include <corvex/export.h>
#include <paintcore/geometry.h>
#include <paintcore/painter.h>

#include <functional>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace nodeline::cairo {

// The format of a picture.
enum class PictureFormat { kSvg, kPdf, kPng };

// The format that the ending of a file name asks for, in letters of either case.
[[nodiscard]] NODELINE_API std::optional<PictureFormat> GetPictureFormat(std::string_view path);

// The most pixels that a side of a PNG, and the whole of it, may have.
inline constexpr int kMaxPngSide = 32767;
inline constexpr int kMaxPngPixels = 268435456;
// The most pixels that a side of a PDF may have; there are 96 to the inch.
inline constexpr int kMaxPdfSide = 4000000;

// A picture under way. It is used on the thread that made it.
class NODELINE_API Picture {
public:
    virtual ~Picture() = default;
    Picture(const Picture&) = delete;
    Picture& operator=(const Picture&) = delete;

    // The painter of the picture, with pixels as its logical units until it is told otherwise.
    // Owned by the picture.
    [[nodiscard]] virtual paintcore::IPainter& GetPainter() = 0;

    // The coordinate system that puts the logical rectangle from (0, 0) to the logical size on the
    // picture, for `MapMode::Rectangle`.
    [[nodiscard]] const paintcore::CoordInfo& GetCoordInfo() const { return coords_; }

    // Opens a bracket, fills the picture with the background of the palette, sets the coordinate
    // system of `GetCoordInfo`, has the rest drawn and closes the bracket. Handlers that scale
    // their fonts have to be given the scale of the picture as their zoom factor.
    void Draw(const std::function<void(paintcore::IPainter&)>& draw);

    // The picture as bytes of its format. A polyline or bracket that is open is closed. Nothing can
    // be drawn on a PDF afterwards. On failure answers nothing and says why in `error`, which may
    // be null.
    [[nodiscard]] virtual std::optional<std::string> Encode(std::string* error) = 0;

    // Writes the picture to a file in one step, or, on failure, answers false, leaves the folder as
    // it was and says why in `error`, which may be null: "cannot write PATH: reason".
    bool Save(const std::string& path, std::string* error = nullptr);

    // The same to a stream, of which bytes may have been written on failure.
    bool WriteTo(std::ostream& out, std::string* error = nullptr);

protected:
    // `coords` is what `GetCoordInfo` answers.
    explicit Picture(const paintcore::CoordInfo& coords) : coords_(coords) {}

private:
    paintcore::CoordInfo coords_;
};

// A picture of `logical` units at `scale` pixels to the unit; parts of pixels are rounded up, and
// there is at least one. Answers null, and says why in `error`, which may be null, if a number is
// not finite, the scale is not above 0 or the picture is too large for its format.
[[nodiscard]] NODELINE_API std::unique_ptr<Picture> MakePicture(
    PictureFormat format, const paintcore::size<double>& logical, double scale,
    std::string* error = nullptr);

}  // namespace nodeline::cairo

#include <backends/cairo/svg_painter.h>

#include <backends/cairo/internal/svg_text.h>
#include <backends/cairo/text_engine.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace nodeline::cairo {

using paintcore::_color;
using paintcore::font;
using paintcore::pen;
using paintcore::point;
using paintcore::rectangle;
using paintcore::size;

namespace {

void AppendBox(std::string& out, const rectangle<double>& box) {
    AppendAttribute(out, "x", box.left);
    AppendAttribute(out, "y", box.top);
    AppendAttribute(out, "width", box.right - box.left);
    AppendAttribute(out, "height", box.bottom - box.top);
}

void AppendReference(std::string& out, std::string_view name, char kind, std::size_t number) {
    out.append(" ").append(name).append("=\"url(#").append(1, kind);
    out.append(std::to_string(number)).append(")\"");
}

void AppendPoint(std::string& out, const point<double>& p) {
    AppendCoordinate(out, p.x);
    out += ' ';
    AppendCoordinate(out, p.y);
}

// Runs of blanks are squeezed together unless the element says otherwise.
bool HasLooseBlanks(std::string_view text) {
    return text.front() == ' ' || text.back() == ' ' || text.find("  ") != std::string_view::npos;
}

}  // namespace

SvgPainter::SvgPainter(const size<double>& extent) : extent_(extent) {}

std::string SvgPainter::GetDocument() const {
    std::string document = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg";
    AppendAttribute(document, "xmlns", "http://www.w3.org/2000/svg");
    AppendAttribute(document, "width", extent_.cx);
    AppendAttribute(document, "height", extent_.cy);
    document += " viewBox=\"0 0 ";
    AppendPoint(document, {extent_.cx, extent_.cy});
    document += "\">\n";
    if (!definitions_.empty()) document.append("<defs>\n").append(definitions_).append("</defs>\n");
    document += body_;
    if (in_group_) document += "</g>\n";
    return document + "</svg>\n";
}

void SvgPainter::StrokePolyline(const std::vector<point<double>>& points) {
    std::string& body = Body();
    body += "<path d=\"";
    char step = 'M';
    for (const auto& p : points) {
        body += step;
        AppendPoint(body, p);
        step = 'L';
    }
    body += "\" fill=\"none\"";
    AppendStroke(body);
    body += "/>\n";
}

void SvgPainter::FillPolygon(const std::vector<point<double>>& points, const _color& color) {
    std::string& body = Body();
    body += "<polygon points=\"";
    for (const auto& p : points) {
        if (body.back() != '"') body += ' ';
        AppendPoint(body, p);
    }
    body += '"';
    AppendColor(body, "fill", color);
    body += "/>\n";
}

void SvgPainter::DrawBox(const rectangle<double>& box, const size<double>& radii, bool fill,
                         bool outline) {
    std::string& body = Body();
    body += "<rect";
    AppendBox(body, box);
    if (radii.cx > 0.0) {
        AppendAttribute(body, "rx", radii.cx);
        AppendAttribute(body, "ry", radii.cy);
    }
    if (fill) {
        AppendColor(body, "fill", GetBrush().color);
    } else {
        AppendAttribute(body, "fill", "none");
    }
    if (outline) AppendStroke(body);
    body += "/>\n";
}

void SvgPainter::DrawGradient(const rectangle<double>& box, const _color& top,
                              const _color& bottom) {
    const std::size_t gradient = DefineGradient(top, bottom);
    std::string& body = Body();
    body += "<rect";
    AppendBox(body, box);
    AppendReference(body, "fill", 'g', gradient);
    body += "/>\n";
}

void SvgPainter::DrawLine(const paintcore::TextLine& line) {
    const font& f = GetFont();
    const std::size_t clip = DefineClip(line.clip);
    const std::string text = PrintableText(line.text);
    const TextExtent extent = GetTextEngine().Measure(f, line.text);
    std::string& body = Body();
    body += "<text";
    AppendAttribute(body, "x",
                    line.centred ? (line.clip.left + line.clip.right) / 2.0 : line.origin.x);
    AppendAttribute(body, "y", line.origin.y + extent.baseline);
    // A viewer takes every line as one that runs to the right.
    if (extent.is_right_to_left) AppendAttribute(body, "direction", "rtl");
    // The end of a line that runs to the left is at its left.
    if (line.centred || extent.is_right_to_left) {
        AppendAttribute(body, "text-anchor", line.centred ? "middle" : "end");
    }
    // The family that the text was measured with goes first, so that it fits its box.
    AppendAttribute(body, "font-family",
                    FamilyList(GetTextEngine().GetFamily(f), PrintableText(f.face)));
    AppendAttribute(body, "font-size", PixelSize(f));
    if ((f.style & paintcore::FontBold) != 0) AppendAttribute(body, "font-weight", "bold");
    AppendColor(body, "fill", GetTextColor());
    AppendReference(body, "clip-path", 'c', clip);
    if (HasLooseBlanks(text)) AppendAttribute(body, "xml:space", "preserve");
    body += '>';
    AppendEscaped(body, text);
    body += "</text>\n";
}

// The group is opened by what is drawn next, so that a clip around nothing leaves no trace.
void SvgPainter::ApplyClip() { CloseGroup(); }

std::string& SvgPainter::Body() {
    if (GetClip() && !in_group_) {
        body_ += "<g";
        AppendReference(body_, "clip-path", 'c', DefineClip(*GetClip()));
        body_ += ">\n";
        in_group_ = true;
    }
    return body_;
}

void SvgPainter::CloseGroup() {
    if (in_group_) body_ += "</g>\n";
    in_group_ = false;
}

std::size_t SvgPainter::DefineClip(const rectangle<double>& clip) {
    const auto [known, is_new] =
        clips_.try_emplace({clip.left, clip.top, clip.right, clip.bottom}, clips_.size());
    if (is_new) {
        definitions_ += "<clipPath id=\"c" + std::to_string(known->second) + "\"><rect";
        AppendBox(definitions_, clip);
        definitions_ += "/></clipPath>\n";
    }
    return known->second;
}

std::size_t SvgPainter::DefineGradient(const _color& top, const _color& bottom) {
    std::string from;
    std::string to;
    AppendStopColor(from, top);
    AppendStopColor(to, bottom);
    const auto [known, is_new] = gradients_.try_emplace({from, to}, gradients_.size());
    if (is_new) {
        definitions_ += "<linearGradient id=\"g" + std::to_string(known->second) +
                        "\" x1=\"0\" y1=\"0\" x2=\"0\" y2=\"1\"><stop offset=\"0\"" + from +
                        "/><stop offset=\"1\"" + to + "/></linearGradient>\n";
    }
    return known->second;
}

void SvgPainter::AppendStroke(std::string& element) const {
    constexpr std::array<std::string_view, 3> kCaps = {"butt", "round", "square"};
    constexpr std::array<std::string_view, 3> kJoins = {"miter", "round", "bevel"};
    const pen& p = GetPen();
    AppendColor(element, "stroke", p.color);
    if (p.width > 1) AppendAttribute(element, "stroke-width", p.width);
    if (p.cap > 0) {
        AppendAttribute(element, "stroke-linecap",
                        kCaps[static_cast<std::size_t>(std::min(p.cap, 2))]);
    }
    if (p.join > 0) {
        AppendAttribute(element, "stroke-linejoin",
                        kJoins[static_cast<std::size_t>(std::min(p.join, 2))]);
    }
}

}  // namespace nodeline::cairo

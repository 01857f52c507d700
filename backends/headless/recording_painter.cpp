#include <backends/headless/recording_painter.h>

#include <paintcore/number_text.h>
#include <paintcore/utf8.h>

#include <utility>

namespace nodeline::headless {

using paintcore::_color;
using paintcore::brush;
using paintcore::CoordInfo;
using paintcore::font;
using paintcore::MapMode;
using paintcore::pen;
using paintcore::rectangle;
using paintcore::size;

namespace {

void AppendHex(std::string& line, unsigned char byte) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    line += kDigits[byte >> 4];
    line += kDigits[byte & 0x0F];
}

void Append(std::string& line, double value) {
    line += ' ';
    paintcore::AppendNumber(line, value);
}

void Append(std::string& line, int value) { line += ' ' + std::to_string(value); }

void Append(std::string& line, bool value) { line += value ? " 1" : " 0"; }

void Append(std::string& line, const std::string& text) {
    line += " \"";
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte == 0x7F) {
            line += "\\x";
            AppendHex(line, byte);
        } else {
            if (c == '"' || c == '\\') line += '\\';
            line += c;
        }
    }
    line += '"';
}

void Append(std::string& line, const _color& color) {
    line += " #";
    AppendHex(line, color.red);
    AppendHex(line, color.green);
    AppendHex(line, color.blue);
}

template <class... Values>
void AppendAll(std::string& line, const Values&... values) {
    (Append(line, values), ...);
}

void Append(std::string& line, const rectangle<double>& r) {
    AppendAll(line, r.left, r.top, r.right, r.bottom);
}

void Append(std::string& line, const pen& p) {
    AppendAll(line, p.color, p.width, p.style, p.cap, p.join);
}

void Append(std::string& line, const brush& b) { AppendAll(line, b.color, b.style); }

void Append(std::string& line, const font& f) {
    AppendAll(line, f.face, f.style, f.size, f.angle, f.charset, f.scale);
}

void Append(std::string& line, const font* f) {
    if (f != nullptr) {
        Append(line, *f);
    } else {
        line += " null";
    }
}

void Append(std::string& line, const CoordInfo& info) {
    AppendAll(line, info.logical_origin.x, info.logical_origin.y);
    AppendAll(line, info.logical_extent.cx, info.logical_extent.cy);
    AppendAll(line, info.device_origin.x, info.device_origin.y);
    AppendAll(line, info.device_extent.cx, info.device_extent.cy);
}

}  // namespace

RecordingPainter::RecordingPainter(paintcore::IPainter* target) : target_(target) {}

template <class... Arguments>
void RecordingPainter::Record(std::string_view operation, const Arguments&... arguments) const {
    if (!recording_) return;
    std::string line(operation);
    (Append(line, arguments), ...);
    lines_.push_back(std::move(line));
}

void RecordingPainter::SetRecording(bool on) { recording_ = on; }

const std::vector<std::string>& RecordingPainter::GetLines() const { return lines_; }

std::vector<std::string> RecordingPainter::TakeLines() { return std::exchange(lines_, {}); }

void RecordingPainter::BeginPaint(StdSettings settings) {
    Record("BeginPaint", static_cast<int>(settings));
    StatePainter::BeginPaint(settings);
    if (target_ != nullptr) target_->BeginPaint(settings);
}

void RecordingPainter::EndPaint() {
    Record("EndPaint");
    StatePainter::EndPaint();
    if (target_ != nullptr) target_->EndPaint();
}

void RecordingPainter::SetPen(const pen& p) {
    Record("SetPen", p);
    StatePainter::SetPen(p);
    if (target_ != nullptr) target_->SetPen(p);
}

void RecordingPainter::SetBrush(const brush& b) {
    Record("SetBrush", b);
    StatePainter::SetBrush(b);
    if (target_ != nullptr) target_->SetBrush(b);
}

void RecordingPainter::SetFont(const font& f) {
    Record("SetFont", f);
    StatePainter::SetFont(f);
    if (target_ != nullptr) target_->SetFont(f);
}

void RecordingPainter::SetArrowSize(int length, int width) {
    Record("SetArrowSize", length, width);
    StatePainter::SetArrowSize(length, width);
    if (target_ != nullptr) target_->SetArrowSize(length, width);
}

void RecordingPainter::SetTextColor(const _color& color) {
    Record("SetTextColor", color);
    StatePainter::SetTextColor(color);
    if (target_ != nullptr) target_->SetTextColor(color);
}

bool RecordingPainter::IsPainting() const {
    Record("IsPainting");
    return StatePainter::IsPainting();
}

void RecordingPainter::MoveTo(double x, double y) {
    Record("MoveTo", x, y);
    if (target_ != nullptr) target_->MoveTo(x, y);
}

void RecordingPainter::LineTo(double x, double y) {
    Record("LineTo", x, y);
    if (target_ != nullptr) target_->LineTo(x, y);
}

void RecordingPainter::BeginPlot(int type) {
    Record("BeginPlot", type);
    if (target_ != nullptr) target_->BeginPlot(type);
}

void RecordingPainter::Vertex(double x, double y) {
    Record("Vertex", x, y);
    if (target_ != nullptr) target_->Vertex(x, y);
}

void RecordingPainter::EndPlot() {
    Record("EndPlot");
    if (target_ != nullptr) target_->EndPlot();
}

void RecordingPainter::Rectangle(double left, double top, double right, double bottom) {
    Record("Rectangle", left, top, right, bottom);
    if (target_ != nullptr) target_->Rectangle(left, top, right, bottom);
}

void RecordingPainter::RoundRect(double left, double top, double right, double bottom, double rx,
                                 double ry) {
    Record("RoundRect", left, top, right, bottom, rx, ry);
    if (target_ != nullptr) target_->RoundRect(left, top, right, bottom, rx, ry);
}

void RecordingPainter::FillRect(double left, double top, double right, double bottom) {
    Record("FillRect", left, top, right, bottom);
    if (target_ != nullptr) target_->FillRect(left, top, right, bottom);
}

void RecordingPainter::GradientFill(const rectangle<double>& r, const _color& from,
                                    const _color& to, int percent, int direction) {
    Record("GradientFill", r, from, to, percent, direction);
    StatePainter::GradientFill(r, from, to, percent, direction);
    if (target_ != nullptr) target_->GradientFill(r, from, to, percent, direction);
}

void RecordingPainter::DrawString(const rectangle<double>& r, const std::string& text, int format,
                                  int length) {
    Record("DrawString", r, text, format, length);
    if (target_ != nullptr) target_->DrawString(r, text, format, length);
}

size<double> RecordingPainter::GetTextSize(const std::string& text, const font* f, int length,
                                           bool leading, bool trailing) {
    Record("GetTextSize", text, f, length, leading, trailing);
    const auto count = paintcore::CountCodePoints(paintcore::FirstBytes(text, length));
    return {kCodePointWidth * static_cast<double>(count), kLineHeight};
}

void RecordingPainter::SetClipRect(double left, double top, double right, double bottom,
                                   bool combine) {
    Record("SetClipRect", left, top, right, bottom, combine);
    StatePainter::SetClipRect(left, top, right, bottom, combine);
    if (target_ != nullptr) target_->SetClipRect(left, top, right, bottom, combine);
}

void RecordingPainter::ResetClip() {
    Record("ResetClip");
    StatePainter::ResetClip();
    if (target_ != nullptr) target_->ResetClip();
}

void RecordingPainter::GetCoordSystem(MapMode& mode, CoordInfo* info) const {
    Record("GetCoordSystem");
    StatePainter::GetCoordSystem(mode, info);
}

void RecordingPainter::SetCoordSystem(MapMode mode, const CoordInfo* info) {
    Record("SetCoordSystem", static_cast<int>(mode), info != nullptr ? *info : CoordInfo());
    StatePainter::SetCoordSystem(mode, info);
    if (target_ != nullptr) target_->SetCoordSystem(mode, info);
}

rectangle<double> RecordingPainter::GetPaintRect() const {
    Record("GetPaintRect");
    return target_ != nullptr ? target_->GetPaintRect() : StatePainter::GetPaintRect();
}

}  // namespace nodeline::headless

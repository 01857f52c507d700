#include <nodeline/handlers/drawers.h>
#include <nodeline/handlers/internal/truncate.h>

#include <nodeline/ops/graph_ops.h>
#include <paintcore/utf8.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string_view>

namespace nodeline {

using paintcore::_color;

namespace {

constexpr int kMargin = 2;
constexpr std::size_t kEmptyCaption = 5;
constexpr int kDots = 3;
constexpr double kLinesPerNode = 1.5;

// A port is as wide as its node is high. These are parts of that height.
constexpr double kPortGap = 0.1;
constexpr double kPortAndGap = 1.1;
constexpr double kPortRadius = 0.4;

// Puts a value in place of another for the length of a scope.
template <class T>
class Replacement {
public:
    Replacement(T& place, T value) : place_(place), old_(place) { place_ = value; }
    ~Replacement() { place_ = old_; }

    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

private:
    T& place_;
    T old_;
};

std::string FirstCharacters(const std::string& text, std::size_t count) {
    std::string_view rest = text;
    for (; count > 0 && !rest.empty(); --count) static_cast<void>(paintcore::TakeCodePoint(rest));
    return text.substr(0, text.size() - rest.size());
}

// The end of a caption of `length` characters that is `width` wide, all taken as equally wide,
// gives way to dots until the rest fits into `available`. It counts in doubles, because a painter
// may answer with a width that makes the count no number of an int.
std::string Shorten(const std::string& caption, double length, double width, double available) {
    if (!(available > 0.0)) return {};
    const double per_character = width / length;
    double count = length + std::trunc((available - width) / per_character);
    while ((count + 1.0) * per_character > available) count -= 1.0;
    if (count > kDots) {
        const auto kept = static_cast<std::size_t>(count) - kDots;
        return FirstCharacters(caption, kept) + std::string(kDots, '.');
    }
    return count >= 1.0 ? std::string(static_cast<std::size_t>(count), '.') : std::string();
}

// The inner graph under a caption strip that is as high as the drawer says.
NodeFrame FrameAround(size<double> inner, Node node, INodeDrawer& drawer) {
    if (IsRoot(node)) return {inner, {0.0, 0.0}};
    const size<double> strip = drawer.GetSize(node);
    const point<double> position = node.GetPosition();
    return {{std::max(inner.cx, strip.cx), strip.cy + inner.cy},
            {position.x, position.y + strip.cy}};
}

bool IsLeaf(Node node) { return node.GetOwned().GetCount() == 0; }

int CaptionFormat(bool leaf) { return leaf ? paintcore::TextCentred : paintcore::TextTopLeft; }

paintcore::pen OutlineOf(const CNodeDrawInfo& info) {
    return {info.border_color, info.pen_width, 1, 0, 0};
}

// Takes a part of the lightness away.
void Darken(_color& color, int percent) {
    double lightness = 0.0;
    double saturation = 0.0;
    double hue = 0.0;
    color.GetHLS(lightness, saturation, hue);
    color.SetHLS(lightness - lightness * percent / 100, saturation, hue);
}

}  // namespace

void CNodeDrawInfo::SetScaledFont() const {
    if (painter == nullptr) return;
    if (zoom_factor >= 0.9 && zoom_factor <= 1.1) return;
    paintcore::font scaled = font;
    scaled.size = internal::Truncate(font.size * zoom_factor);
    painter->SetFont(scaled);
}

size<double> CNodeDrawInfo::GetSizeByCaption(Node node) const {
    if (painter == nullptr) return {0.0, 0.0};
    SetScaledFont();
    const auto limit = static_cast<std::size_t>(std::max(0LL, max_caption_length + 2LL));
    std::string text;
    if (fixed_width) {
        text.assign(limit, ' ');
    } else {
        text = node.GetCaption();
        if (text.empty()) text.assign(kEmptyCaption, ' ');
        if (paintcore::CountCodePoints(text) > limit) {
            text = FirstCharacters(text, limit);
        } else {
            text.append(kMargin, ' ');
        }
    }
    const size<double> extent = painter->GetTextSize(text);
    return {extent.cx, extent.cy * kLinesPerNode};
}

std::string CNodeDrawInfo::GetTruncatedCaption(Node node) const {
    if (painter == nullptr) return {};
    const double available = GetSizeByCaption(node).cx;
    std::string caption = node.GetCaption();
    const double width = painter->GetTextSize(caption).cx;
    if (caption.empty() || !(width > available)) return caption;
    const auto length = static_cast<double>(paintcore::CountCodePoints(caption));
    return Shorten(caption, length, width, available);
}

size<double> CRectNodeDrawer::GetSize(Node node) {
    const Replacement<double> unscaled(info_.zoom_factor, 1.0);
    return info_.GetSizeByCaption(node);
}

NodeFrame CRectNodeDrawer::GetSize(Node node, size<double> inner) {
    return FrameAround(inner, node, *this);
}

void CRectNodeDrawer::Draw(Node node, IPainter* painter) {
    if (painter == nullptr || !IsFlagSet(node, NodeDrawn)) return;
    const Replacement<IPainter*> current(info_.painter, painter);
    const paintcore::pen outline = OutlineOf(info_);
    info_.SetScaledFont();
    painter->SetPen(outline);
    painter->SetTextColor(info_.text_color);
    const rectangle<double> box = MakeDRect(node.GetPosition(), node.GetSize());
    const std::string caption = info_.GetTruncatedCaption(node);
    if (IsFlagSet(node, NodeMarked)) {
        painter->GradientFill(box, info_.fill_top.Lightened(), info_.fill_bottom.Lightened(), 100,
                              0);
    } else {
        painter->GradientFill(box, info_.fill_top, info_.fill_bottom, 100, 0);
    }
    painter->SetPen(outline);
    painter->Rectangle(box);
    painter->DrawString(box, caption, CaptionFormat(IsLeaf(node)), -1);
}

void CRectNodeDrawer::SetIPainter(IPainter* painter) { info_.painter = painter; }

IPainter* CRectNodeDrawer::GetIPainter() const { return info_.painter; }

void CRectNodeDrawer::SetZoomFactor(double factor) {
    if (factor > 0.0) info_.zoom_factor = factor;
}

CPortNodeDrawInfo::CPortNodeDrawInfo() {
    Darken(port_hidden_color, 10);
    Darken(port_visible_color, 30);
}

size<double> CRectPortNodeDrawer::GetSize(Node node) {
    const Replacement<double> unscaled(info_.zoom_factor, 1.0);
    const size<double> box = info_.GetSizeByCaption(node);
    return {box.cx + 2.0 * kPortAndGap * box.cy, box.cy};
}

NodeFrame CRectPortNodeDrawer::GetSize(Node node, size<double> inner) {
    return FrameAround(inner, node, *this);
}

void CRectPortNodeDrawer::Draw(Node node, IPainter* painter) {
    if (painter == nullptr || !IsFlagSet(node, NodeDrawn)) return;
    const Replacement<IPainter*> current(info_.painter, painter);
    info_.SetScaledFont();
    painter->SetPen(OutlineOf(info_));
    painter->SetTextColor(info_.text_color);
    painter->SetBrush({paintcore::GetSysPalette()[paintcore::SysPalette::kBackground], 0});
    const std::string caption = info_.GetTruncatedCaption(node);
    point<double> position = node.GetPosition();
    size<double> extent = node.GetSize();
    const bool leaf = IsLeaf(node);
    if (leaf) {
        position.x += kPortAndGap * extent.cy;
        extent.cx -= 2.0 * kPortAndGap * extent.cy;
    }
    rectangle<double> box = MakeDRect(position, extent);
    FillBox(node, box);
    painter->DrawString(box, caption, CaptionFormat(leaf), -1);
    if (leaf) DrawPorts(box);
    if (IsFlagSet(node, NodeMarked)) DrawFrame(box);
}

// What a user has selected stays so while it is new, and what is hovered is lit up besides.
void CRectPortNodeDrawer::FillBox(Node node, const rectangle<double>& box) const {
    _color top = info_.fill_top;
    _color bottom = info_.fill_bottom;
    if (IsFlagSet(node, NodeSelected)) {
        top = info_.selected_fill_top;
        bottom = info_.selected_fill_bottom;
    } else if (IsFlagSet(node, NodeNew)) {
        top = info_.new_fill_top;
        bottom = info_.new_fill_bottom;
    }
    if (IsFlagSet(node, NodeHovered)) {
        top = top.Lightened();
        bottom = bottom.Lightened();
    }
    info_.painter->GradientFill(box, top, bottom, 100, 0);
    info_.painter->SetPen(OutlineOf(info_));
    info_.painter->Rectangle(box);
}

// Widens the box to what it is with the ports that it has, and a margin.
void CRectPortNodeDrawer::DrawPorts(rectangle<double>& box) const {
    constexpr int kAnyPort = PortVisible | PortHidden | PortPartial;
    const double side = box.bottom - box.top;
    if ((left_port_state_ & kAnyPort) != 0) {
        const double left = box.left - kPortAndGap * side;
        DrawPort({left, box.top, left + side, box.bottom}, left_port_state_, "<");
        box.left = left - info_.zoom_factor;
    }
    if ((right_port_state_ & kAnyPort) != 0) {
        const double left = box.right + kPortGap * side;
        DrawPort({left, box.top, left + side, box.bottom}, right_port_state_, ">");
        box.right = left + side + info_.zoom_factor;
    }
}

void CRectPortNodeDrawer::DrawPort(const rectangle<double>& port, int state,
                                   const char* partial_mark) const {
    const char* mark = "-";
    _color color = info_.port_visible_color;
    if ((state & PortPartial) != 0) {
        mark = partial_mark;
        color = info_.port_partial_color;
    } else if ((state & PortHidden) != 0) {
        mark = "+";
        color = info_.port_hidden_color;
    }
    if ((state & PortPressed) != 0) color = color.Lightened();
    const double radius = kPortRadius * (port.bottom - port.top);
    info_.painter->SetBrush({color, 1});
    info_.painter->RoundRect(port.left, port.top, port.right, port.bottom, radius, radius);
    info_.painter->DrawString(port, mark, paintcore::TextCentred, -1);
}

void CRectPortNodeDrawer::DrawFrame(rectangle<double> box) const {
    box.top -= info_.zoom_factor;
    box.bottom += info_.zoom_factor;
    info_.painter->SetBrush({_color(0, 0, 0), 0});
    info_.painter->SetPen({info_.selected_border_color, 1, 1, 0, 0});
    info_.painter->Rectangle(box);
}

void CRectPortNodeDrawer::SetIPainter(IPainter* painter) { info_.painter = painter; }

IPainter* CRectPortNodeDrawer::GetIPainter() const { return info_.painter; }

void CRectPortNodeDrawer::SetZoomFactor(double factor) {
    if (factor > 0.0) info_.zoom_factor = factor;
}

bool CRectPortNodeDrawer::IsLeftPortClicked(Node node, double x, double y) const {
    const rectangle<double> r = MakeDRect(node.GetPosition(), node.GetSize());
    const double side = r.bottom - r.top;
    return side > 0.0 && x >= r.left && x <= r.left + side && y >= r.top && y <= r.bottom;
}

bool CRectPortNodeDrawer::IsRightPortClicked(Node node, double x, double y) const {
    const rectangle<double> r = MakeDRect(node.GetPosition(), node.GetSize());
    const double side = r.bottom - r.top;
    return side > 0.0 && x >= r.right - side && x <= r.right && y >= r.top && y <= r.bottom;
}

void CRectPortNodeDrawer::SetLeftPortState(int state) { left_port_state_ = state; }

void CRectPortNodeDrawer::SetRightPortState(int state) { right_port_state_ = state; }

}  // namespace nodeline

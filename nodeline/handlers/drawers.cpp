#include <nodeline/handlers/drawers.h>

#include <nodeline/ops/graph_ops.h>
#include <paintcore/utf8.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string_view>

namespace nodeline {

namespace {

constexpr int kMargin = 2;
constexpr std::size_t kEmptyCaption = 5;
constexpr int kDots = 3;
constexpr double kLinesPerNode = 1.5;

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

// Cuts towards 0, and takes what no int can hold as the nearest that one can.
int Truncate(double value) {
    constexpr double kLimit = std::numeric_limits<int>::max();
    return static_cast<int>(std::max(-kLimit, std::min(kLimit, value)));
}

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

}  // namespace

void CNodeDrawInfo::SetScaledFont() const {
    if (painter == nullptr) return;
    if (zoom_factor >= 0.9 && zoom_factor <= 1.1) return;
    paintcore::font scaled = font;
    scaled.size = Truncate(font.size * zoom_factor);
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
    if (IsRoot(node)) return {inner, {0.0, 0.0}};
    const size<double> strip = GetSize(node);
    const point<double> position = node.GetPosition();
    return {{std::max(inner.cx, strip.cx), strip.cy + inner.cy},
            {position.x, position.y + strip.cy}};
}

void CRectNodeDrawer::Draw(Node node, IPainter* painter) {
    if (painter == nullptr || !IsFlagSet(node, NodeDrawn)) return;
    const Replacement<IPainter*> current(info_.painter, painter);
    const paintcore::pen outline{info_.border_color, info_.pen_width, 1, 0, 0};
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
    const bool leaf = node.GetOwned().GetCount() == 0;
    painter->DrawString(box, caption, leaf ? paintcore::TextCentred : paintcore::TextTopLeft, -1);
}

void CRectNodeDrawer::SetIPainter(IPainter* painter) { info_.painter = painter; }

IPainter* CRectNodeDrawer::GetIPainter() const { return info_.painter; }

void CRectNodeDrawer::SetZoomFactor(double factor) {
    if (factor > 0.0) info_.zoom_factor = factor;
}

}  // namespace nodeline

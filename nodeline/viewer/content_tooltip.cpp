#include <nodeline/viewer/content.h>

#include <algorithm>

namespace nodeline {
namespace {

using Watch = viewkit::Watch<CVisualElement>;

// The parts of a tooltip event that are no coordinates.
template <class From, class To>
void CopyLook(const From& from, To& to) {
    to.text = from.text;
    to.textColor = from.textColor;
    to.backColor = from.backColor;
    to.font = from.font;
    to.style = from.style;
}

}  // namespace

template <class Item>
int CContent::ask(const Item& item, CTooltipEvent* event, bool track) {
    const Watch watch(this);
    CGraphTooltipEvent question;
    convert_tooltip(*event, question);
    const auto handler = item.GetHandler();
    const int result = track ? handler->HandleOnTooltipTrack(item, &question)
                             : handler->HandleOnTooltip(item, &question);
    if (watch) convert_tooltip(question, *event);
    return result;
}

bool CContent::HandleOnTooltip(CTooltipEvent* event) { return handle_tooltip(event, false); }

bool CContent::HandleOnTooltipTrack(CTooltipEvent* event) { return handle_tooltip(event, true); }

// The node goes first, even if it is only the root: an edge is asked when the node declines.
bool CContent::handle_tooltip(CTooltipEvent* event, bool track) {
    const Watch watch(this);
    const point<int> at = event->pos;
    int result = ask(GetNodeAt(at), event, track);
    if (!watch) return true;
    if (result == HandlerIgnored) {
        if (const Edge edge = GetEdgeAt(at)) result = ask(edge, event, track);
        if (!watch) return true;
    }
    (track ? OnTooltipTrack : OnTooltip)(this, event);
    if (watch) handle_epilogue(result);
    return !watch || result != HandlerIgnored;
}

void CContent::convert_tooltip(const CTooltipEvent& from, CGraphTooltipEvent& to) const {
    const auto convert = [this](const rectangle<int>& r) {
        const point<double> a = ConvertP2L({r.left, r.top});
        const point<double> b = ConvertP2L({r.right, r.bottom});
        return rectangle<double>{a.x, a.y, b.x, b.y};
    };
    to.pos = ConvertP2L(from.pos);
    to.trackRect = convert(from.trackRect);
    to.tipRect = convert(from.tipRect);
    CopyLook(from, to);
}

void CContent::convert_tooltip(const CGraphTooltipEvent& from, CTooltipEvent& to) const {
    const auto convert = [this](const rectangle<double>& r) {
        const point<int> a = ConvertL2P({r.left, r.top});
        const point<int> b = ConvertL2P({r.right, r.bottom});
        return rectangle<int>{std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x),
                              std::max(a.y, b.y)};
    };
    to.pos = ConvertL2P(from.pos);
    to.trackRect = convert(from.trackRect);
    to.tipRect = convert(from.tipRect);
    CopyLook(from, to);
}

}  // namespace nodeline

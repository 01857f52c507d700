// A whole backend in one file: a painter and a window for a terminal, which is a grid of
// characters. Shows a small graph in it, clicks a port, so that one side of a node folds, and shows
// it again.

#include <nodeline/handlers/handlers.h>
#include <nodeline/layout/stable_layout.h>
#include <nodeline/viewer/graph_viewer.h>
#include <paintcore/device_painter.h>
#include <paintcore/pixel_grid.h>
#include <paintcore/utf8.h>
#include <viewkit/window_base.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

using nodeline::Graph;
using nodeline::graph_ptr2;
using nodeline::Node;
using paintcore::_color;
using paintcore::point;
using paintcore::rectangle;
using paintcore::size;

namespace {

// ----- The surface, which knows nothing of the library: cells, and what can be done to them.

// The sides to which lines run from the middle of a cell, and whether they turn in an arc there.
enum Line : unsigned { LineUp = 1, LineRight = 2, LineDown = 4, LineLeft = 8, LineArc = 16 };

struct Cell {
    char32_t text = 0;   // a character, or none
    unsigned lines = 0;  // where there is none
};

rectangle<int> CommonPart(const rectangle<int>& a, const rectangle<int>& b) {
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
            std::min(a.bottom, b.bottom)};
}

class Screen {
public:
    // The picture begins anew, without a clip.
    void Resize(int columns, int rows) {
        all_ = clip_ = {0, 0, std::max(0, columns), std::max(0, rows)};
        const std::vector<Cell> blanks(static_cast<std::size_t>(all_.right));
        rows_.assign(static_cast<std::size_t>(all_.bottom), blanks);
    }
    // Only `Move` reaches beyond.
    void SetClip(const rectangle<int>& r) { clip_ = CommonPart(r, all_); }

    void Put(const point<int>& at, char32_t c) {
        if (IsInClip(at)) CellAt(at) = {c, 0};
    }
    void Clear(const rectangle<int>& r) {
        const rectangle<int> part = CommonPart(r, clip_);
        for (int y = part.top; y < part.bottom; ++y) {
            for (int x = part.left; x < part.right; ++x) CellAt({x, y}) = {};
        }
    }
    // Level or upright.
    void AddLine(point<int> a, point<int> b, unsigned arc) {
        if (a.x > b.x || a.y > b.y) std::swap(a, b);
        for (int x = std::max(a.x, clip_.left - 1); x < std::min(b.x, clip_.right); ++x) {
            AddSides({x, a.y}, LineRight | arc);
            AddSides({x + 1, a.y}, LineLeft | arc);
        }
        for (int y = std::max(a.y, clip_.top - 1); y < std::min(b.y, clip_.bottom); ++y) {
            AddSides({a.x, y}, LineDown | arc);
            AddSides({a.x, y + 1}, LineUp | arc);
        }
    }
    void RemoveSides(const point<int>& at, unsigned sides) {
        if (IsInClip(at)) CellAt(at).lines &= ~sides;
    }
    // What leaves `area` is lost.
    void Move(const rectangle<int>& area, int dx, int dy) {
        const rectangle<int> from = CommonPart(area, all_);
        const rectangle<int> to =
            CommonPart(from, {from.left + dx, from.top + dy, from.right + dx, from.bottom + dy});
        Screen old = *this;
        for (int y = to.top; y < to.bottom; ++y) {
            for (int x = to.left; x < to.right; ++x) CellAt({x, y}) = old.CellAt({x - dx, y - dy});
        }
    }

    void Print(std::ostream& out) const {
        constexpr std::u32string_view kPointed = U" ╵╶└╷│┌├╴┘─┴┐┤┬┼";
        constexpr std::u32string_view kRound = U" ╵╶╰╷│╭├╴╯─┴╮┤┬┼";
        for (const std::vector<Cell>& row : rows_) {
            std::string line;
            for (const Cell& cell : row) {
                const auto& characters = (cell.lines & LineArc) != 0 ? kRound : kPointed;
                const char32_t drawn = characters[cell.lines % LineArc];
                paintcore::AppendCodePoint(line, cell.text != 0 ? cell.text : drawn);
            }
            out << line.substr(0, line.find_last_not_of(' ') + 1) << '\n';
        }
    }

private:
    [[nodiscard]] Cell& CellAt(const point<int>& at) {
        return rows_[static_cast<std::size_t>(at.y)][static_cast<std::size_t>(at.x)];
    }
    [[nodiscard]] bool IsInClip(const point<int>& at) const {
        return at.x >= clip_.left && at.x < clip_.right && at.y >= clip_.top && at.y < clip_.bottom;
    }
    // Lines that meet become a fork or a crossing. Texts stay readable.
    void AddSides(const point<int>& at, unsigned sides) {
        if (IsInClip(at) && CellAt(at).text == 0) CellAt(at).lines |= sides;
    }

    rectangle<int> all_;
    rectangle<int> clip_;
    std::vector<std::vector<Cell>> rows_;
};

// ----- From pixels to cells.

// To the library, a cell is a square of so many pixels. A node is one and a half lines of text
// high, which makes two cells: its upper edge, its caption and its lower edge get a row each.
constexpr int kCell = 12;
constexpr double kLineHeight = 16.0;

int FloorToInt(double v) {
    constexpr double kFar = 1.0e6;
    return static_cast<int>(std::clamp(paintcore::FloorToPixel(v), -kFar, kFar));
}

// Nodes stand at whole and at half cells. A port ends 2.4 pixels ahead of the box beside it; with
// a quarter of a cell on top, both always come out in the same column, and share a line.
point<int> CellAt(const point<double>& p) {
    return {FloorToInt(p.x / kCell + 0.25), FloorToInt(p.y / kCell)};
}

rectangle<int> CellsIn(const rectangle<double>& r) {
    const point<int> a = CellAt({r.left, r.top});
    const point<int> b = CellAt({r.right, r.bottom});
    return {a.x, a.y, b.x, b.y};
}

// ----- The painter.

class TerminalPainter : public paintcore::DevicePainter {
public:
    explicit TerminalPainter(Screen* screen) : screen_(screen) {}

protected:
    // A cell for each character, whatever the font.
    size<double> MeasureText(const paintcore::font& font, std::string_view text) override {
        if (!(font.size * font.scale > 0.0)) return {};
        return {static_cast<double>(kCell * paintcore::CountCodePoints(text)), kLineHeight};
    }

    // What slants becomes a step. That strays from its segment, so along a strip that `MovePixels`
    // uncovers it may lack a piece, until all is painted anew.
    void StrokePolyline(const std::vector<point<double>>& points) override {
        point<int> from = CellAt(points.front());
        for (const point<double>& p : points) {
            const point<int> to = CellAt(p);
            const int middle = from.x + (to.x - from.x) / 2;
            screen_->AddLine(from, {middle, from.y}, LineArc);
            screen_->AddLine({middle, from.y}, {middle, to.y}, LineArc);
            screen_->AddLine({middle, to.y}, to, LineArc);
            from = to;
        }
    }

    // An arrowhead, tip first. It stands before the outline that it points to, and the edge does
    // not reach through it.
    void FillPolygon(const std::vector<point<double>>& points, const _color& /*color*/) override {
        const point<double> d = points[0] + points[0] - points[1] - points[2];
        const unsigned upright = d.y < 0.0 ? 0 : 2;
        const unsigned level = d.x < 0.0 ? 3 : 1;
        const unsigned way = std::fabs(d.x) < std::fabs(d.y) ? upright : level;
        constexpr point<int> kSteps[] = {{0, -1}, {1, 0}, {0, 1}, {-1, 0}};
        const point<int> tip = CellAt(points[0]);
        screen_->RemoveSides(tip, 1U << (way + 2) % 4);
        screen_->Put(tip - kSteps[way], U"▲▶▼◀"[way]);
    }

    void DrawBox(const rectangle<double>& box, const size<double>& radii, bool fill,
                 bool outline) override {
        const rectangle<int> r = CellsIn(box);
        const int inset = outline ? 1 : 0;
        if (fill) screen_->Clear({r.left + inset, r.top + inset, r.right, r.bottom});
        if (!outline) return;
        const unsigned arc = radii.cx > 0.0 ? LineArc : 0U;
        for (const int y : {r.top, r.bottom}) screen_->AddLine({r.left, y}, {r.right, y}, arc);
        for (const int x : {r.left, r.right}) screen_->AddLine({x, r.top}, {x, r.bottom}, arc);
    }

    // There are no colours. It still covers what was there, outlines as well.
    void DrawGradient(const rectangle<double>& box, const _color& /*top*/,
                      const _color& /*bottom*/) override {
        const rectangle<int> r = CellsIn(box);
        screen_->Clear({r.left, r.top, r.right + 1, r.bottom + 1});
    }

    // Characters fill their cells, while lines run through the middle, half a cell further on.
    void DrawLine(const paintcore::TextLine& line) override {
        const rectangle<int> clip = CellsIn(line.clip);
        point<int> at = CellAt({line.origin.x + kCell / 2.0, line.origin.y + line.extent.cy / 2.0});
        if (!line.centred) at.x = clip.left + 2;
        for (std::string_view rest = line.text; !rest.empty(); ++at.x) {
            const char32_t c = paintcore::TakeCodePoint(rest);
            const bool is_control = c < 0x20 || (c >= 0x7F && c < 0xA0);
            // The outlines of the box stay.
            if (at.x > clip.left && at.x < clip.right) screen_->Put(at, is_control ? U'?' : c);
        }
    }

    // Only cells that lie in it wholly: of what shows in others, not all would be drawn again.
    void ApplyClip() override {
        const rectangle<double> r = GetClip().value_or(rectangle<double>{-1e6, -1e6, 1e6, 1e6});
        screen_->SetClip({-FloorToInt(-r.left / kCell), -FloorToInt(-r.top / kCell),
                          FloorToInt(r.right / kCell), FloorToInt(r.bottom / kCell)});
    }

private:
    Screen* screen_;
};

// ----- The window.

class TerminalWindow : public viewkit::WindowBase {
public:
    TerminalWindow(int columns, int rows) : WindowBase({0, 0}), painter_(&screen_) {
        TerminalWindow::Resize({columns * kCell, rows * kCell});
    }
    ~TerminalWindow() override { Close(); }

    paintcore::IPainter* GetPainter() override { return &painter_; }

    // A program with an event loop wakes it here.
    void RequestPaint(const rectangle<int>& /*area*/) override { paint_is_due_ = true; }

    void Resize(const size<int>& extent) override {
        screen_.Resize(extent.cx / kCell, extent.cy / kCell);
        painter_.SetDevicePaintRect({0.0, 0.0, 1.0 * extent.cx, 1.0 * extent.cy});
        WindowBase::Resize(extent);
        GetControl().InvalidateAll();
    }

    bool MovePixels(const rectangle<int>& area, int dx, int dy) override {
        for (const int length : {area.left, area.top, area.right, area.bottom, dx, dy}) {
            if (length % kCell != 0) return false;
        }
        screen_.Move({area.left / kCell, area.top / kCell, area.right / kCell, area.bottom / kCell},
                     dx / kCell, dy / kCell);
        return true;
    }

    // The button goes down on a cell and up again.
    void Click(const point<int>& cell) {
        const point<int> p{cell.x * kCell + kCell / 2, cell.y * kCell + kCell / 2};
        const viewkit::Watch<WindowBase> life(this);
        GetControl().ButtonDown(p.x, p.y, 0, paintcore::MouseButton::Left);
        if (life) GetControl().ButtonUp(p.x, p.y, 0, paintcore::MouseButton::Left);
        if (life) ComeToRest();
    }
    // What an event loop does when it has no more events.
    void ComeToRest() {
        if (std::exchange(paint_is_due_, false)) PaintPending();
    }

    // The picture, and over it what never becomes part of it, such as a rectangle being dragged.
    void Print(std::ostream& out) {
        const Screen picture = screen_;
        GetControl().DrawOverlays(&painter_);
        screen_.Print(out);
        screen_ = picture;
    }

private:
    Screen screen_;
    TerminalPainter painter_;
    bool paint_is_due_ = true;
};

// ----- The look: nodes as wide as whole cells, and a cell for each lane that edges run in.

class CellNodes : public nodeline::PortNodeHandler {
public:
    using PortNodeHandler::GetSize;
    size<double> GetSize(Node node) override {
        const size<double> s = PortNodeHandler::GetSize(node);
        return {std::ceil(s.cx / kCell) * kCell, s.cy};
    }
};

class CellEdges : public nodeline::DummyEdgeHandler {
public:
    [[nodiscard]] double GetWidth(nodeline::Edge /*edge*/) const override { return kCell; }
};

Node AddNode(Node owner, const std::string& caption) {
    Node node = owner.AddNode();
    node.SetCaption(caption);
    return node;
}

}  // namespace

int main() {
    const graph_ptr2<Graph> graph(new Graph, true);
    Node load = AddNode(graph->GetRoot(), "load");
    Node compiler = AddNode(graph->GetRoot(), "compiler");
    Node link = AddNode(graph->GetRoot(), "link");
    Node parse = AddNode(compiler, "parse");
    Node lower = AddNode(compiler, "lower");
    Node emit = AddNode(compiler, "emit");
    Node check = AddNode(compiler, "check");
    load.LinkTo(parse);
    load.LinkTo(link);
    parse.LinkTo(lower);
    parse.LinkTo(check);
    lower.LinkTo(emit);
    check.LinkTo(AddNode(compiler, "names"));
    check.LinkTo(AddNode(compiler, "types"));
    emit.LinkTo(link);

    TerminalWindow window(92, 13);
    const graph_ptr2<CellNodes> nodes(new CellNodes, true);
    nodes->SetIPainter(window.GetPainter());
    nodes->GetDrawInfo().fixed_width = false;
    graph->SetDefaultNodeHandler(nodes);
    graph->SetDefaultEdgeHandler(graph_ptr2<CellEdges>(new CellEdges, true));
    nodeline::StableLayout::Options spacing;
    spacing.level_spacing = 3 * kCell;
    spacing.node_spacing = spacing.dummy_spacing = spacing.backedge_spacing = kCell;
    graph->SetDefaultLayout(nodeline::StableLayout::Create(spacing));

    auto* const viewer = new nodeline::CGraphViewer(window.GetRoot(), graph, true);
    // Bars are 14 pixels wide, and that is no number of cells.
    viewer->ScrollbarsEnable(false);
    window.ComeToRest();
    window.Print(std::cout);

    // The right port of a node is for its children.
    const point<double> end = check.GetPosition() + point<double>{check.GetSize().cx, kCell};
    const point<int> port = viewer->GetContent()->ConvertL2P(end) - point<int>{kCell, 0};
    window.Click({port.x / kCell, port.y / kCell});
    std::cout << "And with \"check\" folded:\n";
    window.Print(std::cout);
}

#include <nodeline/handlers/internal/truncate.h>
#include <nodeline/viewer/content.h>
#include <viewkit/control.h>

#include <algorithm>

namespace nodeline {
namespace {

using Watch = viewkit::Watch<CVisualElement>;

constexpr size<int> kInitialSize{40, 40};
constexpr int kStepInPixels = 4;
// Added before pixels are cut off: what rounding left just short of a pixel belongs to it.
constexpr double kShortOfPixel = 0.05;

void HoldSomeGraph(graph_ptr2<Graph>& graph) {
    if (!graph) graph = graph_ptr2<Graph>(new Graph(), true);
}

}  // namespace

CContent::CContent(CVisualElement* parent, graph_ptr2<Graph> graph, bool needCoordSystem)
    : CCentralPart(parent, kInitialSize, viewkit::Alignment::Client),
      graph_(graph),
      need_coord_system_(needCoordSystem) {
    HoldSomeGraph(graph_);
    zoom_rect_ = new ZoomRect(this);
    drag_tracker_ = new DragTracker(this);
    drag_tracker_->Enable(true);
    drag_tracker_->OnShift.connect(this, &CContent::ShiftProcessing);
    drag_tracker_->OnEnd.connect(this, &CContent::EndShiftProcessing);
    drag_tracker_->OnCancel.connect(this, &CContent::HandleDragCancel);
    zoom_rect_->OnShift.connect(this, &CContent::FollowRubber);
    zoom_rect_->OnEnd.connect(this, &CContent::ChangeScrollModel);
    zoom_rect_->OnCancel.connect(this, &CContent::HandleRubberCancel);
}

CContent::~CContent() = default;

// ---------------------------------------------------------------------------------------------
// The viewer

void CContent::SetStartX(double x) {
    if (GetHorzScroll() == nullptr) return;
    const Watch watch(this);
    GetHorzScroll()->SetStart(x);
    if (watch) RenewView(false);
}

void CContent::SetStartY(double y) {
    if (GetVertScroll() == nullptr) return;
    const Watch watch(this);
    GetVertScroll()->SetStart(y);
    if (watch) RenewView(false);
}

void CContent::SetScale(double s) {
    if (!(s > 0.0)) return;
    scale_ = s;
    RenewView(true);
}

void CContent::SetViewWidth(double width) {
    if (width > 0.0) SetScale(GetBounds().right / width);
}

void CContent::SetViewHeight(double height) {
    if (height > 0.0) SetScale(GetBounds().bottom / height);
}

void CContent::SetGraph(graph_ptr2<Graph> graph) {
    HoldSomeGraph(graph);
    graph->GetRoot().MakeLayout();
    ShowGraph(graph);
}

void CContent::ShowGraph(graph_ptr2<Graph> graph) {
    const Watch watch(this);
    if (tell_hover_) {
        end_hover();
        if (!watch) return;
        // What that has noted is of the former graph.
        redraw_nodes_.clear();
        redraw_edges_.clear();
    }
    if (single_press_) drop_press();
    if (!watch) return;
    graph_ = graph;
    HoldSomeGraph(graph_);
    RecalculateLayout();
    if (!watch) return;
    horz_beyond_ = vert_beyond_ = {};
    SetStartX((graph_->GetRoot().GetSize().cx - view_extent().cx) * 0.5 +
              graph_->GetRoot().GetPosition().x);
    if (!watch) return;
    SetStartY((graph_->GetRoot().GetSize().cy - view_extent().cy) * 0.5 +
              graph_->GetRoot().GetPosition().y);
    if (watch) RenewView(true);
}

void CContent::SetDefaultNodeHandler(graph_ptr2<INodeHandler> handler) {
    graph_->SetDefaultNodeHandler(handler);
}

double CContent::GetScale() const { return scale_; }

graph_ptr2<Graph> CContent::GetGraph() const { return graph_; }

double CContent::GetStartX() const { return GetHorzStart(); }

double CContent::GetStartY() const { return GetVertStart(); }

void CContent::RenewView(bool invalidate) {
    const Watch watch(this);
    emit_view();
    if (watch && invalidate) Invalidate();
    if (watch) OnChange(this, viewkit::UpdateType::Content);
}

bool CContent::RecalculateLayout() { return RecalculateLayout(nullptr); }

bool CContent::RecalculateLayout(paintcore::IPainter* painter) {
    if (painter == nullptr && GetControl() != nullptr) {
        painter = GetControl()->GetWindow()->GetPainter();
    }
    // A handle of its own: what the layout asks may replace the graph, or destroy the surface.
    const graph_ptr2<Graph> graph = GetGraph();
    return graph->RecalculateLayout(painter);
}

size<double> CContent::view_extent() const {
    const rectangle<int> r = GetContentRect();
    return {(r.right - r.left) / scale_, (r.bottom - r.top) / scale_};
}

void CContent::emit_view() {
    const size<double> extent = view_extent();
    told_start_ = {horz_start_, vert_start_};
    OnChangeView(point<double>{horz_start_, vert_start_},
                 point<double>{horz_start_ + extent.cx, vert_start_ + extent.cy});
}

// ---------------------------------------------------------------------------------------------
// The scroll models

double CContent::GetHorzFrom() const {
    return graph_->GetRoot().GetPosition().x - horz_beyond_.before;
}

double CContent::GetHorzTo() const {
    const Node root = graph_->GetRoot();
    return root.GetPosition().x + root.GetSize().cx + horz_beyond_.after;
}

// Going before the root leaves what the range had behind it; a start on the very edge of the root
// keeps it. `root` and `extent` are where the root begins and how long it is, `view` is the length
// of the view.
void CContent::Beyond::Follow(double start, double root, double extent, double view) {
    const double overshoot = view - extent - root + start - after;
    before = root > start ? root - start : 0.0;
    if (root > start) after = 0.0;
    if (start > root - before) after += overshoot;
    after = std::max(0.0, after);
}

void CContent::SetHorzStart(double start) {
    const Node root = graph_->GetRoot();
    horz_beyond_.Follow(start, root.GetPosition().x, root.GetSize().cx, view_extent().cx);
    horz_start_ = start;
}

double CContent::GetHorzStart() const { return horz_start_; }

int CContent::GetHorzStepInPixels() const { return kStepInPixels; }

void CContent::SetHorzMeasure(std::pair<double, int> measure) {
    SetScale(measure.second / measure.first);
}

std::pair<double, int> CContent::GetHorzMeasure() const { return {1.0 / scale_, 1}; }

double CContent::GetVertFrom() const {
    return graph_->GetRoot().GetPosition().y - vert_beyond_.before;
}

double CContent::GetVertTo() const {
    const Node root = graph_->GetRoot();
    return root.GetPosition().y + root.GetSize().cy + vert_beyond_.after;
}

void CContent::SetVertStart(double start) {
    const Node root = graph_->GetRoot();
    vert_beyond_.Follow(start, root.GetPosition().y, root.GetSize().cy, view_extent().cy);
    vert_start_ = start;
}

double CContent::GetVertStart() const { return vert_start_; }

int CContent::GetVertStepInPixels() const { return kStepInPixels; }

void CContent::SetVertMeasure(std::pair<double, int> measure) {
    SetScale(measure.second / measure.first);
}

std::pair<double, int> CContent::GetVertMeasure() const { return {1.0 / scale_, 1}; }

void CContent::SetHorzScroll(viewkit::IScrollModel* model) {
    CCentralPart::SetHorzScroll(model);
    zoom_rect_->SetHorzScroll(model);
}

void CContent::SetVertScroll(viewkit::IScrollModel* model) {
    CCentralPart::SetVertScroll(model);
    zoom_rect_->SetVertScroll(model);
}

// ---------------------------------------------------------------------------------------------
// The mapping

void CContent::SetNeedCoordSystem(bool need) { need_coord_system_ = need; }

void CContent::SetPos(const rectangle<int>& bounds, bool repaint) {
    const Watch watch(this);
    CCentralPart::SetPos(bounds, repaint);
    if (watch) emit_view();
}

point<double> CContent::GetViewScale() const { return {scale_, scale_}; }

point<double> CContent::GetViewStart() const { return {horz_start_, vert_start_}; }

void CContent::DP2LP(point<double>* p) {
    *p = {p->x / scale_ + GetHorzStart(), p->y / scale_ + GetVertStart()};
}

void CContent::LP2DP(point<double>* p) {
    *p = {(p->x - GetHorzStart()) * scale_ + kShortOfPixel,
          (p->y - GetVertStart()) * scale_ + kShortOfPixel};
}

point<double> CContent::ConvertP2L(point<int> p) const {
    return {p.x / scale_ + GetHorzStart(), p.y / scale_ + GetVertStart()};
}

point<int> CContent::ConvertL2P(point<double> p) const {
    return {internal::Truncate((p.x - GetHorzStart()) * scale_ + kShortOfPixel),
            internal::Truncate((p.y - GetVertStart()) * scale_ + kShortOfPixel)};
}

NodeSet CContent::HitNodeTest(int x1, int y1, int x2, int y2) const {
    const point<double> a = ConvertP2L({x1, y1});
    const point<double> b = ConvertP2L({x2, y2});
    return graph_->HitNodeTest(a.x, a.y, b.x, b.y);
}

EdgeSet CContent::HitEdgeTest(int x1, int y1, int x2, int y2) const {
    const double d = 1.0 / scale_;
    const point<double> a = ConvertP2L({x1, y1});
    const point<double> b = ConvertP2L({x2, y2});
    return graph_->HitEdgeTest(a.x - d, a.y - d, b.x + d, b.y + d);
}

}  // namespace nodeline

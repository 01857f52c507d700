#include <nodeline/viewer/graph_viewer.h>

#include <algorithm>

namespace nodeline {
namespace {

using Watch = viewkit::Watch<CVisualElement>;

constexpr size<int> kInitialSize{100, 100};

double HoldScale(double scale) {
    return std::clamp(scale, viewkit::kMinWheelScale, viewkit::kMaxWheelScale);
}

point<double> Middle(const Node& node) {
    const point<double> p = node.GetPosition();
    const size<double> s = node.GetSize();
    return {p.x + s.cx * 0.5, p.y + s.cy * 0.5};
}

}  // namespace

CGraphViewer::CGraphViewer(CVisualElement* parent, graph_ptr2<Graph> graph, bool needCoordSystem)
    : CVisualElement(parent, kInitialSize, viewkit::Alignment::Client) {
    Init(graph, needCoordSystem);
}

CGraphViewer::CGraphViewer(CVisualElement* parent, size<int> initial, viewkit::Alignment alignment)
    : CVisualElement(parent, initial, alignment) {
    Init({}, true);
}

CGraphViewer::~CGraphViewer() = default;

void CGraphViewer::Init(graph_ptr2<Graph> graph, bool needCoordSystem) {
    scroll_box_ = new viewkit::CScrollBox(this, kInitialSize, viewkit::Alignment::Client);
    content_ = new CContent(scroll_box_, graph, needCoordSystem);
    content_->OnChangeView.connect(this, &CGraphViewer::HandleOnChangeView);
    scroll_box_->SetVertModel(static_cast<IVertSimpleScrollModel*>(content_));
    scroll_box_->SetHorzModel(static_cast<IHorzSimpleScrollModel*>(content_));
    content_->SetVertScroll(scroll_box_->GetWrappedVertScroll());
    content_->SetHorzScroll(scroll_box_->GetWrappedHorzScroll());
    scroll_box_->SetCentralPane(content_);
    scroll_box_->OnScroll.connect(this, &CGraphViewer::HandleOnScroll);
}

void CGraphViewer::SetStartX(double x) { content_->SetStartX(x); }

void CGraphViewer::SetStartY(double y) { content_->SetStartY(y); }

void CGraphViewer::SetScale(double scale) { content_->SetScale(scale); }

void CGraphViewer::SetViewWidth(double width) { content_->SetViewWidth(width); }

void CGraphViewer::SetViewHeight(double height) { content_->SetViewHeight(height); }

// The handler comes before the surface sees the graph, so that the first layout measures by it.
void CGraphViewer::SetGraph(graph_ptr2<Graph> graph) {
    if (!graph) graph = graph_ptr2<Graph>(new Graph(), true);
    if (default_handler_) graph->SetDefaultNodeHandler(default_handler_);
    content_->SetGraph(graph);
}

void CGraphViewer::ShowGraph(graph_ptr2<Graph> graph) { content_->ShowGraph(graph); }

void CGraphViewer::SetDefaultNodeHandler(graph_ptr2<INodeHandler> handler) {
    default_handler_ = handler;
    content_->SetDefaultNodeHandler(handler);
}

double CGraphViewer::GetScale() const { return content_->GetScale(); }

graph_ptr2<Graph> CGraphViewer::GetGraph() const { return content_->GetGraph(); }

double CGraphViewer::GetStartX() const { return content_->GetStartX(); }

double CGraphViewer::GetStartY() const { return content_->GetStartY(); }

void CGraphViewer::RenewView(bool invalidate) { content_->RenewView(invalidate); }

bool CGraphViewer::RecalculateLayout() { return content_->RecalculateLayout(); }

void CGraphViewer::SetNeedCoordSystem(bool need) { content_->SetNeedCoordSystem(need); }

void CGraphViewer::ScrollbarsEnable(bool on) {
    const Watch watch(this);
    const int mode = on ? viewkit::ScrollBarAsNeeded : viewkit::ScrollBarNever;
    scroll_box_->SetVertBarMode(mode);
    if (watch) scroll_box_->SetHorzBarMode(mode);
    if (watch) RenewView(true);
}

void CGraphViewer::ZoomAbout(point<int> pixel, double factor) {
    if (!(factor > 0.0)) return;
    const Watch watch(this);
    const double scale = HoldScale(GetScale() * factor);
    const point<double> fixed = content_->ConvertP2L(pixel);
    SetScale(scale);
    if (watch) SetStartX(fixed.x - pixel.x / scale);
    if (watch) SetStartY(fixed.y - pixel.y / scale);
}

void CGraphViewer::FitToWindow() {
    const Watch watch(this);
    RecalculateLayout();
    if (!watch) return;
    const Node root = GetGraph()->GetRoot();
    const size<double> s = root.GetSize();
    const rectangle<int> r = content_->GetContentRect();
    if (s.cx > 0.0 && s.cy > 0.0) {
        SetScale(HoldScale(std::min((r.right - r.left) / s.cx, (r.bottom - r.top) / s.cy)));
    }
    if (watch) centre_on(Middle(root));
    if (watch) RenewView(true);
}

void CGraphViewer::Centre(const Node& node) {
    if (!node) return;
    const Watch watch(this);
    // A handle of its own: the layout may run code that destroys the caller's.
    const Node centred(node.store(), node.record());
    const bool is_laid_out = RecalculateLayout();
    if (!watch) return;
    centre_on(Middle(centred));
    if (watch && is_laid_out) RenewView(true);
}

void CGraphViewer::centre_on(const point<double>& p) {
    const Watch watch(this);
    const rectangle<int> r = content_->GetContentRect();
    SetStartX(p.x - (r.right - r.left) / GetScale() * 0.5);
    if (watch) SetStartY(p.y - (r.bottom - r.top) / GetScale() * 0.5);
}

void CGraphViewer::HandleOnChangeView(point<double> a, point<double> b) { OnChangeView(a, b); }

void CGraphViewer::HandleOnScroll() { content_->RenewView(false); }

}  // namespace nodeline

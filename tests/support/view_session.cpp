#include <support/view_session.h>

#include <vector>

namespace nodeline::test {

using paintcore::MouseButton;
using viewkit::CControl;

ViewSession::ViewSession(std::uint64_t seed, const ViewSessionPlan& plan,
                         viewkit::WindowBase* window, viewkit::WindowBase* overview_window,
                         const graph_ptr2<Graph>& graph)
    : random_(seed),
      plan_(plan),
      window_(window),
      overview_window_(overview_window),
      viewer_(new CGraphViewer(window->GetRoot(), graph, true)),
      overview_(new COverviewContent(overview_window->GetRoot(), viewer_)) {
    viewer_->SetGraph(graph);
    Paint();
}

void ViewSession::Paint() {
    window_->PaintPending();
    overview_window_->PaintPending();
}

// Some lie a little outside of the window.
point<int> ViewSession::random_pixel(int beyond) {
    const rectangle<int> r = window_->GetRect();
    return {random_.Between(-beyond, r.right + beyond),
            random_.Between(-beyond, r.bottom + beyond)};
}

std::string ViewSession::Step() {
    std::string done;
    const int kind = random_.Below(20);
    if (kind < 12) {
        done = use_pointer();
    } else if (kind < 16) {
        done = change_view();
    } else if (kind < 17) {
        done = change_mode();
    } else if (kind < 19) {
        done = use_overview();
    } else {
        done = change_graph();
    }
    Paint();
    return done;
}

std::string ViewSession::use_pointer() {
    CControl& control = window_->GetControl();
    const MouseButton button = random_.OneIn(6) ? MouseButton::Right : MouseButton::Left;
    const int keys = random_.OneIn(5) ? 1 : 0;
    switch (random_.Below(9)) {
        case 0:
        case 1:
            pointer_ = random_pixel(0);
            control.ButtonDown(pointer_.x, pointer_.y, keys, button);
            return "press";
        case 2:
        case 3:
            pointer_ += point<int>{random_.Between(-20, 20), random_.Between(-20, 20)};
            control.MouseMove(pointer_.x, pointer_.y, keys, MouseButton::None);
            return "move";
        case 4:
        case 5:
            if (before_release) before_release(pointer_);
            control.ButtonUp(pointer_.x, pointer_.y, keys, button);
            if (after_release) after_release(pointer_);
            return "release";
        case 6:
            pointer_ = random_pixel(30);
            control.MouseMove(pointer_.x, pointer_.y, keys, MouseButton::None);
            return "far move";
        case 7: {
            CTooltipEvent event;
            event.pos = random_pixel(0);
            control.Tooltip(&event);
            return "tooltip";
        }
        default:
            if (random_.OneIn(3)) {
                control.MouseLeave();
                return "leave";
            }
            if (random_.OneIn(3)) {
                control.LoseCapture();
                return "lost capture";
            }
            if (random_.OneIn(2)) {
                control.ContextMenu(pointer_.x, pointer_.y);
                return "context menu";
            }
            control.DoubleClick(pointer_.x, pointer_.y, keys, button);
            return "double click";
    }
}

std::string ViewSession::change_view() {
    CControl& control = window_->GetControl();
    const point<int> at = random_pixel(0);
    const int choice = random_.Below(plan_.keeps_scale ? 4 : 8);
    switch (choice) {
        case 0:
        case 1:
            control.KeyDown(0, random_.Between(36, 41));
            return "key";
        case 2:
            viewer_->SetStartX(viewer_->GetStartX() + random_.Between(-60, 60));
            return "start x";
        case 3:
            viewer_->SetStartY(viewer_->GetStartY() + random_.Between(-60, 60));
            return "start y";
        case 4:
            control.MouseWheel(at.x, at.y, random_.Below(4), random_.Between(-3, 3),
                               random_.OneIn(3));
            return "wheel";
        case 5:
            viewer_->SetScale(random_.Real(0.2, 3.0));
            return "scale";
        case 6:
            viewer_->FitToWindow();
            return "fit";
        default:
            window_->Resize({random_.Between(60, 500), random_.Between(60, 400)});
            return "resize";
    }
}

std::string ViewSession::change_mode() {
    switch (random_.Below(plan_.keeps_scale ? 2 : 4)) {
        case 0:
            viewer_->SetMoveNodes(!plan_.keeps_graph && random_.OneIn(2));
            return "move nodes";
        case 1:
            viewer_->GetZoomRect()->Enable(false);
            viewer_->GetDragTracker()->Enable(true);
            return "rubber off";
        case 2:
            viewer_->SetRubberMode(random_.OneIn(2) ? RubberSelect : RubberZoom);
            viewer_->GetZoomRect()->Enable(true);
            viewer_->GetDragTracker()->Enable(random_.OneIn(3));
            return "rubber on";
        default:
            viewer_->ScrollbarsEnable(random_.OneIn(2));
            return "bars";
    }
}

std::string ViewSession::use_overview() {
    CControl& control = overview_window_->GetControl();
    const rectangle<int> r = overview_window_->GetRect();
    const point<int> at{random_.Below(r.right), random_.Below(r.bottom)};
    switch (random_.Below(plan_.keeps_scale ? 1 : 4)) {
        case 0:
            control.KeyDown(0, random_.Between(36, 41));
            return "overview key";
        case 1:
            control.ButtonDown(at.x, at.y, 0, MouseButton::Left);
            return "overview press";
        case 2:
            control.MouseMove(at.x, at.y, 0, MouseButton::None);
            return "overview move";
        default:
            control.ButtonUp(at.x, at.y, 0, MouseButton::Left);
            return "overview release";
    }
}

std::string ViewSession::change_graph() {
    if (plan_.keeps_graph) return "nothing";
    const graph_ptr2<Graph> graph = viewer_->GetGraph();
    std::vector<Node> nodes;
    ForEachNodeIn(
        graph->GetRoot(), [&nodes](const Node& n) { nodes.push_back(n); }, false, false);
    if (nodes.empty()) return "nothing";
    Node node = random_.Of(nodes);
    switch (random_.Below(4)) {
        case 0:
            Hide(node);
            node.GetOwner().UpdateLayout();
            break;
        case 1:
            Show(node);
            node.GetOwner().UpdateLayout();
            break;
        case 2: {
            Node fresh = node.GetOwner().AddNode();
            fresh.SetCaption("fresh");
            node.LinkTo(fresh);
            node.GetOwner().UpdateLayout();
            break;
        }
        default:
            Unfold(node, random_.OneIn(2) ? FoldChildren : FoldParents);
            break;
    }
    viewer_->RenewView(true);
    return "change of the graph";
}

}  // namespace nodeline::test

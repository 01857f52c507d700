// One session, driven through the window of each backend, ends with the same graph and view.
#include <backends/headless/headless_window.h>
#include <backends/qt/qt_window.h>
#include <gtest/gtest.h>
#include <nodeline/handlers/handlers.h>
#include <nodeline/layout/stable_layout.h>
#include <nodeline/ops/graph_ops.h>
#include <nodeline/viewer/graph_viewer.h>
#include <paintcore/number_text.h>
#include <qt/events.h>

#ifdef NODELINE_WITH_CAIRO
#include <backends/cairo/image_window.h>
#endif

#include <string>
#include <vector>

namespace nodeline::test {
namespace {

using paintcore::NumberText;
using viewkit::WindowBase;

constexpr paintcore::size<int> kExtent{420, 260};

// What a session can do with a window, by whatever way events take there.
class Driver {
public:
    virtual ~Driver() = default;
    virtual WindowBase& Window() = 0;
    virtual void Press(point<int> at) = 0;
    virtual void Move(point<int> at) = 0;
    virtual void Release(point<int> at) = 0;
    virtual void Wheel(point<int> at, int notches, int keys) = 0;
    virtual void ArrowRight() = 0;
    virtual void Resize(paintcore::size<int> extent) = 0;
    virtual void Rest() = 0;
};

// Calls the dispatcher itself.
template <class WindowType>
class DirectDriver : public Driver {
public:
    WindowBase& Window() override { return window_; }
    void Press(point<int> at) override {
        window_.GetControl().ButtonDown(at.x, at.y, 0, MouseButton::Left);
    }
    void Move(point<int> at) override {
        window_.GetControl().MouseMove(at.x, at.y, 0, MouseButton::None);
    }
    void Release(point<int> at) override {
        window_.GetControl().ButtonUp(at.x, at.y, 0, MouseButton::Left);
    }
    void Wheel(point<int> at, int notches, int keys) override {
        window_.GetControl().MouseWheel(at.x, at.y, keys, notches, false);
    }
    void ArrowRight() override { window_.GetControl().KeyDown(0, 39); }
    void Resize(paintcore::size<int> extent) override { window_.Resize(extent); }
    void Rest() override { window_.PaintPending(); }

private:
    WindowType window_{kExtent};
};

// Sends events of Qt.
class QtDriver : public Driver {
public:
    QtDriver() {
        window_.Resize(kExtent);
        window_.show();
    }

    WindowBase& Window() override { return window_; }
    void Press(point<int> at) override { test::Press(&window_, {at.x, at.y}); }
    // While the button of the last press is down.
    void Move(point<int> at) override { test::Move(&window_, {at.x, at.y}, Qt::LeftButton); }
    void Release(point<int> at) override { test::Release(&window_, {at.x, at.y}); }
    void Wheel(point<int> at, int notches, int keys) override {
        const auto held =
            (keys & paintcore::KeyControl) != 0 ? Qt::ControlModifier : Qt::NoModifier;
        test::Wheel(&window_, {at.x, at.y}, {0, 120 * notches}, {}, held);
    }
    void ArrowRight() override { Key(&window_, QEvent::KeyPress, Qt::Key_Right); }
    void Resize(paintcore::size<int> extent) override { window_.resize(extent.cx, extent.cy); }
    void Rest() override { Settle(); }

private:
    qt::QtWindow window_;
};

// Nodes of six to a code point, ten high, and their ports.
class Session {
public:
    explicit Session(Driver& driver) : driver_(driver) {
        measure_.SetRecording(false);
        const graph_ptr2<PortNodeHandler> ports(new PortNodeHandler, true);
        ports->SetIPainter(&measure_);
        graph_->SetDefaultNodeHandler(checked_upcast<INodeHandler>(ports));
        graph_->SetDefaultLayout(checked_upcast<ILayout>(StableLayout::Create()));
        Node group = Add(graph_->GetRoot(), "group");
        for (const char* name : {"parse", "check", "lower", "emit", "link"}) {
            nodes_.push_back(Add(nodes_.size() < 3 ? graph_->GetRoot() : group, name));
        }
        for (std::size_t i = 1; i < nodes_.size(); ++i) {
            nodes_[i - 1].LinkTo(nodes_[i]);
            nodes_[0].LinkTo(nodes_[i]);
        }
        viewer_ =
            new CGraphViewer(driver.Window().GetRoot(), {100, 100}, viewkit::Alignment::Client);
        driver_.Rest();
        viewer_->SetGraph(graph_);
        viewer_->FitToWindow();
        driver_.Rest();
    }

    ~Session() {
        delete viewer_;
        // The handler, which the graph may keep longer, has nothing to measure with any more.
        graph_->SetDefaultNodeHandler(GetDefaultNodeHandler());
    }

    void Play() {
        Click(RightPort(nodes_[1]));
        Click(RightPort(nodes_[1]));
        Click(RightPort(nodes_[3]));
        Drag({10, 250}, {57, 221});
        driver_.Wheel({200, 120}, 2, paintcore::KeyControl);
        driver_.Rest();
        driver_.Wheel({200, 120}, -1, 0);
        driver_.Rest();
        driver_.ArrowRight();
        driver_.Rest();
        Click(Middle(nodes_[2]));
        driver_.Resize({333, 222});
        driver_.Rest();
        viewer_->SetMoveNodes(true);
        Drag(Middle(nodes_[0]), {60, 60});
        viewer_->Centre(nodes_[2]);
        driver_.Rest();
    }

    // The view, and of every node its place, its size and its flags but for the pointer.
    [[nodiscard]] std::vector<std::string> Tell() const {
        std::vector<std::string> lines{
            Line("view", {viewer_->GetStartX(), viewer_->GetStartY(), viewer_->GetScale()})};
        const auto tell = [&lines](const Node& n) {
            const point<double> p = n.GetPosition();
            const nodeline::size<double> s = n.GetSize();
            const int flags = n.GetCondition() & ~NodeHovered;
            lines.push_back(Line(n.GetCaption(), {p.x, p.y, s.cx, s.cy, 1.0 * flags}));
        };
        ForEachNodeIn(graph_->GetRoot(), tell, false, false);
        return lines;
    }

    [[nodiscard]] int CountHidden() const {
        int count = 0;
        for (const Node& n : nodes_) count += IsFlagSet(n, NodeHidden) ? 1 : 0;
        return count;
    }

private:
    static Node Add(Node owner, const char* name) {
        Node node = owner.AddNode();
        node.SetCaption(name);
        return node;
    }
    static std::string Line(const std::string& name, const std::vector<double>& numbers) {
        std::string line = name;
        for (const double number : numbers) line += " " + NumberText(number);
        return line;
    }
    [[nodiscard]] point<int> Pixel(const Node& n, double along) const {
        const point<double> p = n.GetPosition();
        const nodeline::size<double> s = n.GetSize();
        return viewer_->GetContent()->ConvertL2P({p.x + along * s.cx, p.y + s.cy / 2.0});
    }
    [[nodiscard]] point<int> Middle(const Node& n) const { return Pixel(n, 0.5); }
    [[nodiscard]] point<int> RightPort(const Node& n) const { return Pixel(n, 0.97); }
    void Click(point<int> at) {
        driver_.Press(at);
        driver_.Release(at);
        driver_.Rest();
    }
    void Drag(point<int> from, point<int> to) {
        driver_.Press(from);
        driver_.Move({(from.x + to.x) / 2, (from.y + to.y) / 2});
        driver_.Rest();
        driver_.Move(to);
        driver_.Release(to);
        driver_.Rest();
    }

    Driver& driver_;
    headless::RecordingPainter measure_;
    graph_ptr2<Graph> graph_{new Graph(), true};
    std::vector<Node> nodes_;
    CGraphViewer* viewer_ = nullptr;
};

std::vector<std::string> PlayIn(Driver& driver) {
    Session session(driver);
    const std::vector<std::string> before = session.Tell();
    session.Play();
    const std::vector<std::string> after = session.Tell();
    EXPECT_NE(before, after);
    EXPECT_GT(session.CountHidden(), 0);
    return after;
}

TEST(CommonSession, EndsAlikeInEveryWindow) {
    DirectDriver<headless::HeadlessWindow> headless;
    const std::vector<std::string> expected = PlayIn(headless);
    ASSERT_EQ(expected.size(), 7U);
    QtDriver qt;
    EXPECT_EQ(PlayIn(qt), expected);
#ifdef NODELINE_WITH_CAIRO
    DirectDriver<cairo::ImageWindow> image;
    EXPECT_EQ(PlayIn(image), expected);
#endif
}

}  // namespace
}  // namespace nodeline::test

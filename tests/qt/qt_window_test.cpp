#include <backends/qt/qt_window.h>
#include <gtest/gtest.h>
#include <qt/events.h>

#include <QDragEnterEvent>
#include <QImage>
#include <QMimeData>
#include <QToolTip>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace nodeline::qt {
namespace {

using namespace nodeline::test;

using paintcore::IPainter;
using paintcore::MouseButton;
using viewkit::CVisualElement;
using Log = std::vector<std::string>;

std::string Text(const char* what, int x, int y, int keys, MouseButton button) {
    return what + std::string(" ") + std::to_string(x) + " " + std::to_string(y) + " " +
           std::to_string(keys) + " " + std::to_string(static_cast<int>(button));
}

// The colour in the middle of a logical pixel.
QRgb ColourAt(const QImage& image, int x, int y) {
    const double ratio = image.devicePixelRatio();
    return image.pixel(static_cast<int>((x + 0.5) * ratio), static_cast<int>((y + 0.5) * ratio));
}

// Writes down what it is told, and fills itself when it is painted.
class Probe : public CVisualElement {
public:
    using CVisualElement::CVisualElement;

    void DrawContent(IPainter* painter) override {
        ++paints;
        painter->SetBrush({color, 1});
        painter->FillRect(GetDrawRect(painter));
        const auto reaction = on_draw;
        if (reaction) reaction();
    }
    bool HandleMouseMove(int x, int y, int keys, MouseButton b) override {
        return Note(Text("move", x, y, keys, b));
    }
    bool HandleButtonDown(int x, int y, int keys, MouseButton b) override {
        if (captures) CaptureMouse();
        return Note(Text("down", x, y, keys, b));
    }
    bool HandleButtonUp(int x, int y, int keys, MouseButton b) override {
        return Note(Text("up", x, y, keys, b));
    }
    bool HandleDoubleClick(int x, int y, int keys, MouseButton b) override {
        return Note(Text("double", x, y, keys, b));
    }
    void HandleMouseLeave(CVisualElement*) override { Note("leave"); }
    bool HandleMouseWheel(int x, int y, int keys, double notches, bool horizontal) override {
        wheel = notches;
        return Note(Text(horizontal ? "pan" : "wheel", x, y, keys, MouseButton::None));
    }
    bool HandleKeyDown(int keys, int code) override {
        return Note("key " + std::to_string(keys) + " " + std::to_string(code));
    }
    bool HandleKeyUp(int keys, int code) override {
        return Note("key up " + std::to_string(keys) + " " + std::to_string(code));
    }
    bool HandleChar(char c) override { return Note(std::string("char ") + c); }
    bool HandleDragOver(int x, int y) override {
        return Note("over " + std::to_string(x) + " " + std::to_string(y));
    }
    bool HandleDragDrop(int x, int y) override {
        return Note("drop " + std::to_string(x) + " " + std::to_string(y));
    }
    bool HandleContextMenu(int x, int y) override {
        return Note("menu " + std::to_string(x) + " " + std::to_string(y));
    }
    bool HandleOnTooltip(paintcore::CTooltipEvent* event) override {
        event->text = tip;
        return Note("tip " + std::to_string(event->pos.x) + " " + std::to_string(event->pos.y));
    }
    void HandleGetFocus() override { Note("focus"); }
    void HandleLostFocus() override { Note("no focus"); }
    void HandleCaptureLost() override { Note("capture lost"); }
    void HandleTimer() override { Note("timer"); }

    [[nodiscard]] Log Take() { return std::exchange(log_, {}); }

    paintcore::_color color{10, 20, 30};
    int paints = 0;
    double wheel = 0.0;
    std::string tip;
    bool captures = false;
    bool answer = true;
    // Called last; they may destroy the element.
    std::function<void()> react;
    std::function<void()> on_draw;

private:
    bool Note(const std::string& event) {
        log_.push_back(event);
        const bool result = answer;
        const auto reaction = react;
        if (reaction) reaction();
        return result;
    }

    Log log_;
};

// A window of 200 by 100 with an element that starts at (30, 20).
class QtWindowTest : public testing::Test {
protected:
    void SetUp() override {
        window->Resize({200, 100});
        probe = new Probe(window->GetRoot(), {100, 50}, viewkit::Alignment::None);
        probe->SetPos({30, 20, 130, 70}, true);
        window->show();
        Settle();
        static_cast<void>(probe->Take());
    }
    void TearDown() override { delete window.data(); }

    QPointer<QtWindow> window = new QtWindow;
    Probe* probe = nullptr;
};

TEST_F(QtWindowTest, PointerEventsReachElementsInTheirPixels) {
    Press(window, {40, 30}, Qt::LeftButton, Qt::ShiftModifier);
    Release(window, {41, 32}, Qt::LeftButton);
    EXPECT_EQ(probe->Take(), Log({"focus", "down 10 10 1 1", "up 11 12 0 1"}));
    Press(window, {40, 30}, Qt::RightButton, Qt::ControlModifier);
    Release(window, {40, 30}, Qt::RightButton, Qt::AltModifier);
    EXPECT_EQ(probe->Take(), Log({"down 10 10 2 2", "up 10 10 4 2"}));
    Press(window, {40, 30}, Qt::MiddleButton);
    Move(window, {42, 30}, Qt::MiddleButton);
    EXPECT_EQ(probe->Take(), Log({"down 10 10 0 3", "move 12 10 0 3"}));
    Release(window, {42, 30}, Qt::MiddleButton);
}

TEST_F(QtWindowTest, ButtonsThatElementsDoNotKnowAreLeftToOthers) {
    QMouseEvent event(QEvent::MouseButtonPress, {40.0, 30.0}, {40.0, 30.0}, Qt::BackButton,
                      Qt::BackButton, Qt::NoModifier);
    QApplication::sendEvent(window, &event);
    EXPECT_FALSE(event.isAccepted());
    EXPECT_EQ(probe->Take(), Log());
}

TEST_F(QtWindowTest, ADoubleClickComesBetweenItsTwoReleases) {
    DoubleClick(window, {40, 30});
    EXPECT_EQ(probe->Take(),
              Log({"focus", "down 10 10 0 1", "up 10 10 0 1", "double 10 10 0 1", "up 10 10 0 1"}));
}

TEST_F(QtWindowTest, LeavingTheWidgetLeavesTheElement) {
    Move(window, {40, 30});
    Send(window, QEvent(QEvent::Leave));
    EXPECT_EQ(probe->Take(), Log({"move 10 10 0 0", "leave"}));
}

TEST_F(QtWindowTest, TheWheelCountsNotchesAndTouchPadsFractionsOfThem) {
    EXPECT_TRUE(Wheel(window, {40, 30}, {0, 120}));
    EXPECT_EQ(probe->Take(), Log({"wheel 10 10 0 0"}));
    EXPECT_EQ(probe->wheel, 1.0);
    Wheel(window, {40, 30}, {0, -60}, {}, Qt::ControlModifier);
    EXPECT_EQ(probe->Take(), Log({"wheel 10 10 2 0"}));
    EXPECT_EQ(probe->wheel, -0.5);
    Wheel(window, {40, 30}, {0, 120}, {0, 12});
    EXPECT_EQ(probe->wheel, 0.25);
    static_cast<void>(probe->Take());
    Wheel(window, {40, 30}, {-240, 0});
    EXPECT_EQ(probe->Take(), Log({"pan 10 10 0 0"}));
    EXPECT_EQ(probe->wheel, 2.0);
    probe->answer = false;
    EXPECT_FALSE(Wheel(window, {40, 30}, {0, 120}));
}

TEST_F(QtWindowTest, KeysGoToTheFocusedElementByTheirCodes) {
    Click(window, {40, 30});
    static_cast<void>(probe->Take());
    for (const int key : {Qt::Key_Left, Qt::Key_Up, Qt::Key_Right, Qt::Key_Down, Qt::Key_A}) {
        EXPECT_TRUE(Key(window, QEvent::KeyPress, key));
    }
    Key(window, QEvent::KeyPress, Qt::Key_Left, Qt::ControlModifier);
    Key(window, QEvent::KeyRelease, Qt::Key_Left);
    EXPECT_EQ(probe->Take(), Log({"key 0 37", "key 0 38", "key 0 39", "key 0 40", "key 0 65",
                                  "key 2 37", "key up 0 37"}));
    probe->answer = false;
    EXPECT_FALSE(Key(window, QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, "a"));
    EXPECT_EQ(probe->Take(), Log({"key 0 65", "char a"}));
    EXPECT_FALSE(Key(window, QEvent::KeyPress, Qt::Key_F5));
    EXPECT_EQ(probe->Take(), Log());
}

TEST_F(QtWindowTest, APercentSignIsNoArrow) {
    Click(window, {40, 30});
    static_cast<void>(probe->Take());
    Key(window, QEvent::KeyPress, Qt::Key_Percent, Qt::ShiftModifier, "%");
    EXPECT_EQ(probe->Take(), Log({"char %"}));
}

TEST_F(QtWindowTest, TheFocusComesBackToTheElementThatHadIt) {
    Click(window, {40, 30});
    Send(window, QFocusEvent(QEvent::FocusOut));
    Send(window, QFocusEvent(QEvent::FocusIn));
    const Log log = probe->Take();
    ASSERT_GE(log.size(), 2U);
    EXPECT_EQ(Log(log.end() - 2, log.end()), Log({"no focus", "focus"}));
    EXPECT_TRUE(probe->HasFocus());
}

TEST_F(QtWindowTest, DropsAreOfferedWhereTheWidgetAcceptsThem) {
    QMimeData data;
    data.setText("what is dropped");
    window->setAcceptDrops(true);
    const QPoint at(40, 30);
    QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window, &enter);
    QDragMoveEvent move(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window, &move);
    QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window, &drop);
    EXPECT_TRUE(enter.isAccepted() && drop.isAccepted());
    EXPECT_EQ(probe->Take(), Log({"over 10 10", "over 10 10", "drop 10 10"}));
    probe->answer = false;
    QDropEvent refused(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window, &refused);
    EXPECT_FALSE(refused.isAccepted());
}

TEST_F(QtWindowTest, AContextMenuThatNobodyShowsIsLeftToTheParent) {
    QContextMenuEvent event(QContextMenuEvent::Mouse, {40, 30}, {40, 30});
    QApplication::sendEvent(window, &event);
    EXPECT_TRUE(event.isAccepted());
    EXPECT_EQ(probe->Take(), Log({"menu 10 10"}));
    probe->answer = false;
    QApplication::sendEvent(window, &event);
    EXPECT_FALSE(event.isAccepted());
}

TEST_F(QtWindowTest, AContextMenuComesAfterTheReleaseWheneverThatComes) {
    Press(window, {40, 30}, Qt::RightButton);
    Send(window, QContextMenuEvent(QContextMenuEvent::Mouse, {40, 30}, {40, 30}));
    Release(window, {40, 30}, Qt::RightButton);
    EXPECT_EQ(probe->Take(), Log({"focus", "down 10 10 0 2", "up 10 10 0 2", "menu 10 10"}));
    Press(window, {40, 30}, Qt::RightButton);
    Release(window, {40, 30}, Qt::RightButton);
    Send(window, QContextMenuEvent(QContextMenuEvent::Mouse, {40, 30}, {40, 30}));
    EXPECT_EQ(probe->Take(), Log({"down 10 10 0 2", "up 10 10 0 2", "menu 10 10"}));
}

TEST_F(QtWindowTest, AMoveWithoutAButtonEndsACaptureWhoseReleaseWentElsewhere) {
    probe->captures = true;
    Press(window, {40, 30});
    static_cast<void>(probe->Take());
    Move(window, {41, 30});
    EXPECT_EQ(probe->Take(), Log({"capture lost", "move 11 10 0 0"}));
}

TEST_F(QtWindowTest, ATooltipIsShownAsPlainText) {
    probe->tip = "<b>a & b</b>";
    Send(window, QHelpEvent(QEvent::ToolTip, {40, 30}, window->mapToGlobal(QPoint(40, 30))));
    EXPECT_EQ(probe->Take(), Log({"tip 10 10"}));
    EXPECT_TRUE(QToolTip::text().contains("&lt;b&gt;a &amp; b&lt;/b&gt;"))
        << QToolTip::text().toStdString();
    QToolTip::hideText();
}

TEST_F(QtWindowTest, TheCaptureIsLostWhenTheWindowSystemTakesThePointer) {
    probe->captures = true;
    for (const auto type : {QEvent::UngrabMouse, QEvent::WindowDeactivate}) {
        Press(window, {40, 30});
        EXPECT_TRUE(probe->HasCapture());
        static_cast<void>(probe->Take());
        Send(window, QEvent(type));
        EXPECT_FALSE(probe->HasCapture());
        EXPECT_EQ(probe->Take(), Log({"capture lost"}));
    }
}

TEST_F(QtWindowTest, ThereIsOnePaintAtIdleHoweverOftenItIsAskedFor) {
    const int before = window->GetPaintCount();
    probe->color = {200, 0, 0};
    probe->Invalidate();
    probe->OnChange(probe, viewkit::UpdateType::Content);
    window->RequestPaint(window->GetRect());
    EXPECT_EQ(window->GetPaintCount(), before);
    Settle();
    EXPECT_EQ(window->GetPaintCount(), before + 1);
    EXPECT_EQ(ColourAt(window->GetImage(), 30, 20), qRgb(200, 0, 0));
    Settle();
    EXPECT_EQ(window->GetPaintCount(), before + 1);
}

TEST_F(QtWindowTest, TheWidgetShowsItsPicture) {
    const QImage grabbed = window->grab().toImage();
    EXPECT_EQ(ColourAt(grabbed, 29, 20), qRgb(255, 255, 255));
    EXPECT_EQ(ColourAt(grabbed, 30, 20), qRgb(10, 20, 30));
    EXPECT_EQ(ColourAt(grabbed, 129, 69), qRgb(10, 20, 30));
    EXPECT_EQ(ColourAt(grabbed, 130, 69), qRgb(255, 255, 255));
}

TEST_F(QtWindowTest, AHiddenWindowPaintsWhenItIsShown) {
    window->hide();
    Settle();
    const int before = probe->paints;
    probe->Invalidate();
    Settle();
    EXPECT_EQ(probe->paints, before);
    window->show();
    Settle();
    EXPECT_GT(probe->paints, before);
}

TEST_F(QtWindowTest, ResizingTheWidgetResizesTheElements) {
    probe->SetAlignment(viewkit::Alignment::Client);
    window->resize(320, 240);
    Settle();
    EXPECT_EQ(window->GetRect(), (paintcore::rectangle<int>{0, 0, 320, 240}));
    EXPECT_EQ(probe->GetBounds(), (paintcore::rectangle<int>{0, 0, 320, 240}));
    const QSizeF pixels = QSizeF(320.0, 240.0) * window->devicePixelRatioF();
    EXPECT_EQ(window->GetImage().size(), pixels.toSize());
    EXPECT_EQ(ColourAt(window->GetImage(), 319, 239), qRgb(10, 20, 30));
}

TEST_F(QtWindowTest, TheRepeatTimerStrikesForTheElementThatHoldsTheMouse) {
    probe->captures = true;
    Press(window, {40, 30});
    static_cast<void>(probe->Take());
    window->SetRepeatTimer(1);
    for (int i = 0; i < 2000 && probe->Take() != Log({"timer"}); ++i) {
        QApplication::processEvents(QEventLoop::AllEvents, 1);
        ASSERT_LT(i, 1999) << "the timer never struck";
    }
    window->SetRepeatTimer(0);
    EXPECT_EQ(window->GetRepeatTimer(), 0);
}

TEST_F(QtWindowTest, TheCursorIsThatOfTheWidget) {
    window->SetCursor(viewkit::Cursor::Cross);
    EXPECT_EQ(window->cursor().shape(), Qt::CrossCursor);
    window->RestoreCursor();
    EXPECT_EQ(window->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(QtWindowTest, AnElementMayGoInAnyEvent) {
    const std::vector<std::function<void()>> events{
        [this] {
            Press(window, {40, 30});
        },
        [this] {
            Wheel(window, {40, 30}, {0, 120});
        },
        [this] {
            Move(window, {40, 30});
        },
        [this] {
            Send(window, QContextMenuEvent(QContextMenuEvent::Mouse, {40, 30}, {40, 30}));
        },
        [this] {
            Send(window, QHelpEvent(QEvent::ToolTip, {40, 30}, {40, 30}));
        },
    };
    for (const auto& event : events) {
        auto* doomed = new Probe(window->GetRoot(), {100, 50}, viewkit::Alignment::None);
        doomed->SetPos({30, 20, 130, 70}, true);
        const viewkit::Watch<CVisualElement> watch(doomed);
        doomed->react = [doomed] { delete doomed; };
        event();
        EXPECT_FALSE(watch);
    }
    Settle();
    EXPECT_TRUE(window);
}

TEST_F(QtWindowTest, TheWindowMayGoInAnyEvent) {
    const std::vector<std::function<void(QtWindow*)>> events{
        [](QtWindow* w) {
            Press(w, {40, 30});
        },
        [](QtWindow* w) {
            Release(w, {40, 30});
        },
        [](QtWindow* w) {
            Mouse(w, QEvent::MouseButtonDblClick, {40, 30}, Qt::LeftButton, {});
        },
        [](QtWindow* w) {
            Move(w, {40, 30});
        },
        [](QtWindow* w) {
            Wheel(w, {40, 30}, {120, 120});
        },
        [](QtWindow* w) {
            Send(w, QContextMenuEvent(QContextMenuEvent::Mouse, {40, 30}, {40, 30}));
        },
        [](QtWindow* w) {
            Send(w, QHelpEvent(QEvent::ToolTip, {40, 30}, {40, 30}));
        },
    };
    for (const auto& event : events) {
        const QPointer<QtWindow> doomed = new QtWindow;
        doomed->Resize({200, 100});
        auto* element = new Probe(doomed->GetRoot(), {100, 50}, viewkit::Alignment::Client);
        doomed->show();
        Settle();
        element->react = [doomed] { delete doomed.data(); };
        event(doomed);
        EXPECT_TRUE(doomed.isNull());
        delete doomed.data();
    }
}

TEST_F(QtWindowTest, TheWindowMayGoWhileItPaints) {
    probe->on_draw = [this] { delete window.data(); };
    probe->Invalidate();
    Settle();
    EXPECT_TRUE(window.isNull());
}

}  // namespace
}  // namespace nodeline::qt

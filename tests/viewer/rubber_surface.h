// Surfaces for rubber rectangles to be dragged on, and a listener to their signals.
#pragma once

#include <backends/headless/headless_window.h>
#include <gtest/gtest.h>
#include <nodeline/viewer/rubber_rect.h>
#include <paintcore/number_text.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace nodeline::test {

using paintcore::MouseButton;
using paintcore::point;
using viewkit::CVisualElement;

// A scroll model that writes down where it is moved to, and then carries out `then`.
class Axis : public ISimpleScrollModel {
public:
    [[nodiscard]] double GetFrom() const override { return from; }
    [[nodiscard]] double GetTo() const override { return to; }
    void SetStart(double at) override {
        start = at;
        moves.push_back(at);
        if (const auto action = then) action();
    }
    [[nodiscard]] double GetStart() const override { return start; }
    [[nodiscard]] int GetMinScrollDistance() const override { return 1; }
    void SetMeasure(std::pair<double, int> m) override { measure = m; }
    [[nodiscard]] std::pair<double, int> GetMeasure() const override { return measure; }

    double from = 0.0;
    double to = 1000.0;
    double start = 0.0;
    std::pair<double, int> measure{1.0, 2};
    std::vector<double> moves;
    std::function<void()> then;
};

// 100 by 50 pixels that show 50 by 25 units, from (100, 50).
class Surface : public viewkit::CCentralPart {
public:
    explicit Surface(CVisualElement* parent)
        : CCentralPart(parent, {100, 50}, viewkit::Alignment::None) {
        horz.start = 100.0;
        vert.start = 50.0;
        SetHorzScroll(&horz);
        SetVertScroll(&vert);
    }

    Axis horz;
    Axis vert;
};

// A surface in a window, not at its corner. The pointer is in pixels of the surface.
class SurfaceInWindow {
public:
    SurfaceInWindow() { surface->SetPos({20, 10, 120, 60}, false); }

    void Press(int x, int y, MouseButton button = MouseButton::Left) {
        window.Press(x + 20, y + 10, button);
    }
    void Move(int x, int y) { window.Move(x + 20, y + 10); }
    void Release(int x, int y, int keys = 0) {
        window.Release(x + 20, y + 10, MouseButton::Left, keys);
    }
    // Without the paint that may follow.
    void MoveOnly(int x, int y) {
        window.GetControl().MouseMove(x + 20, y + 10, 0, MouseButton::Left);
    }
    [[nodiscard]] CVisualElement* Captured() { return window.GetControl().GetCaptured(); }

    headless::HeadlessWindow window{{200, 100}};
    Surface* surface = new Surface(window.GetRoot());
};

// Writes down what a rubber rectangle emits, one line per signal, and carries out the action of
// that signal then.
template <class Rubber>
class RubberLog : public subscriber_base_t {
public:
    using Point = point<double>;

    explicit RubberLog(Rubber* rubber) : rubber_(rubber) {
        rubber->OnStart.connect(this, &RubberLog::HearStart);
        rubber->OnShift.connect(this, &RubberLog::HearShift);
        rubber->OnEnd.connect(this, &RubberLog::HearEnd);
    }

    void HearStart(Rubber* rubber, Point a, Point b) {
        Write("OnStart", rubber, {a, b});
        if (on_start) on_start();
    }
    void HearShift(Rubber* rubber, Point start, Point cur, Point prev) {
        Write("OnShift", rubber, {start, cur, prev});
        if (on_shift) on_shift();
    }
    void HearEnd(Rubber* rubber, Point start, Point end) {
        Write("OnEnd", rubber, {start, end});
        if (on_end) on_end();
    }
    std::vector<std::string> TakeLines() { return std::exchange(lines, {}); }

    std::vector<std::string> lines;
    std::function<void()> on_start;
    std::function<void()> on_shift;
    std::function<void()> on_end;

private:
    void Write(std::string line, Rubber* rubber, const std::vector<Point>& points) {
        EXPECT_EQ(rubber, rubber_);
        for (const Point& p : points) {
            line += " " + paintcore::NumberText(p.x) + "," + paintcore::NumberText(p.y);
        }
        lines.push_back(std::move(line));
    }

    Rubber* rubber_;
};

using Lines = std::vector<std::string>;

// A rubber rectangle that is on, on a surface in a window.
template <class Rubber>
class OnSurface : public testing::Test, protected SurfaceInWindow {
protected:
    OnSurface() { rubber->Enable(true); }

    void ExpectIdle() {
        EXPECT_FALSE(rubber->IsPressed());
        EXPECT_FALSE(rubber->IsActive());
        EXPECT_EQ(Captured(), nullptr);
    }

    Rubber* rubber = new Rubber(surface);
    RubberLog<Rubber> log{rubber};
};

// The rectangle of a fixture, or its parent, dies in the middle of things.
template <class Fixture>
class DeathOf : public Fixture, public testing::WithParamInterface<bool> {
protected:
    // The action that deletes the parent, or else the rectangle alone.
    std::function<void()> Kill() {
        return [this] {
            if (this->GetParam()) {
                delete this->surface;
            } else {
                delete this->rubber;
            }
            is_dead_ = true;
        };
    }
    void ExpectDeath(std::size_t signals) {
        EXPECT_TRUE(is_dead_);
        EXPECT_EQ(this->log.lines.size(), signals);
        EXPECT_EQ(this->Captured(), nullptr);
        this->Move(30, 30);
        this->Release(30, 30);
        EXPECT_EQ(this->log.lines.size(), signals);
    }

private:
    bool is_dead_ = false;
};

// Counts the releases that an element hears of.
class ReleaseCounter : public subscriber_base_t {
public:
    explicit ReleaseCounter(CVisualElement* element) {
        element->OnButtonUp.connect(this, &ReleaseCounter::Hear);
    }
    void Hear(CVisualElement* /*element*/, int x, int y, int /*keys*/, MouseButton /*button*/) {
        places.push_back({x, y});
    }

    std::vector<point<int>> places;
};

}  // namespace nodeline::test

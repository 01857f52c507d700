#include <gtest/gtest.h>
#include <nodeline/viewer/scroll_model.h>

#include <vector>

namespace nodeline::test {
namespace {

using paintcore::rectangle;

// Implements what is abstract, and nothing else.
class Horizontal : public IHorzSimpleScrollModel {
public:
    [[nodiscard]] double GetHorzFrom() const override { return -3.0; }
    [[nodiscard]] double GetHorzTo() const override { return 12.5; }
    void SetHorzStart(double at) override { start = at; }
    [[nodiscard]] double GetHorzStart() const override { return start; }
    [[nodiscard]] int GetHorzStepInPixels() const override { return 4; }
    void SetHorzMeasure(std::pair<double, int> m) override { measure = m; }
    [[nodiscard]] std::pair<double, int> GetHorzMeasure() const override { return measure; }

    double start = 1.0;
    std::pair<double, int> measure{1.0, 1};
};

class Vertical : public IVertSimpleScrollModel {
public:
    [[nodiscard]] double GetVertFrom() const override { return -5.0; }
    [[nodiscard]] double GetVertTo() const override { return 7.5; }
    void SetVertStart(double at) override { start = at; }
    [[nodiscard]] double GetVertStart() const override { return start; }
    [[nodiscard]] int GetVertStepInPixels() const override { return 6; }
    void SetVertMeasure(std::pair<double, int> m) override { measure = m; }
    [[nodiscard]] std::pair<double, int> GetVertMeasure() const override { return measure; }

    double start = 2.0;
    std::pair<double, int> measure{1.0, 1};
};

// Rows of different heights.
class Rows : public Vertical {
public:
    [[nodiscard]] double GetVertStepSize(double at) const override { return at * 2.0; }
    [[nodiscard]] bool IsVertFixedStepSize() const override { return false; }
};

void ExpectStepsOfOne(const IScrollModel& model) {
    EXPECT_TRUE(model.IsFixedStepSize());
    EXPECT_FALSE(model.IsInseparableStep());
    for (const double at : {-100.0, 0.0, 3.5}) EXPECT_EQ(model.GetStepSize(at), 1.0);
}

TEST(ScrollModel, SevenOperationsOfAHorizontalOneLeaveStepsOfOne) {
    const Horizontal model;
    ExpectStepsOfOne(model);
}

TEST(ScrollModel, SevenOperationsOfAVerticalOneLeaveStepsOfOne) {
    const Vertical model;
    ExpectStepsOfOne(model);
}

TEST(ScrollModel, SettingAStepSizeChangesNothing) {
    const Horizontal horizontal;
    const Vertical vertical;
    for (const double step : {-1.0, 0.0, 7.0}) {
        horizontal.SetStepSize(1.0, step);
        vertical.SetStepSize(1.0, step);
    }
    ExpectStepsOfOne(horizontal);
    ExpectStepsOfOne(vertical);
    EXPECT_EQ(horizontal.start, 1.0);
    EXPECT_EQ(vertical.start, 2.0);
}

TEST(ScrollModel, UpdateDoesNothingByItself) {
    Horizontal model;
    model.Update();
    EXPECT_EQ(model.start, 1.0);
    EXPECT_EQ(model.measure, std::pair(1.0, 1));
}

// As whoever scrolls sees it.
void ExpectForwarding(IScrollModel& model, double from, double to, double start, int distance) {
    EXPECT_EQ(model.GetFrom(), from);
    EXPECT_EQ(model.GetTo(), to);
    EXPECT_EQ(model.GetStart(), start);
    EXPECT_EQ(model.GetMinScrollDistance(), distance);
    model.SetStart(6.5);
    EXPECT_EQ(model.GetStart(), 6.5);
    model.SetMeasure({2.0, 5});
    EXPECT_EQ(model.GetMeasure(), std::pair(2.0, 5));
}

TEST(ScrollModel, HorizontalOneForwardsToItsAxis) {
    Horizontal model;
    ExpectForwarding(model, -3.0, 12.5, 1.0, 4);
    EXPECT_EQ(model.start, 6.5);
    EXPECT_EQ(model.measure, std::pair(2.0, 5));
}

TEST(ScrollModel, VerticalOneForwardsToItsAxis) {
    Vertical model;
    ExpectForwarding(model, -5.0, 7.5, 2.0, 6);
    EXPECT_EQ(model.start, 6.5);
    EXPECT_EQ(model.measure, std::pair(2.0, 5));
}

TEST(ScrollModel, VerticalOneForwardsItsStepsToo) {
    const Rows rows;
    const IScrollModel& model = rows;
    EXPECT_FALSE(model.IsFixedStepSize());
    EXPECT_EQ(model.GetStepSize(4.0), 8.0);
}

TEST(ScrollModel, OneObjectServesBothAxes) {
    class Both : public Horizontal, public Vertical {};
    Both both;
    static_cast<IHorzSimpleScrollModel&>(both).SetStart(10.0);
    static_cast<IVertSimpleScrollModel&>(both).SetStart(20.0);
    EXPECT_EQ(both.GetHorzStart(), 10.0);
    EXPECT_EQ(both.GetVertStart(), 20.0);
}

// What a converter makes of pixels (7, 8) in a surface, and of (1.5, 2.5) with (10, 20) beside.
struct Converted {
    std::vector<int> start;
    std::vector<double> logical_start;
    std::vector<int> cur;
};

Converted Convert(IPosConverter&& converter) {
    const rectangle<int> r{1, 2, 30, 40};
    std::vector<int> start{7, 8};
    converter.ConvertStart(&start[0], &start[1], r);
    std::vector<double> logical{1.5, 2.5};
    converter.ConvertStart(&logical[0], &logical[1], 10.0, 20.0);
    std::vector<int> cur{7, 8};
    converter.ConvertCur(&cur[0], &cur[1], r);
    return {start, logical, cur};
}

TEST(PosConverter, XBandReachesOverTheWholeHeight) {
    const Converted c = Convert(CXPosConverter());
    EXPECT_EQ(c.start, (std::vector{7, 2}));
    EXPECT_EQ(c.logical_start, (std::vector{1.5, 20.0}));
    EXPECT_EQ(c.cur, (std::vector{7, 40}));
}

TEST(PosConverter, YBandReachesOverTheWholeWidth) {
    const Converted c = Convert(CYPosConverter());
    EXPECT_EQ(c.start, (std::vector{1, 8}));
    EXPECT_EQ(c.logical_start, (std::vector{10.0, 2.5}));
    EXPECT_EQ(c.cur, (std::vector{30, 8}));
}

TEST(PosConverter, BothAxesAreLeftAsTheyAre) {
    const Converted c = Convert(CBothPosConverter());
    EXPECT_EQ(c.start, (std::vector{7, 8}));
    EXPECT_EQ(c.logical_start, (std::vector{1.5, 2.5}));
    EXPECT_EQ(c.cur, (std::vector{7, 8}));
}

}  // namespace
}  // namespace nodeline::test

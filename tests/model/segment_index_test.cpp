// The index behind edge hit tests: its answers against those of a walk over all routes, which the
// first query after a change makes, and how few segments it looks at.
#include <gtest/gtest.h>
#include <nodeline/model/graph.h>
#include <nodeline/model/internal/segment_index.h>
#include <support/ids.h>
#include <support/random.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

namespace nodeline::test {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// So many equal segments have a part of the index to themselves, which is as narrow as one.
constexpr int kAlone = 16;

using Points = std::vector<point<double>>;

// A graph of edges whose routes a test draws, and queries about them.
class Drawing {
public:
    // A route through the given stretches: from within a box to the root, and into another box.
    void Draw(const std::array<Points, 3>& stretches) {
        Edge edge = inner_a_.LinkTo(inner_b_);
        const std::array<Node, 3> owners{a_, root_, b_};
        for (std::size_t i = 0; i < owners.size(); ++i) {
            const Points& points = stretches[i];
            edge.AddBreakNodesIn(owners[i], static_cast<int>(points.size()));
            const NodeSet bends = edge.GetBreakNodesIn(owners[i]);
            for (int k = 0; k < bends.GetCount(); ++k) {
                Node(bends.GetItem(k)).SetPosition(points[static_cast<std::size_t>(k)]);
            }
        }
    }
    void Draw(const Points& points) { Draw({Points{}, points, Points{}}); }

    void Ask(const rectangle<double>& r) { queries_.push_back(r); }

    // Fails where the walk and the index answer differently, or if all answers are alike.
    void Compare() {
        std::vector<std::vector<int>> walked;
        for (const rectangle<double>& r : queries_) {
            root_.SetPosition(root_.GetPosition());
            walked.push_back(answer(r));
        }
        root_.SetPosition(root_.GetPosition());
        static_cast<void>(answer(queries_.front()));
        for (std::size_t i = 0; i < queries_.size(); ++i) {
            const rectangle<double>& r = queries_[i];
            EXPECT_EQ(answer(r), walked[i])
                << "for " << r.left << ' ' << r.top << ' ' << r.right << ' ' << r.bottom;
        }
        const auto [least, most] =
            std::minmax_element(walked.begin(), walked.end(),
                                [](const auto& x, const auto& y) { return x.size() < y.size(); });
        EXPECT_LT(least->size(), most->size());
    }

private:
    [[nodiscard]] std::vector<int> answer(const rectangle<double>& r) const {
        return Ids(graph_->HitEdgeTest(r.left, r.top, r.right, r.bottom));
    }

    graph_ptr2<Graph> graph_{new Graph(), true};
    Node root_ = graph_->GetRoot();
    Node a_ = root_.AddNode();
    Node b_ = root_.AddNode();
    Node inner_a_ = a_.AddNode();
    Node inner_b_ = b_.AddNode();
    std::vector<rectangle<double>> queries_;
};

// Points, strips, and rectangles of all sizes, some turned round, in an area.
void AskAllOver(Drawing& drawing, Random& random, const size<double>& area) {
    for (int i = 0; i < 300; ++i) {
        const double x = random.Real(-0.1, 1.1) * area.cx;
        const double y = random.Real(-0.1, 1.1) * area.cy;
        const double w = random.OneIn(3) ? 0.0 : random.Unit() * random.Unit() * area.cx;
        const double h = random.OneIn(3) ? 0.0 : random.Unit() * random.Unit() * area.cy;
        drawing.Ask({x, y, x + w, y + h});
        if (random.OneIn(10)) drawing.Ask({x + w, y, x, y + h});
        if (random.OneIn(10)) drawing.Ask({x, y + h, x + w, y});
    }
}

TEST(SegmentIndex, FindsWhatAWalkFindsAmongSteepEdgesBetweenLevels) {
    Random random(1);
    Drawing drawing;
    for (int i = 0; i < 300; ++i) {
        Points points;
        const int first = random.Below(8);
        const int last = random.Between(first, 7);
        for (int level = first; level <= last; ++level) {
            const double y = random.Real(0.0, 1e5);
            points.push_back({100.0 * level, y});
            points.push_back({100.0 * level + 60.0, y});
        }
        drawing.Draw(points);
    }
    AskAllOver(drawing, random, {900.0, 1e5});
    for (int i = 0; i < 300; ++i) {
        const double x = random.Real(0.0, 900.0);
        const double y = random.Real(0.0, 1e5);
        drawing.Ask({x, y, x + 16.0, y + 1000.0});
    }
    drawing.Compare();
}

TEST(SegmentIndex, FindsWhatAWalkFindsAmongEdgesInAnyDirection) {
    Random random(2);
    Drawing drawing;
    for (int i = 0; i < 200; ++i) {
        Points points;
        for (int k = random.Between(0, 6); k >= 0; --k) {
            const bool is_near = !points.empty() && random.OneIn(2);
            const point<double> from = is_near ? points.back() : point<double>{500.0, 500.0};
            const double reach = is_near ? 20.0 : 500.0;
            points.push_back(
                {from.x + random.Real(-reach, reach), from.y + random.Real(-reach, reach)});
        }
        drawing.Draw(points);
    }
    AskAllOver(drawing, random, {1000.0, 1000.0});
    drawing.Compare();
}

TEST(SegmentIndex, FindsTheSegmentsFromOneOwnerToTheNext) {
    Random random(3);
    Drawing drawing;
    for (int i = 0; i < 100; ++i) {
        std::array<Points, 3> stretches;
        for (Points& points : stretches) {
            for (int k = random.Below(3); k > 0; --k) {
                points.push_back({random.Real(0.0, 1000.0), random.Real(0.0, 1000.0)});
            }
        }
        drawing.Draw(stretches);
    }
    AskAllOver(drawing, random, {1000.0, 1000.0});
    drawing.Compare();
}

// Where a corner of the query lies on a segment, rounding decides, and must decide alike.
TEST(SegmentIndex, LeavesWhatTouchesToTheExactTest) {
    Random random(4);
    for (const double far : {0.0, 1e9, -1e15}) {
        for (const double unit : {1.0, 1e-6, 1e6}) {
            Drawing drawing;
            for (int i = 0; i < 30; ++i) {
                const point<double> a{far + unit * random.Real(0.0, 10.0),
                                      far + unit * random.Real(0.0, 1000.0)};
                const point<double> b{far + unit * random.Real(10.0, 20.0),
                                      far + unit * random.Real(0.0, 1000.0)};
                const Points points = random.OneIn(2) ? Points{a, b} : Points{b, a};
                for (int copy = 0; copy < kAlone; ++copy) drawing.Draw(points);
                for (int k = 0; k < 5; ++k) {
                    const double part = k == 0 ? 0.0 : random.Unit();
                    const double x = a.x + part * (b.x - a.x);
                    const double y = a.y + part * (b.y - a.y);
                    const double side = unit * random.Real(0.1, 3.0);
                    drawing.Ask({x, y, x + side, y + side});
                    drawing.Ask({x - side, y, x, y + side});
                    drawing.Ask({x, y - side, x + side, y});
                    drawing.Ask({x - side, y - side, x, y});
                    drawing.Ask({x, y, x, y});
                }
            }
            drawing.Ask({-kInfinity, -kInfinity, kInfinity, kInfinity});
            drawing.Ask({1e20, 1e20, 2e20, 2e20});
            drawing.Compare();
        }
    }
}

TEST(SegmentIndex, AnswersLikeAWalkWhereNumbersAreExtreme) {
    Random random(5);
    const std::vector<double> numbers{0.0,    -0.0,   1.0,   -1.0,     10.0,      5e-324,
                                      1e-300, -1e300, 1e308, -1.7e308, kInfinity, -kInfinity,
                                      kNaN,   2.0,    3.0,   4.0,      1e-9,      1e154};
    Drawing drawing;
    for (int i = 0; i < 150; ++i) {
        Points points{{random.Of(numbers), random.Of(numbers)}};
        for (int k = random.Between(0, 2); k >= 0; --k) {
            points.push_back({random.Of(numbers), random.Of(numbers)});
        }
        for (int copy = 0; copy < kAlone; ++copy) drawing.Draw(points);
    }
    for (int i = 0; i < 1000; ++i) {
        drawing.Ask(
            {random.Of(numbers), random.Of(numbers), random.Of(numbers), random.Of(numbers)});
    }
    drawing.Compare();
}

TEST(SegmentIndex, LooksAtFewOfManySegmentsThatCrossTheSameGap) {
    Random random(6);
    constexpr int kCount = 20000;
    std::vector<std::array<point<double>, 2>> places;
    for (int i = 0; i < kCount; ++i) {
        places.push_back({point<double>{0.0, random.Real(0.0, 1e6)},
                          point<double>{50.0, random.Real(0.0, 1e6)}});
        if (random.OneIn(2)) std::swap(places.back()[0], places.back()[1]);
    }
    std::vector<internal::RouteSegment> segments;
    for (const auto& ends : places) {
        segments.push_back({ends.data(), static_cast<std::int32_t>(segments.size())});
    }
    internal::SegmentIndex index;
    index.Build(segments);
    std::vector<internal::SegmentIndex::Run> found;
    index.Query({20.0, 5e5, 21.0, 5e5 + 100.0}, found);
    std::ptrdiff_t count = 0;
    for (const auto& [begin, end] : found) count += end - begin;
    EXPECT_GT(count, 0);
    EXPECT_LT(count, kCount / 5);

    index.Build({});
    found.clear();
    index.Query({20.0, 5e5, 21.0, 5e5 + 100.0}, found);
    EXPECT_TRUE(found.empty());
}

}  // namespace
}  // namespace nodeline::test

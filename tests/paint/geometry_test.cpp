#include <gtest/gtest.h>

#include <paintcore/geometry.h>

#include <limits>
#include <type_traits>

using paintcore::point;
using paintcore::rectangle;
using paintcore::size;

static_assert(std::is_aggregate_v<point<double>>);
static_assert(std::is_aggregate_v<size<double>>);
static_assert(std::is_aggregate_v<rectangle<double>>);
static_assert(std::is_trivially_copyable_v<rectangle<int>>);

TEST(Geometry, ValuesAreZeroUnlessTold) {
    EXPECT_EQ(point<double>(), (point<double>{0.0, 0.0}));
    EXPECT_EQ(size<int>(), (size<int>{0, 0}));
    EXPECT_EQ(rectangle<double>(), (rectangle<double>{0.0, 0.0, 0.0, 0.0}));
}

TEST(Geometry, PointsAddSubtractAndNegate) {
    const point<double> a{1.5, -2.0};
    const point<double> b{0.25, 4.0};
    EXPECT_EQ(a + b, (point<double>{1.75, 2.0}));
    EXPECT_EQ(a - b, (point<double>{1.25, -6.0}));
    EXPECT_EQ(-a, (point<double>{-1.5, 2.0}));

    point<int> c{1, 2};
    c += {10, 20};
    EXPECT_EQ(c, (point<int>{11, 22}));
    c -= {1, 2};
    EXPECT_EQ(c, (point<int>{10, 20}));
}

TEST(Geometry, PointsOfSmallTypesStaySmall) {
    const point<short> sum = point<short>{3, 4} + point<short>{1, 1};
    EXPECT_EQ(sum, (point<short>{4, 5}));
}

TEST(Geometry, EqualityLooksAtEveryField) {
    EXPECT_FALSE((point<int>{1, 2}) == (point<int>{1, 3}));
    EXPECT_FALSE((size<int>{1, 2}) == (size<int>{2, 2}));
    const rectangle<int> r{1, 2, 3, 4};
    EXPECT_FALSE(r == (rectangle<int>{0, 2, 3, 4}));
    EXPECT_FALSE(r == (rectangle<int>{1, 0, 3, 4}));
    EXPECT_FALSE(r == (rectangle<int>{1, 2, 0, 4}));
    EXPECT_FALSE(r == (rectangle<int>{1, 2, 3, 0}));
    EXPECT_TRUE(r == (rectangle<int>{1, 2, 3, 4}));
}

TEST(Geometry, EqualityIsThatOfTheNumbers) {
    EXPECT_TRUE((point<double>{0.0, 1.0}) == (point<double>{-0.0, 1.0}));
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE((point<double>{nan, 0.0}) == (point<double>{nan, 0.0}));
}

TEST(Geometry, RectanglesKeepTheirCornersUnsorted) {
    const rectangle<double> r{10.0, 20.0, 5.0, 0.0};
    EXPECT_EQ(r.left, 10.0);
    EXPECT_EQ(r.right, 5.0);
}

#include <gtest/gtest.h>

#include <paintcore/number_text.h>

#include <cmath>
#include <limits>
#include <string>

using paintcore::AppendNumber;
using paintcore::NumberText;

TEST(NumberText, IsTheShortestThatReadsBackAsTheSameNumber) {
    EXPECT_EQ(NumberText(12.0), "12");
    EXPECT_EQ(NumberText(0.1), "0.1");
    EXPECT_EQ(NumberText(-2.5), "-2.5");
    EXPECT_EQ(NumberText(1.0 / 3.0), "0.3333333333333333");
    EXPECT_EQ(NumberText(0.1 + 0.2), "0.30000000000000004");
    EXPECT_EQ(NumberText(-0.0), "-0");
}

TEST(NumberText, HasRoomForTheLongestNumbers) {
    for (const double value :
         {std::numeric_limits<double>::lowest(), -std::numeric_limits<double>::min(),
          -std::numeric_limits<double>::denorm_min(), -1.7976931348623157e308}) {
        EXPECT_EQ(std::strtod(NumberText(value).c_str(), nullptr), value);
    }
}

TEST(NumberText, AppendsToWhatStands) {
    std::string line = "x ";
    AppendNumber(line, 7.25);
    EXPECT_EQ(line, "x 7.25");
}

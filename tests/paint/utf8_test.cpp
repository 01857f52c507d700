#include <gtest/gtest.h>

#include <paintcore/utf8.h>

#include <string>
#include <string_view>
#include <vector>

using paintcore::AppendCodePoint;
using paintcore::CountCodePoints;
using paintcore::FirstBytes;
using paintcore::TakeCodePoint;

namespace {

std::vector<char32_t> Decode(std::string_view text) {
    std::vector<char32_t> code_points;
    while (!text.empty()) code_points.push_back(TakeCodePoint(text));
    return code_points;
}

using CodePoints = std::vector<char32_t>;
constexpr char32_t kBad = paintcore::kReplacementCharacter;

}  // namespace

TEST(Utf8, ReadsOneToFourBytes) {
    EXPECT_EQ(Decode("a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"),
              (CodePoints{U'a', 0xE9, 0x20AC, 0x1F600}));
}

TEST(Utf8, ReadsTheEndsOfEachRange) {
    EXPECT_EQ(
        Decode("\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"),
        (CodePoints{0x7F, 0x80, 0x7FF, 0x800, 0xFFFF, 0x10000, 0x10FFFF}));
    EXPECT_EQ(Decode("\xED\x9F\xBF\xEE\x80\x80"), (CodePoints{0xD7FF, 0xE000}));
}

TEST(Utf8, ZeroBytesAreCodePointsLikeOthers) {
    EXPECT_EQ(Decode(std::string_view("a\0b", 3)), (CodePoints{U'a', 0, U'b'}));
}

TEST(Utf8, BytesThatBeginNothingAreReplacedOneByOne) {
    EXPECT_EQ(Decode("\x80\xBF"), (CodePoints{kBad, kBad}));
    EXPECT_EQ(Decode("\xC0\xAF"), (CodePoints{kBad, kBad}));
    EXPECT_EQ(Decode("\xF5\xFE\xFF"), (CodePoints{kBad, kBad, kBad}));
}

TEST(Utf8, SequencesThatBreakOffAreReplacedAsAWhole) {
    EXPECT_EQ(Decode("\xE2\x82"), (CodePoints{kBad}));
    EXPECT_EQ(Decode("\xF0\x9F\x98"), (CodePoints{kBad}));
    EXPECT_EQ(Decode("\xC3"), (CodePoints{kBad}));
    EXPECT_EQ(Decode("\xE2\x82z"), (CodePoints{kBad, U'z'}));
    EXPECT_EQ(Decode("\xE2\xC3\xA9"), (CodePoints{kBad, 0xE9}));
}

TEST(Utf8, OverlongFormsSurrogatesAndWhatLiesBeyondAreReplaced) {
    EXPECT_EQ(Decode("\xE0\x80\x80"), (CodePoints{kBad, kBad, kBad}));
    EXPECT_EQ(Decode("\xED\xA0\x80"), (CodePoints{kBad, kBad, kBad}));
    EXPECT_EQ(Decode("\xF0\x80\x80\x80"), (CodePoints{kBad, kBad, kBad, kBad}));
    EXPECT_EQ(Decode("\xF4\x90\x80\x80"), (CodePoints{kBad, kBad, kBad, kBad}));
}

TEST(Utf8, CountingCountsWhatTakingGives) {
    EXPECT_EQ(CountCodePoints(""), 0U);
    EXPECT_EQ(CountCodePoints("na\xC3\xAFve"), 5U);
    EXPECT_EQ(CountCodePoints("\x80\xE2\x82"), 2U);
}

TEST(Utf8, EveryCodePointSurvivesWritingAndReading) {
    for (char32_t c = 0; c <= 0x10FFFF; c += 0x0D) {
        if (c >= 0xD800 && c <= 0xDFFF) continue;
        std::string text;
        AppendCodePoint(text, c);
        EXPECT_EQ(Decode(text), CodePoints{c});
    }
}

TEST(Utf8, WhatHasNoEncodingIsWrittenAsReplacement) {
    std::string text;
    AppendCodePoint(text, 0xD800);
    AppendCodePoint(text, 0x110000);
    EXPECT_EQ(text, "\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(Utf8, FirstBytesOfAMinusLengthAreAll) {
    EXPECT_EQ(FirstBytes("abc", -1), "abc");
    EXPECT_EQ(FirstBytes("abc", 2), "ab");
    EXPECT_EQ(FirstBytes("abc", 0), "");
    EXPECT_EQ(FirstBytes("abc", 99), "abc");
}

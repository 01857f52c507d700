#include <nodeline/ops/internal/load_fields.h>

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace nodeline::internal {
namespace {

constexpr int kUntouched = -77;

// Three reads from one text, as a stream does them.
std::vector<int> ReadByStream(const std::string& text) {
    std::vector<int> values(3, kUntouched);
    std::istringstream in(text);
    in >> values[0] >> values[1] >> values[2];
    return values;
}

std::vector<int> ReadByReader(const std::string& text) {
    std::vector<int> values(3, kUntouched);
    IntReader reader(text);
    for (int& value : values) reader.Read(value);
    return values;
}

TEST(IntReader, ReadsLikeAStreamWhatPeopleWrite) {
    for (const char* text : {"",
                             " ",
                             "\t\v\f\r\n",
                             "7",
                             "7 3",
                             " 7  3\t5 9",
                             "-1",
                             "+5",
                             "-",
                             "+",
                             "- 5",
                             "+ 5",
                             "--5",
                             "007",
                             "0x10",
                             "1.5 2",
                             "1e3",
                             "7,3",
                             "7abc 3",
                             "abc 3",
                             "3 abc 4",
                             "-0",
                             "99-5",
                             "5+6+7",
                             "2147483647",
                             "2147483648",
                             "-2147483648",
                             "-2147483649 4",
                             "99999999999999999999 1",
                             "-99999999999999999999999999999999999999999999",
                             "1 99999999999 3",
                             "000000000000000001 2",
                             "\xc2\xa0"
                             "5",
                             "5\xff 6"}) {
        EXPECT_EQ(ReadByReader(text), ReadByStream(text)) << '"' << text << '"';
    }
    const std::string with_nul("4\0 5", 4);
    EXPECT_EQ(ReadByReader(with_nul), ReadByStream(with_nul));
}

TEST(IntReader, ReadsLikeAStreamAnyMixOfSuchCharacters) {
    std::mt19937 random(20240607);
    const std::string characters = "0123456789 00112  \t\r\v+-+-x.\"\xc3";
    std::uniform_int_distribution<std::size_t> pick(0, characters.size() - 1);
    std::uniform_int_distribution<int> length(0, 24);
    for (int i = 0; i < 100000; ++i) {
        std::string text;
        for (int n = length(random); n > 0; --n) text += characters[pick(random)];
        ASSERT_EQ(ReadByReader(text), ReadByStream(text)) << '"' << text << '"';
    }
}

TEST(IntReader, ReadsLikeAStreamNumbersAroundTheLimitsOfInt) {
    for (const long long limit : {static_cast<long long>(std::numeric_limits<int>::max()),
                                  static_cast<long long>(std::numeric_limits<int>::min())}) {
        for (long long value = limit - 25; value <= limit + 25; ++value) {
            const std::string text = std::to_string(value) + " 8";
            ASSERT_EQ(ReadByReader(text), ReadByStream(text)) << text;
        }
    }
}

TEST(IntReader, TellsNumbersBeyondInt) {
    int value = 0;
    IntReader fits("2147483647");
    fits.Read(value);
    EXPECT_FALSE(fits.is_out_of_range());
    IntReader too_large("2147483648");
    too_large.Read(value);
    EXPECT_TRUE(too_large.is_out_of_range());
    EXPECT_EQ(value, std::numeric_limits<int>::max());
}

TEST(NodeLine, HasIdCaptionAndOwner) {
    const NodeLine line("  12 \"parser\" 4 7 trailing");
    EXPECT_EQ(line.id, 12);
    EXPECT_EQ(line.caption, "parser");
    EXPECT_EQ(line.owner, 7);
}

TEST(NodeLine, KeepsInnerQuotes) {
    const NodeLine line("3 \"a \"b\" c\" 0 5");
    EXPECT_EQ(line.caption, "a \"b\" c");
    EXPECT_EQ(line.owner, 5);
}

TEST(NodeLine, WithoutQuotesIsItsOwnCaptionAndReadFromTheStartTwice) {
    const NodeLine line("7 3");
    EXPECT_EQ(line.id, 7);
    EXPECT_EQ(line.caption, "7 3");
    EXPECT_EQ(line.owner, 3);
}

TEST(NodeLine, WithOneQuoteTakesTheRestAsCaptionAndAsNumbers) {
    const NodeLine line("7 \" 0 3");
    EXPECT_EQ(line.id, 7);
    EXPECT_EQ(line.caption, " 0 3");
    EXPECT_EQ(line.owner, 3);
}

TEST(NodeLine, MayEndWithItsOnlyQuote) {
    const NodeLine line("7 \"");
    EXPECT_EQ(line.id, 7);
    EXPECT_EQ(line.caption, "");
    EXPECT_EQ(line.owner, -1);
}

TEST(NodeLine, MayHaveAnEmptyCaption) {
    const NodeLine line("7 \"\" 0 1");
    EXPECT_EQ(line.caption, "");
    EXPECT_EQ(line.owner, 1);
}

TEST(NodeLine, WithoutANumberHasNoId) {
    EXPECT_EQ(NodeLine("").id, -1);
    EXPECT_EQ(NodeLine("   ").id, -1);
    EXPECT_EQ(NodeLine("\"caption\" 0 0").id, -1);
}

TEST(NodeLine, WithTextInThePlaceOfANumberReadsZero) {
    EXPECT_EQ(NodeLine("x \"caption\" 0 0").id, 0);
    const NodeLine line("1 \"caption\" x 5");
    EXPECT_EQ(line.owner, -1) << "after the failure nothing is read";
}

TEST(EdgeLine, HasEndsAndCaption) {
    const EdgeLine line("3 2 \"next \"token\"\" 9");
    EXPECT_EQ(line.from, 3);
    EXPECT_EQ(line.to, 2);
    EXPECT_EQ(line.caption, "next \"token\"");
}

TEST(EdgeLine, WithoutQuotesIsItsOwnCaption) {
    const EdgeLine line("3 2");
    EXPECT_EQ(line.from, 3);
    EXPECT_EQ(line.to, 2);
    EXPECT_EQ(line.caption, "3 2");
}

TEST(EdgeLine, WithoutASecondNumberHasNoTarget) {
    const EdgeLine line("3 \"x\" 2");
    EXPECT_EQ(line.from, 3);
    EXPECT_EQ(line.to, -1);
}

}  // namespace
}  // namespace nodeline::internal

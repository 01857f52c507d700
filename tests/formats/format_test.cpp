#include <formats/format.h>

#include <gtest/gtest.h>

namespace nodeline::formats {
namespace {

TEST(Format, IsFoundByItsName) {
    for (const Format format : {Format::kText, Format::kDot, Format::kGraphml, Format::kJson}) {
        EXPECT_EQ(FindFormat(NameOf(format)), format);
    }
    EXPECT_FALSE(FindFormat("svg").has_value());
    EXPECT_FALSE(FindFormat("").has_value());
}

TEST(Format, GoesByTheEndingInLettersOfEitherCase) {
    EXPECT_EQ(GetFormatByEnding("a.b/c.gv"), Format::kDot);
    EXPECT_EQ(GetFormatByEnding("c.DOT"), Format::kDot);
    EXPECT_EQ(GetFormatByEnding("c.GraphML"), Format::kGraphml);
    EXPECT_EQ(GetFormatByEnding("c.xml"), Format::kGraphml);
    EXPECT_EQ(GetFormatByEnding("c.json"), Format::kJson);
    EXPECT_EQ(GetFormatByEnding("c.txt"), Format::kText);
    EXPECT_FALSE(GetFormatByEnding("txt").has_value());
    EXPECT_FALSE(GetFormatByEnding(".txt").has_value());
    EXPECT_FALSE(GetFormatByEnding("c.svg").has_value());
}

TEST(Format, IsToldByTheContentWhateverTheName) {
    for (const std::string name : {"g", "g.txt", "g.dot", "g.graphml", "g.json"}) {
        EXPECT_EQ(GetFormatOf(name, "title\n[nodes]\n1 \"a\" 0 0\n"), Format::kText) << name;
        EXPECT_EQ(GetFormatOf(name, "digraph { a }"), Format::kDot) << name;
        EXPECT_EQ(GetFormatOf(name, "<?xml version=\"1.0\"?><graphml/>"), Format::kGraphml) << name;
        EXPECT_EQ(GetFormatOf(name, " {\n \"graph\": {}}"), Format::kJson) << name;
    }
}

TEST(Format, DotBeginsBehindCommentsAndInAnyCase) {
    EXPECT_EQ(GetFormatOf("-", "/* { */ // x\n# y\n STRICT /**/ Graph\"g\"{}"), Format::kDot);
    EXPECT_EQ(GetFormatOf("-",
                          "\xEF\xBB\xBF"
                          "graph{}"),
              Format::kDot);
    EXPECT_EQ(GetFormatOf("-", "graphics of mine"), Format::kText);
    EXPECT_EQ(GetFormatOf("-", "/* digraph {}"), Format::kText);
}

TEST(Format, TheNameDecidesWhereTheContentSpeaksForTwoFormats) {
    const std::string both = "digraph {\n[nodes]\n1 \"a\" 0 0\n";
    EXPECT_EQ(GetFormatOf("g.txt", both), Format::kText);
    EXPECT_EQ(GetFormatOf("g.dot", both), Format::kDot);
    EXPECT_EQ(GetFormatOf("g.json", both), Format::kText);
    EXPECT_EQ(GetFormatOf("-", both), Format::kText);
}

TEST(Format, TheNameDecidesWhereTheContentSaysNothing) {
    EXPECT_EQ(GetFormatOf("g.dot", "digrph {}"), Format::kDot);
    EXPECT_EQ(GetFormatOf("g.graphml", ""), Format::kGraphml);
    EXPECT_EQ(GetFormatOf("g.json", "[1, 2]"), Format::kJson);
    EXPECT_EQ(GetFormatOf("g", "noise"), Format::kText);
}

TEST(Format, SpoiltKeywordsOfATextCountAsKeywords) {
    EXPECT_EQ(GetFormatOf("g.dot", "title\r\n[nodes]\r\n1 \"a\" 0 0\r\n"), Format::kText);
    EXPECT_EQ(GetFormatOf("g.dot", "[nodes]\n1"), Format::kDot) << "the first line is a title";
}

}  // namespace
}  // namespace nodeline::formats

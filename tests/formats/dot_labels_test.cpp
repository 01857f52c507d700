#include <formats/dot_labels.h>

#include <gtest/gtest.h>

namespace nodeline::formats {
namespace {

const LabelNames kNames = {"graph", "node", "a->b", "a", "b"};

TEST(DotLabels, EscapesStandForNames) {
    EXPECT_EQ(PlainLabel("\\N in \\G: \\E, \\T, \\H", kNames), "node in graph: a->b, a, b");
    EXPECT_EQ(PlainLabel("\\N\\T", LabelNames()), "NT");
}

TEST(DotLabels, EscapesEndLines) {
    EXPECT_EQ(PlainLabel("one\\ntwo\\lthree\\rfour", kNames), "one\ntwo\nthree\nfour");
    EXPECT_EQ(PlainLabel("one\\ltwo\\l", kNames), "one\ntwo");
    EXPECT_EQ(PlainLabel("one\\n", kNames), "one\n");
}

TEST(DotLabels, OtherEscapesLeaveTheirLetter) {
    EXPECT_EQ(PlainLabel("a\\\\N\\\"b\\x\\", kNames), "a\\N\"bx\\");
}

TEST(DotLabels, EntitiesAreReplaced) {
    EXPECT_EQ(ReplaceEntities("a &amp; b &lt;&gt; &#65;&#x42;&#x1F600;"),
              "a & b <> AB\xF0\x9F\x98\x80");
    EXPECT_EQ(ReplaceEntities("&amp;amp;"), "&amp;") << "once";
    EXPECT_EQ(ReplaceEntities("a & b && &unknown; &#; &#0; &#xD800; &amp"),
              "a & b && &unknown; &#; &#0; \xEF\xBF\xBD &amp");
}

TEST(DotLabels, RecordsAreTheirFields) {
    EXPECT_EQ(PlainRecord("<f0> left|<f1> middle|<f2> right", kNames), "left | middle | right");
    EXPECT_EQ(PlainRecord("{<in>|name|<out>}", kNames), "name");
    EXPECT_EQ(PlainRecord("a\\|b\\{\\<c\\>\\}|two\\nlines  here", kNames),
              "a|b{<c>} | two lines here");
    EXPECT_EQ(PlainRecord("<open", kNames), "");
    EXPECT_EQ(PlainRecord("\\N|\\", kNames), "node | \\");
}

TEST(DotLabels, HtmlIsItsText) {
    EXPECT_EQ(PlainHtml("<B>bold</B>er &amp; <I>x</I>"), "bolder & x");
    EXPECT_EQ(PlainHtml("<TABLE BORDER=\"0\"><TR><TD>a</TD><TD>b<BR/>c</TD></TR></TABLE>"),
              "a b c");
    EXPECT_EQ(PlainHtml("a<!-- <b>not</b> -->b"), "ab");
    EXPECT_EQ(PlainHtml(" \n a\t b "), "a b");
    EXPECT_EQ(PlainHtml("a<unclosed"), "a");
    EXPECT_EQ(PlainHtml("<!-- unclosed"), "");
}

TEST(DotLabels, Latin1BecomesUtf8) { EXPECT_EQ(FromLatin1("a\xe4\xff"), "a\xc3\xa4\xc3\xbf"); }

}  // namespace
}  // namespace nodeline::formats

#include <formats/read_file.h>

#include <gtest/gtest.h>

#include <array>

namespace nodeline::formats {
namespace {

constexpr std::array<Format, 4> kFormats = {Format::kText, Format::kDot, Format::kGraphml,
                                            Format::kJson};

// A caption of a node, of an owner and of an edge, written and read again.
class Captions : public testing::Test {
protected:
    void Write(const std::string& caption, Format format) {
        graph_ptr2<Graph> graph(new Graph, true);
        Node owner = graph->GetRoot().AddNode();
        Node node = owner.AddNode();
        owner.SetCaption(caption);
        node.SetCaption(caption);
        owner.LinkTo(node).SetCaption(caption);
        const WrittenGraph written = WriteGraph(graph, "out", format, {});
        warnings = written.warnings;
        const ReadFile again(written.text, "again", {.format = format});
        EXPECT_TRUE(again.is_read) << NameOf(format) << ": " << again.error;
        EXPECT_TRUE(again.report.warnings.empty()) << NameOf(format);
        if (again.Nodes().size() != 2) return;
        captions = {again.Nodes()[0].GetCaption(), again.Nodes()[1].GetCaption(),
                    again.Nodes()[0].GetEdgesOut().GetItem(0).GetCaption()};
    }

    void ExpectKept(const std::string& caption, Format format) {
        Write(caption, format);
        EXPECT_EQ(captions, (std::vector<std::string>{caption, caption, caption}))
            << NameOf(format);
        EXPECT_TRUE(warnings.empty()) << NameOf(format) << ": " << warnings.front();
    }

    void ExpectReplaced(const std::string& caption, const std::string& other, Format format,
                        const std::string& warning) {
        Write(caption, format);
        EXPECT_EQ(captions, (std::vector<std::string>{other, other, other})) << NameOf(format);
        EXPECT_EQ(warnings, std::vector<std::string>{"out: warning: 3 captions " + warning});
    }

    std::vector<std::string> warnings;
    std::vector<std::string> captions;
};

TEST_F(Captions, KeepMarkupCharacters) {
    for (const Format format : kFormats) {
        for (const char* caption :
             {"",    " ",       "  a  ",      "\"",  "\"\"\"",    "a\"b",     "'",  "<b>&amp;</b>",
              "&",   "&lt;",    "&#65;",      "]]>", "<![CDATA[", "<!-- -->", "\\", "\\\\",
              "\\N", "\\n",     "ends in \\", "{|}", "//",        "/*",       "#",  "[nodes]",
              "1 2", "\\G \\l", "%3",         "-->", "=;,",       "0",        "\t"}) {
            ExpectKept(caption, format);
        }
    }
}

TEST_F(Captions, KeepScriptsOfAllKinds) {
    for (const Format format : kFormats) {
        ExpectKept(
            "gr\xc3\xb6\xc3\x9f"
            "e \xe6\x97\xa5\xe6\x9c\xac",
            format);
        ExpectKept("\xd7\xa9\xd7\x9c\xd7\x95\xd7\x9d \xe2\x80\x8f \xd8\xb9\xd8\xb1\xd8\xa8\xd9\x8a",
                   format);
        ExpectKept("\xf0\x9f\x91\xa9\xe2\x80\x8d\xf0\x9f\x9a\x80 \xf0\x9f\x8e\x89", format);
        ExpectKept("\xef\xbb\xbf mark", format);
    }
}

TEST_F(Captions, KeepAHundredThousandCharacters) {
    std::string caption;
    while (caption.size() < 100000) caption += "0123456789 \"<&\\>";
    for (const Format format : kFormats) ExpectKept(caption, format);
}

TEST_F(Captions, KeepLineFeedsWhereTheFormatDoes) {
    for (const Format format : {Format::kDot, Format::kGraphml, Format::kJson}) {
        for (const char* caption : {"a\nb", "\n", "a\n", "\n\na", "a\r\nb\r", "\r"}) {
            ExpectKept(caption, format);
        }
    }
    ExpectReplaced("a\nb", "a b", Format::kText, "with line feeds, written as blanks");
    ExpectKept("a\rb", Format::kText);
}

TEST_F(Captions, KeepControlCharactersWhereTheFormatDoes) {
    std::string controls;
    for (char c = 1; c < 32; ++c) controls += c == '\n' ? '\t' : c;
    controls += "\x7f\xc2\x80\xc2\x9f";
    ExpectKept(controls, Format::kText);
    ExpectKept(controls, Format::kDot);
    ExpectKept(controls, Format::kJson);
    ExpectReplaced(
        "a\x01"
        "b\x1f",
        "a\xef\xbf\xbd"
        "b\xef\xbf\xbd",
        Format::kGraphml, "with characters that XML cannot hold, replaced");
    ExpectReplaced("\xef\xbf\xbe", "\xef\xbf\xbd", Format::kGraphml,
                   "with characters that XML cannot hold, replaced");
}

TEST_F(Captions, KeepZerosWhereTheFormatDoes) {
    const std::string caption("a\0b", 3);
    ExpectKept(caption, Format::kText);
    ExpectKept(caption, Format::kJson);
    ExpectReplaced(caption,
                   "a\xef\xbf\xbd"
                   "b",
                   Format::kDot, "with bytes of the value 0, replaced");
    ExpectReplaced(caption,
                   "a\xef\xbf\xbd"
                   "b",
                   Format::kGraphml, "with characters that XML cannot hold, replaced");
}

TEST_F(Captions, KeepBrokenUtf8WhereTheFormatDoes) {
    ExpectKept("a\xff\xc3", Format::kText);
    ExpectKept("a\xff\xc3", Format::kDot);
    ExpectReplaced("a\xff", "a\xef\xbf\xbd", Format::kJson,
                   "with bytes that are no UTF-8, replaced");
    ExpectReplaced("a\xff", "a\xef\xbf\xbd", Format::kGraphml,
                   "with characters that XML cannot hold, replaced");
}

}  // namespace
}  // namespace nodeline::formats

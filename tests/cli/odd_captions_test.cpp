#include <cli/pictures.h>
#include <cli/program.h>
#include <paintcore/utf8.h>
#include <support/fonts/test_fonts.h>
#include <support/xml.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

using nlohmann::json;
using test_support::ProgramResult;
using test_support::XmlReader;

struct OddCaption {
    std::string caption;
    // What an SVG has.
    std::string shown;
    // What is read out of a PDF, without blanks; nothing where the font has no letters for it.
    std::string read;
};

OddCaption Unchanged(const std::string& caption) { return {caption, caption, caption}; }
OddCaption NotInTheFont(const std::string& caption) { return {caption, caption, ""}; }

std::string WithoutBlanksAndMarks(std::string_view text) {
    std::string rest;
    while (!text.empty()) {
        const char32_t c = paintcore::TakeCodePoint(text);
        const bool is_mark = (c >= 0x200e && c <= 0x200f) || (c >= 0x202a && c <= 0x202e) ||
                             (c >= 0x2066 && c <= 0x2069);
        if (c > ' ' && !is_mark) paintcore::AppendCodePoint(rest, c);
    }
    return rest;
}

const std::string kShalom = "\xd7\xa9\xd7\x9c\xd7\x95\xd7\x9d";
const std::string kArabic = "\xd8\xb9\xd8\xb1\xd8\xa8\xd9\x8a";
const std::string kSmile = "\xf0\x9f\x98\x80";
// What stands for characters that cannot be shown, U+FFFD.
const std::string kGap = "\xef\xbf\xbd";
// Between these two, letters run to the left whatever they are.
const std::string kTurn = "\xe2\x80\xae";
const std::string kTurnBack = "\xe2\x80\xac";
const std::string kByteOrderMark = "\xef\xbb\xbf";
const std::string kNoCharacter = "\xef\xbf\xbe";

std::vector<OddCaption> OddCaptions() {
    std::vector<OddCaption> captions;
    for (const char* markup :
         {"<b>&amp;\"it's\"</b>", "]]></text></svg>", "<!--x-->", "<![CDATA[x]]>", "<?xml?>",
          "&#65;&lt;%s\\n", "(\\)>>BT/F<</", "--><", "</", "&"}) {
        captions.push_back(Unchanged(markup));
    }
    for (const std::string& control :
         {std::string(1, '\0'), std::string("\x01"), std::string("\x1b"), std::string("\x1f"),
          std::string("\x7f"), std::string("\xc2\x80"), std::string("\xc2\x9f"), kNoCharacter}) {
        captions.push_back({"a" + control + "z", "a" + kGap + "z", "a" + kGap + "z"});
    }
    for (const std::string gap : {"\n", "\r", "\t", "\v", "\f", "\xc2\x85", "\xe2\x80\xa8"}) {
        captions.push_back({"a" + gap + "z", "a z", "az"});
    }
    captions.push_back({"  a\r\nz  ", "  a  z  ", "az"});
    captions.push_back({kByteOrderMark + "mark", kByteOrderMark + "mark", "mark"});
    captions.push_back(Unchanged(kShalom));
    captions.push_back(Unchanged(kArabic));
    for (const std::string& mixed : {kShalom + " " + kShalom, "file " + kShalom + ".cpp"}) {
        captions.push_back({mixed, mixed, WithoutBlanksAndMarks(mixed)});
    }
    const std::string turned = kTurn + "abc" + kTurnBack;
    captions.push_back({turned, turned, "cba"});
    captions.push_back(Unchanged("a" + kSmile + "z"));
    captions.push_back(Unchanged("\xc3\xb6\xce\xa9\xd0\xb6"));
    // An astronaut, a flag and ideographs.
    captions.push_back(NotInTheFont("\xf0\x9f\x91\xa9\xe2\x80\x8d\xf0\x9f\x9a\x80"));
    captions.push_back(NotInTheFont("\xf0\x9f\x87\xa9\xf0\x9f\x87\xaa"));
    captions.push_back(NotInTheFont("\xe6\x97\xa5\xe6\x9c\xac"));
    return captions;
}

std::string Repeated(const std::string& text, std::size_t count) {
    std::string all;
    for (std::size_t i = 0; i < count; ++i) all += text;
    return all;
}

// Of 100,000 characters each.
const std::vector<std::string>& LongCaptions() {
    static const std::vector<std::string> captions = {
        Repeated("x", 100000), Repeated("<&>\"", 25000), Repeated(kShalom, 25000),
        Repeated(kSmile, 100000)};
    return captions;
}

// Accents and joiners are no wider however many there are.
const std::vector<std::string>& LongCaptionsWithoutWidth() {
    static const std::vector<std::string> captions = {Repeated("\xcc\x81", 100000),
                                                      Repeated("\xe2\x80\x8d", 100000)};
    return captions;
}

class OddCaptionsInPictures : public test_support::ProgramTest {
protected:
    // A graph in which each caption is that of an owner, of the node in it and of an edge.
    void WriteGraph(const std::vector<std::string>& captions) const {
        json nodes = json::array();
        json edges = json::array();
        for (std::size_t i = 0; i < captions.size(); ++i) {
            const std::string owner = "owner" + std::to_string(i);
            const std::string node = "node" + std::to_string(i);
            nodes.push_back({{"id", owner}, {"label", captions[i]}});
            nodes.push_back(
                {{"id", node}, {"label", captions[i]}, {"metadata", {{"owner", owner}}}});
            edges.push_back({{"source", "node0"}, {"target", node}, {"label", captions[i]}});
        }
        const json graph = {{"graph", {{"nodes", nodes}, {"edges", edges}}}};
        static_cast<void>(Write("g.json", graph.dump()));
    }

    void Render(const std::string& arguments) const {
        const ProgramResult result = RunProgram("render g.json " + arguments);
        EXPECT_EQ(result.status, 0) << arguments;
        EXPECT_EQ(result.err, "") << arguments;
    }

    // All texts of the picture, in their order.
    [[nodiscard]] std::vector<std::string> TextsOfSvg(const std::string& options = "") const {
        Render("-o g.svg " + options);
        const ProgramResult checked = RunInShell("xmllint --huge --noout --nonet g.svg");
        EXPECT_EQ(checked.status, 0);
        EXPECT_EQ(checked.err, "");
        const test_support::XmlElement svg = XmlReader::Read(Read("g.svg"));
        std::vector<std::string> texts;
        for (const test_support::XmlElement* text : svg.FindAll("text")) {
            texts.push_back(text->text);
        }
        return texts;
    }

    // The lines that a reader of PDF finds, from top to bottom, without blanks.
    [[nodiscard]] std::vector<std::string> LinesOfPdf(const std::string& options = "") const {
        Render("-o g.pdf " + options);
        const ProgramResult read = RunInShell("pdftotext -enc UTF-8 g.pdf -");
        EXPECT_EQ(read.status, 0);
        EXPECT_EQ(read.err, "");
        std::vector<std::string> lines;
        std::istringstream rest(read.out);
        for (std::string line; std::getline(rest, line);) {
            line = WithoutBlanksAndMarks(line);
            if (!line.empty()) lines.push_back(line);
        }
        return lines;
    }

    void ExpectPng(const std::string& options = "") const {
        Render("-o g.png " + options);
        const test_support::Surface png = test_support::LoadPicture(folder() / "g.png");
        ASSERT_EQ(cairo_surface_status(png.get()), CAIRO_STATUS_SUCCESS);
        EXPECT_GT(cairo_image_surface_get_width(png.get()), 100);
    }

    void ExpectInLayout(const std::vector<std::string>& captions) const {
        const ProgramResult result = RunProgram("layout g.json");
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.err, "");
        const json layout = json::parse(result.out);
        ASSERT_EQ(layout["nodes"].size(), 2 * captions.size());
        ASSERT_EQ(layout["edges"].size(), captions.size());
        for (std::size_t i = 0; i < captions.size(); ++i) {
            EXPECT_TRUE(layout["nodes"][2 * i]["caption"] == captions[i]) << i;
            EXPECT_TRUE(layout["nodes"][2 * i + 1]["caption"] == captions[i]) << i;
            EXPECT_TRUE(layout["edges"][i]["caption"] == captions[i]) << i;
        }
    }
};

TEST_F(OddCaptionsInPictures, StandInAnSvg) {
    std::vector<std::string> captions;
    std::vector<std::string> shown;
    for (const OddCaption& odd : OddCaptions()) {
        captions.push_back(odd.caption);
        shown.insert(shown.end(), 2, odd.shown);
    }
    WriteGraph(captions);
    EXPECT_EQ(TextsOfSvg("--handler simple"), shown);
}

TEST_F(OddCaptionsInPictures, AreReadInAPdf) {
    for (const OddCaption& odd : OddCaptions()) {
        WriteGraph({odd.caption});
        const std::vector<std::string> lines = LinesOfPdf("--handler simple");
        if (odd.read.empty()) {
            EXPECT_FALSE(lines.empty()) << odd.caption;
        } else {
            EXPECT_EQ(lines, (std::vector<std::string>{odd.read, odd.read}));
        }
    }
}

TEST_F(OddCaptionsInPictures, AreDrawnInAPng) {
    std::vector<std::string> captions;
    for (const OddCaption& odd : OddCaptions()) captions.push_back(odd.caption);
    WriteGraph(captions);
    ExpectPng();
    ExpectPng("--handler simple");
}

TEST_F(OddCaptionsInPictures, AreToldByALayout) {
    std::vector<std::string> captions;
    for (const OddCaption& odd : OddCaptions()) captions.push_back(odd.caption);
    WriteGraph(captions);
    ExpectInLayout(captions);
}

TEST_F(OddCaptionsInPictures, AreShortenedIfTheyAreLong) {
    WriteGraph(LongCaptions());
    // As many characters as count for the width of a node, and three dots at their end.
    const std::vector<std::string> texts = TextsOfSvg("--handler simple");
    ASSERT_EQ(texts.size(), 2 * LongCaptions().size());
    for (std::size_t i = 0; i < texts.size(); ++i) {
        std::string_view shown = texts[i];
        ASSERT_GT(shown.size(), 3U);
        EXPECT_EQ(shown.substr(shown.size() - 3), "...") << i;
        shown.remove_suffix(3);
        EXPECT_EQ(shown, LongCaptions()[i / 2].substr(0, shown.size())) << i;
        EXPECT_GE(paintcore::CountCodePoints(shown), 18U) << i;
        EXPECT_LE(paintcore::CountCodePoints(shown), 24U) << i;
    }
    const std::vector<std::string> lines = LinesOfPdf("--handler simple");
    EXPECT_EQ(std::count(lines.begin(), lines.end(), Repeated("x", 22) + "..."), 2);
    ExpectPng("--handler simple");
    ExpectInLayout(LongCaptions());
}

TEST_F(OddCaptionsInPictures, AreShortenedToBoxesOfOneWidth) {
    WriteGraph(LongCaptions());
    int shortened = 0;
    for (const std::string& text : TextsOfSvg()) {
        const bool has_dots = text.size() > 3 && text.substr(text.size() - 3) == "...";
        EXPECT_TRUE(has_dots || text == "-") << text.substr(0, 100);
        shortened += has_dots ? 1 : 0;
    }
    EXPECT_EQ(shortened, 8);
    EXPECT_FALSE(LinesOfPdf().empty());
    ExpectPng();
}

TEST_F(OddCaptionsInPictures, AreDrawnIfTheyAreLongAndHaveNoWidth) {
    WriteGraph(LongCaptionsWithoutWidth());
    const std::vector<std::string> texts = TextsOfSvg("--handler port");
    for (const std::string& caption : LongCaptionsWithoutWidth()) {
        EXPECT_EQ(std::count(texts.begin(), texts.end(), caption), 2);
    }
    static_cast<void>(LinesOfPdf());
    ExpectPng();
    ExpectInLayout(LongCaptionsWithoutWidth());
}

TEST_F(OddCaptionsInPictures, NeverMakeAPngThatIsTooLargeInSilence) {
    WriteGraph(LongCaptions());
    const ProgramResult result = RunProgram("render g.json -o g.png --scale 200");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err.rfind("g.png: a picture of ", 0), 0U) << result.err;
    EXPECT_NE(result.err.find(" pixels is too large: the most is "), std::string::npos)
        << result.err;
    EXPECT_FALSE(Exists("g.png"));
}

}  // namespace

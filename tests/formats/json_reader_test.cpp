#include <formats/read_file.h>

#include <gtest/gtest.h>

namespace nodeline::formats {
namespace {

TEST(JsonReader, ReadsNodesThatAreAList) {
    const ReadFile file(
        "{\"graph\": {\"directed\": true, \"nodes\": [{\"id\": \"b\"}, {\"id\": 7, \"label\": "
        "\"seven\"}], \"edges\": [{\"source\": 7, \"target\": \"b\", \"label\": \"l\"},\n"
        "{\"source\": \"b\", \"target\": \"7\", \"relation\": \"r\"}]}}");
    EXPECT_EQ(file.report.format, Format::kJson);
    EXPECT_EQ(Tree(file), "b seven");
    EXPECT_EQ(Edges(file), "seven>b:l b>seven:r");
    EXPECT_TRUE(file.report.warnings.empty());
    EXPECT_FALSE(file.report.has_layout);
}

TEST(JsonReader, ReadsNodesByTheirIdsInTheirOrder) {
    const ReadFile file(
        "{\"graph\": {\"nodes\": {\"z\": {\"label\": \"Z\"}, \"a\": {}}, \"edges\": "
        "[{\"source\": \"a\", \"target\": \"z\"}]}}");
    EXPECT_EQ(Tree(file), "Z a");
    EXPECT_EQ(Edges(file), "a>Z");
}

TEST(JsonReader, OwnersStandInTheMetadata) {
    const ReadFile file(
        "{\"graph\": {\"nodes\": {\"c\": {\"metadata\": {\"owner\": \"b\"}}, \"b\": {\"metadata\": "
        "{\"parent\": \"a\"}}, \"a\": {}, \"d\": {\"parent\": \"a\"}, \"e\": {\"owner\": null}}}}");
    EXPECT_EQ(Tree(file), "a{b{c} d} e");
}

TEST(JsonReader, SiblingsKeepTheirOrderWhereOwnersStandBehindWhatTheyOwn) {
    const ReadFile file(
        "{\"graph\": {\"nodes\": {\"a\": {\"metadata\": {\"owner\": \"y\"}}, \"b\": {}, "
        "\"c\": {\"metadata\": {\"owner\": \"x\"}}, \"x\": {}, \"d\": {}, "
        "\"y\": {\"metadata\": {\"owner\": \"z\"}}, \"e\": {\"metadata\": {\"owner\": \"z\"}}, "
        "\"z\": {}}}}");
    EXPECT_EQ(Tree(file), "b x{c} d z{y{a} e}");
}

TEST(JsonReader, OwnersThatOwnEachOtherAreTakenToTheTop) {
    const ReadFile file(
        "{\"graph\": {\"nodes\": [{\"id\": \"a\", \"owner\": \"b\"}, {\"id\": \"b\", \"owner\": "
        "\"a\"}, {\"id\": \"c\", \"owner\": \"c\"}, {\"id\": \"d\", \"owner\": \"c\"}]}}");
    EXPECT_EQ(Tree(file), "b{a} c{d}");
    EXPECT_EQ(
        file.report.warnings,
        std::vector<std::string>{"g: warning: 2 nodes in a circle of owners, taken to the top"});
}

TEST(JsonReader, SeveralGraphsAreAnOwnerEach) {
    const ReadFile file(
        "{\"graphs\": [{\"id\": \"one\", \"nodes\": {\"a\": {}}}, {\"label\": \"second\", "
        "\"nodes\":"
        " [{\"id\": \"a\"}, {\"id\": \"b\", \"owner\": \"a\"}], \"edges\": [{\"source\": \"a\", "
        "\"target\": \"b\"}]}]}");
    EXPECT_EQ(Tree(file), "one{a} second{a{b}}");
    EXPECT_EQ(Edges(file), "a>b");
    EXPECT_EQ(Tree(ReadFile("{\"graphs\": [{\"id\": \"one\", \"nodes\": {\"a\": {}}}]}")), "a");
}

TEST(JsonReader, ReadsColoursAndPens) {
    const ReadFile file(
        "{\"graph\": {\"nodes\": {\"a\": {\"metadata\": {\"fillcolor\": \"red\", \"color\": "
        "\"#000001\", \"fontcolor\": \"nocolour\", \"penwidth\": 2, \"weight\": 3}}}, \"edges\": "
        "[{\"source\": \"a\", \"target\": \"a\", \"metadata\": {\"color\": \"blue\", \"penwidth\": "
        "\"1.5\"}}], \"hyperedges\": []}}");
    const NodeLook look = file.LookOf("a");
    EXPECT_EQ(look.fill, paintcore::_color(255, 0, 0));
    EXPECT_EQ(look.border, paintcore::_color(0, 0, 1));
    EXPECT_EQ(look.pen_width, 2.0);
    ASSERT_EQ(file.report.looks.edges.size(), 1U);
    EXPECT_EQ(file.report.looks.edges.begin()->second.line, paintcore::_color(0, 0, 255));
    EXPECT_EQ(file.report.looks.edges.begin()->second.pen_width, 1.5);
    EXPECT_EQ(file.report.warnings,
              std::vector<std::string>{"g: warning: 2 attributes ignored: hyperedges, weight; 1 "
                                       "colour unknown: nocolour"});
}

TEST(JsonReader, AnIdThatIsTakenCannotBeReferredTo) {
    const ReadFile file(
        "{\"graph\": {\"nodes\": [{\"id\": \"a\", \"label\": \"1\"}, {\"id\": \"a\", \"label\": "
        "\"2\"}], \"edges\": [{\"source\": \"a\", \"target\": \"a\"}]}}");
    EXPECT_EQ(Tree(file), "1 2");
    EXPECT_EQ(Edges(file), "1>1");
    EXPECT_EQ(file.report.warnings,
              std::vector<std::string>{"g: warning: 1 node under an id that is taken"});
}

TEST(JsonReader, ErrorsTellTheirLines) {
    EXPECT_EQ(ReadFile("{\"graph\":\n{\"nodes\": [}\n").error.substr(0, 18), "g:2: syntax error ");
    EXPECT_EQ(ReadFile("{\"graph\":\n").error.substr(0, 18), "g:2: syntax error ");
    EXPECT_EQ(ReadFile("{\"graph\": 1e999}").error.substr(0, 5), "g:1: ");
    EXPECT_EQ(ReadFile("{\"graph\": {\"label\": \"\xff\"}}").error.substr(0, 5), "g:1: ");
    EXPECT_EQ(ReadFile("[]", "g.json").error, "g.json:1: the outermost value is no object");
    EXPECT_EQ(ReadFile("", "g.json").error, "g.json:1: the file is empty");
    EXPECT_EQ(ReadFile("{}").error, "g:1: there is neither \"graph\" nor \"graphs\" nor \"nodes\"");
    EXPECT_EQ(ReadFile("{\"graph\": []}").error, "g:1: \"graph\" is no object");
    EXPECT_EQ(ReadFile("{\"graph\": {\"nodes\": 1}}").error,
              "g:1: \"nodes\" is neither an array nor an object");
    EXPECT_EQ(ReadFile("{\"graph\": {\"nodes\": [\n{}]}}").error, "g:2: a node has no id");
    EXPECT_EQ(ReadFile("{\"graph\": {\"nodes\": [{\"id\":\n[]}]}}").error,
              "g:2: an id is neither a string nor a number");
    EXPECT_EQ(ReadFile("{\"graph\": {\"nodes\": [\n{\"id\": \"a\", \"owner\": \"b\"}]}}").error,
              "g:2: the node \"a\" names \"b\" as its owner, which is not declared");
    EXPECT_EQ(ReadFile("{\"graph\": {\"edges\": [\n\n{\"source\": \"a\"}]}}").error,
              "g:3: an edge names the node \"a\", which is not declared");
    EXPECT_EQ(
        ReadFile("{\"graph\": {\"nodes\": {\"a\": {}}, \"edges\": [{\"source\": \"a\"}]}}").error,
        "g:1: an edge has no target");
    EXPECT_EQ(ReadFile("{\"graph\": {\"nodes\": {\"a\": {\"label\": 1}}}}").error,
              "g:1: \"label\" is no string");
}

TEST(JsonReader, RefusesValuesThatAreNestedTooDeep) {
    const auto nested = [](std::size_t depth) {
        return "{\"graph\": {\"x\":\n" + std::string(depth, '[') + std::string(depth, ']') + "}}";
    };
    EXPECT_TRUE(ReadFile(nested(198)).is_read);
    EXPECT_EQ(ReadFile(nested(199)).error, "g:2: values are nested more than 200 deep");
    EXPECT_FALSE(ReadFile(nested(1000000)).is_read);
}

}  // namespace
}  // namespace nodeline::formats

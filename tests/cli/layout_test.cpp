#include <cli/program.h>
#include <support/fonts/test_fonts.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <set>

namespace {

using nlohmann::json;
using test_support::kNarrowGraph;
using test_support::kSmallGraph;
using test_support::ProgramResult;

class Layout : public test_support::ProgramTest {
protected:
    [[nodiscard]] json LayOut(const std::string& arguments) const {
        const ProgramResult result = RunProgram("layout " + arguments);
        EXPECT_EQ(result.status, 0) << arguments;
        EXPECT_EQ(result.err, "") << arguments;
        return json::parse(result.out);
    }
};

TEST_F(Layout, TellsNodesInFileOrderWithTheirIdsAndOwners) {
    Write("g.txt", kSmallGraph);
    const json layout = LayOut("g.txt");
    const json& nodes = layout["nodes"];
    ASSERT_EQ(nodes.size(), 3U);
    EXPECT_EQ(nodes[0]["id"], 1);
    EXPECT_EQ(nodes[0]["caption"], "parser");
    EXPECT_EQ(nodes[0]["owner"], 0);
    EXPECT_EQ(nodes[0]["hidden"], false);
    EXPECT_EQ(nodes[1]["id"], 2);
    EXPECT_EQ(nodes[1]["owner"], 1);
    EXPECT_EQ(nodes[2]["id"], 30);
}

TEST_F(Layout, TellsEdgesWithTheirRoutes) {
    Write("g.txt", kSmallGraph);
    const json layout = LayOut("g.txt");
    const json& edges = layout["edges"];
    ASSERT_EQ(edges.size(), 2U);
    EXPECT_EQ(edges[0]["from"], 30);
    EXPECT_EQ(edges[0]["to"], 2);
    EXPECT_EQ(edges[0]["caption"], "next token");
    EXPECT_EQ(edges[1]["from"], 2);
    const json& main = layout["nodes"][2];
    const json& start = edges[0]["route"][0];
    EXPECT_EQ(start[0], main["position"][0].get<double>() + main["size"][0].get<double>());
    EXPECT_EQ(edges[0]["route"].back()[0], layout["nodes"][1]["position"][0]);
}

TEST_F(Layout, PutsEveryNodeInsideItsOwnerAndTheRoot) {
    Write("g.txt", kSmallGraph);
    const json layout = LayOut("g.txt");
    const auto inside = [](const json& inner, const json& outer) {
        for (const std::size_t axis : {0U, 1U}) {
            const double start = inner["position"][axis];
            const double outer_start = outer["position"][axis];
            EXPECT_GE(start, outer_start);
            EXPECT_LE(start + inner["size"][axis].get<double>(),
                      outer_start + outer["size"][axis].get<double>());
        }
    };
    const json& nodes = layout["nodes"];
    inside(nodes[0], layout["root"]);
    inside(nodes[1], nodes[0]);
    inside(nodes[2], layout["root"]);
}

TEST_F(Layout, MarksWhatIsHidden) {
    Write("g.txt", kNarrowGraph);
    const json narrow = LayOut("g.txt");
    EXPECT_EQ(narrow["nodes"][2]["hidden"], false);
    EXPECT_EQ(narrow["nodes"][3]["hidden"], true);
    EXPECT_EQ(narrow["edges"][2]["route"], json::array());
    const json all = LayOut("g.txt --all");
    EXPECT_EQ(all["nodes"][3]["hidden"], false);
    EXPECT_GE(all["edges"][2]["route"].size(), 2U);
}

TEST_F(Layout, CountsWhatAHiddenNodeOwnsAsHidden) {
    Write("g.txt",
          "title\n[nodes]\n1 \"Thread\" 0 2\n2 \"process\" 0 0\n3 \"f\" 0 2\n[edges]\n1 3 \"\"\n");
    const json layout = LayOut("g.txt");
    EXPECT_EQ(layout["nodes"][0]["hidden"], true);
    EXPECT_EQ(layout["nodes"][2]["hidden"], true);
    EXPECT_EQ(layout["edges"][0]["route"], json::array());
}

TEST_F(Layout, MeasuresWithTheChosenHandler) {
    Write("g.txt", kSmallGraph);
    const json bare = LayOut("g.txt --handler default");
    EXPECT_EQ(bare["nodes"][2]["size"], (json{10.0, 10.0}));
    const json simple = LayOut("g.txt --handler simple");
    EXPECT_NE(simple["nodes"][2]["size"], (json{10.0, 10.0}));
    EXPECT_EQ(LayOut("g.txt"), simple);
    const json port = LayOut("g.txt --handler port");
    EXPECT_EQ(port["nodes"][1]["size"], port["nodes"][2]["size"]) << "all are equally wide";
    EXPECT_NE(simple["nodes"][1]["size"], simple["nodes"][2]["size"]);
}

TEST_F(Layout, SaysThatItsOutputIsFull) {
    Write("g.txt", kSmallGraph);
    const ProgramResult result = RunProgramInto("/dev/full", "layout g.txt");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "standard output cannot be written\n");
}

TEST_F(Layout, ReadsStandardInput) {
    Write("g.txt", kSmallGraph);
    EXPECT_EQ(RunProgram("layout - <g.txt").out, RunProgram("layout g.txt").out);
}

TEST_F(Layout, OfAGraphWithoutNodesHasEmptyArrays) {
    Write("g.txt", "title\n[nodes]\n");
    const json layout = LayOut("g.txt");
    EXPECT_EQ(layout["nodes"], json::array());
    EXPECT_EQ(layout["edges"], json::array());
    EXPECT_EQ(layout["root"]["position"], (json{0.0, 0.0}));
}

TEST_F(Layout, ReplacesBytesThatAreNoText) {
    Write("g.txt", "title\n[nodes]\n1 \"a\xff\x01\"b\" 0 0\n");
    EXPECT_EQ(LayOut("g.txt")["nodes"][0]["caption"], "a\xef\xbf\xbd\x01\"b");
}

// The keys of an object that the schema describes, all of which it demands.
void ExpectKeys(const json& object, const json& schema) {
    std::set<std::string> present;
    for (const auto& [key, value] : object.items()) present.insert(key);
    EXPECT_EQ(present, schema["required"].get<std::set<std::string>>());
    for (const std::string& key : present) EXPECT_TRUE(schema["properties"].contains(key)) << key;
}

TEST_F(Layout, HasTheKeysOfItsSchema) {
    const json schema = json::parse(test_support::ReadFile(
        std::filesystem::path(NODELINE_EXAMPLES) / "../docs/layout.schema.json"));
    Write("g.txt", kSmallGraph);
    const json layout = LayOut("g.txt");
    ExpectKeys(layout, schema);
    ExpectKeys(layout["root"], schema["properties"]["root"]);
    ExpectKeys(layout["nodes"][0], schema["properties"]["nodes"]["items"]);
    ExpectKeys(layout["edges"][0], schema["properties"]["edges"]["items"]);
}

}  // namespace

#include <golden/script_run.h>

#include <gtest/gtest.h>

#include <string>

namespace nodeline {
namespace {

using test_support::ScriptRun;

void ExpectFault(const std::string& line, const std::string& reason) {
    const ScriptRun run("node 1 0 10 10\nnode 2 0 10 10\nedge 1 1 2\nhit-nodes 0 0 0 0\n" + line +
                        "\nhit-nodes 0 0 0 0\n");
    EXPECT_FALSE(run.is_done) << line;
    EXPECT_EQ(run.error.line, 5) << line;
    EXPECT_EQ(run.error.reason, reason) << line;
    EXPECT_EQ(run.printed, "hit-nodes\n") << line;
}

TEST(Replay, PrintsTheStateOfASmallGraph) {
    const ScriptRun run("node 1 0 100 20\nnode 2 0 60 20\nedge 1 1 2\nrecalc\ndump\n");
    EXPECT_TRUE(run.is_done);
    EXPECT_EQ(run.printed,
              "recalc true\n"
              "node 0 0 0 270 44 0\n"
              "node 1 35 12 100 20 0\n"
              "node 2 175 12 60 20 0\n"
              "chain 1 0 135 22 140 22 170 22 175 22\n"
              "route 1 135 22 140 22 170 22 175 22\n"
              "end\n");
}

TEST(Replay, OfAnEmptyScriptPrintsNothing) {
    const ScriptRun run("");
    EXPECT_TRUE(run.is_done);
    EXPECT_EQ(run.printed, "");
}

TEST(Replay, OfAnEmptyGraphShowsARootOfTenByTen) {
    EXPECT_EQ(ScriptRun("recalc\ndump\n").printed, "recalc true\nnode 0 0 0 10 10 0\nend\n");
    EXPECT_EQ(ScriptRun("size 0 7 8\nrecalc\ndump\n").printed,
              "recalc true\nnode 0 0 0 7 8 0\nend\n");
}

TEST(Replay, SkipsBlankLinesAndComments) {
    const ScriptRun run("\n   \n# recalc\n#\n\t\n  recalc\t \n");
    EXPECT_TRUE(run.is_done);
    EXPECT_EQ(run.printed, "recalc true\n");
}

TEST(Replay, TellsWhetherThereWasAnythingToDo) {
    EXPECT_EQ(ScriptRun("recalc\nrecalc\nupdate 0\nrecalc").printed,
              "recalc true\nrecalc false\nrecalc true\n");
}

TEST(Replay, PrintsNumbersInTheirShortestForm) {
    EXPECT_EQ(ScriptRun("node 1 0 10 10\nmove 1 0.1 -0\nmove 1 0.1 -0.0\ndump\n").printed,
              "node 0 0 0 0 0 0\nnode 1 0.1 0 0 0 0\nend\n");
    EXPECT_EQ(ScriptRun("node 1 0 10 10\nmove 1 1e300 -0.3333333333333333\ndump\n").printed,
              "node 0 0 0 0 0 0\nnode 1 1e+300 -0.3333333333333333 0 0 0\nend\n");
}

TEST(Replay, TakesAnyPositiveNumbersAndPrintsByRisingNumber) {
    const ScriptRun run(
        "node 9000000000 0 1 1\nnode 3 9000000000 1 1\nedge 5 3 9000000000\nedge 2 3 3\ndump\n");
    EXPECT_TRUE(run.is_done);
    EXPECT_EQ(run.printed,
              "node 0 0 0 0 0 0\nnode 3 0 0 0 0 0\nnode 9000000000 0 0 0 0 0\n"
              "route 2\nroute 5\nend\n");
}

TEST(Replay, ShowsConditionsHitsAndNeighbours) {
    const ScriptRun run(
        "node 1 0 10 10\nnode 2 0 10 10\nnode 3 2 10 10\nedge 1 1 3\nedge 2 2 1\nedge 3 3 2\n"
        "hide 2\nshow 2\nmark-drawn\nrecalc\n"
        "children-ex 1\nparents-ex 1\nedges-out-ex 3\nedges-in-ex 3\nhit-nodes 0 0 1000 1000\n"
        "hit-edges 0 0 1000 1000\nhit-edges -2 -2 -1 -1\n");
    ASSERT_TRUE(run.is_done) << run.error.reason;
    EXPECT_EQ(run.printed,
              "recalc true\nchildren-ex 2:1\nparents-ex 2:2\nedges-out-ex 2:3 2:3\n"
              "edges-in-ex 0:1\nhit-nodes 0 1 2 3\nhit-edges 1 2 3\nhit-edges\n");
}

TEST(Replay, RemovesANodeWithItsContentsAndAllTheirEdges) {
    const ScriptRun run(
        "node 1 0 10 10\nnode 2 1 10 10\nnode 3 0 10 10\nedge 1 2 3\nedge 2 3 1\nedge 3 3 3\n"
        "edge 4 2 2\nremove-node 1\ndump\nnode 2 3 10 10\nedge 1 2 3\ndump\n");
    ASSERT_TRUE(run.is_done) << run.error.reason;
    EXPECT_EQ(run.printed,
              "node 0 0 0 0 0 0\nnode 3 0 0 0 0 0\nroute 3\nend\n"
              "node 0 0 0 0 0 0\nnode 2 0 0 0 0 0\nnode 3 0 0 0 0 0\nroute 1\nroute 3\nend\n");
}

TEST(Replay, OfANodeThatOwnsItselfEnds) {
    const ScriptRun run(
        "node 1 0 10 10\nnode 2 1 10 10\nnode 3 0 10 10\nedge 1 2 3\nedge 2 3 2\nowner 1 "
        "1\ndump\n");
    ASSERT_TRUE(run.is_done) << run.error.reason;
    EXPECT_EQ(run.printed,
              "node 0 0 0 0 0 0\nnode 1 0 0 0 0 0\nnode 2 0 0 0 0 0\nnode 3 0 0 0 0 0\n"
              "route 1\nroute 2\nend\n");
}

TEST(Replay, ShowsTheStretchesOfAnEdgeUpAndThenDown) {
    const ScriptRun run(
        "node 1 0 10 10\nnode 2 1 10 10\nnode 3 0 10 10\nnode 4 3 10 10\nedge 1 2 "
        "4\nrecalc\ndump\n");
    std::istringstream lines(run.printed);
    std::string owners;
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind("chain 1 ", 0) == 0) owners += line[8];
    }
    EXPECT_EQ(owners, "103");
}

TEST(Replay, EndsAtAnUnknownCommand) {
    ExpectFault("draw", "there is no command \"draw\"");
    ExpectFault("Recalc", "there is no command \"Recalc\"");
    ExpectFault("recalc\r", "there is no command \"recalc?\"");
}

TEST(Replay, EndsAtAWrongWordCount) {
    ExpectFault("node 3 0 10", "\"node\" takes 4 words, not 3");
    ExpectFault("edge 2 1", "\"edge\" takes 3 or 4 words, not 2");
    ExpectFault("recalc 1", "\"recalc\" takes no words, not 1");
    ExpectFault("hide", "\"hide\" takes 1 word, not 0");
}

TEST(Replay, EndsAtANumberThatIsNone) {
    ExpectFault("node x 0 10 10", "\"x\" is not a whole number");
    ExpectFault("node 1.5 0 10 10", "\"1.5\" is not a whole number");
    ExpectFault("node 99999999999999999999 0 1 1",
                "\"99999999999999999999\" is not a whole number");
    ExpectFault("node 3 0 10 10px", "\"10px\" is not a number");
    ExpectFault("node 3 0 nan 1", "\"nan\" is not a number");
    ExpectFault("move 1 inf 0", "\"inf\" is not a number");
    ExpectFault("move 1 1e999 0", "\"1e999\" is not a number");
}

TEST(Replay, EndsAtAWordThatIsNotAllowed) {
    ExpectFault("fold 1 sideways", "\"sideways\" is neither \"parents\" nor \"children\"");
    ExpectFault("layout random", "there is no layout \"random\"");
}

TEST(Replay, EndsAtANumberThatDoesNotExist) {
    ExpectFault("node 3 7 10 10", "node 7 does not exist");
    ExpectFault("edge 2 1 7", "node 7 does not exist");
    ExpectFault("remove-edge 7", "edge 7 does not exist");
    ExpectFault("hide -1", "node -1 does not exist");
}

TEST(Replay, EndsAtANumberThatIsGivenTwice) {
    ExpectFault("node 2 0 10 10", "node 2 exists already");
    ExpectFault("edge 1 1 2", "edge 1 exists already");
    ExpectFault("node 0 0 10 10", "node 0 cannot be given");
    ExpectFault("edge -4 1 2", "edge -4 cannot be given");
}

TEST(Replay, EndsAtAnEdgeOfTheRootAndAtItsRemoval) {
    ExpectFault("edge 2 0 1", "the root has no edges");
    ExpectFault("edge 2 1 0", "the root has no edges");
    ExpectFault("remove-node 0", "the root cannot be removed");
}

TEST(Replay, ChoosesTheLayoutOnlyBeforeTheFirstRecalc) {
    EXPECT_TRUE(ScriptRun("layout inc\nnode 1 0 1 1\nlayout inc\nrecalc\n").is_done);
    const ScriptRun late("recalc\nlayout inc\n");
    EXPECT_FALSE(late.is_done);
    EXPECT_EQ(late.error.line, 2);
    EXPECT_EQ(late.error.reason, "the layout is chosen before the first recalc");
}

TEST(Replay, KeepsWordsInMessagesShort) {
    ExpectFault(std::string(1000, 'x'), "there is no command \"" + std::string(40, 'x') + "...\"");
}

TEST(Replay, RemovesManyNodesInLinearTime) {
    constexpr int kCount = 50000;
    std::string text = "node 1 0 1 1\n";
    for (int id = 2; id <= kCount; ++id) {
        text += "node " + std::to_string(id) + " 0 1 1\nedge " + std::to_string(id) + " 1 " +
                std::to_string(id) + "\n";
    }
    for (int id = 2; id <= kCount; ++id) text += "remove-node " + std::to_string(id) + "\n";
    text += "dump\n";
    const ScriptRun run(text);
    EXPECT_TRUE(run.is_done);
    EXPECT_EQ(run.printed, "node 0 0 0 0 0 0\nnode 1 0 0 0 0 0\nend\n");
}

}  // namespace
}  // namespace nodeline

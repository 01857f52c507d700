#include <cli/program.h>
#include <support/fonts/test_fonts.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <set>

namespace {

using nlohmann::json;
using test_support::ProgramResult;

using Ids = std::set<int>;

// A chain of nodes that parts: 1 to 2, 2 to 3 and 4, 3 to 5; 6 stands inside 5.
constexpr const char* kGraph =
    "title\n[nodes]\n1 \"a:b\" 0 0\n2 \"b\" 0 0\n3 \"c\" 0 0\n4 \"c\" 0 0\n5 \"d\" 0 0\n"
    "6 \"17\" 0 5\n[edges]\n1 2 \"\"\n2 3 \"\"\n2 4 \"\"\n3 5 \"\"\n";

class Changes : public test_support::ProgramTest {
protected:
    void SetUp() override {
        ProgramTest::SetUp();
        Write("g.txt", kGraph);
    }

    [[nodiscard]] json LayOut(const std::string& options) const {
        const ProgramResult result = RunProgram("layout g.txt " + options);
        EXPECT_EQ(result.status, 0) << options;
        EXPECT_EQ(result.err, "") << options;
        return json::parse(result.out);
    }
    [[nodiscard]] Ids Hidden(const std::string& options) const {
        const json layout = LayOut(options);
        Ids hidden;
        for (const json& node : layout["nodes"]) {
            if (node["hidden"]) hidden.insert(node["id"].get<int>());
        }
        return hidden;
    }
};

TEST_F(Changes, FoldTheNeighboursOfOneSide) {
    EXPECT_EQ(Hidden(""), Ids());
    EXPECT_EQ(Hidden("--fold 2:children"), (Ids{3, 4}));
    EXPECT_EQ(Hidden("--fold 2:parents"), (Ids{1}));
    EXPECT_EQ(Hidden("--fold 3:children"), (Ids{5, 6})) << "what is hidden hides what it owns";
    EXPECT_EQ(Hidden("--fold 5:children"), Ids());
}

TEST_F(Changes, HideOneNode) {
    EXPECT_EQ(Hidden("--hide 3"), (Ids{3}));
    EXPECT_EQ(Hidden("--hide 6"), (Ids{6}));
}

TEST_F(Changes, AreCarriedOutInTheOrderOfTheCommandLine) {
    EXPECT_EQ(Hidden("--fold 2:children --unfold 2:children"), Ids());
    EXPECT_EQ(Hidden("--unfold 2:children --fold 2:children"), (Ids{3, 4}));
    EXPECT_EQ(Hidden("--hide 3 --unfold 2:children"), Ids());
    EXPECT_EQ(Hidden("--unfold 2:children --hide 3"), (Ids{3}));
    EXPECT_EQ(Hidden("--hide 1 --fold 2:children --hide 5 --unfold 2:parents --hide 6"),
              (Ids{3, 4, 5, 6}));
    EXPECT_EQ(Hidden("--fold 2:children --fold 2:parents --unfold 2:children"), (Ids{1}));
}

TEST_F(Changes, NameNodesByCaptionOrId) {
    EXPECT_EQ(Hidden("--fold b:children"), (Ids{3, 4}));
    EXPECT_EQ(Hidden("--fold a:b:children"), (Ids{2})) << "the last colon counts";
    EXPECT_EQ(Hidden("--fold=d:parents"), (Ids{3}));
    EXPECT_EQ(Hidden("--fold 002:children"), (Ids{3, 4}));
    ExpectError("layout g.txt --fold 17:parents", 1, "g.txt: no node has the id 17");
}

TEST_F(Changes, FindHiddenNodesToo) {
    EXPECT_EQ(Hidden("--hide 3 --fold 3:children"), (Ids{3, 5, 6}));
}

TEST_F(Changes, LeaveWhatStaysInItsOrderAndWithoutRoutesToWhatGoes) {
    const json before = LayOut("");
    const json after = LayOut("--fold b:parents");
    const auto y_of = [](const json& layout, std::size_t node) {
        return layout["nodes"][node]["position"][1].get<double>();
    };
    EXPECT_EQ(y_of(before, 2) < y_of(before, 3), y_of(after, 2) < y_of(after, 3));
    EXPECT_GE(before["edges"][0]["route"].size(), 2U);
    EXPECT_EQ(after["edges"][0]["route"], json::array());
    EXPECT_GE(after["edges"][1]["route"].size(), 2U);
}

TEST_F(Changes, OfOwnersContentsResizeTheOwner) {
    const json before = LayOut("");
    const json after = LayOut("--hide 6");
    EXPECT_GT(before["nodes"][4]["size"][1], after["nodes"][4]["size"][1]);
}

TEST_F(Changes, OfNodesThatAreNotThereOrNotTheOnlyOnesAreErrors) {
    const std::string file = "g.txt: ";
    for (const std::string command : {"layout g.txt ", "render g.txt "}) {
        ExpectError(command + "--fold zz:parents", 1, file + "no node has the caption \"zz\"");
        ExpectError(command + "--unfold :parents", 1, file + "no node has the caption \"\"");
        ExpectError(command + "--fold c:children", 1,
                    file + "2 nodes have the caption \"c\"; an id tells which is meant");
        ExpectError(command + "--unfold 9:children", 1, file + "no node has the id 9");
        ExpectError(command + "--fold 0:children", 1, file + "no node has the id 0");
        ExpectError(command + "--hide 99999999999", 1, file + "no node has the id 99999999999");
        ExpectError(command + "--hide 3 --hide=-3", 1, file + "no node has the id -3");
    }
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(Changes, AreSeenInThePicture) {
    const ProgramResult folded = RunProgram("render --fold 2:children g.txt");
    EXPECT_EQ(folded.status, 0) << folded.err;
    EXPECT_EQ(folded.out.rfind("wrote g.svg: 4 of 6 nodes, 1 of 4 edges, ", 0), 0U) << folded.out;
    EXPECT_EQ(folded.out.find("--all"), std::string::npos) << "it would not bring them back";
    const std::string svg = Read("g.svg");
    EXPECT_NE(svg.find(">+<"), std::string::npos) << svg;
    EXPECT_EQ(svg.find(">c<"), std::string::npos) << svg;
    EXPECT_NE(svg.find("#e50000"), std::string::npos) << svg;
}

TEST_F(Changes, OfANarrowedViewStillTellHowToSeeAll) {
    Write("g.txt", test_support::kNarrowGraph);
    const std::string hint = "; --all shows every node\n";
    EXPECT_NE(RunProgram("render g.txt --hide 3").out.find(hint), std::string::npos);
    EXPECT_EQ(RunProgram("render g.txt --unfold f:children").out.find(hint), std::string::npos);
    EXPECT_EQ(RunProgram("render g.txt --all --hide 3").out.find(hint), std::string::npos);
}

}  // namespace

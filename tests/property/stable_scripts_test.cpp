// The tools of the tests of stable pictures: generator, shrinker, and the files of a failure.
#include <gtest/gtest.h>
#include <support/scripts/checked_replay.h>
#include <support/scripts/random_script.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string>

namespace nodeline::test {
namespace {

bool HasLine(const Script& script, const std::string& line) {
    return std::find(script.begin(), script.end(), line) != script.end();
}

Script TwentyNodes() {
    Script script;
    for (int i = 1; i <= 20; ++i) script.push_back("node " + std::to_string(i) + " 0 10 10");
    for (int i = 1; i < 20; ++i) {
        script.push_back("edge " + std::to_string(i) + " " + std::to_string(i) + " " +
                         std::to_string(i + 1));
    }
    script.emplace_back("recalc");
    return script;
}

TEST(ScriptShrinking, LeavesTheLinesThatARuleNeeds) {
    const auto judge = [](const Script& script) -> std::string {
        const bool is_wrong = HasLine(script, "node 7 0 10 10") && HasLine(script, "recalc");
        return is_wrong ? "node 7 may not be laid out" : "";
    };
    EXPECT_EQ(Shrink(TwentyNodes(), judge), (Script{"node 7 0 10 10", "recalc"}));
}

TEST(ScriptShrinking, KeepsWhatALineThatIsNeededRestsOn) {
    const auto judge = [](const Script& script) -> std::string {
        return HasLine(WithoutFaultyLines(script), "edge 12 12 13") ? "edge 12 is there" : "";
    };
    EXPECT_EQ(Shrink(TwentyNodes(), judge),
              (Script{"node 12 0 10 10", "node 13 0 10 10", "edge 12 12 13"}));
}

TEST(ScriptShrinking, FindsLinesThatAreWrongOnlyTogether) {
    const auto judge = [](const Script& script) -> std::string {
        return std::count_if(script.begin(), script.end(),
                             [](const std::string& line) { return line[0] == 'n'; }) >= 3
                   ? "three nodes"
                   : "";
    };
    const Script least = Shrink(TwentyNodes(), judge);
    EXPECT_EQ(least.size(), 3u);
    EXPECT_NE(judge(least), "");
}

TEST(ScriptShrinking, LeavesNoLineThatCannotBeCarriedOut) {
    const Script script{"node 1 0 1 1", "edge 1 1 9", "node 1 0 1 1", "sing", "recalc"};
    EXPECT_EQ(WithoutFaultyLines(script), (Script{"node 1 0 1 1", "recalc"}));
    EXPECT_EQ(Shrink(script, [](const Script&) { return std::string("always"); }), Script());
}

// A layout that breaks the rules is caught, and its session gets small.
TEST(ScriptShrinking, MakesASessionOfTheIncrementalLayoutSmall) {
    Script script = RandomScript(1, PlanOf(1)).lines();
    script.insert(script.begin(), "layout inc");
    const auto judge = [](const Script& part) -> std::string {
        return HasLine(part, "layout inc") ? FaultsOf(part) : "";
    };
    ASSERT_NE(judge(script), "");
    const Script least = Shrink(script, judge);
    EXPECT_NE(judge(least), "");
    EXPECT_LT(least.size(), 12u);
    for (std::size_t i = 0; i < least.size(); ++i) {
        Script part = least;
        part.erase(part.begin() + static_cast<std::ptrdiff_t>(i));
        EXPECT_EQ(judge(WithoutFaultyLines(part)), "") << "without line " << i;
    }
}

TEST(ScriptFailures, NameTheScriptAndThePicture) {
    const auto judge = [](const Script& script) -> std::string {
        return HasLine(script, "recalc") && HasLine(script, "node 3 0 10 10") ? "a fault\n" : "";
    };
    const std::string text = Explain(TwentyNodes(), "script-failures-test", judge);
    EXPECT_NE(text.find("a fault"), std::string::npos);
    const std::string stem = testing::TempDir() + "script-failures-test";
    EXPECT_NE(text.find(stem + ".txt"), std::string::npos);
    EXPECT_NE(text.find(stem + ".svg"), std::string::npos);
    std::ifstream script(stem + ".txt");
    EXPECT_EQ(ReadScript(script), (Script{"layout stable", "node 3 0 10 10", "recalc"}));
    std::ifstream picture(stem + ".svg");
    std::ostringstream svg;
    svg << picture.rdbuf();
    EXPECT_NE(svg.str().find("<rect x='35' y='12' width='10'"), std::string::npos);
}

TEST(RandomScripts, AreTheSameForASeed) {
    EXPECT_EQ(RandomScript(3, PlanOf(3)).lines(), RandomScript(3, PlanOf(3)).lines());
    EXPECT_NE(RandomScript(3, PlanOf(3)).lines(), RandomScript(4, PlanOf(4)).lines());
}

}  // namespace
}  // namespace nodeline::test

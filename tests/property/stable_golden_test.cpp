// The sessions of the regression cases with the stable layout.
#include <gtest/gtest.h>
#include <support/scripts/checked_replay.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace nodeline::test {
namespace {

namespace fs = std::filesystem;

std::vector<fs::path> FindSessions() {
    std::vector<fs::path> sessions;
    for (const auto& entry :
         fs::directory_iterator(fs::path(NODELINE_TEST_DATA) / "golden/update")) {
        if (entry.path().extension() == ".txt") sessions.push_back(entry.path());
    }
    std::sort(sessions.begin(), sessions.end());
    return sessions;
}

TEST(StableGolden, EveryPictureOfTheSessionsKeepsTheRules) {
    const std::vector<fs::path> sessions = FindSessions();
    ASSERT_GE(sessions.size(), 190u);
    int recalculations = 0;
    for (const fs::path& path : sessions) {
        std::ifstream in(path);
        const Script script = ReadScript(in);
        CheckedReplay replay;
        for (const std::string& line : script) {
            // Moves that a user makes last until the next update.
            replay.Run(line);
            ASSERT_EQ(replay.faults(), "")
                << path.stem() << '\n'
                << Explain(script, "stable-golden-" + path.stem().string());
        }
        recalculations += replay.recalculations();
    }
    EXPECT_GT(recalculations, 500);
}

}  // namespace
}  // namespace nodeline::test

#include <gtest/gtest.h>
#include <support/scripts/checked_replay.h>
#include <support/scripts/random_script.h>

#include <cstdint>
#include <string>

namespace nodeline::test {
namespace {

// Each session looks at some thirty pictures.
TEST(StableRules, HoldForEveryPictureOfRandomSessions) {
    int recalculations = 0;
    int comparisons = 0;
    for (std::uint64_t seed = 1; seed <= 300; ++seed) {
        const RandomScript script(seed, PlanOf(seed));
        CheckedReplay replay;
        for (const std::string& line : script.lines()) {
            ASSERT_TRUE(replay.Run(line)) << line;
            ASSERT_EQ(replay.faults(), "")
                << Explain(script.lines(), "stable-rules-" + std::to_string(seed));
        }
        recalculations += replay.recalculations();
        comparisons += replay.comparisons();
    }
    // The sessions do what they are made for.
    EXPECT_GT(recalculations, 300 * 15);
    EXPECT_GT(comparisons, 300 * 6);
}

}  // namespace
}  // namespace nodeline::test

#include <gtest/gtest.h>
#include <support/scripts/checked_replay.h>
#include <support/scripts/random_script.h>

#include <cstdint>
#include <string>

namespace nodeline::test {
namespace {

// Under a sanitizer they take most of a minute.
constexpr std::uint64_t kSessions = 2000;

TEST(StableFuzz, NoSessionBreaksTheRules) {
    for (std::uint64_t i = 0; i < kSessions; ++i) {
        const std::uint64_t seed = 100000 + i;
        ScriptPlan plan = PlanOf(seed);
        plan.steps = 8;
        plan.wild = true;
        plan.most_width = i % 2 == 0 ? 3.5 : 14.0;
        const RandomScript script(seed, plan);
        CheckedReplay replay;
        for (const std::string& line : script.lines()) {
            replay.Run(line);
            ASSERT_EQ(replay.faults(), "")
                << "seed " << seed << '\n'
                << Explain(script.lines(), "stable-fuzz-" + std::to_string(seed));
        }
        ASSERT_GT(replay.recalculations(), 0) << "seed " << seed;
    }
}

}  // namespace
}  // namespace nodeline::test

#include <load/loaded_graph.h>

#include <gtest/gtest.h>

namespace nodeline {
namespace {

using Strings = std::vector<std::string>;

TEST(LoadThreads, WithoutACaptionThatHoldsTheWordEverythingShows) {
    const LoadedGraph loaded(
        "title\n[nodes]\n1 \"thread\" 0 0\n2 \"THREAD\" 0 1\n3 \"main\" 0 0\n");
    EXPECT_EQ(loaded.Visible(), (Strings{"thread", "THREAD", "main"}));
}

TEST(LoadThreads, OneThreadShowsTheWayDownThroughMain) {
    const LoadedGraph loaded(
        "title\n[nodes]\n1 \"Thread 1\" 0 0\n2 \"main\" 0 0\n3 \"other\" 0 0\n4 \"f\" 0 0\n"
        "5 \"below other\" 0 0\n6 \"below f\" 0 0\n7 \"apart\" 0 0\n"
        "[edges]\n1 2 \"\"\n1 3 \"\"\n2 4 \"\"\n3 5 \"\"\n4 6 \"\"\n");
    ASSERT_TRUE(loaded.is_loaded);
    EXPECT_EQ(loaded.Visible(), (Strings{"Thread 1", "main", "other", "f"}));
}

TEST(LoadThreads, TheWordCountsInsideALongerOne) {
    const LoadedGraph loaded("title\n[nodes]\n1 \"myThreads\" 0 0\n2 \"b\" 0 0\n");
    EXPECT_EQ(loaded.Visible(), (Strings{"myThreads"}));
}

TEST(LoadThreads, MainCountsInsideALongerWordAndOnlyTheFirstOfThemLeadsOn) {
    const LoadedGraph loaded(
        "title\n[nodes]\n1 \"Thread\" 0 0\n2 \"domain\" 0 0\n3 \"main\" 0 0\n4 \"a\" 0 0\n5 \"b\" "
        "0 0\n"
        "[edges]\n1 3 \"\"\n1 2 \"\"\n2 4 \"\"\n3 5 \"\"\n");
    ASSERT_TRUE(loaded.is_loaded);
    EXPECT_EQ(loaded.Visible(), (Strings{"Thread", "domain", "main", "a"}));
}

TEST(LoadThreads, LeaveNoTraceOfNewness) {
    const LoadedGraph loaded(
        "title\n[nodes]\n1 \"Thread\" 0 0\n2 \"main\" 0 0\n3 \"x\" 0 2\n[edges]\n1 2 \"\"\n");
    for (const char* caption : {"Thread", "main", "x"}) {
        EXPECT_FALSE(IsFlagSet(loaded.Find(caption), NodeNew)) << caption;
    }
    EXPECT_TRUE(IsFlagSet(loaded.Find("x"), NodeHidden));
}

TEST(LoadThreads, ACircleThroughMainEnds) {
    const LoadedGraph loaded(
        "title\n[nodes]\n1 \"Thread\" 0 0\n2 \"main a\" 0 0\n3 \"main b\" 0 0\n4 \"leaf\" 0 0\n"
        "[edges]\n1 2 \"\"\n2 3 \"\"\n3 2 \"\"\n3 4 \"\"\n");
    ASSERT_TRUE(loaded.is_loaded);
    EXPECT_EQ(loaded.Visible(), (Strings{"Thread", "main a", "main b", "leaf"}));
}

TEST(LoadThreads, AMainThatIsItsOwnChildEnds) {
    const LoadedGraph loaded(
        "title\n[nodes]\n1 \"main Thread\" 0 0\n2 \"b\" 0 0\n[edges]\n1 1 \"\"\n1 2 \"\"\n");
    ASSERT_TRUE(loaded.is_loaded);
    EXPECT_EQ(loaded.Visible(), (Strings{"main Thread", "b"}));
}

TEST(LoadThreads, TwoThreadsThatMeetShowAllOfBothWays) {
    const LoadedGraph loaded(
        "title\n[nodes]\n1 \"Thread a\" 0 0\n2 \"Thread b\" 0 0\n3 \"main\" 0 0\n4 \"x\" 0 0\n5 "
        "\"y\" 0 0\n"
        "[edges]\n1 3 \"\"\n2 3 \"\"\n2 5 \"\"\n3 4 \"\"\n");
    ASSERT_TRUE(loaded.is_loaded);
    EXPECT_EQ(loaded.Visible(), (Strings{"Thread a", "Thread b", "main", "x", "y"}));
}

// Each thread alone has a way down of full length.
TEST(LoadThreads, ManyThreadsIntoOneLongWayDownTakeLinearTime) {
    constexpr int kCount = 50000;
    std::string text = "title\n[nodes]\n";
    for (int id = 1; id <= kCount; ++id) text += std::to_string(id) + " \"main\" 0 0\n";
    for (int id = 1; id <= kCount; ++id) text += std::to_string(kCount + id) + " \"Thread\" 0 0\n";
    text += "[edges]\n";
    for (int id = 1; id < kCount; ++id) {
        text += std::to_string(id) + " " + std::to_string(id + 1) + "\n";
    }
    for (int id = 1; id <= kCount; ++id) text += std::to_string(kCount + id) + " 1\n";
    const LoadedGraph loaded(text);
    ASSERT_TRUE(loaded.is_loaded);
    EXPECT_EQ(loaded.Visible().size(), 2U * kCount);
}

}  // namespace
}  // namespace nodeline

#include <formats/read_file.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace nodeline::formats {
namespace {

TEST(TextReader, IdsOfTheFileBecomeTags) {
    const ReadFile file("t\n[nodes]\n7 \"a\" 0 0\n-5 \"b\" 0 7\n[edges]\n7 -5 \"\"\n");
    ASSERT_TRUE(file.is_read) << file.error;
    EXPECT_EQ(file.Find("a").GetTag(), 7);
    EXPECT_EQ(file.Find("b").GetTag(), -5);
    EXPECT_TRUE(file.report.warnings.empty());
}

TEST(TextReader, NodesAreCountedWhereIdsCannotTellThemApart) {
    const std::string counted =
        "g: warning: nodes count from 1: their ids are not all different, or one is 0";
    const ReadFile twice("t\n[nodes]\n4 \"a\" 0 0\n4 \"b\" 0 0\n9 \"c\" 0 4\n[edges]\n4 9 \"\"\n");
    ASSERT_TRUE(twice.is_read) << twice.error;
    EXPECT_EQ(twice.Find("a").GetTag(), 1);
    EXPECT_EQ(twice.Find("b").GetTag(), 2);
    EXPECT_EQ(twice.Find("c").GetTag(), 3);
    EXPECT_EQ(
        twice.report.warnings,
        (std::vector<std::string>{
            "g:4: warning: node 4 is declared above, and edges will not find this one", counted}));

    const ReadFile zero("t\n[nodes]\n0 \"a\" 0 0\n1 \"b\" 0 0\n[edges]\n0 1 \"\"\n");
    ASSERT_TRUE(zero.is_read) << zero.error;
    EXPECT_EQ(zero.Find("a").GetTag(), 1);
    EXPECT_EQ(zero.Find("b").GetTag(), 2);
    EXPECT_EQ(Edges(zero), "a>b");
    ASSERT_FALSE(zero.report.warnings.empty());
    EXPECT_EQ(zero.report.warnings.back(), counted);
}

}  // namespace
}  // namespace nodeline::formats

#include <load/loaded_graph.h>

#include <gtest/gtest.h>

#include <stdexcept>

namespace nodeline {
namespace {

void ExpectRefused(const std::string& text, int line, const std::string& reason) {
    LoadedGraph loaded(text);
    EXPECT_FALSE(loaded.is_loaded) << text;
    EXPECT_EQ(loaded.error.line, line) << text;
    EXPECT_EQ(loaded.error.reason, reason) << text;
    EXPECT_EQ(loaded.Root().GetOwned().GetCount(), 0) << text;
}

TEST(LoadFailure, AnEdgeNamesANodeThatIsNotThere) {
    ExpectRefused("title\n[nodes]\n1 \"a\" 0 0\n[edges]\n1 17 \"\"\n", 5,
                  "edge names node 17, which is not declared above");
    ExpectRefused("title\n[nodes]\n1 \"a\" 0 0\n[edges]\n17 1 \"\"\n", 5,
                  "edge names node 17, which is not declared above");
}

TEST(LoadFailure, AnEdgeNamesANodeThatComesLater) {
    ExpectRefused("title\n[nodes]\n1 \"a\" 0 0\n[edges]\n1 2 \"\"\n[nodes]\n2 \"b\" 0 0\n", 5,
                  "edge names node 2, which is not declared above");
}

TEST(LoadFailure, AnEdgeHasNoSecondNode) {
    ExpectRefused("title\n[nodes]\n1 \"a\" 0 0\n[edges]\n1 \"\"\n", 5, "edge names no second node");
}

TEST(LoadFailure, AnEdgeNamesANumberBeyondInt) {
    ExpectRefused("title\n[nodes]\n1 \"a\" 0 0\n[edges]\n99999999999 1 \"\"\n", 5,
                  "a number is too large or too small for an id");
}

TEST(LoadFailure, AnOwnerIsNotDeclaredAnywhere) {
    ExpectRefused("title\n[nodes]\n1 \"a\" 0 0\n2 \"b\" 0 9\n", 4,
                  "node 2 names node 9 as its owner, which is not declared");
}

TEST(LoadFailure, OfSeveralOwnersTheNodeWithTheLeastIdIsTold) {
    ExpectRefused("title\n[nodes]\n5 \"a\" 0 8\n2 \"b\" 0 9\n", 4,
                  "node 2 names node 9 as its owner, which is not declared");
}

TEST(LoadFailure, AnOwnerIsMissing) {
    ExpectRefused("title\n[nodes]\n1 \"a\" 0\n", 3, "node 1 names no owner");
    ExpectRefused("title\n[nodes]\n1 \"a\"\n", 3, "node 1 names no owner");
}

TEST(LoadFailure, LeavesAGraphEmptyThatHeldSomething) {
    LoadedGraph loaded("title\n[nodes]\n1 \"a\" 0 0\n2 \"b\" 0 1\n[edges]\n1 2 \"\"\n");
    ASSERT_TRUE(loaded.is_loaded);
    std::istringstream in("title\n[edges]\n1 2\n");
    EXPECT_FALSE(Load(loaded.graph, in));
    EXPECT_EQ(loaded.Root().GetOwned().GetCount(), 0);
}

TEST(LoadFailure, AStreamThatCannotBeRead) {
    graph_ptr2<Graph> graph(new Graph, true);
    std::istringstream in("title\n");
    in.setstate(std::ios::failbit);
    LoadError error{7, "left from before"};
    EXPECT_FALSE(Load(graph, in, &error));
    EXPECT_EQ(error.line, 0);
    EXPECT_EQ(error.reason, "the input cannot be read");
}

TEST(LoadFailure, AStreamThatBreaksOff) {
    class Breaking : public std::stringbuf {
    public:
        using std::stringbuf::stringbuf;

    protected:
        int_type underflow() override {
            const int_type next = std::stringbuf::underflow();
            if (next == traits_type::eof()) throw std::runtime_error("read error");
            return next;
        }
    };
    Breaking buffer("title\n[nodes]\n1 \"a\" 0 0\n");
    std::istream in(&buffer);
    LoadedGraph loaded("");
    EXPECT_FALSE(Load(loaded.graph, in, &loaded.error));
    EXPECT_EQ(loaded.error.reason, "the input cannot be read");
    EXPECT_EQ(loaded.Root().GetOwned().GetCount(), 0);
}

TEST(LoadFailure, AnswersTheSameWithoutAnErrorToFill) {
    graph_ptr2<Graph> graph(new Graph, true);
    std::istringstream bad("title\n[edges]\n1 2\n");
    EXPECT_FALSE(Load(graph, bad, nullptr));
    std::istringstream good("title\n[nodes]\n1 \"a\" 0 0\n");
    EXPECT_TRUE(Load(graph, good, nullptr));
}

TEST(LoadFailure, AnIdBeyondIntBecomesTheNearestIdAndIsTold) {
    const LoadedGraph loaded("title\n[nodes]\n99999999999 \"a\" 0 0\n1 \"b\" 0 2147483647\n");
    EXPECT_TRUE(loaded.is_loaded);
    EXPECT_EQ(loaded.error.line, 3);
    EXPECT_EQ(loaded.error.reason, "a number is too large or too small for an id");
    EXPECT_EQ(loaded.Find("b").GetOwner(), loaded.Find("a"));
}

}  // namespace
}  // namespace nodeline

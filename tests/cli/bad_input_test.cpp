#include <cli/program.h>
#include <support/fonts/test_fonts.h>

#include <gtest/gtest.h>

#include <random>

namespace {

using test_support::ProgramResult;

class BadInput : public test_support::ProgramTest {
protected:
    // Both commands that read graphs say the same, and write nothing.
    void ExpectBad(const std::string& name, const std::string& line) const {
        const int files = CountFiles();
        ExpectError("render " + name, 1, line);
        ExpectError("layout " + name, 1, line);
        EXPECT_EQ(CountFiles(), files);
    }
};

TEST_F(BadInput, AFileThatIsNotThere) {
    ExpectBad("nowhere.txt", "nowhere.txt: cannot be opened: No such file or directory");
    ExpectError("replay nowhere.txt", 1,
                "nowhere.txt: cannot be opened: No such file or directory");
}

TEST_F(BadInput, AFolder) {
    std::filesystem::create_directory(folder() / "folder");
    ExpectBad("folder", "folder: cannot be read: Is a directory");
    ExpectError("replay folder", 1, "folder: cannot be read: Is a directory");
}

TEST_F(BadInput, AnEmptyFile) {
    Write("empty.txt", "");
    ExpectBad("empty.txt", "empty.txt:1: the file is empty");
    ExpectError("layout - <empty.txt", 1, "standard input:1: the file is empty");
}

TEST_F(BadInput, AFileOfRandomBytes) {
    std::mt19937 random(1);
    std::string bytes;
    for (int i = 0; i < 100000; ++i) bytes += static_cast<char>(random() & 0xff);
    Write("noise.txt", bytes);
    ExpectBad("noise.txt",
              "noise.txt:1: no line is a section keyword like [nodes], so this is no graph file");
}

TEST_F(BadInput, AFileWithItsOnlyKeywordInTheFirstLine) {
    Write("g.txt", "[nodes]\n1 \"a\" 0 0\n");
    ExpectBad("g.txt", "g.txt:1: the first line is a title, so the keyword in it does not count");
}

TEST_F(BadInput, AKeywordInTheFirstLineIsWorthAWord) {
    Write("g.txt", "[nodes]\n1 \"a\" 0 0\n[edges]\n1 1\n");
    ExpectBad("g.txt",
              "g.txt:4: edge names node 1, which is not declared above; the first line is a title, "
              "so the keyword in it does not count");
    Write("h.txt", "[nodes]\n1 \"a\" 0 0\n[clusters]\n2 \"b\" 0 0\n");
    const ProgramResult result = RunProgram("layout h.txt");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err,
              "h.txt:1: warning: the first line is a title, so the keyword in it does not count\n");
}

TEST_F(BadInput, LinesThatEndWithACarriageReturn) {
    Write("g.txt", "title\r\n[nodes]\r\n1 \"a\" 0 0\r\n[edges]\r\n1 1 \"\"\r\n");
    ExpectBad("g.txt",
              "g.txt:2: the line ends with a carriage return, so [nodes] is not recognised");
    Write("h.txt", "title\n[nodes]\n1 \"a\" 0 0\n[edges] \n1 1 \"\"\n");
    ExpectBad("h.txt", "h.txt:4: the line ends with a blank, so [edges] is not recognised");
}

TEST_F(BadInput, EdgesToUndeclaredNodes) {
    Write("g.txt", "title\n[nodes]\n1 \"a\" 0 0\n[edges]\n1 17 \"\"\n");
    ExpectBad("g.txt", "g.txt:5: edge names node 17, which is not declared above");
}

TEST_F(BadInput, OwnersThatAreNotThere) {
    Write("g.txt", "title\n[nodes]\n1 \"a\" 0 5\n");
    ExpectBad("g.txt", "g.txt:3: node 1 names node 5 as its owner, which is not declared");
}

TEST_F(BadInput, OwnersThatOwnEachOther) {
    Write("g.txt", "title\n[nodes]\n1 \"a\" 0 2\n2 \"b\" 0 1\n");
    const ProgramResult result = RunProgram("render g.txt");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err,
              "g.txt:4: warning: node 2 owns its owner, so it stands outside of all owners\n");
    EXPECT_EQ(result.out.rfind("wrote g.svg: 2 nodes, 0 edges, 1 level, ", 0), 0U) << result.out;
}

TEST_F(BadInput, ANodeThatOwnsItself) {
    Write("g.txt", "title\n[nodes]\n1 \"a\" 0 0\n2 \"b\" 0 2\n3 \"c\" 0 2\n[edges]\n1 3\n");
    const ProgramResult result = RunProgram("render g.txt");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err,
              "g.txt:4: warning: node 2 owns itself, so it is left out with all that it owns\n");
    EXPECT_EQ(result.out.rfind("wrote g.svg: 1 node, 0 edges, 1 level, ", 0), 0U) << result.out;
}

TEST_F(BadInput, IdsBeyondInt) {
    Write("g.txt", "title\n[nodes]\n99999999999 \"a\" 0 0\n");
    const ProgramResult result = RunProgram("layout g.txt");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "g.txt:3: warning: a number is too large or too small for an id\n");
}

TEST_F(BadInput, QuotesInOddPlaces) {
    Write("g.txt", "title\n[nodes]\n\"\n1\"\n2 \"\"\" 0 0\n3 \"a\" b\" 0 2\n");
    ExpectBad("g.txt", "g.txt:4: node 1 names no owner");
    Write("h.txt", "title\n[nodes]\n\"\n\"1 0 0\n2 \"\"\" 0 0\n3 \"a\" b\" 0 2\n");
    EXPECT_EQ(RunProgram("render h.txt").out.rfind("wrote h.svg: 2 nodes, ", 0), 0U);
}

TEST_F(BadInput, ALineOfTenMebibytes) {
    const std::string caption(10 << 20, 'x');
    Write("g.txt", "title\n[nodes]\n1 \"" + caption + "\" 0 0\n2 \"b\" 0 0\n[edges]\n1 2 \"\"\n");
    const ProgramResult result = RunProgram("render g.txt");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_LT(Read("g.svg").size(), 100000U) << "captions are shortened in the picture";
}

TEST_F(BadInput, OwnersNestedDeeply) {
    constexpr int kDepth = 2000;
    std::string text = "title\n[nodes]\n";
    for (int id = 1; id <= kDepth; ++id) {
        text += std::to_string(id) + " \"n\" 0 " + std::to_string(id - 1) + "\n";
    }
    Write("g.txt", text);
    const ProgramResult result = RunProgram("render g.txt");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out.rfind("wrote g.svg: 2000 nodes, 0 edges, 1 level, ", 0), 0U);
}

}  // namespace

// A window is shown by another program, for which a script stands in here.
#include <cli/program.h>
#include <gtest/gtest.h>

namespace {

using test_support::kSmallGraph;
using test_support::ProgramResult;

namespace fs = std::filesystem;

constexpr const char* kNoViewer =
    "nodeline: there is no nodeline-viewer beside this program or in PATH\n";

// The program in a folder of its own, with no viewer beside it and none in PATH at first.
class View : public test_support::ProgramTest {
protected:
    void SetUp() override {
        ProgramTest::SetUp();
        if (HasFatalFailure()) return;
        for (const char* name : {"bin", "path"}) fs::create_directory(folder() / name);
        fs::copy_file(NODELINE_CLI, folder() / "bin/nodeline");
        Write("g.txt", kSmallGraph);
    }

    // A viewer that prints a word, its arguments, and ends with 7.
    void WriteViewer(const std::string& place, const std::string& word) const {
        Write(place + "/nodeline-viewer",
              "#!/bin/sh\necho " + word +
                  "\nfor word in \"$@\"; do echo \"<$word>\"; done\nexit 7\n");
        fs::permissions(folder() / place / "nodeline-viewer", fs::perms::owner_all);
    }

    [[nodiscard]] ProgramResult RunView(const std::string& arguments) const {
        return RunInShell("PATH=\"$PWD/path\" bin/nodeline view " + arguments);
    }
    [[nodiscard]] std::string FullName(const std::string& name) const {
        return (fs::canonical(folder()) / name).string();
    }
};

TEST_F(View, BecomesTheViewerThatLiesBesideTheProgram) {
    WriteViewer("bin", "beside");
    WriteViewer("path", "path");
    const ProgramResult result = RunView("g.txt");
    EXPECT_EQ(result.status, 7) << "the exit code is that of the viewer";
    EXPECT_EQ(result.out, "beside\n<--layout>\n<stable>\n<" + FullName("g.txt") + ">\n");
    EXPECT_EQ(result.err, "");
}

TEST_F(View, ElseBecomesTheOneInThePath) {
    WriteViewer("path", "path");
    const ProgramResult result = RunView("g.txt --layout inc");
    EXPECT_EQ(result.status, 7);
    EXPECT_EQ(result.out, "path\n<--layout>\n<inc>\n<" + FullName("g.txt") + ">\n");
}

TEST_F(View, FindsItsFolderThroughALinkToTheProgram) {
    WriteViewer("bin", "beside");
    fs::create_symlink("../bin/nodeline", folder() / "path/linked");
    const ProgramResult result = RunInShell("path/linked view g.txt");
    EXPECT_EQ(result.out.rfind("beside\n", 0), 0U) << result.out << result.err;
}

TEST_F(View, NamesAreGivenWholeToTheViewer) {
    WriteViewer("bin", "beside");
    for (const char* name : {":colon.txt", "--layout", "two words.txt"}) {
        Write(name, kSmallGraph);
        const ProgramResult result = RunView(std::string("-- '") + name + "'");
        EXPECT_EQ(result.out, "beside\n<--layout>\n<stable>\n<" + FullName(name) + ">\n");
    }
}

TEST_F(View, WithoutAViewerSaysWhereItLookedAndEndsWithOne) {
    const ProgramResult result = RunView("g.txt");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, kNoViewer);
}

TEST_F(View, AFileThatCannotBeOpenedStartsNoViewer) {
    WriteViewer("bin", "beside");
    const ProgramResult missing = RunView("nowhere.txt");
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.out, "");
    EXPECT_EQ(missing.err, "nowhere.txt: cannot be opened: No such file or directory\n");
    const ProgramResult folder = RunView("bin");
    EXPECT_EQ(folder.status, 1);
    EXPECT_EQ(folder.out, "");
    EXPECT_EQ(folder.err, "bin: cannot be opened: Is a directory\n");
}

TEST_F(View, AViewerThatCannotBeStartedIsNotCalledMissing) {
    Write("path/nodeline-viewer", "no program");
    const ProgramResult result = RunView("g.txt");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "nodeline: nodeline-viewer cannot be started: Permission denied\n");
}

}  // namespace

// Runs the program as a user does, and keeps what it says.
#pragma once

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace test_support {

inline std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

struct ProgramResult {
    // The exit status; -1 if a signal ended the program.
    int status = -1;
    std::string out;
    std::string err;
};

// A test in an empty folder of its own, which is gone afterwards.
class ProgramTest : public testing::Test {
protected:
    void SetUp() override {
        std::string name = testing::TempDir() + "nodeline-cli-XXXXXX";
        ASSERT_NE(::mkdtemp(name.data()), nullptr);
        folder_ = name;
    }
    void TearDown() override {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    [[nodiscard]] const std::filesystem::path& folder() const { return folder_; }

    // Writes a file into the folder, and gives its name there.
    std::string Write(const std::string& name, const std::string& text) const {
        std::ofstream(folder_ / name, std::ios::binary) << text;
        return name;
    }

    [[nodiscard]] std::string Read(const std::string& name) const {
        return ReadFile(folder_ / name);
    }
    [[nodiscard]] bool Exists(const std::string& name) const {
        return std::filesystem::exists(folder_ / name);
    }
    // How many entries the folder has.
    [[nodiscard]] int CountFiles() const {
        int count = 0;
        for (const auto& entry : std::filesystem::directory_iterator(folder_)) {
            count += entry.exists() ? 1 : 0;
        }
        return count;
    }

    // Runs the program in the folder. `arguments` are words for a shell.
    [[nodiscard]] ProgramResult RunProgram(const std::string& arguments) const {
        return RunInShell("'" NODELINE_CLI "' " + arguments);
    }

    // The same with standard output going to a file of choice.
    [[nodiscard]] ProgramResult RunProgramInto(const std::string& out,
                                               const std::string& arguments) const {
        return RunShellInto(out, "'" NODELINE_CLI "' " + arguments);
    }

    // Runs a command of a shell in the folder.
    [[nodiscard]] ProgramResult RunInShell(const std::string& command) const {
        const std::string out = folder_.string() + ".out";
        ProgramResult result = RunShellInto(out, command);
        result.out = ReadFile(out);
        std::filesystem::remove(out);
        return result;
    }

    // The run ends with `status`, prints nothing and says `line` alone.
    void ExpectError(const std::string& arguments, int status, const std::string& line) const {
        const ProgramResult result = RunProgram(arguments);
        EXPECT_EQ(result.status, status) << arguments;
        EXPECT_EQ(result.out, "") << arguments;
        EXPECT_EQ(result.err, line + "\n") << arguments;
    }

private:
    [[nodiscard]] ProgramResult RunShellInto(const std::string& out,
                                             const std::string& command) const {
        const std::string err = folder_.string() + ".err";
        const std::string line =
            "cd '" + folder_.string() + "' && " + command + " >'" + out + "' 2>'" + err + "'";
        const int status = std::system(line.c_str());
        const ProgramResult result{WIFEXITED(status) ? WEXITSTATUS(status) : -1, "", ReadFile(err)};
        std::filesystem::remove(err);
        return result;
    }

    std::filesystem::path folder_;
};

// Three nodes, one of them in another, and two edges.
inline constexpr const char* kSmallGraph =
    "a small graph\n[nodes]\n1 \"parser\" 0 0\n2 \"scanner\" 0 1\n30 \"main\" 0 0\n"
    "[edges]\n30 2 \"next token\"\n2 30 \"\"\n";

// One node is a starting point, two of the others show with it, and one is hidden.
inline constexpr const char* kNarrowGraph =
    "title\n[nodes]\n1 \"Thread\" 0 0\n2 \"main\" 0 0\n3 \"f\" 0 0\n4 \"g\" 0 0\n"
    "[edges]\n1 2 \"\"\n2 3 \"\"\n3 4 \"\"\n";

}  // namespace test_support

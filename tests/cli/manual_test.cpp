#include <cli/program.h>
#include <gtest/gtest.h>

#include <regex>
#include <set>
#include <string>

// The manual page and the completion say what the program says of itself.

namespace {

using test_support::ProgramTest;

class Manual : public ProgramTest {
protected:
    [[nodiscard]] static std::string ReadSource(const std::string& path) {
        return test_support::ReadFile(NODELINE_EXAMPLES "/../apps/" + path);
    }
    // All matches of the first group.
    [[nodiscard]] static std::set<std::string> Find(const std::string& text, const char* pattern) {
        const std::regex expression(pattern);
        std::set<std::string> found;
        for (std::sregex_iterator it(text.begin(), text.end(), expression), end; it != end; ++it) {
            found.insert((*it)[1]);
        }
        return found;
    }
    [[nodiscard]] std::set<std::string> Commands() const {
        const std::string help = RunProgram("--help").out;
        return Find(help.substr(help.find("Subcommands:")), "\n  ([a-z]+) ");
    }
    [[nodiscard]] std::set<std::string> OptionsOf(const std::string& command) const {
        return Find(RunProgram(command + " --help").out, "[ ,](--[a-z][a-z-]*)");
    }
    // As options stand in the source of a manual page.
    [[nodiscard]] static std::string Escaped(const std::string& option) {
        return std::regex_replace(option, std::regex("-"), "\\-");
    }
};

TEST_F(Manual, HasEveryCommandAndEveryOption) {
    const std::string page = ReadSource("man/nodeline.1");
    const std::set<std::string> commands = Commands();
    ASSERT_GE(commands.size(), 5U);
    for (const std::string& command : commands) {
        EXPECT_NE(page.find(".B nodeline " + command), std::string::npos) << command;
        for (const std::string& option : OptionsOf(command)) {
            EXPECT_NE(page.find(Escaped(option)), std::string::npos) << command << ' ' << option;
        }
    }
}

TEST_F(Manual, NamesNoOptionThatTheProgramDoesNotHave) {
    std::set<std::string> known = OptionsOf("");
    for (const std::string& command : Commands()) known.merge(OptionsOf(command));
    std::string page = ReadSource("man/nodeline.1");
    page = std::regex_replace(page, std::regex("\\\\-"), "-");
    const std::set<std::string> named = Find(page, "(--[a-z][a-z-]*)");
    ASSERT_FALSE(named.empty());
    for (const std::string& option : named) EXPECT_EQ(known.count(option), 1U) << option;
}

TEST_F(Manual, CompletionKnowsEveryCommand) {
    const std::string completion = ReadSource("completion/nodeline");
    for (const std::string& command : Commands()) {
        EXPECT_TRUE(std::regex_search(completion, std::regex("[\" ]" + command + " "))) << command;
    }
}

}  // namespace

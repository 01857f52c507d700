#include <apps/cli/replay/replay.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace nodeline {
namespace {

namespace fs = std::filesystem;

// A script and, beside it, what it prints.
struct Case {
    fs::path script;

    [[nodiscard]] fs::path Expected() const { return fs::path(script).replace_extension(".out"); }
};

std::vector<Case> FindCases() {
    std::vector<Case> cases;
    const fs::path folder = fs::path(NODELINE_TEST_DATA) / "golden";
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.path().extension() == ".txt") cases.push_back({entry.path()});
    }
    std::sort(cases.begin(), cases.end(),
              [](const Case& a, const Case& b) { return a.script < b.script; });
    return cases;
}

// "update/session-003.txt" becomes "update_session_003".
std::string NameOf(const testing::TestParamInfo<Case>& info) {
    const fs::path& script = info.param.script;
    std::string name = script.parent_path().filename().string() + "_" + script.stem().string();
    std::replace_if(
        name.begin(), name.end(),
        [](char c) { return std::isalnum(static_cast<unsigned char>(c)) == 0; }, '_');
    return name;
}

std::string ReadFile(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

// The first line that differs, with a few lines ahead of it.
std::string Difference(const std::string& expected_text, const std::string& actual_text) {
    const std::vector<std::string> expected = Lines(expected_text);
    const std::vector<std::string> actual = Lines(actual_text);
    std::size_t at = 0;
    while (at < expected.size() && at < actual.size() && expected[at] == actual[at]) ++at;
    std::ostringstream out;
    out << "line " << at + 1 << " of the output differs\n";
    for (std::size_t i = at < 5 ? 0 : at - 5; i < at; ++i) out << "          " << actual[i] << '\n';
    out << "expected  " << (at < expected.size() ? expected[at] : "(the end)") << '\n';
    out << "printed   " << (at < actual.size() ? actual[at] : "(the end)") << '\n';
    return out.str();
}

class GoldenReplay : public testing::TestWithParam<Case> {};

TEST_P(GoldenReplay, PrintsExactlyWhatIsExpected) {
    std::ifstream script(GetParam().script, std::ios::binary);
    ASSERT_TRUE(script);
    const std::string expected = ReadFile(GetParam().Expected());
    ASSERT_FALSE(expected.empty());
    std::ostringstream out;
    replay::ReplayError error;
    EXPECT_TRUE(replay::RunReplay(script, out, error))
        << "line " << error.line << ": " << error.reason;
    const std::string printed = out.str();
    EXPECT_TRUE(printed == expected) << Difference(expected, printed);
}

INSTANTIATE_TEST_SUITE_P(All, GoldenReplay, testing::ValuesIn(FindCases()), NameOf);

TEST(GoldenReplays, AreAllThere) {
    std::vector<Case> cases = FindCases();
    const auto count = [&](const char* kind) {
        return std::count_if(cases.begin(), cases.end(), [&](const Case& c) {
            return c.script.parent_path().filename() == kind;
        });
    };
    EXPECT_GE(count("make"), 122);
    EXPECT_GE(count("update"), 198);
    EXPECT_GE(count("view"), 40);
    EXPECT_GE(count("viewing"), 114);
}

}  // namespace
}  // namespace nodeline

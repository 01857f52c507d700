#include <cli/program.h>

#include <gtest/gtest.h>

namespace {

using test_support::kSmallGraph;
using test_support::ProgramResult;

class Usage : public test_support::ProgramTest {};

TEST_F(Usage, HelpNamesTheCommands) {
    const ProgramResult help = RunProgram("--help");
    EXPECT_EQ(help.status, 0);
    for (const char* command : {"render", "layout", "convert", "view", "replay"}) {
        EXPECT_NE(help.out.find(command), std::string::npos) << command;
    }
    EXPECT_EQ(help.err, "");
}

TEST_F(Usage, HelpOfACommandNamesItsOptions) {
    const ProgramResult help = RunProgram("render --help");
    EXPECT_EQ(help.status, 0);
    for (const char* option : {"--output", "--format", "--scale", "--handler", "--all", "--fold",
                               "--unfold", "--hide"}) {
        EXPECT_NE(help.out.find(option), std::string::npos) << option;
    }
}

TEST_F(Usage, VersionIsOneLine) {
    const ProgramResult version = RunProgram("--version");
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.out.rfind("nodeline ", 0), 0U);
    EXPECT_EQ(version.out.find('\n'), version.out.size() - 1);
}

TEST_F(Usage, WrongOnesEndWithTwoAndOneLine) {
    Write("g.txt", kSmallGraph);
    for (const char* arguments : {"",
                                  "paint g.txt",
                                  "render",
                                  "layout",
                                  "convert",
                                  "convert g.txt",
                                  "convert g.txt out.svg",
                                  "convert g.txt -",
                                  "convert g.txt out.dot --to svg",
                                  "convert g.txt g.txt",
                                  "replay",
                                  "render g.txt --size 3",
                                  "render g.txt other.txt",
                                  "render g.txt --format bmp",
                                  "render g.txt --format",
                                  "render g.txt --handler ports",
                                  "layout g.txt --handler simples",
                                  "layout g.txt --fold",
                                  "layout g.txt --fold main",
                                  "layout g.txt --fold main:up",
                                  "layout g.txt --fold main:Parents",
                                  "render g.txt --unfold main:parents:",
                                  "render g.txt --fold main:parents --fold children",
                                  "render g.txt --hide main",
                                  "render g.txt --hide 1x",
                                  "render g.txt --hide -",
                                  "render g.txt --hide 1 2",
                                  "layout g.txt --scale 2",
                                  "render g.txt --scale 0",
                                  "render g.txt --scale -1",
                                  "render g.txt --scale nan",
                                  "render g.txt --scale inf",
                                  "render g.txt --scale two",
                                  "render g.txt --scale 2x",
                                  "render g.txt -o picture.jpg",
                                  "replay g.txt --all",
                                  "replay g.txt --hide 1",
                                  "view",
                                  "view -",
                                  "view g.txt other.txt",
                                  "view g.txt --all",
                                  "view g.txt --layout fast"}) {
        const ProgramResult result = RunProgram(arguments);
        EXPECT_EQ(result.status, 2) << arguments;
        EXPECT_EQ(result.out, "") << arguments;
        EXPECT_GT(result.err.size(), 10U) << arguments;
        EXPECT_EQ(result.err.find('\n'), result.err.size() - 1) << arguments << result.err;
        EXPECT_EQ(CountFiles(), 1) << arguments;
    }
}

TEST_F(Usage, APictureNeverTakesThePlaceOfItsGraph) {
    Write("graph.svg", kSmallGraph);
    const std::string line = "graph.svg: the picture would take the place of the graph";
    ExpectError("render graph.svg", 2, line);
    ExpectError("render graph.svg -o ./graph.svg", 2, "./" + line);
    EXPECT_EQ(Read("graph.svg"), kSmallGraph);
}

}  // namespace

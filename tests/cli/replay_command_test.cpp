#include <cli/program.h>

#include <gtest/gtest.h>

namespace {

using test_support::ProgramResult;

class ReplayCommand : public test_support::ProgramTest {};

TEST_F(ReplayCommand, PrintsWhatTheScriptAsksFor) {
    Write("s.txt", "# a comment\nrecalc\ndump\n");
    const ProgramResult result = RunProgram("replay s.txt");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "recalc true\nnode 0 0 0 10 10 0\nend\n");
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(RunProgram("replay - <s.txt").out, result.out);
}

TEST_F(ReplayCommand, EndsAtALineThatCannotBeCarriedOutAndKeepsWhatWasPrinted) {
    Write("s.txt", "recalc\n\nnode 1 0 10 10\nnode 1 0 10 10\nrecalc\n");
    const ProgramResult result = RunProgram("replay s.txt");
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "recalc true\n");
    EXPECT_EQ(result.err, "s.txt:4: node 1 exists already\n");
}

TEST_F(ReplayCommand, SaysThatItsOutputIsFull) {
    Write("s.txt", "dump\n");
    const ProgramResult result = RunProgramInto("/dev/full", "replay s.txt");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "standard output cannot be written\n");
}

TEST_F(ReplayCommand, OfAnEmptyScriptPrintsNothing) {
    Write("s.txt", "");
    const ProgramResult result = RunProgram("replay s.txt");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "");
}

}  // namespace

// What the program prints and answers: checks, files, options.
#include "tests/scenario/runner_fixture.h"

namespace scenario {
namespace {

TEST_F(RunnerTest, ChecksThatHoldAreCounted) {
    const Outcome outcome = Run("ini A\n= none\n\n# a comment\n  ini B\n= none\n");
    EXPECT_EQ(outcome.out, "2 passed, 0 failed\n");
    EXPECT_EQ(outcome.status, 0);
}

TEST_F(RunnerTest, AnEmptyFileHolds) {
    Holds("", 0);
}

TEST_F(RunnerTest, LineEndsOfOtherSystemsAreRead) {
    Holds("ini A\r\n= none\r\n", 1);
}

TEST_F(RunnerTest, ACheckThatFailsSaysWhere) {
    const Outcome outcome = Run("write \"$D/a\" \"x\"\nbytes \"$D/a\"\n= \"y\"\n");
    EXPECT_EQ(outcome.out,
              "f:3: expected \"y\", got \"x\"\n    line 2: bytes \"$D/a\"\n"
              "0 passed, 1 failed\n");
    EXPECT_EQ(outcome.status, 1);
}

TEST_F(RunnerTest, TheRestRunsAfterAFailedCheck) {
    const Outcome outcome = Run("ini A\n= 1\nini A\n= none\nini A\n= 2\n");
    EXPECT_EQ(outcome.out,
              "f:2: expected 1, got none\n    line 1: ini A\nf:6: expected 2, got none\n"
              "    line 5: ini A\n1 passed, 2 failed\n");
}

TEST_F(RunnerTest, AMissingLineFails) {
    const Outcome outcome = Run("ini A\n= none\n= \"more\"\n= \"even more\"\n");
    EXPECT_EQ(outcome.out,
              "f:3: expected \"more\", got nothing\nf:4: expected \"even more\", got nothing\n"
              "    line 1: ini A\n      none\n    - \"more\"\n    - \"even more\"\n"
              "1 passed, 2 failed\n");
    EXPECT_EQ(outcome.status, 1);
}

TEST_F(RunnerTest, ALineTooManyFails) {
    const Outcome outcome = Run("start\nlog 3 41 42 43\n= 41 0 0 0\n");
    EXPECT_EQ(outcome.out,
              "f:3: expected nothing more, got 42 0 0 0\n    line 2: log 3 41 42 43\n"
              "      41 0 0 0\n    + 42 0 0 0\n    + 43 0 0 0\n1 passed, 1 failed\n");
    EXPECT_EQ(outcome.status, 1);
}

// One line that is missing, and one that stands in the place of another, fail by themselves: what
// is behind them holds.
TEST_F(RunnerTest, LogsAreComparedAsADifference) {
    const Outcome outcome =
        Run("start\nlog 41 42 43 44\n= 40 0 0 0\n= 41 0 0 0\n= 42 1 0 0\n= 43 0 0 0\n= 44 0 0 0\n");
    EXPECT_EQ(outcome.out,
              "f:3: expected 40 0 0 0, got 41 0 0 0\nf:5: expected 42 1 0 0, got 42 0 0 0\n"
              "    line 2: log 41 42 43 44\n    - 40 0 0 0\n      41 0 0 0\n    - 42 1 0 0\n"
              "    + 42 0 0 0\n      43 0 0 0\n      44 0 0 0\n3 passed, 2 failed\n");
    EXPECT_EQ(outcome.status, 1);
}

// The line behind what was not expected was not printed in its place.
TEST_F(RunnerTest, ALineInBetweenFailsTheOneBehindIt) {
    const Outcome outcome = Run("start\nlog 41 42 43\n= 41 0 0 0\n= 43 0 0 0\n");
    EXPECT_EQ(outcome.out,
              "f:4: expected 43 0 0 0, got 42 0 0 0\n    line 2: log 41 42 43\n"
              "      41 0 0 0\n    + 42 0 0 0\n      43 0 0 0\n1 passed, 1 failed\n");
}

TEST_F(RunnerTest, NothingIsExpectedInItsOwnWord) {
    Holds("log\n= nothing\n", 1);
    const Outcome outcome = Run("ini A\n= nothing\n");
    EXPECT_EQ(outcome.out,
              "f:2: expected nothing, got none\n    line 1: ini A\n0 passed, 1 failed\n");
}

TEST_F(RunnerTest, APrintedNothingIsNoNothing) {
    const Outcome outcome = Run("ini A \"nothing\"\nini A\n= nothing\n");
    EXPECT_EQ(outcome.out,
              "f:3: expected nothing, got \"nothing\"\n    line 2: ini A\n0 passed, 1 failed\n");
    Holds("ini A \"nothing\"\nini A\n= \"nothing\"\n", 1);
}

TEST_F(RunnerTest, OutputWithoutACheckIsNotChecked) {
    Holds("ini A\nlog\n", 0);
}

TEST_F(RunnerTest, TheFormOfAnExpectedTextDoesNotMatter) {
    Holds("ini A \"\\xC3\\xA9\\\\\"\nini A\n= \"\u00e9\\\\\"\nini A\n= \"\\u00e9\\x5C\"\n", 2);
}

TEST_F(RunnerTest, FilesAreCountedTogetherAndDoNotMeet) {
    const std::string a = File("a.scn", "ini A \"1\"\nini A\n= \"1\"\nadvance 50\n");
    const std::string b = File("b.scn", "ini A\n= none\nstart\nlog 3 28\n= nothing\nini B\n= 1\n");
    const Outcome outcome = Program({a, b, a});
    EXPECT_EQ(outcome.out, b + ":7: expected 1, got none\n    line 6: ini B\n4 passed, 1 failed\n");
    EXPECT_EQ(outcome.status, 1);
}

TEST_F(RunnerTest, AMistakeWeighsMoreThanAFailedCheck) {
    const std::string wrong = File("wrong.scn", "frobnicate\n");
    const std::string fails = File("fails.scn", "ini A\n= 1\n");
    const std::string holds = File("holds.scn", "ini A\n= none\n");
    const Outcome outcome = Program({wrong, fails, holds});
    EXPECT_EQ(outcome.out, wrong + ":1: unknown command: frobnicate\n" + fails +
                               ":2: expected 1, got none\n    line 1: ini A\n1 passed, 1 failed\n");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(Program({fails, wrong}).status, 2);
    EXPECT_EQ(Program({fails, holds}).status, 1);
}

TEST_F(RunnerTest, AFileThatCannotBeReadIsAMistake) {
    const std::string missing = Folder() + "/missing.scn";
    EXPECT_EQ(Program({missing}).out, missing + ": cannot be read\n0 passed, 0 failed\n");
    EXPECT_EQ(Program({missing}).status, 2);
    EXPECT_EQ(Program({Folder()}).status, 2);
}

TEST_F(RunnerTest, TheCommandLineIsChecked) {
    const std::string file = File("a.scn", "");
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{},
                                                      {"--verbose"},
                                                      {"--keep"},
                                                      {"--keep", file},
                                                      {"--bad", file},
                                                      {"-j", file},
                                                      {"-j", "0", file},
                                                      {"-j", "-1", file},
                                                      {"-j2x", file},
                                                      {"--density", "0", file},
                                                      {"--density", "-2", file},
                                                      {"--density", "1.5", file},
                                                      {"--density", "17", file},
                                                      {"--density", file},
                                                      {"-x", file}}) {
        const Outcome outcome = Program(arguments);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.err,
                  "usage: ambrisor-scenario [--verbose] [--keep DIR] [-j N] [--density N] "
                  "FILE...\n");
        EXPECT_EQ(outcome.out, "");
    }
    EXPECT_EQ(Program({"--", file}).status, 0);
    EXPECT_EQ(Program({"-j", "3", file}).status, 0);
    EXPECT_EQ(Program({file, "-j3", file}).status, 0);
    EXPECT_EQ(Program({"--density", "16", file}).status, 0);
}

TEST_F(RunnerTest, SurfacesAreAsFineAsWanted) {
    const std::string keep = Folder() + "/kept";
    // A file of 54 bytes and three for each stored pixel of a screen of 1024 x 768.
    EXPECT_EQ(Run("start\nscreenshot shot.bmp\n", {"--keep", keep, "--density", "3"}).status, 0);
    EXPECT_EQ(std::filesystem::file_size(keep + "/f/shot.bmp"), 54U + 1024 * 3 * 768 * 3 * 3);
    // Places stay, and the middle of one is a flat part of the skin here as there.
    const std::string asks = "start\n? frmMAIN.Width\n= 293\npixel frmMAIN 100 100\n= 6571580\n";
    EXPECT_EQ(Run(asks, {"--density", "2"}).out, "2 passed, 0 failed\n");
    Holds(asks, 2);
}

TEST_F(RunnerTest, VerboseShowsEachCommandWithWhatItPrinted) {
    const Outcome outcome = Run("ini A \"1\"\n# not shown\nini A\n= \"1\"\n", {"--verbose"});
    EXPECT_EQ(outcome.out, "f\n1: ini A \"1\"\n3: ini A\n    \"1\"\n1 passed, 0 failed\n");
}

TEST_F(RunnerTest, KeptFoldersStayAndAreNeverUsedAgain) {
    const std::string keep = Folder() + "/kept/here";
    EXPECT_EQ(Run("write \"$D/sub/a\" \"1\"\n", {"--keep", keep}).status, 0);
    EXPECT_EQ(Run("exists \"$D/sub/a\"\n= False\n", {"--keep", keep}).status, 0);
    EXPECT_TRUE(std::filesystem::exists(keep + "/f/sub/a"));
    EXPECT_TRUE(std::filesystem::is_empty(keep + "/f-2"));
}

TEST_F(RunnerTest, ScratchFoldersGoAway) {
    ::setenv("TMPDIR", Folder().c_str(), 1);
    EXPECT_EQ(Run("write \"$D/a/b\" \"x\"\nexists \"$D/a/b\"\n= True\n").status, 0);
    ::unsetenv("TMPDIR");
    int entries = 0;
    for (const auto& entry : std::filesystem::directory_iterator(Folder())) {
        entries += entry.is_directory() ? 1 : 0;
    }
    EXPECT_EQ(entries, 0);
}

}  // namespace
}  // namespace scenario

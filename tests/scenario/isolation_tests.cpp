// Each file in a process of its own: what crashes, loops or waits for ever is one failed file.
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <stdexcept>
#include <thread>

#include "tests/scenario/runner_fixture.h"

namespace scenario {
namespace {

class Isolation : public RunnerTest {
  protected:
    // Runs files of which one does something else than a script can.
    Outcome RunWith(const std::function<void()>& action, Options options = {}) {
        options.files = {File("a.scn", "ini A\n= none\n"), File("odd.scn", ""),
                         File("b.scn", "ini A\n= 1\nini B\n= none\n")};
        const std::string odd = options.files[1];
        const auto run = [&](const Script& script, Progress& progress, std::ostream& out) {
            if (script.file != odd) {
                RunScript(script, false, progress, out);
                return;
            }
            out << "said\n";
            progress = {{2, 1, 0}, 7};
            action();
        };
        std::ostringstream out;
        const Tally tally = RunFiles(options, run, out);
        out << tally.passed << ' ' << tally.failed << ' ' << tally.mistakes;
        return {0, out.str(), {}};
    }

    // What RunWith prints: of the odd file what it said, and this behind its line.
    std::string Printed(const std::string& failure, const std::string& tally) const {
        return "said\n" + (failure.empty() ? "" : Folder() + "/odd.scn:7: " + failure + '\n') +
               Folder() + "/b.scn:2: expected 1, got none\n    line 1: ini A\n" + tally;
    }
};

TEST_F(Isolation, ACrashIsOneFailedFileWithItsLastLine) {
    const auto crash = [] {
        std::signal(SIGSEGV, SIG_DFL);  // the sanitizers would make an exit of it
        static_cast<void>(std::raise(SIGSEGV));
    };
    // Two that had passed and one that had failed in it, and the crash; one of each in the others.
    EXPECT_EQ(RunWith(crash).out, Printed("crashed (signal 11)", "4 3 0"));
    Options sideBySide;
    sideBySide.atOnce = 3;
    EXPECT_EQ(RunWith(crash, sideBySide).out, Printed("crashed (signal 11)", "4 3 0"));
}

TEST_F(Isolation, SoIsWhatNobodyCatches) {
    EXPECT_EQ(RunWith([] { throw std::runtime_error("out of the blue"); }).out,
              Printed("crashed (signal 6)", "4 3 0"));
}

TEST_F(Isolation, SoIsWhatASanitizerEnds) {
    EXPECT_EQ(RunWith([] { std::_Exit(23); }).out, Printed("crashed (exit status 23)", "4 3 0"));
}

TEST_F(Isolation, AFileThatComesToItsEndHasNoMoreThanItsChecks) {
    EXPECT_EQ(RunWith([] {}).out, Printed("", "4 2 0"));
}

TEST_F(Isolation, ALoopWithoutAnEndUsesUpItsTime) {
    Options options;
    options.seconds = 1;
    const auto loop = [] {
        for (volatile bool goesOn = true; goesOn;) {
        }
    };
    EXPECT_EQ(RunWith(loop, options).out,
              Printed("did not end within 1 s of processor time", "4 3 0"));
}

// The first file ends only when the last one has run: they do run side by side, and yet what they
// print comes in the order of the files.
TEST_F(Isolation, FilesRunSideBySideAndReportInTheirOrder) {
    Options options;
    options.files = {File("a.scn", ""), File("b.scn", ""), File("c.scn", "")};
    options.atOnce = 3;
    const std::string mark = Folder() + "/mark";
    const auto run = [&](const Script& script, Progress& progress, std::ostream& out) {
        using namespace std::chrono_literals;
        if (script.file == options.files[2]) {
            std::ofstream(mark) << "here";
        }
        for (int i = 0; i < 3000 && !std::filesystem::exists(mark); ++i) {
            std::this_thread::sleep_for(10ms);
        }
        out << std::filesystem::path(script.file).filename().string();
        progress.tally.passed += std::filesystem::exists(mark) ? 1 : 0;
    };
    std::ostringstream out;
    EXPECT_EQ(RunFiles(options, run, out).passed, 3);
    EXPECT_EQ(out.str(), "a.scnb.scnc.scn");
}

TEST_F(Isolation, TheScratchFolderGoesAwayAfterACrash) {
    ::setenv("TMPDIR", Folder().c_str(), 1);
    RunWith([] { std::_Exit(1); });
    ::unsetenv("TMPDIR");
    for (const auto& entry : std::filesystem::directory_iterator(Folder())) {
        EXPECT_FALSE(entry.is_directory()) << entry.path();
    }
}

// The thumb of a list of 30 rows in 181 pixels begins at the top of the strip at its right edge.
const std::string kHeldThumb =
    "start\nrows lstPlaylist 30\nini A\n= none\nmouse lstPlaylist 274 10\n";

TEST_F(Isolation, AWaitThatNothingCanEndFailsTheFileThere) {
    const Outcome outcome = Run(kHeldThumb + "press\nini A\n= none\n");
    EXPECT_EQ(outcome.out, "f:6: waits for what can never come\n1 passed, 1 failed\n");
    EXPECT_EQ(outcome.status, 1);
    // What was to happen has happened, and did not end it.
    EXPECT_EQ(Run(kHeldThumb + "at 50 ? Random\npress\n").out,
              "f:7: waits for what can never come\n1 passed, 1 failed\n");
    // Time that the scenario itself lets pass ends by itself, but not what begins in its course.
    EXPECT_EQ(Run(kHeldThumb + "at 50 press\nadvance 2400000\n= nothing\n").out,
              "f:7: waits for what can never come\n1 passed, 1 failed\n");
}

TEST_F(Isolation, AMistakeInsideSuchAWaitIsToldToo) {
    const Outcome outcome = Run(kHeldThumb + "at 50 hotkey \"Nxt\"\npress\n");
    EXPECT_EQ(outcome.out,
              "f:6: no such hot key is registered: Nxt\nf:7: waits for what can never come\n"
              "1 passed, 1 failed\n");
    EXPECT_EQ(outcome.status, 2);
}

TEST_F(Isolation, AWaitThatACommandEndsHolds) {
    Holds(kHeldThumb + "at 5000 release\npress\n? lstPlaylist.MouseMode\n= 0\n", 2);
    Holds("start\nadvance 3600000\nini A\n= none\n", 1);
    // The timer asks the host, and there the button is let go.
    Holds(kHeldThumb +
              "call OpenMedia \"/a\"\nset Playing True\ncall StartTickTimer\n"
              "host on 33 release\npress\n? lstPlaylist.MouseMode\n= 0\n",
          2);
}

TEST_F(Isolation, AListThatScrollsByItselfComesToItsEnd) {
    Holds(
        "start\nrows lstPlaylist 5000\nmouse lstPlaylist 274 179\npress\n"
        "? lstPlaylist.DisplayLast\n= 4999\nrelease\n",
        1);
}

}  // namespace
}  // namespace scenario

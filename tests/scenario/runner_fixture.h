// For the tests of the runner itself: a scenario given as text, run as the program would run it.
#pragma once

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/scenario/scratch.h"
#include "tests/scenario/script.h"

namespace scenario {

class RunnerTest : public ::testing::Test {
  protected:
    struct Outcome {
        int status = 0;
        std::string out;
        std::string err;
    };

    /// Writes a scenario file and answers its path.
    std::string File(const std::string& name, const std::string& text) {
        const std::string path = folder_.Path() + '/' + name;
        std::ofstream(path, std::ios::binary) << text;
        return path;
    }

    Outcome Program(const std::vector<std::string>& arguments) {
        std::ostringstream out;
        std::ostringstream err;
        const int status = RunProgram(arguments, out, err);
        return {status, out.str(), err.str()};
    }

    /// Runs one scenario; in what it prints, its path is "f".
    Outcome Run(const std::string& text, const std::vector<std::string>& options = {}) {
        const std::string path = File("f.scn", text);
        std::vector<std::string> arguments = options;
        arguments.push_back(path);
        Outcome outcome = Program(arguments);
        for (std::size_t at = 0; (at = outcome.out.find(path, at)) != std::string::npos;) {
            outcome.out.replace(at, path.size(), "f");
        }
        return outcome;
    }

    /// Expects every check of the scenario to hold, and so many of them.
    void Holds(const std::string& text, int checks) {
        const Outcome outcome = Run(text);
        EXPECT_EQ(outcome.out, std::to_string(checks) + " passed, 0 failed\n") << text;
        EXPECT_EQ(outcome.status, 0) << text;
    }

    /// Expects the scenario to be refused for one line, before anything of it has run.
    void Refused(const std::string& text, const std::string& why) {
        const Outcome outcome = Run(text);
        EXPECT_EQ(outcome.out, "f:" + why + "\n0 passed, 0 failed\n") << text;
        EXPECT_EQ(outcome.status, 2) << text;
    }

    const std::string& Folder() const { return folder_.Path(); }

  private:
    Scratch folder_{"runner", std::nullopt};
};

}  // namespace scenario

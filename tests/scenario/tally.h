// What came of the checks, and how far a file has come.
#pragma once

namespace scenario {

struct Tally {
    int passed = 0;
    int failed = 0;
    int mistakes = 0;  ///< files that could not be read, or lines that are not of the language

    Tally& operator+=(const Tally& other) {
        passed += other.passed;
        failed += other.failed;
        mistakes += other.mistakes;
        return *this;
    }
};

/// Lies in memory that two processes share: plain numbers only.
struct Progress {
    Tally tally;
    int line = 0;  ///< of the command that was begun last, 0 before the first
};

}  // namespace scenario

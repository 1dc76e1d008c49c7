// What is given, unfolded beside the rest of the program.
#include "host/given_reader.h"

#include <gtest/gtest.h>
#include <poll.h>

#include <chrono>
#include <fstream>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/host/scratch_folder.h"

namespace veldrin {
namespace {

using Lines = std::vector<std::string>;
using std::chrono::milliseconds;

class GivenSlowly : public testing::Test {
  protected:
    GivenSlowly() {
        for (const char* name : {"a.mp3", "b.mp3", "l.xspf"}) {
            std::ofstream(scratch_.Path(name)) << "bytes";
        }
    }
    ~GivenSlowly() override { Answer(); }

    /// Of a file that is found at once and a list that hangs until Answer.
    std::unique_ptr<GivenReader> Reader(const Lines& names) {
        Lines paths;
        for (const std::string& name : names) {
            paths.push_back(scratch_.Path(name));
        }
        GivenRules rules;
        rules.types = SupportedTypes::Known();
        rules.xspf = [answered = answer_.get_future().share()](std::string_view) {
            answered.wait_for(std::chrono::seconds(30));
            return std::optional(Lines{"b.mp3", "none.mp3"});
        };
        return std::make_unique<GivenReader>(paths, rules);
    }
    void Answer() {
        if (!answered_) {
            answer_.set_value();
        }
        answered_ = true;
    }
    static bool IsReadable(const GivenReader& reader) {
        pollfd entry{reader.Number(), POLLIN, 0};
        return poll(&entry, 1, 0) == 1;
    }
    std::string Quoted(const std::string& name) { return "\"" + scratch_.Path(name) + "\""; }

    ScratchFolder scratch_;
    std::promise<void> answer_;
    bool answered_ = false;
};

TEST_F(GivenSlowly, TheFirstLineDoesNotWaitForTheOthers) {
    const auto reader = Reader({"a.mp3", "l.xspf"});
    reader->WaitForFirst(milliseconds(0));
    EXPECT_TRUE(IsReadable(*reader));
    EXPECT_EQ(reader->Take().lines, (Lines{Quoted("a.mp3")}));
    EXPECT_FALSE(IsReadable(*reader));
    EXPECT_FALSE(reader->IsDone());
    Answer();
    reader->WaitForAll();
    EXPECT_TRUE(IsReadable(*reader));
    EXPECT_FALSE(reader->IsDone());
    const GivenPaths rest = reader->Take();
    EXPECT_EQ(rest.lines, (Lines{"/ADD " + Quoted("b.mp3")}));
    EXPECT_EQ(rest.places, (Lines{scratch_.Path("b.mp3")}));
    EXPECT_EQ(rest.complaints, (Lines{"'" + scratch_.Path("l.xspf") +
                                      "': 1 of 2 names in this list leads nowhere"}));
    EXPECT_TRUE(reader->IsDone());
}

TEST_F(GivenSlowly, WhereNothingIsFoundTheWaitEnds) {
    const auto reader = Reader({"none.mp3"});
    reader->WaitForFirst(std::chrono::seconds(30));
    const GivenPaths given = reader->Take();
    EXPECT_TRUE(given.lines.empty());
    EXPECT_EQ(given.complaints.size(), 1U);
    EXPECT_TRUE(reader->IsDone());
}

TEST_F(GivenSlowly, WhatHangsIsLeftBehind) {
    auto reader = Reader({"l.xspf"});
    reader.reset();
    Answer();
}

}  // namespace
}  // namespace veldrin

// What is dropped, on its way into the queue of events.
#include "platform/desktop/drops.h"

#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <string>
#include <vector>

namespace platform::desktop {
namespace {

using Names = std::vector<std::string>;

class DroppedFiles : public ::testing::Test {
  protected:
    DroppedFiles() {
        std::string name = std::filesystem::temp_directory_path() / "veldrin-drops-XXXXXX";
        folder_ = mkdtemp(name.data());
        drops_.TellBy([this](const std::string& text) { told_.push_back(text); });
    }
    ~DroppedFiles() override { std::filesystem::remove_all(folder_); }

    std::string Write(const std::string& name, const std::string& bytes = "") {
        const std::filesystem::path path = folder_ + "/" + name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path) << bytes;
        return path;
    }
    void Drop(Names paths) { drops_.Take({7, {1, 2}}, std::move(paths)); }

    /// The files of the next event, which is waited for.
    Names Next() {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        for (;;) {
            drops_.Turn();
            if (auto event = events_.Take()) {
                const auto& dropped = std::get<FilesDropped>(*event);
                EXPECT_EQ(dropped.window, 7);
                EXPECT_EQ(dropped.ptScreen, (Point{11, 12}));
                return dropped.paths;
            }
            std::unique_lock lock(mutex_);
            if (!wakes_.wait_until(lock, end, [this] { return woken_; })) {
                return {"(nothing came)"};
            }
            woken_ = false;
        }
    }
    Names NextNames() {
        Names names = Next();
        for (std::string& name : names) {
            name = name.substr(std::min(folder_.size() + 1, name.size()));
        }
        return names;
    }

    std::string folder_;
    std::mutex mutex_;
    std::condition_variable wakes_;
    bool woken_ = false;
    bool windowIsThere_ = true;
    Names told_;
    EventQueue events_;
    Drops drops_{events_,
                 [this](const DropPlace&) {
                     return windowIsThere_ ? std::optional(Point{11, 12}) : std::nullopt;
                 },
                 [this] {
                     const std::lock_guard lock(mutex_);
                     woken_ = true;
                     wakes_.notify_all();
                 }};
};

TEST_F(DroppedFiles, FilesComeAtOnceAndAsTheyAre) {
    Drop({"/none.mp3", Write("a.txt")});
    ASSERT_FALSE(events_.IsEmpty());
    EXPECT_EQ(Next(), (Names{"/none.mp3", folder_ + "/a.txt"}));
}

TEST_F(DroppedFiles, AFolderBecomesTheFilesInItAndBelow) {
    for (const char* name : {"m/z.mp3", "m/A/b/1.mp3", "m/A/2.mp3", "m/.git/3.mp3"}) {
        Write(name);
    }
    Drop({"/x.mp3", folder_ + "/m", "/y.mp3"});
    Names all;
    while (all.size() < 5) {
        const Names next = Next();
        all.insert(all.end(), next.begin(), next.end());
    }
    EXPECT_EQ(all, (Names{"/x.mp3", folder_ + "/m/A/b/1.mp3", folder_ + "/m/A/2.mp3",
                          folder_ + "/m/z.mp3", "/y.mp3"}));
}

TEST_F(DroppedFiles, AListBecomesWhatItNamesAndTheRestIsTold) {
    Write("a b.mp3");
    Write("c.mp3");
    const std::string m3u = Write("l.m3u", "c.mp3\nnone.mp3\n");
    const std::string xspf = Write("l.xspf",
                                   "<playlist><trackList><track><location>a%20b.mp3</location>"
                                   "</track></trackList></playlist>");
    Drop({m3u});
    EXPECT_EQ(NextNames(), (Names{"c.mp3"}));
    Drop({xspf});
    EXPECT_EQ(NextNames(), (Names{"a b.mp3"}));
    EXPECT_EQ(told_, (Names{"'" + m3u + "': 1 of 2 names in this list leads nowhere"}));
}

TEST_F(DroppedFiles, LaterDropsWaitForEarlierOnes) {
    Write("m/a.mp3");
    Drop({folder_ + "/m"});
    Drop({"/later.mp3"});
    EXPECT_TRUE(events_.IsEmpty());
    EXPECT_EQ(NextNames(), (Names{"m/a.mp3"}));
    EXPECT_EQ(Next(), (Names{"/later.mp3"}));
}

// Whoever takes them looks into each; between a few of them other events have their turn.
TEST_F(DroppedFiles, ManyFilesComeAFewAtATime) {
    for (int i = 100; i < 140; ++i) {
        Write("m/" + std::to_string(i));
    }
    Drop({folder_ + "/m"});
    Names all;
    while (all.size() < 40) {
        const Names next = NextNames();
        EXPECT_LE(next.size(), 16U);
        all.insert(all.end(), next.begin(), next.end());
    }
    EXPECT_EQ(all.front(), "m/100");
    EXPECT_EQ(all.back(), "m/139");
}

TEST_F(DroppedFiles, WhatElseWaitsComesFirst) {
    Write("m/a.mp3");
    Drop({folder_ + "/m"});
    events_.Push(CloseRequested{3});
    for (int turns = 0; turns < 100; ++turns) {
        drops_.Turn();
    }
    EXPECT_TRUE(std::holds_alternative<CloseRequested>(*events_.Take()));
    EXPECT_EQ(NextNames(), (Names{"m/a.mp3"}));
}

TEST_F(DroppedFiles, AnEmptyFolderIsToldOnce) {
    std::filesystem::create_directory(folder_ + "/empty");
    Drop({folder_ + "/empty"});
    Drop({"/x"});
    EXPECT_EQ(Next(), (Names{"/x"}));
    EXPECT_EQ(told_, (Names{"no file in '" + folder_ + "/empty' or in a folder below it"}));
}

TEST_F(DroppedFiles, AWindowThatHasGoneGetsNothing) {
    Write("m/a.mp3");
    Drop({folder_ + "/m"});
    windowIsThere_ = false;
    Drop({folder_ + "/m", "/x"});
    std::filesystem::create_directory(folder_ + "/empty");
    Drop({folder_ + "/empty"});
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (told_.empty() && std::chrono::steady_clock::now() < end) {
        drops_.Turn();
    }
    EXPECT_EQ(told_.size(), 1U);
    EXPECT_TRUE(events_.IsEmpty());
}

}  // namespace
}  // namespace platform::desktop

// The thread for work that may never return, and the places where files were waited for in vain.
#include "host/engine/worker.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <memory>

#include "host/engine/slow_places.h"
#include "host/engine/stragglers.h"

namespace veldrin {
namespace {

using std::chrono::milliseconds;
constexpr std::chrono::seconds kLongest(20);

/// Whether the counted threads end, for others may still be on their way out.
bool AllEnd() {
    const auto end = std::chrono::steady_clock::now() + kLongest;
    while (HasStragglers() && std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(milliseconds(1));
    }
    return !HasStragglers();
}

TEST(Worker, DoesOnePieceOfWorkAfterTheOther) {
    Worker worker;
    EXPECT_TRUE(worker.IsDone());
    int count = 0;
    for (int i = 1; i <= 1000; ++i) {
        worker.Begin([&count] { ++count; });
        ASSERT_TRUE(worker.WaitFor(kLongest));
        ASSERT_EQ(count, i);
    }
    EXPECT_FALSE(HasStragglers());
}

TEST(Worker, WorkIsDoneOnceWhatItOwnsIsGone) {
    Worker worker;
    const auto owned = std::make_shared<int>(0);
    worker.Begin([owned] {});
    ASSERT_TRUE(worker.WaitFor(kLongest));
    EXPECT_EQ(owned.use_count(), 1);
}

TEST(Worker, GoesOnWithoutWorkThatHangs) {
    auto release = std::make_shared<std::promise<void>>();
    auto hung = std::make_shared<std::atomic<bool>>(false);
    {
        Worker worker;
        worker.Begin([released = release->get_future().share(), hung] {
            released.wait();
            *hung = true;
        });
        EXPECT_FALSE(worker.WaitFor(milliseconds(1)));
        EXPECT_TRUE(HasStragglers());
        bool done = false;
        worker.Begin([&done] { done = true; });
        EXPECT_TRUE(worker.WaitFor(kLongest));
        EXPECT_TRUE(done);
        worker.LeaveBehind();
        EXPECT_TRUE(worker.IsDone());
    }
    EXPECT_TRUE(HasStragglers());
    EXPECT_FALSE(*hung);
    release->set_value();
    EXPECT_TRUE(AllEnd());
    EXPECT_TRUE(*hung);
}

TEST(SlowPlaces, AFolderWhoseFileWasWaitedForInVainGetsHalfASecond) {
    SlowPlaces places;
    EXPECT_EQ(places.PatienceFor("/a/b/1"), milliseconds(5000));
    places.Note("/a/b/1", {{"/", "x"}});
    EXPECT_EQ(places.PatienceFor("/a/b/2"), milliseconds(500));
    EXPECT_EQ(places.PatienceFor("/a/b/c/3"), milliseconds(500));
    EXPECT_EQ(places.PatienceFor("/a/4"), milliseconds(5000));
    EXPECT_EQ(places.PatienceFor("/a/bc/4"), milliseconds(5000));
}

TEST(SlowPlaces, AMountedFileSystemIsOnePlace) {
    SlowPlaces places;
    places.Note("/mnt/s/a/1", {{"/", "x"}, {"/mnt/s", "y"}, {"/mnt", "z"}, {"/mnt/s/b", "w"}});
    EXPECT_EQ(places.PatienceFor("/mnt/s/c/2"), milliseconds(500));
    EXPECT_EQ(places.PatienceFor("/mnt/song/2"), milliseconds(5000));
    EXPECT_EQ(places.PatienceFor("/mnt/2"), milliseconds(5000));
}

TEST(SlowPlaces, UntilOneOfItsFilesAnswers) {
    SlowPlaces places;
    places.Note("/mnt/s/a/1", {{"/", "x"}, {"/mnt/s", "y"}});
    places.Forget("/elsewhere/1");
    EXPECT_EQ(places.PatienceFor("/mnt/s/a/2"), milliseconds(500));
    places.Forget("/mnt/s/c/1");
    EXPECT_EQ(places.PatienceFor("/mnt/s/d/2"), milliseconds(5000));
    EXPECT_EQ(places.PatienceFor("/mnt/s/a/2"), milliseconds(500));  // the folder is a place, too
    places.Forget("/mnt/s/a/2");
    EXPECT_EQ(places.PatienceFor("/mnt/s/a/1"), milliseconds(5000));
}

}  // namespace
}  // namespace veldrin

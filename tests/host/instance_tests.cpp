// How starts find one another: the lock and the socket, both real, in a folder of the test's own.
#include "host/instance/instance.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>

#include <atomic>
#include <filesystem>
#include <memory>
#include <thread>

#include "tests/host/instance_fixture.h"

namespace veldrin {
namespace {

using std::chrono::milliseconds;
using Kind = Request::Kind;

constexpr Patience kPatience{milliseconds(5000), milliseconds(5000)};

TEST_F(Instance, FirstStartTakesTheLock) {
    const HandoverResult first = TakeLockOrHandOver(place_, {{Kind::kShow, ""}}, kPatience);
    EXPECT_EQ(first.outcome, Handover::kNobodyRuns);
    EXPECT_FALSE(InstanceLock::TryTake(place_).has_value());
}

TEST_F(Instance, LockIsFreeAgainOnceItsHolderIsGone) {
    { const InstanceLock lock = Lock(); }
    EXPECT_TRUE(InstanceLock::TryTake(place_).has_value());
    EXPECT_TRUE(std::filesystem::exists(place_.lockPath));
}

TEST_F(Instance, LockAndSocketAreTheOwnersOnly) {
    const InstanceLock lock = Lock();
    const Descriptor listening = lock.Listen(place_);
    ASSERT_TRUE(listening);
    struct stat status {};
    ASSERT_EQ(stat(place_.socketPath.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
    ASSERT_EQ(stat(place_.lockPath.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
}

TEST_F(Instance, AnythingButAFileIsNoLock) {
    ASSERT_EQ(mkfifo(place_.lockPath.c_str(), 0600), 0);
    EXPECT_FALSE(InstanceLock::TryTake(place_));
    EXPECT_EQ(unlink(place_.lockPath.c_str()), 0);
    ASSERT_EQ(mkdir(place_.lockPath.c_str(), 0700), 0);
    EXPECT_FALSE(InstanceLock::TryTake(place_));
    EXPECT_EQ(rmdir(place_.lockPath.c_str()), 0);
    EXPECT_EQ(symlink("elsewhere", place_.lockPath.c_str()), 0);
    EXPECT_FALSE(InstanceLock::TryTake(place_));
    EXPECT_EQ(unlink(place_.lockPath.c_str()), 0);
    EXPECT_TRUE(InstanceLock::TryTake(place_));
}

TEST_F(Instance, ItsHolderTakesTheSocketAway) {
    const InstanceLock lock = Lock();
    const Descriptor listening = lock.Listen(place_);
    ASSERT_TRUE(listening);
    lock.RemoveSocket(place_);
    EXPECT_NE(access(place_.socketPath.c_str(), F_OK), 0);
}

// Somebody has tidied the folder up, and another instance has begun since.
TEST_F(Instance, SocketOfALaterInstanceStays) {
    const InstanceLock earlier = Lock();
    const Descriptor unheard = earlier.Listen(place_);
    unlink(place_.lockPath.c_str());
    const InstanceLock later = Lock();
    const Descriptor listening = later.Listen(place_);
    ASSERT_TRUE(listening);
    earlier.RemoveSocket(place_);
    EXPECT_EQ(access(place_.socketPath.c_str(), F_OK), 0);
    later.RemoveSocket(place_);
    EXPECT_NE(access(place_.socketPath.c_str(), F_OK), 0);
}

TEST_F(Instance, LaterStartHandsItsLinesOver) {
    Running running(Lock(), place_);
    const Requests requests = {{Kind::kLine, "\"/m/b\xE9\n.mp3\""}, {Kind::kLine, "/ADD \"/m\""}};
    Handover outcome = Handover::kNoAnswer;
    std::atomic<bool> sent = false;
    std::thread later([&] {
        outcome = TakeLockOrHandOver(place_, requests, kPatience).outcome;
        sent = true;
    });
    EXPECT_TRUE(running.TurnUntil([&] { return sent && running.heard.size() == 2; }));
    later.join();
    EXPECT_EQ(outcome, Handover::kDone);
    EXPECT_EQ(running.heard, requests);
}

TEST_F(Instance, MessageLargerThanAnySocketBufferArrivesWhole) {
    Running running(Lock(), place_);
    Requests requests;
    for (int i = 0; i < 100; ++i) {
        requests.push_back({Kind::kLine, std::string(65536, static_cast<char>('a' + i % 26))});
    }
    Handover outcome = Handover::kNoAnswer;
    std::thread later([&] { outcome = TakeLockOrHandOver(place_, requests, kPatience).outcome; });
    EXPECT_TRUE(running.TurnUntil([&] { return running.heard.size() == 100; }));
    later.join();
    EXPECT_EQ(outcome, Handover::kDone);
    EXPECT_EQ(running.heard, requests);
}

TEST_F(Instance, StaleSocketOfACrashIsReplaced) {
    {
        const InstanceLock lock = Lock();
        const Descriptor listening = lock.Listen(place_);
        ASSERT_TRUE(listening);
    }  // both are closed, the socket's file stays: a crash leaves it so
    ASSERT_TRUE(std::filesystem::exists(place_.socketPath));
    EXPECT_FALSE(RawSender(place_).IsConnected());

    HandoverResult next = TakeLockOrHandOver(place_, {{Kind::kShow, ""}}, kPatience);
    ASSERT_EQ(next.outcome, Handover::kNobodyRuns);
    Running running(std::move(*next.lock), place_);
    EXPECT_EQ(AnswerTo(running, "veldrin 1;S0:,"), "ok");
}

TEST_F(Instance, HolderThatDoesNotListenIsGivenUpAfterTheTimeLimit) {
    const InstanceLock lock = Lock();
    const auto start = std::chrono::steady_clock::now();
    const HandoverResult result =
        TakeLockOrHandOver(place_, {{Kind::kShow, ""}}, {milliseconds(10), milliseconds(200)});
    const auto passed = std::chrono::steady_clock::now() - start;
    EXPECT_EQ(result.outcome, Handover::kNoAnswer);
    EXPECT_GE(passed, milliseconds(200));
    EXPECT_LT(passed, milliseconds(1500));
}

TEST_F(Instance, HolderThatListensButNeverAnswersIsGivenUpToo) {
    const InstanceLock lock = Lock();
    const Descriptor listening = lock.Listen(place_);
    const HandoverResult result =
        TakeLockOrHandOver(place_, {{Kind::kShow, ""}}, {milliseconds(200), milliseconds(60000)});
    EXPECT_EQ(result.outcome, Handover::kNoAnswer);
}

TEST_F(Instance, StartThatMeetsAnEndingOneTakesItsPlace) {
    std::optional<InstanceLock> ending = Lock();
    HandoverResult result;
    std::thread later([&] { result = TakeLockOrHandOver(place_, {{Kind::kShow, ""}}, kPatience); });
    ending.reset();
    later.join();
    EXPECT_EQ(result.outcome, Handover::kNobodyRuns);
}

// Eight starts at once over the stale socket of a crash: one becomes the instance, and the others
// reach just that one.
TEST_F(Instance, OfStartsThatRaceOneRunsAndTheOthersReachIt) {
    constexpr int kStarts = 8;
    {
        const InstanceLock lock = Lock();
        const Descriptor listening = lock.Listen(place_);
    }
    std::atomic<int> winners = 0;
    std::atomic<int> handedOver = 0;
    std::atomic<std::size_t> heard = 0;
    std::vector<std::thread> starts;
    for (int i = 0; i < kStarts; ++i) {
        starts.emplace_back([&, i] {
            const Requests mine = {{Kind::kLine, "\"/" + std::to_string(i) + "\""}};
            HandoverResult result = TakeLockOrHandOver(place_, mine, kPatience);
            if (result.outcome == Handover::kDone) {
                ++handedOver;
            } else if (result.outcome == Handover::kNobodyRuns) {
                ++winners;
                Running running(std::move(*result.lock), place_);
                running.TurnUntil(
                    [&] { return handedOver + winners == kStarts && running.heard.size() == 7; });
                heard = running.heard.size();
            }
        });
    }
    for (std::thread& start : starts) {
        start.join();
    }
    EXPECT_EQ(winners, 1);
    EXPECT_EQ(handedOver, kStarts - 1);
    EXPECT_EQ(heard, 7U);
}

TEST_F(Instance, WhoAskedToQuitSeesTheEnd) {
    std::vector<std::shared_ptr<const Descriptor>> waiting;
    HandoverResult result;
    std::atomic<bool> ended = false;
    std::thread quitter;
    {
        Running running(Lock(), place_);
        quitter = std::thread([&] {
            result = TakeLockOrHandOver(place_, {{Kind::kQuit, ""}}, kPatience);
            ended = WaitForEnd(result.connection, milliseconds(5000));
        });
        EXPECT_TRUE(running.TurnUntil([&] { return running.heard.size() == 1; }));
        waiting = running.Server().StopListening();
        EXPECT_FALSE(RawSender(place_).IsConnected());
    }
    EXPECT_EQ(waiting.size(), 1U);
    EXPECT_FALSE(ended);
    waiting.clear();
    quitter.join();
    EXPECT_TRUE(ended);
    EXPECT_EQ(result.outcome, Handover::kDone);
}

TEST_F(Instance, WaitingForAnEndHasALimit) {
    int ends[2];
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
    const Descriptor mine(ends[0]);
    const Descriptor theirs(ends[1]);
    EXPECT_FALSE(WaitForEnd(mine, milliseconds(50)));
}

}  // namespace
}  // namespace veldrin

// The lock, the socket and the server, with real sockets in a folder of the test's own.
#include "host/instance/instance.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cstring>
#include <filesystem>
#include <thread>

#include "host/instance/handover_server.h"
#include "platform/headless/headless_driver.h"
#include "tests/host/scratch_folder.h"

namespace veldrin {
namespace {

using std::chrono::milliseconds;
using Kind = Request::Kind;
using Requests = std::vector<Request>;

constexpr Patience kPatience{milliseconds(5000), milliseconds(5000)};
constexpr platform::Millis kTestLimit = 10'000;

/// An instance with a main loop, as the program has one.
class Running {
  public:
    Running(InstanceLock lock, const MeetingPlace& place, HandoverServer::Limits limits = {})
        : lock_(std::move(lock)),
          server_(
              windows_, lock_.Listen(place),
              [this](const Requests& requests) {
                  heard.insert(heard.end(), requests.begin(), requests.end());
              },
              limits) {}

    /// Turns the main loop until `done` holds; False if it never does.
    template <typename Done>
    bool TurnUntil(Done done) {
        const platform::Millis end = windows_.Now() + kTestLimit;
        while (windows_.Now() < end) {
            if (done()) {
                return true;
            }
            windows_.Schedule(5, [] {});  // wakes the loop, so that `done` is asked again
            windows_.WaitMessage();
        }
        return false;
    }

    platform::WindowSystem& Windows() { return windows_; }
    HandoverServer& Server() { return server_; }

    Requests heard;

  private:
    platform::HeadlessDriver driver_{platform::HeadlessDriver::Clock::kReal};
    platform::WindowSystem windows_{driver_};
    InstanceLock lock_;
    HandoverServer server_;
};

/// A sender that follows no rules.
class RawSender {
  public:
    explicit RawSender(const MeetingPlace& place)
        : socket_(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::strncpy(address.sun_path, place.socketPath.c_str(), sizeof(address.sun_path) - 1);
        connected_ =
            connect(socket_.Number(), reinterpret_cast<sockaddr*>(&address), sizeof(address)) == 0;
    }
    bool IsConnected() const { return connected_; }
    /// Answers how many bytes went out: not all of them if the socket is full.
    std::size_t Send(std::string_view bytes) {
        const ssize_t sent = send(socket_.Number(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
        return sent > 0 ? static_cast<std::size_t>(sent) : 0;
    }
    void EndOfMessage() { shutdown(socket_.Number(), SHUT_WR); }
    /// What has come so far; "(closed)" once the other side has hung up without a word.
    std::string Answer() {
        char buffer[16];
        const ssize_t got = recv(socket_.Number(), buffer, sizeof(buffer), MSG_DONTWAIT);
        if (got == 0 || (got < 0 && errno == ECONNRESET)) {
            return "(closed)";
        }
        return got < 0 ? "" : std::string(buffer, static_cast<std::size_t>(got));
    }

  private:
    Descriptor socket_;
    bool connected_ = false;
};

class Instance : public testing::Test {
  protected:
    InstanceLock Lock() {
        auto lock = InstanceLock::TryTake(place_);
        EXPECT_TRUE(lock.has_value());
        return std::move(lock.value());
    }

    /// Sends bytes as a whole message and answers what came back.
    std::string AnswerTo(Running& running, std::string_view bytes) {
        RawSender sender(place_);
        EXPECT_TRUE(sender.IsConnected());
        sender.Send(bytes);
        sender.EndOfMessage();
        std::string answer;
        EXPECT_TRUE(running.TurnUntil([&] { return !(answer = sender.Answer()).empty(); }));
        return answer;
    }

    ScratchFolder scratch_;
    MeetingPlace place_ = MeetingPlace::In(scratch_.Path(), "veldrin-test");
};

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

TEST_F(Instance, WrongMessageIsDroppedWithoutAnswer) {
    Running running(Lock(), place_);
    EXPECT_EQ(AnswerTo(running, "GET / HTTP/1.1\r\n\r\n"), "(closed)");
    EXPECT_EQ(AnswerTo(running, "veldrin 1;L70000:abc,"), "(closed)");
    EXPECT_EQ(AnswerTo(running, "veldrin 1;L3:ab"), "(closed)");
    EXPECT_EQ(AnswerTo(running, ""), "(closed)");
    EXPECT_TRUE(running.heard.empty());
    EXPECT_EQ(AnswerTo(running, "veldrin 1;L3:abc,"), "ok");
    EXPECT_TRUE(running.TurnUntil([&] { return running.heard.size() == 1; }));
}

// A sound request in front does not save a message that goes wrong later: all or nothing.
TEST_F(Instance, MessageThatGoesWrongLaterHasNoEffect) {
    Running running(Lock(), place_);
    EXPECT_EQ(AnswerTo(running, "veldrin 1;L3:abc,Q0:,?"), "(closed)");
    EXPECT_TRUE(running.heard.empty());
}

TEST_F(Instance, EndlessMessageIsCutOff) {
    Running running(Lock(), place_);
    RawSender sender(place_);
    sender.Send("veldrin 1;");
    const std::string line = "L65536:" + std::string(65536, 'a') + ",";
    std::size_t sent = 0;
    EXPECT_TRUE(running.TurnUntil([&] {
        sent += sender.Send(std::string_view(line).substr(sent % line.size()));
        return sender.Answer() == "(closed)";
    }));
    EXPECT_GE(sent, std::size_t{16} * 1024 * 1024 - 65536);
    EXPECT_LT(sent, std::size_t{18} * 1024 * 1024);
    EXPECT_TRUE(running.heard.empty());
}

// In these two the limit that is not meant lies beyond kTestLimit.
TEST_F(Instance, SilentSenderIsDroppedAfterTheTimeLimit) {
    Running running(Lock(), place_, {.silence = 50, .whole = 60'000, .connections = 16});
    RawSender sender(place_);
    sender.Send("veldrin 1;L3:a");
    EXPECT_TRUE(running.TurnUntil([&] { return sender.Answer() == "(closed)"; }));
    EXPECT_TRUE(running.heard.empty());
}

TEST_F(Instance, SenderThatTricklesForEverIsDroppedToo) {
    Running running(Lock(), place_, {.silence = 100, .whole = 300, .connections = 16});
    RawSender sender(place_);
    sender.Send("veldrin 1;");
    const platform::Millis start = running.Windows().Now();
    // Sound requests without end, a byte each time the main loop turns: there is always one to be
    // read, and the 16 MiB that would end it too would take minutes.
    const std::string line = "L65536:" + std::string(65536, 'a') + ",";
    std::size_t sent = 0;
    EXPECT_TRUE(running.TurnUntil([&] {
        sent += sender.Send(std::string_view(line).substr(sent % line.size(), 1));
        return sender.Answer() == "(closed)";
    }));
    EXPECT_GE(running.Windows().Now() - start, 300);
    EXPECT_LT(sent, kLongestMessage / 2);
}

TEST_F(Instance, SilentSendersDoNotHoldUpTheMainLoopOrOtherSenders) {
    Running running(Lock(), place_);
    RawSender silent(place_);
    silent.Send("veldrin 1;");
    bool beaten = false;
    running.Windows().Schedule(20, [&] { beaten = true; });
    EXPECT_EQ(AnswerTo(running, "veldrin 1;S0:,"), "ok");
    EXPECT_TRUE(running.TurnUntil([&] { return beaten; }));
    EXPECT_EQ(silent.Answer(), "");
}

TEST_F(Instance, NoMoreConnectionsThanAllowed) {
    Running running(Lock(), place_, {.silence = 5000, .whole = 5000, .connections = 2});
    RawSender first(place_);
    RawSender second(place_);
    RawSender third(place_);
    EXPECT_TRUE(running.TurnUntil([&] { return third.Answer() == "(closed)"; }));
    EXPECT_EQ(first.Answer(), "");
    EXPECT_EQ(second.Answer(), "");
}

// Should the rights of folder and socket ever be laxer than they are made, the user is checked too.
TEST_F(Instance, AnotherUserIsNotHeard) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "takes the right to become somebody else";
    }
    Running running(Lock(), place_);
    chmod(scratch_.Path().c_str(), 0711);
    chmod(place_.socketPath.c_str(), 0666);
    const pid_t stranger = fork();
    if (stranger == 0) {
        constexpr uid_t kNobody = 65534;
        std::string answer = "not connected";
        if (setuid(kNobody) == 0) {
            RawSender sender(place_);
            sender.Send("veldrin 1;Q0:,");
            sender.EndOfMessage();
            for (answer = sender.IsConnected() ? "" : answer; answer.empty();) {
                answer = sender.Answer();
            }
        }
        _exit(answer == "(closed)" ? 0 : 1);
    }
    int status = -1;
    EXPECT_TRUE(running.TurnUntil([&] { return waitpid(stranger, &status, WNOHANG) == stranger; }));
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(running.heard.empty());
}

TEST_F(Instance, SenderThatHasGivenUpChangesNothing) {
    Running running(Lock(), place_);
    {
        RawSender sender(place_);
        sender.Send("veldrin 1;Q0:,");
        sender.EndOfMessage();
    }
    EXPECT_EQ(AnswerTo(running, "veldrin 1;S0:,"), "ok");  // comes after, so the first is done with
    EXPECT_TRUE(running.TurnUntil([&] { return !running.heard.empty(); }));
    EXPECT_EQ(running.heard, (Requests{{Kind::kShow, ""}}));
}

TEST_F(Instance, WhoAskedToQuitSeesTheEnd) {
    std::vector<Descriptor> waiting;
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

// What the running instance makes of those who send to it, well or ill.
#include "host/instance/handover_server.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <memory>
#include <vector>

#include "tests/host/instance_fixture.h"

namespace veldrin {
namespace {

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

// In this test and the next the limit that is not meant lies beyond kTestLimit.
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

TEST_F(Instance, OfMoreConnectionsThanAllowedTheMostSilentIsDropped) {
    Running running(Lock(), place_, {.silence = 60'000, .whole = 60'000, .connections = 2});
    RawSender first(place_);
    RawSender second(place_);
    EXPECT_EQ(second.Send("v"), 1U);
    RawSender third(place_);
    EXPECT_TRUE(running.TurnUntil([&] { return first.Answer() == "(closed)"; }));
    EXPECT_EQ(second.Answer(), "");
    EXPECT_EQ(third.Answer(), "");
}

// Each says a word and then nothing; none of them is given up by the time limit.
TEST_F(Instance, SlowSendersKeepNobodyOut) {
    Running running(Lock(), place_, {.silence = 60'000, .whole = 60'000, .connections = 16});
    std::vector<std::unique_ptr<RawSender>> slow;
    for (int i = 0; i < 40; ++i) {
        slow.push_back(std::make_unique<RawSender>(place_));
        EXPECT_TRUE(slow.back()->IsConnected());
        EXPECT_EQ(slow.back()->Send("v"), 1U);
    }
    EXPECT_EQ(AnswerTo(running, "veldrin 1;S0:,"), "ok");
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
    EXPECT_EQ(running.heard, (Requests{{Request::Kind::kShow, ""}}));
}

TEST_F(Instance, WhatIsSaidFollowsTheOkUntilItIsOver) {
    Running running(Lock(), place_);
    RawSender sender(place_);
    sender.Send("veldrin 1;T4:json,");
    sender.EndOfMessage();
    ASSERT_TRUE(running.TurnUntil([&] { return !running.replies.empty(); }));
    EXPECT_EQ(running.heard, (Requests{{Request::Kind::kStatus, "json"}}));
    running.replies.front().Say("playing");
    EXPECT_EQ(sender.Answer(), "okplaying");
    EXPECT_EQ(sender.Answer(), "");
    running.replies.clear();
    EXPECT_TRUE(running.TurnUntil([&] { return sender.Answer() == "(closed)"; }));
}

}  // namespace
}  // namespace veldrin

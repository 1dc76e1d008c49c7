#include "host/signals.h"

#include <gtest/gtest.h>

#include <csignal>
#include <vector>

namespace {

using veldrin::Signals;

class SignalsTest : public testing::Test {
  protected:
    SignalsTest() { pthread_sigmask(SIG_SETMASK, nullptr, &before_); }
    ~SignalsTest() override { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }

    sigset_t before_{};
};

TEST_F(SignalsTest, AnEndIsAskedForUntilItIsTaken) {
    Signals signals;
    EXPECT_FALSE(Signals::IsEndAsked());
    raise(SIGCONT);
    EXPECT_FALSE(Signals::IsEndAsked());
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        raise(number);
        EXPECT_TRUE(Signals::IsEndAsked());
        std::vector<int> taken;
        signals.Take([&](int arrived) {
            if (arrived != SIGCONT) {
                taken.push_back(arrived);
            }
        });
        EXPECT_EQ(taken, std::vector{number});
        EXPECT_FALSE(Signals::IsEndAsked());
    }
}

}  // namespace

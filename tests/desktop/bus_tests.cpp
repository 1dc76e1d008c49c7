// The session bus: whether there is anybody, and the values that go over it.
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QDBusVariant>
#include <QVariantMap>
#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstring>
#include <limits>
#include <string>
#include <thread>

#include "platform/desktop/bus/bus_probe.h"
#include "platform/desktop/bus/bus_values.h"

namespace platform::desktop {
namespace {

using std::chrono::milliseconds;

/// Listens, and answers if it is told to.
class ListeningSocket {
  public:
    ListeningSocket() : name_("veldrin-test-" + std::to_string(getpid())) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::memcpy(address.sun_path + 1, name_.data(), name_.size());
        const auto size =
            static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + name_.size());
        EXPECT_EQ(bind(listening_, reinterpret_cast<sockaddr*>(&address), size), 0);
        EXPECT_EQ(listen(listening_, 4), 0);
    }
    ~ListeningSocket() { close(listening_); }
    ListeningSocket(const ListeningSocket&) = delete;
    ListeningSocket& operator=(const ListeningSocket&) = delete;

    std::string Address() const { return "unix:abstract=" + name_; }
    /// What the one who asks says.
    std::string AnswerOne() const {
        const int connection = accept(listening_, nullptr, nullptr);
        char heard[64];
        const ssize_t count = recv(connection, heard, sizeof(heard), 0);
        send(connection, "REJECTED\r\n", 10, MSG_NOSIGNAL);  // he may have gone
        close(connection);
        return {heard, static_cast<std::size_t>(std::max(count, ssize_t{0}))};
    }

  private:
    const std::string name_;
    const int listening_ = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
};

TEST(BusProbe, SomebodyAnswersOrNot) {
    const ListeningSocket bus;
    EXPECT_FALSE(BusAnswers(bus.Address(), milliseconds(20)));
    static_cast<void>(bus.AnswerOne());  // the question that came too late for it
    std::string heard;
    std::thread answering([&] { heard = bus.AnswerOne(); });
    EXPECT_TRUE(
        BusAnswers(bus.Address() + ",guid=0123;unix:path=/elsewhere", milliseconds(60'000)));
    answering.join();
    EXPECT_EQ(heard, std::string("\0AUTH\r\n", 7));
}

TEST(BusProbe, WhereNobodyListensNobodyAnswers) {
    EXPECT_FALSE(BusAnswers("unix:path=/nowhere/bus", milliseconds(60'000)));
    EXPECT_FALSE(BusAnswers("unix:path=/dev/null", milliseconds(60'000)));
}

TEST(BusProbe, OfOtherAddressesNothingIsKnown) {
    for (const std::string address : {"tcp:host=localhost,port=1", "unix:tmpdir=/tmp",
                                      "unix:", "disabled:", "", "unix:path="}) {
        EXPECT_EQ(BusAnswers(address, milliseconds(0)), address != "unix:path=") << address;
    }
    EXPECT_TRUE(BusAnswers("unix:path=/" + std::string(200, 'x'), milliseconds(0)));
}

TEST(BusValues, ComeBackAsTheyWent) {
    const BusValues values = {
        {true},
        {std::int32_t{-5}},
        {std::uint32_t{4'000'000'000}},
        {std::numeric_limits<std::int64_t>::min()},
        {0.25},
        {std::string("caf\xC3\xA9")},
        {BusPath{"/a/b"}},
        {BusTexts{"a", "", "b"}},
    };
    EXPECT_EQ(FromVariants(ToVariants(values)), values);
}

TEST(BusValues, TextIsUtf8OnItsWay) {
    EXPECT_EQ(FromVariant(ToVariant({std::string("a\xE9")})),
              (BusValue{std::string("a\xEF\xBF\xBD")}));
}

TEST(BusValues, AreTakenOutOfTheirVariants) {
    EXPECT_EQ(FromVariant(QVariant::fromValue(QDBusVariant(0.5))), (BusValue{0.5}));
    const QVariantMap table = ToVariant({BusTable{{"x", {std::int64_t{1}}}}}).toMap();
    EXPECT_EQ(table.value("x").typeId(), QMetaType::LongLong);
    EXPECT_EQ(FromVariant(QVariant::fromValue(table)), BusValue());
}

}  // namespace
}  // namespace platform::desktop

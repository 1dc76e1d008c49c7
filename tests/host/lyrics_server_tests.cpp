// The lyrics service on its socket, with the network module and without one.
#include "host/lyrics/server.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <sys/socket.h>

#include <future>

#include "tests/host/scratch_folder.h"

namespace veldrin {
namespace {

using namespace std::chrono_literals;

constexpr auto kServerPatience = 15s;

int PortIn(const std::string& address) {
    return std::stoi(address.substr(std::string("http://127.0.0.1:").size()));
}

Descriptor ConnectTo(int port) {
    Descriptor socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const int status =
        connect(socket.Number(), reinterpret_cast<const sockaddr*>(&address), sizeof address);
    return status == 0 ? std::move(socket) : Descriptor();
}

/// A module that only takes what it is given.
class TakingHttp : public Http {
  public:
    std::optional<HttpAnswer> Get(const std::string& address, const HttpHeaders&,
                                  const HttpLimits&) override {
        asked = address;
        return HttpAnswer{200, {}, R"({"plainLyrics":"online"})"};
    }
    void Serve(int listening, Handler handler) override {
        socket = Descriptor(listening);
        served.set_value(std::move(handler));
    }

    Descriptor socket;
    std::promise<Handler> served;
    std::string asked;
};

class LyricsServerTest : public testing::Test {
  protected:
    ScratchFolder scratch_;
    LyricsSettings settings_{scratch_.Path("lyrics"), "", ""};
    TakingHttp http_;
    std::promise<std::string> notice_;
    std::atomic<int> loads_ = 0;
    LyricsServer::Load load_ = [this] {
        ++loads_;
        return &http_;
    };
};

TEST_F(LyricsServerTest, AddressIsLoopbackWithAFreshToken) {
    const LyricsServer one(settings_, load_, {});
    const LyricsServer two(settings_, load_, {});
    const std::size_t slash = one.Address().rfind('/');
    EXPECT_EQ(one.Address().substr(0, slash),
              "http://127.0.0.1:" + std::to_string(PortIn(one.Address())));
    const std::string token = one.Address().substr(slash + 1);
    EXPECT_EQ(token.size(), 32u);
    EXPECT_EQ(token.find_first_not_of("0123456789abcdef"), std::string::npos);
    EXPECT_NE(token, two.Address().substr(two.Address().rfind('/') + 1));
}

TEST_F(LyricsServerTest, NothingIsLoadedBeforeSomebodyComes) {
    { const LyricsServer server(settings_, load_, {}); }
    EXPECT_EQ(loads_, 0);
}

TEST_F(LyricsServerTest, ServiceBeginsWithTheFirstConnection) {
    auto handler = http_.served.get_future();
    std::optional<LyricsServer> server(std::in_place, settings_, load_, LyricsServer::Notice());
    const int port = PortIn(server->Address());
    const std::string path = server->Address().substr(server->Address().rfind('/'));
    const Descriptor client = ConnectTo(port);
    ASSERT_TRUE(client);
    ASSERT_EQ(handler.wait_for(kServerPatience), std::future_status::ready);
    server.reset();  // the module may still be at an answer
    const HttpAnswer answer = handler.get()({"GET",
                                             path + "/winamp03/plugin/?artist=a&title=b",
                                             {{"host", "127.0.0.1:" + std::to_string(port)}},
                                             ""});
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(loads_, 1);
}

TEST_F(LyricsServerTest, OnlineWordsComeThroughTheModule) {
    settings_.online = "http://h";
    auto handler = http_.served.get_future();
    const LyricsServer server(settings_, load_, {});
    const int port = PortIn(server.Address());
    const Descriptor client = ConnectTo(port);
    ASSERT_EQ(handler.wait_for(kServerPatience), std::future_status::ready);
    const std::string path = server.Address().substr(server.Address().rfind('/'));
    const HttpAnswer answer = handler.get()({"GET",
                                             path + "/winamp03/plugin/?artist=a&title=b",
                                             {{"host", "127.0.0.1:" + std::to_string(port)}},
                                             ""});
    EXPECT_EQ(answer.body, "<div id=\"lyrics\">\nonline\n</div>\n");
    EXPECT_EQ(http_.asked, "http://h/api/get?artist_name=a&track_name=b");
}

TEST_F(LyricsServerTest, WithoutTheModuleItSaysSoAndHangsUp) {
    const LyricsServer server(
        settings_, [] { return nullptr; },
        [this](const std::string& text) { notice_.set_value(text); });
    const int port = PortIn(server.Address());
    const Descriptor client = ConnectTo(port);
    auto notice = notice_.get_future();
    ASSERT_EQ(notice.wait_for(kServerPatience), std::future_status::ready);
    EXPECT_EQ(notice.get(), "there are no lyrics: the network module cannot be loaded");
    char byte = 0;
    EXPECT_LE(recv(client.Number(), &byte, 1, 0), 0);
    EXPECT_FALSE(ConnectTo(port));
}

}  // namespace
}  // namespace veldrin

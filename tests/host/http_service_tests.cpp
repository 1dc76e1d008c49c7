// The served side: whom it answers, and whom it does not wait for.
#include "tests/host/http_fixture.h"

namespace veldrin {
namespace {

using std::chrono::milliseconds;

constexpr std::string_view kPlain = "GET /x HTTP/1.1\r\n\r\n";

class Serving : public Network {
  protected:
    Serving() {
        Descriptor listening = ListenHere();
        port_ = PortOf(listening);
        const int copy = dup(listening.Number());
        http_->Serve(copy, [this](const HttpRequest& request) { return Answered(request); });
    }
    ~Serving() override { http_.reset(); }

    /// The answer to these bytes, whole.
    std::string Say(std::string_view bytes) const {
        const RawClient client(port_);
        client.Send(bytes);
        return client.Receive();
    }
    /// The status in it.
    std::string Status(std::string_view bytes) const {
        const std::string answer = Say(bytes);
        return answer.substr(0, 9) == "HTTP/1.1 " ? answer.substr(9, 3) : "(" + answer + ")";
    }
    static std::string BodyOf(const std::string& answer) {
        return answer.substr(std::min(answer.find("\r\n\r\n"), answer.size()) + 4);
    }

    int port_ = 0;
    std::atomic<int> answered_ = 0;
    std::atomic<bool> held_ = false;

  private:
    HttpAnswer Answered(const HttpRequest& request) {
        ++answered_;
        while (held_) {
            std::this_thread::sleep_for(milliseconds(5));
        }
        if (request.target == "/throw") {
            throw std::runtime_error("a fault");
        }
        HttpAnswer answer{201, {{"x-own", "yes"}, {"x-bad", "a\r\nX-Forged: b"}}, {}};
        answer.body = request.method + " " + request.target + " [" + request.body + "]";
        for (const auto& [name, value] : request.headers) {
            answer.body += "\n" + name + "=" + value;
        }
        return answer;
    }
};

TEST_F(Serving, ARequestAsItCame) {
    const std::string answer =
        Say("GET /a%20b%2F..?c=%41+d?e&f=?#g HTTP/1.1\r\nHost: h:1\r\nX-Y: %41 z \r\n\r\n");
    EXPECT_TRUE(answer.starts_with("HTTP/1.1 201 ")) << answer;
    EXPECT_EQ(BodyOf(answer), "GET /a%20b%2F..?c=%41+d?e&f=?#g []\nhost=h:1\nx-y=%41 z");
    EXPECT_NE(answer.find("x-own: yes\r\n"), std::string::npos);
    EXPECT_EQ(answer.find("X-Forged"), std::string::npos);
}

TEST_F(Serving, EveryMethodComesToTheHandler) {
    for (const std::string method : {"GET", "POST", "PUT", "DELETE", "OPTIONS", "PATCH"}) {
        EXPECT_EQ(BodyOf(Say(method + " / HTTP/1.1\r\nContent-Length: 3\r\n\r\na\nb")),
                  method + " / [a\nb]\ncontent-length=3");
    }
    EXPECT_EQ(BodyOf(Say("HEAD / HTTP/1.1\r\n\r\n")), "");
    EXPECT_EQ(answered_, 7);
}

TEST_F(Serving, FormsAreNotTakenApartAndMayBeLong) {
    const std::string form = "words=" + std::string(65536 - 6, '%');
    EXPECT_EQ(BodyOf(Say("POST / HTTP/1.1\r\nContent-Type: application/x-www-form-urlencoded\r\n"
                         "Content-Length: 65536\r\n\r\n" +
                         form))
                  .substr(0, 65546),
              "POST / [" + form + "]\n");
}

TEST_F(Serving, WhatIsTooLongIsRefused) {
    EXPECT_EQ(Status("POST / HTTP/1.1\r\nContent-Length: 65537\r\n\r\n" + std::string(65537, 'x')),
              "413");
    EXPECT_EQ(Status("POST / HTTP/1.1\r\nContent-Length: 99999999999999999999\r\n\r\n"), "411");
    EXPECT_EQ(Status("GET /" + std::string(9000, 'x') + " HTTP/1.1\r\n\r\n"), "431");
    EXPECT_EQ(Status("GET / HTTP/1.1\r\nX: " + std::string(70'000, 'x') + "\r\n\r\n"), "431");
    EXPECT_EQ(Status(std::string(70'000, 'x')), "431");
    EXPECT_EQ(answered_, 0);
    EXPECT_EQ(Status("GET /" + std::string(8000, 'x') + " HTTP/1.1\r\n\r\n"), "201");
}

TEST_F(Serving, WhatIsNoRequestIsRefused) {
    for (const auto* request :
         {"nonsense\r\n\r\n", "GET\r\n\r\n", "GET / \r\n\r\n", "GET  HTTP/1.1\r\n\r\n",
          "GET /a b HTTP/1.1\r\n\r\n", "GET / HTTP/9.9\r\n\r\n", "BREW / HTTP/1.1\r\n\r\n",
          "\r\n\r\n", "\x16\x03\x01\r\n\r\n"}) {
        EXPECT_EQ(Status(request), "400") << request;
    }
    EXPECT_EQ(Status("POST / HTTP/1.1\r\nTransfer-Encoding: chunked\r\n\r\n0\r\n\r\n"), "411");
    EXPECT_EQ(Status("POST / HTTP/1.1\r\nContent-Length: -1\r\n\r\n"), "411");
    EXPECT_EQ(Status("POST / HTTP/1.1\r\nContent-Length: 3\r\nContent-Length: 4\r\n\r\nabcd"),
              "411");
    EXPECT_EQ(answered_, 0);
}

TEST_F(Serving, PartsAreNotServed) {
    std::string parts = "Range: bytes=0-0";
    for (int i = 0; i < 1500; ++i) {
        parts += ",1-2";
    }
    EXPECT_EQ(Status("GET / HTTP/1.1\r\n" + parts + "\r\n\r\n"), "201");
}

TEST_F(Serving, WhoWaitsToBeAskedForTheBodyIsAsked) {
    const RawClient client(port_);
    client.Send("POST / HTTP/1.1\r\nContent-Length: 2\r\nExpect: 100-continue\r\n\r\n");
    EXPECT_EQ(client.Receive("\r\n\r\n"), "HTTP/1.1 100 Continue\r\n\r\n");
    client.Send("ab");
    EXPECT_TRUE(client.Receive().starts_with("HTTP/1.1 201 "));
}

TEST_F(Serving, AHandlerThatThrowsIsAFaultOfTheServer) {
    EXPECT_EQ(Status("GET /throw HTTP/1.1\r\n\r\n"), "500");
    EXPECT_EQ(Status(kPlain), "201");
}

TEST_F(Serving, WhoSaysNothingOrTooLittleInTimeIsLeft) {
    const auto start = Clock::now();
    const RawClient silent(port_);
    const RawClient half(port_);
    half.Send("GET / HT");
    const RawClient slow(port_);
    std::thread trickling([&] {
        while (slow.Send("x")) {
            std::this_thread::sleep_for(milliseconds(50));
        }
    });
    EXPECT_EQ(Status(kPlain), "201");
    EXPECT_LT(Clock::now() - start, milliseconds(1500));
    EXPECT_EQ(silent.Receive(), "");
    EXPECT_EQ(half.Receive(), "");
    trickling.join();
    EXPECT_GE(Clock::now() - start, milliseconds(2000));
    EXPECT_LT(Clock::now() - start, milliseconds(3500));
}

TEST_F(Serving, ManyWhoSayNothingKeepNobodyOut) {
    const auto start = Clock::now();
    std::vector<std::unique_ptr<RawClient>> silent;
    for (int i = 0; i < 200; ++i) {
        silent.push_back(std::make_unique<RawClient>(port_));
        ASSERT_TRUE(silent.back()->IsConnected());
    }
    EXPECT_EQ(Status(kPlain), "201");
    EXPECT_LT(Clock::now() - start, milliseconds(3500));  // of 25 seconds for all who were there
}

TEST_F(Serving, ManyAtOnceAreAllAnswered) {
    std::vector<std::unique_ptr<RawClient>> clients;
    for (int i = 0; i < 200; ++i) {
        clients.push_back(std::make_unique<RawClient>(port_));
        clients.back()->Send(kPlain);
    }
    for (const auto& client : clients) {
        EXPECT_TRUE(client->Receive().starts_with("HTTP/1.1 201 "));
    }
    EXPECT_EQ(answered_, 200);
}

TEST_F(Serving, TheEndWaitsForHandlersAndForNobodyElse) {
    held_ = true;
    const RawClient asked(port_);
    asked.Send(kPlain);
    while (answered_ == 0) {
        std::this_thread::sleep_for(milliseconds(5));
    }
    const RawClient silent(port_);
    std::thread release([this] {
        std::this_thread::sleep_for(milliseconds(50));
        held_ = false;
    });
    const auto start = Clock::now();
    http_.reset();
    EXPECT_FALSE(held_);
    EXPECT_LT(Clock::now() - start, milliseconds(1000));
    release.join();
    EXPECT_EQ(silent.Receive(), "");
}

TEST_F(Serving, BothSidesTogether) {
    EXPECT_EQ(Got("http://127.0.0.1:" + std::to_string(port_) + "/a b?c").substr(0, 19),
              "201 GET /a%20b?c []");
}

}  // namespace
}  // namespace veldrin

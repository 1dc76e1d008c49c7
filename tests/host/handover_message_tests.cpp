#include "host/instance/handover_message.h"

#include <gtest/gtest.h>

namespace veldrin {
namespace {

using Kind = Request::Kind;
using RequestList = std::vector<Request>;

/// Whether the whole of it is a message.
bool Accepts(std::string_view bytes) {
    MessageReader reader;
    return reader.Feed(bytes) && reader.IsComplete();
}

/// Whether it is refused at once, without waiting for more.
bool Refuses(std::string_view bytes) {
    MessageReader reader;
    return !reader.Feed(bytes);
}

TEST(HandoverMessage, LooksAsAgreed) {
    EXPECT_EQ(EncodeMessage({{Kind::kLine, "\"/music/a.flac\""}, {Kind::kLine, "/ADD \"/b\""}}),
              "veldrin 1;L15:\"/music/a.flac\",L9:/ADD \"/b\",");
    EXPECT_EQ(EncodeMessage({{Kind::kQuit, ""}}), "veldrin 1;Q0:,");
    EXPECT_EQ(EncodeMessage({{Kind::kShow, ""}}), "veldrin 1;S0:,");
    EXPECT_EQ(EncodeMessage({{Kind::kShow, "leave_1"}}), "veldrin 1;S7:leave_1,");
    EXPECT_EQ(EncodeMessage({{Kind::kVerb, "volume +5"}, {Kind::kVerb, "play"}}),
              "veldrin 1;P9:volume +5,P4:play,");
    EXPECT_EQ(EncodeMessage({{Kind::kStatus, "json"}}), "veldrin 1;T4:json,");
    EXPECT_EQ(EncodeMessage({{Kind::kExport, "/a.m3u8"}}), "veldrin 1;E7:/a.m3u8,");
}

TEST(HandoverMessage, ComesBackFromPiecesOfAnySize) {
    const RequestList requests = {{Kind::kLine, "\"/a,L3:\n\xE9\""},
                                  {Kind::kShow, "leave"},
                                  {Kind::kLine, ""},
                                  {Kind::kQuit, ""},
                                  {Kind::kVerb, "seek -3"},
                                  {Kind::kStatus, ""}};
    const std::string bytes = EncodeMessage(requests);
    for (std::size_t size = 1; size <= bytes.size(); ++size) {
        MessageReader reader;
        for (std::size_t at = 0; at < bytes.size(); at += size) {
            EXPECT_FALSE(reader.IsComplete() && reader.Requests().size() == requests.size());
            ASSERT_TRUE(reader.Feed(bytes.substr(at, size)));
        }
        EXPECT_TRUE(reader.IsComplete());
        EXPECT_EQ(reader.Requests(), requests);
    }
}

TEST(HandoverMessage, MustNotEndEarly) {
    const std::string whole = "veldrin 1;L3:abc,";
    for (std::size_t length = 0; length < whole.size(); ++length) {
        MessageReader reader;
        EXPECT_TRUE(reader.Feed(whole.substr(0, length))) << length;
        EXPECT_FALSE(reader.IsComplete()) << length;
    }
    EXPECT_TRUE(Accepts(whole));
    // Nor within a request behind a sound one.
    for (const char* const half : {"L", "L2", "L2:", "L2:a", "L2:ab"}) {
        EXPECT_FALSE(Accepts(whole + half)) << half;
    }
}

TEST(HandoverMessage, WrongOnesAreRefusedAtOnce) {
    EXPECT_TRUE(Refuses("GET / HTTP/1.1\r\n"));
    EXPECT_TRUE(Refuses("veldrin 2;"));
    EXPECT_TRUE(Refuses("veldrin 1;X0:,"));
    EXPECT_TRUE(Refuses("veldrin 1;L:,"));
    EXPECT_TRUE(Refuses("veldrin 1;L-1:,"));
    EXPECT_TRUE(Refuses("veldrin 1;L+1:a,"));
    EXPECT_TRUE(Refuses("veldrin 1;L1 :a,"));
    EXPECT_TRUE(Refuses("veldrin 1;L1:ab"));
    EXPECT_TRUE(Refuses("veldrin 1;Q1:a,"));
    EXPECT_TRUE(Refuses(std::string_view("veldrin 1;L1:\0,", 15)));
}

TEST(HandoverMessage, LongestLineAndOneMore) {
    const std::string longest(65536, 'a');
    EXPECT_TRUE(Accepts("veldrin 1;L65536:" + longest + ","));
    EXPECT_TRUE(Refuses("veldrin 1;L65537:"));
    EXPECT_TRUE(Refuses("veldrin 1;L000001:"));
    EXPECT_TRUE(Refuses("veldrin 1;L999999999999999999999999"));
}

TEST(HandoverMessage, EndlessOnesAreRefused) {
    MessageReader lines;
    ASSERT_TRUE(lines.Feed("veldrin 1;"));
    const std::string line = "L65536:" + std::string(65536, 'a') + ",";
    int taken = 0;
    while (taken < 1000 && lines.Feed(line)) {
        ++taken;
    }
    EXPECT_EQ(taken, 255);  // 16 MiB less the greeting hold 255 lines of 64 KiB and 8 bytes

    MessageReader requests;
    std::string many = "veldrin 1;";
    for (int i = 0; i < 250'000; ++i) {
        many += "S0:,";
    }
    EXPECT_TRUE(requests.Feed(many));
    EXPECT_FALSE(requests.Feed("S0:,"));
}

TEST(HandoverMessage, AnExportNeedsAWholePath) {
    EXPECT_TRUE(Accepts("veldrin 1;E2:/a,"));
    EXPECT_TRUE(Refuses("veldrin 1;E1:a,"));
    EXPECT_TRUE(Refuses("veldrin 1;E0:,"));
}

// A whole disk may be more than a receiver takes at once.
TEST(HandoverMessage, ManyRequestsAreSeveralMessagesInOrder) {
    RequestList requests;
    const std::string line(65'536, 'a');
    for (int i = 0; i < 300; ++i) {
        requests.push_back({Kind::kLine, line + std::to_string(i)});
        requests.back().text.erase(0, requests.back().text.size() - line.size());
    }
    for (int i = 0; i < 250'001; ++i) {
        requests.push_back({Kind::kLine, std::to_string(i)});
    }
    RequestList read;
    for (const RequestList& message : InMessages(requests)) {
        MessageReader reader;
        ASSERT_TRUE(reader.Feed(EncodeMessage(message)));
        ASSERT_TRUE(reader.IsComplete());
        read.insert(read.end(), reader.Requests().begin(), reader.Requests().end());
    }
    EXPECT_TRUE(read == requests);
    EXPECT_EQ(InMessages({{Kind::kShow, ""}}).size(), 1U);
}

}  // namespace
}  // namespace veldrin

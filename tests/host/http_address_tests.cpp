// Addresses of pages, taken apart and put together.
#include "host/http/address.h"

#include <gtest/gtest.h>

namespace veldrin {
namespace {

/// "http|host|port|target", or "none".
std::string Parts(const std::optional<HttpAddress>& address) {
    return address ? (address->secure ? "https|" : "http|") + address->host + "|" +
                         std::to_string(address->port) + "|" + address->target
                   : "none";
}

std::string Parsed(std::string_view address) {
    return Parts(ParseHttpAddress(address));
}

TEST(HttpAddress, SchemeHostPortAndTarget) {
    EXPECT_EQ(Parsed("http://h/p?q"), "http|h|80|/p?q");
    EXPECT_EQ(Parsed("HTTPS://WWW.Example.ORG"), "https|www.example.org|443|/");
    EXPECT_EQ(Parsed("http://127.0.0.1:8080?x=1"), "http|127.0.0.1|8080|/?x=1");
    EXPECT_EQ(Parsed("http://[::1]:81/a"), "http|::1|81|/a");
    EXPECT_EQ(Parsed("http://[::1]"), "http|::1|80|/");
    EXPECT_EQ(Parsed("http://h:/"), "http|h|80|/");
    EXPECT_EQ(Parsed("http://h:65535/"), "http|h|65535|/");
}

TEST(HttpAddress, WhatIsNone) {
    for (const auto* address : {"",
                                "http",
                                "http:",
                                "http:/h",
                                "http://",
                                "http:///p",
                                "//h/p",
                                "file:///etc/passwd",
                                "ftp://h/",
                                "httpx://h/",
                                "http://h:0/",
                                "http://h:65536/",
                                "http://h:8o/",
                                "http://h:-1/",
                                "http://user@h/",
                                "http://user:word@h/",
                                "http://h h/",
                                "http://h\r\nX: y/",
                                "http://[::1/",
                                "http://[h]/",
                                "http://[::1]x/",
                                "http://h:1:2/",
                                "http://\xC3\xBC.org/",
                                "http://:80/"}) {
        EXPECT_EQ(Parsed(address), "none") << address;
    }
    EXPECT_EQ(Parsed("http://" + std::string(254, 'a')), "none");
    EXPECT_EQ(Parsed("http://" + std::string(253, 'a')), "http|" + std::string(253, 'a') + "|80|/");
}

TEST(HttpAddress, WhatCannotStandInARequestIsEscapedAndNothingElse) {
    EXPECT_EQ(Parsed("http://h/a b\"'<>#\x01\x7F\r\n"),
              "http|h|80|/a%20b%22%27%3C%3E%23%01%7F%0D%0A");
    EXPECT_EQ(Parsed("http://h/\xC3\xA4\xFF"), "http|h|80|/%C3%A4%FF");
    EXPECT_EQ(Parsed("http://h/%41%e9%%4%zz%"), "http|h|80|/%41%e9%25%254%25zz%25");
    EXPECT_EQ(Parsed("http://h/a&b?c=d?e&f+g=h;i,j:k@l!m$n(o)p*q~r[s]t/../u"),
              "http|h|80|/a&b?c=d?e&f+g=h;i,j:k@l!m$n(o)p*q~r[s]t/../u");
    EXPECT_EQ(Parsed(std::string_view("http://h/a\0b", 12)), "http|h|80|/a%00b");
    EXPECT_EQ(Parsed("http://h#x"), "http|h|80|/%23x");
}

TEST(HttpAddress, TheAuthorityHasThePortOnlyWhereItIsNotTheUsual) {
    EXPECT_EQ(ParseHttpAddress("http://h:80")->Authority(), "h");
    EXPECT_EQ(ParseHttpAddress("https://h:80")->Authority(), "h:80");
    EXPECT_EQ(ParseHttpAddress("https://h")->Authority(), "h");
    EXPECT_EQ(ParseHttpAddress("http://[::1]:81")->Authority(), "[::1]:81");
}

TEST(HttpAddress, WhereAPageSendsTo) {
    const HttpAddress page = *ParseHttpAddress("https://h:81/a/b?c/d");
    const auto resolved = [&](std::string_view location) {
        return Parts(ResolveLocation(page, location));
    };
    EXPECT_EQ(resolved("http://other/x#y"), "http|other|80|/x");
    EXPECT_EQ(resolved("//other/x"), "https|other|443|/x");
    EXPECT_EQ(resolved("/x y?z#"), "https|h|81|/x%20y?z");
    EXPECT_EQ(resolved("x"), "https|h|81|/a/x");
    EXPECT_EQ(resolved("../x?../y"), "https|h|81|/x?../y");
    EXPECT_EQ(resolved("../../../x"), "https|h|81|/x");
    EXPECT_EQ(resolved("./x/."), "https|h|81|/a/x/");
    EXPECT_EQ(resolved("?z"), "https|h|81|/a/b?z");
    EXPECT_EQ(resolved("x/y:z"), "https|h|81|/a/x/y:z");
    for (const auto* location : {"file:///etc/passwd", "ftp://h/", "javascript:x", "http:", "//"}) {
        EXPECT_EQ(resolved(location), "none") << location;
    }
}

}  // namespace
}  // namespace veldrin

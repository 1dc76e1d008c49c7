#include "platform/desktop/xspf.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace platform::desktop {
namespace {

using Names = std::vector<std::string>;

std::string Playlist(const std::string& tracks) {
    return "<?xml version=\"1.0\"?>\n<playlist version=\"1\" xmlns=\"http://xspf.org/ns/0/\">"
           "<trackList>" +
           tracks + "</trackList></playlist>";
}

TEST(Xspf, EachTrackHasItsFirstLocation) {
    EXPECT_EQ(LocationsOfXspf(Playlist("<track><title>x</title><location>file:///a%20b</location>"
                                       "<location>second</location></track><track/>"
                                       "<track><location>\n c&amp;d.mp3 </location></track>")),
              (Names{"file:///a%20b", "c&d.mp3"}));
    EXPECT_EQ(LocationsOfXspf(Playlist("")), Names());
}

TEST(Xspf, TheListsOwnLocationIsNoTrack) {
    EXPECT_EQ(LocationsOfXspf("<playlist><location>http://self</location><trackList><track>"
                              "<location>a</location></track></trackList>"
                              "<location>b</location></playlist>"),
              (Names{"a"}));
}

TEST(Xspf, TextIsInTheFilesEncoding) {
    EXPECT_EQ(LocationsOfXspf("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><playlist><track>"
                              "<location>\xE9</location></track></playlist>"),
              (Names{"\xC3\xA9"}));
}

TEST(Xspf, OtherFilesAreNone) {
    for (const char* bytes :
         {"", "#EXTM3U\n", "<html><location>a</location></html>", "<playlist"}) {
        EXPECT_FALSE(LocationsOfXspf(bytes)) << bytes;
    }
}

TEST(Xspf, WhatStandsInFrontOfDamageCounts) {
    EXPECT_EQ(LocationsOfXspf("<playlist><track><location>a</location></track><track><loca"),
              (Names{"a"}));
}

TEST(Xspf, EntitiesOfItsOwnMakeItNone) {
    const std::string rest = "<playlist><track><location>&e;</location></track></playlist>";
    EXPECT_FALSE(LocationsOfXspf("<!DOCTYPE p [<!ENTITY e \"a\">]>" + rest));
    EXPECT_FALSE(
        LocationsOfXspf("<!DOCTYPE p [<!ENTITY e SYSTEM \"file:///etc/passwd\">]>" + rest));
}

TEST(Xspf, ALocationWithoutEndIsLeftOut) {
    const std::string endless(100'000, 'x');
    EXPECT_EQ(LocationsOfXspf(Playlist("<track><location>" + endless + "</location></track>" +
                                       "<track><location>a</location></track>")),
              (Names{"a"}));
}

}  // namespace
}  // namespace platform::desktop

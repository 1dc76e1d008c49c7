// Lists of default applications, byte by byte.
#include "platform/desktop/associations/default_applications.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using platform::desktop::EntriesInCache;
using platform::desktop::TypesWithDefault;
using platform::desktop::WithDefaults;
using platform::desktop::WithoutRemovals;

std::string Chosen(std::string_view text, const std::set<std::string>& types) {
    return WithDefaults(text, {types, "our.desktop"});
}

const std::set<std::string> kTwoTypes{"audio/mpeg", "audio/ogg"};

TEST(WithDefaults, AnEmptyListGetsTheGroup) {
    EXPECT_EQ(Chosen("", kTwoTypes),
              "[Default Applications]\naudio/mpeg=our.desktop\naudio/ogg=our.desktop\n");
    EXPECT_EQ(Chosen("", {}), "");
}

TEST(WithDefaults, WhatTheUserHadStaysBehindIt) {
    EXPECT_EQ(
        Chosen("[Default Applications]\naudio/mpeg=a.desktop;b.desktop;\naudio/ogg=c\n", kTwoTypes),
        "[Default Applications]\naudio/mpeg=our.desktop;a.desktop;b.desktop;\n"
        "audio/ogg=our.desktop;c\n");
}

TEST(WithDefaults, AnEntryFartherBackComesToTheFront) {
    EXPECT_EQ(Chosen("[Default Applications]\naudio/mpeg= a ; our.desktop ;b;\n", {"audio/mpeg"}),
              "[Default Applications]\naudio/mpeg= our.desktop;a ;b;\n");
    EXPECT_EQ(Chosen("[Default Applications]\naudio/mpeg=a;our.desktop\n", {"audio/mpeg"}),
              "[Default Applications]\naudio/mpeg=our.desktop;a\n");
}

TEST(WithDefaults, ASecondTimeChangesNothing) {
    for (const std::string text :
         {"", "# mine\n", "[Default Applications]", "[Default Applications]\naudio/mpeg=a;\n",
          "[Default Applications]\r\naudio/ogg=\r\n[X]\r\n",
          "[Default Applications]\naudio/ogg=;"}) {
        const std::string once = Chosen(text, kTwoTypes);
        EXPECT_EQ(Chosen(once, kTwoTypes), once) << text;
    }
    const std::string chosen = "[Default Applications]\naudio/mpeg=our.desktop;a;our.desktop ; \n";
    EXPECT_EQ(Chosen(chosen, {"audio/mpeg"}), chosen);
}

TEST(WithDefaults, EveryOtherByteStays) {
    const std::string before =
        "# by hand \xFF\n"
        "\n"
        "[Added Associations]\n"
        "audio/mpeg=x.desktop;\n"
        "[Default Applications]\n"
        "  # audio/ogg=not.desktop\n"
        "\taudio/mpeg = a.desktop ;\n"
        "text/plain=\xE9.desktop\n"
        "no key at all\n"
        "\n"
        "# the end of the group\n"
        "[Other]\n"
        "audio/ogg=y.desktop\n"
        "=\n"
        "last";
    const std::string after =
        "# by hand \xFF\n"
        "\n"
        "[Added Associations]\n"
        "audio/mpeg=x.desktop;\n"
        "[Default Applications]\n"
        "  # audio/ogg=not.desktop\n"
        "\taudio/mpeg = our.desktop;a.desktop ;\n"
        "text/plain=\xE9.desktop\n"
        "audio/ogg=our.desktop\n"
        "no key at all\n"
        "\n"
        "# the end of the group\n"
        "[Other]\n"
        "audio/ogg=y.desktop\n"
        "=\n"
        "last";
    EXPECT_EQ(Chosen(before, kTwoTypes), after);
}

TEST(WithDefaults, LineEndsAreThoseOfTheList) {
    EXPECT_EQ(Chosen("[Default Applications]\r\naudio/mpeg=a\r\n\r\n[X]\r\n", kTwoTypes),
              "[Default Applications]\r\naudio/mpeg=our.desktop;a\r\naudio/ogg=our.desktop\r\n"
              "\r\n[X]\r\n");
    EXPECT_EQ(Chosen("[X]\r\na=b\r\n", {"audio/ogg"}),
              "[X]\r\na=b\r\n\r\n[Default Applications]\r\naudio/ogg=our.desktop\r\n");
}

TEST(WithDefaults, ALastLineWithoutAnEndGetsOneFirst) {
    EXPECT_EQ(Chosen("[X]", {"audio/ogg"}),
              "[X]\n\n[Default Applications]\naudio/ogg=our.desktop\n");
    EXPECT_EQ(Chosen("[Default Applications]", {"audio/ogg"}),
              "[Default Applications]\naudio/ogg=our.desktop\n");
    EXPECT_EQ(Chosen("[Default Applications]\na/b=c", {"audio/ogg"}),
              "[Default Applications]\na/b=c\naudio/ogg=our.desktop\n");
    EXPECT_EQ(Chosen("[Default Applications]\naudio/ogg=c", {"audio/ogg"}),
              "[Default Applications]\naudio/ogg=our.desktop;c");
}

// Readers differ in which of two lines counts: so both are changed. New ones go to the first group.
TEST(WithDefaults, AGroupAndALineMayStandTwice) {
    EXPECT_EQ(Chosen("[Default Applications]\naudio/ogg=a\naudio/ogg=b\n[X]\n"
                     " [Default Applications] \naudio/ogg=c\n",
                     kTwoTypes),
              "[Default Applications]\naudio/ogg=our.desktop;a\naudio/ogg=our.desktop;b\n"
              "audio/mpeg=our.desktop\n[X]\n"
              " [Default Applications] \naudio/ogg=our.desktop;c\n");
}

TEST(WithDefaults, ALineWithoutAValueGetsOne) {
    EXPECT_EQ(Chosen("[Default Applications]\naudio/ogg=\n", {"audio/ogg"}),
              "[Default Applications]\naudio/ogg=our.desktop\n");
}

TEST(WithDefaults, BytesOfZeroAreBytes) {
    const std::string zeros("[Default Applications]\n\0=\0\n", 27);
    EXPECT_EQ(Chosen(zeros, {"audio/ogg"}), zeros + "audio/ogg=our.desktop\n");
}

TEST(WithoutRemovals, OursAreTakenOutOfTheirTypes) {
    const std::string text =
        "[Removed Associations]\n"
        "audio/mpeg=a.desktop;our.desktop;b.desktop;\n"
        "audio/ogg=our.desktop;our-more.desktop;\n"
        "audio/x-wav=our.desktop;\n"
        "[Added Associations]\n"
        "audio/mpeg=our.desktop;\n"
        "[Removed Associations]\n"
        "audio/mpeg=our.desktop\n"
        "audio/ogg=\n";
    EXPECT_EQ(WithoutRemovals(text, kTwoTypes, {"our.desktop", "our-more.desktop"}),
              "[Removed Associations]\n"
              "audio/mpeg=a.desktop;b.desktop;\n"
              "audio/x-wav=our.desktop;\n"
              "[Added Associations]\n"
              "audio/mpeg=our.desktop;\n"
              "[Removed Associations]\n"
              "audio/ogg=\n");
}

TEST(WithoutRemovals, OthersStayAsTheyAre) {
    const std::string text = "[Removed Associations]\r\naudio/mpeg = your.desktop ; our.desktopx";
    EXPECT_EQ(WithoutRemovals(text, kTwoTypes, {"our.desktop"}), text);
    EXPECT_EQ(WithoutRemovals("", kTwoTypes, {"our.desktop"}), "");
}

TEST(TypesWithDefault, OnlyOfTheirGroupAndWithAValue) {
    EXPECT_EQ(TypesWithDefault("audio/mpeg=a\n[Default Applications]\naudio/ogg = b\n"
                               "audio/mpeg= ; \n#audio/mpeg=c\n[X]\naudio/mpeg=d",
                               kTwoTypes),
              std::set<std::string>{"audio/ogg"});
}

TEST(EntriesInCache, InTheirOrder) {
    using Names = std::vector<std::string>;
    const std::string cache =
        "[MIME Cache]\naudio/ogg=x.desktop;\ninode/directory=a.desktop;;b.desktop;\n";
    EXPECT_EQ(EntriesInCache(cache, "inode/directory"), (Names{"a.desktop", "b.desktop"}));
    EXPECT_EQ(EntriesInCache(cache, "inode/blockdevice"), Names{});
    EXPECT_EQ(EntriesInCache("inode/directory=a.desktop;\n", "inode/directory"), Names{});
}

/// Whether `part` is left of `whole` when some of its bytes are taken away.
bool IsLeftOf(std::string_view part, std::string_view whole) {
    for (const char byte : whole) {
        if (!part.empty() && part.front() == byte) {
            part.remove_prefix(1);
        }
    }
    return part.empty();
}

TEST(WithDefaults, DamagedListsLoseNothing) {
    const std::vector<std::string> pieces{"[Default Applications]",
                                          "[",
                                          "]",
                                          "\n",
                                          "\r\n",
                                          "audio/mpeg",
                                          "=",
                                          ";",
                                          " ",
                                          "a.desktop",
                                          "our.desktop",
                                          "#",
                                          "\r",
                                          "\xFF",
                                          std::string(1, '\0'),
                                          "[X]",
                                          "\n\n",
                                          "\t"};
    std::mt19937 random(1);
    for (int round = 0; round < 3000; ++round) {
        std::string text;
        for (auto count = random() % 30; count > 0; --count) {
            text += pieces[random() % pieces.size()];
        }
        const std::string once = Chosen(text, kTwoTypes);
        EXPECT_EQ(Chosen(once, kTwoTypes), once) << text;
        EXPECT_EQ(TypesWithDefault(once, kTwoTypes), kTwoTypes) << text;
        // An entry of ours that stood farther back has come to the front.
        const bool moved = text.find("our.desktop") != std::string::npos;
        EXPECT_TRUE(moved || IsLeftOf(text, once)) << text;
    }
}

}  // namespace

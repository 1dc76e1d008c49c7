// What publications are made of: types of files, folders of the user's, tools of the desktop's.
#include <gtest/gtest.h>

#include <chrono>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/desktop/associations/media_types.h"
#include "platform/desktop/associations/publication.h"
#include "platform/desktop/associations/run_tool.h"

namespace {

using namespace platform;
using namespace platform::desktop;

using Texts = std::set<std::string>;

TEST(MediaTypes, AreThoseOfTheDatabase) {
    const MediaTypes types = MediaTypesOf({"mp3", "flac"});
    EXPECT_TRUE(types.all.contains("audio/mpeg"));
    EXPECT_TRUE(types.all.contains("audio/flac"));
    EXPECT_TRUE(types.ownExtensions.empty());
}

TEST(MediaTypes, AnUnknownExtensionGetsOneOfItsOwn) {
    const MediaTypes types = MediaTypesOf({"q7z-z", "no good", "a/b", "", "q&z"});
    EXPECT_EQ(types.all, Texts{"application/x-extension-q7z-z"});
    EXPECT_EQ(types.ownExtensions, Texts{"q7z-z"});
}

TEST(MediaTypes, WhatOnlyAnAdditionOfOursTellsIsStillUnknown) {
    using Known = std::vector<KnownType>;
    const auto typesOf = [](const std::string& extension) {
        return extension == "a"
                   ? Known{{"application/x-extension-a", {"a"}}}
                   : Known{{"application/x-extension-b", {"b"}}, {"audio/b", {"c", "b"}}};
    };
    const MediaTypes types = MediaTypesOf({"a", "b"}, typesOf);
    EXPECT_EQ(types.all, (Texts{"application/x-extension-a", "audio/b"}));
    EXPECT_EQ(types.ownExtensions, Texts{"a"});
}

TEST(MediaTypes, OfSeveralTheOnesThatAreMeant) {
    const auto typesOf = [](const std::string&) {
        return std::vector<KnownType>{{"audio/usual", {"a", "x"}},
                                      {"audio/all-ours", {"b", "a"}},
                                      {"video/others", {"v", "a"}},
                                      {"audio/any", {}}};
    };
    EXPECT_EQ(MediaTypesOf({"a", "b"}, typesOf).all,
              (Texts{"audio/usual", "audio/all-ours", "audio/any"}));
    EXPECT_EQ(MediaTypesOf({"v"}, typesOf).all, (Texts{"video/others", "audio/any"}));
}

TEST(MediaTypes, WhereNoneIsMeantAllAre) {
    const auto typesOf = [](const std::string&) {
        return std::vector<KnownType>{{"audio/one", {"x", "a"}}, {"audio/two", {"y", "a"}}};
    };
    EXPECT_EQ(MediaTypesOf({"a"}, typesOf).all, (Texts{"audio/one", "audio/two"}));
}

TEST(MediaTypes, WhoPlaysSoundDoesNotOpenAllVideos) {
    const MediaTypes types = MediaTypesOf({"mp2", "ogg", "oga", "opus"});
    EXPECT_TRUE(types.all.contains("audio/mp2"));
    EXPECT_TRUE(types.all.contains("audio/ogg"));
    EXPECT_FALSE(types.all.contains("video/mpeg"));
    EXPECT_FALSE(types.all.contains("video/ogg"));
}

TEST(MediaTypes, NobodyOpensEveryText) {
    const MediaTypes types = MediaTypesOf({"txt"});
    EXPECT_EQ(types.all, Texts{});
    EXPECT_EQ(types.ownExtensions, Texts{});
}

TEST(MediaTypes, APackageHasAGlobForEach) {
    EXPECT_EQ(TypesPackage({"a", "b"}),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<mime-info xmlns=\"http://www.freedesktop.org/standards/shared-mime-info\">\n"
              "  <mime-type type=\"application/x-extension-a\">\n"
              "    <comment>a file</comment>\n"
              "    <glob pattern=\"*.a\"/>\n"
              "  </mime-type>\n"
              "  <mime-type type=\"application/x-extension-b\">\n"
              "    <comment>b file</comment>\n"
              "    <glob pattern=\"*.b\"/>\n"
              "  </mime-type>\n"
              "</mime-info>\n");
}

std::optional<UserFolders> FoldersOf(const std::map<std::string, std::string>& variables) {
    return UserFoldersBy([&variables](const std::string& name) -> const char* {
        const auto found = variables.find(name);
        return found == variables.end() ? nullptr : found->second.c_str();
    });
}

TEST(UserFolders, WithoutVariablesTheyAreInTheHomeFolder) {
    const auto folders = FoldersOf({{"HOME", "/home/me/"}});
    ASSERT_TRUE(folders);
    EXPECT_EQ(folders->data, "/home/me/.local/share");
    EXPECT_EQ(folders->config, "/home/me/.config");
    EXPECT_EQ(folders->machineData, (std::vector<std::string>{"/usr/local/share", "/usr/share"}));
    EXPECT_EQ(folders->machineConfigs, std::vector<std::string>{"/etc/xdg"});
    EXPECT_TRUE(folders->desktops.empty());
}

TEST(UserFolders, RelativePathsDoNotCount) {
    const auto folders = FoldersOf({{"HOME", "/h"},
                                    {"XDG_DATA_HOME", "data"},
                                    {"XDG_CONFIG_HOME", "/c//"},
                                    {"XDG_DATA_DIRS", "a:/b/:"},
                                    {"XDG_CONFIG_DIRS", ""},
                                    {"XDG_CURRENT_DESKTOP", "One:TWO::../x"}});
    ASSERT_TRUE(folders);
    EXPECT_EQ(folders->data, "/h/.local/share");
    EXPECT_EQ(folders->config, "/c");
    EXPECT_EQ(folders->machineData, std::vector<std::string>{"/b"});
    EXPECT_EQ(folders->machineConfigs, std::vector<std::string>{"/etc/xdg"});
    EXPECT_EQ(folders->desktops, (std::vector<std::string>{"one", "two"}));
}

TEST(UserFolders, WithoutAHomeThereAreNone) {
    EXPECT_FALSE(FoldersOf({}));
    EXPECT_FALSE(FoldersOf({{"HOME", "here"}, {"XDG_DATA_HOME", "/d"}}));
    EXPECT_TRUE(FoldersOf({{"XDG_DATA_HOME", "/d"}, {"XDG_CONFIG_HOME", "/c"}}));
}

TEST(RunTool, TellsHowItEnded) {
    constexpr std::chrono::milliseconds kLong(10000);
    EXPECT_TRUE(RunTool({"true"}, kLong));
    EXPECT_FALSE(RunTool({"false"}, kLong));
    EXPECT_FALSE(RunTool({"/no/such/tool"}, kLong));
}

TEST(RunTool, DoesNotWaitForEver) {
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(RunTool({"sleep", "60"}, std::chrono::milliseconds(20)));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
}

}  // namespace

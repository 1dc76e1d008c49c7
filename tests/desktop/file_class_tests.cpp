// What is read out of the registry of file types.
#include "platform/desktop/associations/file_class.h"

#include <gtest/gtest.h>

namespace {

using namespace platform;
using namespace platform::desktop;

using Arguments = std::vector<std::string>;

TEST(SplitCommand, BlanksPartAndQuotesHoldTogether) {
    EXPECT_EQ(SplitCommand(R"("/opt/a b/play" /ADD "%1")"),
              (Arguments{"/opt/a b/play", "/ADD", "%1"}));
    EXPECT_EQ(SplitCommand("  play   %1 "), (Arguments{"play", "%1"}));
    EXPECT_EQ(SplitCommand(R"("" x)"), (Arguments{"", "x"}));
    EXPECT_EQ(SplitCommand(""), Arguments{});
    EXPECT_EQ(SplitCommand("   "), Arguments{});
}

TEST(SplitCommand, AQuotationMarkWithinAPathIsPartOfIt) {
    EXPECT_EQ(SplitCommand(R"("/a"b/play" "%1")"), (Arguments{R"(/a"b/play)", "%1"}));
    EXPECT_EQ(SplitCommand(R"("/a"")"), (Arguments{R"(/a")"}));
    EXPECT_EQ(SplitCommand(R"(/a"b "c")"), (Arguments{R"(/a"b)", "c"}));
}

TEST(SplitCommand, WhatIsNotClosedGoesToTheEnd) {
    EXPECT_EQ(SplitCommand(R"(play "a b)"), (Arguments{"play", "a b"}));
    EXPECT_EQ(SplitCommand(R"(play ")"), (Arguments{"play", ""}));
}

TEST(SplitCommand, AProgramThatIsKnownMayHoldWhatPartsArguments) {
    const std::string program = R"(/a" "b/play)";
    EXPECT_EQ(SplitCommand(R"("/a" "b/play" "%1")", program), (Arguments{program, "%1"}));
    EXPECT_EQ(SplitCommand(R"("/a" "b/play")", program), Arguments{program});
    EXPECT_EQ(SplitCommand(R"("/a" "b/playlist" "%1")", program),
              (Arguments{"/a", "b/playlist", "%1"}));
    EXPECT_EQ(SplitCommand(R"("" x)", ""), (Arguments{"", "x"}));
}

// As the player writes it, in the order of the keys.
std::vector<RegistryValue> PlayersRegistry() {
    return {{u".MP3", u"Some file"},
            {u".txt", u"Other file"},
            {u".wav", u"some FILE"},
            {u"Directory\\shell\\Some.Enqueue", u"&Enqueue"},
            {u"Directory\\shell\\Some.Enqueue\\command", u"\"/p\" /ADD \"%1\""},
            {u"Directory\\shell\\Some.Open", u"&Play"},
            {u"Directory\\shell\\Some.Open\\command", u"\"/p\" \"%1\""},
            {u"Some file", u"Some file"},
            {u"Some file\\DefaultIcon", u"/p"},
            {u"Some file\\shell\\enqueue", u"En&queue && more&"},
            {u"Some file\\shell\\enqueue\\command", u"\"/p\" /ADD \"%1\""},
            {u"SOME file\\SHELL\\Open", u"&Play"},
            {u"Some file\\shell\\open\\Command", u"\"/p\" \"%1\""},
            {u"Some file\\shell\\print", u"Without a command"}};
}

TEST(FileClass, IsReadOutOfTheRegistry) {
    const auto found = ReadFileClass(PlayersRegistry());
    ASSERT_TRUE(found);
    EXPECT_EQ(found->extensions, (Arguments{"mp3", "wav"}));
    const Verb open{"open", "Play", {"/p", "%1"}};
    EXPECT_EQ(found->verbs,
              (std::vector<Verb>{{"enqueue", "Enqueue & more", {"/p", "/ADD", "%1"}}, open}));
    EXPECT_EQ(found->folderVerbs,
              (std::vector<Verb>{{"enqueue", "Enqueue", {"/p", "/ADD", "%1"}}, open}));
}

TEST(FileClass, TheIconTellsWhereTheProgramEnds) {
    const auto found = ReadFileClass({{u".mp3", u"X"},
                                      {u"Directory\\shell\\open", u"Play"},
                                      {u"Directory\\shell\\open\\command", u"\"/a\" b\" \"%1\""},
                                      {u"X\\DEFAULTICON", u"/a\" b"},
                                      {u"X\\shell\\open", u"Play"},
                                      {u"X\\shell\\open\\command", u"\"/a\" b\" \"%1\""}});
    ASSERT_TRUE(found);
    EXPECT_EQ(found->verbs.front().command, (Arguments{"/a\" b", "%1"}));
    EXPECT_EQ(found->folderVerbs, found->verbs);
}

TEST(FileClass, ThePointAloneIsNoExtension) {
    auto registry = PlayersRegistry();
    registry.erase(registry.begin(), registry.begin() + 3);
    registry.insert(registry.begin(), {u".", u"Some file"});
    const auto found = ReadFileClass(registry);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->extensions, Arguments{});
}

TEST(FileClass, WithoutACommandToOpenThereIsNone) {
    EXPECT_FALSE(ReadFileClass({}));
    EXPECT_FALSE(ReadFileClass({{u".mp3", u"Some file"}, {u"Some file", u"Some file"}}));
    EXPECT_FALSE(ReadFileClass({{u".mp3", u"Some file"},
                                {u"Some file\\shell\\open", u"Play"},
                                {u"Some file\\shell\\open\\more\\command", u"/p"}}));
    EXPECT_FALSE(ReadFileClass({{u".mp3", u""}, {u".mp3\\shell\\open", u""}}));
}

}  // namespace

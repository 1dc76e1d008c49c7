// The settings store and the file helpers.
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "core/base/impulsevalue.h"
#include "core/state/mGeneral.h"
#include "tests/unit/support/world.h"

namespace sarnel {
namespace {

using namespace std::string_literals;

class Settings : public ::testing::Test {
  protected:
    Settings() { world_.Create(); }  // settings need a directory, and no window

    support::World world_;
};

TEST_F(Settings, WithoutAFileEveryReadGivesItsDefaultAndMakesNoFile) {
    EXPECT_EQ(ReadSetting(u"MusicVolume", u"80"), u"80");
    EXPECT_EQ(ReadSetting(u"LastDir", u""), u"");
    EXPECT_FALSE(world_.folder.Exists(support::World::kSettings));
}

TEST_F(Settings, AWriteMakesTheFileWithOneSectionAndReadsBack) {
    WriteSetting(u"Random", BooleanToText(true));
    EXPECT_EQ(world_.folder.Read(support::World::kSettings), "[Memory]\r\nRandom=True\r\n");
    EXPECT_EQ(TextToBoolean(ReadSetting(u"Random", u"False")), true);
    WriteSetting(u"Random", BooleanToText(false));
    EXPECT_EQ(TextToBoolean(ReadSetting(u"Random", u"True")), false);
}

TEST_F(Settings, MinusOneIsTrueAndANumberIsAccepted) {
    world_.folder.Write(support::World::kSettings, "[Memory]\r\nA=-1\r\nB=0\r\nC=5\r\n");
    EXPECT_EQ(TextToBoolean(ReadSetting(u"A", u"False")), true);
    EXPECT_EQ(TextToBoolean(ReadSetting(u"B", u"True")), false);
    EXPECT_EQ(TextToBoolean(ReadSetting(u"C", u"False")), true);
}

TEST_F(Settings, ThereIsNoCacheInEitherDirection) {
    WriteSetting(u"X", u"1");
    world_.folder.Write(support::World::kSettings, "[Memory]\r\nX=2\r\n");
    EXPECT_EQ(ReadSetting(u"X", u"0"), u"2");
    world_.folder.Remove(support::World::kSettings);
    EXPECT_EQ(ReadSetting(u"X", u"0"), u"0");
}

TEST_F(Settings, OnlySectionMemoryCounts) {
    world_.folder.Write(support::World::kSettings, "[Other]\r\nX=2\r\n");
    EXPECT_EQ(ReadSetting(u"X", u"0"), u"0");
}

TEST_F(Settings, AValueIsCutTo254BytesOnReading) {
    WriteSetting(u"X", std::u16string(300, u'a'));
    EXPECT_EQ(world_.Setting("X"), std::string(300, 'a'));
    EXPECT_EQ(ReadSetting(u"X", u""), std::u16string(254, u'a'));
    WriteSetting(u"X", std::u16string(200, u'\u00E4'));  // two bytes each
    EXPECT_EQ(ReadSetting(u"X", u""), std::u16string(127, u'\u00E4'));
}

TEST_F(Settings, AValueEndsAtAZeroCharacterAndLosesTrailingBlanks) {
    world_.folder.Write(support::World::kSettings, "[Memory]\r\nX=abc\0def\r\nY=abc \0\r\n"s);
    EXPECT_EQ(ReadSetting(u"X", u""), u"abc");
    EXPECT_EQ(ReadSetting(u"Y", u""), u"abc");
    EXPECT_EQ(ReadSetting(u"None", u"default   "), u"default");
}

TEST_F(Settings, ValuesBeyondAsciiAndPathsThatAreNoUtf8ReadBack) {
    WriteSetting(u"LastDir", u"/Musik/\u00C4rzte \u20AC");
    EXPECT_EQ(ReadSetting(u"LastDir", u""), u"/Musik/\u00C4rzte \u20AC");
    WriteSetting(u"LastDir", u"/caf\xDCE9");
    EXPECT_EQ(world_.Setting("LastDir"), "/caf\xE9");
    EXPECT_EQ(ReadSetting(u"LastDir", u""), u"/caf\xDCE9");
}

TEST_F(Settings, AFailedWriteIsLostWithoutAWord) {
    world_.folder.MakeFolder(support::World::kSettings);
    WriteSetting(u"X", u"1");
    EXPECT_EQ(ReadSetting(u"X", u"0"), u"0");
}

TEST_F(Settings, ComponentFilesLieInItsDirectory) {
    EXPECT_EQ(ComponentFile(u"Sarnel.Ambrisor.omk"), world_.folder.Text("Sarnel.Ambrisor.omk"));
}

TEST(FileHelpers, DirExistsWantsAPathAndWhatItNames) {
    const support::TempFolder folder;
    folder.MakeFolder("sub");
    folder.Write("file", "");
    EXPECT_TRUE(DirExists(folder.Text("sub/")));
    EXPECT_FALSE(DirExists(folder.Text("none/")));
    EXPECT_FALSE(DirExists(folder.Text("file/")));
    EXPECT_FALSE(DirExists(u""));
    EXPECT_TRUE(DirExists(u"/"));
}

TEST(FileHelpers, FileExistsForAFileOfAnyLengthAndNoFolder) {
    const support::TempFolder folder;
    folder.MakeFolder("sub");
    folder.Write("empty", "");
    folder.Write("full", "x");
    EXPECT_TRUE(FileExists(folder.Text("empty")));
    EXPECT_TRUE(FileExists(folder.Text("full")));
    EXPECT_FALSE(FileExists(folder.Text("sub")));
    EXPECT_FALSE(FileExists(folder.Text("none")));
    EXPECT_FALSE(FileExists(u""));
}

TEST(FileHelpers, StripNullKeepsWhatStandsInFrontOfTheFirstZero) {
    EXPECT_EQ(StripNull(u"abc\0def\0"s), u"abc");
    EXPECT_EQ(StripNull(u"abc"), u"abc");
    EXPECT_EQ(StripNull(u"\0abc"s), u"");
    EXPECT_EQ(StripNull(u""), u"");
}

}  // namespace
}  // namespace sarnel

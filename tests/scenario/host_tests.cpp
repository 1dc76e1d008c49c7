// The scripted host: what it answers, logs and does.
#include "tests/scenario/runner_fixture.h"

#include "core/base/impulses.h"
#include "tests/scenario/world.h"

namespace scenario {
namespace {

using namespace sarnel;

class HostTest : public RunnerTest {
  protected:
    ScriptedHost& Host() { return world_.Host(); }

    // Sends with out values that tell whether they were touched.
    std::string Send(Long number, ImpulseValue wParam, ImpulseValue first = Long{-5},
                     ImpulseValue second = Long{-6}) {
        ImpulseValue uMsg(number);
        Host().ProcessImpulse(world_.Component(), uMsg, wParam, first, second);
        return world_.Printed(first) + ' ' + world_.Printed(second);
    }

    World world_{Folder()};
};

TEST_F(HostTest, AnswersUnscripted) {
    EXPECT_EQ(Send(ImpulseGetHostPath, {}), "\"/opt/veldrin/veldrin\" -6");
    EXPECT_EQ(Send(ImpulseGetFileTypes, {}), "\"*.mp3;*.ogg;*.wav\" -6");
    EXPECT_EQ(Send(ImpulseGetTitle, u"/a.mp3", u"a.mp3"), "\"a.mp3\" -6");
    EXPECT_EQ(Send(ImpulseGetInfo, u"/a.mp3"), "\"\" -6");
    EXPECT_EQ(Send(ImpulseGetLength, Long{0}), "200 -6");
    EXPECT_EQ(Send(ImpulseGetPosition, Long{0}), "0 -6");
    EXPECT_EQ(Send(ImpulseGetTimeText, false), "\"0:00\" -6");
    EXPECT_EQ(Send(ImpulseGetTimeText, true), "\"-3:20\" -6");
    EXPECT_EQ(Send(ImpulseGetLengthText, Long{0}), "\"3:20\" -6");
    EXPECT_EQ(Send(ImpulseGetSampleRate, Long{0}), "44100 -6");
    EXPECT_EQ(Send(ImpulseGetChannels, Long{0}), "2 -6");
    EXPECT_EQ(Send(ImpulseGetBitRate, Long{0}), "\"128\" -6");
    EXPECT_EQ(Send(ImpulseSetTempo, Long{3}), "-5 -6");
    EXPECT_EQ(Host().Capacity(), 0);
}

TEST_F(HostTest, SupportsExactlyItsTypes) {
    EXPECT_EQ(Send(ImpulseIsSupported, u"/m/A.MP3"), "True -6");
    EXPECT_EQ(Send(ImpulseIsSupported, u"b.oGg"), "True -6");
    EXPECT_EQ(Send(ImpulseIsSupported, u"a.mp4"), "False -6");
    EXPECT_EQ(Send(ImpulseIsSupported, u"mp3"), "False -6");
    EXPECT_EQ(Send(ImpulseIsSupported, u"a.mp3.txt"), "False -6");
    Host().answers.types = u"*.txt;;list";
    EXPECT_EQ(Send(ImpulseIsSupported, u"a.mp3"), "False -6");
    EXPECT_EQ(Send(ImpulseIsSupported, u"a.TXT"), "True -6");
    EXPECT_EQ(Send(ImpulseIsSupported, u"LIST"), "True -6");
    Host().answers.types = u"";
    EXPECT_EQ(Send(ImpulseIsSupported, u""), "False -6");
}

TEST_F(HostTest, PlaysFromASuccessfulOpenToAStop) {
    EXPECT_EQ(Send(ImpulseIsPlaying, Long{0}, true), "False -6");
    Host().answers.dead = {u"/dead"};
    EXPECT_EQ(Send(ImpulseOpen, Long{1}, u"/dead", false), "\"/dead\" False");
    EXPECT_EQ(Send(ImpulseIsPlaying, Long{0}, true), "False -6");
    EXPECT_EQ(Send(ImpulseOpen, Long{1}, u"/a", false), "\"/a\" True");
    EXPECT_EQ(Send(ImpulseIsPlaying, Long{0}, false), "True -6");
    Send(ImpulsePause, true);
    EXPECT_EQ(Send(ImpulseIsPlaying, Long{0}, false), "True -6");
    Send(ImpulseStop, Long{0});
    EXPECT_EQ(Send(ImpulseIsPlaying, Long{0}, true), "False -6");
}

TEST_F(HostTest, KeepsSilent) {
    Host().answers.silent = true;
    EXPECT_EQ(Send(ImpulseGetHostPath, {}), "-5 -6");
    EXPECT_EQ(Send(ImpulseIsSupported, u"a.mp3"), "-5 -6");
    EXPECT_EQ(Send(ImpulseOpen, Long{1}, u"/a", false), "\"/a\" False");
    EXPECT_EQ(Send(ImpulseIsPlaying, Long{0}), "-5 -6");
    EXPECT_EQ(Host().Log().size(), 4u);
}

TEST_F(HostTest, LogsImpulsesAsTheyComeInEvenIfItFails) {
    Host().answers.throws = {26, 28};
    EXPECT_THROW(Send(ImpulseOpen, Long{70000}, u"/a", false), std::exception);
    EXPECT_THROW(Send(ImpulseStop, Long{0}, Long{0}, Long{0}), std::exception);
    Send(ImpulseGetInfo, u"", u"", {});
    ASSERT_EQ(Host().Log().size(), 3u);
    EXPECT_EQ(Host().Log()[0].line, "26 70000 \"/a\" False");
    EXPECT_EQ(Host().Log()[1].line, "28 0 0 0");
    EXPECT_EQ(Host().Log()[2].line, "14 \"\" \"\" null");
}

TEST_F(HostTest, NamesItsCells) {
    Host().Cells({u"Engine", u"Output"});
    EXPECT_EQ(Host().Capacity(), 2);
    Long number = 2;
    EXPECT_EQ(Host().CellItem(number)->getClass(), u"Output");
    for (Long missing : {0, 3, -1}) {
        EXPECT_EQ(Host().CellItem(missing), nullptr);
    }
}

TEST_F(HostTest, IsScripted) {
    Holds(
        "host path \"/h\"\nhost types \"*.x\"\nhost cells \"One\" \"Two\"\nhost length 90\n"
        "host position 7\nhost stream 48000 1 \"96\"\nhost time \"0:07\" \"-1:23\"\n"
        "host lengthtext \"1:30\"\nhost title \"$D/a.x\" \"A title\"\nwrite \"$D/a.x\" \"\"\n"
        "start \"$D/a.x\"\n"
        "? frmMAIN.Caption\n= \"A title\"\n? sldSkin(0).Max\n= 90\n? InfoText\n"
        "= \"-1:23 | 1:30\"\nadvance 50\n? sldSkin(0).Value\n= 7\n"
        "? hMenu.Caption(hMenu.IndexForKey(\"kCell2\"))\n= \"Two\"\n"
        "set DisplayMode 2\ncall RefreshInfoDisplay\n? InfoText\n= \"48kHz.mono\"\n"
        "set DisplayMode 3\ncall RefreshInfoDisplay\n? InfoText\n= \"96 kb/s\"\n",
        7);
}

TEST_F(HostTest, FailsUntilToldOtherwise) {
    Holds(
        "host throws 32\nhost throws 26\nstart\ncall OpenMedia \"/a\"\n= False\nhost throws none\n"
        "call OpenMedia \"/a\"\n= True\n",
        2);
}

TEST_F(HostTest, OpensAgainWhatItRefused) {
    Holds(
        "host open \"/a\" False\nstart\ncall OpenMedia \"/a\"\n= False\nhost open \"/a\" True\n"
        "call OpenMedia \"/a\"\n= True\n",
        2);
}

TEST_F(HostTest, RunsEachCommandOnceInTheirOrder) {
    Holds(
        "start\nhost on 26 set InfoText \"first\"\nhost on 26 ? InfoText\ncall OpenMedia \"/a\"\n"
        "= \"first\"\n= True\ncall OpenMedia \"/a\"\n= True\n",
        3);
}

TEST_F(HostTest, TheLogEmptiesAndSelects) {
    Holds(
        "start\nlog 41 29\n= 29 80 0 0\n= 41 0 0 0\nlog\n= nothing\ncall SetPitch 20\nforget\n"
        "call SetPitch 21\nlog\n= 42 1 0 0\n",
        4);
}

}  // namespace
}  // namespace scenario

// The world of a scenario, seen through scenarios: values, runs, time, commands inside commands.
#include "tests/scenario/runner_fixture.h"

namespace scenario {
namespace {

class Running : public RunnerTest {};

TEST_F(Running, EachKindOfValuePrintsInItsForm) {
    Holds(
        "set InfoText \"a \\\"b\\\" \\\\ \\r\\n\\t\u017b\"\n"
        "? InfoText\n= \"a \\\"b\\\" \\\\ \\r\\n\\t\u017b\"\n"
        "set DisplayMode -7\n? DisplayMode\n= -7\n"
        "? Random\n= False\nset Random True\n? Random\n= True\n"
        "impulse 3 0 null 0\n= 1 null 0\n"
        "impulse 6 0 0 lstPlaylist\n= 2 object object\n"
        "? lstPlaylist\n= object\n"
        "? WorkArea\n= 0,0,1024,740\n",
        8);
}

TEST_F(Running, FloatsPrintAsShortAsTheyGo) {
    Holds(
        "set picFrame(0).FontSize 10\n? picFrame(0).FontSize\n= 10\n"
        "set picFrame(0).FontSize 0.5\n? picFrame(0).FontSize\n= 0.5\n"
        "set picFrame(0).FontSize -8.25\n? picFrame(0).FontSize\n= -8.25\n"
        "set picFrame(0).FontSize 0.1\n? picFrame(0).FontSize\n= 0.1\n",
        4);
}

TEST_F(Running, ColoursPrintAsNumbers) {
    Holds("set frmMAIN.BackColor 12632256\n? frmMAIN.BackColor\n= 12632256\n", 1);
}

TEST_F(Running, TheFolderIsReplacedAndPutBack) {
    Holds(
        "set InfoText \"$D/a and $D\"\n? InfoText\n= \"$D/a and $D\"\n"
        "call StripNull \"\\x24D/b\"\n= \"$D/b\"\n"
        "write $D/sub/x.txt \"$D\"\nbytes $D/sub/x.txt\n= \"$D\"\n"
        "? FileExists(\"$D/sub/x.txt\")\n= True\n",
        4);
}

TEST_F(Running, ArgumentsInParenthesesMayBeAskedFor) {
    Holds(
        "load\n? hMenu.Checked(hMenu.IndexForKey(\"kPRdm\"))\n= False\n"
        "set hMenu.Checked(hMenu.IndexForKey(\"kPRdm\")) True\n"
        "? hMenu.Checked( hMenu.IndexForKey( \"kPRdm\" ) )\n= True\n"
        "set DisplayMode 3\n? lblEffects(DisplayMode).Caption\n= \"Tempo = 0\"\n"
        "call SetVolume DisplayMode\n? sldSkin(1).Value\n= 3\n"
        "call SetVolume(9)\n? sldSkin(1).Value\n= 9\n",
        5);
}

TEST_F(Running, ResultsOfRoutinesPrint) {
    Holds(
        "call IsInPlayedHistory \"/a\"\n= False\n? IsInPlayedHistory(\"/a\")\n= False\n"
        "call StopTickTimer\n= nothing\n",
        3);
}

TEST_F(Running, RaisedErrorsPrint) {
    Holds(
        "new JList\n? it.ImageIndex(9)\n= error 0x00000009 \"Subscript out of range\"\n"
        "set it.ImageIndex(9) 1\n= error 0x00000009 \"Subscript out of range\"\n"
        "? it.Text\n= error 0x00000009 \"Subscript out of range\"\n",
        3);
}

TEST_F(Running, ANewListIsAsItComes) {
    Holds(
        "new JList\n? it.Width\n= 281\n? it.Height\n= 181\n? it.Sorted\n= True\n"
        "? it.ListIndex\n= -1\ncall it.AddItem \"b\" \"/b\"\ncall it.AddItem \"a\" \"/a\" -1\n"
        "? it.List(0)\n= \"a\"\ncall it.AddItem \"c\" \"/c\" 0\n? it.List(0)\n= \"c\"\n"
        "? it\n= object\nnew JList\n? it.ListCount\n= 0\n",
        8);
}

TEST_F(Running, OtherNewInstances) {
    Holds(
        "new JSlider\n? it.Max\n= 100\nset it.Value 101\n? it.Value\n= 100\n"
        "new JToogle\n? it.Value\n= False\nnew JButton\nset it.Tag \"x\"\n? it.Tag\n= \"x\"\n"
        "new JPopupMenu\ncall it.AddItem \"One#F1\" 0 \"k1\" False True\n= 1\n"
        "? it.KeyText(1)\n= \"F1\"\n? it.Count\n= 1\n"
        "new JHotKeys\nset it.hWndToCapture 5\n? it.hWndToCapture\n= 5\n",
        8);
}

TEST_F(Running, StartGoesAllTheWayAndLoadStopsBeforeTheShow) {
    Holds(
        "load\n? frmMAIN.Visible\n= False\nfocus\n= none\nshow\n? frmMAIN.Visible\n= True\n"
        "focus\n= lstPlaylist\n",
        4);
    Holds("start\n? frmMAIN.Visible\n= True\ntimers\n= 12 30\nlog 7\n= nothing\n", 3);
}

TEST_F(Running, TheCommandLineReachesTheComponent) {
    Holds(
        "write \"$D/a.mp3\" \"\"\nstart \"$D/a.mp3\"\n? lstPlaylist.ListData(0)\n= \"$D/a.mp3\"\n"
        "log 26\n= 26 HWND \"$D/a.mp3\" False\n",
        2);
}

TEST_F(Running, ARunBeginsAfreshInTheSameFolder) {
    Holds(
        "start\ncall lstPlaylist.AddItem \"A\" \"/a\"\nset Random True\nquit\nlog 7\n= 7 0 0 0\n"
        "start\n? lstPlaylist.ListCount\n= 1\n? Random\n= False\n",
        3);
    Holds(
        "start\ncall lstPlaylist.AddItem \"A\" \"/a\"\nrestart\n? lstPlaylist.List(0)\n= \"A\"\n"
        "log 7\n= 7 0 0 0\n",
        2);
}

TEST_F(Running, ARunThatWasNotEndedIsCutOff) {
    Holds(
        "start\ncall lstPlaylist.AddItem \"A\" \"/a\"\nstart\n? lstPlaylist.ListCount\n= 0\n"
        "log 7\n= nothing\n",
        2);
}

TEST_F(Running, WithoutARunTheComponentKnowsNoHost) {
    Holds(
        "impulse 3 0 0 0\n= 1 0 0\nimpulse 15 16 0 0\n= 2 HWND 0\nlog\n= nothing\n"
        "? sldSkin(1).Value\n= 80\n",
        4);
}

TEST_F(Running, TheWindowsHandleIsNamedOnlyWhereItStands) {
    // The handle is a small number; a plain argument of that value is not taken for it.
    Holds("load\nimpulse 7 0 1 2\n= 1 1 2\nimpulse 15 18 True 2\n= 2 True -1\n", 2);
}

TEST_F(Running, TimeStandsStillUnlessAdvanced) {
    Holds(
        "start\nset Playing True\ncall StartTickTimer\nforget\npump\nlog 33\n= nothing\n"
        "advance 49\nlog 33\n= nothing\nadvance 1\nlog 33\n= 33 0 True 0\n",
        3);
}

TEST_F(Running, CommandsFallDueInOrderOfTime) {
    Holds(
        "at 20 set DisplayMode 2\nat 10 set DisplayMode 1\nat 20 set SortFilesMode 5\n"
        "advance 10\n? DisplayMode\n= 1\nadvance 9\n? DisplayMode\n= 1\n"
        "advance 1\n? DisplayMode\n= 2\n? SortFilesMode\n= 5\n"
        "at 0 set DisplayMode 9\n? DisplayMode\n= 2\npump\n? DisplayMode\n= 9\n",
        6);
}

TEST_F(Running, CommandsInsideCommandsPrintInTheirMidst) {
    Holds(
        "at 10 ? DisplayMode\nat 20 call StripNull \"x\"\nadvance 15\n= 0\nadvance 15\n= \"x\"\n"
        "start\nhost on 26 ? DisplayMode\ncall OpenMedia \"/a\"\n= 1\n= True\n"
        "call OpenMedia \"/a\"\n= True\n",
        5);
    Holds(
        "start\nat 5 host on 26 at 5 ? InfoText\nadvance 5\ncall OpenMedia \"/a\"\n= True\n"
        "set InfoText \"late\"\nadvance 5\n= \"late\"\n",
        2);
}

TEST_F(Running, ARunMayEndInsideTheHost) {
    Holds(
        "start\nhost on 26 quit\ncall OpenMedia \"/a\"\nlog 7\n= 7 0 0 0\n"
        "exists \"$D/Sarnel.Ambrisor.omk\"\n= True\n",
        2);
}

TEST_F(Running, ErrorsInsideCommandsPrintToo) {
    Holds(
        "new JList\nat 5 ? it.ImageIndex(9)\nadvance 5\n"
        "= error 0x00000009 \"Subscript out of range\"\n",
        1);
}

TEST_F(Running, KeysGoToTheFocus) {
    Holds(
        "new JList\nkey 65\nraised\n= nothing\n"
        "start\nevents lstPlaylist\nkey 38 shift\nkeydown 40 ctrl alt\nkeyup 40\nraised\n"
        "= lstPlaylist.KeyDown 38 1\n= lstPlaylist.KeyUp 38 1\n= lstPlaylist.KeyDown 40 6\n"
        "= lstPlaylist.KeyUp 40 0\nraised\n= nothing\n",
        6);
}

TEST_F(Running, MessagesPrintTheirResult) {
    Holds("start\nmessage frmMAIN 26 3 0\n= 0\nmessage sldSkin(0) 1 2 3\n= 0\n", 2);
}

TEST_F(Running, DropsAndHandedOverLinesArrive) {
    Holds(
        "write \"$D/a.mp3\" \"\"\nwrite \"$D/b.mp3\" \"\"\nstart\n"
        "drop lstPlaylist \"$D/a.mp3\" \"$D/b.mp3\"\n? lstPlaylist.ListCount\n= 2\n"
        "drop frmMAIN \"$D/a.mp3\"\n? lstPlaylist.ListCount\n= 3\n"
        "copydata \"/ADD $D/b.mp3\"\n? lstPlaylist.ListData(3)\n= \"$D/b.mp3\"\n",
        3);
}

TEST_F(Running, TheWindowManagerMinimisesAndRestores) {
    Holds(
        "start\nminimise\ntimers\n= nothing\nrestore\ntimers\n= 12 30\n"
        "quit\nminimise\nrestore\ncopydata \"/a\"\nlog 3\n= nothing\n",
        3);
}

TEST_F(Running, HotKeysArePressed) {
    Holds("start\ncall SetVolume 50\nhotkey \"VolUp\"\n? sldSkin(1).Value\n= 55\n", 1);
}

TEST_F(Running, Files) {
    Holds(
        "exists \"$D/a\"\n= False\nmkdir \"$D/a/b\"\nexists \"$D/a/b\"\n= True\n"
        "write \"$D/a/c\" \"1\\x00\\r\\n\\xE9\"\nbytes \"$D/a/c\"\n= \"1\\x00\\r\\n\\xE9\"\n"
        "write \"$D/a/c\" \"\"\nbytes \"$D/a/c\"\n= \"\"\ndelete \"$D/a\"\nexists \"$D/a\"\n"
        "= False\nbytes \"$D/a/c\"\n= none\ndelete \"$D/none\"\n",
        6);
    Holds(
        "write \"$D/n\\xE9.x\" \"1\"\nexists \"$D/n\\xE9.x\"\n= True\n"
        "exists \"$D/n\\xE8.x\"\n= False\n",
        2);
}

TEST_F(Running, SettingsFile) {
    Holds(
        "ini Skin\n= none\nini Skin \"1\"\nini skin\n= \"1\"\nini Empty \"\"\nini Empty\n= \"\"\n"
        "bytes \"$D/Sarnel.Ambrisor.ini\"\n= \"[Memory]\\r\\nSkin=1\\r\\nEmpty=\\r\\n\"\n",
        4);
}

}  // namespace
}  // namespace scenario

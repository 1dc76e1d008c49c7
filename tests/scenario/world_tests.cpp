// The commands for what surrounds the component: looks, disk, desktop, and lists that come with
// rows or stored properties.
#include "tests/scenario/runner_fixture.h"

namespace scenario {
namespace {

class Surroundings : public RunnerTest {};

TEST_F(Surroundings, RowsComeWithTitleAndDataAndOnePaint) {
    Holds(
        "start\nrows lstPlaylist 3\n? lstPlaylist.ListCount\n= 3\n? lstPlaylist.List(0)\n"
        "= \"Row 1\"\n? lstPlaylist.ListData(2)\n= \"/m/3.mp3\"\n? lstPlaylist.RedrawFlag\n= True\n"
        "rows lstPlaylist 1\n? lstPlaylist.List(3)\n= \"Row 1\"\nrows lstPlaylist 0\n"
        "? lstPlaylist.ListCount\n= 4\n",
        6);
    // A sorted list puts them where they belong.
    Holds("new JList\nrows it 10\n? it.List(1)\n= \"Row 10\"\n? it.List(2)\n= \"Row 2\"\n", 2);
    Refused("rows txtLyrics 3\n", "1: no list");
    Refused("rows lstPlaylist -1\n", "1: must not be negative: -1");
    Refused("rows lstPlaylist\n", "1: wrong number of arguments: too few");
}

TEST_F(Surroundings, TheWorkAreaChangesBeforeAndDuringARun) {
    Holds(
        "workarea 0,28,1024,768\nstart\n? WorkArea\n= 0,28,1024,768\n"
        "workarea -10,0,800,600\n? WorkArea\n= -10,0,800,600\nat 5 workarea 1,2,3,4\nadvance 5\n"
        "? WorkArea\n= 1,2,3,4\n",
        3);
    for (const char* wrong :
         {"1,2,3", "1,2,3,4,5", "1,2,3,", "1,2,3,x", "\"1,2,3,4\"", ",1,2,3", "1,2,3,4294967296"}) {
        EXPECT_EQ(Run(std::string("workarea ") + wrong + '\n').status, 2) << wrong;
    }
    Refused("workarea 1,2,3\n", "1: no rectangle: 1,2,3");
    Refused("workarea 1 2 3 4\n", "1: no rectangle: 1");
}

TEST_F(Surroundings, TheHostAnswersWhateverItIsTold) {
    Holds(
        "host answer 26 True\nhost open \"/a\" False\nstart\ncall OpenMedia \"/a\"\n= True\n"
        "host answer 26 none\ncall OpenMedia \"/a\"\n= False\n"
        // A text that is no boolean is not taken, and nothing plays.
        "host answer 26 \"yes\"\ncall OpenMedia \"/b\"\n= False\nhost answer 26 1\n"
        "call OpenMedia \"/b\"\n= True\n"
        "host answer 31 \" 12 \"\nset sldSkin(0).Max 100\ncall UpdatePosition\n? sldSkin(0).Value\n"
        "= 12\nhost answer 31 lstPlaylist\ncall UpdatePosition\n? sldSkin(0).Value\n= 0\n"
        "host answer 31 null\nhost answer 31 True\ncall UpdatePosition\n? sldSkin(0).Value\n= 0\n"
        "set DisplayMode 3\nhost answer 39 320\ncall RefreshInfoDisplay\n? InfoText\n"
        "= \"320 kb/s\"\nhost silent True\ncall RefreshInfoDisplay\n? InfoText\n= \" kb/s\"\n",
        9);
    Refused("host answer 26\n", "1: wrong number of arguments: too few");
    Refused("host answer 26 0.5\n", "1: an impulse carries no such value: a number");
}

TEST_F(Surroundings, MembersOfTheHostFail) {
    const std::string cells = "host cells \"One\" \"Two\"\n";
    const std::string count =
        "start\n? hMenu.IndexForKey(\"kCell1\")\n= 0\n? hMenu.IndexForKey(\"kCell2\")\n= 0\n";
    for (const char* member : {"Capacity", "CellItem", "getClass"}) {
        Holds(cells + "host throws " + member + '\n' + count, 2);
    }
    Holds(cells +
              "host throws Capacity\nhost throws none\nstart\n"
              "? hMenu.Caption(hMenu.IndexForKey(\"kCell2\"))\n= \"Two\"\n",
          1);
    Refused("host throws capacity\n", "1: no integer: capacity");
}

TEST_F(Surroundings, LooksChangeWithTheNextRun) {
    Holds(
        "start\nskin row 142 \"100\"\n? lstPlaylist.Height\n= 181\ncall LoadSkin 1\n"
        "? lstPlaylist.Height\n= 181\nrestart\n? lstPlaylist.Height\n= 100\nskin row 142 none\n"
        "skin row 108 \"A | B\"\nstart\n? hMenu.Caption(hMenu.IndexForKey(\"kSk1\"))\n"
        "= \"A | B\"\n",
        4);
    // Also with a component that was asked before the run began.
    Holds("? Random\n= False\nskin row 142 \"90\"\nload\n? lstPlaylist.Height\n= 90\n", 2);
    // A picture of 2 x 1 pixels, 24 bits, red and green in a row of 8 bytes.
    Holds(
        "write \"$D/two.bmp\" \"BM\\x3e\\x00\\x00\\x00\\x00\\x00\\x00\\x00\\x36\\x00\\x00\\x00"
        "\\x28\\x00\\x00\\x00\\x02\\x00\\x00\\x00\\x01\\x00\\x00\\x00\\x01\\x00\\x18\\x00"
        "\\x00\\x00\\x00\\x00\\x08\\x00\\x00\\x00\\x00\\x00\\x00\\x00\\x00\\x00\\x00\\x00"
        "\\x00\\x00\\x00\\x00\\x00\\x00\\x00\\x00\\x00\\x00\\xff\\x00\\xff\\x00\\x00\\x00\"\n"
        "skin bitmap 100 \"$D/two.bmp\"\nload\n? frmMAIN.Width\n= 2\n? frmMAIN.Height\n= 1\n"
        "pixel frmMAIN 0 0\n= 255\npixel frmMAIN 1 0\n= 65280\n",
        4);
    Refused("skin row 1\n", "1: wrong number of arguments: too few");
    Refused("skin colour 1 \"x\"\n", "1: unknown command: colour");
    Refused("skin bitmap x none\n", "1: no integer: x");
}

TEST_F(Surroundings, StylesBandsAndTheSystemMenuArePrinted) {
    Holds(
        "load\nset hMenu.hWndOwner 0\nstyle frmMAIN\nstyle sldSkin(0)\ntopmost frmMAIN\n= False\n"
        "call SetTopMost True\ntopmost frmMAIN\n= True\ntopmost frmTIP\n= False\n"
        "systemmenu\n= 61728\n= 61472\n= 61536\n",
        6);
    Refused("topmost lstPlaylist\n", "1: no top-level window");
    Refused("style hMenu\n", "1: no window: hMenu");
    EXPECT_EQ(Run("systemmenu\n").status, 2);
}

TEST_F(Surroundings, APopupLeavesItsPicture) {
    // Within a frame the header, 13 pixels high, and below it the first row of 18 pixels, which the
    // keyboard marks.
    Holds(
        "start\ncall hMenu.SetColors 1 2 3 4 5 5 7 8 8 10 11 12\n"
        "call hMenu.BackgroundPicture 8 8 255\npopup cancel\n"
        "call hMenu.ShowPopup 0 0 0 4 2 True\npopup pixel 4 28\n= 255\n"
        "at 10 key 40\nat 20 key 27\ncall hMenu.ShowPopup 0 0 0 4 2 True\n= 0\n"
        "popup pixel 4 28\n= 5\npopup pixel -1 0\n= -1\npopup pixel 2000 0\n= -1\n",
        5);
    const Outcome outcome = Run("popup pixel 1 1\n");
    EXPECT_EQ(outcome.out, "f:1: no popup has been open\n0 passed, 0 failed\n");
    Refused("popup pixel 1\n", "1: wrong number of arguments: too few");
}

TEST_F(Surroundings, AListIsReadFromStoredProperties) {
    Holds(
        "new JList \"sorted\" False \"BACKCOLOR\" 255 \"NewIndex\" 7 \"ListIndex\" 9 \"Text\" "
        "\"x\"\n"
        "? it.Sorted\n= False\n? it.BackColor\n= 255\n? it.newIndex\n= 7\n? it.ListIndex\n= 0\n"
        "? it.Width\n= 281\n? it.ShowNumeric\n= True\n? it.SelColor2\n= 14737632\n"
        "new JList\n? it.ListIndex\n= -1\n",
        8);
    Refused("new JList \"Sort\" True\n",
            "1: unknown property of a list: Sort; did you mean Sorted?");
    Refused("new JList \"Sorted\"\n", "1: wrong number of arguments: too few");
    Refused("new JList \"Sorted\" 1\n",
            "1: wrong value: Sorted takes True or False, not an integer");
    Refused("new JSlider \"Max\" 5\n", "1: wrong number of arguments: Max is too many");
}

TEST_F(Surroundings, WritesFailUntilToldOtherwise) {
    Holds(
        "start\nwrites fail True\ncall SetVolume 33\nini MusicVolume\n= \"80\"\n"
        "write \"$D/a\" \"x\"\nbytes \"$D/a\"\n= \"x\"\nwrites fail False\ncall SetVolume 34\n"
        "ini MusicVolume\n= \"34\"\n",
        3);
    Refused("writes fail\n", "1: wrong number of arguments: too few");
    Refused("writes stop True\n", "1: not fail: stop");
}

TEST_F(Surroundings, DropsTellTheirArguments) {
    Holds(
        "start\nevents lstPlaylist\nmouse lstPlaylist 20 30\nkeydown 16 shift\nraised\n"
        "drop lstPlaylist \"$D/a\" \"$D/b\"\nraised\n= lstPlaylist.OLEDragDrop 2 1 0 1 20 30\n",
        1);
}

TEST_F(Surroundings, WhatWasOpenedIsPrintedBare) {
    Holds(
        "start\ncall hMenu_Click hMenu.IndexForKey(\"kAbt\")\nopened\n"
        "= /opt/veldrin/guide.html\n",
        1);
}

}  // namespace
}  // namespace scenario

// The commands that move the pointer, and those that look at the screen.
#include <filesystem>

#include "tests/scenario/runner_fixture.h"

namespace scenario {
namespace {

class Pointer : public RunnerTest {};

TEST_F(Pointer, GoesToClientPixelsOfTheMainWindowOrOfAControl) {
    Holds(
        "start\nset picInfoDisplay.Left 100\nset picInfoDisplay.Top 240\n"
        "events picInfoDisplay\nmouse 103 244\nmouse picInfoDisplay 7 2\nraised\n"
        "= picInfoDisplay.MouseMove 0 0 3 4\n= picInfoDisplay.MouseMove 0 0 7 2\n",
        2);
}

TEST_F(Pointer, PressesAreHeldByTheControlUntilTheyEnd) {
    Holds(
        "start\nevents picInfoDisplay\nmouse picInfoDisplay 1 1\npress right\n"
        "mouse picInfoDisplay -5 -6\nrelease right\nmouse picInfoDisplay -7 -8\nraised\n"
        "= picInfoDisplay.MouseMove 0 0 1 1\n= picInfoDisplay.MouseDown 2 0 1 1\n"
        "= picInfoDisplay.MouseMove 2 0 -5 -6\n= picInfoDisplay.MouseUp 2 0 -5 -6\n",
        4);
}

TEST_F(Pointer, ClicksGoToTheMiddleAndCarryTheModifiersOfTheLastKey) {
    Holds(
        "start\nset picInfoDisplay.Width 72\nset picInfoDisplay.Height 14\n"
        "events picInfoDisplay\nkeydown 16 shift\nclick picInfoDisplay right\nkeyup 16\n"
        "click picInfoDisplay\nraised\n"
        "= picInfoDisplay.MouseMove 0 1 36 7\n= picInfoDisplay.MouseDown 2 1 36 7\n"
        "= picInfoDisplay.MouseUp 2 1 36 7\n= picInfoDisplay.Click\n"
        "= picInfoDisplay.MouseMove 0 0 36 7\n= picInfoDisplay.MouseDown 1 0 36 7\n"
        "= picInfoDisplay.MouseUp 1 0 36 7\n= picInfoDisplay.Click\n",
        8);
}

TEST_F(Pointer, ADoubleClickIsTwoPressesWithinItsTime) {
    const std::string label = "lblFrameInfoDescription";
    Holds("start\nset picFrame(4).Visible True\nset " + label + ".Width 40\nset " + label +
              ".Height 20\nevents " + label + "\ndblclick " + label + "\nraised\n= " + label +
              ".MouseMove 0 0 20 10\n= " + label + ".MouseDown 1 0 20 10\n= " + label +
              ".MouseUp 1 0 20 10\n= " + label + ".Click\n= " + label + ".DblClick\n= " + label +
              ".MouseUp 1 0 20 10\n",
          6);
}

TEST_F(Pointer, TheScreenIsWrittenAsABitmap) {
    const std::string keep = Folder() + "/kept";
    Run("start\nscreenshot shot.bmp\n", {"--keep", keep});
    // 14 + 40 bytes of headers, 1024 x 768 pixels of 3 bytes.
    EXPECT_EQ(std::filesystem::file_size(keep + "/f/shot.bmp"), 54U + 1024 * 768 * 3);
}

}  // namespace
}  // namespace scenario

// The commands for popup menus.
#include "tests/scenario/runner_fixture.h"

namespace scenario {
namespace {

class PopupCommands : public RunnerTest {};

const std::string kMenu =
    "start\nnew JPopupMenu\nset it.hWndOwner frmMAIN.hWnd\n"
    "call it.AddItem \"-Head#x\" 0 \"h\" True True\ncall it.AddItem \"One#F9\" 0 \"k1\" True True\n"
    "call it.AddItem \"Two\" 0 \"k2\" False False\ncall it.AddItem \"-\" 0 \"\" False True\n"
    "call it.AddItem \"Sub\" 0 \"\" False True\ncall it.AddItem \"In it\" 5 \"k3\" False True\n"
    "set it.RadioCheck(2) True\nset it.Checked(2) True\n";

TEST_F(PopupCommands, LastPrintsTheRowsOfTheLastPopup) {
    Holds(kMenu +
              "popup last\n= nothing\npopup cancel\ncall it.ShowPopup 0 0 0 4 2 True\n= 0\n"
              "popup last\n= Head/x/h/H\n= One/F9/k1/CR\n= Two//k2/D\n= -///S\n= Sub///>\n"
              "popup cancel\ncall it.ShowPopup 0 0 6 4 2 True\npopup last\n= In it//k3/\n",
          8);
}

// Two submenus: keys go down to the first one and open it (Right), leave it (Left), and open the
// second one, out of which Enter chooses.
TEST_F(PopupCommands, LastPrintsEachLevelThatWasOpen) {
    const std::string menu = kMenu +
                             "call it.AddItem \"More\" 0 \"\" False True\n"
                             "call it.AddItem \"Deep\" 7 \"k4\" False True\n";
    const std::string first =
        "= Head/x/h/H\n= One/F9/k1/CR\n= Two//k2/D\n= -///S\n= Sub///>\n"
        "= More///>\n";
    const std::string toSub = "at 10 key 38\nat 20 key 38\nat 30 key 39\n";
    Holds(menu + toSub +
              "at 40 popup last\nat 50 key 27\nat 60 key 27\ncall it.ShowPopup 0 0 0 4 2 True\n" +
              first + "= In it//k3/\n= 0\npopup last\n" + first + "= In it//k3/\n",
          15);
    Holds(menu + toSub +
              "at 40 key 37\nat 50 key 40\nat 60 key 39\nat 70 key 13\n"
              "call it.ShowPopup 0 0 0 4 2 True\n= 8\npopup last\n" +
              first + "= Deep//k4/\npopup cancel\ncall it.ShowPopup 0 0 0 4 2 True\npopup last\n" +
              first,
          14);
}

// Who asks for the first level alone need not name the others.
TEST_F(PopupCommands, FurtherLevelsNeedNotBeNamed) {
    const std::string first = "= Head/x/h/H\n= One/F9/k1/CR\n= Two//k2/D\n= -///S\n= Sub///>\n";
    const std::string open = kMenu + "at 10 key 38\nat 20 key 39\n";
    Holds(open + "call it.ShowPopup 0 0 0 4 2 True\n= 0\npopup last\n" + first, 6);
    Holds(open + "at 30 popup last\ncall it.ShowPopup 0 0 0 4 2 True\n" + first + "= 0\n", 6);
    const Outcome outcome =
        Run(open + "call it.ShowPopup 0 0 0 4 2 True\npopup last\n" + first + "= Not in it//k3/\n");
    EXPECT_EQ(outcome.out.substr(0, outcome.out.find('\n')),
              "f:21: expected Not in it//k3/, got In it//k3/");
}

TEST_F(PopupCommands, ChooseTakesAKeyOrACaptionAndReachesIntoSubmenus) {
    Holds(kMenu +
              "popup choose \"k1\"\ncall it.ShowPopup 0 0 0 4 2 True\n= 2\n"
              "popup choose One\ncall it.ShowPopup 0 0 0 4 2 True\n= 2\n"
              "popup choose \"In it\"\ncall it.ShowPopup 0 0 0 4 2 True\n= 6\n"
              "popup choose \"k2\"\ncall it.ShowPopup 0 0 0 4 2 True\n= 0\n"
              "popup choose Sub\ncall it.ShowPopup 0 0 0 4 2 True\n= 0\n",
          5);
}

TEST_F(PopupCommands, TheLaterOfTwoAnswersCountsAndOnlyOnce) {
    Holds(kMenu +
              "popup cancel\npopup choose k1\ncall it.ShowPopup 0 0 0 4 2 True\n= 2\n"
              "call it.ShowPopup 0 0 0 4 2 True\n= 0\n",
          2);
}

TEST_F(PopupCommands, AnItemThatIsNotThereIsAWrongLine) {
    const Outcome outcome =
        Run(kMenu + "popup choose \"k4\"\ncall it.ShowPopup 0 0 0 4 2 True\n= 0\n");
    EXPECT_EQ(outcome.out,
              "f:12: not in the popup: k4; there are k1 (One), k2 (Two), Sub, k3 (In it)\n"
              "0 passed, 0 failed\n");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(Run(kMenu + "popup choose \"in ti\"\ncall it.ShowPopup 0 0 6 4 2 True\n").out,
              "f:12: not in the popup: in ti; did you mean In it?; there are k3 (In it)\n"
              "0 passed, 0 failed\n");
    // It stands in another menu than the one that opens.
    EXPECT_EQ(Run(kMenu + "popup choose k1\ncall it.ShowPopup 0 0 6 4 2 True\n").status, 2);
}

TEST_F(PopupCommands, WithoutAnAnswerAPopupWaitsForWhatIsSetToHappen) {
    Holds(kMenu +
              "at 50 key 40\nat 60 key 13\nat 70 ? Random\ncall it.ShowPopup 0 0 0 4 2 True\n= 2\n"
              "advance 9\n= nothing\nadvance 1\n= False\n",
          3);
}

TEST_F(PopupCommands, RefusesOtherWords) {
    Refused("popup dance\n", "1: neither choose, cancel, last nor pixel: dance");
    Refused("popup choose\n", "1: wrong number of arguments: too few");
    Refused("popup last 1\n", "1: wrong number of arguments: 1 is too many");
}

}  // namespace
}  // namespace scenario

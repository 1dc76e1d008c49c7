// The commands for the desktop's shell.
#include "tests/scenario/runner_fixture.h"

namespace scenario {
namespace {

class ShellWords : public RunnerTest {};

TEST_F(ShellWords, TheRegistryKeepsAllThatWasWrittenInEveryRun) {
    Holds(
        "registry\n= nothing\nstart\ncall RegisterExtension \"a\" \"$D/p\" \"c\" \"\"\n"
        "registry\n= c = \"c\"\n= .a = \"c\"\n= c\\shell\\open = \"&Play with Veldrin\"\n"
        "= c\\shell\\open\\command = \"\\\"$D/p\\\" \\\"%1\\\"\"\n"
        "= c\\shell\\enqueue = \"&Enqueue in Veldrin\"\n"
        "= c\\shell\\enqueue\\command = \"\\\"$D/p\\\" /ADD \\\"%1\\\"\"\n"
        "= c\\DefaultIcon = \"\"\n"
        "restart\nhost on 11 registry\ncall RegisterExtension \"b.c\" \"\" \"d\" \"\"\n",
        8);
    Holds(
        "start\ncall RegisterDirectoryVerbs \"\"\nrestart\nat 5 registry\nadvance 5\n"
        "= Directory\\shell\\Veldrin.Open = \"&Play with Veldrin\"\n"
        "= Directory\\shell\\Veldrin.Enqueue = \"&Enqueue in Veldrin\"\n"
        "= Directory\\shell\\Veldrin.Open\\command = \"\\\"\\\" \\\"%1\\\"\"\n"
        "= Directory\\shell\\Veldrin.Enqueue\\command = \"\\\"\\\" /ADD \\\"%1\\\"\"\n",
        4);
}

TEST_F(ShellWords, WithoutAnIconTheTrayDoesNothing) {
    Holds(
        "tray\n= none\ntray dblclick\n= nothing\ntray rightclick\n= nothing\n"
        "start\ntray dblclick\n= nothing\ntray rightclick\n= nothing\npopup last\n= nothing\n",
        6);
    Holds("start\ncall TrayAdd frmMAIN 1 \"a \\\"b\\\"\"\ntray\n= \"a \\\"b\\\"\"\n", 1);
}

TEST_F(ShellWords, TheTraysMessagesReachTheWindow) {
    Holds(
        "start\ncall TrayAdd frmMAIN frmMAIN.Icon \"\"\nminimise\ntimers\n= nothing\n"
        "tray dblclick\ntimers\n= 12 30\npopup cancel\ntray rightclick\npopup last\n"
        "= Veldrin v1.1//kSsTr/H\n= Show application//kSsSh/\n= -///S\n"
        "= Exit application//kSsEx/\n",
        6);
}

TEST_F(ShellWords, CombinationsAreTakenFromThenOn) {
    Holds(
        "start\nhotkeys taken 3 38\nhotkey \"VolUp\"\nlog 29\n= 29 80 0 0\n= 29 85 0 0\n"
        "new JHotKeys\ncall it.RegisterKey \"a\" 3 38\n"
        "= error 0x8004041B \"Failed to Register Hot Key\"\n"
        "restart\n? hKeys.hWndToCapture\ncall hKeys.UnregisterKey \"VolUp\"\n"
        "= error 0x80040419 \"No hot key registered under the name 'VolUp'\"\n",
        4);
}

TEST_F(ShellWords, TheKeysOfItComeFirst) {
    Holds(
        "start\nevents hKeys\nnew JHotKeys\nevents it\ncall it.RegisterKey \"VolUp\" 1 65\n"
        "forget\nhotkey \"VolUp\"\nraised\n= nothing\nlog\n= nothing\n"
        "call it.UnregisterKey \"VolUp\"\nhotkey \"VolUp\"\n"
        "raised\n= hKeys.HotKeyPress \"VolUp\" 3 38\n",
        3);
}

TEST_F(ShellWords, WrongLines) {
    Refused("tray twice\n", "1: wrong number of arguments: twice is too many");
    Refused("tray dblclick 1\n", "1: wrong number of arguments: 1 is too many");
    Refused("registry all\n", "1: wrong number of arguments: all is too many");
    Refused("hotkeys\n", "1: wrong number of arguments: too few");
    Refused("hotkeys free 3 65\n", "1: not taken: free");
    Refused("hotkeys taken 3\n", "1: wrong number of arguments: too few");
    Refused("hotkeys taken 3 65 1\n", "1: wrong number of arguments: 1 is too many");
    Refused("hotkeys taken ctrl 65\n", "1: no integer: ctrl");
    Refused("hotkey\n", "1: wrong number of arguments: too few");
    Refused("events hMenu\n", "1: no window: hMenu");
    Refused("call ShowTooltip \"a\"\n", "1: wrong number of arguments: ShowTooltip takes 2, not 1");
    Refused("call ShowTooltip 5 500\n", "1: wrong value: ShowTooltip takes a text, not an integer");
    Refused("set frmTIP.Helptext \"a\"\n", "1: read-only: frmTIP.Helptext");
    Refused("? hKeys.Count\n", "1: unknown member of hKeys: Count");
}

}  // namespace
}  // namespace scenario

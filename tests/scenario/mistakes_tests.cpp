// A typo must never pass: every wrong line is found before anything runs, and told where it is.
#include <random>

#include "tests/scenario/commands.h"
#include "tests/scenario/runner_fixture.h"

namespace scenario {
namespace {

class Mistakes : public RunnerTest {};

TEST_F(Mistakes, UnknownWords) {
    Refused("strat\n", "1: unknown command: strat; did you mean start?");
    Refused("\"start\"\n", "1: unknown command: start; did you mean start?");
    Refused("Start\n", "1: unknown command: Start; did you mean start?");
    Refused("host sing\n", "1: unknown command: sing");
    Refused("host tittle\n", "1: unknown command: tittle; did you mean title?");
    Refused("skin rows 1 none\n", "1: unknown command: rows; did you mean row?");
    Refused("? lstPlaylst.ListCount\n", "1: unknown object: lstPlaylst; did you mean lstPlaylist?");
    Refused("? lstPlaylst\n", "1: unknown name: lstPlaylst; did you mean lstPlaylist?");
    Refused("? lstPlaylist.ListCont\n",
            "1: unknown member of lstPlaylist: ListCont; did you mean ListCount?");
    Refused("? lstPlaylist.Wdith\n",
            "1: unknown member of lstPlaylist: Wdith; did you mean Width?");
    Refused("? listcount\n", "1: unknown name: listcount");
    Refused("call NextIten\n", "1: unknown name: NextIten; did you mean NextItem?");
    Refused("set Randum True\n", "1: unknown name: Randum; did you mean Random?");
    Refused("new JLst\n", "1: unknown class: JLst; did you mean JList?");
    Refused("new JList \"BckColor\" 1\n",
            "1: unknown property of a list: BckColor; did you mean BackColor?");
    Refused("events hMenus\n", "1: unknown object: hMenus; did you mean hMenu?");
    Refused("keydown 13 strg\n", "1: no modifier of a key: strg");
}

TEST_F(Mistakes, NumbersOfArguments) {
    Refused("advance\n", "1: wrong number of arguments: too few");
    Refused("advance 1 2\n", "1: wrong number of arguments: 2 is too many");
    Refused("load now\n", "1: wrong number of arguments: now is too many");
    Refused("impulse 15 16 0\n", "1: wrong number of arguments: too few");
    Refused("host time \"a\"\n", "1: wrong number of arguments: too few");
    Refused("? ListCount(\n", "1: parentheses do not match");
    Refused("? lstPlaylist.List\n",
            "1: wrong number of arguments: lstPlaylist.List takes 1, not 0");
    Refused("? lstPlaylist.ListCount(1)\n",
            "1: wrong number of arguments: lstPlaylist.ListCount(1) takes 0, not 1");
    Refused("call lstPlaylist.AddItem \"a\"\n",
            "1: wrong number of arguments: lstPlaylist.AddItem takes 2 to 3, not 1");
    Refused("call lstPlaylist.AddItem \"a\" \"b\" 1 2\n",
            "1: wrong number of arguments: lstPlaylist.AddItem takes 2 to 3, not 4");
    Refused("set Random\n", "1: wrong number of arguments: too few");
    Refused("set Random True False\n", "1: wrong number of arguments: False is too many");
    Refused("? sldSkin.Value\n", "1: wrong number of arguments: sldSkin takes one index");
    Refused("? sldSkin(1,2).Value\n", "1: wrong number of arguments: sldSkin takes one index");
    Refused("? lstPlaylist(0).ListCount\n",
            "1: wrong number of arguments: lstPlaylist takes no index");
    Refused("drop frmMAIN\n", "1: wrong number of arguments: too few");
    Refused("mouse 1\n", "1: wrong number of arguments: too few");
    Refused("mouse frmMAIN 1 2 3\n", "1: wrong number of arguments: 3 is too many");
    Refused("press left\n", "1: wrong number of arguments: left is too many");
    Refused("click frmMAIN middle\n", "1: wrong number of arguments: middle is too many");
    Refused("dblclick frmMAIN right\n", "1: wrong number of arguments: right is too many");
    Refused("wheel\n", "1: wrong number of arguments: too few");
    Refused("wheel sideways\n", "1: neither up nor down: sideways");
    Refused("pixel frmMAIN 0\n", "1: wrong number of arguments: too few");
    Refused("pixel hMenu 0 0\n", "1: no window: hMenu");
    Refused("mouse nowhere 1 2\n", "1: unknown object: nowhere");
}

TEST_F(Mistakes, ValuesOfAnotherKind) {
    Refused("set Random 1\n", "1: wrong value: Random takes True or False, not an integer");
    Refused("set DisplayMode \"1\"\n", "1: wrong value: DisplayMode takes an integer, not a text");
    Refused("set DisplayMode 1.5\n", "1: wrong value: DisplayMode takes an integer, not a number");
    Refused("set InfoText null\n", "1: wrong value: InfoText takes a text, not null");
    Refused("? lstPlaylist.List(\"0\")\n",
            "1: wrong value: lstPlaylist.List(\"0\") takes an integer, not a text");
    Refused("call SetVolume lstPlaylist\n",
            "1: wrong value: SetVolume takes an integer, not an object");
    Refused("? lstPlaylist.List(InfoText)\n",
            "1: wrong value: lstPlaylist.List(InfoText) takes an integer, not a text");
    Refused("? sldSkin(\"0\").Value\n", "1: wrong value: the index of sldSkin is an integer");
    Refused("set DisplayMode 2147483648\n", "1: no number: 2147483648");
    Refused("set DisplayMode --1\n", "1: no number: --1");
    Refused("advance -1\n", "1: must not be negative: -1");
    Refused("advance \"1\"\n", "1: no integer: 1");
    Refused("advance soon\n", "1: no integer: soon");
    Refused("host silent true\n", "1: neither True nor False: true");
    Refused("keydown 256\n", "1: no virtual key: 256");
    Refused("impulse 15 19 0.5 0\n", "1: an impulse carries no such value: a number");
    Refused("impulse True 0 0 0\n", "1: no integer: True");
}

TEST_F(Mistakes, NamesUsedAsWhatTheyAreNot) {
    Refused("set lstPlaylist.ListCount 1\n", "1: read-only: lstPlaylist.ListCount");
    Refused("set PlayedCount 1\n", "1: read-only: PlayedCount");
    Refused("set WorkArea ScrollRect\n", "1: read-only: WorkArea");
    Refused("set NextItem 1\n", "1: cannot be set: NextItem");
    Refused("call lstPlaylist.ListCount\n", "1: cannot be called: lstPlaylist.ListCount");
    Refused("call Random\n", "1: cannot be called: Random");
    Refused("? NextItem\n", "1: gives no value: NextItem");
    Refused("? 5\n", "1: not a name: 5");
    Refused("? \"Random\"\n", "1: not a name: Random");
    Refused("focus frmMAIN\n", "1: wrong number of arguments: frmMAIN is too many");
    Refused("events hMenu\n", "1: no window: hMenu");
    Refused("message hKeys 1 2 3\n", "1: no window: hKeys");
    Refused("message lstPlaylist.ListCount 1 2 3\n", "1: no window: lstPlaylist.ListCount");
    Refused("? a.b.c\n", "1: not understood: a.b.c");
    Refused("? lstPlaylist.\n", "1: not understood: lstPlaylist.");
    Refused("? lstPlaylist.List(0)x\n", "1: not understood: lstPlaylist.List(0)x");
    Refused("? lstPlaylist.List(0,)\n", "1: not understood: lstPlaylist.List(0,)");
}

TEST_F(Mistakes, ItemsThatAreNotThere) {
    Refused("? sldSkin(10).Value\n", "1: no such item: sldSkin(10), there are 0 to 9");
    Refused("? lblEffects(2).Caption\n", "1: no such item: lblEffects(2), there are 3 to 9");
    Refused("? it.ListCount\n", "1: no new instance before this line: it");
    Refused("new JSlider\n? it.ListCount\n", "2: unknown member of it: ListCount");
}

TEST_F(Mistakes, QuotesAndEscapes) {
    Refused("write \"$D/a\" \"x\n", "1: quote is not closed");
    Refused("write \"$D/a\" \"\\q\"\n", "1: bad escape: \\q");
    Refused("write \"$D/a\" \"\\x4g\"\n", "1: bad escape: \\x4g");
    Refused("write \"$D/a\"\"x\"\n", "1: no blank behind a quoted word");
}

TEST_F(Mistakes, ChecksOutOfPlace) {
    Refused("= 1\nlog\n", "1: a check without a command");
    Refused("log\n= nothing\n= 1\n", "3: nothing and something are expected together");
    Refused("log\n= 1\n= nothing\n", "3: nothing and something are expected together");
}

TEST_F(Mistakes, ChecksThatDoNotBeginAsOne) {
    const std::string hint = "; a check begins with = and a blank, at the very start of its line";
    Refused("=nothing\n", "1: unknown command: =nothing" + hint);
    Refused("log\n=\n", "2: unknown command: =" + hint);
    Refused("log\n = nothing\n", "2: unknown command: =" + hint);
}

TEST_F(Mistakes, ChecksThatNoValueCouldMeet) {
    const std::string quotes = "; a text stands in double quotes";
    Refused("? InfoText\n= Song\n", "2: no value is printed so: Song" + quotes);
    Refused("? InfoText\n= Two words\n", "2: no value is printed so: Two words" + quotes);
    Refused("? InfoText\n= \"Two\" words\n", "2: no value is printed so: \"Two\" words" + quotes);
    Refused("? Random\n= true\n", "2: no value is printed so: true; did you mean True?");
    Refused("ini A\n= \n", "2: no value is printed so: an empty line");
    Refused("ini A\n= \"open\n", "2: quote is not closed");
    Refused("bytes \"$D/a\"\n= \"\\q\"\n", "2: bad escape: \\q");
    Refused("? ScrollRect\n= 1,2,3\n", "2: no value is printed so: 1,2,3" + quotes);
    Refused("? ScrollRect\n= 1,2,3,\n", "2: no value is printed so: 1,2,3," + quotes);
    Refused("log\n= 13 /m/a.mp3 \"a\" 0\n", "2: no value is printed so: /m/a.mp3" + quotes);
    Refused("impulse 15 16 0 0\n= 2 HWDN 0\n",
            "2: no value is printed so: HWDN; did you mean HWND?");
    Refused("call lstPlaylist.RemoveItem 1\n= error 0x00000009 \"\\q\"\n", "2: bad escape: \\q");
}

// These hold or fail, but can be.
TEST_F(Mistakes, ChecksThatAValueCouldMeet) {
    for (const char* line : {"5", "-1", "0.5", "1e+16", "1,-2,3,4", "True", "null", "object",
                             "none", "\"\"", "\"\\x41\"", "error 0x00000009 \"text\""}) {
        EXPECT_EQ(Run("? PlayedCount\n= " + std::string(line) + "\n").status, 1) << line;
    }
}

// What is printed bare is not looked at: below the command that does so, or wherever one may run.
TEST_F(Mistakes, ChecksOfBareLinesMayBeAnything) {
    const std::string line = "= \"half a quote/x/y/\n";
    for (const std::string command : {"popup last", "opened", "pages", "raised", "registry",
                                      "focus", "timers", "style frmMAIN", "systemmenu"}) {
        EXPECT_EQ(Run("start\n" + command + "\n" + line).status, 1) << command;
    }
    EXPECT_EQ(Run("at 5 popup last\n? Random\n" + line).status, 1);
    EXPECT_EQ(Run("at 5 at 5 popup last\n? Random\n" + line).status, 1);
    EXPECT_EQ(Run("host on 3 opened\n? Random\n" + line).status, 1);
    EXPECT_EQ(Run("at 5 log\nadvance 5\n? Random\n= 29 80 0 0\n").status, 1);
    EXPECT_EQ(Run("at 5 ? Random\nadvance 5\n= False\n? Random\n" + line).status, 2);
}

TEST_F(Mistakes, InnerCommandsAreReadToo) {
    Refused("at 5 nothere\n", "1: unknown command: nothere");
    Refused("at 5\n", "1: wrong number of arguments: too few");
    Refused("host on 26 set Random 1\n",
            "1: wrong value: Random takes True or False, not an integer");
    for (const char* command : {"start", "load", "restart", "new JList"}) {
        Refused("at 5 " + std::string(command) + "\n",
                "1: cannot run inside another command: " +
                    std::string(command).substr(0, std::string(command).find(' ')));
    }
    Refused("at 5 host on 26 restart\n", "1: cannot run inside another command: restart");
}

TEST_F(Mistakes, DeepNestingEnds) {
    std::string deep;
    for (int i = 0; i < 100000; ++i) {
        deep += "at 1 ";
    }
    Refused(deep + "pump\n", "1: nested too deeply");
    Refused("? a" + std::string(100000, '(') + "\n", "1: nested too deeply");
}

TEST_F(Mistakes, NothingRunsAndEveryWrongLineIsTold) {
    const std::string keep = Folder() + "/kept";
    const Outcome outcome =
        Run("write \"$D/a\" \"1\"\nini A\n= 1\nbad\nworse\n= 2\n", {"--keep", keep});
    EXPECT_EQ(outcome.out,
              "f:4: unknown command: bad\nf:5: unknown command: worse\n0 passed, 0 failed\n");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_FALSE(std::filesystem::exists(keep + "/f/a"));
}

TEST_F(Mistakes, FilesOutsideTheScratchFolderAreSafe) {
    for (const char* path :
         {"/etc/x", "$D", "$D/", "$D/..", "$D/../x", "$D/a/../../x", "x", "", "$Dx", "$D/."}) {
        const Outcome outcome = Run("delete \"" + std::string(path) + "\"\n");
        EXPECT_EQ(outcome.status, 2) << path;
        EXPECT_TRUE(outcome.out.starts_with("f:1: not inside $D: ")) << outcome.out;
    }
    EXPECT_EQ(Run("write \"/tmp/x\" \"\"\n").status, 2);
    EXPECT_EQ(Run("mkdir \"$D/../x\"\n").status, 2);
    EXPECT_EQ(Run("screenshot ../x.bmp\n").status, 2);
    EXPECT_EQ(Run("screenshot /tmp/x.bmp\n").status, 2);
}

// What only shows while the scenario runs ends it there.
TEST_F(Mistakes, FoundWhileRunning) {
    Outcome outcome = Run("ini A\n= none\n? hMenu.Count\n= 1\nini A\n= 1\n");
    EXPECT_EQ(outcome.out, "f:3: not there now: hMenu\n1 passed, 0 failed\n");
    EXPECT_EQ(outcome.status, 2);
    outcome = Run("set DisplayMode 10\n? sldSkin(DisplayMode).Value\n");
    EXPECT_EQ(outcome.out,
              "f:2: no such item: sldSkin(10), there are 0 to 9\n0 passed, 0 failed\n");
    outcome = Run("start\nhotkey \"Nxt\"\n");
    EXPECT_EQ(outcome.out, "f:2: no such hot key is registered: Nxt\n0 passed, 0 failed\n");
    outcome = Run("write \"$D/a\" \"\"\nwrite \"$D/a/b\" \"\"\n");
    EXPECT_EQ(outcome.status, 2);
}

TEST_F(Mistakes, FoundInsideAnotherCommandTellTheirOwnLine) {
    Outcome outcome = Run("new JSlider\nat 5 ? it.Value\nnew JList\nadvance 4\nadvance 1\nfoo\n");
    EXPECT_EQ(outcome.out, "f:6: unknown command: foo\n0 passed, 0 failed\n");
    outcome =
        Run("new JSlider\nat 5 ? it.Value\nnew JList\nadvance 4\nlog\n= nothing\nadvance 1\n"
            "log\n= nothing\n");
    EXPECT_EQ(outcome.out, "f:2: it is no JSlider at this time\n1 passed, 0 failed\n");
    EXPECT_EQ(outcome.status, 2);
    outcome = Run("start\nhost on 41 hotkey \"Nxt\"\ncall SetTempo 50\nlog\n");
    EXPECT_EQ(outcome.out, "f:2: no such hot key is registered: Nxt\n0 passed, 0 failed\n");
}

// Whatever stands in a line, reading it ends in a command or in a Mistake.
TEST(ParseCommandTest, AnyLineIsReadOrRefused) {
    const std::vector<std::string> pieces{"?",
                                          "set",
                                          "call",
                                          "at",
                                          "host",
                                          "on",
                                          "it",
                                          "lstPlaylist",
                                          ".",
                                          "List",
                                          "(",
                                          ")",
                                          ",",
                                          "\"",
                                          "\\",
                                          "\\x",
                                          "\\u00",
                                          " ",
                                          "\t",
                                          "5",
                                          "-",
                                          "2147483648",
                                          "True",
                                          "null",
                                          "sldSkin(0)",
                                          "=",
                                          "$D",
                                          "\xE9",
                                          std::string(1, '\0'),
                                          "write",
                                          "new",
                                          "JList",
                                          "events",
                                          "key"};
    std::mt19937 random(7);
    std::uniform_int_distribution<std::size_t> anyPiece(0, pieces.size() - 1);
    int refused = 0;
    for (int i = 0; i < 20000; ++i) {
        std::string line;
        for (std::size_t length = anyPiece(random); length > 0; --length) {
            line += pieces[anyPiece(random)] + (length % 3 == 0 ? " " : "");
        }
        Scope scope;
        scope.directory = u"/d";
        try {
            static_cast<void>(ParseCommand(line + " x", scope));
        } catch (const Mistake&) {
            ++refused;
        }
    }
    EXPECT_GT(refused, 19000);
}

}  // namespace
}  // namespace scenario

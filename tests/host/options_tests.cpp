#include "host/options.h"

#include <gtest/gtest.h>

namespace veldrin {
namespace {

using Arguments = std::vector<std::string>;

Options Parsed(const Arguments& arguments) {
    const auto parsed = ParseOptions(arguments);
    const Misuse* misuse = std::get_if<Misuse>(&parsed);
    EXPECT_EQ(misuse, nullptr) << (misuse != nullptr ? misuse->message : "");
    return misuse != nullptr ? Options() : std::get<Options>(parsed);
}

std::string Fault(const Arguments& arguments) {
    const auto parsed = ParseOptions(arguments);
    const Misuse* misuse = std::get_if<Misuse>(&parsed);
    return misuse != nullptr ? misuse->message : "no fault";
}

TEST(Options, DefaultsPlayTheListOnTheSoundDevice) {
    const Options options = Parsed({});
    EXPECT_EQ(options.action, Options::Action::kPlay);
    EXPECT_FALSE(options.add);
    EXPECT_FALSE(options.noWindow);
    EXPECT_FALSE(options.directory.has_value());
    EXPECT_EQ(options.output.kind, Output::Kind::kAuto);
    EXPECT_TRUE(options.paths.empty());
}

TEST(Options, OptionsAndPathsMix) {
    const Options options = Parsed({"a.mp3", "--add", "b c.ogg", "--no-window"});
    EXPECT_TRUE(options.add);
    EXPECT_TRUE(options.noWindow);
    EXPECT_EQ(options.paths, (Arguments{"a.mp3", "b c.ogg"}));
}

TEST(Options, TheShellsWordForAddingStandsFirst) {
    const auto nothing = [](const std::string&) { return false; };
    for (const char* word : {"/ADD", "/add", "/Add"}) {
        const auto parsed = ParseOptions({word, "a.mp3", "/ADD", "--no-window"}, nothing);
        const Options& options = std::get<Options>(parsed);
        EXPECT_TRUE(options.add) << word;
        EXPECT_TRUE(options.noWindow) << word;
        EXPECT_EQ(options.paths, (Arguments{"a.mp3", "/ADD"})) << word;
    }
    for (const Arguments& others : {Arguments{"a", "/ADD"}, Arguments{"--", "/ADD"},
                                    Arguments{"/ADDS"}, Arguments{"ADD"}, Arguments{"/ADD/"}}) {
        EXPECT_FALSE(std::get<Options>(ParseOptions(others, nothing)).add) << others.front();
    }
    EXPECT_TRUE(std::get<Options>(ParseOptions({"/ADD"}, nothing)).paths.empty());
}

TEST(Options, AFileMayHaveTheNameOfTheShellsWord) {
    const auto parsed =
        ParseOptions({"/add", "b"}, [](const std::string& path) { return path == "/add"; });
    EXPECT_FALSE(std::get<Options>(parsed).add);
    EXPECT_EQ(std::get<Options>(parsed).paths, (Arguments{"/add", "b"}));
}

TEST(Options, ValueFollowsEqualsSignOrStandsApart) {
    EXPECT_EQ(Parsed({"--dir=/x=y"}).directory, "/x=y");
    EXPECT_EQ(Parsed({"--dir", "--add"}).directory, "--add");
    EXPECT_EQ(Parsed({"--output=null"}).output.kind, Output::Kind::kNull);
    const Output file = Parsed({"--output", "file:a:b.wav"}).output;
    EXPECT_EQ(file.kind, Output::Kind::kFile);
    EXPECT_EQ(file.path, "a:b.wav");
}

TEST(Options, LastValueCounts) {
    EXPECT_EQ(Parsed({"--dir=a", "--dir", "b"}).directory, "b");
    EXPECT_EQ(Parsed({"--output=null", "--output=auto"}).output.kind, Output::Kind::kAuto);
}

TEST(Options, TwoDashesEndOptions) {
    const Options options = Parsed({"--add", "--", "--quit", "-x", "--", ""});
    EXPECT_EQ(options.action, Options::Action::kPlay);
    EXPECT_TRUE(options.add);
    EXPECT_EQ(options.paths, (Arguments{"--quit", "-x", "--", ""}));
}

TEST(Options, SingleDashAndRawBytesArePaths) {
    EXPECT_EQ(Parsed({"-", "b\xE9.mp3", "\n"}).paths, (Arguments{"-", "b\xE9.mp3", "\n"}));
}

TEST(Options, HelpAndVersionWinOverWhatFollows) {
    EXPECT_EQ(Parsed({"--help", "--nonsense"}).action, Options::Action::kHelp);
    EXPECT_EQ(Parsed({"--version", "--help"}).action, Options::Action::kVersion);
}

TEST(Options, AnExportNamesAListAndStandsWithoutPath) {
    const Options options = Parsed({"--export", "out.M3U8"});
    EXPECT_EQ(options.action, Options::Action::kExport);
    EXPECT_EQ(options.exportFile, "out.M3U8");
    EXPECT_EQ(Fault({"--export=song.mp3"}), "--export needs a name that ends in .m3u8");
    EXPECT_EQ(Fault({"--export"}), "--export needs a value");
    EXPECT_EQ(Fault({"--export", "out.m3u8", "a.mp3"}), "--export takes no PATH");
}

TEST(Options, FoldersAreTakenWithThoseBelowUnlessFlat) {
    EXPECT_FALSE(Parsed({"a"}).flat);
    EXPECT_TRUE(Parsed({"a", "--flat"}).flat);
}

TEST(Options, QuitStandsWithoutPath) {
    EXPECT_EQ(Parsed({"--quit", "--dir=d"}).action, Options::Action::kQuit);
    EXPECT_EQ(Fault({"--quit", "a.mp3"}), "--quit takes no PATH");
}

TEST(Options, VerbsAreKeptInTheirOrder) {
    const Options options = Parsed({"--next", "--volume", "-5", "--seek=+10", "--command", "kX",
                                    "--play-pause", "--dir", "d"});
    EXPECT_EQ(options.action, Options::Action::kVerbs);
    EXPECT_EQ(options.verbs,
              (Arguments{"next", "volume -5", "seek +10", "command kX", "play-pause"}));
    EXPECT_EQ(options.directory, "d");
}

TEST(Options, StatusHasTwoForms) {
    EXPECT_EQ(Parsed({"--status"}).action, Options::Action::kStatus);
    EXPECT_EQ(Parsed({"--status"}).statusForm, "");
    for (const Arguments& json : {Arguments{"--status", "json"}, Arguments{"--status=json"}}) {
        EXPECT_EQ(Parsed(json).action, Options::Action::kStatus);
        EXPECT_EQ(Parsed(json).statusForm, "json");
        EXPECT_TRUE(Parsed(json).paths.empty());
    }
    EXPECT_EQ(Parsed({"json"}).paths, Arguments{"json"});
}

TEST(Options, RequestsStandWithoutPathAndWithoutEachOther) {
    EXPECT_EQ(Fault({"--pause", "a.mp3"}), "what is asked of the running veldrin takes no PATH");
    EXPECT_EQ(Fault({"--status", "xml"}), "--status takes nothing but 'json'");
    EXPECT_EQ(Fault({"--status=xml"}), "--status takes nothing but 'json'");
    EXPECT_EQ(Fault({"--status", "json", "json"}), "--status takes nothing but 'json'");
    EXPECT_EQ(Fault({"--volume", "5", "--quit"}),
              "--volume does not go together with --quit, --status or --export");
    EXPECT_EQ(Fault({"--status", "--stop"}),
              "--stop does not go together with --quit, --status or --export");
    EXPECT_EQ(Fault({"--next", "--export", "a.m3u8"}),
              "--next does not go together with --quit, --status or --export");
    EXPECT_EQ(Parsed({"--stop", "--help", "--quit"}).action, Options::Action::kHelp);
}

TEST(Options, VerbsThatMakeNoSenseAreMisuse) {
    const std::string volume = "--volume must be 0 to 100, or as much more or less, such as +5";
    const std::string seek = "--seek must be whole seconds, or so many on or back, such as -10";
    for (const char* value : {"101", "-101", "x", "", "5%"}) {
        EXPECT_EQ(Fault({"--volume", value}), volume) << value;
    }
    for (const char* value : {"1:30", "", "1.5"}) {
        EXPECT_EQ(Fault({"--seek", value}), seek) << value;
    }
    EXPECT_EQ(Fault({"--command", ""}), "--command needs the key of a command");
    EXPECT_EQ(Fault({"--command"}), "--command needs a value");
    EXPECT_EQ(Fault({"--play=1"}), "--play takes no value");
}

TEST(Options, NotificationsAreOffByDefault) {
    EXPECT_FALSE(Parsed({}).notifies);
    EXPECT_TRUE(Parsed({"--notify"}).notifies);
}

TEST(Options, MisuseNamesTheFault) {
    EXPECT_EQ(Fault({"--nonsense"}), "unknown option '--nonsense'");
    EXPECT_EQ(Fault({"--nonsense=3", "--help"}), "unknown option '--nonsense'");
    EXPECT_EQ(Fault({"-q"}), "unknown option '-q'");
    EXPECT_EQ(Fault({"--Add"}), "unknown option '--Add'");
    EXPECT_EQ(Fault({"--add=yes"}), "--add takes no value");
    EXPECT_EQ(Fault({"--dir"}), "--dir needs a value");
    EXPECT_EQ(Fault({"--output"}), "--output needs a value");
    EXPECT_EQ(Fault({"--dir="}), "--dir needs the name of a folder");
}

TEST(Options, ScaleIsANumberFromOneToFour) {
    EXPECT_FALSE(Parsed({}).scale);
    EXPECT_EQ(Parsed({"--scale", "1"}).scale, 1.0);
    EXPECT_EQ(Parsed({"--scale=2.5"}).scale, 2.5);
    EXPECT_EQ(Parsed({"--scale=4"}).scale, 4.0);
    for (const std::string value : {"", "0.9", "4.1", "2x", " 2", "-2", "nan", "inf", "1,5"}) {
        EXPECT_EQ(Fault({"--scale=" + value}),
                  "--scale must be a number from 1 to 4, not '" + value + "'");
    }
}

TEST(Options, LoudnessIsOffUnlessAskedFor) {
    EXPECT_EQ(Parsed({}).loudness, Loudness::kOff);
    EXPECT_EQ(Parsed({"--loudness", "track"}).loudness, Loudness::kTrack);
    EXPECT_EQ(Parsed({"--loudness=album"}).loudness, Loudness::kAlbum);
    EXPECT_EQ(Parsed({"--loudness=album", "--loudness=off"}).loudness, Loudness::kOff);
    EXPECT_EQ(Fault({"--loudness"}), "--loudness needs a value");
    for (const std::string value : {"", "on", "Track", "album "}) {
        EXPECT_EQ(Fault({"--loudness=" + value}),
                  "--loudness must be off, track or album, not '" + value + "'");
    }
}

TEST(Options, LyricsComeFromAWebAddress) {
    EXPECT_FALSE(Parsed({}).lyrics);
    EXPECT_FALSE(Parsed({}).lyricsOnline);
    EXPECT_EQ(Parsed({"--lyrics", "http://h"}).lyrics, "http://h");
    EXPECT_EQ(Parsed({"--lyrics=https://h:80/a/b//"}).lyrics, "https://h:80/a/b");
    for (const std::string value :
         {"", "h", "ftp://h", "http:/h", "http://", "http:///", "http://h/a b", "http://h\n",
          "file:///etc/passwd", "http://h?a", "http://h#a", "xhttp://h"}) {
        EXPECT_EQ(Fault({"--lyrics", value}),
                  "--lyrics must be an address like https://example.org, not '" + value + "'");
        EXPECT_EQ(
            Fault({"--lyrics-online=" + value}),
            "--lyrics-online must be an address like https://example.org, not '" + value + "'");
    }
    EXPECT_EQ(Fault({"--lyrics"}), "--lyrics needs a value");
}

TEST(Options, LyricsOnlineTakesItsValueBehindTheEqualsSignAlone) {
    const Options options = Parsed({"--lyrics-online", "http://a.mp3"});
    EXPECT_EQ(options.lyricsOnline, "https://lrclib.net");
    EXPECT_EQ(options.paths, Arguments{"http://a.mp3"});
    EXPECT_EQ(Parsed({"--lyrics-online=http://h:1/"}).lyricsOnline, "http://h:1");
    EXPECT_EQ(Parsed({"--lyrics-online=http://h", "--lyrics-online"}).lyricsOnline,
              "https://lrclib.net");
}

TEST(Options, OutputKnowsThreeForms) {
    for (const std::string value : {"", "Auto", "nul", "file", "file:", "null:", "alsa"}) {
        EXPECT_EQ(Fault({"--output=" + value}),
                  "--output must be auto, null or file:PATH, not '" + value + "'");
    }
}

}  // namespace
}  // namespace veldrin

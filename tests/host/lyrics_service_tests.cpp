// The lyrics service, request by request, without a network.
#include "host/lyrics/service.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "lyrics/lyrics.h"
#include "platform/base/text.h"
#include "tests/host/scratch_folder.h"

namespace veldrin {
namespace {

constexpr const char* kPrefix = "/secret0123456789";

/// An MP3 file that is nothing but a tag, with texts that begin with their encoding.
std::string Mp3With(const std::string& artist, const std::string& title, const std::string& words) {
    const auto frame = [](const std::string& id, const std::string& text) {
        const std::string content = std::string(1, '\3') + text;
        return id + std::string("\0\0\0", 3) + static_cast<char>(content.size()) +
               std::string("\0\0", 2) + content;
    };
    const std::string frames =
        frame("TPE1", artist) + frame("TIT2", title) +
        (words.empty() ? "" : frame("USLT", "eng" + std::string(1, '\0') + words));
    return std::string("ID3\4\0\0\0\0", 8) + static_cast<char>(frames.size() / 128) +
           static_cast<char>(frames.size() % 128) + frames + std::string(64, '\0');
}

class LyricsServiceTest : public testing::Test {
  protected:
    void Write(const std::string& name, const std::string& bytes) {
        std::filesystem::create_directories(
            std::filesystem::path(scratch_.Path(name)).parent_path());
        std::ofstream(scratch_.Path(name), std::ios::binary) << bytes;
    }
    HttpAnswer Send(const std::string& method, const std::string& target,
                    const HttpHeaders& headers = {}, const std::string& body = {}) {
        HttpRequest request{method, kPrefix + target, headers, body};
        request.headers.insert({"host", "127.0.0.1:4711"});
        return service_.Answer(request);
    }
    /// The words that the component would show.
    std::string Words(const std::string& query) {
        const HttpAnswer answer = Send("GET", "/winamp03/plugin/?" + query);
        EXPECT_EQ(answer.status, 200);
        return platform::Narrow(sarnel::CutLyrics(sarnel::DecodePage(answer.body)));
    }
    HttpAnswer Edit(const std::string& query) { return Send("GET", "/winamp03/edit/?" + query); }
    HttpAnswer Post(const std::string& query, const std::string& body,
                    const HttpHeaders& headers = {}) {
        HttpHeaders all = headers;
        all.insert({"origin", "http://127.0.0.1:4711"});
        all.insert({"content-type", "application/x-www-form-urlencoded"});
        return Send("POST", "/winamp03/edit/?" + query, all, body);
    }
    static bool Holds(const HttpAnswer& answer, const std::string& text) {
        return answer.body.find(text) != std::string::npos;
    }

    ScratchFolder scratch_;
    int online_ = 0;  // questions to the network
    LyricsService service_{{kPrefix + 1, 4711, scratch_.Path("lyrics")},
                           OnlineWords(
                               "http://h", "",
                               [this](const std::string& address, const auto&, const auto&) {
                                   ++online_;
                                   lastAddress_ = address;
                                   return HttpAnswer{200, {}, onlineBody_};
                               },
                               [] { return std::chrono::system_clock::now(); })};
    std::string lastAddress_;
    std::string onlineBody_ = R"({"plainLyrics":null})";
};

TEST_F(LyricsServiceTest, UnknownSongIsASentenceInThePanel) {
    EXPECT_EQ(Words("artist=Ann&title=Blue%20Sky"), "No words are known for Ann - Blue Sky.");
    EXPECT_EQ(Words("artist=&title="), "No song is named.");
    service_.ItemOpened(scratch_.Path("missing.mp3"));
    EXPECT_EQ(Words("artist=Ann&title=Blue"), "No words are known for Ann - Blue.");
    EXPECT_EQ(Words("artist=%ff&title=%00</div>%0a"), "No words are known for \xC3\xBF - </div>.");
}

TEST_F(LyricsServiceTest, SourcesHaveTheirOrder) {
    onlineBody_ = R"({"plainLyrics":"online"})";
    const std::string query = "artist=Ann&title=Blue";
    Write("m/x.mp3", Mp3With("Ann", "Blue", "tags"));
    service_.ItemOpened(scratch_.Path("m/x.mp3"));
    Write("m/x.lrc", "[00:01.00]beside");
    Write("m/x.txt", "text beside");
    Write("lyrics/Ann - Blue.txt", "folder");
    Write("lyrics/edited/Ann - Blue.txt", "edited");
    EXPECT_EQ(Words(query), "edited");
    std::filesystem::remove(scratch_.Path("lyrics/edited/Ann - Blue.txt"));
    EXPECT_EQ(Words(query), "beside");
    std::filesystem::remove(scratch_.Path("m/x.lrc"));
    EXPECT_EQ(Words(query), "text beside");
    std::filesystem::remove(scratch_.Path("m/x.txt"));
    EXPECT_EQ(Words(query), "tags");
    Write("m/x.mp3", Mp3With("Ann", "Blue", ""));
    EXPECT_EQ(Words(query), "folder");
    EXPECT_EQ(online_, 0);
    std::filesystem::remove(scratch_.Path("lyrics/Ann - Blue.txt"));
    EXPECT_EQ(Words(query), "online");
    EXPECT_EQ(online_, 1);
}

TEST_F(LyricsServiceTest, FilesOfTheItemAreForThatItemAlone) {
    Write("m/x.mp3", Mp3With("Ann", "Blue", "tags"));
    service_.ItemOpened(scratch_.Path("m/x.mp3"));
    EXPECT_EQ(Words("artist=Ann&title=Green"), "No words are known for Ann - Green.");
    Write("m/y.mp3", Mp3With("Ann", "Green", "other"));
    service_.ItemOpened(scratch_.Path("m/y.mp3"));
    EXPECT_EQ(Words("artist=Ann&title=Green"), "other");
    EXPECT_EQ(Words("artist=Ann&title=Blue"), "No words are known for Ann - Blue.");
}

TEST_F(LyricsServiceTest, ItemWithoutTagsGoesByItsFile) {
    Write("m/Morning.mp3", "");
    Write("m/Morning.txt", "beside");
    service_.ItemOpened(scratch_.Path("m/Morning.mp3"));
    EXPECT_EQ(Words("artist=&title=ning.mp3"), "beside");
    std::filesystem::remove(scratch_.Path("m/Morning.txt"));
    Write("lyrics/Morning.txt", "folder");
    EXPECT_EQ(Words("artist=&title=ning.mp3"), "folder");
    Write("m/Ann - Blue.mp3", "");
    Write("lyrics/Ann - Blue.txt", "folder too");
    service_.ItemOpened(scratch_.Path("m/Ann - Blue.mp3"));
    EXPECT_EQ(Words("artist=Ann&title=Blue.mp3"), "folder too");
}

TEST_F(LyricsServiceTest, NetworkIsToldOfTheItemOnlyWhatItIs) {
    Words("artist=Ann%20%26%20Bob&title=Blue");
    EXPECT_EQ(lastAddress_, "http://h/api/get?artist_name=Ann%20%26%20Bob&track_name=Blue");
}

TEST_F(LyricsServiceTest, ReloadSaysThatNoCopyWillDo) {
    onlineBody_ = R"({"plainLyrics":"online"})";
    LyricsService keeping({"t", 1, scratch_.Path("lyrics")},
                          OnlineWords(
                              "http://h", scratch_.Path("cache"),
                              [this](const auto&, const auto&, const auto&) {
                                  ++online_;
                                  return HttpAnswer{200, {}, onlineBody_};
                              },
                              [] { return std::chrono::system_clock::now(); }));
    HttpRequest request{
        "GET", "/t/winamp03/plugin/?artist=A&title=B", {{"host", "127.0.0.1:1"}}, ""};
    keeping.Answer(request);
    keeping.Answer(request);
    EXPECT_EQ(online_, 1);
    request.headers["cache-control"] = "no-cache";
    keeping.Answer(request);
    EXPECT_EQ(online_, 2);
}

TEST_F(LyricsServiceTest, SavedWordsAreShownFromThenOn) {
    Write("m/x.mp3", Mp3With("Ann", "Blue", "tags"));
    service_.ItemOpened(scratch_.Path("m/x.mp3"));
    HttpAnswer page = Edit("artist=Ann&title=Blue&new=1");
    EXPECT_TRUE(Holds(page, "tags</textarea>"));
    EXPECT_TRUE(Holds(page, "These words come from the tags of the music."));
    EXPECT_TRUE(Holds(page, scratch_.Path("lyrics/edited/Ann - Blue.txt")));
    page = Post("artist=Ann&title=Blue&new=1", "words=One+%26+two%0D%0A%E2%80%99%2B%25");
    EXPECT_EQ(page.status, 303);
    EXPECT_EQ(page.headers.at("location"),
              std::string(kPrefix) + "/winamp03/edit/?artist=Ann&title=Blue&new=1&note=saved");
    EXPECT_EQ(Words("artist=Ann&title=Blue"), "One & two\r\n'+%");
    page = Edit("artist=Ann&title=Blue&new=1&note=saved");
    EXPECT_TRUE(Holds(page, "One &amp; two\n\xE2\x80\x99+%</textarea>"));
    EXPECT_TRUE(Holds(page, "Saved. Press F5 in the lyrics panel to see it."));
    EXPECT_TRUE(Holds(page, "You saved these words."));
}

TEST_F(LyricsServiceTest, EmptyTextGoesBackToOtherWords) {
    Write("lyrics/Ann - Blue.txt", "folder");
    Post("artist=Ann&title=Blue&new=1", "words=mine");
    EXPECT_EQ(Words("artist=Ann&title=Blue"), "mine");
    const HttpAnswer page = Post("artist=Ann&title=Blue&new=1", "words=+%0D%0A");
    EXPECT_EQ(page.status, 303);
    EXPECT_TRUE(page.headers.at("location").ends_with("&note=removed"));
    EXPECT_EQ(Words("artist=Ann&title=Blue"), "folder");
    EXPECT_TRUE(Holds(Edit("artist=Ann&title=Blue&new=1&note=removed"), "Your words are removed."));
}

TEST_F(LyricsServiceTest, EditAddressMeansTheSongThatWasRead) {
    Words("artist=A+B&title=Song%20%231");
    Post("artist=A+B&title=Song+", "words=mine");  // as a browser sends it
    EXPECT_EQ(Words("artist=A+B&title=Song%20%231"), "mine");
    EXPECT_TRUE(std::filesystem::exists(scratch_.Path("lyrics/edited/A+B - Song #1.txt")));
    EXPECT_TRUE(Holds(Edit("artist=A%2BB&title=Song%20%231&new=1"), "mine</textarea>"));
}

TEST_F(LyricsServiceTest, WordsThatCannotBeSavedAreNotLost) {
    Write("lyrics", "a file where the folder should be");
    const HttpAnswer page = Post("artist=Ann&title=Blue&new=1", "words=%3Cmine%3E");
    EXPECT_EQ(page.status, 500);
    EXPECT_TRUE(Holds(page, "They could not be saved."));
    EXPECT_TRUE(Holds(page, "&lt;mine&gt;</textarea>"));
}

TEST_F(LyricsServiceTest, FormsAreReadAsTheyAreSent) {
    EXPECT_EQ(Post("artist=A&title=B&new=1", "other=x&words=mine&more=y").status, 303);
    EXPECT_EQ(Words("artist=A&title=B"), "mine");
    EXPECT_EQ(Post("artist=A&title=B&new=1", "").status, 400);
    EXPECT_EQ(Post("artist=A&title=B&new=1", "xwords=theirs").status, 400);
    EXPECT_EQ(Words("artist=A&title=B"), "mine");
}

TEST_F(LyricsServiceTest, OnlyThisComputersNamesAreAnswered) {
    for (const char* host : {"", "127.0.0.1", "localhost", "127.0.0.1:4712", "evil.example:4711",
                             "127.0.0.1:4711.evil.example", "127.0.0.1:47110", "[::1]:4711"}) {
        EXPECT_EQ(Send("GET", "/winamp03/plugin/?artist=a&title=b", {{"host", host}}).status, 403)
            << host;
    }
    EXPECT_EQ(
        service_
            .Answer({"GET", std::string(kPrefix) + "/winamp03/plugin/?artist=a&title=b", {}, ""})
            .status,
        403);
    EXPECT_EQ(
        Send("GET", "/winamp03/plugin/?artist=a&title=b", {{"host", "localhost:4711"}}).status,
        200);
}

TEST_F(LyricsServiceTest, OnlyWhoKnowsTheTokenIsAnswered) {
    const std::string rest = "/winamp03/plugin/?artist=a&title=b";
    for (const std::string& target :
         {std::string(), std::string("/"), rest, "/" + rest, "/secret" + rest,
          "/secret0123456788" + rest, "/Secret0123456789" + rest, "/secret01234567890" + rest,
          "secret0123456789" + rest, "//secret0123456789" + rest, "/./secret0123456789" + rest,
          "/x/../secret0123456789" + rest, "/%73ecret0123456789" + rest, std::string("*"),
          "http://127.0.0.1:4711/secret0123456789" + rest}) {
        EXPECT_EQ(service_.Answer({"GET", target, {{"host", "127.0.0.1:4711"}}, ""}).status, 404)
            << target;
    }
    EXPECT_EQ(Send("GET", "").status, 404);
    EXPECT_EQ(Send("GET", "/").status, 404);
    EXPECT_EQ(Send("GET", "/etc/passwd").status, 404);
    EXPECT_EQ(Send("GET", "/winamp03/plugin/../../../etc/passwd").status, 404);
}

TEST_F(LyricsServiceTest, OnlyThePageItselfMaySave) {
    const std::string query = "artist=a&title=b&new=1";
    for (const char* origin :
         {"", "null", "http://evil.example", "https://127.0.0.1:4711", "http://127.0.0.1",
          "http://localhost:4711", "http://127.0.0.1:47111"}) {
        EXPECT_EQ(Post(query, "words=theirs", {{"origin", origin}}).status, 403) << origin;
    }
    EXPECT_EQ(Send("POST", "/winamp03/edit/?" + query,
                   {{"content-type", "application/x-www-form-urlencoded"}}, "words=theirs")
                  .status,
              403);
    for (const char* type :
         {"", "text/plain", "multipart/form-data; boundary=x", "application/json"}) {
        EXPECT_EQ(Post(query, "words=theirs", {{"content-type", type}}).status, 415) << type;
    }
    EXPECT_FALSE(std::filesystem::exists(scratch_.Path("lyrics")));
    EXPECT_EQ(Post(query, "words=mine",
                   {{"content-type", "application/x-www-form-urlencoded; charset=UTF-8"}})
                  .status,
              303);
    EXPECT_EQ(
        Post(query, "words=mine", {{"host", "localhost:4711"}, {"origin", "http://localhost:4711"}})
            .status,
        303);
}

TEST_F(LyricsServiceTest, OnlyThreeMethodsAreTaken) {
    for (const char* method : {"PUT", "DELETE", "OPTIONS", "TRACE", "PATCH", "get", ""}) {
        const HttpAnswer edit = Send(method, "/winamp03/edit/?artist=a&title=b&new=1");
        EXPECT_EQ(edit.status, 405) << method;
        EXPECT_EQ(edit.headers.at("allow"), "GET, HEAD, POST");
    }
    const HttpAnswer read = Send("POST", "/winamp03/plugin/?artist=a&title=b");
    EXPECT_EQ(read.status, 405);
    EXPECT_EQ(read.headers.at("allow"), "GET, HEAD");
    EXPECT_EQ(Send("HEAD", "/winamp03/plugin/?artist=a&title=b").status, 200);
    EXPECT_EQ(Send("HEAD", "/winamp03/edit/?artist=a&title=b&new=1").status, 200);
}

TEST_F(LyricsServiceTest, PostsHaveALimit) {
    const std::string query = "artist=a&title=b&new=1";
    EXPECT_EQ(Post(query, "words=" + std::string(65536 - 6, 'x')).status, 303);
    EXPECT_EQ(Post(query, "words=" + std::string(65536 - 5, 'y')).status, 413);
    EXPECT_EQ(Words("artist=a&title=b").substr(0, 1), "x");
}

TEST_F(LyricsServiceTest, NameCannotLeaveItsPage) {
    const HttpAnswer page =
        Edit("artist=%22%3E%3Cscript%3Ealert(1)%3C/script%3E&title=%0d%0aSet-Cookie:%20x&new=1");
    EXPECT_FALSE(Holds(page, "<script"));
    const HttpAnswer saved = Post("artist=%22&title=%0d%0aSet-Cookie:%20x&new=1", "words=w");
    EXPECT_EQ(saved.headers.at("location"),
              std::string(kPrefix) +
                  "/winamp03/edit/?artist=%22&title=%0D%0ASet-Cookie%3A%20x&new=1&note=saved");
}

TEST(LyricsSecret, OnlyTheSameIsTheSame) {
    EXPECT_TRUE(SameSecret("abc", "abc"));
    EXPECT_TRUE(SameSecret("", ""));
    for (const char* other : {"", "ab", "abcd", "abd", "Abc", "xbc"}) {
        EXPECT_FALSE(SameSecret("abc", other)) << other;
    }
}

}  // namespace
}  // namespace veldrin

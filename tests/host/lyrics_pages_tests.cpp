// The pages: what the component cuts out of the one, and what a browser makes of the other.
#include "host/lyrics/pages.h"

#include <gtest/gtest.h>

#include "host/lyrics/words_text.h"
#include "lyrics/lyrics.h"
#include "platform/base/text.h"

namespace veldrin {
namespace {

/// What the component makes of the page with these words, its CR LF as LF.
std::string Arrived(const std::string& words) {
    const HttpAnswer page = ReadPage(words);
    std::string text = platform::Narrow(sarnel::CutLyrics(sarnel::DecodePage(page.body)));
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isLineEnd = text.compare(i, 2, "\r\n") == 0;
        EXPECT_TRUE(isLineEnd || text[i] != '\n');
        plain += isLineEnd ? '\n' : text[i];
        i += isLineEnd ? 1 : 0;
    }
    return plain;
}

TEST(LyricsPages, WordsStandBetweenTheMarkers) {
    const HttpAnswer page = ReadPage("One\nTwo");
    EXPECT_EQ(page.status, 200);
    EXPECT_EQ(page.body, "<div id=\"lyrics\">\nOne\nTwo\n</div>\n");
    EXPECT_EQ(platform::Narrow(sarnel::CutLyrics(sarnel::DecodePage(page.body))), "One\r\nTwo");
    EXPECT_EQ(page.headers.at("cache-control"), "no-store");
}

TEST(LyricsPages, WordsArriveAsTheyWere) {
    for (const std::string words : {"",
                                    "x",
                                    "AT&T",
                                    "a < b > c",
                                    "\"quoted\" 'so'",
                                    "&",
                                    "&&amp;&",
                                    "&amp;",
                                    "&amp;amp;",
                                    "&nbsp;",
                                    "nbsp;",
                                    "nbsp;nbsp;",
                                    "&lt;b&gt;",
                                    "<br />",
                                    "<BR />",
                                    "<br<br /> />",
                                    "<<br />",
                                    "</div>",
                                    "</DIV>x</div>",
                                    "<div id=\"lyrics\">x</div>",
                                    "</d\xC4\xB1v>",
                                    "<script>alert(1)</script>",
                                    "\xC3\xA2\xE2\x82\xAC\xE2\x84\xA2 \xC3\xA2\xE2\x82\xAC\xCB\x9C",
                                    "\xC3\xA2\xE2\x82\xAC",
                                    "\xC3\xA9\xF0\x9F\x8E\xB5",
                                    "%41+%",
                                    "&#39;",
                                    "\n\n",
                                    " <",
                                    "&<",
                                    "<&"}) {
        EXPECT_EQ(Arrived(words), words);
    }
}

TEST(LyricsPages, EveryByteArrives) {
    for (int byte = 1; byte < 256; ++byte) {
        const std::string words = CleanWords("a" + std::string(1, static_cast<char>(byte)) + "b");
        const bool isCurvedQuote = byte == 0x91 || byte == 0x92;
        EXPECT_EQ(Arrived(words), isCurvedQuote ? "a'b" : words) << byte;
    }
}

TEST(LyricsPages, WhatCannotArriveComesCloseToIt) {
    EXPECT_EQ(Arrived("don\xE2\x80\x99t \xE2\x80\x98so\xE2\x80\x99"), "don't 'so'");
    EXPECT_EQ(Arrived("&quot;"), "\"");
}

TEST(LyricsPages, ReadPageIsNoDocumentToABrowser) {
    const HttpAnswer page = ReadPage("<script>alert(1)</script>");
    EXPECT_EQ(page.headers.at("content-type"), "text/plain; charset=utf-8");
    EXPECT_EQ(page.headers.at("x-content-type-options"), "nosniff");
}

TEST(LyricsPages, HtmlIsEscaped) {
    EXPECT_EQ(EscapeHtml("a&b<c>d\"e'f"), "a&amp;b&lt;c&gt;d&quot;e&#39;f");
    const std::string evil = "</textarea><script>alert(\"1\")</script>' onload='x";
    const HttpAnswer page = PageOf({{evil, evil}, evil, evil, evil, evil, evil, 200});
    EXPECT_EQ(page.body.find("<script"), std::string::npos);
    EXPECT_EQ(page.body.find("' onload"), std::string::npos);
    EXPECT_EQ(page.body.find("</textarea><s"), std::string::npos);
    EXPECT_NE(page.body.find("&lt;/textarea&gt;&lt;script&gt;alert(&quot;1&quot;)"),
              std::string::npos);
    EXPECT_EQ(SentencePage(404, "<b>").body.find("<b>"), std::string::npos);
}

TEST(LyricsPages, EveryByteOfANameIsFitForThePage) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte) {
        all += static_cast<char>(byte);
    }
    const HttpAnswer page = PageOf({{all, all}, "w", "s", all, "/t", "n", 200});
    EXPECT_EQ(platform::Widen(page.body).find(u'\0'), std::u16string::npos);
    for (const char16_t unit : platform::Widen(page.body)) {
        ASSERT_FALSE(platform::IsSurrogate(unit));
    }
}

TEST(LyricsPages, EditPageHasItsParts) {
    const HttpAnswer page = PageOf(
        {{"Ann", "Blue"}, "\nOne\n<two>", "From here.", "/h/Ann - Blue.txt", "/t?a&b", "", 200});
    EXPECT_EQ(page.status, 200);
    EXPECT_EQ(page.headers.at("content-type"), "text/html; charset=utf-8");
    for (const char* part :
         {"<title>Ann - Blue - lyrics</title>", "<h1>Blue</h1>", "<label for=\"words\">",
          "<textarea id=\"words\" name=\"words\" rows=\"12\" "
          "autofocus>\n\nOne\n&lt;two&gt;</textarea>",
          "action=\"/t?a&amp;b\"", "method=\"post\"", "From here.", "/h/Ann - Blue.txt",
          "<button type=\"submit\">Save</button>", "name=\"viewport\""}) {
        EXPECT_NE(page.body.find(part), std::string::npos) << part;
    }
    EXPECT_EQ(page.body.find("role=\"status\""), std::string::npos);
    EXPECT_NE(PageOf({{}, "", "", "", "", "Saved.", 200}).body.find("role=\"status\">Saved.<"),
              std::string::npos);
}

TEST(LyricsPages, EveryPageIsGuarded) {
    for (const HttpAnswer& page : {ReadPage("x"), PageOf({{}, "", "", "", "", "", 200}),
                                   SentencePage(404, "x"), SeeOtherPage("/y")}) {
        EXPECT_EQ(page.headers.at("content-security-policy"),
                  "default-src 'none'; style-src 'unsafe-inline'; form-action 'self'; "
                  "frame-ancestors 'none'; base-uri 'none'");
        EXPECT_EQ(page.headers.at("x-content-type-options"), "nosniff");
        EXPECT_EQ(page.headers.at("referrer-policy"), "same-origin");
        EXPECT_EQ(page.headers.at("cache-control"), "no-store");
    }
    EXPECT_EQ(SeeOtherPage("/y").status, 303);
    EXPECT_EQ(SeeOtherPage("/y").headers.at("location"), "/y");
}

}  // namespace
}  // namespace veldrin

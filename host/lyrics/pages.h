// What the lyrics service answers: the page from which the component cuts the words, and the page
// on which they are changed in a browser. Everything that comes from outside is escaped on the way
// into a page.
#pragma once

#include <string>
#include <string_view>

#include "host/http/http.h"
#include "host/lyrics/song.h"

namespace veldrin {

/// Fit to stand in HTML, between tags and in an attribute: valid UTF-8, with what steers HTML
/// escaped.
std::string EscapeHtml(std::string_view bytes);

/// The answer with clean words for the component. What it cuts out of the page are these words, but
/// for two losses that its rules do not let anybody avoid: both curved single quotation marks come
/// out as straight ones, and "&quot;" as a quotation mark.
HttpAnswer ReadPage(std::string_view words);

struct EditPage {
    Song song;
    std::string words;   ///< clean
    std::string source;  ///< where the words come from: a sentence, plain text
    std::string path;    ///< where they are saved; raw bytes
    std::string target;  ///< path and query to which the form is sent
    std::string note;    ///< what has just happened: plain text, may be empty
    int status = 200;
};
HttpAnswer PageOf(const EditPage& page);

/// A page with a sentence for whoever looks at it.
HttpAnswer SentencePage(int status, std::string_view sentence);

/// Sends a browser that has just posted something on to a page of this service.
HttpAnswer SeeOtherPage(const std::string& target);

}  // namespace veldrin

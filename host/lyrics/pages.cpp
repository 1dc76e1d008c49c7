#include "host/lyrics/pages.h"

#include "host/terminal/console.h"

namespace veldrin {
namespace {

constexpr const char* kHead = R"(<!doctype html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta name="color-scheme" content="light dark">
)";

constexpr const char* kStyle = R"(<style>
:root { --paper: #f4f5fa; --sheet: #fff; --ink: #23283a; --faint: #626a86; --edge: #c4c9dc;
  --accent: #4a4fd0; --on-accent: #fff; --note: #e4e6fb; }
@media (prefers-color-scheme: dark) {
  :root { --paper: #1d2130; --sheet: #272c3f; --ink: #e4e6f4; --faint: #a2a9c6; --edge: #454d6b;
    --accent: #8a8cf5; --on-accent: #14172a; --note: #333861; } }
* { box-sizing: border-box; }
body { margin: 0 auto; max-width: 42rem; min-height: 100vh; padding: 1.5rem 1rem;
  display: flex; flex-direction: column; background: var(--paper); color: var(--ink);
  font: 1rem/1.5 system-ui, sans-serif; overflow-wrap: anywhere; }
h1 { margin: 0; font-size: 1.6rem; line-height: 1.25; }
.artist { margin: .15rem 0 1.2rem; color: var(--faint); font-size: 1.1rem; }
.note { margin: 0 0 1.2rem; padding: .6rem .9rem; border-left: .25rem solid var(--accent);
  border-radius: .35rem; background: var(--note); }
form { flex: 1; display: flex; flex-direction: column; }
label { font-weight: 600; }
.source, .where { margin: .1rem 0 .6rem; color: var(--faint); font-size: .9rem; }
textarea { flex: 1; width: 100%; min-height: 12rem; padding: .8rem .9rem; resize: vertical;
  border: 1px solid var(--edge); border-radius: .5rem; background: var(--sheet);
  color: inherit; font: inherit; }
button { align-self: flex-start; margin: 1rem 0; padding: .55rem 1.8rem; border: 0;
  border-radius: 2rem; background: var(--accent); color: var(--on-accent); font: inherit;
  font-weight: 600; cursor: pointer; }
textarea:focus-visible, button:focus-visible { outline: .18rem solid var(--accent);
  outline-offset: .12rem; }
</style>
)";

std::string Document(const std::string& title, const std::string& body) {
    return std::string(kHead) + "<title>" + title + "</title>\n" + kStyle + "</head>\n<body>\n" +
           body + "</body>\n</html>\n";
}

/// An answer that no other page may frame, run scripts in or keep.
HttpAnswer Guarded(int status, const std::string& type, std::string body) {
    return {status,
            {{"content-type", type + "; charset=utf-8"},
             {"cache-control", "no-store"},
             {"content-security-policy",
              "default-src 'none'; style-src 'unsafe-inline'; form-action 'self'; "
              "frame-ancestors 'none'; base-uri 'none'"},
             // A page without any referrer would send its form with the origin "null".
             {"referrer-policy", "same-origin"},
             {"x-content-type-options", "nosniff"}},
            std::move(body)};
}

/// Parts what the component would take for its own: a break that it takes out after it has looked
/// for the others. So "<" in the words is never the beginning of a tag to it.
std::string ForTheComponent(std::string_view words) {
    constexpr std::string_view kBreak = "<br />";
    constexpr std::string_view kMisread = "\xC3\xA2\xE2\x82\xAC";  // a quotation mark, read wrongly
    std::string text;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string_view rest = words.substr(i);
        if (rest.starts_with(kMisread)) {
            text.append(rest.substr(0, 2)).append(kBreak);
            ++i;
            continue;
        }
        text += words[i];
        if (words[i] == '&') {
            text += "amp;";
        } else if (words[i] == '<' || rest.starts_with("nbsp;")) {
            text += kBreak;
        }
    }
    return text;
}

}  // namespace

std::string EscapeHtml(std::string_view bytes) {
    std::string text;
    for (const char c : bytes) {
        switch (c) {
            case '&':
                text += "&amp;";
                break;
            case '<':
                text += "&lt;";
                break;
            case '>':
                text += "&gt;";
                break;
            case '"':
                text += "&quot;";
                break;
            case '\'':
                text += "&#39;";
                break;
            default:
                text += c;
                break;
        }
    }
    return text;
}

// Plain text to a browser: what is not escaped here cannot become a script there.
HttpAnswer ReadPage(std::string_view words) {
    return Guarded(200, "text/plain",
                   "<div id=\"lyrics\">\n" + ForTheComponent(words) + "\n</div>\n");
}

HttpAnswer PageOf(const EditPage& page) {
    const std::string title = EscapeHtml(Printable(page.song.title));
    const std::string artist = EscapeHtml(Printable(page.song.artist));
    std::string body = "<h1>" + title + "</h1>\n<p class=\"artist\">" + artist + "</p>\n";
    if (!page.note.empty()) {
        body += "<p class=\"note\" role=\"status\">" + EscapeHtml(page.note) + "</p>\n";
    }
    body += "<form method=\"post\" accept-charset=\"utf-8\" action=\"" + EscapeHtml(page.target) +
            "\">\n<label for=\"words\">Lyrics</label>\n<p class=\"source\">" +
            EscapeHtml(page.source) + "</p>\n";
    // The line end behind the tag is the page's, not the words'.
    body += "<textarea id=\"words\" name=\"words\" rows=\"12\" autofocus>\n" +
            EscapeHtml(page.words) +
            "</textarea>\n<button type=\"submit\">Save</button>\n</form>\n";
    body += "<p class=\"where\">Saved words are kept in " + EscapeHtml(Printable(page.path)) +
            " and come before all others. Save an empty text to be rid of them.</p>\n";
    return Guarded(page.status, "text/html",
                   Document((artist.empty() ? "" : artist + " - ") + title + " - lyrics", body));
}

HttpAnswer SentencePage(int status, std::string_view sentence) {
    const std::string text = EscapeHtml(sentence);
    return Guarded(status, "text/html", Document("Veldrin", "<p>" + text + "</p>\n"));
}

HttpAnswer SeeOtherPage(const std::string& target) {
    HttpAnswer answer = SentencePage(303, "Saved.");
    answer.headers["location"] = target;
    return answer;
}

}  // namespace veldrin

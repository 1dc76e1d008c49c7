// The words of a scenario line, and the way back: how a text is printed. Text is UTF-16 as
// everywhere in the component; a byte that is no UTF-8 is written \xNN and survives.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace scenario {

/// What is wrong with a scenario file: an unknown word, a wrong number of arguments. It ends the
/// file with exit status 2; a check that merely fails is no Mistake.
class Mistake : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// A word as it stands in the line.
struct Word {
    std::string raw;      ///< of a quoted word: what stands between the quotes, escapes as written
    bool quoted = false;  ///< the whole word is in double quotes
};

/// Cuts a line at its blanks. Blanks inside quotes and inside parentheses belong to the word.
/// Raises Mistake for a quote or a parenthesis that is not closed.
std::vector<Word> SplitWords(std::string_view line);

/// What stands between two quotes, with the escapes \" \\ \r \n \t \xNN \uNNNN resolved. Raises
/// Mistake for any other.
std::u16string Unescape(std::string_view raw);

/// A text in double quotes. Line ends, tabs, quotes and backslashes are escaped by letter, other
/// control characters and bytes that are no UTF-8 as \xNN, lone surrogates as \uNNNN.
std::string Quote(std::u16string_view text);

/// An expected line in the form in which Quote would have written its quoted words, so that
/// "\u00e9" and the letter itself are the same expectation.
std::string Canonical(std::string_view line);

/// Where the word that starts with the quote at `start` ends: the place of its closing quote.
std::size_t ClosingQuote(std::string_view line, std::size_t start);

/// Replaces every `from` (not empty) by `to`.
std::u16string Replaced(std::u16string_view text, std::u16string_view from, std::u16string_view to);

}  // namespace scenario

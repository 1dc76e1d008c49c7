#include "host/remote/verb.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <system_error>

namespace veldrin {
namespace {

using platform::Long;
using Kind = Verb::Kind;

struct Word {
    std::string_view word;
    Kind kind;
};

constexpr std::array kWords = {
    Word{"play", Kind::kPlay},
    Word{"pause", Kind::kPause},
    Word{"play-pause", Kind::kPlayPause},
    Word{"stop", Kind::kStop},
    Word{"next", Kind::kNext},
    Word{"previous", Kind::kPrevious},
    Word{"volume", Kind::kVolume},
    Word{"seek", Kind::kSeek},
    Word{"command", Kind::kCommand},
};

bool TakesNumber(Kind kind) {
    return kind == Kind::kVolume || kind == Kind::kSeek;
}

/// Reads "N", "+N" or "-N".
bool ReadAmount(std::string_view text, Long most, Verb& verb) {
    verb.relative = text.starts_with('+') || text.starts_with('-');
    const bool isLess = text.starts_with('-');
    text.remove_prefix(verb.relative ? 1 : 0);
    if (text.empty() || text.find_first_not_of("0123456789") != std::string_view::npos) {
        return false;
    }
    const char* end = text.data() + text.size();
    const auto [stopped, error] = std::from_chars(text.data(), end, verb.amount);
    if (error != std::errc() || stopped != end || verb.amount > most) {
        return false;
    }
    verb.amount = isLess ? -verb.amount : verb.amount;
    return true;
}

}  // namespace

std::optional<Verb> ParseVerb(std::string_view text) {
    constexpr Long kMostVolume = 100;
    constexpr Long kMostSeconds = 999'999'999;
    const std::size_t blank = text.find(' ');
    const auto found = std::find_if(kWords.begin(), kWords.end(), [&](const Word& word) {
        return word.word == text.substr(0, blank);
    });
    if (found == kWords.end()) {
        return std::nullopt;
    }
    Verb verb;
    verb.kind = found->kind;
    const bool hasValue = blank != std::string_view::npos;
    const std::string_view value = hasValue ? text.substr(blank + 1) : std::string_view();
    if (verb.kind == Kind::kCommand) {
        verb.key = value;
        return value.empty() ? std::nullopt : std::optional(verb);
    }
    if (!TakesNumber(verb.kind)) {
        return hasValue ? std::nullopt : std::optional(verb);
    }
    const Long most = verb.kind == Kind::kVolume ? kMostVolume : kMostSeconds;
    return ReadAmount(value, most, verb) ? std::optional(verb) : std::nullopt;
}

}  // namespace veldrin

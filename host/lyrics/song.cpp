#include "host/lyrics/song.h"

#include <algorithm>

#include "host/paths.h"
#include "lyrics/lyrics.h"
#include "platform/base/text.h"

namespace veldrin {
namespace {

constexpr std::string_view kSeparator = " - ";
constexpr std::string_view kEnding = ".txt";
// Nearly all file systems take 255 bytes; a file that is being written has an ending besides.
constexpr std::size_t kLongestName = 240;

}  // namespace

Song SongNamed(std::string_view line) {
    const std::size_t at = line.find(kSeparator);
    if (at == std::string_view::npos) {
        return {{}, std::string(line)};
    }
    return {std::string(line.substr(0, at)), std::string(line.substr(at + kSeparator.size()))};
}

Song SongAskedFor(std::string_view line) {
    const auto [artist, title] = sarnel::SplitName(platform::Widen(line));
    return {platform::Narrow(artist), platform::Narrow(title)};
}

std::string LineOf(const Song& song) {
    return song.artist.empty() ? song.title : song.artist + std::string(kSeparator) + song.title;
}

std::string WordsFileName(const Song& song) {
    const std::string line = LineOf(song);
    std::string name = line.empty() ? "_" : line;
    std::replace_if(
        name.begin(), name.end(),
        [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '/' || c == '\x7F'; }, '_');
    for (std::size_t i = 0; i < name.size() && name[i] == '.'; ++i) {
        name[i] = '_';
    }
    if (name.size() + kEnding.size() > kLongestName) {
        const std::string mark = "~" + ShortHash(line);
        name = CutBytes(name, kLongestName - kEnding.size() - mark.size());
        name += mark;
    }
    return name.append(kEnding);
}

std::string_view CutBytes(std::string_view text, std::size_t most) {
    std::size_t end = std::min(text.size(), most);
    while (end > 0 && end < text.size() &&
           (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) {
        --end;
    }
    return text.substr(0, end);
}

}  // namespace veldrin

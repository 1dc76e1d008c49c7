// The name of an item, as far as lyrics are looked for by it. The player knows it as one line, by
// convention artist, " - ", title; the rules part it at the first " - ". All text is raw bytes.
#pragma once

#include <string>
#include <string_view>

namespace veldrin {

struct Song {
    std::string artist;  ///< empty if the line has no " - "
    std::string title;

    bool operator==(const Song& other) const = default;
};

/// The line parted as people understand it: without a separator all of it is the title.
Song SongNamed(std::string_view line);

/// The line parted as the component does when it asks for words: without a separator the title
/// lacks the three units that the separator would have been.
Song SongAskedFor(std::string_view line);

/// "Artist - Title", or the title alone.
std::string LineOf(const Song& song);

/// The name of the file with the words of the song: "Artist - Title.txt". Fit for any folder: one
/// name that leads nowhere else, is not hidden, and is no longer than file systems take.
std::string WordsFileName(const Song& song);

/// The first `most` bytes at most, cut between characters of UTF-8.
std::string_view CutBytes(std::string_view text, std::size_t most);

}  // namespace veldrin

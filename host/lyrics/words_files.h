// Words that lie on the disk: beside a media file, and in folders of texts named by song. Each file
// is read when it is asked for; nothing is kept. Names and paths are raw bytes.
#pragma once

#include <optional>
#include <string>

#include "host/lyrics/song.h"

namespace veldrin {

/// The words in the file of the same name beside a media file, .lrc before .txt; the ending in any
/// case. Empty if there are none.
std::string WordsBeside(const std::string& mediaPath);

/// The words in one text file. Empty if it is none, or too long to be a song.
std::string WordsIn(const std::string& path);

/// A folder of texts, which need not exist before something is saved there.
class WordsFolder {
  public:
    explicit WordsFolder(std::string path) : path_(std::move(path)) {}

    /// Of the file named after the song; if there is none, of one whose name differs in case.
    std::string Find(const Song& song) const;

    /// Where the words of the song are, or would be saved.
    std::string PathFor(const Song& song) const;

    /// In one step: a crash leaves the former words or these. The folder is made for the owner
    /// only.
    [[nodiscard]] bool Save(const Song& song, const std::string& words) const;

    /// True also if there were no words.
    [[nodiscard]] bool Remove(const Song& song) const;

  private:
    std::string path_;
};

}  // namespace veldrin

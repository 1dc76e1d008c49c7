// TagReader tells what the tags of a music file say: its display title for the list and a text of
// all that is known about it. A folder is usually added whole and in alphabetical order, so after
// the first titles asked for in a folder the reader reads its other files ahead on threads of its
// own. A title read ahead is used only if the file still has the size and the time of change that
// it had then.
//
// Members are called from one thread. Paths and names are raw bytes; tag text is UTF-8, on one
// line: control characters have become blanks.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace veldrin {

class TagPrefetcher;

class TagReader {
  public:
    TagReader();
    /// Stops reading ahead. A thread that is held up in a file is left behind, see stragglers.h.
    ~TagReader();
    TagReader(const TagReader&) = delete;
    TagReader& operator=(const TagReader&) = delete;

    /// "Artist - Title" if the file has both tags, the title if it has no artist, and
    /// `fallbackName` unchanged if it has no title or cannot be read.
    std::string Title(const std::string& path, const std::string& fallbackName);

    /// From now on no title is read while this is True: the names stand for them. For an end that
    /// has been asked for and cannot be had before a folder has been added.
    void GiveUpWhile(std::function<bool()> isPointless) { isPointless_ = std::move(isPointless); }

    /// Artist, title, album, year, track, genre, length, bit rate, sample rate, channels, size and
    /// path, a line each ("Artist: ..."), joined by CR LF; what is missing is left out. Empty if
    /// there is no such file.
    std::string Info(const std::string& path) const;

  private:
    std::function<bool()> isPointless_;
    std::unique_ptr<TagPrefetcher> prefetcher_;
};

}  // namespace veldrin

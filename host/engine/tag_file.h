// Reading the tags of one music file: the title to show, everything that is known, the words of the
// song, or the facts about the sound. Below it lies TagLib, which nobody above needs to see. All of
// it may be called from several threads at once.
//
// The file is read through a small window and up to a bounded number of bytes: a gigabyte of
// rubbish with a musical name costs a moment and not a minute. Within a second each of these has
// answered with what it has found so far.
#pragma once

#include <atomic>
#include <chrono>
#include <optional>
#include <string>

#include "host/engine/extensions.h"
#include "platform/files/files.h"

namespace veldrin {

/// Shows a change also when a tag editor restores the time of modification. None for what is no
/// regular file.
std::optional<platform::FileStamp> StampOfFile(const std::string& path);

/// "Artist - Title", the title alone, or nothing. UTF-8 without control characters. `stamp` becomes
/// that of the file before it was read. Once another thread sets `stop`, there is little to wait
/// for and nothing to rely on in the answer.
std::string ReadTitle(const std::string& path, std::optional<platform::FileStamp>& stamp,
                      const std::atomic<bool>* stop = nullptr);

struct SoundFacts {
    std::chrono::milliseconds length{0};
    int bitRate = 0;     ///< kbit/s on average
    int sampleRate = 0;  ///< Hz
    int channels = 0;
};

/// What is unknown is 0.
SoundFacts ReadSoundFacts(const std::string& path);

/// The text that TagReader::Info gives.
std::string ReadInfo(const std::string& path);

/// The words of the song as they stand in the tags: bytes of UTF-8, times and all. Empty if there
/// are none.
std::string ReadWords(const std::string& path);

/// UTF-8 on one line; empty what is unknown.
struct NamesInTags {
    std::string title;
    std::string artist;
    std::string album;
    bool operator==(const NamesInTags&) const = default;
};
NamesInTags ReadNames(const std::string& path);

/// The extensions of the files whose tags can be read.
Extensions TaggedExtensions();

}  // namespace veldrin

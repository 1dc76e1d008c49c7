#include "host/lyrics/words_files.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>

#include "host/lyrics/words_text.h"
#include "host/paths.h"
#include "platform/base/text.h"
#include "platform/files/files.h"

namespace veldrin {
namespace {

using platform::Widen;

/// The words of the file `stem` with that ending of small letters, whatever their case in the name.
std::string WithEnding(const std::string& stem, const std::string& ending) {
    for (unsigned capitals = 0; capitals < 1U << ending.size(); ++capitals) {
        std::string name = stem + ".";
        for (std::size_t i = 0; i < ending.size(); ++i) {
            const bool capital = (capitals >> i & 1U) != 0;
            name += capital ? platform::UpperAscii(ending[i]) : ending[i];
        }
        std::string words = WordsIn(name);
        if (!words.empty()) {
            return words;
        }
    }
    return {};
}

}  // namespace

std::string WordsBeside(const std::string& mediaPath) {
    const std::size_t slash = mediaPath.rfind('/');
    const std::size_t dot = mediaPath.rfind('.');
    const bool hasEnding = dot != std::string::npos && (slash == std::string::npos || dot > slash);
    const std::string stem = hasEnding ? mediaPath.substr(0, dot) : mediaPath;
    const std::string words = WithoutTimes(WithEnding(stem, "lrc"));
    return words.empty() ? WithEnding(stem, "txt") : words;
}

std::string WordsIn(const std::string& path) {
    platform::FileReader file(Widen(path));
    std::string bytes;
    while (file.IsOpen() && bytes.size() <= kMostWords && file.Append(bytes)) {
    }
    return CleanWords(bytes);
}

std::string WordsFolder::Find(const Song& song) const {
    return WordsIn(PathFor(song));
}

std::string WordsFolder::PathFor(const Song& song) const {
    const std::string name = WordsFileName(song);
    std::string exact = path_ + "/" + name;
    std::error_code error;
    if (std::filesystem::exists(exact, error)) {
        return exact;
    }
    const std::u16string capitals = platform::Upper(Widen(name));
    std::string found;  // of several the first by its bytes, for the same answer each time
    std::filesystem::directory_iterator entry(path_, error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        const std::string other = entry->path().filename().native();
        if (platform::Upper(Widen(other)) == capitals && (found.empty() || other < found)) {
            found = other;
        }
    }
    return found.empty() ? exact : path_ + "/" + found;
}

bool WordsFolder::Save(const Song& song, const std::string& words) const {
    return MakeFolder(path_) && platform::ReplaceFile(Widen(PathFor(song)), words);
}

bool WordsFolder::Remove(const Song& song) const {
    return unlink(PathFor(song).c_str()) == 0 || errno == ENOENT || errno == ENOTDIR;
}

}  // namespace veldrin

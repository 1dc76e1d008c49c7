#include "platform/files/profile.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "platform/base/text.h"

namespace platform {

namespace {

constexpr std::string_view kTrimmed = " \t\r\n";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string_view Trim(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kTrimmed);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(kTrimmed) - first + 1);
}

bool SameName(std::string_view a, std::string_view b) {
    return EqualIgnoringCase(Widen(a), Widen(b));
}

// Walks a profile line by line; positions are byte offsets into the whole text.
class LineReader {
  public:
    explicit LineReader(std::string_view text) : text_(text) {
        next_ = text.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0;
    }

    bool Next() {
        if (next_ >= text_.size()) {
            return false;
        }
        begin_ = next_;
        const std::size_t end = text_.find_first_of("\r\n", begin_);
        contentEnd_ = std::min(end, text_.size());
        next_ = contentEnd_;
        if (next_ < text_.size()) {
            next_ += text_.substr(next_, 2) == "\r\n" ? 2 : 1;
        }
        return true;
    }

    std::string_view Line() const { return Trim(text_.substr(begin_, contentEnd_ - begin_)); }
    std::size_t Begin() const { return begin_; }
    std::size_t ContentEnd() const { return contentEnd_; }
    std::size_t End() const { return next_; }

    // The name in brackets, if the line opens a section.
    std::optional<std::string_view> Section() const {
        const std::string_view line = Line();
        const std::size_t close = line.find(']');
        if (!line.starts_with('[') || close == std::string_view::npos) {
            return std::nullopt;
        }
        return Trim(line.substr(1, close - 1));
    }

    // Key and value, if the line holds a setting.
    std::optional<std::pair<std::string_view, std::string_view>> Setting() const {
        const std::string_view line = Line();
        const std::size_t equals = line.find('=');
        if (line.starts_with(';') || equals == std::string_view::npos) {
            return std::nullopt;
        }
        return std::pair{Trim(line.substr(0, equals)), Trim(line.substr(equals + 1))};
    }

  private:
    std::string_view text_;
    std::size_t begin_ = 0;
    std::size_t contentEnd_ = 0;
    std::size_t next_ = 0;
};

// Where a key stands, or where a new one belongs.
struct Place {
    bool sectionFound = false;
    bool keyFound = false;
    std::string_view value;
    std::size_t begin = 0;  // the key's line, without its line end
    std::size_t end = 0;
    std::size_t insert = 0;  // behind the section's last line that is not blank
};

Place FindPlace(std::string_view text, std::string_view section, std::string_view key) {
    Place place;
    bool inSection = false;
    for (LineReader reader(text); reader.Next();) {
        if (const auto name = reader.Section()) {
            if (inSection) {
                break;  // of two sections with one name the first is the section
            }
            inSection = SameName(*name, section);
            place.sectionFound = inSection;
            place.insert = reader.End();
            continue;
        }
        if (!inSection || reader.Line().empty()) {
            continue;
        }
        place.insert = reader.End();
        const auto setting = reader.Setting();
        if (setting && SameName(setting->first, key)) {
            place.keyFound = true;
            place.value = setting->second;
            place.begin = reader.Begin();
            place.end = reader.ContentEnd();
            break;
        }
    }
    return place;
}

std::string_view LineEndOf(std::string_view text) {
    const std::size_t first = text.find_first_of("\r\n");
    if (first == std::string_view::npos || text.substr(first, 2) == "\r\n") {
        return "\r\n";
    }
    return text.substr(first, 1);
}

}  // namespace

std::string GetPrivateProfileString(std::string_view section, std::string_view key,
                                    std::string_view defaultValue, std::size_t bufferSize,
                                    std::u16string_view file) {
    const std::string text = ReadWholeFile(file).value_or(std::string());
    const Place place = FindPlace(text, section, key);
    const std::string_view value = place.keyFound ? place.value : defaultValue;
    return std::string(value.substr(0, bufferSize - 1));
}

bool WritePrivateProfileString(std::string_view section, std::string_view key,
                               std::string_view value, std::u16string_view file, Disk disk) {
    value = value.substr(0, value.find_first_of(std::string_view("\r\n\0", 3)));
    const std::optional<std::string> old = ReadWholeFile(file);
    if (!old && DirectoryMatches(file)) {
        return false;  // it is there but cannot be read: not ours to replace
    }
    std::string text = old.value_or(std::string());
    const std::string lineEnd(LineEndOf(text));
    const Place place = FindPlace(text, section, key);
    std::string line;
    if (!place.sectionFound) {
        line.append("[").append(section).append("]").append(lineEnd);
    }
    line.append(key).append("=").append(value);
    if (place.keyFound &&
        std::string_view(text).substr(place.begin, place.end - place.begin) == line) {
        return disk == Disk::kWritable;  // a start writes most of what it has read
    }
    if (place.keyFound) {
        text.replace(place.begin, place.end - place.begin, line);
        return ReplaceFile(file, text, disk);
    }
    line.append(lineEnd);
    std::size_t at = place.sectionFound ? place.insert : text.size();
    if (at > 0 && text[at - 1] != '\n' && text[at - 1] != '\r' && text != kByteOrderMark) {
        text.insert(at, lineEnd);
        at += lineEnd.size();
    }
    text.insert(at, line);
    return ReplaceFile(file, text, disk);
}

}  // namespace platform

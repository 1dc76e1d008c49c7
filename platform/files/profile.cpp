#include "platform/files/profile.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/base/text.h"

namespace platform {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string_view Trim(std::string_view text) {
    const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
    while (!text.empty() && isBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

bool IsAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return (c & 0x80) == 0; });
}

bool SameName(std::string_view a, std::string_view b) {
    if (IsAscii(a) && IsAscii(b)) {
        return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                          [](char x, char y) { return UpperAscii(x) == UpperAscii(y); });
    }
    return EqualIgnoringCase(Widen(a), Widen(b));
}

// The same for names that are the same.
std::uint32_t HashOf(std::string_view name) {
    std::uint32_t hash = 2166136261U;  // FNV-1a
    const auto add = [&hash](char16_t unit) { hash = (hash ^ unit) * 16777619U; };
    if (IsAscii(name)) {
        for (const char c : name) {
            add(static_cast<char16_t>(UpperAscii(c)));
        }
        return hash;
    }
    for (const char16_t unit : Widen(name)) {
        add(UpperUnit(unit));
    }
    return hash;
}

// Walks a profile line by line; positions are byte offsets into the whole text.
class LineReader {
  public:
    explicit LineReader(std::string_view text) : LineReader(text, 0) {
        next_ = text.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0;
    }
    /// From the line on that begins there.
    LineReader(std::string_view text, std::size_t from) : text_(text), next_(from) {}

    bool Next() {
        if (next_ >= text_.size()) {
            return false;
        }
        begin_ = next_;
        contentEnd_ = std::min({NextOf('\r', cr_), NextOf('\n', lf_), text_.size()});
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
    // The next such byte, looked for again only once the line begins there or behind it.
    std::size_t NextOf(char byte, std::size_t& known) const {
        if (known <= begin_) {
            known = text_.find(byte, begin_);
        }
        return known;
    }

    std::string_view text_;
    std::size_t cr_ = 0;
    std::size_t lf_ = 0;
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

struct Found {
    std::string line;  // as it is written
    std::string value;
};

}  // namespace

// The settings of one section of a large file, in an order to find them by.
class SectionIndex {
  public:
    SectionIndex(std::string_view text, std::string_view section) : text_(text) {
        bool inSection = false;
        for (LineReader reader(text); reader.Next();) {
            if (const auto name = reader.Section()) {
                if (inSection) {
                    break;
                }
                inSection = SameName(*name, section);
            } else if (const auto setting = inSection ? reader.Setting() : std::nullopt) {
                places_.push_back({HashOf(setting->first), reader.Begin()});
            }
        }
        std::sort(places_.begin(), places_.end());
    }

    // As FindPlace finds it: of two with one name the first.
    std::optional<Found> Find(std::string_view key) const {
        const std::uint32_t hash = HashOf(key);
        for (auto place = std::lower_bound(places_.begin(), places_.end(), std::pair{hash, 0UL});
             place != places_.end() && place->first == hash; ++place) {
            LineReader reader(text_, place->second);
            const auto setting = reader.Next() ? reader.Setting() : std::nullopt;
            if (setting && SameName(setting->first, key)) {
                const std::size_t length = reader.ContentEnd() - reader.Begin();
                return Found{std::string(text_.substr(reader.Begin(), length)),
                             std::string(setting->second)};
            }
        }
        return std::nullopt;
    }

  private:
    std::string_view text_;
    std::vector<std::pair<std::uint32_t, std::size_t>> places_;
};

namespace {

// A start asks for one key after the other. From here on a file is not gone through for each of
// them, but remembered for as long as its stamp stays; below, that is not worth a thought.
constexpr std::int64_t kRemembered = std::int64_t{32} << 10;

}  // namespace

struct ProfileMemory::Contents {
    std::u16string file;
    FileStamp stamp;
    std::string section;
    std::string text;
    SectionIndex index{text, section};
};

ProfileMemory::ProfileMemory() = default;
ProfileMemory::~ProfileMemory() = default;

const ProfileMemory::Contents& ProfileMemory::Of(std::u16string_view file, const FileStamp& stamp,
                                                 std::string_view section) {
    if (last_ == nullptr || last_->file != file || last_->stamp != stamp ||
        last_->section != section) {
        last_.reset();  // never both in memory
        last_.reset(new Contents{std::u16string(file), stamp, std::string(section),
                                 ReadWholeFile(file, kMostProfile).value_or("")});
    }
    return *last_;
}

namespace {

std::optional<Found> Find(std::u16string_view file, std::string_view section, std::string_view key,
                          ProfileMemory* memory) {
    const auto stamp = memory == nullptr ? std::nullopt : StampOf(file);
    if (stamp && stamp->length >= kRemembered) {
        return memory->Of(file, *stamp, section).index.Find(key);
    }
    const std::string text = ReadWholeFile(file, kMostProfile).value_or("");
    const Place place = FindPlace(text, section, key);
    if (!place.keyFound) {
        return std::nullopt;
    }
    return Found{text.substr(place.begin, place.end - place.begin), std::string(place.value)};
}

// What could not be read again is not written.
bool Replace(std::u16string_view file, std::string_view text, Disk disk) {
    return text.size() <= kMostProfile && ReplaceFile(file, text, disk);
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
                                    std::u16string_view file, ProfileMemory* memory) {
    const auto found = Find(file, section, key, memory);
    return std::string(found ? std::string_view(found->value) : defaultValue)
        .substr(0, bufferSize - 1);
}

bool WritePrivateProfileString(std::string_view section, std::string_view key,
                               std::string_view value, std::u16string_view file, Disk disk,
                               ProfileMemory* memory) {
    value = value.substr(0, value.find_first_of(std::string_view("\r\n\0", 3)));
    std::string line;
    line.append(key).append("=").append(value);
    const auto found = Find(file, section, key, memory);
    if (found && found->line == line) {
        return disk == Disk::kWritable;  // a start writes much of what it has read
    }
    const std::optional<std::string> old = ReadWholeFile(file, kMostProfile);
    if (!old && IsTaken(file)) {
        return false;  // it is there but cannot be read: not ours to replace
    }
    std::string text = old.value_or(std::string());
    const std::string lineEnd(LineEndOf(text));
    const Place place = FindPlace(text, section, key);
    if (!place.sectionFound) {
        std::string opening("[");
        opening.append(section).append("]").append(lineEnd);
        line.insert(0, opening);
    }
    if (place.keyFound) {
        text.replace(place.begin, place.end - place.begin, line);
        return Replace(file, text, disk);
    }
    line.append(lineEnd);
    std::size_t at = place.sectionFound ? place.insert : text.size();
    if (at > 0 && text[at - 1] != '\n' && text[at - 1] != '\r' && text != kByteOrderMark) {
        text.insert(at, lineEnd);
        at += lineEnd.size();
    }
    text.insert(at, line);
    return Replace(file, text, disk);
}

}  // namespace platform

// The list's file: lines that end in CR LF. The signature, the number of rows, the current row,
// then a row's text and its payload, a line each. Nothing is escaped: a text that holds a CR shifts
// all lines behind it.
#include <algorithm>
#include <optional>
#include <string>

#include "controls/list/jlist.h"
#include "core/base/impulsevalue.h"
#include "platform/base/text.h"
#include "platform/files/files.h"

namespace sarnel {

namespace {

constexpr std::string_view kSignature = "OMK v1.1";
constexpr std::string_view kLineEnd = "\r\n";

// The number form of sequential files: a blank where a plus would stand, and a blank behind.
std::string NumberLine(Long number) {
    std::string line = number < 0 ? "" : " ";
    line += std::to_string(number);
    line += ' ';
    line += kLineEnd;
    return line;
}

// A row's text as a line; most are plain ASCII and go out as they lie in memory.
void WriteLine(platform::FileWriter& file, const RowText& text) {
    text.Units([&](const auto& units) {
        if constexpr (sizeof(units[0]) == 1) {
            if (std::none_of(units.begin(), units.end(), [](char c) { return UnitOf(c) > 0x7F; })) {
                file.Write(units);
                return;
            }
        }
        file.Write(platform::Narrow(text.Text()));
    });
    file.Write(kLineEnd);
}

// Hands out a file line by line. A line ends at CR or CR LF; an LF alone stays in the line.
class LineInput {
  public:
    explicit LineInput(std::u16string_view path) : file_(path) {}

    /// Good until the next call; none at the end of the file.
    std::optional<std::string_view> Next() {
        std::size_t end = buffer_.find('\r', at_);
        while (end == std::string::npos && More()) {
            end = buffer_.find('\r', at_);
        }
        if (end == std::string::npos) {
            end = buffer_.size();
        } else if (end + 1 == buffer_.size()) {
            const std::size_t length = end - at_;
            static_cast<void>(More());  // the LF of a pair may be in the next piece
            end = at_ + length;
        }
        if (at_ == buffer_.size()) {
            return std::nullopt;
        }
        const auto line = std::string_view(buffer_).substr(at_, end - at_);
        const auto rest = std::string_view(buffer_).substr(end);
        at_ = end + (rest.starts_with(kLineEnd) ? 2 : rest.empty() ? 0 : 1);
        return line;
    }

    std::optional<Long> NextNumber() {
        const auto line = Next();
        return line ? TextToLong(platform::Widen(*line)) : std::nullopt;
    }

  private:
    // Reads the next piece behind what has not been handed out yet.
    bool More() {
        buffer_.erase(0, at_);
        at_ = 0;
        return file_.IsOpen() && file_.Append(buffer_);
    }

    platform::FileReader file_;
    std::string buffer_;
    std::size_t at_ = 0;
};

}  // namespace

bool JList::Serialize(std::u16string_view path) const {
    const platform::Disk disk = windows_.GetDriver().GetDisk();
    if (platform::FileLength(path) && !platform::RemoveFile(path, disk)) {
        return false;
    }
    platform::FileWriter file(path, disk);
    if (!file.IsOpen()) {
        return false;
    }
    file.Write(kSignature);
    file.Write(kLineEnd);
    file.Write(NumberLine(ListCount()));
    file.Write(NumberLine(index_.current));
    for (Long i = 0; i < ListCount() && rows_.Has(i); ++i) {
        WriteLine(file, rows_.TextAt(i));
        WriteLine(file, rows_.DataAt(i));
    }
    return file.Close();
}

bool JList::Deserialize(std::u16string_view path) {
    if (!platform::OrdinaryFileMatches(path)) {
        return false;
    }
    LineInput input(path);
    const auto signature = input.Next();
    if (!signature || *signature != kSignature) {
        return false;
    }
    const std::optional<Long> count = input.NextNumber();
    const std::optional<Long> current = count ? input.NextNumber() : std::nullopt;
    if (!current) {
        return false;
    }
    std::u16string text;
    std::u16string data;
    for (Long i = 0; i < *count; ++i) {
        auto line = input.Next();
        if (!line) {
            return false;  // the rows so far stay, the indices are as AddItem left them
        }
        platform::WidenInto(*line, text);
        line = input.Next();
        if (!line) {
            return false;
        }
        platform::WidenInto(*line, data);
        AddItem(text, data);
    }
    ListCurrent(*current);
    index_.list = index_.caret = index_.focus = *current;
    HighlightCurrent();
    return true;
}

}  // namespace sarnel

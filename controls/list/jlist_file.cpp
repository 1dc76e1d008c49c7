// The list's file: lines that end in CR LF. The signature, the number of rows, the current row,
// then a row's text and its payload, a line each. Nothing is escaped: a text that holds a CR shifts
// all lines behind it.
#include <algorithm>
#include <optional>
#include <string>

#include "controls/list/jlist.h"
#include "core/impulsevalue.h"
#include "platform/files.h"
#include "platform/text.h"

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
    explicit LineInput(std::string_view file) : rest_(file) {}

    std::optional<std::string_view> Next() {
        if (rest_.empty()) {
            return std::nullopt;
        }
        const std::size_t end = std::min(rest_.find('\r'), rest_.size());
        const std::string_view line = rest_.substr(0, end);
        rest_.remove_prefix(end);
        rest_.remove_prefix(rest_.starts_with(kLineEnd) ? 2 : rest_.empty() ? 0 : 1);
        return line;
    }

    std::optional<Long> NextNumber() {
        const auto line = Next();
        return line ? TextToLong(platform::Widen(*line)) : std::nullopt;
    }

  private:
    std::string_view rest_;
};

}  // namespace

bool JList::Serialize(std::u16string_view path) const {
    if (platform::FileLength(path)) {
        platform::RemoveFile(path);
    }
    platform::FileWriter file(path);
    if (!file.IsOpen()) {
        return false;
    }
    file.Write(kSignature);
    file.Write(kLineEnd);
    file.Write(NumberLine(listCount_));
    file.Write(NumberLine(listCurrent_));
    for (Long i = 0; i < listCount_ && itemText_.Has(i); ++i) {
        WriteLine(file, itemText_[i]);
        WriteLine(file, itemData_[i]);
    }
    return file.Close();
}

bool JList::Deserialize(std::u16string_view path) {
    if (!platform::OrdinaryFileMatches(path)) {
        return false;
    }
    const std::optional<std::string> file = platform::ReadWholeFile(path);
    return file && ReadRows(*file);
}

bool JList::ReadRows(std::string_view file) {
    LineInput input(file);
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
        const auto textLine = input.Next();
        const auto dataLine = textLine ? input.Next() : std::nullopt;
        if (!dataLine) {
            return false;  // the rows so far stay, the indices are as AddItem left them
        }
        platform::WidenInto(*textLine, text);
        platform::WidenInto(*dataLine, data);
        AddItem(text, data);
    }
    ListCurrent(*current);
    listIndex_ = caretIndex_ = focusIndex_ = *current;
    HighlightCurrent();
    return true;
}

}  // namespace sarnel

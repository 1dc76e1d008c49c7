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
#include "platform/files/line_input.h"

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

std::optional<Long> NextNumber(platform::LineInput& input) {
    const auto line = input.Next();
    return line ? TextToLong(platform::Widen(*line)) : std::nullopt;
}

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
    platform::LineInput input(path);
    const auto signature = input.Next();
    if (!signature || *signature != kSignature) {
        return false;
    }
    const std::optional<Long> count = NextNumber(input);
    const std::optional<Long> current = count ? NextNumber(input) : std::nullopt;
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

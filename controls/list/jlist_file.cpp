// The list's file, written and read, and a copy of the list to be written elsewhere.
#include <optional>
#include <string>

#include "controls/list/jlist.h"
#include "controls/list/listfile.h"
#include "core/base/impulsevalue.h"
#include "platform/base/text.h"
#include "platform/files/files.h"
#include "platform/files/line_input.h"

namespace sarnel {

namespace {

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
    WriteListHead(file, ListCount(), index_.current);
    const auto writeLine = [&file](const auto& units) { WriteListLine(file, units); };
    for (Long i = 0; i < ListCount() && rows_.Has(i); ++i) {
        rows_.TextAt(i).Units(writeLine);
        rows_.DataAt(i).Units(writeLine);
    }
    return file.Close();
}

ListCopy JList::Copy() const {
    ListCopy copy(ListCount(), index_.current);
    for (Long i = 0; i < ListCount() && rows_.Has(i); ++i) {
        copy.AddRow(rows_.TextAt(i), rows_.DataAt(i));
    }
    return copy;
}

bool JList::Deserialize(std::u16string_view path) {
    if (!platform::OrdinaryFileMatches(path)) {
        return false;
    }
    platform::LineInput input(path);
    const auto signature = input.Next();
    if (!signature || *signature != kListSignature) {
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

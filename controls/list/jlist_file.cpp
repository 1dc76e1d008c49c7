// The list's file, written and read, and a copy of the list to be written elsewhere.
#include <optional>
#include <string>

#include "controls/list/jlist.h"
#include "controls/list/listfile.h"
#include "core/base/impulsevalue.h"
#include "platform/base/text.h"
#include "platform/files/files.h"

namespace sarnel {

namespace {

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
        at_ = end + (rest.starts_with(kListLineEnd) ? 2 : rest.empty() ? 0 : 1);
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
    LineInput input(path);
    const auto signature = input.Next();
    if (!signature || *signature != kListSignature) {
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

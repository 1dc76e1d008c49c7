#include "controls/list/listfile.h"

#include <algorithm>
#include <string>

#include "controls/list/rowtext.h"
#include "platform/base/text.h"

namespace sarnel {

namespace {

// The number form of sequential files: a blank where a plus would stand, and a blank behind.
std::string NumberLine(platform::Long number) {
    std::string line = number < 0 ? "" : " ";
    line += std::to_string(number);
    line += ' ';
    line += kListLineEnd;
    return line;
}

}  // namespace

void WriteListHead(platform::FileWriter& file, platform::Long count, platform::Long current) {
    file.Write(kListSignature);
    file.Write(kListLineEnd);
    file.Write(NumberLine(count));
    file.Write(NumberLine(current));
}

// Most lines are plain ASCII and go out as they lie in memory.
void WriteListLine(platform::FileWriter& file, std::string_view units) {
    if (std::none_of(units.begin(), units.end(), [](char c) { return UnitOf(c) > 0x7F; })) {
        file.Write(units);
    } else {
        std::u16string text(units.size(), u'\0');
        std::transform(units.begin(), units.end(), text.begin(), [](char c) { return UnitOf(c); });
        file.Write(platform::Narrow(text));
    }
    file.Write(kListLineEnd);
}

void WriteListLine(platform::FileWriter& file, std::u16string_view units) {
    file.Write(platform::Narrow(units));
    file.Write(kListLineEnd);
}

}  // namespace sarnel

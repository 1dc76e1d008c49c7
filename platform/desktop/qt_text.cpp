#include "platform/desktop/qt_text.h"

#include "platform/base/text.h"

namespace platform::desktop {

QString WholeCharacters(std::u16string_view text) {
    QString whole(reinterpret_cast<const QChar*>(text.data()), static_cast<qsizetype>(text.size()));
    for (qsizetype i = 0; i < whole.size(); ++i) {
        if (!whole[i].isSurrogate()) {
            continue;
        }
        if (whole[i].isHighSurrogate() && i + 1 < whole.size() && whole[i + 1].isLowSurrogate()) {
            ++i;
        } else {
            whole[i] = QChar::ReplacementCharacter;
        }
    }
    return whole;
}

QString OneLine(std::u16string_view text) {
    QString line = WholeCharacters(text);
    for (QChar& unit : line) {
        const auto category = unit.category();
        if (category == QChar::Other_Control || category == QChar::Separator_Line ||
            category == QChar::Separator_Paragraph) {
            unit = u' ';
        } else if (unit == QChar::ObjectReplacementCharacter) {
            unit = QChar::ReplacementCharacter;
        }
    }
    return line;
}

QString Caption(std::u16string_view text) {
    return OneLine(
        text.substr(0, InsidePair(text, kLongestCaption) ? kLongestCaption - 1 : kLongestCaption));
}

}  // namespace platform::desktop

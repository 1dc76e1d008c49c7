#include "platform/desktop/word_fonts.h"

#include <QFontDatabase>
#include <QGlyphRun>
#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <set>

#include "platform/desktop/emoji.h"

namespace platform::desktop {

namespace {

struct Script {
    char16_t first;
    char16_t last;
    QFontDatabase::WritingSystem system;
};
// In order of their characters.
constexpr std::array kScripts = {
    Script{0x0590, 0x05FF, QFontDatabase::Hebrew},
    Script{0x0600, 0x06FF, QFontDatabase::Arabic},
    Script{0x0700, 0x074F, QFontDatabase::Syriac},
    Script{0x0750, 0x077F, QFontDatabase::Arabic},
    Script{0x0780, 0x07BF, QFontDatabase::Thaana},
    Script{0x07C0, 0x07FF, QFontDatabase::Nko},
    Script{0x08A0, 0x08FF, QFontDatabase::Arabic},
    Script{0x0900, 0x097F, QFontDatabase::Devanagari},
    Script{0x0980, 0x09FF, QFontDatabase::Bengali},
    Script{0x0A00, 0x0A7F, QFontDatabase::Gurmukhi},
    Script{0x0A80, 0x0AFF, QFontDatabase::Gujarati},
    Script{0x0B00, 0x0B7F, QFontDatabase::Oriya},
    Script{0x0B80, 0x0BFF, QFontDatabase::Tamil},
    Script{0x0C00, 0x0C7F, QFontDatabase::Telugu},
    Script{0x0C80, 0x0CFF, QFontDatabase::Kannada},
    Script{0x0D00, 0x0D7F, QFontDatabase::Malayalam},
    Script{0x0D80, 0x0DFF, QFontDatabase::Sinhala},
    Script{0x0E00, 0x0E7F, QFontDatabase::Thai},
    Script{0x0E80, 0x0EFF, QFontDatabase::Lao},
    Script{0x0F00, 0x0FFF, QFontDatabase::Tibetan},
    Script{0x1000, 0x109F, QFontDatabase::Myanmar},
    Script{0x1780, 0x17FF, QFontDatabase::Khmer},
    Script{0x1800, 0x18AF, QFontDatabase::Any},
    Script{0xFB1D, 0xFB4F, QFontDatabase::Hebrew},
    Script{0xFB50, 0xFDFF, QFontDatabase::Arabic},
    Script{0xFE70, 0xFEFF, QFontDatabase::Arabic},
};

const Script* ScriptOf(QChar unit) {
    const auto found = std::ranges::lower_bound(kScripts, unit.unicode(), {},
                                                [](const Script& s) { return s.last; });
    return found != kScripts.end() && unit.unicode() >= found->first ? &*found : nullptr;
}

// Joiners and marks belong to the word around them.
bool GoesWithAny(QChar unit) {
    return unit.unicode() == 0x200C || unit.unicode() == 0x200D || unit.isMark();
}

using Letters = std::set<char16_t>;

bool HasAll(const QString& family, const QFont& font, const Letters& letters) {
    QFont asked = font;
    asked.setFamilies({family});
    const QRawFont raw = QRawFont::fromFont(asked);
    return raw.isValid() && std::ranges::all_of(letters, [&](char16_t letter) {
               return raw.supportsCharacter(QChar(letter));
           });
}

// A family with all of the letters, among those at hand first.
std::optional<QString> FamilyWith(const Letters& letters, const QFont& font,
                                  const QStringList& atHand, QFontDatabase::WritingSystem system) {
    for (const QString& family : atHand) {
        if (HasAll(family, font, letters)) {
            return family;
        }
    }
    for (const QString& family : QFontDatabase::families(system)) {
        if (HasAll(family, font, letters)) {
            return family;
        }
    }
    return std::nullopt;
}

QStringList FamiliesOf(const QList<QGlyphRun>& runs) {
    QStringList families;
    for (const QGlyphRun& run : runs) {
        families.append(run.rawFont().familyName());
    }
    return families;
}

// The font for all pictures; asked for once, and only when there is a picture.
const QString& PictureFamily() {
    static const QString family = [] {
        for (const QString& name : QFontDatabase::families()) {
            if (name.contains(QLatin1String("emoji"), Qt::CaseInsensitive) &&
                HasColours(QRawFont::fromFont(QFont(name)))) {
                return name;
            }
        }
        return QString();
    }();
    return family;
}

}  // namespace

void WordLooks::SetFamily(const QString& name, qsizetype start, qsizetype length, qsizetype all) {
    units.resize(static_cast<std::size_t>(all));
    auto found = std::ranges::find(families, name);
    if (found == families.end()) {
        found = families.insert(found, name);
    }
    const auto number = static_cast<std::uint8_t>(found - families.begin() + 1);
    for (qsizetype unit = start; unit < start + length; ++unit) {
        units[static_cast<std::size_t>(unit)].family = number;
    }
}

qsizetype WordLooks::EndOfPart(qsizetype start, qsizetype all) const {
    if (units.empty()) {
        return all;
    }
    const auto first = units.begin() + start;
    return std::find_if(first, units.end(), [&](const Look& look) { return look != *first; }) -
           units.begin();
}

bool HangsTogether(QChar unit) {
    return ScriptOf(unit) != nullptr;
}

bool IsJoinedToNext(QChar unit) {
    constexpr std::array kJoined = {QFontDatabase::Arabic,     QFontDatabase::Syriac,
                                    QFontDatabase::Nko,        QFontDatabase::Any,
                                    QFontDatabase::Devanagari, QFontDatabase::Bengali,
                                    QFontDatabase::Gurmukhi};
    const Script* script = ScriptOf(unit);
    return script != nullptr && std::ranges::find(kJoined, script->system) != kJoined.end();
}

void FindPictures(QString& text, WordLooks& looks) {
    const auto signs = EmojiIn(
        {reinterpret_cast<const char16_t*>(text.utf16()), static_cast<std::size_t>(text.size())});
    if (signs.empty() || PictureFamily().isEmpty()) {
        return;
    }
    constexpr QChar kAsPicture = u'\xFE0F';
    for (const Part& sign : signs) {
        const auto start = static_cast<qsizetype>(sign.start);
        const auto length = static_cast<qsizetype>(sign.length);
        looks.SetFamily(PictureFamily(), start, length, text.size());
        std::stable_partition(text.begin() + start, text.begin() + start + length,
                              [&](QChar unit) { return unit != kAsPicture; });
    }
}

bool FindWholeWords(const QString& text, const QFont& font, const QTextLine& shaped,
                    WordLooks& looks) {
    bool changed = false;
    for (qsizetype start = 0; start < text.size(); ++start) {
        const Script* script = ScriptOf(text[start]);
        if (script == nullptr) {
            continue;
        }
        Letters letters;
        qsizetype end = start;
        for (; end < text.size() && (ScriptOf(text[end]) != nullptr || GoesWithAny(text[end]));
             ++end) {
            letters.insert(text[end].unicode());
        }
        const auto runs = shaped.glyphRuns(static_cast<int>(start), static_cast<int>(end - start));
        if (runs.size() > 1) {
            if (const auto family = FamilyWith(letters, font, FamiliesOf(runs), script->system)) {
                looks.SetFamily(*family, start, end - start, text.size());
                changed = true;
            }
        }
        start = end;
    }
    return changed;
}

bool HasColours(const QRawFont& font) {
    static std::map<QString, bool> known;
    const auto [entry, isNew] = known.try_emplace(font.familyName(), false);
    if (isNew) {
        entry->second = !font.fontTable("CBLC").isEmpty() || !font.fontTable("COLR").isEmpty();
    }
    return entry->second;
}

}  // namespace platform::desktop

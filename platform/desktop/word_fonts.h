// Which parts of a text need another font than the line's: pictures one with colours, and a word
// whose letters hang together one that has all of them. The toolkit by itself goes character by
// character, which tears such a word, and a picture of several characters, apart.
#pragma once

#include <QFont>
#include <QRawFont>
#include <QString>
#include <QTextLine>
#include <cstdint>
#include <vector>

namespace platform::desktop {

/// How parts of a text differ from the rest; empty: nowhere.
struct WordLooks {
    struct Look {
        std::uint8_t family = 0;  ///< of `families`, from 1 on; 0: the line's own
        int size = 0;             ///< pixels; 0: the line's own
        int drop = 0;             ///< pixels below the line's base line
        bool operator==(const Look&) const = default;
    };
    std::vector<QString> families;
    std::vector<Look> units;  ///< a look for each unit of the text, or none at all

    void SetFamily(const QString& name, qsizetype start, qsizetype length, qsizetype all);
    Look At(qsizetype unit) const {
        return units.empty() ? Look{} : units[static_cast<std::size_t>(unit)];
    }
    /// Where the part ends that looks as its first unit does, in a text of so many units.
    qsizetype EndOfPart(qsizetype start, qsizetype all) const;
};

/// Whether letters of this kind hang together, or above and below each other.
bool HangsTogether(QChar unit);
/// Whether they touch, and would be torn apart by anything between them.
bool IsJoinedToNext(QChar unit);

/// Gives pictures their font, if there is one with colours. The selectors in them, which have said
/// all they have to say and stand in no font, go to the picture's end: the toolkit would tear it
/// apart to find a font for them.
void FindPictures(QString& text, WordLooks& looks);
/// Gives words that hang together a font with all of their letters, where the line as it was shaped
/// has several and there is such a font. Whether anything has changed.
bool FindWholeWords(const QString& text, const QFont& font, const QTextLine& shaped,
                    WordLooks& looks);

/// Whether a font's glyphs bring their own colours.
bool HasColours(const QRawFont& font);

}  // namespace platform::desktop

#include "platform/desktop/key_codes.h"

#include <algorithm>
#include <array>

#include "platform/base/keys.h"

namespace platform::desktop {

namespace {

struct KeyPair {
    int key;  // Qt::Key_...
    Long code;
};

constexpr std::array kNamedKeys = {
    KeyPair{Qt::Key_Backspace, VK_BACK},  KeyPair{Qt::Key_Tab, VK_TAB},
    KeyPair{Qt::Key_Backtab, VK_TAB},     KeyPair{Qt::Key_Clear, VK_CLEAR},
    KeyPair{Qt::Key_Return, VK_RETURN},   KeyPair{Qt::Key_Enter, VK_RETURN},
    KeyPair{Qt::Key_Shift, VK_SHIFT},     KeyPair{Qt::Key_Control, VK_CONTROL},
    KeyPair{Qt::Key_Alt, VK_MENU},        KeyPair{Qt::Key_AltGr, VK_MENU},
    KeyPair{Qt::Key_Pause, VK_PAUSE},     KeyPair{Qt::Key_CapsLock, VK_CAPITAL},
    KeyPair{Qt::Key_Escape, VK_ESCAPE},   KeyPair{Qt::Key_Space, VK_SPACE},
    KeyPair{Qt::Key_PageUp, VK_PRIOR},    KeyPair{Qt::Key_PageDown, VK_NEXT},
    KeyPair{Qt::Key_End, VK_END},         KeyPair{Qt::Key_Home, VK_HOME},
    KeyPair{Qt::Key_Left, VK_LEFT},       KeyPair{Qt::Key_Up, VK_UP},
    KeyPair{Qt::Key_Right, VK_RIGHT},     KeyPair{Qt::Key_Down, VK_DOWN},
    KeyPair{Qt::Key_Print, VK_SNAPSHOT},  KeyPair{Qt::Key_Insert, VK_INSERT},
    KeyPair{Qt::Key_Delete, VK_DELETE},   KeyPair{Qt::Key_Help, VK_HELP},
    KeyPair{Qt::Key_Super_L, VK_LWIN},    KeyPair{Qt::Key_Super_R, VK_RWIN},
    KeyPair{Qt::Key_Meta, VK_LWIN},       KeyPair{Qt::Key_Menu, VK_APPS},
    KeyPair{Qt::Key_NumLock, VK_NUMLOCK}, KeyPair{Qt::Key_ScrollLock, VK_SCROLL},
};

constexpr std::array kPadKeys = {
    KeyPair{Qt::Key_Asterisk, VK_MULTIPLY}, KeyPair{Qt::Key_Plus, VK_ADD},
    KeyPair{Qt::Key_Minus, VK_SUBTRACT},    KeyPair{Qt::Key_Period, VK_DECIMAL},
    KeyPair{Qt::Key_Comma, VK_DECIMAL},     KeyPair{Qt::Key_Slash, VK_DIVIDE},
};

constexpr std::array kSigns = {
    KeyPair{Qt::Key_Semicolon, VK_OEM_1},    KeyPair{Qt::Key_Colon, VK_OEM_1},
    KeyPair{Qt::Key_Plus, VK_OEM_PLUS},      KeyPair{Qt::Key_Equal, VK_OEM_PLUS},
    KeyPair{Qt::Key_Comma, VK_OEM_COMMA},    KeyPair{Qt::Key_Less, VK_OEM_COMMA},
    KeyPair{Qt::Key_Minus, VK_OEM_MINUS},    KeyPair{Qt::Key_Underscore, VK_OEM_MINUS},
    KeyPair{Qt::Key_Period, VK_OEM_PERIOD},  KeyPair{Qt::Key_Greater, VK_OEM_PERIOD},
    KeyPair{Qt::Key_Slash, VK_OEM_2},        KeyPair{Qt::Key_Question, VK_OEM_2},
    KeyPair{Qt::Key_QuoteLeft, VK_OEM_3},    KeyPair{Qt::Key_AsciiTilde, VK_OEM_3},
    KeyPair{Qt::Key_BracketLeft, VK_OEM_4},  KeyPair{Qt::Key_BraceLeft, VK_OEM_4},
    KeyPair{Qt::Key_Backslash, VK_OEM_5},    KeyPair{Qt::Key_Bar, VK_OEM_5},
    KeyPair{Qt::Key_BracketRight, VK_OEM_6}, KeyPair{Qt::Key_BraceRight, VK_OEM_6},
    KeyPair{Qt::Key_Apostrophe, VK_OEM_7},   KeyPair{Qt::Key_QuoteDbl, VK_OEM_7},
};

template <std::size_t N>
Long Find(const std::array<KeyPair, N>& pairs, int key) {
    const auto found = std::find_if(pairs.begin(), pairs.end(),
                                    [key](const KeyPair& pair) { return pair.key == key; });
    return found == pairs.end() ? 0 : found->code;
}

// A row of keys by where they are: the window server's number of its first key, and what the keys
// type on the plainest keyboard.
struct KeyRow {
    quint32 firstKey;
    const char* codes;
};
constexpr std::array kRows = {KeyRow{10, "1234567890"}, KeyRow{24, "QWERTYUIOP"},
                              KeyRow{38, "ASDFGHJKL"}, KeyRow{52, "ZXCVBNM"}};
constexpr std::size_t kDigitRow = 0;

Long CodeInRow(const KeyRow& row, quint32 key) {
    const std::size_t length = std::char_traits<char>::length(row.codes);
    return key >= row.firstKey && key - row.firstKey < length ? row.codes[key - row.firstKey] : 0;
}

Long CodeByPlace(quint32 key) {
    for (const KeyRow& row : kRows) {
        if (const Long code = CodeInRow(row, key)) {
            return code;
        }
    }
    return 0;
}

Long PadCode(int key) {
    if (key >= Qt::Key_0 && key <= Qt::Key_9) {
        return VK_NUMPAD0 + (key - Qt::Key_0);
    }
    return Find(kPadKeys, key);
}

// Ctrl and Alt together stand for AltGr where the key types something else with them than by
// itself.
bool IsThirdLevel(const QKeyEvent& event, Long shift, Long code) {
    constexpr Long kBoth = kCtrlBit | kAltBit;
    const QString text = event.text().toUpper();
    return (shift & kBoth) == kBoth && !text.isEmpty() && text.front().isPrint() &&
           text.front().unicode() != code;
}

}  // namespace

Long KeyCodeOf(const QKeyEvent& event) {
    const int key = event.key();
    if ((event.modifiers() & Qt::KeypadModifier) != 0) {
        if (const Long code = PadCode(key)) {
            return code;
        }
    }
    if (const Long code = Find(kNamedKeys, key)) {
        return code;
    }
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24) {
        return VK_F1 + (key - Qt::Key_F1);
    }
    if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9)) {
        return key;
    }
    const quint32 place = event.nativeScanCode();
    if (const Long digit = CodeInRow(kRows[kDigitRow], place)) {
        return digit;
    }
    if (const Long code = Find(kSigns, key)) {
        return code;
    }
    // Beyond Latin-1 the layout has no Latin letters: its letters go by their place.
    constexpr int kLastLatin = 0x24F;
    const bool isCharacter = key > kLastLatin && key < Qt::Key_Escape;
    return isCharacter ? CodeByPlace(place) : 0;
}

Long ShiftOf(Qt::KeyboardModifiers modifiers) {
    return ((modifiers & Qt::ShiftModifier) != 0 ? kShiftBit : 0) |
           ((modifiers & Qt::ControlModifier) != 0 ? kCtrlBit : 0) |
           ((modifiers & Qt::AltModifier) != 0 ? kAltBit : 0);
}

Long ShiftAfter(const QKeyEvent& event, Long code) {
    const Long shift = ShiftOf(event.modifiers());
    const Long own = code == VK_SHIFT             ? kShiftBit
                     : code == VK_CONTROL         ? kCtrlBit
                     : event.key() == Qt::Key_Alt ? kAltBit
                                                  : 0;
    return event.type() == QEvent::KeyPress ? shift | own : shift & ~own;
}

std::u16string TypedText(const QKeyEvent& event, Long code) {
    const Long shift = ShiftOf(event.modifiers());
    const bool alone = shift == kCtrlBit || shift == (kCtrlBit | kShiftBit);
    if (alone && code >= 'A' && code <= 'Z') {
        return std::u16string(1, static_cast<char16_t>(code - 'A' + 1));
    }
    const bool isAlt = (shift & kAltBit) != 0 && !IsThirdLevel(event, shift, code);
    if (isAlt || (event.modifiers() & Qt::MetaModifier) != 0) {
        return {};
    }
    switch (code) {
        case VK_BACK:
        case VK_TAB:
        case VK_RETURN:
        case VK_ESCAPE:
            return (shift & kCtrlBit) != 0 ? std::u16string()
                                           : std::u16string(1, static_cast<char16_t>(code));
        default:
            break;
    }
    std::u16string text = event.text().toStdU16String();
    std::erase_if(text, [](char16_t unit) { return unit < u' ' || unit == 0x7F; });
    return text;
}

}  // namespace platform::desktop

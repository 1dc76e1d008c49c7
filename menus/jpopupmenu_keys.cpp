// Key combinations: from the text in a caption to the press of the keys.
#include <array>
#include <utility>

#include "core/base/failure.h"
#include "core/base/impulsevalue.h"
#include "menus/jpopupmenu.h"
#include "platform/base/keys.h"
#include "platform/base/text.h"

namespace sarnel {

using namespace platform;

namespace {

struct NamedPiece {
    std::u16string_view name;
    Long modifier;
    Long code;
};
// Looked up from the front. Nothing names the Page Down key: the name of Page Up stands twice, and
// the first one counts. "Break" is not the Pause key. Both are meant so.
constexpr std::array<NamedPiece, 19> kPieces{{
    {u"Ctrl", kCtrlBit, 0},        {u"Alt", kAltBit, 0},      {u"Shift", kShiftBit, 0},
    {u"Home", 0, VK_HOME},         {u"End", 0, VK_END},       {u"Left Arrow", 0, VK_LEFT},
    {u"Right Arrow", 0, VK_RIGHT}, {u"Up Arrow", 0, VK_UP},   {u"Down Arrow", 0, VK_DOWN},
    {u"Break", 0, VK_CLEAR},       {u"Page Up", 0, VK_PRIOR}, {u"Page Up", 0, VK_NEXT},
    {u"Del", 0, VK_DELETE},        {u"Insert", 0, VK_INSERT}, {u"Esc", 0, VK_ESCAPE},
    {u"Tab", 0, VK_TAB},           {u"Enter", 0, VK_RETURN},  {u"Add", 0, VK_ADD},
    {u"Subtract", 0, VK_SUBTRACT},
}};

void ReadPiece(std::u16string_view piece, KeyCombination& keys) {
    constexpr std::int64_t kHighestCode = 32767;  // a code has 16 bits
    if (piece.size() == 1) {
        keys.code = UpperUnit(piece.front());
        return;
    }
    for (const NamedPiece& known : kPieces) {
        if (known.name == piece) {
            keys.modifiers |= known.modifier;
            keys.code = known.code != 0 ? known.code : keys.code;
            return;
        }
    }
    if (piece.starts_with(u"F")) {
        if (const auto number = TextToLong(std::u16string(piece.substr(1)))) {
            const std::int64_t code = std::int64_t{VK_F1} + *number - 1;
            keys.code = code <= kHighestCode && code >= -kHighestCode - 1 ? static_cast<Long>(code)
                                                                          : keys.code;
        }
    }
}

}  // namespace

KeyCombination ParseKeyText(std::u16string_view keyText) {
    KeyCombination keys;
    while (!keyText.empty()) {
        const std::size_t plus = keyText.find(u'+');
        ReadPiece(keyText.substr(0, plus), keys);
        keyText =
            plus == std::u16string_view::npos ? std::u16string_view() : keyText.substr(plus + 1);
    }
    return keys;
}

bool JPopupMenu::AcceleratorPress(Long key, Long modifiers) {
    for (Long i = 1; i <= Count(); ++i) {
        const KeyCombination& keys = At(i).combination;
        if (keys.code != 0 && keys == KeyCombination{modifiers, key} && At(i).enabled) {
            Long item = i;
            if (const auto handler = onClick) {
                Step([&] { handler(item); });
            }
            return true;
        }
    }
    return false;
}

}  // namespace sarnel

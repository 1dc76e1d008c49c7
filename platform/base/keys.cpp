#include "platform/base/keys.h"

#include <string_view>

namespace platform {

namespace {

bool IsIn(Long code, Long first, Long last) {
    return code >= first && code <= last;
}

bool IsCharacter(Long code) {
    return code == VK_SPACE || IsIn(code, '0', '9') || IsIn(code, 'A', 'Z') ||
           IsIn(code, VK_NUMPAD0, VK_DIVIDE) || IsIn(code, VK_OEM_1, VK_OEM_3) ||
           IsIn(code, VK_OEM_4, VK_OEM_7) || code == VK_OEM_102;
}

}  // namespace

bool IsWritingKey(Long code, Long modifiers) {
    if ((modifiers & kAltBit) != 0) {
        return false;
    }
    switch (code) {
        case VK_BACK:
        case VK_DELETE:
        case VK_HOME:
        case VK_END:
        case VK_LEFT:
        case VK_UP:
        case VK_RIGHT:
        case VK_DOWN:
            return true;
        case 'A':
        case 'C':
        case 'V':
        case 'X':
        case 'Z':
            return modifiers == kCtrlBit || (modifiers & kCtrlBit) == 0;
        default:
            return (modifiers & kCtrlBit) == 0 && IsCharacter(code);
    }
}

}  // namespace platform

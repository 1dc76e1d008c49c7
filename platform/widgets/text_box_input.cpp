// The half of the text box that the user meets: keys, typed text, mouse, clipboard, focus.
#include <utility>

#include "platform/base/keys.h"
#include "platform/base/text.h"
#include "platform/widgets/text_box.h"

namespace platform {

namespace {

// A single line takes no more than can be drawn of it.
constexpr std::size_t kLongestText = 8192;

bool IsControl(char16_t unit) {
    return unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
}

// As it goes into a single line: a blank for each line end, nothing for other control characters.
std::u16string OneLine(std::u16string_view text) {
    std::u16string line;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool ofPair = text[i] == u'\n' && i > 0 && text[i - 1] == u'\r';
        if ((text[i] == u'\r' || text[i] == u'\n') && !ofPair) {
            line += u' ';
        } else if (!IsControl(text[i])) {
            line += text[i];
        }
    }
    return line;
}

}  // namespace

Long TextBox::HandleMessage(const Message& message) {
    switch (message.id) {
        case WM_KEYDOWN:
            KeyDown(message.wParam, message.lParam);
            return 0;
        case WM_KEYUP: {
            Long code = message.wParam;
            Raised("KeyUp", {code, message.lParam});
            if (const auto handler = onKeyUp) {
                handler(code, message.lParam);
            }
            return 0;
        }
        case WM_CHAR:
            KeyPress(message.wParam);
            return 0;
        case WM_IME_COMPOSITION:
            ScrollToCaret();
            Draw();
            return 0;
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
            RaiseFocus(message.id == WM_SETFOCUS);
            return 0;
        case WM_MOUSEWHEEL:
            return Wheel(message);
        case EM_GETLINECOUNT:
            return LineCount();
        case EM_LINESCROLL:
            LineScroll(message.lParam);
            return MultiLine() ? 1 : 0;
        default:
            return Widget::HandleMessage(message);
    }
}

void TextBox::RaiseFocus(bool gained) {
    caretHidden_ = caretHidden_ && !gained;
    firstHalf_ = 0;
    Draw();
    Raised(gained ? "GotFocus" : "LostFocus");
    if (const auto handler = gained ? onGotFocus : onLostFocus) {
        handler();
    }
}

Long TextBox::Wheel(const Message& message) {
    if (!MultiLine()) {
        return Widget::HandleMessage(message);
    }
    LineScroll(message.wParam < 0 ? linesPerNotch_ : -linesPerNotch_);
    return 0;
}

// Keys.

void TextBox::KeyDown(Long code, Long shift) {
    Raised("KeyDown", {code, shift});
    if (const auto handler = onKeyDown) {
        handler(code, shift);
    }
    if (code == 0 || (shift & kAltBit) != 0 || EditingKey(code, shift)) {
        return;
    }
    if (MultiLine()) {
        PageKey(code);
    } else {
        LineKey(code, shift);
    }
}

bool TextBox::EditingKey(Long code, Long shift) {
    constexpr Long kBits = kShiftBit | kCtrlBit;
    const bool ctrl = (shift & kBits) == kCtrlBit;
    const bool shifted = (shift & kBits) == kShiftBit;
    if (ctrl && code == 'A') {
        edit_.Select(0, edit_.Text().size());
        ScrollToCaret();
        Draw();
    } else if (ctrl && (code == 'C' || code == VK_INSERT)) {
        Copy();
    } else if ((ctrl && code == 'X') || (shifted && code == VK_DELETE)) {
        Cut();
    } else if ((ctrl && code == 'V') || (shifted && code == VK_INSERT)) {
        Paste();
    } else if (ctrl && code == 'Z') {
        Undo();
    } else {
        return false;
    }
    return true;
}

void TextBox::LineKey(Long code, Long shift) {
    const bool extend = (shift & kShiftBit) != 0;
    const bool words = (shift & kCtrlBit) != 0;
    const std::size_t caret = edit_.Caret();
    const bool leaves = edit_.HasSelection() && !extend && !words;  // an arrow goes to its end
    const std::size_t before = words ? edit_.WordBefore(caret) : edit_.Before(caret);
    const std::size_t after = words ? edit_.WordAfter(caret) : edit_.After(caret);
    switch (code) {
        case VK_LEFT:
            MoveCaret(leaves ? edit_.SelStart() : before, extend);
            break;
        case VK_RIGHT:
            MoveCaret(leaves ? edit_.SelEnd() : after, extend);
            break;
        case VK_HOME:
            MoveCaret(0, extend);
            break;
        case VK_END:
            MoveCaret(edit_.Text().size(), extend);
            break;
        case VK_BACK:
            EraseTo(before);
            break;
        case VK_DELETE:
            EraseTo(after);
            break;
        default:
            break;
    }
}

void TextBox::PageKey(Long code) {
    switch (code) {
        case VK_UP:
            LineScroll(-1);
            break;
        case VK_DOWN:
            LineScroll(1);
            break;
        case VK_PRIOR:
            LineScroll(-VisibleLines());
            break;
        case VK_NEXT:
            LineScroll(VisibleLines());
            break;
        case VK_HOME:
            LineScroll(-LineCount());
            break;
        case VK_END:
            LineScroll(LineCount());
            break;
        default:
            break;
    }
}

// A character past U+FFFF comes in two halves and goes into the text as a whole.
void TextBox::KeyPress(Long code) {
    Raised("KeyPress", {code});
    if (const auto handler = onKeyPress) {
        handler(code);
    }
    const auto unit = static_cast<char16_t>(code);
    const char16_t half = std::exchange(firstHalf_, char16_t{0});
    if (Locked() || IsControl(unit)) {
        return;
    }
    if (IsHighSurrogate(unit)) {
        firstHalf_ = unit;
    } else if (half != 0 && IsLowSurrogate(unit)) {
        Insert(std::u16string{half, unit});
    } else {
        Insert(std::u16string{unit});
    }
}

// What they do to the text.

void TextBox::MoveCaret(std::size_t place, bool extend) {
    edit_.MoveTo(place, extend);
    ScrollToCaret();
    Draw();
}

void TextBox::Changed() {
    lines_.clear();
    topLine_ = std::min(topLine_, MostTopLine());
    ScrollToCaret();
    Draw();
    Raised("Change");
    if (const auto handler = onChange) {
        handler();
    }
}

void TextBox::Insert(std::u16string_view text) {
    const std::size_t others = edit_.Text().size() - edit_.Selected().size();
    std::size_t room = others < kLongestText ? kLongestText - others : 0;
    room -= InsidePair(text, room) ? 1 : 0;
    text = text.substr(0, room);
    if (!text.empty()) {
        edit_.Replace(text);
        Changed();
    }
}

void TextBox::EraseTo(std::size_t place) {
    if (!Locked() && edit_.Erase(place)) {
        Changed();
    }
}

void TextBox::Copy() const {
    if (edit_.HasSelection()) {
        windows_.GetDriver().SetClipboardText(edit_.Selected());
    }
}

void TextBox::Cut() {
    Copy();
    if (edit_.HasSelection()) {
        EraseTo(edit_.Caret());
    }
}

void TextBox::Paste() {
    if (!Locked()) {
        Insert(OneLine(windows_.GetDriver().ClipboardText()));
    }
}

void TextBox::Undo() {
    if (!Locked() && edit_.Undo()) {
        Changed();
    }
}

// The mouse.

void TextBox::MouseDown(const MouseEvent& event) {
    windows_.SetFocus(HWnd());
    windows_.EndComposition();
    if (event.Button == kLeftButton) {
        dragging_ = true;
        MoveCaret(PlaceAt(event, Nearest::kGap), (event.Shift & kShiftBit) != 0);
    }
    RaiseMouseDown(event);
}

void TextBox::MouseMove(const MouseEvent& event) {
    if (dragging_) {
        const std::size_t place = PlaceAt(event, Nearest::kGap);
        if (place != edit_.Caret()) {
            MoveCaret(place, true);
        }
    }
    RaiseMouseMove(event);
}

void TextBox::MouseUp(const MouseEvent& event) {
    const bool clicks = EndsClick(event) && event.Button == kLeftButton;
    dragging_ = dragging_ && event.Button != kLeftButton;
    RaiseMouseUp(event);
    if (clicks) {
        RaiseClick();
    } else if (event.Button == kRightButton) {
        const Rect place = windows_.GetWindowRect(HWnd());
        const Point at{place.left + static_cast<Long>(event.X),
                       place.top + static_cast<Long>(event.Y)};
        windows_.SendMessage(HWnd(), WM_CONTEXTMENU, HWnd(), WordOf(at));
    }
}

void TextBox::DoubleClick(const MouseEvent& event) {
    if (event.Button != kLeftButton) {
        MouseDown(event);
        return;
    }
    windows_.SetFocus(HWnd());
    edit_.SelectWordAt(PlaceAt(event, Nearest::kUnit));
    ScrollToCaret();
    Draw();
    RaiseDblClick();
}

}  // namespace platform

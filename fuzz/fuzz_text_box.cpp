// Whatever keys, characters, input methods and mouse do to a text box, its selection stays inside
// the text and parts no character, and a page keeps its text.
#include <array>

#include "fuzz/fuzz.h"
#include "platform/base/keys.h"
#include "platform/base/text.h"
#include "platform/headless/headless_driver.h"
#include "platform/widgets/text_box.h"

namespace {

using namespace platform;

constexpr std::array<Long, 16> kKeys{VK_LEFT, VK_RIGHT, VK_HOME,   VK_END,    VK_UP, VK_DOWN,
                                     VK_BACK, VK_NEXT,  VK_DELETE, VK_INSERT, 'A',   'C',
                                     'X',     'V',      VK_PRIOR,  'Z'};
// Halves of pairs, a byte that is no text, a combining mark, marks, blanks, control characters.
constexpr std::array<char16_t, 16> kUnits{u'a',   u'b',   u' ',   u'.',  0xD834, 0xDD1E,
                                          0xDCE9, 0x0301, u'\r',  u'\n', u'\t',  0x01,
                                          0x00E9, 0x65E5, 0x3000, 0xFFFF};

class Desk {
  public:
    explicit Desk(TextBox::Kind kind) : box_(windows_, window_.HWnd(), {0, 0, 60, 50}, kind) {
        window_.Visible(true);
        windows_.SetFocus(box_.HWnd());
        driver_.SetClipboardText(u"one \xD834\xDD1E\r\ntwo\xDCE9");
    }

    // The upper half of a byte says what is done, the lower half with what.
    void Do(unsigned char byte) {
        const auto value = static_cast<std::size_t>(byte & 15U);
        const auto number = static_cast<Long>(value);
        switch (byte >> 4U) {
            case 0:
            case 1:
            case 2:
            case 3:
                windows_.Deliver(KeyChanged{kKeys.at(value), byte >> 4U, true});
                break;
            case 4:
                box_.SelStart(number - 2);
                break;
            case 5:
                box_.SelLength(number - 2);
                break;
            case 6:
                box_.SelText(std::u16string(2, kUnits.at(value)));
                break;
            case 7:
                box_.LineScroll(number - 8);
                break;
            case 8:
                box_.Move(0, 0, number * number, 6 * number);
                break;
            case 9:
            case 10: {
                const Point at{3 * number, (byte & 16U) != 0 ? 5 : 40};
                windows_.Deliver(PointerMoved{at});
                windows_.Deliver(ButtonChanged{at, kLeftButton, (byte & 1U) != 0});
                break;
            }
            case 11:
                windows_.Deliver(WheelTurned{{5, 5}, number - 8});
                break;
            case 15:
                windows_.Deliver(TextComposed{std::u16string(value, kUnits.at(value)), value / 2});
                break;
            default:
                windows_.Deliver(TextTyped{std::u16string(1, kUnits.at(value))});
                break;
        }
        Judge();
    }

    TextBox& Box() { return box_; }

  private:
    void Judge() const {
        const std::u16string text = box_.Text();
        const auto start = static_cast<std::size_t>(box_.SelStart());
        const auto end = start + static_cast<std::size_t>(box_.SelLength());
        fuzz::Check(end <= text.size(), "the selection lies in the text");
        fuzz::Check(!InsidePair(text, start) && !InsidePair(text, end), "pairs stay whole");
        fuzz::Check(box_.SelText() == text.substr(start, end - start), "SelText is what it says");
        fuzz::Check(box_.FirstVisibleLine() >= 0 && box_.FirstVisibleLine() < box_.LineCount(),
                    "the view begins in the text");
    }

    HeadlessDriver driver_{HeadlessDriver::Clock::kVirtual};
    WindowSystem windows_{driver_};
    Widget window_{windows_, 0, {0, 0, 300, 200}};
    TextBox box_;
};

}  // namespace

std::string_view fuzz::Seed() {
    return "\xC0\xC1\xC2\xC4\xC5\xC0\x02\x10\x20\x21\x06\x2B\x23\x2D\x97\x9F\xAE\x42\x55\x64\x8A"
           "\x1B";
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Desk line(TextBox::Kind::kLine);
    Desk page(TextBox::Kind::kPage);
    const std::u16string text = Widen(fuzz::Bytes(data, size)) + u"\r\nwords of a page\n\nthat end";
    page.Box().Text(text);
    bool written = false;
    for (std::size_t i = 0; i < size; ++i) {
        line.Do(data[i]);
        page.Do(data[i]);
        written = written || data[i] >> 4U == 6;  // by its owner
    }
    fuzz::Check(written || page.Box().Text() == text, "nobody writes on a page");
    return 0;
}

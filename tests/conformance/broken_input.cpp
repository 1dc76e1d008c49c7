// Drivers that break rules of input and of text.
#include <algorithm>
#include <deque>
#include <optional>
#include <string>

#include "tests/conformance/broken_drivers.h"

namespace conformance {

namespace {

using namespace platform;

// Changes each event on its way, or takes it out.
template <typename Change>
struct Changes : PaperDriver {
    std::optional<DriverEvent> NextEvent() override {
        while (auto event = PaperDriver::NextEvent()) {
            if (Change()(*event)) {
                return event;
            }
        }
        return std::nullopt;
    }
};

struct LatestFirst : PaperDriver {
    std::optional<DriverEvent> NextEvent() override {
        std::reverse(events.begin(), events.end());
        const auto event = PaperDriver::NextEvent();
        std::reverse(events.begin(), events.end());
        return event;
    }
};
struct InWindow {
    bool operator()(DriverEvent& event) const {
        if (auto* const moved = std::get_if<PointerMoved>(&event)) {
            moved->ptScreen = {moved->ptScreen.x - 100, moved->ptScreen.y - 100};
        }
        return true;
    }
};
struct NotBelowZero {
    bool operator()(DriverEvent& event) const {
        const auto* const moved = std::get_if<PointerMoved>(&event);
        return moved == nullptr || moved->ptScreen.x >= 100;
    }
};
struct WithoutRelease {
    bool operator()(DriverEvent& event) const {
        const auto* const change = std::get_if<ButtonChanged>(&event);
        return change == nullptr || change->down;
    }
};
struct InEighthsOfADegree {
    bool operator()(DriverEvent& event) const {
        if (auto* const turned = std::get_if<WheelTurned>(&event)) {
            turned->notches *= 120;
        }
        return true;
    }
};
struct WithoutText {
    bool operator()(DriverEvent& event) const { return !std::holds_alternative<TextTyped>(event); }
};
struct ModifierOfBefore {
    bool operator()(DriverEvent& event) const {
        auto* const key = std::get_if<KeyChanged>(&event);
        if (key != nullptr && key->code == VK_SHIFT) {
            key->shift = key->down ? 0 : kShiftBit;
        }
        return true;
    }
};
struct SmallLetters {
    bool operator()(DriverEvent& event) const {
        auto* const key = std::get_if<KeyChanged>(&event);
        if (key != nullptr && key->code == 'A') {
            key->code = 'a';
        }
        return true;
    }
};
struct TextBeforeKey : PaperDriver {
    std::optional<DriverEvent> NextEvent() override {
        if (events.size() > 1 && std::holds_alternative<TextTyped>(events[1])) {
            std::swap(events[0], events[1]);
        }
        return PaperDriver::NextEvent();
    }
};
struct NoGrab : PaperDriver {
    void GrabInput(Handle) override { events.push_back(InputLost{}); }
};
struct TypesWhereOneWrites : PaperDriver {
    void EndComposing() override { events.push_back(TextTyped{u"x"}); }
};
struct WordsOfTheClipboard : PaperDriver {
    std::u16string ClipboardText() const override { return u"two"; }
};
struct PointerStands : PaperDriver {
    Point Pointer() const override { return {}; }
};

// Text.

struct FlatWithoutText : PaperDriver {
    Size MeasureText(const Font&, std::u16string_view text) const override {
        return text.empty() ? Size{} : RecordingDriver::MeasureText({}, text);
    }
};
struct WidthOfNothing : PaperDriver {
    Size MeasureText(const Font&, std::u16string_view text) const override {
        return {6 * static_cast<Long>(text.size()) + 2, 13};
    }
};
struct TrimsBlanks : PaperDriver {
    Size MeasureText(const Font&, std::u16string_view text) const override {
        while (text.size() > 1 && text.back() == u' ') {
            text.remove_suffix(1);
        }
        return RecordingDriver::MeasureText({}, text);
    }
};
struct CaretOneOff : PaperDriver {
    Long TextOffset(const Font&, std::u16string_view, std::size_t index) const override {
        return 6 * static_cast<Long>(index) + 1;
    }
};
struct Wavers : PaperDriver {
    Size MeasureText(const Font&, std::u16string_view text) const override {
        const Long more = text.empty() ? 0 : ++asked / 10;
        return {6 * static_cast<Long>(text.size()) + more, 13};
    }
    mutable Long asked = 0;
};
struct PlainDensity : PaperDriver {
    TextPicture RenderText(const Font& font, std::u16string_view text, Long left, Long width,
                           Long) const override {
        return PaperDriver::RenderText(font, text, left, width, 1);
    }
};
struct TooWide : PaperDriver {
    TextPicture RenderText(const Font&, std::u16string_view, Long, Long,
                           Long density) const override {
        const Size size{1'000'000, 13 * density};
        return {size.width, size.height, {}, density};
    }
};
struct NoCoverage : PaperDriver {
    TextPicture RenderText(const Font& font, std::u16string_view text, Long left, Long width,
                           Long density) const override {
        TextPicture picture = PaperDriver::RenderText(font, text, left, width, density);
        picture.coverage.clear();
        return picture;
    }
};
struct NoInk : PaperDriver {
    TextPicture RenderText(const Font& font, std::u16string_view text, Long left, Long width,
                           Long density) const override {
        TextPicture picture = PaperDriver::RenderText(font, text, left, width, density);
        std::fill(picture.coverage.begin(), picture.coverage.end(), std::uint8_t{0});
        return picture;
    }
};
struct AlwaysFromTheStart : PaperDriver {
    TextPicture RenderText(const Font& font, std::u16string_view text, Long, Long width,
                           Long density) const override {
        return PaperDriver::RenderText(font, text, 0, width, density);
    }
};

}  // namespace

std::vector<BrokenDriver> BrokenInInput() {
    return {
        Breaks<LatestFirst>("input.press_is_followed_to_its_release", "events come latest first"),
        Breaks<Changes<InWindow>>("input.pointer_in_pixels_of_the_screen",
                                  "the pointer is told in the window's pixels"),
        Breaks<PointerStands>("input.pointer_in_pixels_of_the_screen", "the pointer stands"),
        Breaks<Changes<NotBelowZero>>("input.windows_at_negative_places",
                                      "windows left of 0 hear nothing"),
        Breaks<Changes<WithoutRelease>>("input.press_is_followed_to_its_release",
                                        "releases are not reported"),
        Breaks<Changes<InEighthsOfADegree>>("input.wheel_counts_notches",
                                            "the wheel counts eighths of a degree"),
        Breaks<Changes<WithoutText>>("input.text_follows_its_key", "keys type nothing"),
        Breaks<Changes<SmallLetters>>("input.text_follows_its_key", "codes are small letters"),
        Breaks<TextBeforeKey>("input.text_follows_its_key", "text comes before its key"),
        Breaks<Changes<ModifierOfBefore>>("input.modifier_counts_from_its_press",
                                          "modifiers are those from before the key"),
        Breaks<NoGrab>("input.grab_reaches_everywhere", "there is no grab"),
        Breaks<TypesWhereOneWrites>("input.writing_is_no_news", "the end of writing types"),
        Breaks<WordsOfTheClipboard>("input.clipboard_gives_back", "the clipboard gives less"),
    };
}

std::vector<BrokenDriver> BrokenInText() {
    return {
        Breaks<FlatWithoutText>("text.height_is_that_of_the_font", "nothing has no height"),
        Breaks<WidthOfNothing>("text.nothing_has_no_width", "nothing has a width"),
        Breaks<TrimsBlanks>("text.blanks_count", "blanks at the end do not count"),
        Breaks<CaretOneOff>("text.caret_goes_from_end_to_end", "the caret is a pixel off"),
        Breaks<Wavers>("text.answers_stay_the_same", "widths grow"),
        Breaks<PlainDensity>("text.picture_is_as_measured", "all is of density 1"),
        Breaks<TooWide>("text.picture_is_as_measured", "pictures are too wide"),
        Breaks<NoCoverage>("text.picture_is_as_measured", "pictures have no coverage"),
        Breaks<NoInk>("text.picture_is_as_measured", "pictures are empty"),
        Breaks<AlwaysFromTheStart>("text.pieces_make_the_whole", "pieces begin at the start"),
    };
}

}  // namespace conformance

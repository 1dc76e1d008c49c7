// The parts of the desktop driver that no window manager is needed for, on the toolkit's display
// without a screen.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/desktop/desktop_driver.h"
#include "platform/desktop/drop_paths.h"
#include "platform/desktop/event_queue.h"
#include "platform/desktop/qt_text.h"
#include "platform/desktop/screens.h"
#include "platform/desktop/text_engine.h"
#include "tests/desktop/on_toolkit.h"

namespace {

using namespace platform;
using namespace platform::desktop;

using Paths = std::vector<std::string>;

TEST(DropPaths, AddressesAreUnescapedAsBytes) {
    EXPECT_EQ(PathsOfUriList("file:///a%20b%C3%A4%e9.mp3\r\n", "h"), Paths{"/a b\xC3\xA4\xE9.mp3"});
}

TEST(DropPaths, HostsThatAreThisOneOnly) {
    const std::string list =
        "file:/one\r\nFILE:///two\r\nfile://LocalHost/three\r\nfile://me/four\r\nfile://you/"
        "five\r\n";
    EXPECT_EQ(PathsOfUriList(list, "Me"), (Paths{"/one", "/two", "/three", "/four"}));
}

TEST(DropPaths, WhatIsNoFileIsLeftOut) {
    EXPECT_EQ(PathsOfUriList("#file:///a\r\nhttp://h/b\r\nfile:c\r\nfile://\r\n/d\r\n", ""),
              Paths{});
}

TEST(DropPaths, BrokenEscapesStandForThemselvesAndZeroBytesForNothing) {
    EXPECT_EQ(PathsOfUriList("file:///100%\nfile:///a%2\nfile:///b%zz\nfile:///c%00d\n", ""),
              (Paths{"/100%", "/a%2", "/b%zz"}));
}

TEST(DropPaths, PlainTextMayHoldPathsThatAreNotUnescaped) {
    EXPECT_EQ(PathsOfText(std::string("/a%20b\nfile:///c%20d\nword\n\0", 27), ""),
              (Paths{"/a%20b", "/c d"}));
}

TEST(EventQueue, ARunOfMovesIsOneButAPressKeepsItsPlace) {
    EventQueue queue;
    queue.Push(PointerMoved{{1, 1}, 0});
    queue.Push(PointerMoved{{2, 2}, 0});
    queue.Push(ButtonChanged{{2, 2}, 1, true, 0});
    queue.Push(PointerMoved{{3, 3}, 0});
    EXPECT_EQ(std::get<PointerMoved>(*queue.Take()).ptScreen, (Point{2, 2}));
    EXPECT_TRUE(std::holds_alternative<ButtonChanged>(*queue.Take()));
    EXPECT_EQ(std::get<PointerMoved>(*queue.Take()).ptScreen, (Point{3, 3}));
    EXPECT_FALSE(queue.Take());
}

// The codes of the presses that come out.
std::vector<Long> Presses(EventQueue& queue) {
    std::vector<Long> codes;
    while (const auto event = queue.Take()) {
        const auto* const key = std::get_if<KeyChanged>(&*event);
        if (key != nullptr && key->down) {
            codes.push_back(key->code);
        }
    }
    return codes;
}

void PushKeys(EventQueue& queue, std::string_view codes, Long shift = 0) {
    for (const char code : codes) {
        queue.Push(KeyChanged{code, shift, true});
        queue.Push(KeyChanged{code, shift, false});
    }
}

TEST(EventQueue, AFloodOfOneKeyIsOnePress) {
    EventQueue queue;
    queue.CountOnce({'B', 'Z'});
    PushKeys(queue, std::string(1000, 'B'));
    EXPECT_EQ(Presses(queue), (std::vector<Long>{'B'}));
    PushKeys(queue, "BZBZBBZ");
    EXPECT_EQ(Presses(queue), (std::vector<Long>{'B', 'Z'}));
    // What was taken does not wait any more.
    PushKeys(queue, "B");
    EXPECT_EQ(Presses(queue), (std::vector<Long>{'B'}));
}

TEST(EventQueue, OtherKeysAndWhatTheyComeBetweenStay) {
    EventQueue queue;
    queue.CountOnce({'B'});
    PushKeys(queue, "BB((BB");
    EXPECT_EQ(Presses(queue), (std::vector<Long>{'B', '(', '(', 'B'}));
    PushKeys(queue, "BB", kShiftBit);
    EXPECT_EQ(Presses(queue), (std::vector<Long>{'B', 'B'}));
    PushKeys(queue, "B");
    queue.Push(ButtonChanged{{2, 2}, 1, true, 0});
    PushKeys(queue, "B");
    EXPECT_EQ(Presses(queue), (std::vector<Long>{'B', 'B'}));
}

TEST(EventQueue, WhatIsTypedStaysWhole) {
    EventQueue queue;
    queue.CountOnce({'B'});
    for (int i = 0; i < 3; ++i) {
        queue.Push(KeyChanged{'B', 0, true});
        queue.Push(TextTyped{u"b"});
        queue.Push(KeyChanged{'B', 0, false});
    }
    std::u16string typed;
    std::size_t presses = 0;
    while (const auto event = queue.Take()) {
        const auto* const key = std::get_if<KeyChanged>(&*event);
        presses += key != nullptr && key->down ? 1 : 0;
        const auto* const text = std::get_if<TextTyped>(&*event);
        typed += text != nullptr ? text->text : u"";
    }
    EXPECT_EQ(typed, u"bbb");
    EXPECT_EQ(presses, 1U);
}

TEST(Magnification, PlacesGoThereAndBack) {
    for (const double factor : {1.0, 1.25, 1.5, 2.0, 3.75}) {
        const Magnification scale(factor);
        for (Long place = -300; place < 300; ++place) {
            EXPECT_EQ(scale.ToNearest(scale.ToDevice(place)), place) << factor;
        }
    }
    EXPECT_EQ(Magnification(2).ToComponent(-1), -1);
    EXPECT_EQ(Magnification(4).ToDevice(2147483647), 32000);
}

// Two screens, each with panels.
const std::vector<ScreenPlace> kTwoScreens{{{0, 0, 1024, 768}, {0, 0, 1024, 740}},
                                           {{1024, 100, 800, 600}, {1024, 130, 780, 570}}};

TEST(Screens, TheWorkAreaIsAroundThatOfAll) {
    EXPECT_EQ(AroundAvailable(kTwoScreens), QRect(0, 0, 1804, 740));
    EXPECT_TRUE(AroundAvailable({}).isEmpty());
}

TEST(Screens, AWindowThatCanBeCaughtStays) {
    // 24 columns are on the left screen, then 23. Beside them the right screen has ended.
    EXPECT_EQ(Rescued({1000, 701, 100, 60}, Shown::kEnough, kTwoScreens), std::nullopt);
    EXPECT_EQ(Rescued({1001, 701, 100, 60}, Shown::kEnough, kTwoScreens), QPoint(924, 680));
    EXPECT_EQ(Rescued({1001, 640, 100, 60}, Shown::kEnough, kTwoScreens), std::nullopt);
    EXPECT_EQ(Rescued({-70, -30, 100, 60}, Shown::kEnough, kTwoScreens), std::nullopt);
    // A window may be smaller than what is enough.
    EXPECT_EQ(Rescued({0, 0, 10, 10}, Shown::kEnough, kTwoScreens), std::nullopt);
    EXPECT_EQ(Rescued({-1, 0, 10, 10}, Shown::kEnough, kTwoScreens), QPoint(0, 0));
}

TEST(Screens, AWindowThatIsWantedWholeMayLieAcrossScreens) {
    EXPECT_EQ(Rescued({1000, 640, 100, 60}, Shown::kWhole, kTwoScreens), std::nullopt);
    EXPECT_EQ(Rescued({1000, 641, 100, 60}, Shown::kWhole, kTwoScreens), QPoint(1024, 640));
    EXPECT_EQ(Rescued({-1, 50, 100, 60}, Shown::kWhole, kTwoScreens), QPoint(0, 50));
}

TEST(Screens, ItComesToTheNearestByTheWayToItsEdge) {
    // The middle of the small one is nearer.
    const std::vector<ScreenPlace> screens{{{4000, 0, 400, 700}, {4000, 0, 400, 700}},
                                           {{0, 0, 4000, 700}, {0, 0, 4000, 700}}};
    EXPECT_EQ(Rescued({3700, 900, 100, 60}, Shown::kEnough, screens), QPoint(3700, 640));
    EXPECT_EQ(Rescued({4390, 900, 100, 60}, Shown::kEnough, screens), QPoint(4300, 640));
}

TEST(Screens, AWindowLargerThanAllKeepsItsTopLeftCorner) {
    EXPECT_EQ(Rescued({10, 10, 5000, 5000}, Shown::kWhole, kTwoScreens), QPoint(0, 0));
    EXPECT_EQ(Rescued({0, 0, 5000, 5000}, Shown::kWhole, kTwoScreens), std::nullopt);
    EXPECT_EQ(Rescued({5, 5, 10, 10}, Shown::kEnough, {}), std::nullopt);
}

TEST(Captions, AreCutBetweenTwoCharacters) {
    const std::u16string most(kLongestCaption, u'a');
    EXPECT_EQ(Caption(most + u'a'), OneLine(most));
    std::u16string pair = most;
    pair.back() = u'\xD834';
    EXPECT_EQ(Caption(pair + u'\xDD1E'), OneLine(most.substr(1)));
    EXPECT_EQ(Caption(u"two\nlines"), QString("two lines"));
}

TEST(WithoutFonts, ATextIsAsWideAsItIsLong) {
    // 8.25 points are 11 pixels.
    EXPECT_EQ(SizeWithoutFonts({}, u"four"), (Size{24, 11}));
    EXPECT_EQ(SizeWithoutFonts({}, u""), (Size{0, 11}));
    Font huge;
    huge.size = 1e9;
    EXPECT_EQ(SizeWithoutFonts(huge, std::u16string(3'000'000, u'x')), (Size{500'000'000, 1000}));
}

class Text : public OnToolkit {
  protected:
    Long Width(std::u16string_view text) { return engine_.Measure(font_, text).width; }

    TextEngine engine_;
    Font font_;
};

TEST_F(Text, TheHeightOfALineIsThatOfTheFont) {
    const Long height = engine_.Measure(font_, u"").height;
    EXPECT_GT(height, 0);
    for (const auto* text :
         {u"x", u"\u0E17\u0E35\u0E48", u"\u65E5\u672C", u"\U0001F3B5", u"\u05D0"}) {
        EXPECT_EQ(engine_.Measure(font_, text).height, height);
        EXPECT_EQ(engine_.Render(font_, text, 0, 100).height, height);
    }
    EXPECT_EQ(Width(u""), 0);
}

TEST_F(Text, WhatCannotBePrintedIsHarmless) {
    const std::u16string odd{u'a', 0xDC80, 0xD800, u'\n', u'\t', 0x2028, 0xFFFC, 0, u'b'};
    const Size size = engine_.Measure(font_, odd);
    EXPECT_GE(size.width, Width(u"ab"));
    EXPECT_EQ(engine_.Render(font_, odd, 0, 1000).width, size.width);
    EXPECT_EQ(engine_.Offset(font_, odd, odd.size()), size.width);
}

TEST_F(Text, SlicesOfALongLineFitTogether) {
    std::u16string text;
    for (int i = 0; i < 3000; ++i) {
        text += u"song \u00E4";
    }
    const Long width = Width(text);
    const TextPicture whole = engine_.Render(font_, text, 0, width);
    ASSERT_EQ(whole.width, width);
    for (const Long left : {0, 1, 2048, 4096, width - 100}) {
        const TextPicture slice = engine_.Render(font_, text, left, 150);
        ASSERT_EQ(slice.width, std::min(150, width - left));
        for (Long y = 0; y < whole.height; ++y) {
            for (Long x = 0; x < slice.width; ++x) {
                const auto at = [](const TextPicture& picture, Long column, Long row) {
                    return picture.coverage[static_cast<std::size_t>(row * picture.width + column)];
                };
                ASSERT_EQ(at(slice, x, y), at(whole, left + x, y)) << left << ":" << x << "," << y;
            }
        }
    }
    EXPECT_EQ(engine_.Render(font_, text, width, 10).width, 0);
    EXPECT_EQ(engine_.Render(font_, text, width + 500, 10).width, 0);
}

TEST_F(Text, TheCaretGoesAlongTheLine) {
    const std::u16string text = u"Morning ";
    Long former = 0;
    EXPECT_EQ(engine_.Offset(font_, text, 0), 0);
    for (std::size_t i = 1; i <= text.size(); ++i) {
        const Long offset = engine_.Offset(font_, text, i);
        EXPECT_GT(offset, former);
        former = offset;
    }
    EXPECT_EQ(former, Width(text));  // the blank at the end counts
}

TEST_F(Text, InkCoversPixelsInFull) {
    const TextPicture picture = engine_.Render(font_, u"Wave", 0, 100);
    const auto inked =
        std::ranges::count_if(picture.coverage, [](auto value) { return value > 200; });
    EXPECT_GT(inked, 10);
}

}  // namespace

// The parts of the desktop driver that no window manager is needed for, on the toolkit's display
// without a screen.
#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QWheelEvent>
#include <algorithm>
#include <array>
#include <memory>
#include <utility>

#include "platform/desktop/desktop_driver.h"
#include "platform/desktop/drop_paths.h"
#include "platform/desktop/event_queue.h"
#include "platform/desktop/painting.h"
#include "platform/desktop/text_engine.h"
#include "platform/desktop/top_level.h"
#include "platform/text.h"

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

TEST(Painting, EachPixelBecomesABlock) {
    Surface picture({4, 2});
    picture.SetPixel({2, 1}, 0x0000FF);
    const Magnification scale(3);
    const QRect shown = ShownPart({1, 0, 4, 2}, scale);
    EXPECT_EQ(shown, QRect(3, 0, 9, 6));
    const QImage image = ShownPixels(picture, shown, scale);
    for (int y = 0; y < 6; ++y) {
        for (int x = 0; x < 9; ++x) {
            const bool red = x >= 3 && x < 6 && y >= 3;
            EXPECT_EQ(image.pixel(x, y) & 0xFFFFFF, red ? 0xFF0000U : 0U) << x << "," << y;
        }
    }
}

class OnToolkit : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        application_ = std::make_unique<QGuiApplication>(count_, arguments_);
    }
    static void TearDownTestSuite() { application_.reset(); }

  private:
    static inline char name_[] = "parts_tests";
    static inline char* arguments_[] = {name_, nullptr};
    static inline int count_ = 1;
    static inline std::unique_ptr<QGuiApplication> application_;
};

class Wheel : public OnToolkit {
  protected:
    void Turn(QPoint eighths, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QWheelEvent event({5, 5}, {5, 5}, {}, eighths, Qt::NoButton, modifiers, Qt::NoScrollPhase,
                          false);
        QCoreApplication::sendEvent(&window_, &event);
    }
    Long Notches() {
        Long sum = 0;
        while (const auto event = shared_.events.Take()) {
            sum += std::get<WheelTurned>(*event).notches;
        }
        return sum;
    }

    Shared shared_{Magnification(1), {}, {}};
    TopLevel window_{1, shared_};
};

TEST_F(Wheel, FineStepsAddUpToNotches) {
    Turn({0, 50});
    Turn({0, 50});
    EXPECT_EQ(Notches(), 0);
    Turn({0, 50});  // 150: one notch, and 30 towards the next
    EXPECT_EQ(Notches(), 1);
    Turn({0, 89});
    EXPECT_EQ(Notches(), 0);
    Turn({0, 1});
    EXPECT_EQ(Notches(), 1);
    Turn({0, -360});
    EXPECT_EQ(Notches(), -3);
}

TEST_F(Wheel, AnotherDirectionBeginsAnew) {
    Turn({0, 119});
    Turn({0, -119});
    EXPECT_EQ(Notches(), 0);
    Turn({0, -1});
    EXPECT_EQ(Notches(), -1);
}

TEST_F(Wheel, AltDoesNotTurnItAside) {
    Turn({120, 0}, Qt::AltModifier);
    EXPECT_EQ(Notches(), 1);
    Turn({120, 0});  // a wheel that is tilted
    EXPECT_EQ(Notches(), 0);
}

// What a window makes of the toolkit's own events of keys and input methods, told as the driver
// tests tell it.
class Keys : public OnToolkit {
  protected:
    enum class Repeat { kNo, kYes };

    void Send(QEvent::Type type, int key, Qt::KeyboardModifiers modifiers, const QString& text = {},
              Repeat repeat = Repeat::kNo, quint32 place = 0) {
        QKeyEvent event(type, key, modifiers, place, 0, 0, text, repeat == Repeat::kYes);
        QCoreApplication::sendEvent(&window_, &event);
    }
    void Press(int key, Qt::KeyboardModifiers modifiers, const QString& text = {},
               Repeat repeat = Repeat::kNo, quint32 place = 0) {
        Send(QEvent::KeyPress, key, modifiers, text, repeat, place);
    }
    void Release(int key, Qt::KeyboardModifiers modifiers, Repeat repeat = Repeat::kNo) {
        Send(QEvent::KeyRelease, key, modifiers, {}, repeat);
    }
    void Method(const QString& composed, const QString& typed,
                const QList<QInputMethodEvent::Attribute>& parts = {}) {
        QInputMethodEvent event(composed, parts);
        event.setCommitString(typed);
        QCoreApplication::sendEvent(&window_, &event);
    }
    QVariant Ask(Qt::InputMethodQuery question) {
        QInputMethodQueryEvent query(question);
        QCoreApplication::sendEvent(&window_, &query);
        return query.value(question);
    }
    std::vector<std::string> Told() {
        std::vector<std::string> lines;
        while (const auto event = shared_.events.Take()) {
            if (const auto* key = std::get_if<KeyChanged>(&*event)) {
                lines.push_back((key->down ? "down " : "up ") + std::to_string(key->code) + " " +
                                std::to_string(key->shift));
            } else if (const auto* typed = std::get_if<TextTyped>(&*event)) {
                lines.push_back("typed " + Narrow(typed->text));
            } else if (const auto* composed = std::get_if<TextComposed>(&*event)) {
                lines.push_back("composed " + Narrow(composed->text) + "|" +
                                (composed->caret ? std::to_string(*composed->caret) : "none"));
            } else {
                lines.push_back("other");
            }
        }
        return lines;
    }
    using Lines = std::vector<std::string>;

    Shared shared_{Magnification(1.5), {}, {}};
    TopLevel window_{1, shared_};
};

// Whether the modifiers that come with an event are those before or after it differs between window
// servers.
TEST_F(Keys, AModifierCountsFromItsOwnPressToItsOwnRelease) {
    const std::array<std::pair<Qt::Key, Qt::KeyboardModifier>, 3> keys{
        {{Qt::Key_Shift, Qt::ShiftModifier},
         {Qt::Key_Control, Qt::ControlModifier},
         {Qt::Key_Alt, Qt::AltModifier}}};
    const Lines told{"down 16 1", "up 16 0", "down 17 2", "up 17 0", "down 18 4", "up 18 0"};
    for (const auto& [key, modifier] : keys) {
        Press(key, Qt::NoModifier);
        Release(key, modifier);
    }
    EXPECT_EQ(Told(), told);
    for (const auto& [key, modifier] : keys) {
        Press(key, modifier);
        Release(key, Qt::NoModifier);
    }
    EXPECT_EQ(Told(), told);
    Press(Qt::Key_Control, Qt::ShiftModifier);
    Release(Qt::Key_Control, Qt::ShiftModifier | Qt::ControlModifier);
    EXPECT_EQ(Told(), (Lines{"down 17 3", "up 17 1"}));
}

TEST_F(Keys, AltGrIsNoAlt) {
    Press(Qt::Key_AltGr, Qt::NoModifier);
    Press(Qt::Key_At, Qt::GroupSwitchModifier, "@");
    Release(Qt::Key_AltGr, Qt::GroupSwitchModifier);
    EXPECT_EQ(Told(), (Lines{"down 18 0", "typed @", "up 18 0"}));
}

TEST_F(Keys, SuperAndAltTypeNothing) {
    Press(Qt::Key_E, Qt::MetaModifier, "e");
    Press(Qt::Key_E, Qt::MetaModifier | Qt::ShiftModifier, "E");
    Press(Qt::Key_E, Qt::AltModifier, "e");
    Press(Qt::Key_Super_L, Qt::NoModifier);
    EXPECT_EQ(Told(), (Lines{"down 69 0", "down 69 1", "down 69 4", "down 91 0"}));
}

TEST_F(Keys, CtrlAndAltTogetherTypeWhatTheKeyDoesNotTypeByItself) {
    constexpr Qt::KeyboardModifiers kBoth = Qt::ControlModifier | Qt::AltModifier;
    constexpr quint32 kKeyOfSeven = 16;
    Press(Qt::Key_At, kBoth, "@");
    Press(Qt::Key_BraceLeft, kBoth, "{", Repeat::kNo, kKeyOfSeven);
    Press(Qt::Key_E, kBoth, QString(QChar(0x20AC)));
    EXPECT_EQ(Told(), (Lines{"typed @", "down 55 6", "typed {", "down 69 6", "typed \u20AC"}));
    Press(Qt::Key_7, kBoth, "7", Repeat::kNo, kKeyOfSeven);
    Press(Qt::Key_E, kBoth, "e");
    Press(Qt::Key_E, kBoth, QString(QChar(5)));
    EXPECT_EQ(Told(), (Lines{"down 55 6", "down 69 6", "down 69 6"}));
}

TEST_F(Keys, AHeldKeyGoesDownAgainAndUpOnce) {
    Press(Qt::Key_B, Qt::NoModifier, "b");
    for (int i = 0; i < 2; ++i) {
        Release(Qt::Key_B, Qt::NoModifier, Repeat::kYes);
        Press(Qt::Key_B, Qt::NoModifier, "b", Repeat::kYes);
    }
    Release(Qt::Key_B, Qt::NoModifier);
    EXPECT_EQ(Told(), (Lines{"down 66 0", "typed b", "down 66 0", "typed b", "down 66 0", "typed b",
                             "up 66 0"}));
}

TEST_F(Keys, WhatIsHeldWhileTheFocusGoesIsLetGoOnce) {
    Press(Qt::Key_B, Qt::NoModifier, "b");
    Release(Qt::Key_B, Qt::NoModifier, Repeat::kYes);
    Press(Qt::Key_Delete, Qt::NoModifier);
    Release(Qt::Key_Delete, Qt::NoModifier);
    Told();
    QFocusEvent out(QEvent::FocusOut);
    QCoreApplication::sendEvent(&window_, &out);
    QCoreApplication::sendEvent(&window_, &out);
    EXPECT_EQ(Told(), Lines{"up 66 0"});
}

TEST_F(Keys, MethodsAreWantedOnlyWhereOneWrites) {
    EXPECT_FALSE(Ask(Qt::ImEnabled).toBool());
    Method("", "late");
    Method("late", "");
    EXPECT_EQ(Told(), Lines{});
    shared_.input = TextInput{1, {10, 20, 11, 32}};
    EXPECT_TRUE(Ask(Qt::ImEnabled).toBool());
    EXPECT_EQ(Ask(Qt::ImCursorRectangle).toRect(), QRect(15, 30, 2, 18));
    shared_.input->window = 2;
    EXPECT_TRUE(Ask(Qt::ImEnabled).toBool());
    EXPECT_EQ(Ask(Qt::ImCursorRectangle).toRect(), QRect());
}

TEST_F(Keys, WhatAMethodComposesIsToldWithItsCaret) {
    const auto caret = [](int start, int length) {
        return QList{QInputMethodEvent::Attribute(QInputMethodEvent::Cursor, start, length)};
    };
    shared_.input = TextInput{1, {}};
    Method("", "");
    Method("ni", "", caret(1, 1));
    Method("nih", "");
    Method("nihao", "", caret(2, 0));
    Method("x", "", caret(-5, 1));
    EXPECT_EQ(Told(),
              (Lines{"composed ni|1", "composed nih|3", "composed nihao|none", "composed x|0"}));
    Method("", QString(QChar(0x4F60)));
    EXPECT_EQ(Told(), (Lines{"composed |none", "typed \u4F60"}));
    Method("ha", "b");  // the one is typed, the next is begun
    EXPECT_EQ(Told(), (Lines{"typed b", "composed ha|2"}));
    Method("", "");
    Method("", "");
    EXPECT_EQ(Told(), Lines{"composed |none"});
}

TEST_F(Keys, WhatIsComposedEndsWithTheWindowsFocus) {
    shared_.input = TextInput{1, {}};
    Method("ni", "");
    Told();
    QFocusEvent out(QEvent::FocusOut);
    QCoreApplication::sendEvent(&window_, &out);
    EXPECT_EQ(Told(), Lines{"composed |none"});
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

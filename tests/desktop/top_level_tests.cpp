// What a top-level window makes of the toolkit's own events.
#include <gtest/gtest.h>

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QWheelEvent>
#include <array>
#include <string>
#include <utility>
#include <vector>

#include "platform/base/text.h"
#include "platform/desktop/top_level.h"
#include "tests/desktop/on_toolkit.h"

namespace {

using namespace platform;
using namespace platform::desktop;

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

// A window that asks for places, and a desktop that answers when the test says so.
class Placed : public OnToolkit {
  protected:
    Placed() {
        Ask(10, 20);
        window_.SetVisibility(true);
        Told();
    }
    /// The first place may be corrected. This is the second one.
    void Settle() {
        Answer(300, 300);
        Told();
    }
    void Ask(Long left, Long top) { window_.SetRect({left, top, left + 100, top + 60}); }
    void Answer(int left, int top) {
        QMoveEvent event({left, top}, {});
        QCoreApplication::sendEvent(&window_, &event);
    }
    /// The places that count as the desktop's doing.
    std::vector<Point> Told() {
        std::vector<Point> places;
        while (const auto event = shared_.events.Take()) {
            places.push_back(std::get<MovedByDesktop>(*event).ptScreen);
        }
        return places;
    }

    Shared shared_{Magnification(1), {}, {}};
    TopLevel window_{1, shared_};
};

TEST_F(Placed, ANewWindowThatAFramePushedAsksOnceMore) {
    Answer(12, 38);
    EXPECT_EQ(Told(), std::vector<Point>{});
    EXPECT_EQ(window_.Place(), QRect(10, 20, 100, 60));
    EXPECT_EQ(window_.position(), QPoint(10, 20));
    Answer(12, 38);
    EXPECT_EQ(Told(), (std::vector<Point>{{12, 38}}));
}

TEST_F(Placed, ItTakesAnyOtherPlaceAsItIs) {
    Answer(9, 38);
    EXPECT_EQ(Told(), (std::vector<Point>{{9, 38}}));
    Answer(11, 40);
    EXPECT_EQ(Told(), (std::vector<Point>{{11, 40}}));
}

TEST_F(Placed, AnswersThatComeLateOrLeaveSomeOutAreNoNews) {
    Settle();
    for (const Long left : {110, 120, 130, 140}) {
        Ask(left, 50);
    }
    Answer(110, 50);
    Answer(130, 50);  // 120 was overtaken
    Answer(140, 50);
    Answer(140, 50);
    EXPECT_EQ(Told(), std::vector<Point>{});
}

TEST_F(Placed, AnotherPlaceIsNewsAndOvertakesAllThatWasAsked) {
    Settle();
    Ask(110, 50);
    Ask(120, 50);
    Answer(300, 200);
    EXPECT_EQ(Told(), (std::vector<Point>{{300, 200}}));
    EXPECT_EQ(window_.Place(), QRect(300, 200, 100, 60));
    Answer(110, 50);
    EXPECT_EQ(Told(), (std::vector<Point>{{110, 50}}));
}

}  // namespace

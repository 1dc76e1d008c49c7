// The parts of the tray that need neither a bus nor a server: what a status notifier answers, what
// a double click is, and how a window stays in the task bar.
#include <gtest/gtest.h>

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QWindowStateChangeEvent>
#include <array>
#include <string>
#include <variant>
#include <vector>

#include "platform/desktop/icon.h"
#include "platform/desktop/top_level.h"
#include "platform/desktop/tray/status_item.h"
#include "platform/desktop/tray/xembed_icon.h"
#include "tests/desktop/on_toolkit.h"

namespace {

using namespace platform;
using namespace platform::desktop;

TEST(TrayPicture, IsAlphaRedGreenBlueRowByRow) {
    QImage image(2, 2, QImage::Format_ARGB32);
    image.setPixel(0, 0, 0x80102030);
    image.setPixel(1, 0, 0xFFFF0000);
    image.setPixel(0, 1, 0x00000000);
    image.setPixel(1, 1, 0xFF0000FF);
    const BusPicture picture = ForBus(image);
    EXPECT_EQ(picture.width, 2);
    EXPECT_EQ(picture.height, 2);
    EXPECT_EQ(picture.pixels.toHex(), "80102030ffff000000000000ff0000ff");
}

// The picture that is drawn has its alpha multiplied in: half of full red is 0x80.
TEST(TrayPicture, TakesTheAlphaOutAgain) {
    QImage image(1, 1, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    *reinterpret_cast<quint32*>(image.bits()) = 0x80800000;
    EXPECT_EQ(ForBus(image).pixels.toHex(), "80ff0000");
}

TEST(TrayPicture, FillsTheSquareButForItsCorners) {
    for (const int size : {1, 16, 22, 23, 128, 200}) {
        const QImage icon = DrawIcon(size);
        EXPECT_EQ(icon.size(), QSize(size, size));
    }
    const QImage icon = DrawIcon(32);
    EXPECT_EQ(icon.pixel(0, 0), 0U);
    EXPECT_EQ(icon.pixel(15, 16), 0xFFFFFFFFU);
    EXPECT_EQ(qAlpha(icon.pixel(16, 4)), 0xFF);
}

// Those of 16 and 22 pixels are drawn for that many: their mark stands on the grid, so that none of
// its left edge is a mixture of two colours.
TEST(TrayPicture, OfASmallSizeIsDrawnForIt) {
    for (const auto& [size, left, top, bottom] :
         {std::array{16, 5, 4, 11}, std::array{22, 8, 6, 15}}) {
        const QImage icon = DrawIcon(size);
        for (int y = top; y <= bottom; ++y) {
            EXPECT_EQ(icon.pixel(left, y), 0xFFFFFFFFU) << size << ' ' << y;
            EXPECT_LT(qRed(icon.pixel(left - 1, y)), 0xB0) << size << ' ' << y;
        }
    }
}

class TrayItem : public OnToolkit {
  protected:
    using Action = TrayIconUsed::Action;

    static QDBusMessage Call(const char* interface, const char* member) {
        return QDBusMessage::createMethodCall("org.example", "/StatusNotifierItem", interface,
                                              member);
    }
    QDBusMessage AskItem(const char* member) {
        return item_.AnswerTo(Call("org.kde.StatusNotifierItem", member));
    }
    QDBusMessage AskProperty(const char* member, const QVariantList& arguments) {
        QDBusMessage call = Call("org.freedesktop.DBus.Properties", member);
        call.setArguments(arguments);
        return item_.AnswerTo(call);
    }
    QVariant Property(const char* name) {
        return AskProperty("Get", {"org.kde.StatusNotifierItem", name})
            .arguments()
            .value(0)
            .value<QDBusVariant>()
            .variant();
    }

    std::vector<Action> used_;
    StatusItem item_{"A & <b>", [this](Action action) { used_.push_back(action); }};
};

TEST_F(TrayItem, OpensByItsFirstActionAndShowsAMenuByItsMenu) {
    EXPECT_EQ(AskItem("Activate").type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(AskItem("ContextMenu").type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(used_, (std::vector<Action>{Action::kOpen, Action::kMenu}));
    EXPECT_EQ(AskItem("SecondaryActivate").type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(AskItem("Scroll").type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(AskItem("Explode").errorName(), "org.freedesktop.DBus.Error.UnknownMethod");
    EXPECT_EQ(used_.size(), 2U);
}

TEST_F(TrayItem, HasItsPropertiesInTheTypesThatHostsKnow) {
    EXPECT_EQ(Property("Title"), QVariant("A & <b>"));
    EXPECT_EQ(Property("ItemIsMenu"), QVariant(false));
    EXPECT_EQ(Property("WindowId").typeId(), QMetaType::Int);
    EXPECT_FALSE(Property("Menu").isValid());
    const auto signature = [this](const char* name) {
        return std::string(QDBusMetaType::typeToSignature(Property(name).metaType()));
    };
    EXPECT_EQ(signature("IconPixmap"), "a(iiay)");
    EXPECT_EQ(signature("ToolTip"), "(sa(iiay)ss)");
    item_.SetTip("B");
    EXPECT_EQ(Property("ToolTip").value<BusToolTip>().title, "B");
    EXPECT_EQ(Property("ToolTip").value<BusToolTip>().description, "");
}

TEST_F(TrayItem, AnswersOddQuestionsWithErrors) {
    EXPECT_EQ(AskProperty("Get", {}).errorName(), "org.freedesktop.DBus.Error.UnknownProperty");
    EXPECT_EQ(AskProperty("Get", {"org.example.Other", "Title"}).errorName(),
              "org.freedesktop.DBus.Error.UnknownProperty");
    EXPECT_EQ(AskProperty("Get", {7, QVariantList{}}).errorName(),
              "org.freedesktop.DBus.Error.UnknownProperty");
    EXPECT_EQ(AskProperty("Set", {"org.kde.StatusNotifierItem", "Title", "x"}).errorName(),
              "org.freedesktop.DBus.Error.PropertyReadOnly");
    EXPECT_TRUE(AskProperty("GetAll", {"org.example.Other"}).arguments()[0].toMap().isEmpty());
    EXPECT_EQ(AskProperty("GetAll", {"org.kde.StatusNotifierItem"}).arguments()[0].toMap().size(),
              9);
}

TEST(TrayPresses, TheSecondInTimeIsADoubleClickAndTheThirdBeginsAnew) {
    DoublePress presses;
    EXPECT_FALSE(presses.Press(1000, 400));
    EXPECT_TRUE(presses.Press(1400, 400));
    EXPECT_FALSE(presses.Press(1500, 400));
    EXPECT_FALSE(presses.Press(1901, 400));
    EXPECT_TRUE(presses.Press(2301, 400));
}

TEST(TrayPresses, AnotherButtonBetweenAndATimeThatBeginsAnew) {
    DoublePress presses;
    EXPECT_FALSE(presses.Press(1000, 400));
    presses.Forget();
    EXPECT_FALSE(presses.Press(1100, 400));
    presses.Forget();
    EXPECT_FALSE(presses.Press(0xFFFFFFF0U, 400));
    EXPECT_TRUE(presses.Press(100, 400));
}

// Minimised as the component does it: first that, then the entry is to be kept or not, then hidden.
class KeptEntry : public OnToolkit {
  protected:
    KeptEntry() {
        window_.SetRect({10, 20, 110, 80});
        window_.SetVisibility(true);
    }
    void MinimiseAndHide(bool keeps) {
        window_.SetMinimised(true);
        window_.KeepEntry(keeps);
        window_.SetVisibility(false);
    }
    void SayState(Qt::WindowState state) {
        const Qt::WindowStates former = window_.windowStates();
        window_.setWindowStates(state);
        QWindowStateChangeEvent event(former);
        QCoreApplication::sendEvent(&window_, &event);
    }
    bool IsMinimised() const { return (window_.windowStates() & Qt::WindowMinimized) != 0; }

    Shared shared_{Magnification(1), {}, {}};
    TopLevel window_{1, shared_};
};

TEST_F(KeptEntry, AWindowThatIsHiddenStaysMinimisedUntilItsIconIsInATray) {
    MinimiseAndHide(true);
    EXPECT_TRUE(window_.isVisible());
    EXPECT_TRUE(IsMinimised());
    window_.KeepEntry(false);
    EXPECT_FALSE(window_.isVisible());
    window_.KeepEntry(true);
    EXPECT_TRUE(window_.isVisible());
    EXPECT_TRUE(IsMinimised());
}

TEST_F(KeptEntry, AWindowThatIsShownAgainIsNotHiddenByItsIconsEnd) {
    MinimiseAndHide(true);
    window_.SetVisibility(true);
    window_.SetMinimised(false);
    window_.KeepEntry(false);
    EXPECT_TRUE(window_.isVisible());
    EXPECT_FALSE(IsMinimised());
}

// Window managers say of a window that came minimised that it is, and this may arrive when it has
// been restored long since.
TEST_F(KeptEntry, WhatIsSaidLateOfAWindowOnItsWayBackIsNoNews) {
    MinimiseAndHide(true);
    window_.KeepEntry(false);
    window_.SetVisibility(true);
    window_.SetMinimised(false);
    SayState(Qt::WindowMinimized);
    SayState(Qt::WindowNoState);
    EXPECT_FALSE(shared_.events.Take());
    // It has been seen: from now on it is the user's doing.
    QCoreApplication::processEvents();
    ASSERT_TRUE(window_.isExposed());
    while (shared_.events.Take()) {
    }
    SayState(Qt::WindowMinimized);
    const auto event = shared_.events.Take();
    EXPECT_TRUE(event && std::holds_alternative<MinimisedByDesktop>(*event));
}

TEST_F(KeptEntry, WithoutAnIconItIsHiddenAsAnyWindow) {
    MinimiseAndHide(false);
    EXPECT_FALSE(window_.isVisible());
    window_.SetVisibility(true);
    window_.SetMinimised(false);
    EXPECT_TRUE(window_.isVisible());
    EXPECT_FALSE(IsMinimised());
    window_.KeepEntry(true);
    window_.SetVisibility(false);
    EXPECT_FALSE(window_.isVisible());
}

}  // namespace

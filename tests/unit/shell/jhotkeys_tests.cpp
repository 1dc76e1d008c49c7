#include "shell/jhotkeys.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/headless/headless_driver.h"
#include "shell/hotkeyerror.h"

namespace sarnel {
namespace {

// A desktop that says why it refused.
class WordyDriver : public platform::HeadlessDriver {
  public:
    WordyDriver() : HeadlessDriver(Clock::kVirtual) {}
    std::u16string LastErrorText() const override { return words; }

    std::u16string words;
};

struct Raised {
    std::uint32_t number = 0;
    std::u16string description;
    bool operator==(const Raised&) const = default;
};

class HotKeysByName : public ::testing::Test {
  protected:
    template <class Action>
    static Raised Failure(Action&& action) {
        try {
            action();
        } catch (const HotKeyError& error) {
            return {error.Number(), error.Description()};
        }
        return {};
    }
    Raised Register(std::u16string_view name, Long modifiers, Long key) {
        return Failure([&] { keys_->RegisterKey(name, modifiers, key); });
    }
    Long IdOf(std::u16string_view name) const { return keys_->Find(name)->id; }
    std::vector<std::u16string> Names(int count) const {
        std::vector<std::u16string> names;
        for (int i = 1; i <= count; ++i) {
            const std::u16string name(1, static_cast<char16_t>(u'0' + i));
            if (keys_->Find(name) != nullptr) {
                names.push_back(name);
            }
        }
        return names;
    }
    void RegisterNumbers(int count) {
        for (int i = 1; i <= count; ++i) {
            keys_->RegisterKey(std::u16string(1, static_cast<char16_t>(u'0' + i)), 1, 'A' + i);
        }
    }
    void RecordPresses() {
        keys_->onHotKeyPress = [this](std::u16string_view name, Long modifiers, Long key) {
            presses_.push_back({std::u16string(name), modifiers, key});
        };
    }
    void TakeAllAtoms() {
        for (int i = 0;; ++i) {
            std::u16string name(u"x");
            for (const char digit : std::to_string(i)) {
                name += static_cast<char16_t>(digit);
            }
            if (windows_.GlobalAddAtom(name) == 0) {
                return;
            }
        }
    }

    struct Press {
        std::u16string name;
        Long modifiers = 0;
        Long key = 0;
        bool operator==(const Press&) const = default;
    };

    WordyDriver driver_;
    platform::WindowSystem windows_{driver_};
    std::unique_ptr<JHotKeys> keys_ = std::make_unique<JHotKeys>(windows_);
    std::vector<Press> presses_;
};

TEST_F(HotKeysByName, ARecordHoldsWhatWasRegistered) {
    windows_.Sleep(1234);
    keys_->RegisterKey(u"Mine", 6, 65);
    const JHotKeys::Key* key = keys_->Find(u"Mine");
    ASSERT_NE(key, nullptr);
    EXPECT_EQ(key->name, u"Mine");
    EXPECT_EQ(key->atomName, u"Mine_Sarnel.Ambrisor_1234");
    EXPECT_EQ(key->id, -16384);  // 0xC000 as 16 bits with a sign
    EXPECT_EQ(key->key, 65);
    EXPECT_EQ(key->modifiers, 6);
    EXPECT_EQ(keys_->Count(), 1);
    EXPECT_EQ(driver_.HotKeys().begin()->second, (platform::KeyCombination{u"Mine", 6, 65}));
}

TEST_F(HotKeysByName, TheErrorsNameTheirSource) {
    EXPECT_EQ(HotKeyError::kSource, u"Sarnel.Ambrisor.cRegHotKey");
    EXPECT_EQ(Failure([&] { keys_->UnregisterKey(u"Mine"); }),
              (Raised{0x80040419, u"No hot key registered under the name 'Mine'"}));
    EXPECT_EQ(Register(u"Mine", 1, 65), Raised{});
    EXPECT_EQ(Register(u"Mine", 1, 66),
              (Raised{0x8004041C, u"The Key Name 'Mine' is already registered."}));
}

TEST_F(HotKeysByName, TheDesktopsWordsStandBehindItsRefusal) {
    driver_.TakeHotKey(1, 65);
    EXPECT_EQ(Register(u"a", 1, 65), (Raised{0x8004041B, u"Failed to Register Hot Key"}));
    driver_.words = u"Somebody has it";
    EXPECT_EQ(Register(u"a", 1, 65),
              (Raised{0x8004041B, u"Failed to Register Hot Key [Somebody has it]"}));
    driver_.words = std::u16string(256, u'w') + u"!";
    EXPECT_EQ(Register(u"a", 1, 65).description,
              u"Failed to Register Hot Key [" + std::u16string(256, u'w') + u"]");
}

TEST_F(HotKeysByName, ARefusalLeavesNothingBehind) {
    driver_.TakeHotKey(1, 65);
    EXPECT_EQ(Register(u"a", 1, 65).number, 0x8004041BU);
    EXPECT_EQ(keys_->Count(), 0);
    EXPECT_EQ(keys_->Find(u"a"), nullptr);
    EXPECT_EQ(windows_.GlobalAddAtom(u"next"), 0xC000);  // its atom is free again
}

TEST_F(HotKeysByName, WithoutAnAtomThereIsNoKey) {
    TakeAllAtoms();
    EXPECT_EQ(Register(u"a", 1, 65), (Raised{0x8004041A, u"Failed to add GlobalAtom"}));
    driver_.words = u"Full";
    EXPECT_EQ(Register(u"a", 1, 65), (Raised{0x8004041A, u"Failed to add GlobalAtom [Full]"}));
    EXPECT_EQ(keys_->Count(), 0);
    EXPECT_TRUE(driver_.HotKeys().empty());
}

TEST_F(HotKeysByName, RemovingFreesAtomAndCombination) {
    RegisterNumbers(3);
    keys_->UnregisterKey(u"2");
    EXPECT_EQ(driver_.HotKeys().size(), 2U);
    EXPECT_EQ(windows_.GlobalAddAtom(u"next"), 0xC001);
    EXPECT_EQ(Names(3), (std::vector<std::u16string>{u"1", u"3"}));
    EXPECT_EQ(keys_->Count(), 2);
}

TEST_F(HotKeysByName, ClearLeavesHalf) {
    for (const auto& [count, left] :
         {std::pair{0, 0}, {1, 0}, {2, 1}, {3, 1}, {4, 2}, {5, 2}, {9, 4}}) {
        SCOPED_TRACE(count);
        keys_ = std::make_unique<JHotKeys>(windows_);
        RegisterNumbers(count);
        if (count < 2) {
            EXPECT_NO_THROW(keys_->Clear());
        } else {
            EXPECT_THROW(keys_->Clear(), ComponentError);
        }
        EXPECT_EQ(keys_->Count(), left);
        EXPECT_EQ(driver_.HotKeys().size(), static_cast<std::size_t>(left));
        for (const std::u16string& name : Names(count)) {
            keys_->UnregisterKey(name);
        }
    }
}

TEST_F(HotKeysByName, ClearFailsWithABoundsError) {
    RegisterNumbers(2);
    try {
        keys_->WM_DESTROY();
        ADD_FAILURE() << "no error";
    } catch (const ComponentError& error) {
        EXPECT_EQ(error.Number(), 9U);
        EXPECT_EQ(error.Description(), u"Subscript out of range");
    }
    EXPECT_EQ(Names(2), std::vector<std::u16string>{u"2"});
}

TEST_F(HotKeysByName, TheEndOfTheObjectClearsOnce) {
    RegisterNumbers(3);
    keys_.reset();
    ASSERT_EQ(driver_.HotKeys().size(), 1U);
    EXPECT_EQ(driver_.HotKeys().begin()->second.name, u"2");
}

TEST_F(HotKeysByName, TheEndOfTheWindowTakesWhatIsLeft) {
    const Handle window = windows_.CreateWindow(0, {0, 0, 10, 10}, {});
    keys_->hWndToCapture(window);
    EXPECT_EQ(keys_->hWndToCapture(), window);
    RegisterNumbers(3);
    windows_.DestroyWindow(window);
    EXPECT_TRUE(driver_.HotKeys().empty());
    EXPECT_EQ(Register(u"late", 1, 80).number, 0x8004041BU);
}

TEST_F(HotKeysByName, APressTellsWhatWasRegistered) {
    RegisterNumbers(2);
    RecordPresses();
    keys_->WM_HOTKEY(IdOf(u"2"), 0x7FFF0001);  // what the message says of a known key is not read
    EXPECT_EQ(presses_, (std::vector<Press>{{u"2", 1, 'C'}}));
    keys_->WM_HOTKEY(IdOf(u"2") & 0xFFFF,
                     34 * 65536 + 3);  // the number without its sign is another
    EXPECT_EQ(presses_.back(), (Press{u"Unknown HotKey", 3, 34}));
}

TEST_F(HotKeysByName, APressWithoutAHandlerIsNothing) {
    RegisterNumbers(1);
    keys_->WM_HOTKEY(IdOf(u"1"), 0);
    keys_->WM_HOTKEY(1, 0);
    EXPECT_EQ(keys_->Count(), 1);
}

TEST_F(HotKeysByName, AHandlerMayEndTheKeys) {
    RegisterNumbers(2);
    std::u16string pressed;
    keys_->onHotKeyPress = [&](std::u16string_view name, Long, Long) {
        keys_.reset();
        pressed = name;  // still there
    };
    keys_->WM_HOTKEY(IdOf(u"2"), 0);
    EXPECT_EQ(pressed, u"2");
    EXPECT_EQ(keys_, nullptr);
}

TEST_F(HotKeysByName, KeysReachTheWindowThatIsNamedThen) {
    std::vector<Long> ids;
    const Handle window = windows_.CreateWindow(0, {0, 0, 10, 10}, [&](const platform::Message& m) {
        if (m.id == platform::WM_HOTKEY) {
            ids.push_back(m.wParam);
        }
        return 0;
    });
    keys_->RegisterKey(u"nobody's", 1, 65);
    keys_->hWndToCapture(window);
    keys_->RegisterKey(u"the window's", 1, 66);
    for (const auto& grabbed : driver_.HotKeys()) {
        windows_.Deliver(platform::HotKeyPressed{grabbed.first});
    }
    EXPECT_EQ(ids, std::vector<Long>{IdOf(u"the window's")});
}

}  // namespace
}  // namespace sarnel

// Key combinations: the table of names, and who gets a key.
#include <gtest/gtest.h>

#include "menus/jpopupmenu.h"
#include "platform/base/keys.h"
#include "platform/headless/headless_driver.h"

namespace sarnel {
namespace {

using namespace platform;

struct Known {
    const char16_t* text;
    Long modifiers;
    Long code;
};

TEST(KeyTexts, AreReadByTheTableAsItStands) {
    for (const Known& known : {
             Known{u"", 0, 0},
             Known{u"Ctrl+Del", 2, 46},
             Known{u"Shift+1", 1, 49},
             Known{u"F1", 0, 112},
             Known{u"F12", 0, 123},
             Known{u"Alt+F4", 4, 115},
             Known{u"Insert", 0, 45},
             Known{u"Ctrl+Insert", 2, 45},
             Known{u"Shift+C", 1, 67},
             Known{u"a", 0, 65},
             Known{u"Ctrl+Shift+Alt+z", 7, 90},
             Known{u"Home", 0, 36},
             Known{u"End", 0, 35},
             Known{u"Left Arrow", 0, 37},
             Known{u"Right Arrow", 0, 39},
             Known{u"Up Arrow", 0, 38},
             Known{u"Down Arrow", 0, 40},
             Known{u"Break", 0, 12},
             Known{u"Page Up", 0, 33},
             Known{u"Page Down", 0, 0},
             Known{u"Esc", 0, 27},
             Known{u"Tab", 0, 9},
             Known{u"Enter", 0, 13},
             Known{u"Add", 0, 107},
             Known{u"Subtract", 0, 109},
             Known{u"ctrl+a", 0, 65},  // case matters
             Known{u"Ctrl+", 2, 0},    // no last piece
             Known{u"Ctrl++", 2, 0},   // an empty piece
             Known{u"Nonsense+B", 0, 66},
             Known{u"A+B", 0, 66},  // the last key counts
             Known{u"Fx", 0, 0},
             Known{u"F", 0, 70},  // a letter
             Known{u"\u00e9", 0, 0xC9},
             Known{u"\u1EA1", 0, 0x1EA0},  // of every alphabet
             Known{u"\u00ff", 0, 0x178},
             Known{u"\u00df", 0, 0xDF},  // has no capital of one letter
         }) {
        const KeyCombination expected{known.modifiers, known.code};
        EXPECT_EQ(ParseKeyText(known.text), expected) << std::string(known.text, known.text + 3);
    }
}

// A window with a child, a grandchild and a great-grandchild, and another window.
class Combinations : public ::testing::Test {
  protected:
    Combinations() {
        menu_.hWndOwner(main_);
        menu_.onClick = [this](Long& item) { clicked_.push_back(item); };
        Add(u"Random#Ctrl+R");
        Add(u"Also#Ctrl+R");
        Add(u"Off#Del", false);
        Add(u"Skin#Shift+1");
        windows_.SetFocus(child_);
        typed_.clear();
    }
    void Add(std::u16string_view caption, bool enabled = true) {
        menu_.AddItem(caption, 0, u"", false, enabled);
    }
    Handle Child(Handle parent) {
        return windows_.CreateWindow(parent, {}, [this](const Message& message) {
            typed_.push_back(message.id);
            return 0;
        });
    }
    void Key(Long code, Long modifiers) {
        windows_.Deliver(KeyChanged{code, modifiers, true});
        windows_.Deliver(KeyChanged{code, modifiers, false});
    }
    using Longs = std::vector<Long>;

    HeadlessDriver driver_{HeadlessDriver::Clock::kVirtual};
    WindowSystem windows_{driver_};
    Longs typed_;
    Handle main_ = Child(0);
    Handle child_ = Child(main_);
    Handle grandchild_ = Child(child_);
    Handle deepest_ = Child(grandchild_);
    Handle other_ = Child(0);
    std::shared_ptr<mJPopupMenu> shared_ = std::make_shared<mJPopupMenu>(windows_);
    JPopupMenu menu_{shared_};
    Longs clicked_;
};

TEST_F(Combinations, TheFirstItemOfAMatchIsClickedAndTheKeyIsEaten) {
    windows_.Deliver(KeyChanged{'R', 2, true});
    windows_.Deliver(TextTyped{u"\x12"});
    EXPECT_EQ(clicked_, (Longs{1}));
    EXPECT_EQ(typed_, Longs());
    windows_.Deliver(KeyChanged{'R', 2, false});
    EXPECT_EQ(clicked_, (Longs{1}));
    EXPECT_EQ(typed_, (Longs{WM_KEYUP}));
}

TEST_F(Combinations, ModifiersMustMatchExactly) {
    for (const Long modifiers : {0, 1, 3, 4, 6}) {
        Key('R', modifiers);
    }
    EXPECT_EQ(clicked_, Longs());
    EXPECT_EQ(typed_.size(), 10U);
    Key('1', 1);
    EXPECT_EQ(clicked_, (Longs{4}));
}

TEST_F(Combinations, ADisabledItemPassesItsKeyOn) {
    Key(VK_DELETE, 0);
    EXPECT_EQ(clicked_, Longs());
    EXPECT_EQ(typed_, (Longs{WM_KEYDOWN, WM_KEYUP}));
    menu_.Enabled(3, true);
    Key(VK_DELETE, 0);
    EXPECT_EQ(clicked_, (Longs{3}));
}

TEST_F(Combinations, TheFocusMustBeInTheOwnerOrAtMostTwoLevelsBelow) {
    const std::vector<std::pair<Handle, bool>> cases{{main_, true},       {child_, true},
                                                     {grandchild_, true}, {deepest_, false},
                                                     {other_, false},     {0, false}};
    for (const auto& [focus, runs] : cases) {
        windows_.SetFocus(focus);
        clicked_.clear();
        Key('R', 2);
        EXPECT_EQ(clicked_.size(), runs ? 1U : 0U) << focus - main_;
    }
}

TEST_F(Combinations, TheLatestInstanceIsAskedFirst) {
    JPopupMenu second(shared_);
    second.hWndOwner(main_);
    Long clicked = 0;
    second.onClick = [&](Long& item) { clicked = item; };
    second.AddItem(u"x#Ctrl+R", 0, u"", false, true);
    Key('R', 2);
    EXPECT_EQ(clicked, 1);
    EXPECT_EQ(clicked_, Longs());
    Key('1', 1);
    EXPECT_EQ(clicked_, (Longs{4}));
}

TEST_F(Combinations, AClickMayEndTheMenu) {
    auto doomed = std::make_shared<JPopupMenu>(shared_);
    doomed->hWndOwner(main_);
    doomed->AddItem(u"x#F5", 0, u"", false, true);
    doomed->onClick = [&](Long&) { windows_.DeferDelete(std::exchange(doomed, nullptr)); };
    Key(116, 0);
    EXPECT_EQ(doomed, nullptr);
    EXPECT_EQ(shared_->Instances().size(), 1U);
    EXPECT_EQ(typed_, (Longs{WM_KEYUP}));
}

TEST_F(Combinations, AFailingHandlerStillEatsTheKey) {
    menu_.onClick = [](Long&) { throw 1; };
    Key('R', 2);
    EXPECT_EQ(typed_, (Longs{WM_KEYUP}));
}

}  // namespace
}  // namespace sarnel

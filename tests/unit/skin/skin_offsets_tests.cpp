// Whether the places of a skin's fields hang together; what stands there, the other tests say.
#include "skin/skin_offsets.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

namespace sarnel {
namespace {

std::multiset<Long> Indices(const std::vector<ControlRows>& controls) {
    std::multiset<Long> indices;
    for (const ControlRows& control : controls) {
        indices.insert(control.index);
    }
    return indices;
}

const std::vector<ControlRows> kAllToggles(std::begin(kToggleRows), std::end(kToggleRows));
const std::vector<ControlRows> kAllSliders(std::begin(kSliderRows), std::end(kSliderRows));

std::vector<ControlRows> AllButtons() {
    std::vector<ControlRows> buttons(std::begin(kButtonRows), std::end(kButtonRows));
    buttons.push_back(kResetEffectsButtonRows);
    return buttons;
}

TEST(SkinOffsets, EachControlHasItsRowsOnce) {
    using Set = std::multiset<Long>;
    EXPECT_EQ(Indices(AllButtons()), (Set{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}));
    EXPECT_EQ(Indices(kAllToggles), (Set{0, 1, 2, 3}));
    EXPECT_EQ(Indices(kAllSliders), (Set{0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
}

TEST(SkinOffsets, NoRowBelongsToTwo) {
    std::set<Long> taken;
    const auto take = [&](Long first, Long count) {
        for (Long row = first; row < first + count; ++row) {
            EXPECT_TRUE(taken.insert(row).second) << row;
            EXPECT_LT(row, 284);
        }
    };
    for (const ControlRows& button : AllButtons()) {
        take(button.offset, 5);
    }
    for (const ControlRows& toggle : kAllToggles) {
        take(toggle.offset, 5);
    }
    for (const ControlRows& slider : kAllSliders) {
        take(slider.offset, 10);
    }
    take(kTipForeColor, 1);
    take(kSkinName, 1);
    take(kScrollTextRows, 10);
    take(kInfoDisplayRows, 10);
    take(kListLeft, 4);
    take(kListFontRows, 4);
    take(kListBackColor, kListThumbColor2 - kListBackColor + 1);
    take(kMenuFontRows, 4);
    take(kMenuColourRows, 12);
    EXPECT_EQ(taken.size(), 13u * 5 + 4 * 5 + 10 * 10 + 2 + 2 * 10 + 18 + 16);
}

}  // namespace
}  // namespace sarnel

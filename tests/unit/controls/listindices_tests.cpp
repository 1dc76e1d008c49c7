#include "controls/list/listindices.h"

#include <gtest/gtest.h>

#include <limits>

namespace sarnel {
namespace {

using platform::Long;

TEST(ListIndices, NoRowIsNamedButTheFocus) {
    const ListIndices index;
    EXPECT_EQ(index.list, -1);
    EXPECT_EQ(index.current, -1);
    EXPECT_EQ(index.added, -1);
    EXPECT_EQ(index.focus, 0);
    EXPECT_EQ(index.caret, -1);
}

TEST(ListIndices, ARowThatComesInMovesWhatStandsThereAndBehind) {
    ListIndices index{.list = 3, .current = 3, .added = -1, .focus = 2, .caret = 4};
    index.RowAdded(3, false);
    EXPECT_EQ(index.added, 3);
    EXPECT_EQ(index.list, 4);
    EXPECT_EQ(index.focus, 2);
    EXPECT_EQ(index.caret, 5);
    EXPECT_EQ(index.current, 4);
}

TEST(ListIndices, WithNothingSelectedAndListIndex0NoneMovesButTheCurrentRow) {
    ListIndices index{.list = 0, .current = 5, .added = -1, .focus = 5, .caret = 5};
    index.RowAdded(0, false);
    EXPECT_EQ(index.list, 0);
    EXPECT_EQ(index.focus, 5);
    EXPECT_EQ(index.caret, 5);
    EXPECT_EQ(index.current, 6);
}

TEST(ListIndices, WithASelectionAllMove) {
    ListIndices index{.list = 0, .current = -1, .added = -1, .focus = 5, .caret = 1};
    index.RowAdded(0, true);
    EXPECT_EQ(index.list, 1);
    EXPECT_EQ(index.focus, 6);
    EXPECT_EQ(index.caret, 2);
    EXPECT_EQ(index.current, -1);
}

TEST(ListIndices, CurrentRow0StaysWhenARowComesInFront) {
    ListIndices index;
    index.current = 0;
    index.RowAdded(0, true);
    EXPECT_EQ(index.current, 0);
}

TEST(ListIndices, APlaceFarInFrontMovesEvenNoRow) {
    ListIndices index;
    index.RowAdded(-5, true);
    EXPECT_EQ(index.added, -5);
    EXPECT_EQ(index.list, 0);
    EXPECT_EQ(index.focus, 1);
    EXPECT_EQ(index.caret, 0);
    EXPECT_EQ(index.current, -1);
}

TEST(ListIndices, AtTheEndOfAllNumbersAnIndexStays) {
    constexpr Long kMost = std::numeric_limits<Long>::max();
    ListIndices index{.list = kMost, .current = kMost, .added = -1, .focus = kMost, .caret = kMost};
    index.RowAdded(0, true);
    EXPECT_EQ(index.list, kMost);
    EXPECT_EQ(index.current, kMost);
}

TEST(ListIndices, ARemovedRowIsLeftForTheRowAboveItAndIsNoLongerCurrent) {
    ListIndices index{.list = 2, .current = 2, .added = 1, .focus = 2, .caret = 2};
    index.RowRemoved(2);
    EXPECT_EQ(index.list, 1);
    EXPECT_EQ(index.focus, 1);
    EXPECT_EQ(index.caret, 1);
    EXPECT_EQ(index.current, -1);
    EXPECT_EQ(index.added, -1);
}

TEST(ListIndices, ARowRemovedAboveMovesAllUp) {
    ListIndices index{.list = 3, .current = 4, .added = -1, .focus = 5, .caret = 6};
    index.RowRemoved(2);
    EXPECT_EQ(index.list, 2);
    EXPECT_EQ(index.current, 3);
    EXPECT_EQ(index.focus, 4);
    EXPECT_EQ(index.caret, 5);
}

TEST(ListIndices, ARowRemovedBelowMovesNone) {
    ListIndices index{.list = 1, .current = 0, .added = -1, .focus = 0, .caret = -1};
    index.RowRemoved(2);
    EXPECT_EQ(index.list, 1);
    EXPECT_EQ(index.current, 0);
    EXPECT_EQ(index.focus, 0);
    EXPECT_EQ(index.caret, -1);
}

TEST(ListIndices, Row0StaysWhenItsRowIsRemoved) {
    ListIndices index{.list = 0, .current = 1, .added = -1, .focus = 0, .caret = 0};
    index.RowRemoved(0);
    EXPECT_EQ(index.list, 0);
    EXPECT_EQ(index.focus, 0);
    EXPECT_EQ(index.caret, 0);
    EXPECT_EQ(index.current, 0);
}

TEST(ListIndices, TheCurrentRowOutlivesTheRows) {
    ListIndices index{.list = 4, .current = 3, .added = 2, .focus = 4, .caret = 4};
    index.RowsCleared();
    EXPECT_EQ(index.list, 0);
    EXPECT_EQ(index.focus, 0);
    EXPECT_EQ(index.caret, -1);
    EXPECT_EQ(index.added, -1);
    EXPECT_EQ(index.current, 3);
}

}  // namespace
}  // namespace sarnel

// The range of rows on show, in a list that shows four rows.
#include "controls/list/listrange.h"

#include <gtest/gtest.h>

#include <utility>

namespace sarnel {
namespace {

using platform::Long;

constexpr Long kRowsThatFit = 4;
constexpr Long kTenRows = 10;

std::pair<Long, Long> ShownOf(const ListRange& range) {
    return {range.first, range.last};
}
using ShownRows = std::pair<Long, Long>;

TEST(ListRange, NothingIsOnShowAtFirst) {
    const ListRange range;
    EXPECT_EQ(ShownOf(range), ShownRows(-1, -1));
    EXPECT_EQ(range.top, 0);
}

TEST(ListRange, BothEndsBelongToIt) {
    const ListRange range{2, 4, 0};
    EXPECT_TRUE(range.Has(2) && range.Has(4));
    EXPECT_FALSE(range.Has(1) || range.Has(5));
}

TEST(ListRange, ARepaintShowsAllRowsThatFit) {
    ListRange range{7, 9, 7};
    range.Settle(3, kRowsThatFit, true);
    EXPECT_EQ(ShownOf(range), ShownRows(0, 2));
    EXPECT_EQ(range.top, 0);
    range.Settle(0, kRowsThatFit, true);
    EXPECT_EQ(ShownOf(range), ShownRows(0, -1));
}

TEST(ListRange, ARepaintShowsAsManyRowsAsFit) {
    ListRange range{2, 3, 0};
    range.Settle(kTenRows, kRowsThatFit, false);
    EXPECT_EQ(ShownOf(range), ShownRows(2, 5));
    EXPECT_EQ(range.top, 2);
}

TEST(ListRange, ARepaintOfTheLastRowShowsTheLastRows) {
    ListRange range{8, 9, 0};
    range.Settle(kTenRows, kRowsThatFit, false);
    EXPECT_EQ(ShownOf(range), ShownRows(6, 9));
    EXPECT_EQ(range.top, 6);
}

TEST(ListRange, StartsAtARowAsFarAsThereAreRowsBelow) {
    const auto startAt = [](Long row) {
        ListRange range;
        range.StartAt(row, kTenRows, kRowsThatFit);
        return ShownOf(range);
    };
    EXPECT_EQ(startAt(3), ShownRows(3, 6));
    EXPECT_EQ(startAt(6), ShownRows(6, 9));
    EXPECT_EQ(startAt(7), ShownRows(6, 9));
    EXPECT_EQ(startAt(99), ShownRows(6, 9));
    EXPECT_EQ(startAt(-4), ShownRows(0, 3));
}

TEST(ListRange, ReachesARowOutsideWithTheFewestSteps) {
    ListRange range{3, 6, 0};
    EXPECT_FALSE(range.Reach(5, kTenRows, kRowsThatFit));
    EXPECT_EQ(ShownOf(range), ShownRows(3, 6));
    EXPECT_TRUE(range.Reach(8, kTenRows, kRowsThatFit));
    EXPECT_EQ(ShownOf(range), ShownRows(5, 8));
    EXPECT_TRUE(range.Reach(1, kTenRows, kRowsThatFit));
    EXPECT_EQ(ShownOf(range), ShownRows(1, 4));
}

TEST(ListRange, ReachesTheFirstRowsOfAShortRange) {
    ListRange range{0, 1, 0};
    EXPECT_TRUE(range.Reach(2, kTenRows, kRowsThatFit));
    EXPECT_EQ(ShownOf(range), ShownRows(0, 2));
}

// One row behind the last is let pass, two are not.
TEST(ListRange, ReachesUpwardsToARangeThatEndsBehindTheRows) {
    ListRange range{9, 9, 0};
    EXPECT_TRUE(range.Reach(8, kTenRows, kRowsThatFit));
    EXPECT_EQ(ShownOf(range), ShownRows(8, 9));
    EXPECT_TRUE(range.Reach(7, kTenRows, kRowsThatFit));
    EXPECT_EQ(ShownOf(range), ShownRows(7, 10));
}

TEST(ListRange, ALimitTakesItBackToTheLastRows) {
    ListRange range{9, 12, 0};
    range.Limit(kTenRows, kRowsThatFit);
    EXPECT_EQ(ShownOf(range), ShownRows(6, 9));
    range.Limit(kTenRows, kRowsThatFit);
    EXPECT_EQ(ShownOf(range), ShownRows(6, 9));
    range.Limit(2, kRowsThatFit);
    EXPECT_EQ(ShownOf(range), ShownRows(0, 1));
}

}  // namespace
}  // namespace sarnel

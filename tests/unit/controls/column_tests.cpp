#include "controls/list/column.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace sarnel {
namespace {

template <class T>
std::vector<T> All(const Column<T>& column) {
    std::vector<T> all;
    for (Long i = 0; i < column.Size(); ++i) {
        all.push_back(column[i]);
    }
    return all;
}

using Words = std::vector<std::string>;

Column<std::string> Made(const Words& words) {
    Column<std::string> column;
    for (const std::string& word : words) {
        column.Insert(-1, word);
    }
    return column;
}

TEST(Column, ResetMakesFreshSlots) {
    Column<std::string> column;
    EXPECT_EQ(column.Size(), 0);
    column.Reset(3);
    EXPECT_EQ(All(column), (Words{"", "", ""}));
    column[1] = "x";
    column.Reset(1);
    EXPECT_EQ(All(column), (Words{""}));
}

TEST(Column, HasTellsWhetherAnIndexNamesASlot) {
    const auto column = Made({"a", "b"});
    EXPECT_TRUE(column.Has(0) && column.Has(1));
    EXPECT_FALSE(column.Has(-1) || column.Has(2));
}

TEST(Column, IntoAColumnWithoutSlotsAnyIndexMakesTheFirst) {
    for (const Long index : {-7, -1, 0, 5}) {
        Column<std::string> column;
        column.Insert(index, "a");
        EXPECT_EQ(All(column), (Words{"a"})) << index;
    }
}

TEST(Column, InsertMovesTheSlotsFromTheIndexUpByOne) {
    auto column = Made({"a", "b", "c"});
    column.Insert(1, "x");
    EXPECT_EQ(All(column), (Words{"a", "x", "b", "c"}));
    column.Insert(0, "y");
    EXPECT_EQ(All(column), (Words{"y", "a", "x", "b", "c"}));
    column.Insert(4, "z");  // the last slot moves too
    EXPECT_EQ(All(column), (Words{"y", "a", "x", "b", "z", "c"}));
}

TEST(Column, MinusOneOrPastTheLastSlotAppends) {
    auto column = Made({"a", "b"});
    column.Insert(-1, "x");
    column.Insert(3, "y");
    column.Insert(99, "z");
    EXPECT_EQ(All(column), (Words{"a", "b", "x", "y", "z"}));
}

TEST(Column, FurtherBelowCountsAsTheFirst) {
    auto column = Made({"a"});
    column.Insert(-2, "x");
    column.Insert(-99, "y");
    EXPECT_EQ(All(column), (Words{"y", "x", "a"}));
    column.Remove(-2);
    EXPECT_EQ(All(column), (Words{"x", "a"}));
}

TEST(Column, RemoveClosesTheGapAndMinusOneOrPastTheEndIsTheLast) {
    auto column = Made({"a", "b", "c", "d", "e"});
    column.Remove(1);
    EXPECT_EQ(All(column), (Words{"a", "c", "d", "e"}));
    column.Remove(-1);
    EXPECT_EQ(All(column), (Words{"a", "c", "d"}));
    column.Remove(3);
    EXPECT_EQ(All(column), (Words{"a", "c"}));
    column.Remove(0);
    EXPECT_EQ(All(column), (Words{"c"}));
}

TEST(Column, TheLastRemainingSlotIsEmptiedNotTaken) {
    auto column = Made({"a"});
    column.Remove(5);
    EXPECT_EQ(All(column), (Words{""}));
    Column<std::string> none;
    none.Remove(0);
    EXPECT_EQ(All(none), (Words{""}));
}

TEST(Column, FillWritesTheSlotsThatExist) {
    Column<int> column;
    column.Reset(5);
    column.Fill(-3, 1, 7);
    column.Fill(3, 99, 8);
    column.Fill(2, 1, 9);  // from behind to in front: none
    EXPECT_EQ(All(column), (std::vector<int>{7, 7, 0, 8, 8}));
}

TEST(Column, ValuesAreMovedAndNeverCopied) {
    Column<std::unique_ptr<int>> column;
    for (int i = 0; i < 100; ++i) {
        column.Insert(i / 2, std::make_unique<int>(i));
    }
    column.Remove(50);
    EXPECT_EQ(column.Size(), 99);
    EXPECT_EQ(*column[0], 1);  // 1 came in front of 0, all others between the two
    EXPECT_EQ(*column[98], 0);
}

TEST(Column, ARemovedOrResetValueIsReleasedAtOnce) {
    const auto value = std::make_shared<int>(1);
    Column<std::shared_ptr<int>> column;
    for (int i = 0; i < 4; ++i) {
        column.Insert(-1, value);
    }
    EXPECT_EQ(value.use_count(), 5);
    column.Remove(1);
    EXPECT_EQ(value.use_count(), 4);
    column.Remove(0);
    column.Remove(-1);
    EXPECT_EQ(value.use_count(), 2);
    column.Reset(1);
    EXPECT_EQ(value.use_count(), 1);
}

// The rules once more on a plain vector, and many random operations on both.
TEST(Column, BehavesAsTheRulesDoOnAVector) {
    std::mt19937 random(42);
    Column<int> column;
    std::vector<int> plain;
    const auto index = [&] {
        const Long size = static_cast<Long>(plain.size());
        return static_cast<Long>(random() % static_cast<unsigned>(size + 6)) - 3;
    };
    for (int step = 0; step < 20'000; ++step) {
        const Long at = index();
        const Long highest = static_cast<Long>(plain.size()) - 1;
        const auto what = random() % 100;
        if (what < 50) {
            column.Insert(at, step);
            const bool appends = plain.empty() || at == -1 || at > highest;
            plain.insert(appends ? plain.end() : plain.begin() + std::max(at, 0), step);
        } else if (what < 97) {
            column.Remove(at);
            if (plain.size() <= 1) {
                plain.assign(1, 0);
            } else {
                plain.erase(plain.begin() + (at == -1 || at > highest ? highest : std::max(at, 0)));
            }
        } else if (what < 99) {
            const Long to = at + static_cast<Long>(random() % 50);
            column.Fill(at, to, -step);
            for (Long i = std::max(at, 0); i <= std::min(to, highest); ++i) {
                plain[static_cast<std::size_t>(i)] = -step;
            }
            // A value that lies on both sides of the gap, counted over any range.
            Long expected = 0;
            const Long first = index();
            for (Long i = std::max(first, 0); i <= highest; ++i) {
                expected += plain[static_cast<std::size_t>(i)] == -step ? 1 : 0;
            }
            ASSERT_EQ(column.Count(first, highest + 3, -step), expected) << "step " << step;
        } else {
            column.Reset(1);
            plain.assign(1, 0);
        }
        ASSERT_EQ(All(column), plain) << "step " << step;
    }
}

}  // namespace
}  // namespace sarnel

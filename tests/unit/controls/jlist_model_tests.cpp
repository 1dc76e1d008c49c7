// The list against a plain rendering of its rules: the same random operations on both, and all that
// can be observed is compared after each.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "controls/list/jlist.h"
#include "core/base/failure.h"
#include "tests/unit/support/list_bench.h"
#include "tests/unit/support/naive_list.h"

namespace sarnel {
namespace {

using support::ListBench;
using support::NaiveList;

class Pair {
  public:
    Pair(ListBench::Kind kind, Long visibleRows, unsigned seed)
        : bench_(kind, visibleRows), plain_(visibleRows), random_(seed) {
        plain_.sorted = plain_.sortedLoaded = kind == ListBench::kStoredSorted;
        plain_.showItemImages = kind == ListBench::kWithImages;
    }

    /// One random operation; answers what it was.
    std::string Step() {
        const auto what = random_() % 100;
        return what < 40   ? Add()
               : what < 52 ? Remove()
               : what < 66 ? WriteIndex()
               : what < 80 ? Select()
               : what < 92 ? MoveView()
                           : Rare();
    }
    void Compare() const;

  private:
    Long Below(Long count) {
        return static_cast<Long>(random_() % static_cast<unsigned>(std::max(count, 1)));
    }
    bool Coin() { return random_() % 2 == 0; }
    /// From a little below the rows to a little above them.
    Long AnyIndex() { return Below(plain_.listCount + 5) - 2; }
    std::u16string AnyText() {
        std::u16string text(random_() % 3, u'a');
        for (char16_t& unit : text) {
            unit = std::u16string_view(u"aAbB\u00E9\u0101")[random_() % 6];
        }
        return text;
    }

    std::string Add();
    std::string Remove();
    std::string WriteIndex();
    std::string Select();
    std::string MoveView();
    std::string Rare();
    void CompareRows() const;

    ListBench bench_;
    JList& list_ = *bench_.list;
    NaiveList plain_;
    std::mt19937 random_;
};

std::string Pair::Add() {
    const std::u16string text = AnyText();
    const std::u16string data = AnyText();
    const Long index = random_() % 3 == 0 ? AnyIndex() : -1;
    list_.AddItem(text, data, index);
    plain_.AddItem(text, data, index);
    return "AddItem at " + std::to_string(index);
}

std::string Pair::Remove() {
    const Long index = AnyIndex();
    list_.RemoveItem(index);
    plain_.RemoveItem(index);
    return "RemoveItem " + std::to_string(index);
}

std::string Pair::WriteIndex() {
    const Long index = AnyIndex();
    switch (random_() % 5) {
        case 0:
            list_.ListIndex(index);
            plain_.SetListIndex(index);
            return "ListIndex";
        case 1:
            list_.ListCurrent(index);
            plain_.SetListCurrent(index);
            return "ListCurrent";
        case 2:
            list_.FocusIndex(index);
            plain_.focusIndex = index;
            return "FocusIndex";
        case 3: {
            const std::u16string data = AnyText();
            list_.ListData(index, data);
            plain_.SetListData(index, data);
            return "ListData";
        }
        default:
            if (index >= 0 && index < static_cast<Long>(plain_.image.size())) {
                list_.ImageIndex(index, index * 3);
                plain_.SetImage(index, index * 3);
            }
            return "ImageIndex";
    }
}

std::string Pair::Select() {
    const bool flag = Coin();
    if (Coin()) {
        const Long index = AnyIndex();
        list_.Selected(index, flag);
        plain_.SetSelected(index, flag);
        return "Selected " + std::to_string(index);
    }
    const bool all = random_() % 4 == 0;
    const Long start = all ? -1 : Below(plain_.listCount);
    const Long end = all ? -1 : AnyIndex();
    if (end == -2 || (end == -1 && start == 0)) {
        return "no range";  // bounds of which only one names a row say nothing
    }
    list_.ClearOrSelect(start, end, flag);
    plain_.ClearOrSelect(start, end, flag);
    return "ClearOrSelect " + std::to_string(start) + " " + std::to_string(end);
}

std::string Pair::MoveView() {
    const Long index = AnyIndex();
    switch (random_() % 5) {
        case 0:
            list_.DisplayFrom(index);
            plain_.DisplayFrom(index);
            return "DisplayFrom";
        case 1:
            list_.HighlightCurrent();
            plain_.HighlightCurrent();
            return "HighlightCurrent";
        case 2:
            list_.AdjustDisplayRange();
            plain_.AdjustDisplayRange();
            return "AdjustDisplayRange";
        case 3:
            list_.Refresh();
            plain_.Refresh();
            return "Refresh";
        default: {
            const bool flag = Coin();
            list_.RedrawFlag(flag);
            plain_.SetRedrawFlag(flag);
            return "RedrawFlag";
        }
    }
}

std::string Pair::Rare() {
    const bool flag = Coin();
    switch (random_() % 12) {
        case 0:
            list_.Clear();
            plain_.Clear();
            return "Clear";
        case 1:
        case 2:
        case 3:
            list_.Sort(flag);
            plain_.Sort(flag);
            return "Sort";
        case 4:
        case 5:
            list_.ReverseStringArray();
            plain_.Reverse();
            return "ReverseStringArray";
        case 6:
            list_.Sorted(flag);
            plain_.SetSorted(flag);
            return "Sorted";
        case 7:
            list_.ShowItemImages(flag);
            plain_.SetShowItemImages(flag);
            return "ShowItemImages";
        default: {
            const std::u16string needle = AnyText();
            EXPECT_EQ(list_.FindDataIndex(needle, flag), plain_.FindDataIndex(needle, flag));
            return "FindDataIndex";
        }
    }
}

void Pair::CompareRows() const {
    for (Long i = -2; i <= plain_.listCount + 3; ++i) {
        const bool has = plain_.HasSlot(i);
        const auto at = static_cast<std::size_t>(i);
        ASSERT_EQ(list_.List(i), has ? plain_.text[at] : u"") << i;
        ASSERT_EQ(list_.ListData(i), has ? plain_.data[at] : u"") << i;
        ASSERT_EQ(list_.Selected(i), has && plain_.selected[at]) << i;
        if (i >= 0 && at < plain_.image.size()) {
            ASSERT_EQ(list_.ImageIndex(i), plain_.image[at]) << i;
        } else {
            ASSERT_THROW(list_.ImageIndex(i), ComponentError) << i;
        }
    }
}

void Pair::Compare() const {
    ASSERT_EQ(list_.ListCount(), plain_.listCount);
    ASSERT_NO_FATAL_FAILURE(CompareRows());
    ASSERT_EQ(list_.ListIndex(), plain_.listIndex);
    ASSERT_EQ(list_.ListCurrent(), plain_.listCurrent);
    ASSERT_EQ(list_.newIndex(), plain_.newIndex);
    ASSERT_EQ(list_.SelCount(), plain_.selCount);
    ASSERT_EQ(list_.FocusIndex(), plain_.focusIndex);
    ASSERT_EQ(list_.CaretIndex(), plain_.caretIndex);
    ASSERT_EQ(list_.DisplayFirst(), plain_.displayFirst);
    ASSERT_EQ(list_.DisplayLast(), plain_.displayLast);
    ASSERT_EQ(list_.TopIndex(), plain_.topIndex);
    ASSERT_EQ(list_.RedrawFlag(), plain_.redrawFlag);
    ASSERT_EQ(list_.Sorted(), plain_.sorted);
    ASSERT_EQ(list_.SortedLoaded(), plain_.sortedLoaded);
}

void RunPair(ListBench::Kind kind, Long visibleRows, unsigned seed, int steps) {
    Pair pair(kind, visibleRows, seed);
    for (int step = 0; step < steps; ++step) {
        const std::string what = pair.Step();
        SCOPED_TRACE("seed " + std::to_string(seed) + ", step " + std::to_string(step) + ": " +
                     what);
        ASSERT_NO_FATAL_FAILURE(pair.Compare());
    }
}

TEST(JListModel, AListThatKeepsOrderOfArrivalFollowsTheRules) {
    for (unsigned seed = 1; seed <= 12; ++seed) {
        ASSERT_NO_FATAL_FAILURE(RunPair(ListBench::kAsPlaylist, 5, seed, 400));
    }
}

TEST(JListModel, ASortedListFollowsTheRules) {
    for (unsigned seed = 101; seed <= 112; ++seed) {
        ASSERT_NO_FATAL_FAILURE(RunPair(ListBench::kStoredSorted, 4, seed, 400));
    }
}

TEST(JListModel, AListWithImagesFollowsTheRules) {
    for (unsigned seed = 201; seed <= 212; ++seed) {
        ASSERT_NO_FATAL_FAILURE(RunPair(ListBench::kWithImages, 1, seed, 400));
    }
}

// Sorting alone, on lists long enough to be partitioned several times over.
TEST(JListModel, SortMovesTextsPayloadsAndFlagsAsTheRulesDo) {
    std::mt19937 random(77);
    for (int round = 0; round < 150; ++round) {
        ListBench bench;
        NaiveList plain(5);
        const auto letters = 1 + random() % 12;
        for (auto count = random() % 60; count > 0; --count) {
            const std::u16string text(1, static_cast<char16_t>(u'a' + random() % letters));
            const std::u16string data(1, static_cast<char16_t>(u'0' + count));
            bench.list->AddItem(text, data);
            plain.AddItem(text, data, -1);
            if (random() % 3 == 0) {
                bench.list->Selected(bench.list->newIndex(), true);
                plain.SetSelected(plain.newIndex, true);
            }
        }
        bench.list->Sort(true);
        plain.Sort(true);
        for (Long i = 0; i < plain.listCount; ++i) {
            const auto at = static_cast<std::size_t>(i);
            ASSERT_EQ(bench.list->List(i), plain.text[at]) << round << ' ' << i;
            ASSERT_EQ(bench.list->ListData(i), plain.data[at]) << round << ' ' << i;
            ASSERT_EQ(bench.list->Selected(i), plain.selected[at]) << round << ' ' << i;
        }
    }
}

}  // namespace
}  // namespace sarnel

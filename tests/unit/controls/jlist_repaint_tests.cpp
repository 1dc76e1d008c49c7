// A repaint draws only what has changed. Two lists get the same random operations; of one the looks
// are declared changed before each of them, so that it is always painted from a blank face. Every
// point of the two must be the same at all times.
#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <memory>
#include <random>

#include "controls/list/jlist.h"
#include "tests/unit/support/list_bench.h"

namespace sarnel {
namespace {

using platform::Colour;
using support::ListBench;

JListStored Stored(bool images) {
    JListStored stored;
    stored.sorted = false;
    stored.showItemImages = images;
    return stored;
}

class Twins {
  public:
    explicit Twins(bool images)
        : first_({150, 98}, Stored(images)), second_({150, 98}, Stored(images)) {}

    /// Runs the same on both.
    void Do(const std::function<void(ListBench&)>& act) {
        second_.list->SetFont(second_.list->GetFont());
        act(first_);
        act(second_);
        // What is drawn in the midst of an operation may meet a face that is not blank; after a
        // repaint both show the same.
        second_.list->SetFont(second_.list->GetFont());
        first_.list->DisplayList();
        second_.list->DisplayList();
    }
    bool Same() const {
        const platform::Surface& a = first_.list->Face();
        const platform::Surface& b = second_.list->Face();
        if (!(a.GetSize() == b.GetSize())) {
            return false;
        }
        for (Long y = 0; y < a.Height(); ++y) {
            if (std::memcmp(a.Row(y), b.Row(y), static_cast<std::size_t>(a.Width()) * 4) != 0) {
                return false;
            }
        }
        return true;
    }

  private:
    ListBench first_;
    ListBench second_;
};

class RandomRepaints : public ::testing::TestWithParam<bool> {
  protected:
    Long Pick(Long from, Long to) { return std::uniform_int_distribution<Long>(from, to)(random_); }
    std::function<void(ListBench&)> RowOperation();
    std::function<void(ListBench&)> LookOperation();
    std::function<void(ListBench&)> UserOperation();

    std::mt19937 random_{20261121};
};

std::function<void(ListBench&)> RandomRepaints::RowOperation() {
    const Long row = Pick(-1, 12);
    const bool flag = Pick(0, 1) != 0;
    const std::u16string text(static_cast<std::size_t>(Pick(0, 30)), u'm');
    switch (Pick(0, 7)) {
        case 0:
        case 1:
            return [=](ListBench& b) { b.list->AddItem(text, u"", row); };
        case 2:
            return [=](ListBench& b) { b.list->RemoveItem(row); };
        case 3:
            return [=](ListBench& b) { b.list->Selected(row, flag); };
        case 4:
            return [=](ListBench& b) { b.list->ListCurrent(row); };
        case 5:
            return [=](ListBench& b) { b.list->ClearOrSelect(0, row, flag); };
        case 6:
            return [=](ListBench& b) { b.list->RedrawFlag(flag); };
        default:
            return [=](ListBench& b) { b.list->ListIndex(row); };
    }
}

std::function<void(ListBench&)> RandomRepaints::LookOperation() {
    const Colour colour = Pick(0, 0xFFFFFF);
    const bool flag = Pick(0, 1) != 0;
    const Long size = Pick(-4, 40);
    switch (Pick(0, 13)) {
        case 0:
            return [=](ListBench& b) { b.list->SelTextColor(colour); };
        case 1:
            return [=](ListBench& b) { b.list->FocusRectColor(colour); };
        case 2:
            return [=](ListBench& b) { b.list->TextColor(colour); };
        case 3:
            return [=](ListBench& b) { b.list->SelColor2(colour); };
        case 4:
            return [=](ListBench& b) { b.list->ThumbColor1(colour); };
        case 5:
            return [=](ListBench& b) { b.list->ThumbBorderColor(colour); };
        case 6:
            return [=](ListBench& b) { b.list->ShowNumeric(flag); };
        case 7:
            return [=](ListBench& b) { b.list->ShowSelectRect(flag); };
        case 8:
            return [=](ListBench& b) { b.list->BackColor(colour); };
        case 9:
            return [=](ListBench& b) { b.list->Enabled(true); };
        case 10:
            return [=](ListBench& b) { b.list->ItemImageSize(size); };
        case 11:
            return [=](ListBench& b) {
                platform::Surface picture({3, 3});
                picture.FillRect({0, 0, 2, 2}, colour);
                b.list->AddImage(std::make_shared<const platform::Surface>(picture));
            };
        case 12:
            return [=](ListBench& b) { b.list->Width(150 + size); };
        default:
            return [](ListBench& b) { b.list->ListFont(b.list->ListFont()); };
    }
}

std::function<void(ListBench&)> RandomRepaints::UserOperation() {
    const Long x = Pick(-5, 155);
    const Long y = Pick(0, 98);
    const Long code = Pick(32, 40);
    const Long shift = Pick(0, 3);
    switch (Pick(0, 2)) {
        case 0:
            return [=](ListBench& b) {
                b.windows.SendMessage(b.list->HWnd(), platform::WM_KEYDOWN, code, shift);
            };
        case 1:
            return [=](ListBench& b) {
                b.MoveTo(x, y);
                b.After(1, [&b] { b.Release(); });
                b.Press();
                b.Release();
            };
        default:
            return [=](ListBench& b) { b.list->DisplayFrom(code - 32); };
    }
}

TEST_P(RandomRepaints, ShowWhatARepaintFromABlankFaceShows) {
    Twins twins(GetParam());
    for (int step = 0; step < 6000; ++step) {
        const Long kind = Pick(0, 9);
        twins.Do(kind < 5 ? RowOperation() : kind < 8 ? LookOperation() : UserOperation());
        ASSERT_TRUE(twins.Same()) << "step " << step;
        if (step % 500 == 499) {
            twins.Do([](ListBench& b) { b.list->Clear(); });
            ASSERT_TRUE(twins.Same()) << "cleared at " << step;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(WithAndWithoutImages, RandomRepaints, ::testing::Bool());

TEST(Repaints, TenThousandRowsPaintEachOfTheirViews) {
    ListBench bench({281, 181}, Stored(false));
    bench.list->RedrawFlag(false);
    bench.AddMany(10000);
    bench.list->RedrawFlag(true);
    for (Long row = 0; row < 10000; row += 7) {
        bench.list->DisplayFrom(row);
        bench.list->Selected(row, true);
        bench.list->ListCurrent(row);
    }
    EXPECT_EQ(bench.list->DisplayLast(), 9999);
}

}  // namespace
}  // namespace sarnel

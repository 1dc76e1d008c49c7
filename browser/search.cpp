#include "browser/search.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <string>

#include "core/base/failure.h"
#include "core/base/impulsevalue.h"
#include "core/state/frmmain.h"
#include "core/state/program.h"
#include "platform/base/text.h"
#include "playback/mPlayback.h"
#include "skin/panels.h"

namespace sarnel {

namespace {

// The rows that have a text in them, both in capitals. Each keystroke asks it of every row, so what
// rows are made of is looked at where it lies, and nothing is copied.
class Filter {
  public:
    explicit Filter(std::u16string_view text) : capitals_(platform::Upper(text)) {}

    bool Matches(const RowText& text) const {
        return text.Units([this](const auto& units) { return IsIn(units); });
    }

  private:
    template <class Units>
    bool IsIn(const Units& units) const {
        const auto isCapital = [](auto unit, char16_t capital) {
            return platform::UpperUnit(UnitOf(unit)) == capital;
        };
        return std::search(units.begin(), units.end(), capitals_.begin(), capitals_.end(),
                           isCapital) != units.end() ||
               capitals_.empty();
    }

    std::u16string capitals_;
};

JList& Hits() {
    return *App().Main().lst_Search;
}

}  // namespace

void RefreshSearch(std::u16string_view filter) {
    JList& hits = Hits();
    const JList& rows = Playlist();
    const Filter wanted(filter);
    hits.Clear();
    hits.RedrawFlag(false);
    for (Long row = 0; row < rows.ListCount(); ++row) {
        if (wanted.Matches(rows.TextAt(row))) {
            hits.AddItem(rows.List(row), LongToText(row));
        }
    }
    hits.RedrawFlag(true);
    if (hits.ListCount() > 0) {
        hits.Selected(0, true);
        hits.ListIndex(0);
    }
}

void StepSearch(int by) {
    JList& hits = Hits();
    const Long to = hits.ListIndex() + by;
    if (to < 0 || to >= hits.ListCount()) {
        return;
    }
    hits.ClearOrSelect(-1, -1, false);
    hits.ListIndex(to);
    hits.Selected(to, true);
    hits.AdjustDisplayRange();
}

void PlayHit() {
    const JList& hits = Hits();
    // An emptied list has ListIndex 0.
    if (hits.ListIndex() < 0 || hits.ListCount() == 0) {
        return;
    }
    if (const std::optional<Long> row = TextToLong(hits.ListData(hits.ListIndex()))) {
        Playlist().ListIndex(*row);
    }
    Playlist().ListCurrent(Playlist().ListIndex());
    Playlist().HighlightCurrent();
    ShowPanel(kSearchPanel, false);
    // The panel is off the screen before an item opens, which may take long.
    App().windows.DoEvents();
    PlayCurrentItem();
}

}  // namespace sarnel

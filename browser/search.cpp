#include "browser/search.h"

#include <array>
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

// Which texts have another one in them, both in capitals. Each keystroke asks that of every row: so
// the units are looked at where they lie, and for most of them one look into a table is enough.
class Filter {
  public:
    explicit Filter(std::u16string_view text) : capitals_(platform::Upper(text)) {
        for (std::size_t unit = 0; unit < upper_.size(); ++unit) {
            upper_.at(unit) = platform::UpperUnit(static_cast<char16_t>(unit));
            begins_.at(unit) = !capitals_.empty() && upper_.at(unit) == capitals_.front();
        }
    }

    bool Matches(const RowText& text) const {
        return text.Units([this](const auto& units) { return IsIn(units); });
    }

  private:
    template <class Units>
    bool IsIn(const Units& units) const {
        if (capitals_.empty()) {
            return true;
        }
        const auto* const begin = units.data();
        const auto* const end = begin + units.size();
        for (const auto* at = begin; static_cast<std::size_t>(end - at) >= capitals_.size(); ++at) {
            if (Begins(UnitOf(*at)) && Continues(at + 1)) {
                return true;
            }
        }
        return false;
    }

    template <class Unit>
    bool Continues(const Unit* at) const {
        for (std::size_t i = 1; i < capitals_.size(); ++i, ++at) {
            if (UpperOf(UnitOf(*at)) != capitals_[i]) {
                return false;
            }
        }
        return true;
    }

    char16_t UpperOf(char16_t unit) const {
        return unit < upper_.size() ? upper_[unit] : platform::UpperUnit(unit);
    }
    bool Begins(char16_t unit) const {
        return unit < begins_.size() ? begins_[unit]
                                     : platform::UpperUnit(unit) == capitals_.front();
    }

    std::u16string capitals_;
    std::array<char16_t, 256> upper_{};
    std::array<bool, 256> begins_{};
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
            hits.AddLast(rows.TextAt(row).Copy(), RowText(LongToText(row)));
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

// Which texts have another one in them, ignoring case. Each keystroke in the search panel asks that
// of every row of the playlist, so texts are looked at where they lie, eight bytes at a time: a
// place counts only if the first letter and the second stand there, which is rarely so.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "controls/list/rowtext.h"

namespace sarnel {

class SearchFilter {
  public:
    explicit SearchFilter(std::u16string_view text);

    /// Whether the capitals of the filter stand in those of the text, unit by unit. An empty filter
    /// is in every text.
    bool Matches(const RowText& text) const;

  private:
    /// The units that have one capital, each repeated over eight bytes.
    struct Letter {
        std::vector<std::uint64_t> narrow;  ///< one byte a unit
        std::vector<std::uint64_t> wide;    ///< two bytes
        explicit Letter(char16_t capital);
    };

    template <class Unit>
    bool IsIn(std::basic_string_view<Unit> text) const;
    template <class Unit>
    bool StandsAt(const Unit* place) const;

    std::u16string capitals_;
    std::vector<Letter> letters_;  ///< the first two
};

}  // namespace sarnel

#include "platform/widgets/text_edit.h"

#include <algorithm>
#include <utility>

#include "platform/base/text.h"

namespace platform {

namespace {

enum class UnitKind { kBlank, kLineEnd, kMark, kWord };

UnitKind KindOf(char16_t unit) {
    constexpr std::u16string_view kBlanks = u" \t\u00A0\u3000";
    constexpr std::u16string_view kMarks = u"!\"#$%&()*+,-./:;<=>?@[\\]^`{|}~";
    if (unit == u'\r' || unit == u'\n') {
        return UnitKind::kLineEnd;
    }
    if (kBlanks.find(unit) != std::u16string_view::npos) {
        return UnitKind::kBlank;
    }
    return kMarks.find(unit) != std::u16string_view::npos ? UnitKind::kMark : UnitKind::kWord;
}

bool IsSpace(char16_t unit) {
    return KindOf(unit) <= UnitKind::kLineEnd;
}

bool IsCombining(char16_t unit) {
    return unit >= 0x0300 && unit <= 0x036F;
}

}  // namespace

void TextEdit::Text(std::u16string_view text) {
    text_ = text;
    caret_ = anchor_ = 0;
    ForgetChanges();
}

std::u16string_view TextEdit::Selected() const {
    return std::u16string_view(text_).substr(SelStart(), SelEnd() - SelStart());
}

std::size_t TextEdit::Settled(std::size_t place) const {
    place = std::min(place, text_.size());
    return InsidePair(text_, place) ? place - 1 : place;
}

bool TextEdit::IsBoundary(std::size_t place) const {
    return place == 0 || place >= text_.size() ||
           (!InsidePair(text_, place) && !IsCombining(text_[place]));
}

void TextEdit::MoveTo(std::size_t place, bool extend) {
    caret_ = Settled(place);
    if (!extend) {
        anchor_ = caret_;
    }
}

void TextEdit::Select(std::size_t from, std::size_t to) {
    anchor_ = Settled(from);
    caret_ = Settled(to);
}

void TextEdit::SelectWordAt(std::size_t place) {
    if (place >= text_.size() || KindOf(text_[place]) == UnitKind::kLineEnd) {
        MoveTo(place, false);
        return;
    }
    const UnitKind kind = KindOf(text_[place]);
    std::size_t from = place;
    while (from > 0 && KindOf(text_[from - 1]) == kind) {
        --from;
    }
    std::size_t to = place;
    while (to < text_.size() && KindOf(text_[to]) == kind) {
        ++to;
    }
    Select(from, to);
}

void TextEdit::Replace(std::u16string_view text) {
    const std::size_t start = SelStart();
    Record({start, std::u16string(Selected()), std::u16string(text)});
    text_.replace(start, SelEnd() - start, text);
    MoveTo(start + text.size(), false);
}

// Goes on with the last change where it can.
void TextEdit::Record(Change next) {
    if (next.removed.empty() && next.inserted.empty()) {
        return;
    }
    const bool mayGrow = change_ && !change_->isUndone;
    const bool typesOn = mayGrow && next.removed.empty() && !change_->inserted.empty() &&
                         next.place == change_->place + change_->inserted.size();
    const bool erasesOn = mayGrow && next.inserted.empty() && change_->inserted.empty();
    if (typesOn) {
        change_->inserted += next.inserted;
    } else if (erasesOn && next.place == change_->place) {
        change_->removed += next.removed;
    } else if (erasesOn && next.place + next.removed.size() == change_->place) {
        change_->place = next.place;
        change_->removed.insert(0, next.removed);
    } else {
        change_ = std::move(next);
    }
}

bool TextEdit::Undo() {
    if (!change_) {
        return false;
    }
    Change& change = *change_;
    text_.replace(change.place, change.inserted.size(), change.removed);
    std::swap(change.removed, change.inserted);
    change.isUndone = true;
    Select(change.place, change.place + change.inserted.size());
    return true;
}

bool TextEdit::Erase(std::size_t place) {
    if (!HasSelection()) {
        Select(caret_, place);
    }
    const bool erases = HasSelection();
    Replace({});
    return erases;
}

std::size_t TextEdit::CharacterAt(std::size_t place) const {
    place = std::min(place, text_.size());
    while (!IsBoundary(place)) {
        --place;
    }
    return place;
}

std::size_t TextEdit::Before(std::size_t place) const {
    return place == 0 ? 0 : CharacterAt(std::min(place, text_.size()) - 1);
}

std::size_t TextEdit::After(std::size_t place) const {
    place = std::min(place, text_.size());
    while (place < text_.size() && !IsBoundary(++place)) {
    }
    return place;
}

std::size_t TextEdit::WordBefore(std::size_t place) const {
    place = std::min(place, text_.size());
    while (place > 0 && IsSpace(text_[place - 1])) {
        --place;
    }
    const UnitKind kind = place > 0 ? KindOf(text_[place - 1]) : UnitKind::kBlank;
    while (place > 0 && KindOf(text_[place - 1]) == kind) {
        --place;
    }
    return place;
}

std::size_t TextEdit::WordAfter(std::size_t place) const {
    const UnitKind kind = place < text_.size() ? KindOf(text_[place]) : UnitKind::kBlank;
    while (place < text_.size() && KindOf(text_[place]) == kind) {
        ++place;
    }
    while (place < text_.size() && IsSpace(text_[place])) {
        ++place;
    }
    return std::min(place, text_.size());
}

}  // namespace platform

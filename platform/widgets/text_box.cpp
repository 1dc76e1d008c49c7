#include "platform/widgets/text_box.h"

#include <algorithm>

#include "platform/drawing/text_lines.h"

namespace platform {

namespace {

constexpr Long kInset = 2;  // pixels between the box's edges and the text

}  // namespace

TextBox::TextBox(WindowSystem& windows, Handle parent, const Rect& rect, Kind kind)
    : Widget(windows, parent, rect), kind_(kind), locked_(kind == Kind::kPage) {
    TellInput(Rect{});
}

void TextBox::Locked(bool value) {
    locked_ = value || MultiLine();
    TellInput(Rect{});
    Draw();
}

void TextBox::TellInput(const std::optional<Rect>& caret) {
    windows_.SetTextInput(HWnd(), Locked() ? std::nullopt : caret);
}

void TextBox::Text(std::u16string_view value) {
    edit_.Text(value);
    scroll_ = topLine_ = 0;
    Changed();
}

void TextBox::SelStart(Long value) {
    MoveCaret(static_cast<std::size_t>(std::max(value, 0)), false);
}

void TextBox::SelLength(Long value) {
    const std::size_t start = edit_.SelStart();
    edit_.Select(start, start + static_cast<std::size_t>(std::max(value, 0)));
    ScrollToCaret();
    Draw();
}

void TextBox::SelText(std::u16string_view value) {
    edit_.Replace(value);
    edit_.ForgetChanges();
    Changed();
}

void TextBox::LineScroll(Long lines) {
    const auto wanted = std::clamp<std::int64_t>(std::int64_t{topLine_} + lines, 0, MostTopLine());
    if (wanted != topLine_) {
        topLine_ = static_cast<Long>(wanted);
        Draw();
    }
}

void TextBox::HideCaret() {
    caretHidden_ = true;
    Draw();
}

// After a change of size, font or colour. What stood at the top stays there.
void TextBox::Refit() {
    const bool breaks = !(linesFont_ == GetFont()) || linesWidth_ != TextArea().Width();
    if (!lines_.empty() && breaks) {
        const std::size_t top = lines_[static_cast<std::size_t>(topLine_)].start;
        lines_.clear();
        topLine_ = static_cast<Long>(LineOf(top));
    }
    topLine_ = std::min(topLine_, MostTopLine());
    ScrollToCaret();
    Draw();
}

const std::vector<TextBox::Line>& TextBox::Lines() const {
    const std::u16string_view text = edit_.Text();
    if (!MultiLine()) {
        const TextComposed* composed = Composed();
        const std::size_t length =
            composed == nullptr ? text.size()
                                : text.size() - edit_.Selected().size() + composed->text.size();
        lines_.assign(1, {0, length});
        return lines_;
    }
    if (!lines_.empty()) {
        return lines_;
    }
    linesFont_ = GetFont();
    linesWidth_ = TextArea().Width();
    for (const std::u16string_view line :
         BreakLines(windows_.GetDriver(), linesFont_, text, std::max(linesWidth_, 1))) {
        lines_.push_back({static_cast<std::size_t>(line.data() - text.data()), line.size()});
    }
    return lines_;
}

// The line at the top when the last one is at the bottom.
Long TextBox::MostTopLine() const {
    return std::max(LineCount() - VisibleLines(), 0);
}

std::size_t TextBox::LineOf(std::size_t place) const {
    const auto& lines = Lines();
    const auto after =
        std::upper_bound(lines.begin() + 1, lines.end(), place,
                         [](std::size_t at, const Line& line) { return at < line.start; });
    return static_cast<std::size_t>(after - lines.begin()) - 1;
}

// What is being composed in the box, if anything.
const TextComposed* TextBox::Composed() const {
    const TextComposed& composed = windows_.Composition();
    const bool isOwn = !Locked() && windows_.GetFocus() == HWnd() && !composed.text.empty();
    return isOwn ? &composed : nullptr;
}

// As it is shown, which is where the places in lines count.
std::u16string TextBox::TextOf(const Line& line) const {
    const TextComposed* composed = Composed();
    if (composed == nullptr) {
        return edit_.Text().substr(line.start, line.length);
    }
    std::u16string text = edit_.Text();
    return text.replace(edit_.SelStart(), edit_.Selected().size(), composed->text);
}

std::size_t TextBox::ShownCaret() const {
    const TextComposed* composed = Composed();
    if (composed == nullptr) {
        return edit_.Caret();
    }
    const std::size_t end = composed->text.size();
    return edit_.SelStart() + std::min(composed->caret.value_or(end), end);
}

Long TextBox::LineHeight() const {
    return std::max(TextHeight(u"^j"), 1);
}

Long TextBox::VisibleLines() const {
    return std::max(TextArea().Height() / LineHeight(), 1);
}

// Where text may be drawn.
Rect TextBox::TextArea() const {
    if (MultiLine()) {
        return {kInset, kInset, Width() - kInset, Height() - kInset};
    }
    const Long top = (Height() - LineHeight()) / 2;
    return {kInset, top, Width() - kInset, top + LineHeight()};
}

// How far from the line's left edge the caret stands at a place, which need not be in the line.
Long TextBox::OffsetIn(const Line& line, std::size_t place) const {
    const std::size_t inside = std::clamp(place, line.start, line.End()) - line.start;
    return windows_.GetDriver().TextOffset(GetFont(), TextOf(line), inside);
}

// The gap between two characters that a point is nearest to, or the character that it is on.
std::size_t TextBox::PlaceAt(const MouseEvent& event, Nearest nearest) const {
    const Rect area = TextArea();
    Long row = 0;
    if (MultiLine()) {
        row = std::clamp((static_cast<Long>(event.Y) - area.top) / LineHeight(), 0,
                         VisibleLines() - 1);
        row = std::min(topLine_ + row, LineCount() - 1);
    }
    const Line& line = Lines()[static_cast<std::size_t>(row)];
    const Long x = static_cast<Long>(event.X) - area.left + scroll_;
    // The last place that lies at x or before.
    std::size_t low = line.start;
    std::size_t high = line.End() + 1;
    while (low + 1 < high) {
        const std::size_t middle = low + (high - low) / 2;
        (OffsetIn(line, middle) <= x ? low : high) = middle;
    }
    const std::size_t before = std::max(edit_.CharacterAt(low), line.start);
    const std::size_t after = std::min(edit_.After(before), line.End());
    const bool nearAfter = OffsetIn(line, after) - x < x - OffsetIn(line, before);
    return nearest == Nearest::kGap && nearAfter ? after : before;
}

// Only as far as needed, and never leaving room at the right that text could fill.
void TextBox::ScrollToCaret() {
    if (MultiLine()) {
        return;
    }
    const Line& line = Lines().front();
    const Long width = std::max(TextArea().Width(), 1);
    const Long caret = OffsetIn(line, ShownCaret());
    scroll_ = std::clamp(scroll_, caret - width + 1, caret);
    scroll_ = std::clamp(scroll_, 0, std::max(OffsetIn(line, line.End()) - width + 1, 0));
}

void TextBox::Draw() {
    Surface& face = Canvas();
    face.FillRect(face.Bounds(), BackColor());
    const Rect area = TextArea();
    const auto& lines = Lines();
    const auto first = static_cast<std::size_t>(topLine_);
    const std::size_t end =
        std::min(first + static_cast<std::size_t>(VisibleLines()), lines.size());
    Rect strip = area;
    for (std::size_t i = first; i < end; ++i) {
        strip.bottom = strip.top + LineHeight();
        DrawLine(face, lines[i], strip);
        strip.top = strip.bottom;
    }
    DrawCaret(face);
    ShowFace();
}

// Each line is drawn on a strip of its own first, which cuts it to the text's area, and a second
// time with the colours exchanged where it is selected. What is being composed is underlined.
void TextBox::DrawLine(Surface& face, const Line& line, const Rect& place) {
    const std::u16string text = TextOf(line);
    Surface strip({place.Width(), LineHeight()});
    const auto draw = [&](Colour paper, Colour ink, Long from, Long to) {
        strip.FillRect(strip.Bounds(), paper);
        const Rect from0{-scroll_, 0, strip.Width(), strip.Height()};
        windows_.Text().Draw(strip, GetFont(), text, from0, DT_SINGLELINE | DT_NOPREFIX, ink);
        const Rect part{place.left + from, place.top, place.left + to, place.top + LineHeight()};
        face.BitBlt(Intersect(part, place), strip, {std::max(from, 0), 0});
    };
    draw(BackColor(), ForeColor(), 0, strip.Width());
    if (const TextComposed* composed = Composed()) {
        const std::size_t start = edit_.SelStart();
        const std::size_t end = start + composed->text.size();
        const Rect under{place.left + OffsetIn(line, start) - scroll_, place.bottom - 1,
                         place.left + OffsetIn(line, end) - scroll_, place.bottom};
        face.FillRect(Intersect(under, place), ForeColor());
        return;
    }
    const std::size_t from = std::clamp(edit_.SelStart(), line.start, line.End());
    const std::size_t to = std::clamp(edit_.SelEnd(), line.start, line.End());
    if (from < to) {
        const Long start = OffsetIn(line, from) - scroll_;
        const Long end = OffsetIn(line, to) - scroll_;
        draw(ForeColor(), BackColor(), std::min(start, end), std::max(start, end));
    }
}

// In the client area; none if its line is not in view.
std::optional<Rect> TextBox::CaretRect() const {
    const Rect area = TextArea();
    const std::size_t caret = ShownCaret();
    const std::size_t row = LineOf(caret);
    const Long fromTop = static_cast<Long>(row) - topLine_;
    if (fromTop < 0 || fromTop >= VisibleLines()) {
        return std::nullopt;
    }
    const Long x = area.left + OffsetIn(Lines()[row], caret) - scroll_;
    const Long y = area.top + fromTop * LineHeight();
    return Rect{x, y, x + 1, y + LineHeight()};
}

void TextBox::DrawCaret(Surface& face) {
    if (windows_.GetFocus() != HWnd()) {
        return;
    }
    const std::optional<Rect> caret = CaretRect();
    TellInput(caret);
    const TextComposed* composed = Composed();
    const bool isHidden = caretHidden_ || (composed != nullptr && !composed->caret);
    if (caret && !isHidden) {
        face.FillRect(*caret, ForeColor());
    }
}

}  // namespace platform

// Text with a caret and a selection, and what editing makes of them; it knows no window. Places
// count code units, 0 to the text's length; one past the end counts as the end. The caret and the
// selection's ends never lie inside a surrogate pair.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform {

class TextEdit {
  public:
    const std::u16string& Text() const { return text_; }
    /// Another text, of which nothing can be undone; the caret goes to its start.
    void Text(std::u16string_view text);

    std::size_t Caret() const { return caret_; }
    std::size_t SelStart() const { return caret_ < anchor_ ? caret_ : anchor_; }
    std::size_t SelEnd() const { return caret_ < anchor_ ? anchor_ : caret_; }
    bool HasSelection() const { return caret_ != anchor_; }
    std::u16string_view Selected() const;

    /// Moves the caret. With `extend` the selection's other end stays where it is, else nothing is
    /// selected any more.
    void MoveTo(std::size_t place, bool extend);
    /// Selects from one place to another, where the caret then is.
    void Select(std::size_t from, std::size_t to);
    /// Selects the word, the blanks or the marks of punctuation around the unit at `place`.
    void SelectWordAt(std::size_t place);

    /// Puts `text` in place of the selection and the caret behind it.
    void Replace(std::u16string_view text);
    /// Takes out the selection, or without one what lies between the caret and `place`. Whether
    /// there was anything.
    bool Erase(std::size_t place);

    /// Takes the last change back and selects what came back; the next call brings the change
    /// again. Characters put in one behind the other are one change, and so are characters taken
    /// out beside each other. Whether there was anything to take back.
    bool Undo();
    /// From here on nothing can be undone.
    void ForgetChanges() { change_.reset(); }

    // Where a step from a place leads: by characters as they are seen, a letter with its combining
    // marks as one, and by words: to the start of one.

    std::size_t Before(std::size_t place) const;
    std::size_t After(std::size_t place) const;
    std::size_t WordBefore(std::size_t place) const;
    std::size_t WordAfter(std::size_t place) const;
    /// The start of the character that `place` lies in.
    std::size_t CharacterAt(std::size_t place) const;

  private:
    struct Change {
        std::size_t place = 0;
        std::u16string removed;
        std::u16string inserted;
        bool isUndone = false;
    };

    void Record(Change next);
    std::size_t Settled(std::size_t place) const;
    bool IsBoundary(std::size_t place) const;

    std::u16string text_;
    std::size_t caret_ = 0;
    std::size_t anchor_ = 0;  ///< the other end of the selection
    std::optional<Change> change_;
};

}  // namespace platform

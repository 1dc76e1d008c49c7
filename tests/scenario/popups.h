// What the user of a scenario does in popup menus, and what he saw in the last one.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "menus/jpopupmenu.h"
#include "tests/scenario/output.h"

namespace scenario {

class World;

class Popups {
  public:
    /// Watches the popups of the world's window system.
    explicit Popups(World& world);

    struct Answer {
        int line = 0;                                  ///< where the scenario gives it
        std::optional<std::u16string> keyOrCaption{};  ///< none: the menu is cancelled
    };
    /// What happens in the next popup as soon as it is open. Without an answer it stays for the
    /// commands that `at` has set, and is cancelled when there are none left.
    void AnswerNext(Answer answer) { answer_ = std::move(answer); }

    /// The rows of the last popup, `caption/key text/item key/flags`: of its first level, of the
    /// submenu that was the last to open from it, and so on. Each row is as it was when its level
    /// opened.
    const std::vector<Lines>& LastLevels() const { return levels_; }

  private:
    void Opened(platform::Handle menu);
    void ReadLevel(platform::Handle menu, std::size_t level);
    void Choose(const sarnel::JPopupMenu& menu, platform::Handle shown, const Answer& answer);

    World& world_;
    std::optional<Answer> answer_;
    std::vector<Lines> levels_;
};

}  // namespace scenario

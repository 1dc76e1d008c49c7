#include "platform/desktop/tray/tray_icons.h"

#include <QString>
#include <optional>
#include <utility>

#include "platform/desktop/qt_text.h"
#include "platform/desktop/tray/status_notifier.h"
#include "platform/desktop/tray/xembed_icon.h"

namespace platform::desktop {

// One window's icon, in one tray at a time.
class TrayIcons::Icon {
  public:
    Icon(TrayIcons& icons, Handle window, QString tip)
        : icons_(icons),
          window_(window),
          tip_(std::move(tip)),
          notifier_(
              ++icons.count_, tip_, [this](auto action) { Use(action); },
              [this](bool shown) { NotifierShown(shown); }) {}

    void Begin() {
        icons_.onPlaced_(window_, false);
        notifier_.Begin();
    }

    void SetTip(const QString& tip) {
        if (std::exchange(tip_, tip) == tip) {
            return;
        }
        notifier_.SetTip(tip);
        if (embedded_) {
            embedded_->SetTip(tip);
        }
    }

  private:
    void NotifierShown(bool shown) {
        inNotifier_ = shown;
        if (shown) {
            embedded_.reset();
        } else if (!embedded_) {
            embedded_.emplace(
                icons_.loop_, tip_, [this](auto action) { Use(action); }, [this] { Report(); });
            embedded_->Begin();
        }
        Report();
    }

    void Report() {
        const bool placed = inNotifier_ || (embedded_ && embedded_->IsPlaced());
        if (std::exchange(placed_, placed) != placed) {
            icons_.onPlaced_(window_, placed);
        }
    }

    // The toolkit hands out what comes from the bus when a turn begins, which then would wait.
    void Use(TrayIconUsed::Action action) {
        icons_.events_.Push(TrayIconUsed{window_, action});
        icons_.loop_.Wake();
    }

    TrayIcons& icons_;
    const Handle window_;
    QString tip_;
    bool inNotifier_ = false;
    bool placed_ = false;
    std::optional<XembedIcon> embedded_;  ///< while no notifier is shown
    StatusNotifier notifier_;
};

TrayIcons::TrayIcons(WaitLoop& loop, EventQueue& events, Placed onPlaced)
    : loop_(loop), events_(events), onPlaced_(std::move(onPlaced)) {}

TrayIcons::~TrayIcons() = default;

void TrayIcons::Show(Handle window, std::u16string_view tip) {
    const auto known = icons_.find(window);
    if (known != icons_.end()) {
        known->second->SetTip(Caption(tip));
        return;
    }
    Icon& icon = *(icons_[window] = std::make_unique<Icon>(*this, window, Caption(tip)));
    icon.Begin();
}

void TrayIcons::Hide(Handle window) {
    icons_.erase(window);
}

}  // namespace platform::desktop

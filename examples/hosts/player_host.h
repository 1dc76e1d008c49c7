// What the three hosts share: the object that answers the component, with a player that makes no
// sound, and the beginning and the end of a run.
#pragma once

#include <cstdio>
#include <string>
#include <utility>

#include "core/ambrisor.h"
#include "platform/base/text.h"
#include "silent_player.h"

class PlayerHost : public sarnel::HostObject {
  public:
    explicit PlayerHost(SilentPlayer& player) : player_(player) {}

    // Noted within impulses, and acted on when the component has returned.
    bool exitWished = false;  ///< the user has chosen Exit
    bool listEnded = true;    ///< nothing has been opened yet, or the last item has been played
    bool closed = false;      ///< the window is gone

    sarnel::ImpulseValue ProcessImpulse(sarnel::Ambrisor& /*sender*/, sarnel::ImpulseValue& uMsg,
                                        sarnel::ImpulseValue& wParam, sarnel::ImpulseValue& lParam1,
                                        sarnel::ImpulseValue& lParam2) override {
        using sarnel::Long;
        const auto bytes = [](const sarnel::ImpulseValue& text) {
            return platform::Narrow(text.AsString().value_or(u""));
        };
        const auto time = [](int seconds) {
            return platform::Widen(std::to_string(seconds) + " s");
        };
        switch (uMsg.AsLong().value_or(0)) {
            case sarnel::ImpulseClosed:
                closed = true;
                break;
            case sarnel::ImpulseRequestExit:
                exitWished = true;
                break;
            case sarnel::ImpulseIsSupported:
                lParam1.Assign(bytes(wParam).ends_with(".mp3"));
                break;
            case sarnel::ImpulseGetFileTypes:
                lParam1.Assign(u"*.mp3");
                break;
            case sarnel::ImpulseOpen:
                listEnded = !player_.Open(bytes(lParam1));
                lParam2.Assign(!listEnded);
                std::printf("open %s\n", bytes(lParam1).c_str());
                std::fflush(stdout);
                break;
            case sarnel::ImpulsePause:
                if (wParam.AsBoolean().value_or(false)) {
                    player_.Pause();
                } else {
                    player_.Toggle();
                }
                break;
            case sarnel::ImpulseStop:
                listEnded = player_.HasEnded();
                player_.Stop();
                break;
            case sarnel::ImpulseSeek:
                player_.Seek(wParam.AsLong().value_or(0));
                break;
            case sarnel::ImpulseGetPosition:
                lParam1.Assign(Long{player_.Position()});
                break;
            case sarnel::ImpulseGetLength:
                lParam1.Assign(Long{player_.Length()});
                break;
            case sarnel::ImpulseIsPlaying:
                lParam1.Assign(player_.IsPlaying());
                break;
            case sarnel::ImpulseGetTimeText:
                lParam1.Assign(time(wParam.AsBoolean().value_or(false)
                                        ? player_.Length() - player_.Position()
                                        : player_.Position()));
                break;
            case sarnel::ImpulseGetLengthText:
                lParam1.Assign(time(player_.Length()));
                break;
            default:
                break;  // volume, effects and the rest: nothing to be heard of them
        }
        return sarnel::Long{0};
    }
    sarnel::Long Capacity() override { return 0; }
    sarnel::HostCell* CellItem(sarnel::Long& /*number*/) override { return nullptr; }

  private:
    SilentPlayer& player_;
};

/// Begins a run with a command line, and answers the window's handle.
inline platform::Handle Begin(sarnel::Ambrisor& component, std::u16string line) {
    sarnel::ImpulseValue first;
    sarnel::ImpulseValue second;
    component.ProcessImpulse(sarnel::kImpulseAttach, {}, first, second);
    component.ProcessImpulse(sarnel::kImpulseControl, sarnel::kControlLoad, first, second);
    const platform::Handle window = first.AsLong().value_or(0);
    first = true;
    second = std::move(line);
    component.ProcessImpulse(sarnel::kImpulseControl, sarnel::kControlShow, first, second);
    return window;
}

/// Ends it: the list is saved, and impulse 7 comes before this returns.
inline void End(sarnel::Ambrisor& component) {
    sarnel::ImpulseValue show = false;
    sarnel::ImpulseValue unused;
    component.ProcessImpulse(sarnel::kImpulseControl, sarnel::kControlShow, show, unused);
}

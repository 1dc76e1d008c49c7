// What the probe of the desktop driver says: a line for each event.
#pragma once

#include <array>
#include <cstdio>
#include <iostream>
#include <string>

#include "platform/base/text.h"
#include "platform/driver.h"

namespace probe {

using namespace platform;

inline std::string Escaped(const std::string& bytes) {
    std::string text;
    for (const char c : bytes) {
        if (c > ' ' && c < 0x7F && c != '\\') {
            text.push_back(c);
        } else {
            std::array<char, 8> code{};
            std::snprintf(code.data(), code.size(), "\\x%02x", static_cast<unsigned char>(c));
            text += code.data();
        }
    }
    return text;
}

inline std::string Units(const std::u16string& text) {
    std::string line;
    for (const char16_t unit : text) {
        line += " " + std::to_string(static_cast<int>(unit));
    }
    return line;
}

class EventLines {
  protected:
    static void Say(const std::string& line) { std::cout << line << std::endl; }

    static void At(const char* name, Point point, Long more, Long shift) {
        Say(std::string(name) + " " + std::to_string(point.x) + " " + std::to_string(point.y) +
            " " + std::to_string(more) + " " + std::to_string(shift));
    }

    void Tell(const CloseRequested&) { Say("close"); }
    void Tell(const MinimisedByDesktop&) { Say("minimised"); }
    void Tell(const RestoredByDesktop&) { Say("restored"); }
    void Tell(const WorkAreaChanged&) { Say("workarea"); }
    void Tell(const PointerLeft&) { Say("left"); }
    void Tell(const InputLost&) { Say("lost"); }
    void Tell(const HotKeyPressed& press) { Say("hotkey " + std::to_string(press.key)); }
    void Tell(const TrayIconUsed& use) {
        Say(use.action == TrayIconUsed::Action::kOpen ? "tray open" : "tray menu");
    }
    void Tell(const MovedByDesktop& move) {
        Say("moved " + std::to_string(move.ptScreen.x) + " " + std::to_string(move.ptScreen.y));
    }
    void Tell(const FilesDropped& drop) {
        std::string line = "dropped";
        for (const std::string& path : drop.paths) {
            line += " " + Escaped(path);
        }
        Say(line);
    }
    void Tell(const PointerMoved& move) { At("pointer", move.ptScreen, 0, move.shift); }
    void Tell(const ButtonChanged& change) {
        At(change.down ? "press" : "release", change.ptScreen, change.button, change.shift);
    }
    void Tell(const WheelTurned& turn) { At("wheel", turn.ptScreen, turn.notches, turn.shift); }
    void Tell(const KeyChanged& key) {
        Say(std::string(key.down ? "down " : "up ") + std::to_string(key.code) + " " +
            std::to_string(key.shift));
    }
    void Tell(const TextTyped& typed) { Say("typed" + Units(typed.text)); }
    void Tell(const TextComposed& composed) {
        Say("composed " + (composed.caret ? std::to_string(*composed.caret) : "none") +
            Units(composed.text));
    }
};

}  // namespace probe

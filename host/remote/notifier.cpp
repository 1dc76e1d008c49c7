#include "host/remote/notifier.h"

#include <optional>

namespace veldrin {

using namespace platform;

std::string EscapeMarkup(const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        switch (c) {
            case '&':
                escaped += "&amp;";
                break;
            case '<':
                escaped += "&lt;";
                break;
            case '>':
                escaped += "&gt;";
                break;
            default:
                escaped += c;
                break;
        }
    }
    return escaped;
}

void Notifier::Show(const std::string& title, const std::string& artist, const std::string& album,
                    const std::string& picture) {
    const SessionBus::Target desktop = {"org.freedesktop.Notifications",
                                        "/org/freedesktop/Notifications",
                                        "org.freedesktop.Notifications"};
    constexpr std::int32_t kAsLongAsUsual = -1;
    const std::string body = artist + (artist.empty() || album.empty() ? "" : "\n") + album;
    const BusTable hints = {{"desktop-entry", {std::string("veldrin")}}, {"transient", {true}}};
    bus_.Call(
        desktop, "Notify",
        {{std::string("Veldrin")},
         {*id_},
         {picture},
         {title},
         {EscapeMarkup(body)},
         {BusTexts()},
         {hints},
         {kAsLongAsUsual}},
        [id = id_](const std::optional<BusValues>& answer) {
            if (answer && !answer->empty() && answer->front().As<std::uint32_t>() != nullptr) {
                *id = *answer->front().As<std::uint32_t>();
            }
        });
}

}  // namespace veldrin

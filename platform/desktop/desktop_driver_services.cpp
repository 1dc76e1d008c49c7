// What the driver has beside windows: text, the clipboard, files, the network and the desktop's
// shell.
#include <QClipboard>
#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>
#include <utility>

#include "platform/base/text.h"
#include "platform/desktop/desktop_driver_parts.h"
#include "platform/desktop/download.h"
#include "platform/desktop/drives.h"
#include "platform/desktop/network.h"
#include "platform/desktop/qt_text.h"

namespace platform {

using namespace desktop;

Size DesktopDriver::MeasureText(const Font& font, std::u16string_view text) const {
    return parts_->IsLost() ? SizeWithoutFonts(font, text) : parts_->text.Measure(font, text);
}

TextPicture DesktopDriver::RenderText(const Font& font, std::u16string_view text, Long left,
                                      Long width, Long density) const {
    return parts_->IsLost() ? TextPicture{} : parts_->text.Render(font, text, left, width, density);
}

Long DesktopDriver::TextOffset(const Font& font, std::u16string_view text,
                               std::size_t index) const {
    return parts_->IsLost() ? SizeWithoutFonts(font, text.substr(0, index)).width
                            : parts_->text.Offset(font, text, index);
}

std::u16string DesktopDriver::ClipboardText() const {
    if (parts_->IsLost()) {
        return {};
    }
    const std::u16string text = QGuiApplication::clipboard()->text().toStdU16String();
    return WholeCharacters(text).toStdU16String();
}

void DesktopDriver::SetClipboardText(std::u16string_view text) {
    if (!parts_->IsLost()) {
        QGuiApplication::clipboard()->setText(WholeCharacters(text));
    }
}

void DesktopDriver::OpenDocument(std::u16string_view pathOrAddress) {
    if (parts_->IsLost()) {
        return;
    }
    const QUrl url = QUrl::fromUserInput(WholeCharacters(pathOrAddress));
    if (url.isLocalFile() && !QFileInfo::exists(url.toLocalFile())) {
        parts_->Tell("'" + Narrow(pathOrAddress) + "' is not there");
    } else if (!QDesktopServices::openUrl(url)) {
        parts_->Tell("this desktop opens no pages; is xdg-open installed?");
    }
}

std::vector<Drive> DesktopDriver::Drives() const {
    return DrivesHere();
}

bool DesktopDriver::IsOnline(std::u16string_view address) const {
    return LeadsToThisMachine(Narrow(address)) || HasRouteHere();
}

void DesktopDriver::ForgetDownload(std::u16string_view address) {
    parts_->forgotten.emplace(address);
}

std::optional<std::string> DesktopDriver::Download(std::u16string_view address) {
    // The fetcher keeps its own limit; this one is for a name that is looked up for ever.
    constexpr std::chrono::milliseconds kGrace(500);
    const bool fresh = parts_->forgotten.erase(std::u16string(address)) > 0;
    if (!parts_->fetcher || parts_->IsLost()) {
        return std::nullopt;
    }
    const auto pass = [this](std::chrono::milliseconds left) {
        parts_->loop.TurnAside(left.count());
        return !parts_->IsLost();
    };
    return FetchMeanwhile(parts_->fetcher, Narrow(address), fresh, kLongestFetch + kGrace,
                          {pass, [this] { parts_->loop.Wake(); }});
}

bool DesktopDriver::GrabHotKey(Handle id, const KeyCombination& key) {
    return !parts_->IsLost() && parts_->hotKeys.Grab(id, key);
}

void DesktopDriver::ReleaseHotKey(Handle id) {
    if (!parts_->IsLost()) {
        parts_->hotKeys.Release(id);
    }
}

std::u16string DesktopDriver::LastErrorText() const {
    return parts_->hotKeys.LastErrorText();
}

void DesktopDriver::ShowTrayIcon(Handle window, std::u16string_view tip) {
    if (!parts_->IsLost()) {
        parts_->trayIcons.Show(window, tip);
    }
}

void DesktopDriver::HideTrayIcon(Handle window) {
    if (parts_->IsLost()) {
        return;
    }
    parts_->trayIcons.Hide(window);
    if (TopLevel* found = parts_->Find(window)) {
        found->KeepEntry(false);
    }
}

void DesktopDriver::PublishAssociations(const std::vector<RegistryValue>& registry) {
    if (!parts_->IsLost()) {
        parts_->associations.Publish(registry);
    }
}

}  // namespace platform

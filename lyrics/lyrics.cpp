// From the current row to the text in the box.
#include "lyrics/lyrics.h"

#include <optional>

#include "core/base/failure.h"
#include "core/state/frmmain.h"
#include "core/state/mGeneral.h"
#include "core/state/program.h"
#include "platform/base/text.h"
#include "platform/files/files.h"

namespace sarnel {

namespace {

constexpr std::u16string_view kEmptyLine = u"\r\n\r\n";  // and the end of the line above it
constexpr std::u16string_view kOffline =
    u"[It looks like you don't have connectivity to the internet]";
constexpr std::u16string_view kReadPage = u"/winamp03/plugin/";
constexpr std::u16string_view kEditPage = u"/winamp03/edit/";

platform::Driver& Desktop() {
    return App().windows.GetDriver();
}

// Blanks are all that is escaped: the service gets what the playlist shows.
std::u16string Escaped(std::u16string_view text, std::u16string_view blank) {
    std::u16string escaped;
    for (const char16_t unit : text) {
        escaped += unit == u' ' ? blank : std::u16string_view(&unit, 1);
    }
    return escaped;
}

std::u16string Address(std::u16string_view page, std::u16string_view artist,
                       std::u16string_view title, std::u16string_view blank) {
    return App().lyrics + std::u16string(page) + u"?artist=" + Escaped(artist, blank) + u"&title=" +
           Escaped(title, blank);
}

// The download lies in a file only until it has been read.
std::optional<std::string> ThroughFile(std::string_view page) {
    const std::u16string path = ComponentFile(u"Sarnel.Ambrisor.lyrics");
    const platform::Disk disk = Desktop().GetDisk();
    platform::FileWriter file(path, disk);
    file.Write(page);
    std::optional<std::string> content;
    if (file.Close()) {
        content = platform::ReadWholeFile(path, page.size());
    }
    platform::RemoveFile(path, disk);
    return content;
}

}  // namespace

bool IsOnline() {
    return Desktop().IsOnline(App().lyrics);
}

void ShowLyrics(bool reload) {
    platform::TextBox& box = *App().Main().txtLyrics;
    Step([&] { box.Text(u""); });
    box.Tag(u"");
    if (Playlist().ListCurrent() < 0) {
        return;
    }
    const std::u16string name = Playlist().List(Playlist().ListCurrent());
    const auto [artist, title] = SplitName(name);
    const std::u16string heading = artist + u" - " + title + std::u16string(kEmptyLine);
    const std::u16string words =
        IsOnline() ? FetchLyrics(artist, title, reload) : std::u16string(kOffline);
    Step([&] { box.Text(heading + words); });
    box.Tag(name);
}

std::u16string FetchLyrics(std::u16string_view artist, std::u16string_view title, bool reload) {
    const std::u16string address = Address(kReadPage, artist, title, u"%20");
    if (reload) {
        Step([&] { Desktop().ForgetDownload(address); });
    }
    std::u16string words;
    Step([&] {
        const std::optional<std::string> page = Desktop().Download(address);
        const std::optional<std::string> read = page ? ThroughFile(*page) : std::nullopt;
        if (read) {
            words = CutLyrics(DecodePage(*read));
        }
    });
    return words;
}

void OpenLyricsEditor(std::u16string_view artist, std::u16string_view title) {
    Step([&] { Desktop().OpenDocument(Address(kEditPage, artist, title, u"+") + u"&new=1"); });
}

void ScrollLyricsBy(Long lines) {
    JSlider& slider = App().Main().sldSkin(kLyricsSlider);
    slider.Value(slider.Value() + lines);
    ScrollLyrics();
}

void ScrollLyrics() {
    frmMAIN& main = App().Main();
    const Long value = main.sldSkin(kLyricsSlider).Value();
    Step([&] {
        App().windows.SendMessage(main.txtLyrics->HWnd(), platform::EM_LINESCROLL, 0,
                                  value - App().LyricsLine);
    });
    App().LyricsLine = value;
}

void txtLyrics_Change() {
    frmMAIN& main = App().Main();
    platform::TextBox& box = *main.txtLyrics;
    const platform::PictureBox& panel = main.picFrame(kLyricsPanel);
    JSlider& slider = main.sldSkin(kLyricsSlider);
    const bool isHigher = panel.TextHeight(box.Text()) > box.Height();
    const Long reserve = isHigher ? slider.Width() : 0;
    Step([&] {
        box.Move(box.Left(), box.Top(), panel.Width() - box.Left() - reserve, box.Height());
    });
    if (isHigher) {
        App().LyricsLine = 0;
        Step([&] { slider.Value(0); });
        Step([&] {
            slider.Max(App().windows.SendMessage(box.HWnd(), platform::EM_GETLINECOUNT, 0, 0));
        });
    }
    Step([&] { slider.Visible(isHigher); });
}

}  // namespace sarnel

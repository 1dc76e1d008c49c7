// The desktop driver by itself, steered by lines on standard input; what it reports and what it is
// asked goes to standard output, a line each. The window shows a picture that tells its pixels
// apart.
//
//     desktop_probe [SCALE]
#include <unistd.h>

#include <QGuiApplication>
#include <QInputMethodQueryEvent>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <map>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/base/text.h"
#include "platform/desktop/desktop_driver.h"
#include "tests/desktop/probe_lines.h"

namespace {

using namespace platform;
using probe::Escaped;
using probe::EventLines;
using probe::Units;

constexpr Handle kWindow = 1;
constexpr Size kSize{100, 60};

class Probe : EventLines {
  public:
    explicit Probe(std::optional<double> scale)
        : driver_({"veldrin", "Veldrin", "Music Player", "AudioVideo;Audio;Player;"}, scale),
          picture_(kSize, driver_.Density()) {
        driver_.Watch(STDIN_FILENO, [this] { Read(); });
        driver_.WatchDisplay([this] { DisplayLost(); });
        driver_.CreateTopLevel(kWindow);
        // Red tells the column, green the row.
        for (Long y = 0; y < kSize.height; ++y) {
            for (Long x = 0; x < kSize.width; ++x) {
                picture_.SetPixel({x, y}, (x * 2) | ((y * 4) << 8) | (100 << 16));
            }
        }
    }

    void Run() {
        driver_.SetFetcher(&Fetch);
        Say("ready");
        while (!ended_) {
            driver_.WaitUntil(std::nullopt);
            while (const auto event = driver_.NextEvent()) {
                std::visit([this](const auto& one) { Tell(one); }, *event);
            }
        }
    }

  private:
    /// Waits for a file of that path, whose content is the page; "throw" is a fault.
    static std::optional<std::string> Fetch(const std::string& address, bool fresh) {
        if (address == "throw") {
            throw std::runtime_error("a fault");
        }
        while (access(address.c_str(), F_OK) != 0) {
            usleep(5000);
        }
        const auto content = ReadWholeFile(Widen(address), SIZE_MAX);
        return content ? std::optional(*content + (fresh ? " fresh" : "")) : std::nullopt;
    }

    /// Perhaps amid the end of the process: what is left of the driver can be asked all the same.
    [[noreturn]] void DisplayLost() {
        driver_.SetTopLevelTitle(kWindow, u"lost");
        const Rect all = picture_.Bounds();
        driver_.ShowPicture(kWindow, picture_, {&all, 1});
        driver_.SetClipboardText(u"lost");
        driver_.HideTrayIcon(kWindow);
        driver_.ReleaseHotKey(1);
        driver_.DestroyTopLevel(kWindow);
        driver_.Watch(STDIN_FILENO, {});
        Say("display lost " + std::to_string(driver_.MeasureText({}, u"four").width) + " " +
            std::to_string(driver_.TextOffset({}, u"four", 3)));
        _exit(1);
    }

    using EventLines::Tell;
    void Tell(const DensityChanged&) {
        Say("density " + std::to_string(driver_.Density()));
        picture_ = picture_.AtDensity(driver_.Density());
        const Rect all = picture_.Bounds();
        driver_.ShowPicture(kWindow, picture_, {&all, 1});
    }
    void Tell(const SeenAgain&) {
        Say("seen again");
        driver_.ShowPicture(kWindow, picture_, {});
    }

    void Read() {
        std::array<char, 4096> buffer{};
        const ssize_t got = read(STDIN_FILENO, buffer.data(), buffer.size());
        if (got <= 0) {
            ended_ = true;
            return;
        }
        input_.append(buffer.data(), static_cast<std::size_t>(got));
        for (std::size_t end = input_.find('\n'); end != std::string::npos;
             end = input_.find('\n')) {
            const std::string line = input_.substr(0, end);
            input_.erase(0, end + 1);
            Obey(line);
        }
    }

    // Each command answers with one line, so that whoever asks knows that it has been done.
    void Obey(const std::string& line) {
        std::istringstream words(line);
        std::string name;
        words >> name;
        (this->*commands_.at(name))(words);
    }

    void Show(std::istringstream& words) {
        Rect rect;
        words >> rect.left >> rect.top;
        rect.right = rect.left + kSize.width;
        rect.bottom = rect.top + kSize.height;
        driver_.SetTopLevelRect(kWindow, rect);
        driver_.SetTopLevelTitle(kWindow, u"Probe \xDC80 title");
        driver_.SetTopLevelVisible(kWindow, true);
        const Rect all = picture_.Bounds();
        driver_.ShowPicture(kWindow, picture_, {&all, 1});
        Say("done");
    }
    /// A title and a text for the clipboard of so many letters.
    void Letters(std::istringstream& words) {
        std::size_t count = 0;
        words >> count;
        driver_.SetTopLevelTitle(kWindow, std::u16string(count, u'x'));
        driver_.SetClipboardText(std::u16string(count, u'y'));
        Say("done");
    }
    void Exit(std::istringstream&) { std::exit(0); }
    void Abort(std::istringstream&) { qFatal("the end"); }
    void Move(std::istringstream& words) {
        Long x = 0;
        Long y = 0;
        while (words >> x >> y) {
            driver_.SetTopLevelRect(kWindow, {x, y, x + kSize.width, y + kSize.height});
        }
        Say("done");
    }
    /// x y colour: one pixel changes.
    void Pixel(std::istringstream& words) {
        Point point;
        Long colour = 0;
        words >> point.x >> point.y >> colour;
        picture_.SetPixel(point, colour);
        const Rect part{point.x, point.y, point.x + 1, point.y + 1};
        driver_.ShowPicture(kWindow, picture_, {&part, 1});
        Say("done");
    }
    void Hide(std::istringstream&) {
        driver_.SetTopLevelVisible(kWindow, false);
        Say("done");
    }
    /// The stored columns become black and white by turns.
    void Stripe(std::istringstream&) {
        for (Long y = 0; y < picture_.StoredSize().height; ++y) {
            platform::Pixel* const row = picture_.Row(y);
            for (Long x = 0; x < picture_.StoredSize().width; ++x) {
                row[x] = x % 2 != 0 ? 0xFFFFFF : 0;
            }
        }
        const Rect all = picture_.Bounds();
        driver_.ShowPicture(kWindow, picture_, {&all, 1});
        Say("done");
    }
    void IsSeen(std::istringstream&) { Say(driver_.IsSeen(kWindow) ? "is seen" : "is not seen"); }
    void Minimise(std::istringstream& words) {
        bool minimised = false;
        words >> minimised;
        driver_.SetTopLevelMinimised(kWindow, minimised);
        Say("done");
    }
    void TopMost(std::istringstream& words) {
        bool topMost = false;
        words >> topMost;
        driver_.SetTopLevelTopMost(kWindow, topMost);
        Say("done");
    }
    void Activate(std::istringstream&) {
        driver_.ActivateTopLevel(kWindow);
        Say("done");
    }
    void WorkArea(std::istringstream&) {
        const Rect area = driver_.WorkArea();
        Say("area " + std::to_string(area.left) + " " + std::to_string(area.top) + " " +
            std::to_string(area.right) + " " + std::to_string(area.bottom));
    }
    void Pointer(std::istringstream&) { At("at", driver_.Pointer(), 0, 0); }
    void Clipboard(std::istringstream&) { Say("clipboard" + Units(driver_.ClipboardText())); }
    /// The rest of the line; bytes that are no UTF-8 become lone surrogates.
    void Copy(std::istringstream& words) {
        std::string text;
        std::getline(words >> std::ws, text);
        driver_.SetClipboardText(Widen(text));
        Say("done");
    }
    static Font ReadFont(std::istringstream& words) {
        std::string name;
        Font font;
        words >> name >> font.size >> font.bold;
        for (char& c : name) {
            c = c == '_' ? ' ' : c;
        }
        font.name = Widen(name);
        return font;
    }
    /// FONT_NAME SIZE BOLD TEXT: width and height, and the caret's place before each unit.
    void Measure(std::istringstream& words) {
        const Font font = ReadFont(words);
        std::string bytes;
        std::getline(words >> std::ws, bytes);
        const std::u16string text = Widen(bytes);
        const Size size = driver_.MeasureText(font, text);
        std::string line = "size " + std::to_string(size.width) + " " + std::to_string(size.height);
        for (std::size_t i = 0; i <= text.size(); ++i) {
            line += " " + std::to_string(driver_.TextOffset(font, text, i));
        }
        Say(line);
    }
    /// FONT_NAME SIZE BOLD LEFT WIDTH TEXT: the picture, as hexadecimal rows apart by blanks.
    void Render(std::istringstream& words) {
        const Font font = ReadFont(words);
        Long left = 0;
        Long width = 0;
        std::string bytes;
        words >> left >> width;
        std::getline(words >> std::ws, bytes);
        const TextPicture picture = driver_.RenderText(font, Widen(bytes), left, width, 1);
        std::string line =
            "picture " + std::to_string(picture.width) + " " + std::to_string(picture.height) + " ";
        for (const std::uint8_t value : picture.coverage) {
            std::array<char, 4> digits{};
            std::snprintf(digits.data(), digits.size(), "%02x", value);
            line += digits.data();
        }
        Say(line);
    }
    /// LEFT TOP RIGHT BOTTOM of the caret; nothing: nobody writes.
    void Write(std::istringstream& words) {
        Rect caret;
        const bool writes =
            static_cast<bool>(words >> caret.left >> caret.top >> caret.right >> caret.bottom);
        driver_.SetTextInput(writes ? std::optional(TextInput{kWindow, caret}) : std::nullopt);
        Say("done");
    }
    void EndComposing(std::istringstream&) {
        driver_.EndComposing();
        Say("done");
    }
    /// What an input method is told: whether it is wanted, and where the caret is.
    void Method(std::istringstream&) {
        QInputMethodQueryEvent query(Qt::ImEnabled | Qt::ImCursorRectangle);
        QCoreApplication::sendEvent(QGuiApplication::focusObject(), &query);
        const QRect caret = query.value(Qt::ImCursorRectangle).toRect();
        Say("method " + std::to_string(query.value(Qt::ImEnabled).toBool()) + " " +
            std::to_string(caret.x()) + " " + std::to_string(caret.y()) + " " +
            std::to_string(caret.width()) + " " + std::to_string(caret.height()));
    }
    void Wake(std::istringstream& words) {
        Millis wait = 0;
        words >> wait;
        const Millis deadline = driver_.Now() + wait;
        int turns = 0;
        while (driver_.Now() < deadline) {
            driver_.WaitUntil(deadline);
            ++turns;
        }
        Say("woke " + std::to_string(driver_.Now() - deadline) + " " + std::to_string(turns));
    }

    /// PATH: works until there is such a file.
    void Work(std::istringstream& words) {
        std::string path;
        words >> path;
        while (access(path.c_str(), F_OK) != 0) {
            driver_.KeepShown();
            usleep(5000);
        }
        Say("worked");
    }
    void Download(std::istringstream& words) {
        std::string address;
        words >> address;
        Say("page " + driver_.Download(Widen(address)).value_or("(none)"));
    }
    void Forget(std::istringstream& words) {
        std::string address;
        words >> address;
        driver_.ForgetDownload(Widen(address));
        Say("done");
    }
    void Drives(std::istringstream&) {
        std::string line = "drives";
        for (const Drive& drive : driver_.Drives()) {
            line += " " + Escaped(Narrow(drive.root));
        }
        Say(line);
    }
    void Online(std::istringstream& words) {
        std::string address;
        words >> address;
        Say("online " + std::to_string(driver_.IsOnline(Widen(address))));
    }
    /// ID MODIFIERS KEY NAME
    void Grab(std::istringstream& words) {
        Handle id = 0;
        KeyCombination key;
        std::string name;
        words >> id >> key.modifiers >> key.key >> name;
        key.name = Widen(name);
        Say(driver_.GrabHotKey(id, key) ? "grabbed" : "not: " + Narrow(driver_.LastErrorText()));
    }
    void Release(std::istringstream& words) {
        Handle id = 0;
        words >> id;
        driver_.ReleaseHotKey(id);
        Say("done");
    }

    using Command = void (Probe::*)(std::istringstream&);
    const std::map<std::string, Command> commands_{
        {"show", &Probe::Show},           {"move", &Probe::Move},
        {"pixel", &Probe::Pixel},         {"minimise", &Probe::Minimise},
        {"topmost", &Probe::TopMost},     {"activate", &Probe::Activate},
        {"workarea", &Probe::WorkArea},   {"pointer", &Probe::Pointer},
        {"clipboard", &Probe::Clipboard}, {"copy", &Probe::Copy},
        {"measure", &Probe::Measure},     {"render", &Probe::Render},
        {"wait", &Probe::Wake},           {"write", &Probe::Write},
        {"method", &Probe::Method},       {"endcomposing", &Probe::EndComposing},
        {"work", &Probe::Work},           {"download", &Probe::Download},
        {"forget", &Probe::Forget},       {"drives", &Probe::Drives},
        {"online", &Probe::Online},       {"grab", &Probe::Grab},
        {"release", &Probe::Release},     {"letters", &Probe::Letters},
        {"exit", &Probe::Exit},           {"abort", &Probe::Abort},
        {"seen", &Probe::IsSeen},         {"hide", &Probe::Hide},
        {"stripe", &Probe::Stripe},
    };

    DesktopDriver driver_;
    Surface picture_;
    std::string input_;
    bool ended_ = false;
};

}  // namespace

int main(int count, char** arguments) {
    const std::optional<double> scale =
        count > 1 ? std::optional(std::stod(arguments[1])) : std::nullopt;
    // Twice: a driver must leave nothing behind that keeps the next one from working.
    { DesktopDriver first({"veldrin", {}, {}, {}}, scale); }
    Probe(scale).Run();
    return 0;
}

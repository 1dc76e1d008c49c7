// How long a program takes to its first picture, as one sees it: the time from its start until
// nothing of the bare screen shows any more where its window comes to stand.
//
//     first_picture LEFT TOP WIDTH HEIGHT MILLISECONDS COMMAND...
//
// Prints that time in milliseconds, the time of the last change of those pixels within the given
// milliseconds, and the resident memory in KiB at their end; then the program gets SIGTERM.
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <span>
#include <string>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::uint32_t kBare = 0x00FF00FF;

class Screen {
  public:
    Screen() : connection_(xcb_connect(nullptr, nullptr)) {
        if (xcb_connection_has_error(connection_) != 0) {
            std::fputs("first_picture: no display\n", stderr);
            std::exit(1);
        }
        root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
    }
    ~Screen() { xcb_disconnect(connection_); }
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    void Bare() {
        xcb_change_window_attributes(connection_, root_, XCB_CW_BACK_PIXEL, &kBare);
        xcb_clear_area(connection_, 0, root_, 0, 0, 0, 0);
        xcb_flush(connection_);
    }

    std::vector<std::uint32_t> Pixels(std::int16_t left, std::int16_t top, std::uint16_t width,
                                      std::uint16_t height) {
        const auto asked = xcb_get_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, root_, left, top,
                                         width, height, ~0U);
        const std::unique_ptr<xcb_get_image_reply_t, decltype(&std::free)> reply(
            xcb_get_image_reply(connection_, asked, nullptr), &std::free);
        if (!reply) {
            return {};
        }
        const auto* data = reinterpret_cast<const std::uint32_t*>(xcb_get_image_data(reply.get()));
        std::vector<std::uint32_t> pixels(data, data + std::size_t{width} * height);
        for (std::uint32_t& pixel : pixels) {
            pixel &= 0xFFFFFF;
        }
        return pixels;
    }

  private:
    xcb_connection_t* connection_;
    xcb_window_t root_ = 0;
};

double Passed(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

long ResidentKib(pid_t process) {
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmRSS:")) {
            return std::stol(line.substr(6));
        }
    }
    return 0;
}

}  // namespace

int main(int count, char** arguments) {
    if (count < 7) {
        return 2;
    }
    const auto number = [&](int index) { return std::stoi(arguments[index]); };
    const auto look = [&](Screen& screen) {
        return screen.Pixels(
            static_cast<std::int16_t>(number(1)), static_cast<std::int16_t>(number(2)),
            static_cast<std::uint16_t>(number(3)), static_cast<std::uint16_t>(number(4)));
    };
    Screen screen;
    screen.Bare();
    while (std::ranges::count(look(screen), kBare) != number(3) * number(4)) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    const auto start = Clock::now();
    const pid_t process = fork();
    if (process == 0) {
        execvp(arguments[6], arguments + 6);
        _exit(127);
    }
    double first = 0;
    double last = 0;
    std::vector<std::uint32_t> former;
    while (Passed(start) < number(5)) {
        std::vector<std::uint32_t> pixels = look(screen);
        const double now = Passed(start);
        if (first == 0 && std::ranges::count(pixels, kBare) == 0) {
            first = now;
        }
        if (pixels != former) {
            last = now;
            former = std::move(pixels);
        }
        // Once the picture is there nobody is in a hurry.
        std::this_thread::sleep_for(std::chrono::milliseconds(first == 0 ? 1 : 5));
    }
    std::printf("%.1f %.1f %ld\n", first, last, ResidentKib(process));
    kill(process, SIGTERM);
    waitpid(process, nullptr, 0);
    return first == 0 ? 1 : 0;
}

// Lets a test play through the engine by lines of text:
//
//   open PATH, stop, pause, toggle, seek S, volume N, bass N, mid N, treble N, tempo N, pitch N,
//   echo N, reverb N, position, wait, playlist FILE FILE ..., quit
//
// Each is answered by a line "BEFORE AFTER COMMAND ANSWER", with the times of the monotonic clock
// in seconds at which the engine was called and had answered. `playlist` (of names without blanks)
// plays as the component does: asks every 50 ms whether the item still plays, opens the next one at
// the first False, and stops at the last one's. It tells each "item NUMBER" and the "end", and
// takes other lines in between. `wait` is answered when nothing plays any more, asked for as often.
// What the engine has to say to the user is a line "notice".
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "host/engine/engine.h"

namespace {

using veldrin::Engine;

constexpr int kBeat = 50;  // milliseconds, as the component's

double Now() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

void Tell(double before, const std::string& text) {
    std::printf("%.6f %.6f %s\n", before, Now(), text.c_str());
    std::fflush(stdout);
}

class Line {
  public:
    explicit Line(const veldrin::Output& output)
        : engine_(output, [](const std::string& line) { Tell(Now(), "notice " + line); }) {}

    /// Until there is nothing more to read, or "quit".
    void Run() {
        bool ends = false;
        double beat = Now();
        while (!ends) {
            pollfd input{STDIN_FILENO, POLLIN, 0};
            const int left = static_cast<int>((beat - Now()) * 1000) + 1;
            if (left > 0 && poll(&input, 1, left) > 0) {
                ends = !Read();
            }
            if (Now() >= beat) {
                beat = Now() + kBeat / 1000.0;
                Beat();
            }
        }
    }

  private:
    /// Takes what has come; False at its end.
    bool Read() {
        char bytes[4096];
        const ssize_t count = read(STDIN_FILENO, bytes, sizeof bytes);
        if (count <= 0) {
            return false;
        }
        rest_.append(bytes, static_cast<std::size_t>(count));
        for (auto end = rest_.find('\n'); end != std::string::npos; end = rest_.find('\n')) {
            const std::string line = rest_.substr(0, end);
            rest_.erase(0, end + 1);
            if (line == "quit") {
                return false;
            }
            Do(line);
        }
        return true;
    }

    void Do(const std::string& line) {
        const std::size_t blank = std::min(line.find(' '), line.size());
        const std::string command = line.substr(0, blank);
        const std::string words = blank < line.size() ? line.substr(blank + 1) : "";
        const double before = Now();
        if (command == "wait") {
            waits_ = true;
        } else if (command == "playlist") {
            std::istringstream names(words);
            list_.clear();
            for (std::string name; names >> name;) {
                list_.push_back(name);
            }
            next_ = 0;
            PlayNext();
        } else {
            const std::string answer = Ask(command, words);
            Tell(before, command + " " + answer);
        }
    }

    std::string Ask(const std::string& command, const std::string& words) {
        if (command == "open") {
            return engine_.Open(words) ? "yes" : "no";
        }
        if (command == "position") {
            return std::to_string(engine_.Position());
        }
        const auto plain = kPlain.find(command);
        if (plain != kPlain.end()) {
            (engine_.*plain->second)();
            return "done";
        }
        const auto setter = kSetters.find(command);
        if (setter != kSetters.end()) {
            (engine_.*setter->second)(std::stoi(words));
            return "done";
        }
        return "unknown";
    }

    void PlayNext() {
        while (next_ < list_.size()) {
            const double before = Now();
            const bool plays = engine_.Open(list_[next_++]);
            Tell(before, "item " + std::to_string(next_) + (plays ? "" : " skipped"));
            if (plays) {
                return;
            }
        }
        const double before = Now();
        engine_.Stop();
        list_.clear();
        Tell(before, "end");
    }

    void Beat() {
        if (engine_.IsPlaying()) {
            return;
        }
        if (!list_.empty()) {
            PlayNext();
        } else if (waits_) {
            waits_ = false;
            Tell(Now(), "wait done");
        }
    }

    static const std::map<std::string, void (Engine::*)()> kPlain;
    static const std::map<std::string, void (Engine::*)(int)> kSetters;

    Engine engine_;
    std::string rest_;
    std::vector<std::string> list_;  // empty unless it is being played
    std::size_t next_ = 0;
    bool waits_ = false;
};

const std::map<std::string, void (Engine::*)()> Line::kPlain = {
    {"stop", &Engine::Stop}, {"pause", &Engine::Pause}, {"toggle", &Engine::Toggle}};

const std::map<std::string, void (Engine::*)(int)> Line::kSetters = {
    {"seek", &Engine::Seek},      {"volume", &Engine::SetVolume}, {"bass", &Engine::SetBass},
    {"mid", &Engine::SetMid},     {"treble", &Engine::SetTreble}, {"tempo", &Engine::SetTempo},
    {"pitch", &Engine::SetPitch}, {"echo", &Engine::SetEcho},     {"reverb", &Engine::SetReverb}};

}  // namespace

int main(int argc, char** argv) {
    const auto output = veldrin::Output::Parse(argc > 1 ? argv[1] : "auto");
    if (!output) {
        return 2;
    }
    Line(*output).Run();
    return 0;
}

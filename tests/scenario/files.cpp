// Runs scenario files side by side. What a file prints is kept until its turn comes, so that the
// order of the output is that of the files, however many run at once.
#include <sys/wait.h>

#include <algorithm>
#include <csignal>
#include <deque>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>

#include "tests/scenario/child.h"
#include "tests/scenario/scratch.h"
#include "tests/scenario/script.h"

namespace scenario {

namespace {

std::optional<std::string> TextOf(const std::string& file) {
    const std::filesystem::path path = file;
    std::ifstream in(path, std::ios::binary);
    std::error_code error;
    if (!in || std::filesystem::is_directory(path, error)) {
        return std::nullopt;
    }
    return std::string(std::istreambuf_iterator<char>(in), {});
}

// One file, from the start of its process until its output has been printed.
class Job {
  public:
    Job(const std::string& file, const Options& options, const ScriptRunner& run)
        : script_{file, {}, {}, options.density} {
        auto text = TextOf(file);
        if (!text) {
            problem_ = "cannot be read";
            return;
        }
        script_.text = *std::move(text);
        scratch_.emplace(std::filesystem::path(file).stem().string(), options.keep);
        script_.directory = scratch_->Path();
        if (script_.directory.empty()) {
            problem_ = "no scratch folder can be made";
            return;
        }
        child_ = std::make_unique<Child>(
            [&](Progress& progress, std::ostream& out) { run(script_, progress, out); },
            options.seconds);
        if (!child_->IsStarted()) {
            problem_ = "no process can be made for it";
        }
    }

    bool Runs() const { return problem_.empty() && !child_->HasEnded(); }

    /// True if the process that has ended is this file's.
    bool TakeEnd(pid_t process, int status) {
        const bool isIts = Runs() && child_->Process() == process;
        if (isIts) {
            child_->Ended(status);
        }
        return isIts;
    }

    Tally Report(std::ostream& out) const {
        if (!problem_.empty()) {
            out << script_.file << ": " << problem_ << '\n';
            return {0, 0, 1};
        }
        const Progress& reached = child_->Reached();
        Tally tally = reached.tally;
        out << child_->Output();
        if (!child_->Failure().empty()) {
            out << script_.file;
            if (reached.line > 0) {
                out << ':' << reached.line;
            }
            out << ": " << child_->Failure() << '\n';
            ++tally.failed;
        }
        return tally;
    }

  private:
    Script script_;
    std::optional<Scratch> scratch_;
    std::unique_ptr<Child> child_;
    std::string problem_;
};

using Jobs = std::deque<std::unique_ptr<Job>>;

// Waits until one of the files has ended.
void WaitForOne(Jobs& jobs) {
    int status = 0;
    const pid_t process = waitpid(-1, &status, 0);
    if (process > 0) {
        std::any_of(jobs.begin(), jobs.end(),
                    [&](const auto& job) { return job->TakeEnd(process, status); });
    }
}

std::size_t CountRunning(const Jobs& jobs) {
    return static_cast<std::size_t>(
        std::count_if(jobs.begin(), jobs.end(), [](const auto& job) { return job->Runs(); }));
}

}  // namespace

Tally RunFiles(const Options& options, const ScriptRunner& run, std::ostream& out) {
    Tally total;
    Jobs jobs;  // begun, and not reported yet
    auto next = options.files.begin();
    std::signal(SIGCHLD, SIG_DFL);  // where it is ignored nobody can wait for a process
    while (next != options.files.end() || !jobs.empty()) {
        if (next != options.files.end() && CountRunning(jobs) < options.atOnce) {
            jobs.push_back(std::make_unique<Job>(*next++, options, run));
        } else if (jobs.front()->Runs()) {
            WaitForOne(jobs);
        } else {
            total += jobs.front()->Report(out);
            out.flush();
            jobs.pop_front();
        }
    }
    return total;
}

}  // namespace scenario

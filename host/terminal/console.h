// What `veldrin` prints: lines, complaints, and on a terminal a progress line that stays the last
// one. Text comes from tags and file names, so nothing in it may steer the terminal. Nobody need
// read it: what a pipe or terminal does not take at once is dropped.
#pragma once

#include <string>
#include <string_view>

namespace veldrin {

/// Fit to be shown: valid UTF-8 on one line. Control characters and those that turn the direction
/// of text become blanks, bytes that are not UTF-8 become U+FFFD.
std::string Printable(std::string_view bytes);

/// Writing to this pipe or terminal fails from now on where it would block, whoever in this process
/// writes. Those who share it with us, such as the shell, are not touched: it is opened anew.
void NeverBlock(int descriptor);

class Console {
  public:
    /// The two descriptors are not owned; in the program they are 1 and 2.
    Console(int output, int errors);

    /// A line on standard output.
    void Line(std::string_view text);

    /// "veldrin: TEXT" on standard error.
    void Complain(std::string_view text);

    /// Shows the text, plain ASCII, in place of the former progress line. Nothing happens unless
    /// standard output is a terminal.
    void Progress(std::string_view text);

    bool ShowsProgress() const { return isTerminal_; }

  private:
    void ClearProgress();

    int output_;
    int errors_;
    bool isTerminal_;
    std::string progress_;
};

}  // namespace veldrin

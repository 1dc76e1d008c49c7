// A file descriptor with an owner: closed when the owner goes.
#pragma once

#include <unistd.h>

#include <utility>

namespace veldrin {

class Descriptor {
  public:
    Descriptor() = default;
    /// Takes the descriptor over; a negative one is none.
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() { Close(); }
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        if (this != &other) {
            Close();
            number_ = std::exchange(other.number_, -1);
        }
        return *this;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int Number() const { return number_; }
    /// Gives the descriptor to the caller, who closes it.
    [[nodiscard]] int Release() { return std::exchange(number_, -1); }
    explicit operator bool() const { return number_ >= 0; }

    void Close() {
        if (number_ >= 0) {
            close(number_);
        }
        number_ = -1;
    }

  private:
    int number_ = -1;
};

}  // namespace veldrin

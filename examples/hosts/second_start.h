// How a second start of a program reaches the first: a socket in the component's directory, to
// which it sends its line. That is a program's own business; the component only takes the line.
#pragma once

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <string>

class FirstStart {
  public:
    explicit FirstStart(const std::string& directory)
        : path_(directory + "/second_start"),
          socket_(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {
        path_.copy(address_.sun_path, sizeof address_.sun_path - 1);
    }
    ~FirstStart() {
        close(socket_);
        if (isFirst_) {
            unlink(path_.c_str());
        }
    }
    FirstStart(const FirstStart&) = delete;
    FirstStart& operator=(const FirstStart&) = delete;

    /// Hands the line to the program that runs already. False: this one is the first, and from now
    /// on gets the lines of others.
    bool HandOver(const std::string& line) {
        if (path_.size() >= sizeof address_.sun_path) {
            return false;  // there is no room for it in an address: nobody finds this one
        }
        if (sendto(socket_, line.data(), line.size(), 0, Address(), sizeof address_) >= 0) {
            return true;
        }
        unlink(path_.c_str());  // nobody listens there any more
        isFirst_ = bind(socket_, Address(), sizeof address_) == 0;
        return false;
    }

    int Descriptor() const { return socket_; }

    /// A line that has come; empty if there is none.
    std::string TakeLine() const {
        std::array<char, 8192> bytes{};
        const ssize_t length = recv(socket_, bytes.data(), bytes.size(), 0);
        return length > 0 ? std::string(bytes.data(), static_cast<std::size_t>(length)) : "";
    }

  private:
    const sockaddr* Address() const {
        return static_cast<const sockaddr*>(static_cast<const void*>(&address_));
    }

    std::string path_;
    sockaddr_un address_{AF_UNIX, {}};
    int socket_;
    bool isFirst_ = false;
};

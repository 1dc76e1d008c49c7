#include "host/http/dial.h"

#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>

#include <cerrno>
#include <utility>

#include "host/http/tls.h"

namespace veldrin {
namespace {

using AddressList = std::unique_ptr<addrinfo, decltype(&freeaddrinfo)>;

AddressList LookUp(const HttpAddress& address) {
    addrinfo wanted{};
    wanted.ai_socktype = SOCK_STREAM;
    wanted.ai_flags = AI_NUMERICSERV;
    addrinfo* found = nullptr;
    if (getaddrinfo(address.host.c_str(), std::to_string(address.port).c_str(), &wanted, &found) !=
        0) {
        found = nullptr;
    }
    return {found, &freeaddrinfo};
}

bool IsLoopback(const sockaddr& address) {
    if (address.sa_family == AF_INET) {
        const auto& four = reinterpret_cast<const sockaddr_in&>(address);
        const auto first = ntohl(four.sin_addr.s_addr) >> 24U;
        return first == 127 || first == 0;
    }
    if (address.sa_family != AF_INET6) {
        return false;
    }
    const in6_addr& six = reinterpret_cast<const sockaddr_in6&>(address).sin6_addr;
    const bool four =
        IN6_IS_ADDR_V4MAPPED(&six) && (six.s6_addr[12] == 127 || six.s6_addr[12] == 0);
    return IN6_IS_ADDR_LOOPBACK(&six) || IN6_IS_ADDR_UNSPECIFIED(&six) || four;
}

Descriptor Connect(const addrinfo& to, const WaitEnd& end) {
    Descriptor socket(::socket(to.ai_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    if (!socket) {
        return {};
    }
    if (connect(socket.Number(), to.ai_addr, to.ai_addrlen) != 0) {
        int fault = errno;
        socklen_t size = sizeof(fault);
        if (fault != EINPROGRESS || !WaitFor(socket.Number(), POLLOUT, end) ||
            getsockopt(socket.Number(), SOL_SOCKET, SO_ERROR, &fault, &size) != 0 || fault != 0) {
            return {};
        }
    }
    const int at_once = 1;
    setsockopt(socket.Number(), IPPROTO_TCP, TCP_NODELAY, &at_once, sizeof(at_once));
    return socket;
}

/// One that does not answer leaves time for the next.
WaitEnd Share(const WaitEnd& end, bool isLast) {
    const auto now = HttpClock::now();
    return isLast ? end : WaitEnd{now + (end.when - now) / 2, end.cancel};
}

}  // namespace

Dialled Dial(const HttpAddress& address, bool mayLoopBack, const WaitEnd& end) {
    const AddressList list = LookUp(address);
    for (const addrinfo* one = list.get(); one != nullptr; one = one->ai_next) {
        const bool loopback = IsLoopback(*one->ai_addr);
        if (loopback && !mayLoopBack) {
            continue;
        }
        Descriptor socket = Connect(*one, Share(end, one->ai_next == nullptr));
        if (!socket) {
            continue;
        }
        if (address.secure) {
            return {Secure(std::move(socket), address.host, end), loopback};
        }
        return {std::make_unique<Connection>(std::move(socket), end), loopback};
    }
    return {};
}

}  // namespace veldrin

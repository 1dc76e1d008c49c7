#include "host/http/tls.h"

#include <arpa/inet.h>
#include <openssl/err.h>
#include <openssl/ssl.h>
#include <openssl/x509v3.h>
#include <poll.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace veldrin {
namespace {

struct FreeSsl {
    void operator()(SSL_CTX* context) const { SSL_CTX_free(context); }
    void operator()(SSL* session) const { SSL_free(session); }
};

using Session = std::unique_ptr<SSL, FreeSsl>;

/// Made once and never freed: a download may still use it when the program ends.
SSL_CTX* Context() {
    static SSL_CTX* const context = [] {
        SSL_CTX* made = SSL_CTX_new(TLS_client_method());
        if (made != nullptr) {
            SSL_CTX_set_default_verify_paths(made);
            SSL_CTX_set_verify(made, SSL_VERIFY_PEER, nullptr);
            SSL_CTX_set_min_proto_version(made, TLS1_2_VERSION);
        }
        return made;
    }();
    return context;
}

bool IsNumber(const std::string& host) {
    in6_addr number{};
    return inet_pton(AF_INET, host.c_str(), &number) == 1 ||
           inet_pton(AF_INET6, host.c_str(), &number) == 1;
}

bool Expect(SSL* session, std::string host) {
    if (IsNumber(host)) {
        return X509_VERIFY_PARAM_set1_ip_asc(SSL_get0_param(session), host.c_str()) == 1;
    }
    SSL_set_hostflags(session, X509_CHECK_FLAG_NO_PARTIAL_WILDCARDS);
    return SSL_set1_host(session, host.c_str()) == 1 &&
           SSL_ctrl(session, SSL_CTRL_SET_TLSEXT_HOSTNAME, TLSEXT_NAMETYPE_host_name,
                    host.data()) == 1;
}

class SecureConnection : public Connection {
  public:
    SecureConnection(Descriptor socket, const WaitEnd& end) : Connection(std::move(socket), end) {}

    bool Greet(const std::string& host) {
        session_.reset(Context() == nullptr ? nullptr : SSL_new(Context()));
        return session_ && Expect(session_.get(), host) &&
               SSL_set_fd(session_.get(), socket()) == 1 &&
               Repeat([this] { return SSL_connect(session_.get()); }) > 0;
    }

  protected:
    ssize_t Receive(char* to, std::size_t size) override {
        return Repeat([&] { return SSL_read(session_.get(), to, Length(size)); });
    }
    ssize_t Send(const char* from, std::size_t size) override {
        return Repeat([&] { return SSL_write(session_.get(), from, Length(size)); });
    }

  private:
    static int Length(std::size_t size) {
        return static_cast<int>(std::min<std::size_t>(size, std::numeric_limits<int>::max()));
    }

    template <typename Step>
    int Repeat(Step step) {
        while (!HasEnded()) {
            ERR_clear_error();
            const int result = step();
            if (result > 0) {
                return result;
            }
            switch (SSL_get_error(session_.get(), result)) {
                case SSL_ERROR_WANT_READ:
                    if (!Wait(POLLIN)) {
                        return -1;
                    }
                    break;
                case SSL_ERROR_WANT_WRITE:
                    if (!Wait(POLLOUT)) {
                        return -1;
                    }
                    break;
                case SSL_ERROR_ZERO_RETURN:
                    return 0;
                default:
                    return -1;
            }
        }
        return -1;
    }

    Session session_;
};

}  // namespace

std::unique_ptr<Connection> Secure(Descriptor socket, const std::string& host, const WaitEnd& end) {
    auto connection = std::make_unique<SecureConnection>(std::move(socket), end);
    return connection->Greet(host) ? std::move(connection) : nullptr;
}

}  // namespace veldrin

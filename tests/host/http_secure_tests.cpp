// Whom a secure connection is made with. The certificates are made here and now.
#include <httplib.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/x509v3.h>

#include <cstdio>
#include <cstdlib>
#include <memory>

#include "tests/host/http_fixture.h"
#include "tests/host/scratch_folder.h"

namespace veldrin {
namespace {

/// A key, and a certificate that it has signed itself.
struct Identity {
    explicit Identity(const std::string& name, long validFrom = 0, long validTo = 3600)
        : key(EVP_PKEY_Q_keygen(nullptr, nullptr, "EC", "P-256"), &EVP_PKEY_free),
          certificate(X509_new(), &X509_free) {
        X509* const made = certificate.get();
        X509_set_version(made, 2);
        ASN1_INTEGER_set(X509_get_serialNumber(made), 1);
        X509_gmtime_adj(X509_getm_notBefore(made), validFrom);
        X509_gmtime_adj(X509_getm_notAfter(made), validTo);
        X509_set_pubkey(made, key.get());
        X509_NAME* const subject = X509_get_subject_name(made);
        X509_NAME_add_entry_by_txt(subject, "CN", MBSTRING_ASC,
                                   reinterpret_cast<const unsigned char*>(name.c_str()), -1, -1, 0);
        X509_set_issuer_name(made, subject);
        X509_EXTENSION* const names =
            X509V3_EXT_conf_nid(nullptr, nullptr, NID_subject_alt_name, name.c_str());
        X509_add_ext(made, names, -1);
        X509_EXTENSION_free(names);
        X509_sign(made, key.get(), EVP_sha256());
    }

    std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)> key;
    std::unique_ptr<X509, decltype(&X509_free)> certificate;
};

class Secure : public Network {
  protected:
    /// What the system trusts is read once, so all that are to be trusted stand in one file.
    static void SetUpTestSuite() {
        known_ = std::make_unique<Identity>("DNS:localhost");
        numbered_ = std::make_unique<Identity>("IP:127.0.0.1");
        expired_ = std::make_unique<Identity>("DNS:localhost,DNS:expired", -7200, -3600);
        const std::string path = Folder().Path() + "/trusted.pem";
        std::FILE* const file = std::fopen(path.c_str(), "w");
        for (const Identity* one : {known_.get(), numbered_.get(), expired_.get()}) {
            PEM_write_X509(file, one->certificate.get());
        }
        std::fclose(file);
        setenv("SSL_CERT_FILE", path.c_str(), 1);
        setenv("SSL_CERT_DIR", Folder().Path().c_str(), 1);
    }
    static void TearDownTestSuite() {
        known_.reset();
        numbered_.reset();
        expired_.reset();
    }

    /// What is got from a server with that certificate, by that name.
    std::string From(const Identity& identity, const std::string& host) {
        httplib::SSLServer server(identity.certificate.get(), identity.key.get());
        server.Get("/", [](const httplib::Request&, httplib::Response& response) {
            response.set_content("words", "text/plain");
        });
        const int port = server.bind_to_any_port("127.0.0.1");
        std::thread thread([&] { server.listen_after_bind(); });
        while (!server.is_running()) {
            std::this_thread::yield();
        }
        const std::string got = Got("https://" + host + ":" + std::to_string(port) + "/");
        server.stop();
        thread.join();
        return got;
    }

    static inline std::unique_ptr<Identity> known_;
    static inline std::unique_ptr<Identity> numbered_;
    static inline std::unique_ptr<Identity> expired_;

  private:
    static ScratchFolder& Folder() {
        static ScratchFolder folder;
        return folder;
    }
};

TEST_F(Secure, OneWhomTheSystemTrustsIsHeard) {
    EXPECT_EQ(From(*known_, "localhost"), "words");
    EXPECT_EQ(From(*numbered_, "127.0.0.1"), "words");
}

TEST_F(Secure, NobodyElseIs) {
    EXPECT_EQ(From(Identity("DNS:localhost"), "localhost"), "(none)");  // signed by nobody
    EXPECT_EQ(From(*known_, "127.0.0.1"), "(none)");                    // somebody else's name
    EXPECT_EQ(From(*numbered_, "localhost"), "(none)");
    EXPECT_EQ(From(*expired_, "localhost"), "(none)");
}

TEST_F(Secure, APlainServerIsNotHeardSecurely) {
    ScriptedServer server(Page("words"));
    const HttpLimits soon{std::chrono::milliseconds(300), 100};
    EXPECT_EQ(Got("https" + server.Base().substr(4), {}, soon), "(none)");
}

}  // namespace
}  // namespace veldrin

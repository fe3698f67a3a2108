#include "directory/ldap_open.h"

#include <ldap.h>
#include <netdb.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <condition_variable>
#include <cstring>
#include <mutex>
#include <optional>
#include <string_view>
#include <thread>
#include <utility>

#include "platform/code_page.h"
#include "platform/error.h"

namespace zorvel {
namespace {

using Time = std::chrono::steady_clock;
constexpr std::chrono::milliseconds kSlice{50};
constexpr std::chrono::milliseconds kConnectingStep{10};

// What stood in the way, and what can be done about it.
struct Obstacle {
    std::string cause;
    std::string remedy;
};

struct Unbind {
    void operator()(LDAP* handle) const { ldap_unbind_ext(handle, nullptr, nullptr); }
};
using Handle = std::unique_ptr<LDAP, Unbind>;

// What libldap says of a handshake that fails, it says to its log alone. Each thread reads its own lines, and
// only those on TLS: others can hold what was sent.
thread_local std::string* tls_lines = nullptr;

void TakeLogLine(const char* line) {
    const std::string_view text(line);
    if (tls_lines != nullptr && text.starts_with("TLS")) tls_lines->append(text);
}

// While one of these lives, libldap traces; what it says then is the price of knowing why a handshake failed.
class TlsLines {
  public:
    TlsLines() {
        tls_lines = &text_;
        const std::lock_guard lock(Mutex());
        if (Count()++ > 0) return;
        ber_set_option(nullptr, LBER_OPT_LOG_PRINT_FN, reinterpret_cast<void*>(&TakeLogLine));
        SetLevel(kTrace);
    }
    ~TlsLines() {
        tls_lines = nullptr;
        const std::lock_guard lock(Mutex());
        if (--Count() == 0) SetLevel(0);
    }
    TlsLines(const TlsLines&) = delete;
    TlsLines& operator=(const TlsLines&) = delete;

    const std::string& text() const { return text_; }

  private:
    static constexpr int kTrace = 1;

    static std::mutex& Mutex() {
        static std::mutex mutex;
        return mutex;
    }
    static int& Count() {
        static int count = 0;
        return count;
    }
    static void SetLevel(int level) { ldap_set_option(nullptr, LDAP_OPT_DEBUG_LEVEL, &level); }

    std::string text_;
};

// The bits of a certificate's status in the lines of libldap over GnuTLS (gnutls_certificate_status_t), the
// most telling first.
struct CertificateFault {
    unsigned bit;
    std::string_view cause;
    std::string_view remedy;
};
constexpr std::array<CertificateFault, 6> kCertificateFaults = {{
    {1U << 10, "the server's certificate has expired", "ask the directory's administrator for a new one"},
    {1U << 9, "the server's certificate is not valid yet", "compare the clocks of both machines"},
    {1U << 5, "the server's certificate was revoked", "ask the directory's administrator for a new one"},
    {1U << 8, "the server's certificate is signed with a method that is not safe",
     "ask the directory's administrator for a new one"},
    {1U << 7, "the server's certificate is signed by one that may not sign",
     "ask the directory's administrator for a new one"},
    {1U << 6, "the server's certificate is signed by an authority that is not trusted here",
     "name the file with the authority's certificate as ca_file"},
}};

std::optional<Obstacle> CertificateObstacle(std::string_view lines, std::string_view host) {
    if (lines.find("hostname") != std::string_view::npos) {
        return Obstacle{
            "the server's certificate is made out for another name than '" + std::string(host) + "'",
            EqualIgnoringCase(host, "localhost")
                ? "use the machine's own name, for which certificates of localhost are checked"
                : "use the name in the certificate"};
    }
    constexpr std::string_view kStatus = "(0x";
    const std::size_t at = lines.find(kStatus);
    if (at == std::string_view::npos) return std::nullopt;
    unsigned status = 0;
    std::from_chars(lines.data() + at + kStatus.size(), lines.data() + lines.size(), status, 16);
    for (const CertificateFault& fault : kCertificateFaults) {
        if ((status & fault.bit) != 0) return Obstacle{std::string(fault.cause), std::string(fault.remedy)};
    }
    return std::nullopt;
}

std::string SecondsText(std::chrono::seconds time) {
    return std::to_string(time.count()) + " second(s)";
}

// Opens one connection; everything happens in the thread that calls it.
class Opening {
  public:
    Opening(LdapSettings settings, std::string ca_file, std::string url, std::string password)
        : settings_(std::move(settings)),
          ca_file_(std::move(ca_file)),
          url_(std::move(url)),
          password_(std::move(password)) {}

    // Nothing when the connection is open and bound.
    std::optional<Obstacle> Open() {
        LDAPURLDesc* parsed = nullptr;
        if (ldap_url_parse(url_.c_str(), &parsed) != LDAP_URL_SUCCESS)
            return Obstacle{"this is no address of a server", "write scheme://host or scheme://host:port"};
        const std::unique_ptr<LDAPURLDesc, decltype(&ldap_free_urldesc)> owner(parsed, ldap_free_urldesc);
        host_ = parsed->lud_host != nullptr ? parsed->lud_host : "";
        const bool local = BeginsIgnoringCase(url_, "ldapi:");
        if (!local) {
            if (auto obstacle = ResolveHost()) return obstacle;
        }
        LDAP* made = nullptr;
        if (const int code = ldap_initialize(&made, url_.c_str()); code != LDAP_SUCCESS)
            return Obstacle{ldap_err2string(code), "check the address"};
        handle_.reset(made);
        SetOptions();
        if (auto obstacle = Connect()) return obstacle;
        if (settings_.start_tls) {
            if (auto obstacle = StartTls()) return obstacle;
        }
        if (auto obstacle = Bind()) return obstacle;
        encryption_ = local ? "local socket" : Encryption();
        return std::nullopt;
    }

    Handle TakeHandle() { return std::move(handle_); }
    const std::string& encryption() const { return encryption_; }

  private:
    template <typename Value>
    void Set(int option, const Value& value) {
        ldap_set_option(handle_.get(), option, &value);
    }

    std::optional<Obstacle> ResolveHost() const {
        addrinfo* found = nullptr;
        const int code = ::getaddrinfo(host_.c_str(), nullptr, nullptr, &found);
        if (code == 0) {
            ::freeaddrinfo(found);
            return std::nullopt;
        }
        return Obstacle{"the server's name cannot be found (" + std::string(::gai_strerror(code)) + ")",
                        "check the address and the network"};
    }

    // Everything that files and variables of the user could set otherwise is set here.
    void SetOptions() {
        Set(LDAP_OPT_PROTOCOL_VERSION, int{LDAP_VERSION3});
        Set(LDAP_OPT_DEREF, int{LDAP_DEREF_NEVER});
        Set(LDAP_OPT_SIZELIMIT, int{LDAP_NO_LIMIT});
        Set(LDAP_OPT_TIMELIMIT, int{LDAP_NO_LIMIT});
        ldap_set_option(handle_.get(), LDAP_OPT_REFERRALS, LDAP_OPT_OFF);
        ldap_set_option(handle_.get(), LDAP_OPT_RESTART, LDAP_OPT_ON);
        // A server that is silent in a handshake is waited for in vain without it.
        ldap_set_option(handle_.get(), LDAP_OPT_CONNECT_ASYNC, LDAP_OPT_ON);
        const timeval connect{settings_.connect_timeout.count(), 0};
        Set(LDAP_OPT_NETWORK_TIMEOUT, connect);
        const timeval answer{settings_.answer_timeout.count(), 0};
        Set(LDAP_OPT_TIMEOUT, answer);
        Set(LDAP_OPT_X_TLS_REQUIRE_CERT, int{LDAP_OPT_X_TLS_DEMAND});
        Set(LDAP_OPT_X_TLS_REQUIRE_SAN, int{LDAP_OPT_X_TLS_ALLOW});
        Set(LDAP_OPT_X_TLS_CRLCHECK, int{LDAP_OPT_X_TLS_CRL_NONE});
        Set(LDAP_OPT_X_TLS_PROTOCOL_MIN, int{LDAP_OPT_X_TLS_PROTOCOL_TLS1_2});
        ldap_set_option(handle_.get(), LDAP_OPT_X_TLS_CACERTFILE, ca_file_.c_str());
        ldap_set_option(handle_.get(), LDAP_OPT_X_TLS_CACERTDIR, nullptr);
        ldap_set_option(handle_.get(), LDAP_OPT_X_TLS_CERTFILE, nullptr);
        ldap_set_option(handle_.get(), LDAP_OPT_X_TLS_KEYFILE, nullptr);
        ldap_set_option(handle_.get(), LDAP_OPT_X_TLS_CIPHER_SUITE, nullptr);
        ldap_set_option(handle_.get(), LDAP_OPT_X_TLS_CRLFILE, nullptr);
        const int for_client = 0;
        Set(LDAP_OPT_X_TLS_NEWCTX, for_client);
    }

    // Calls `step` until the connection under it stands.
    template <typename Step>
    int WhileConnecting(Step step) {
        const Time::time_point end = Time::now() + settings_.connect_timeout;
        for (;;) {
            errno = 0;
            const int code = step();
            if (code != LDAP_X_CONNECTING) return code;
            if (Time::now() >= end) return LDAP_TIMEOUT;
            std::this_thread::sleep_for(kConnectingStep);
        }
    }

    std::optional<Obstacle> Connect() {
        const int code = WhileConnecting([this] { return ldap_connect(handle_.get()); });
        if (code == LDAP_SUCCESS) return std::nullopt;
        return Unconnected(code, errno);
    }

    Obstacle Unconnected(int code, int error_code) const {
        if (auto obstacle = CertificateObstacle(log_.text(), host_)) return *obstacle;
        if (code == LDAP_TIMEOUT || error_code == ETIMEDOUT || error_code == EAGAIN) {
            return {"the server did not answer within " + SecondsText(settings_.connect_timeout),
                    "check the address, the port and the firewall, or raise connect_timeout"};
        }
        if (!log_.text().empty())
            return {"no encrypted connection came about (" + FirstLogLine() + ")",
                    "check the port and the server"};
        if (error_code == ECONNREFUSED || error_code == ENOENT)
            return {"no server listens at this address", "check address and port, and that the server runs"};
        if (error_code != 0)
            return {"it cannot be reached (" + std::string(std::strerror(error_code)) + ")",
                    "check the address and the network"};
        return {"the server ended the connection", "check the port: ldaps:// and ldap:// have their own"};
    }

    std::string FirstLogLine() const {
        const std::string& lines = log_.text();
        return FromUtf8(lines.substr(0, lines.find_first_of("\r\n")));
    }

    // What the server said to the last request, in parentheses.
    std::string ServerWords(int code) const {
        char* words = nullptr;
        ldap_get_option(handle_.get(), LDAP_OPT_DIAGNOSTIC_MESSAGE, &words);
        const std::string said = words != nullptr && *words != '\0' ? words : ldap_err2string(code);
        ldap_memfree(words);
        return " (" + FromUtf8(said) + ")";
    }

    // Waits for the answer to a request; its result code, or one of libldap's.
    int ResultOf(int request, LDAPMessage** taken = nullptr) {
        timeval time{settings_.answer_timeout.count(), 0};
        LDAPMessage* answer = nullptr;
        const int kind = ldap_result(handle_.get(), request, LDAP_MSG_ALL, &time, &answer);
        if (kind == 0) return LDAP_TIMEOUT;
        if (kind < 0) return LDAP_SERVER_DOWN;
        int code = 0;
        const int parsed = ldap_parse_result(handle_.get(), answer, &code, nullptr, nullptr, nullptr, nullptr,
                                             taken == nullptr ? 1 : 0);
        if (taken != nullptr) *taken = answer;
        return parsed == LDAP_SUCCESS ? code : parsed;
    }

    std::optional<Obstacle> StartTls() {
        int request = 0;
        int code = ldap_start_tls(handle_.get(), nullptr, nullptr, &request);
        if (code == LDAP_SUCCESS) code = ResultOf(request);
        if (code == LDAP_TIMEOUT || code == LDAP_SERVER_DOWN) return Unconnected(code, errno);
        if (code != LDAP_SUCCESS) {
            return Obstacle{"the server refuses to encrypt the connection" + ServerWords(code),
                            "use ldaps://, or ask the directory's administrator for StartTLS"};
        }
        errno = 0;
        code = ldap_install_tls(handle_.get());
        if (code == LDAP_SUCCESS) return std::nullopt;
        return Unconnected(code, errno);
    }

    std::optional<Obstacle> Bind() {
        berval credentials{password_.size(), password_.data()};
        int request = 0;
        const char* const name = settings_.bind_dn.empty() ? nullptr : settings_.bind_dn.c_str();
        int code = WhileConnecting([&] {
            return ldap_sasl_bind(handle_.get(), name, LDAP_SASL_SIMPLE, &credentials, nullptr, nullptr,
                                  &request);
        });
        if (code == LDAP_SUCCESS) code = ResultOf(request);
        switch (code) {
            case LDAP_SUCCESS:
                return std::nullopt;
            case LDAP_TIMEOUT:
                return Obstacle{"the server did not answer within " + SecondsText(settings_.answer_timeout),
                                "try again later, or raise answer_timeout"};
            case LDAP_SERVER_DOWN:
                return Unconnected(code, errno);
            case LDAP_INVALID_CREDENTIALS:
            case LDAP_NO_SUCH_OBJECT:
            case LDAP_INVALID_DN_SYNTAX:
                return Obstacle{"the server does not accept " + Identity() + " with this password",
                                "check bind_dn and the password"};
            case LDAP_STRONG_AUTH_REQUIRED:
            case LDAP_CONFIDENTIALITY_REQUIRED:
            case LDAP_INAPPROPRIATE_AUTH:
            case LDAP_AUTH_METHOD_NOT_SUPPORTED:
                return Obstacle{"the server wants a stronger authentication" + ServerWords(code),
                                "use ldaps:// or start_tls, and a bind_dn with a password"};
            case LDAP_UNWILLING_TO_PERFORM:
            case LDAP_INSUFFICIENT_ACCESS:
                return Obstacle{"the server turns " + Identity() + " away" + ServerWords(code),
                                "ask the directory's administrator"};
            default:
                return Obstacle{"the bind failed" + ServerWords(code), "ask the directory's administrator"};
        }
    }

    std::string Identity() const {
        return settings_.bind_dn.empty() ? "an anonymous bind" : "'" + FromUtf8(settings_.bind_dn) + "'";
    }

    std::string Encryption() const {
        if (ldap_tls_inplace(handle_.get()) == 0) return "none";
        char* version = nullptr;
        ldap_get_option(handle_.get(), LDAP_OPT_X_TLS_VERSION, &version);
        std::string_view number(version != nullptr ? version : "");
        number.remove_prefix(std::min(number.find_first_of("0123456789"), number.size()));
        std::string text = "TLS " + std::string(number);
        ldap_memfree(version);
        return text;
    }

    LdapSettings settings_;
    std::string ca_file_;
    std::string url_;
    std::string password_;
    std::string host_;
    TlsLines log_;
    Handle handle_;
    std::string encryption_;
};

// What the thread leaves to the one that waits; the last of the two that is there frees it.
struct Result {
    std::mutex mutex;
    std::condition_variable done_or_not;
    bool done = false;
    std::optional<Obstacle> obstacle;
    Handle handle;
    std::string encryption;
};

}  // namespace

OpenedLdap OpenLdap(const LdapSettings& settings, const std::string& ca_file, const std::string& url,
                    const std::string& password, const WhileWaiting& wait) {
    const auto result = std::make_shared<Result>();
    std::thread([result, settings, ca_file, url, password] {
        Opening opening(settings, ca_file, url, password);
        std::optional<Obstacle> obstacle = opening.Open();
        const std::lock_guard lock(result->mutex);
        result->obstacle = std::move(obstacle);
        result->handle = opening.TakeHandle();
        result->encryption = opening.encryption();
        result->done = true;
        result->done_or_not.notify_one();
    }).detach();

    std::unique_lock lock(result->mutex);
    while (!result->done) {
        result->done_or_not.wait_for(lock, kSlice);
        if (result->done) break;
        lock.unlock();
        if (wait) wait();
        lock.lock();
    }
    if (result->obstacle) {
        throw Error(errors::kDirectoryUnreadable)
            .With(url + ": " + result->obstacle->cause + " - " + result->obstacle->remedy);
    }
    return {result->handle.release(), result->encryption};
}

}  // namespace zorvel

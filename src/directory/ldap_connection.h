// One connection to a directory server: opened with TLS and bind, searched, closed.
#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "directory/ldap_ports.h"
#include "directory/ldap_settings.h"

struct ldap;
struct ldapmsg;

namespace zorvel {

enum class LdapScope { kBase, kOneLevel, kSubtree };

struct LdapSearch {
    std::string base;  // a DN in UTF-8
    LdapScope scope = LdapScope::kBase;
    std::string filter = "(objectClass=*)";
    std::vector<std::string> attributes = {"*"};
};

// An attribute as the server spells it, without options such as ";binary"; values as it sends them.
struct LdapAttribute {
    std::string name;
    std::vector<std::string> values;
};

struct LdapEntry {
    std::string dn;  // UTF-8
    std::vector<LdapAttribute> attributes;
};

struct LdapAnswer {
    int code = 0;            // a result code of RFC 4511
    std::string diagnostic;  // the server's own words, text of the code page
    std::vector<LdapEntry> entries;
    std::vector<std::string> referrals;  // URLs of servers that were not asked
    std::string cookie;                  // of the next page; empty behind the last
};

struct FreeLdapMessage {
    void operator()(ldapmsg* message) const;
};
using LdapMessage = std::unique_ptr<ldapmsg, FreeLdapMessage>;

// Raised when the connection is no longer there.
struct LdapConnectionLost {
    std::string reason;
};

// What an open connection is.
struct LdapServer {
    std::string url;
    std::string encryption;  // "TLS 1.3", "local socket" or "none"
    std::string identity;    // who the server says we are, or the bind DN; "anonymous"
};

class LdapConnection {
  public:
    // Connects to `url`, encrypts and binds with `password`; `ca_file` is the real path of the certificates
    // that are trusted. Raises error 600, whose detail is the URL, the cause and what can be done, and what
    // `wait` raises; LdapConnectionLost when it ends again. A password is not sent where it could be read on
    // its way, nor an empty one: both are error 600 before anything is sent.
    LdapConnection(const LdapSettings& settings, const std::string& ca_file, const std::string& url,
                   const std::string& password, WhileWaiting wait);

    const LdapServer& server() const { return server_; }

    // Begins a search and returns its number; with `page_size` above 0 for the page behind `cookie`. Raises
    // LdapConnectionLost.
    int Send(const LdapSearch& search, int page_size = 0, const std::string& cookie = {});
    // The answer to a search, for which it waits. Raises LdapConnectionLost, error 600 when the time is up,
    // and what the wait raises; then the search is given up.
    LdapAnswer Receive(int request);
    // The answer when it is there already. Raises LdapConnectionLost.
    std::optional<LdapAnswer> Poll(int request);

  private:
    struct Unbind {
        void operator()(ldap* handle) const;
    };

    LdapMessage Result(int request, long microseconds);
    LdapMessage Await(int request);
    void AskIdentity(const LdapSettings& settings);
    [[noreturn]] void RaiseLost(int code) const;

    std::unique_ptr<ldap, Unbind> handle_;
    std::chrono::seconds answer_timeout_;
    WhileWaiting wait_;
    LdapServer server_;
};

}  // namespace zorvel

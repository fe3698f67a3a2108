// How a tree of Directory.toml is read from its directory servers.
#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace zorvel {

// DNs are UTF-8, all else is text of the code page.
struct LdapSettings {
    std::vector<std::string> urls;  // ldap://, ldaps:// or ldapi://, tried in this order; at least one
    bool start_tls = false;         // over ldap:// all is encrypted before anything is said
    std::vector<std::string> bases = {""};  // the DNs that are searched; "" is the whole tree
    std::string bind_dn;                    // empty: anonymous
    // Where the password of `bind_dn` comes from, at most one of them; without both it is asked for.
    std::string password_file;                  // a path text
    std::vector<std::string> password_command;  // program and arguments; its output's first line
    std::string ca_file;                        // a path text; empty: what the system trusts
    std::chrono::seconds connect_timeout{10};
    std::chrono::seconds answer_timeout{60};
    int page_size = 500;
    int read_ahead = 16;  // searches that are under way at once

    bool operator==(const LdapSettings&) const = default;
};

}  // namespace zorvel

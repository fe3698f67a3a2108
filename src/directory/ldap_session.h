// What a tree's servers are asked, over connections that are made when needed and made again when lost.
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "directory/ldap_connection.h"
#include "directory/ldap_listings.h"
#include "directory/ldap_password.h"
#include "directory/ldap_settings.h"
#include "directory/schema.h"
#include "directory/text_map.h"
#include "platform/files.h"
#include "shell/log.h"

namespace zorvel {

// What the one who reads trees gives to those that servers hold.
struct LdapHost {
    const Files& files;
    Log& log;
    LdapPorts ports;
};

// Definitions in LDAP form (RFC 4512).
struct SchemaDefinitions {
    std::vector<std::string> attribute_types;
    std::vector<std::string> object_classes;
};

// All operations raise error 600 when no server can be reached, when one does not answer in time, and when it
// says that its answer is not whole; what the host's `wait` raises passes through. A lost connection is made
// again, and the search repeated, once.
class LdapSession {
  public:
    LdapSession(LdapHost& host, std::string tree, LdapSettings settings);

    // What the server that we are connected to offers.
    struct Features {
        bool paged = false;
        std::string subschema;  // the DN of its schema; empty when it shows none
        std::string vendor;
    };

    const LdapSettings& settings() const { return settings_; }
    // The connection that is open, or that opens now.
    const LdapServer& Server();
    // Likewise.
    const Features& features();
    // The connection that is open; null when there is none.
    const LdapServer* OpenServer() const { return connection_ ? &connection_->server() : nullptr; }
    // The hosts of servers that hold parts of the tree and were not asked.
    const std::set<std::string>& referrals() const { return told_referrals_; }
    // The schema that the server publishes; its definitions without an NDS name take it from `bundled`.
    const Schema& schema();
    // What the schema of the server consists of; nothing when it shows none.
    SchemaDefinitions ReadDefinitions();
    // Closes the connections; what is asked next opens one, and asks for the password again.
    void Close();

    // The object with a DN; nothing when there is none. Raises error 70 when it must not be read.
    std::optional<LdapEntry> Read(const std::string& dn, const std::vector<std::string>& attributes);
    // The objects with those DNs, in their order, with so many requests under way at once as the settings
    // say. One that must not be read counts as one that does not exist.
    std::vector<std::optional<LdapEntry>> ReadAll(const std::vector<std::string>& dns,
                                                  const std::vector<std::string>& attributes);
    // The objects right below one that pass a filter, all of them, in the server's order; nothing when there
    // is no such object.
    std::optional<std::vector<LdapEntry>> List(const std::string& dn, const std::string& filter,
                                               const std::vector<std::string>& attributes);
    // The objects at and below one that pass a filter, without their attributes; nothing when there is no
    // such object.
    std::optional<std::vector<LdapEntry>> ListSubtree(const std::string& dn, const std::string& filter);
    // Begins listings that will be asked for next, in their order, as far as the settings allow; those that
    // were expected before come behind them. StopAhead gives up those that were not asked for.
    void ListAhead(const std::vector<std::string>& dns, const std::string& filter,
                   const std::vector<std::string>& attributes);
    void StopAhead() { listings_.Clear(); }

  private:
    LdapConnection& Connection();
    void Connect();
    static Features ReadFeatures(LdapConnection& connection);
    template <typename Operation>
    auto Repeat(Operation operation);
    void Pause();
    // Raises what a result code stands for, but "no such object": false then.
    bool Check(const LdapAnswer& answer, std::string_view dn) const;
    void WarnOfReferrals(const std::vector<std::string>& referrals);
    std::optional<std::vector<LdapEntry>> ListPages(const LdapSearch& search);

    LdapHost& host_;
    std::string tree_;
    LdapSettings settings_;
    std::string ca_file_;
    std::optional<std::string> password_;
    std::unique_ptr<LdapConnection> connection_;
    Features features_;
    int page_size_;
    std::optional<Schema> schema_;
    std::set<std::string> told_referrals_;
    LdapListings listings_;
};

}  // namespace zorvel

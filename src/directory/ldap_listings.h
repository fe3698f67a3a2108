// Listings of containers that are begun before they are asked for, on connections of their own.
#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "directory/ldap_connection.h"
#include "directory/text_map.h"

namespace zorvel {

// A server pages one search at a time on a connection, so each listing under way has its own. What a lane
// cannot have, for whatever reason, is left to be asked for again in the usual way.
class LdapListings {
  public:
    using Connect = std::function<std::unique_ptr<LdapConnection>()>;

    // At most `lanes` connections, each made by `connect` when it is first needed.
    LdapListings(std::size_t lanes, Connect connect);

    // The containers that will be asked for next, in their order, ahead of those expected before.
    void Expect(const std::vector<LdapSearch>& searches, int page_size);
    // The whole answer for a container that was expected, for which it waits; nothing when it was not, or was
    // in vain. Raises what waiting raises.
    std::optional<std::vector<LdapEntry>> Take(const std::string& dn);
    // Gives up what was expected, and closes the connections.
    void Clear();

  private:
    struct Lane {
        std::unique_ptr<LdapConnection> connection;
        LdapSearch search;
        int request = 0;  // 0: it is free
        std::vector<LdapEntry> entries;
    };

    void Start();
    // Takes what has come; `wait` for the lane's answer. False when the lane failed.
    bool Advance(Lane& lane, bool wait);
    void Begin(Lane& lane, const std::string& cookie);

    std::size_t most_;
    Connect connect_;
    int page_size_ = 0;
    bool refused_ = false;  // the server takes no more connections
    std::deque<LdapSearch> expected_;
    std::unordered_set<std::string> wanted_;  // the bases of those that were not asked for yet
    std::vector<Lane> lanes_;
    TextMap<std::vector<LdapEntry>> ready_;
};

}  // namespace zorvel

// Whether a tree of Directory.toml can be read, and what stands in the way.
#pragma once

#include <string>
#include <vector>

#include "directory/directory_config.h"
#include "directory/ldap_session.h"

namespace zorvel {

// One thing that a test of a tree found.
struct TreeFinding {
    enum class State {
        kFine,
        kMissing,  // the tree can be read, but not all of it, or not well
        kFailed,
    };

    State state = State::kFine;
    std::string subject;  // one word: "server", "applications", ...
    std::string text;
};

// Tests a tree as an analysis would read it: an LDIF export is read whole, a server is connected to and asked
// for its schema and for the applications below each base, of which one is read. Returns what was found, with
// the failure that ended the test as the last. Raises what the host's `wait` raises.
std::vector<TreeFinding> CheckTree(LdapHost& host, const DirectoryConfig::Tree& tree);

// True when none of the findings is a failure.
bool Passed(const std::vector<TreeFinding>& findings);

// "ok", "missing" or "failed".
std::string_view StateName(TreeFinding::State state);

}  // namespace zorvel

// Writes a tree as an LDIF file that is read as the tree is.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "directory/directory_config.h"
#include "directory/ldap_session.h"
#include "platform/output_file.h"

namespace zorvel {

struct ExportSummary {
    std::int64_t objects = 0;  // in the file
    std::vector<std::string>
        unreadable;  // DNs (text of the code page) of applications that are not in the file
};

// Writes `tree`: of servers what a run reads, in their order - their schema, the applications with all their
// attributes, of other objects their classes, names and members, never more; below the search bases, and the
// trustees elsewhere that applications name. Of an LDIF export its records, with the values that its URLs
// name. Raises error 600 when the tree cannot be read, errors 61 and 75 of `file`, and what the host's `wait`
// raises.
ExportSummary ExportTree(LdapHost& host, const DirectoryConfig::Tree& tree, OutputFile& file);

}  // namespace zorvel

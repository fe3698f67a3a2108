// The directory as the programs open it.
#pragma once

#include <memory>

#include "directory/ldap_ports.h"
#include "directory/tree_directory.h"
#include "platform/files.h"
#include "shell/log.h"

namespace zorvel {

// The directory of the trees in Directory.toml: LDIF exports and servers. `files` and `log` must live as
// long.
std::unique_ptr<TreeDirectory> OpenDirectory(const Files& files, Log& log, const LdapPorts& ports = {});

}  // namespace zorvel

// The directory as the programs open it.
#pragma once

#include <memory>

#include "directory/ldap_password.h"
#include "directory/tree_directory.h"
#include "platform/files.h"
#include "shell/log.h"

namespace zorvel {

// What trees that servers hold need of the user's side.
struct LdapPorts {
    WhileWaiting wait;
    AskPassword ask_password;
};

// The directory of the trees in Directory.toml: LDIF exports and servers. `files` and `log` must live as
// long.
std::unique_ptr<TreeDirectory> OpenDirectory(const Files& files, Log& log, LdapPorts ports = {});

}  // namespace zorvel

// Where the password of a bind comes from.
#pragma once

#include <string>
#include <string_view>

#include "directory/ldap_ports.h"
#include "directory/ldap_settings.h"
#include "platform/files.h"

namespace zorvel {

// The password of the settings' bind DN: the first line of its file or of its command's output, or else what
// the user says. Empty for an anonymous bind. Raises error 600 when it cannot be had, and what `wait`, called
// while a command runs, raises.
std::string FetchPassword(const Files& files, const LdapSettings& settings, std::string_view tree,
                          const AskPassword& ask, const WhileWaiting& wait);

}  // namespace zorvel

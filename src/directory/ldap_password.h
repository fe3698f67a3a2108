// Where the password of a bind comes from.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "directory/ldap_connection.h"
#include "directory/ldap_settings.h"
#include "platform/files.h"

namespace zorvel {

// Asks the user for the password of `identity` (a DN, text of the code page) in `tree`; nothing when the user
// gives none. The password is UTF-8.
using AskPassword =
    std::function<std::optional<std::string>(std::string_view tree, std::string_view identity)>;

// The password of the settings' bind DN: the first line of its file or of its command's output, or else what
// the user says. Empty for an anonymous bind. Raises error 600 when it cannot be had, and what `wait`, called
// while a command runs, raises.
std::string FetchPassword(const Files& files, const LdapSettings& settings, std::string_view tree,
                          const AskPassword& ask, const WhileWaiting& wait);

}  // namespace zorvel

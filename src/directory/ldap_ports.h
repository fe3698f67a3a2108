// What reading from directory servers needs of the user's side.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace zorvel {

// Called about every 50 ms while an answer is awaited; it lets the window live, and raises what is to end the
// wait.
using WhileWaiting = std::function<void()>;

// Asks the user for the password of `identity` (a DN, text of the code page) in `tree`; nothing when the user
// gives none. The password is UTF-8.
using AskPassword =
    std::function<std::optional<std::string>(std::string_view tree, std::string_view identity)>;

struct LdapPorts {
    WhileWaiting wait;
    AskPassword ask_password;
};

}  // namespace zorvel

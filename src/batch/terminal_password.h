// Asking for a password on the terminal.
#pragma once

#include <optional>
#include <string>

namespace zorvel {

// Shows `prompt` on the terminal of the process, wherever its output goes, and reads a line without echo;
// nothing without a terminal, or when the user ends the line with nothing but Ctrl-D or Ctrl-C.
std::optional<std::string> ReadPassword(const std::string& prompt);

}  // namespace zorvel

// The dialog that asks for a directory's password.
#pragma once

#include <QWidget>
#include <optional>
#include <string>
#include <string_view>

namespace zorvel {

// Asks for the password of `identity` in `tree`; UTF-8, or nothing when the user cancels.
std::optional<std::string> AskForPassword(QWidget* parent, std::string_view tree, std::string_view identity);

}  // namespace zorvel

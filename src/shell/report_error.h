// How unexpected errors are worded, in the log and for the user.
#pragma once

#include <string>
#include <string_view>

#include "platform/error.h"
#include "platform/user_interface.h"
#include "shell/log.h"

namespace zorvel {

// number with its leading blank + " (" + description + ")".
std::string ErrorText(const Error& error);

// " " + number + " (" + description + ")": the same with the blank ahead of negative numbers, too.
std::string NumberAndDescription(const Error& error);

// Logs "ERROR: Unexpected error #" + ErrorText + " occurred in " + `where`, and the error's detail, when it
// has one, on a line of its own. Returns the text of the first line.
std::string LogUnexpectedError(Log& log, const Error& error, std::string_view where);

// The same, and shows that text in a message box with the error's detail.
void TellUnexpectedError(UserInterface& ui, Log& log, const Error& error, std::string_view where,
                         MessageIcon icon = MessageIcon::kExclamation);

// Logs the detail of an error, when it has one, as an ERROR line.
void LogDetail(Log& log, const Error& error);

}  // namespace zorvel

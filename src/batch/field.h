// Text on its way to a terminal or a script: the fields of the lists that commands print (TAB between two,
// one line a record), and messages.
#pragma once

#include <string>
#include <string_view>

namespace zorvel {

// `text` as one field of a line, in UTF-8: what could end the field or the line, or command a terminal,
// becomes a blank.
std::string Field(std::string_view text);

// `text` as a message, in UTF-8. Messages break their lines as the windows of old did, with a carriage
// return, or with a line feed: either ends a line. Other control characters become blanks.
std::string Message(std::string_view text);

}  // namespace zorvel

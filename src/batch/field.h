// The fields of the lists that commands print: TAB between two, one line a record.
#pragma once

#include <string>
#include <string_view>

namespace zorvel {

// `text` as one field of a line, in UTF-8: what could end the field or the line, or command a terminal,
// becomes a blank.
std::string Field(std::string_view text);

}  // namespace zorvel

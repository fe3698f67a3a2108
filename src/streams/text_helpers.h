// Small text conversions of stream values and data-file fields. None can fail.
#pragma once

#include <string>
#include <string_view>

namespace zorvel {

// True when no character has a code below 31. Code 31 and the codes from 127 up count as printable.
bool IsPrintable(std::string_view text);

// `text` with "." for every character whose code is not 32 to 126.
std::string MakePrintable(std::string_view text);

// Two upper-case hexadecimal digits for each character.
std::string MakeHEX(std::string_view text);

// `text` without its carriage returns, wherever they stand.
std::string CRLF2LF(std::string_view text);

// What follows the last "\"; the whole text when there is none.
std::string GetShortName(std::string_view text);

// `text` with every apostrophe doubled, for use between apostrophes in an SQL statement.
std::string EscapeQuotes(std::string_view text);

// The form in which INI values and registry data are shown and stored: MakePrintable of a text that is not
// printable, EscapeQuotes of any other. The result is `value` itself, or lies in `buffer`.
std::string_view DisplayForm(std::string_view value, std::string& buffer);

}  // namespace zorvel

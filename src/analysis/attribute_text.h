// The text under which an attribute's values are stored.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zorvel {

// The values joined by line feeds.
std::string JoinValues(const std::vector<std::string>& values);

// The characters that hexadecimal digits stand for when every byte is 31 or more; else, and when a pair is
// not two digits, the digits themselves.
std::string DecodeOctets(std::string digits);

// The text of an attribute's values by the name of its syntax: the first number, the joined texts or octets,
// and an empty text for a syntax that has no text.
std::string AttributeText(std::string_view syntax, std::vector<std::string> values);

}  // namespace zorvel

#include "analysis/attribute_text.h"

#include <charconv>
#include <utility>

#include "directory/directory.h"

namespace zorvel {

std::string JoinValues(const std::vector<std::string>& values) {
    std::string text;
    for (const std::string& value : values) {
        if (&value != &values.front()) text += '\n';
        text += value;
    }
    return text;
}

std::string DecodeOctets(std::string digits) {
    constexpr unsigned kLowestPrintable = 31;
    std::string characters;
    for (std::size_t at = 0; at < digits.size(); at += 2) {
        unsigned byte = 0;
        const char* pair = digits.data() + at;
        const char* end = pair + 2;
        const bool whole = at + 2 <= digits.size() && std::from_chars(pair, end, byte, 16).ptr == end;
        if (!whole || byte < kLowestPrintable) return digits;
        characters += static_cast<char>(byte);
    }
    return characters;
}

std::string AttributeText(std::string_view syntax, std::vector<std::string> values) {
    if (values.empty()) return {};
    if (syntax == kLongSyntax || syntax == "Int") return std::move(values.front());
    const bool octets = syntax == kOctetStringSyntax;
    if (!octets && syntax != kStringSyntax && syntax != kPathSyntax && syntax != kAclSyntax) return {};
    std::string text = values.size() == 1 ? std::move(values.front()) : JoinValues(values);
    return octets ? DecodeOctets(std::move(text)) : text;
}

}  // namespace zorvel

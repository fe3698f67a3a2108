#include "analysis/attribute_text.h"

#include <charconv>

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

std::string AttributeText(std::string_view syntax, const std::vector<std::string>& values) {
    if (values.empty()) return {};
    if (syntax == kLongSyntax || syntax == "Int") return values.front();
    if (syntax == kStringSyntax || syntax == kPathSyntax || syntax == kAclSyntax) return JoinValues(values);
    if (syntax == kOctetStringSyntax) return DecodeOctets(JoinValues(values));
    return {};
}

}  // namespace zorvel

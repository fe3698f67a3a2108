#include "directory/value_texts.h"

#include <algorithm>

#include "platform/code_page.h"
#include "platform/hex.h"

namespace zorvel {
namespace {

// "privileges#scope#subject DN#attribute" as full name of the subject + "," + attribute + "," + privileges.
// The DN itself can hold "#".
std::string AclText(const MemoryTree& tree, std::string_view value) {
    const std::size_t scope = value.find('#');
    const std::size_t subject = scope == std::string_view::npos ? scope : value.find('#', scope + 1);
    const std::size_t attribute = value.rfind('#');
    if (subject == std::string_view::npos || attribute == subject) return FromUtf8(value);
    std::string text = tree.FullNameOfDN(value.substr(subject + 1, attribute - subject - 1));
    text += ',';
    text += FromUtf8(value.substr(attribute + 1));
    text += ',';
    text += FromUtf8(value.substr(0, scope));
    return text;
}

std::string ValueText(const MemoryTree& tree, Syntax syntax, std::string_view value) {
    switch (syntax) {
        case Syntax::kLong:
            return CanonicalNumber(value);
        case Syntax::kName:
            return tree.FullNameOfDN(value);
        case Syntax::kOctetString:
            return ToHex(value);
        case Syntax::kACL:
            return AclText(tree, value);
        case Syntax::kStream:
            return std::string(value);
        case Syntax::kString:
        case Syntax::kPath:
        case Syntax::kOther:
            break;
    }
    return FromUtf8(value);
}

}  // namespace

std::string CanonicalNumber(std::string_view text) {
    std::string_view digits = text;
    const bool negative = digits.starts_with('-');
    if (negative || digits.starts_with('+')) digits.remove_prefix(1);
    if (digits.empty() || digits.find_first_not_of("0123456789") != std::string_view::npos)
        return FromUtf8(text);
    digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size() - 1));
    std::string number(negative && digits != "0" ? "-" : "");
    return number.append(digits);
}

std::vector<std::string> ValueTexts(const MemoryTree& tree, Syntax syntax,
                                    const std::vector<std::string_view>& values) {
    std::vector<std::string> texts;
    if (syntax == Syntax::kOther) return texts;
    texts.reserve(values.size());
    for (const std::string_view value : values)
        texts.push_back(ValueText(tree, syntax, value));
    return texts;
}

}  // namespace zorvel

#include "directory/value_texts.h"

#include <algorithm>

#include "platform/code_page.h"
#include "platform/hex.h"

namespace zorvel {
namespace {

// "privileges#scope#subject DN#attribute" as full name of the subject + "," + attribute + "," + privileges.
// The DN itself can hold "#".
std::string AclText(DnNames& names, std::string_view value) {
    const std::optional<AclParts> parts = SplitAcl(value);
    if (!parts) return FromUtf8(value);
    std::string text = names.FullNameOf(parts->trustee);
    text += ',';
    text += FromUtf8(parts->attribute);
    text += ',';
    text += FromUtf8(parts->privileges);
    return text;
}

std::string ValueText(DnNames& names, Syntax syntax, std::string_view value) {
    switch (syntax) {
        case Syntax::kLong:
            return CanonicalNumber(value);
        case Syntax::kName:
            return names.FullNameOf(value);
        case Syntax::kOctetString:
            return ToHex(value);
        case Syntax::kACL:
            return AclText(names, value);
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

const std::string& DnNames::FullNameOf(std::string_view dn) {
    constexpr std::size_t kMostNames = 10'000;  // then all are given up, which bounds their memory
    const auto found = names_.find(dn);
    if (found != names_.end()) return found->second;
    if (names_.size() >= kMostNames) names_.clear();
    return names_.emplace(dn, find_(dn)).first->second;
}

std::optional<AclParts> SplitAcl(std::string_view value) {
    const std::size_t scope = value.find('#');
    const std::size_t subject = scope == std::string_view::npos ? scope : value.find('#', scope + 1);
    const std::size_t attribute = value.rfind('#');
    if (subject == std::string_view::npos || attribute == subject) return std::nullopt;
    return AclParts{value.substr(0, scope), value.substr(subject + 1, attribute - subject - 1),
                    value.substr(attribute + 1)};
}

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

std::vector<std::string> ValueTexts(DnNames& names, Syntax syntax,
                                    const std::vector<std::string_view>& values) {
    std::vector<std::string> texts;
    if (syntax == Syntax::kOther) return texts;
    texts.reserve(values.size());
    for (const std::string_view value : values)
        texts.push_back(ValueText(names, syntax, value));
    return texts;
}

}  // namespace zorvel

#include "directory/schema.h"

#include <ldap.h>
#include <ldap_schema.h>

#include <array>
#include <memory>
#include <utility>

#include "directory/directory.h"
#include "platform/code_page.h"

namespace zorvel {
namespace {

// OIDs of RFC 4517 and, from 2.16.840.1.113719 on, of draft-sermersheim-nds-ldap-schema.
constexpr std::array<std::pair<std::string_view, Syntax>, 16> kSyntaxes = {{
    {"1.3.6.1.4.1.1466.115.121.1.27", Syntax::kLong},
    {"2.16.840.1.113719.1.1.5.1.22", Syntax::kLong},
    {"1.3.6.1.4.1.1466.115.121.1.11", Syntax::kString},
    {"1.3.6.1.4.1.1466.115.121.1.15", Syntax::kString},
    {"1.3.6.1.4.1.1466.115.121.1.24", Syntax::kString},
    {"1.3.6.1.4.1.1466.115.121.1.26", Syntax::kString},
    {"1.3.6.1.4.1.1466.115.121.1.36", Syntax::kString},
    {"1.3.6.1.4.1.1466.115.121.1.38", Syntax::kString},
    {"1.3.6.1.4.1.1466.115.121.1.41", Syntax::kString},
    {"1.3.6.1.4.1.1466.115.121.1.44", Syntax::kString},
    {"1.3.6.1.4.1.1466.115.121.1.50", Syntax::kString},
    {"1.3.6.1.4.1.1466.115.121.1.12", Syntax::kName},
    {"2.16.840.1.113719.1.1.5.1.15", Syntax::kPath},
    {"1.3.6.1.4.1.1466.115.121.1.40", Syntax::kOctetString},
    {"2.16.840.1.113719.1.1.5.1.17", Syntax::kACL},
    {"1.3.6.1.4.1.1466.115.121.1.5", Syntax::kStream},
}};
// Far above what servers publish; libldap takes longer than its input grows over many extensions.
constexpr std::size_t kMaxDefinition = std::size_t{128} * 1024;
constexpr std::size_t kEnds = 8;
constexpr std::string_view kNdsName = "X-NDS_NAME";

struct Free {
    void operator()(LDAPAttributeType* type) const { ldap_attributetype_free(type); }
    void operator()(LDAPObjectClass* object_class) const { ldap_objectclass_free(object_class); }
};

Syntax SyntaxOf(std::string_view oid) {
    for (const auto& [known, syntax] : kSyntaxes) {
        if (known == oid) return syntax;
    }
    return Syntax::kOther;
}

// The names of a definition, its OID last.
std::vector<std::string> NamesOf(char* const* names, const char* oid) {
    std::vector<std::string> all;
    for (; names != nullptr && *names != nullptr; ++names)
        all.emplace_back(*names);
    if (oid != nullptr) all.emplace_back(oid);
    return all;
}

// The NDS name among the extensions of a definition; empty without one.
std::string NdsNameOf(LDAPSchemaExtensionItem* const* extensions) {
    for (; extensions != nullptr && *extensions != nullptr; ++extensions) {
        const LDAPSchemaExtensionItem& extension = **extensions;
        const char* const value = extension.lsei_values != nullptr ? extension.lsei_values[0] : nullptr;
        const bool given = value != nullptr && *value != '\0';
        if (given && EqualIgnoringCase(extension.lsei_name, kNdsName)) return FromUtf8(value);
    }
    return {};
}

bool Known(const Schema* bundled, const char* oid) {
    return bundled != nullptr && oid != nullptr;
}

// The name that a definition without an NDS name has: that of the same OID elsewhere, or its own.
std::string NameWithoutNds(const std::string* bundled, const std::vector<std::string>& names) {
    if (bundled != nullptr) return *bundled;
    return names.empty() ? std::string() : FromUtf8(names.front());
}

// Parses a definition with `parse`, one of libldap's functions; `fault` is what is wrong with it.
template <typename Definition>
std::unique_ptr<Definition, Free> Parse(Definition* (*parse)(const char*, int*, const char**, unsigned),
                                        std::string_view text, std::string& fault) {
    if (text.find('\0') != std::string_view::npos) {
        fault = "a NUL character";
        return nullptr;
    }
    if (text.size() > kMaxDefinition) {
        fault = "too long";
        return nullptr;
    }
    // libldap's parser steps over the end of a text that ends with "{": what it finds there must be an end,
    // too.
    std::string ended(text);
    ended.append(kEnds, '\0');
    int code = 0;
    const char* at = nullptr;
    std::unique_ptr<Definition, Free> definition(parse(ended.c_str(), &code, &at, LDAP_SCHEMA_ALLOW_ALL));
    if (!definition) fault = ldap_scherr2str(code);
    return definition;
}

std::string Named(std::string definition, std::string_view nds_name) {
    std::string quoted;
    for (const char character : ToUtf8(nds_name))
        quoted += character == '\'' ? "\\27" : character == '\\' ? "\\5C" : std::string(1, character);
    return definition.insert(definition.rfind(')'), ' ' + std::string(kNdsName) + " '" + quoted + "' ");
}

}  // namespace

std::string_view SyntaxName(Syntax syntax) {
    switch (syntax) {
        case Syntax::kLong:
            return kLongSyntax;
        case Syntax::kString:
        case Syntax::kName:
            return kStringSyntax;
        case Syntax::kPath:
            return kPathSyntax;
        case Syntax::kOctetString:
            return kOctetStringSyntax;
        case Syntax::kACL:
            return kAclSyntax;
        case Syntax::kStream:
            return kStreamSyntax;
        case Syntax::kOther:
            break;
    }
    return kOtherSyntax;
}

std::string Schema::AddAttributeType(std::string_view definition, const Schema* bundled) {
    std::string fault;
    const auto type = Parse(ldap_str2attributetype, definition, fault);
    if (!type) return "Not an attribute type: " + fault;
    const std::vector<std::string> names = NamesOf(type->at_names, type->at_oid);
    const bool has_syntax = type->at_syntax_oid != nullptr;
    std::string name = NdsNameOf(type->at_extensions);
    if (name.empty()) {
        const Attribute* const known =
            Known(bundled, type->at_oid) ? bundled->FindAttribute(type->at_oid) : nullptr;
        name = NameWithoutNds(known != nullptr ? &known->nds_name : nullptr, names);
    } else {
        ++nds_names_;
    }
    attributes_.push_back({std::move(name), has_syntax ? SyntaxOf(type->at_syntax_oid) : Syntax::kOther});
    supertypes_.push_back(!has_syntax && type->at_sup_oid != nullptr ? UpperCase(type->at_sup_oid)
                                                                     : std::string());
    for (const std::string& known : names)
        attribute_names_.try_emplace(UpperCase(known), attributes_.size() - 1);
    return {};
}

std::string Schema::AddObjectClass(std::string_view definition, const Schema* bundled) {
    std::string fault;
    const auto object_class = Parse(ldap_str2objectclass, definition, fault);
    if (!object_class) return "Not an object class: " + fault;
    const std::vector<std::string> names = NamesOf(object_class->oc_names, object_class->oc_oid);
    std::string nds_name = NdsNameOf(object_class->oc_extensions);
    if (nds_name.empty()) {
        nds_name = NameWithoutNds(
            Known(bundled, object_class->oc_oid) ? bundled->FindClass(object_class->oc_oid) : nullptr, names);
    } else {
        ++nds_names_;
    }
    for (const std::string& name : names)
        class_names_.try_emplace(UpperCase(name), nds_name);
    return {};
}

void Schema::ResolveSyntaxes() {
    std::vector<std::size_t> chain;
    for (std::size_t start = 0; start < attributes_.size(); ++start) {
        // Each attribute waits at most once, so a chain that comes back to itself ends as "Other".
        Syntax syntax = attributes_[start].syntax;
        chain.clear();
        for (std::size_t at = start; !supertypes_[at].empty();) {
            const std::string supertype = std::exchange(supertypes_[at], {});
            chain.push_back(at);
            const auto found = attribute_names_.find(supertype);
            // An attribute that the schema does not know is a String, and so are those that inherit from it.
            if (found == attribute_names_.end()) {
                syntax = Syntax::kString;
                break;
            }
            at = found->second;
            syntax = attributes_[at].syntax;
        }
        for (const std::size_t waiting : chain)
            attributes_[waiting].syntax = syntax;
    }
}

const Schema::Attribute* Schema::FindAttribute(std::string_view ldap_name) const {
    const auto found = attribute_names_.find(UpperCase(ldap_name));
    return found == attribute_names_.end() ? nullptr : &attributes_[found->second];
}

std::vector<std::string> Schema::LdapNamesOfAttribute(std::string_view nds_name) const {
    std::vector<std::string> names;
    for (const auto& [name, index] : attribute_names_) {
        if (attributes_[index].nds_name == nds_name) names.push_back(name);
    }
    return names;
}

std::vector<std::string> Schema::LdapNamesOfClass(std::string_view nds_name) const {
    std::vector<std::string> names;
    for (const auto& [name, known] : class_names_) {
        if (known == nds_name) names.push_back(name);
    }
    return names;
}

const std::string* Schema::FindClass(std::string_view ldap_name) const {
    const auto found = class_names_.find(UpperCase(ldap_name));
    return found == class_names_.end() ? nullptr : &found->second;
}

std::optional<std::string> AttributeTypeWithNdsName(const std::string& definition, const Schema& bundled) {
    std::string fault;
    const auto type = Parse(ldap_str2attributetype, definition, fault);
    if (!type) return std::nullopt;
    if (!NdsNameOf(type->at_extensions).empty() || type->at_oid == nullptr) return definition;
    const Schema::Attribute* const known = bundled.FindAttribute(type->at_oid);
    return known != nullptr ? Named(definition, known->nds_name) : definition;
}

std::optional<std::string> ObjectClassWithNdsName(const std::string& definition, const Schema& bundled) {
    std::string fault;
    const auto object_class = Parse(ldap_str2objectclass, definition, fault);
    if (!object_class) return std::nullopt;
    if (!NdsNameOf(object_class->oc_extensions).empty() || object_class->oc_oid == nullptr) return definition;
    const std::string* const known = bundled.FindClass(object_class->oc_oid);
    return known != nullptr ? Named(definition, *known) : definition;
}

}  // namespace zorvel

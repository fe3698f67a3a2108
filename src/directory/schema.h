// The schema of a tree, from definitions in LDAP form (RFC 4512) that carry the NDS names.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "directory/text_map.h"

namespace zorvel {

// How the values of an attribute are shown.
enum class Syntax : std::uint8_t { kLong, kString, kName, kPath, kOctetString, kACL, kStream, kOther };

// What the directory calls a syntax: "Long", "String" (also for the names of objects), "NWPath",
// "NWOctetString", "NWACL", "NWStream" or "Other".
std::string_view SyntaxName(Syntax syntax);

class Schema;

// A definition that reads the same without `bundled`: with the NDS name that it takes from there by its OID.
// Nothing when it is faulty.
std::optional<std::string> AttributeTypeWithNdsName(const std::string& definition, const Schema& bundled);
std::optional<std::string> ObjectClassWithNdsName(const std::string& definition, const Schema& bundled);

class Schema {
  public:
    struct Attribute {
        std::string nds_name;
        Syntax syntax = Syntax::kOther;
    };

    // Adds an attribute type or an object class. Returns what is wrong with the definition, or an empty text.
    // A name that is defined twice keeps its first meaning. One without an NDS name takes that which
    // `bundled` has for its OID, if any, else its LDAP name.
    std::string AddAttributeType(std::string_view definition, const Schema* bundled = nullptr);
    std::string AddObjectClass(std::string_view definition, const Schema* bundled = nullptr);
    // Lets attribute types without a syntax take that of their supertype. Call it when all have been added.
    void ResolveSyntaxes();

    // The attribute with an LDAP name or OID, in any case; null when the schema does not hold it.
    const Attribute* FindAttribute(std::string_view ldap_name) const;
    // The NDS name of the class with an LDAP name or OID, in any case; null when the schema does not hold it.
    const std::string* FindClass(std::string_view ldap_name) const;

    // How many definitions carried an NDS name of their own.
    std::size_t nds_names() const { return nds_names_; }

    // The LDAP names, in some case, of what has an NDS name.
    std::vector<std::string> LdapNamesOfAttribute(std::string_view nds_name) const;
    std::vector<std::string> LdapNamesOfClass(std::string_view nds_name) const;

  private:
    std::vector<Attribute> attributes_;
    std::vector<std::string>
        supertypes_;  // for each attribute what its syntax is to come from, in upper case
    TextMap<std::size_t> attribute_names_;  // upper case -> index in attributes_
    TextMap<std::string> class_names_;      // upper case -> NDS name
    std::size_t nds_names_ = 0;
};

}  // namespace zorvel

// One directory tree in memory: its objects by path and by name, and their attributes under their NDS names.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "directory/entry_store.h"
#include "directory/names.h"
#include "directory/object_class.h"
#include "directory/schema.h"
#include "directory/text_map.h"

namespace zorvel {

// The attributes of one object. Values are as stored, and stay valid as long as the tree.
struct EntryAttributes {
    struct Value {
        std::uint32_t attribute;
        std::uint32_t place;  // among all values of the object
        std::string_view bytes;
    };
    std::vector<std::uint32_t> order;    // stored numbers, in the order in which the object first names them
    std::vector<std::uint32_t> numbers;  // stored numbers of all values, by their place
    std::vector<Value> values;           // by attribute, those of one in their order

    // The values of an attribute, in their order; none when the object does not hold it.
    std::vector<std::string_view> Of(std::uint32_t attribute) const;
};

class MemoryTree {
  public:
    // Takes objects whose values are numbered by `ldap_names`, the names of attributes as the file spells
    // them. Objects that were not placed are containers that the file does not hold, and become the last of
    // their siblings; their class number says which of the container classes they are (ContainerClassNumber).
    MemoryTree(EntryStore store, Schema schema, const std::vector<std::string>& ldap_names);

    // The class number of a container of the RDN type `type`, for objects that the file does not hold.
    static std::uint32_t ContainerClassNumber(std::string_view type);

    // The object of a path's components or of a full name, in any case; kNoEntry when there is none.
    EntryIndex FindPath(std::string_view components) const;
    EntryIndex FindFullName(std::string_view full_name) const;

    bool Holds(std::uint64_t entry) const { return entry < store_.size(); }
    // The naming components of an object, root first, separated by "\"; "[Root]" for the root.
    std::string Components(EntryIndex entry) const;
    std::string FullName(EntryIndex entry) const;
    std::string_view ShortName(EntryIndex entry) const;
    const std::string& ClassName(EntryIndex entry) const { return classes_[store_.class_number(entry)]; }
    EntryIndex FirstChild(EntryIndex entry) const { return store_.first_child(entry); }
    EntryIndex NextSibling(EntryIndex entry) const { return store_.next_sibling(entry); }

    // Reads the attributes of an object into `attributes`, whose room is used again.
    void ReadAttributes(EntryIndex entry, EntryAttributes& attributes) const;
    // The values of one attribute as stored; none when the object does not hold it.
    std::vector<std::string_view> ReadAttribute(EntryIndex entry, std::uint32_t attribute) const;
    // The name of an attribute of EntryAttributes::order: its NDS name, or as the object itself spells it.
    const std::string& AttributeName(std::uint32_t stored_number) const {
        return spelled_names_[stored_number];
    }
    Syntax AttributeSyntax(std::uint32_t attribute) const { return attributes_[attribute].syntax; }
    // The number of the attribute with an NDS name, in any case; kNoAttribute when no object holds it.
    std::uint32_t FindAttribute(std::string_view nds_name) const;
    static constexpr std::uint32_t kNoAttribute = 0xFFFFFFFF;

    // The container that a DN looked up last names, so that of many objects in one only their own names are
    // looked up.
    struct LastContainer {
        std::string dn;
        EntryIndex entry = kNoEntry;
    };
    // The object with a DN; kNoEntry when there is none, or when the text is no DN.
    EntryIndex FindDN(std::string_view dn, LastContainer& last) const;
    // The full name of the object with a DN, with its own spelling when it exists; else a full name that no
    // object has. Text that is no DN stays as it is.
    std::string FullNameOfDN(std::string_view dn) const;

  private:
    EntryIndex FindComponents(const std::vector<NamingComponent>& components) const;
    std::uint32_t ClassNumber(const std::string& name);
    void NameAttributes(const std::vector<std::string>& ldap_names);
    void ChooseClasses();
    void PlaceMissingContainers();

    EntryStore store_;
    Schema schema_;
    std::vector<Schema::Attribute> attributes_;
    std::vector<std::uint32_t> attribute_of_;    // by the number that the store uses
    std::vector<std::string> spelled_names_;     // likewise
    AnyCaseMap<std::uint32_t> attribute_names_;  // NDS name -> index in attributes_
    TextMap<std::uint32_t> exact_names_;         // likewise, as listed: nearly every name is looked up so
    std::vector<std::string> classes_;           // by class number
    TextMap<std::uint32_t> class_numbers_;
};

}  // namespace zorvel

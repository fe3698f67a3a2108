// Loads arbitrary bytes as a tree: they are either refused with the line at fault, or give a tree whose every
// object is found by its path and whose every value has a text.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "directory/ldif_tree.h"
#include "directory/value_texts.h"
#include "fuzz_input.h"

namespace zorvel::fuzz {
namespace {

// The schema of inputs that hold none: an attribute of each syntax with a text of its own.
constexpr std::string_view kSchema =
    "dn: cn=schema\n"
    "attributeTypes: ( 2.5.4.0 NAME 'objectClass' SYNTAX 1.3.6.1.4.1.1466.115.121.1.38 )\n"
    "attributeTypes: ( 2.5.4.31 NAME 'member' SYNTAX 1.3.6.1.4.1.1466.115.121.1.12 )\n"
    "attributeTypes: ( 1.1 NAME 'l' SYNTAX 1.3.6.1.4.1.1466.115.121.1.27 )\n"
    "attributeTypes: ( 1.2 NAME 'x' SYNTAX 1.3.6.1.4.1.1466.115.121.1.40 )\n"
    "attributeTypes: ( 1.3 NAME 'aCL' SYNTAX 2.16.840.1.113719.1.1.5.1.17 )\n"
    "attributeTypes: ( 1.4 NAME 's' SYNTAX 1.3.6.1.4.1.1466.115.121.1.5 )\n"
    "objectClasses: ( 2.5.6.4 NAME 'organization' X-NDS_NAME 'Organization' )\n";

void ReadEveryValue(const MemoryTree& tree, EntryIndex entry) {
    EntryAttributes attributes;
    tree.ReadAttributes(entry, attributes);
    DnNames names([&tree](std::string_view dn) { return tree.FullNameOfDN(dn); });
    std::size_t count = 0;
    for (const std::uint32_t stored_number : attributes.order) {
        const std::uint32_t attribute = tree.FindAttribute(tree.AttributeName(stored_number));
        Require(attribute != MemoryTree::kNoAttribute);
        const std::vector<std::string_view> values = attributes.Of(attribute);
        Require(values == tree.ReadAttribute(entry, attribute));
        const Syntax syntax = tree.AttributeSyntax(attribute);
        Require(ValueTexts(names, syntax, values).size() == (syntax == Syntax::kOther ? 0 : values.size()));
        count += values.size();
    }
    Require(count == attributes.values.size());
}

std::unique_ptr<MemoryTree> Load(std::string_view input) {
    try {
        return ReadLdifTree(AsFile(input), {}, [] { return AsFile(kSchema); });
    } catch (const Error& error) {
        Require(error.number() == errors::kDirectoryUnreadable);
        Require(error.detail().starts_with(std::string(kInputName) + ", line "));
        return nullptr;
    }
}

}  // namespace

void TestOneInput(std::string_view input) {
    const std::unique_ptr<MemoryTree> tree = Load(input);
    for (EntryIndex entry = kRootEntry; tree && tree->Holds(entry); ++entry) {
        Require(tree->FindPath(tree->Components(entry)) != kNoEntry);
        Require(!tree->FullName(entry).empty());
        tree->FindFullName(tree->FullName(entry));
        ReadEveryValue(*tree, entry);
    }
}

}  // namespace zorvel::fuzz

// libldap loses some bytes of a schema definition that it refuses.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() {
    return "leak:liblber\n";
}

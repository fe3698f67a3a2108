#include "directory/ldif_tree.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "directory/directory.h"
#include "directory/ldif_reader.h"
#include "platform/code_page.h"
#include "platform/error.h"

namespace zorvel {
namespace {

// No DN of eDirectory has more than 256 characters, and so more components than this. The containers of a DN
// far deeper would fill memory and caches with paths as long as it each.
constexpr std::size_t kMostComponents = 128;

// Reads the attributes of a record that is a schema: cn=schema.
void ReadSchema(LdifReader& reader, Schema& schema) {
    LdifAttribute attribute;
    while (reader.NextAttribute(attribute)) {
        std::string fault;
        if (EqualIgnoringCase(attribute.name, "attributeTypes"))
            fault = schema.AddAttributeType(attribute.value);
        if (EqualIgnoringCase(attribute.name, "objectClasses"))
            fault = schema.AddObjectClass(attribute.value);
        if (!fault.empty()) reader.Fail(attribute.line, fault);
    }
    schema.ResolveSyntaxes();
}

bool IsSchema(const NamingComponent& only_component) {
    return EqualIgnoringCase(only_component.type, "cn") && EqualIgnoringCase(only_component.name, "schema");
}

// The schema in an LDIF file that holds one.
Schema SchemaOf(InputFile file) {
    Schema schema;
    LdifReader reader(std::move(file));
    std::vector<NamingComponent> components;
    while (reader.NextRecord()) {
        if (ParseDN(reader.dn(), components) && components.size() == 1 && IsSchema(components.front()))
            ReadSchema(reader, schema);
    }
    return schema;
}

class LdifTreeReader {
  public:
    LdifTreeReader(InputFile file, std::filesystem::path path) : reader_(std::move(file), std::move(path)) {}

    std::unique_ptr<MemoryTree> Load(const std::function<InputFile()>& open_schema) {
        while (reader_.NextRecord())
            ReadRecord();
        if (!has_schema_) schema_ = SchemaOf(open_schema());
        return std::make_unique<MemoryTree>(std::move(store_), std::move(schema_), attribute_names_);
    }

  private:
    void ReadRecord() {
        NamingComponent component;
        const EntryIndex parent = FindParent(component);
        if (parent == kRootEntry && IsSchema(component)) {
            if (std::exchange(has_schema_, true)) FailDuplicate();
            ReadSchema(reader_, schema_);
            return;
        }
        const EntryIndex entry = parent == kNoEntry ? kRootEntry : TakeEntry(parent, component);
        if (store_.IsPlaced(entry)) FailDuplicate();
        store_.Place(entry);
        values_.Clear();
        LdifAttribute attribute;
        while (reader_.NextAttribute(attribute)) {
            const std::uint32_t number = AttributeNumber(attribute.name);
            if (attribute.value.size() < PackedValues::kLarge) {
                values_.Append(number, attribute.value);
            } else {
                values_.AppendLarge(number, reader_.TakeValue(attribute));
            }
        }
        store_.SetValues(entry, values_);
    }

    [[noreturn]] void FailDuplicate() {
        reader_.Fail(reader_.dn_line(), "An object of this path stands in the file before");
    }

    // The parent of the current record's object, kNoEntry for the root; `component` is the object's own name.
    EntryIndex FindParent(NamingComponent& component) {
        const std::string_view dn = reader_.dn();
        if (dn.empty()) return kNoEntry;
        std::string_view parent_dn;
        if (TakeSimpleComponent(dn, component, parent_dn)) {
            // Siblings mostly stand together.
            if (parent_dn == last_parent_dn_) return last_parent_;
            ParseOrFail(parent_dn, kMostComponents - 1);
            last_parent_ = FindOrMake(0);
            last_parent_dn_ = parent_dn;
            return last_parent_;
        }
        ParseOrFail(dn, kMostComponents);
        if (components_.empty()) return kNoEntry;
        component = components_.front();
        return FindOrMake(1);
    }

    // Takes a DN of at most `most` components apart.
    void ParseOrFail(std::string_view dn, std::size_t most) {
        if (!ParseDN(dn, components_)) reader_.Fail(reader_.dn_line(), "Not a DN");
        if (components_.size() > most)
            reader_.Fail(reader_.dn_line(),
                         "A DN of more than " + std::to_string(kMostComponents) + " components");
    }

    // The object of `components_` from `leaf` to the root; what the file has not yet held is added, not
    // placed.
    EntryIndex FindOrMake(std::size_t leaf) {
        EntryIndex entry = kRootEntry;
        for (std::size_t at = components_.size(); at-- > leaf;) {
            const NamingComponent& component = components_[at];
            const EntryIndex known = store_.FindChild(entry, component);
            entry = known != kNoEntry ? known : AddChild(entry, component);
            if (known == kNoEntry) store_.SetClass(entry, MemoryTree::ContainerClassNumber(component.type));
        }
        return entry;
    }

    // The object of the current record, added unless an earlier record named it as a parent.
    EntryIndex TakeEntry(EntryIndex parent, const NamingComponent& component) {
        const EntryIndex known = store_.FindChild(parent, component);
        if (known == kNoEntry) return AddChild(parent, component);
        // A record that named it as its parent may have spelled it otherwise; its own spelling counts.
        const bool named_before = !store_.IsPlaced(known) && component.utf8_name.empty();
        if (named_before && store_.name(known) != component.name) store_.Respell(known, component.name);
        return known;
    }

    EntryIndex AddChild(EntryIndex parent, const NamingComponent& component) {
        return component.utf8_name.empty() ? store_.Add(parent, component.name)
                                           : store_.AddForeign(parent, component.utf8_name);
    }

    std::uint32_t AttributeNumber(std::string_view name) {
        const auto known = attribute_numbers_.find(name);
        if (known != attribute_numbers_.end()) return known->second;
        const auto number = static_cast<std::uint32_t>(attribute_names_.size());
        attribute_names_.emplace_back(name);
        attribute_numbers_.emplace(name, number);
        return number;
    }

    LdifReader reader_;
    EntryStore store_;
    Schema schema_;
    bool has_schema_ = false;
    std::vector<std::string> attribute_names_;  // by number, as spelled
    TextMap<std::uint32_t> attribute_numbers_;
    PackedValues values_;
    std::vector<NamingComponent> components_;
    std::string last_parent_dn_;
    EntryIndex last_parent_ = kRootEntry;
};

// Does `read`, whose failures are error 600 and name the file.
template <typename Read>
auto AsUnreadable(std::string_view path, Read read) {
    try {
        return read();
    } catch (const Error& error) {
        if (error.number() == errors::kDirectoryUnreadable) throw;
        const Error told = error.detail().empty() ? error.At(std::string(path)) : error;
        throw Error(errors::kDirectoryUnreadable).With(told.detail());
    }
}

}  // namespace

std::unique_ptr<MemoryTree> ReadLdifTree(InputFile file, std::filesystem::path path,
                                         const std::function<InputFile()>& open_schema) {
    return LdifTreeReader(std::move(file), std::move(path)).Load(open_schema);
}

std::unique_ptr<MemoryTree> LoadLdifTree(const Files& files, std::string_view path) {
    return AsUnreadable(path, [&] {
        return ReadLdifTree(files.Open(path), files.Resolve(path),
                            [&] { return files.Open(files.Path(kBundledSchema)); });
    });
}

Schema LoadBundledSchema(const Files& files) {
    const std::string path = files.Path(kBundledSchema);
    return AsUnreadable(path, [&] { return SchemaOf(files.Open(path)); });
}

}  // namespace zorvel

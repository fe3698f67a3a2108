#include "directory/memory_tree.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "directory/directory.h"
#include "platform/code_page.h"

namespace zorvel {
namespace {

constexpr std::string_view kObjectClass = "objectClass";

// The classes with a number of their own: the root's, and those of containers that are made from an RDN type.
constexpr std::array<std::string_view, 6> kFixedClasses = {kUnknownClass,         kRootName, "Organization",
                                                           "Organizational Unit", "Country", "Locality"};

constexpr std::uint32_t kRootNumber = 1;

}  // namespace

MemoryTree::MemoryTree(EntryStore store, Schema schema, const std::vector<std::string>& ldap_names)
    : store_(std::move(store)), schema_(std::move(schema)) {
    for (const std::string_view name : kFixedClasses)
        ClassNumber(std::string(name));
    store_.NameForeign();
    NameAttributes(ldap_names);
    ChooseClasses();
    PlaceMissingContainers();
}

std::uint32_t MemoryTree::ContainerClassNumber(std::string_view type) {
    const auto* const fixed = std::find(kFixedClasses.begin(), kFixedClasses.end(), ContainerClass(type));
    return static_cast<std::uint32_t>(fixed - kFixedClasses.begin());
}

std::uint32_t MemoryTree::ClassNumber(const std::string& name) {
    const auto [place, added] = class_numbers_.try_emplace(name, static_cast<std::uint32_t>(classes_.size()));
    if (added) classes_.push_back(name);
    return place->second;
}

void MemoryTree::NameAttributes(const std::vector<std::string>& ldap_names) {
    for (const std::string& ldap_name : ldap_names) {
        const Schema::Attribute* const known = schema_.FindAttribute(ldap_name);
        Schema::Attribute attribute =
            known != nullptr ? *known : Schema::Attribute{ldap_name, Syntax::kString};
        spelled_names_.push_back(attribute.nds_name);
        const auto [place, added] =
            attribute_names_.try_emplace(attribute.nds_name, static_cast<std::uint32_t>(attributes_.size()));
        if (added) attributes_.push_back(std::move(attribute));
        attribute_of_.push_back(place->second);
        exact_names_.emplace(spelled_names_.back(), place->second);
    }
}

// Gives each object of the file the class that its objectClass values name.
void MemoryTree::ChooseClasses() {
    const Schema::Attribute* const known = schema_.FindAttribute(kObjectClass);
    const std::uint32_t object_class = FindAttribute(known != nullptr ? known->nds_name : kObjectClass);
    ObjectClassChoice choice(schema_);
    for (EntryIndex entry = kRootEntry + 1; entry < store_.size(); ++entry) {
        if (!store_.IsPlaced(entry)) continue;
        choice.Start();
        std::string_view values = store_.values(entry);
        std::uint32_t attribute = 0;
        std::string_view value;
        while (PackedValues::Take(values, attribute, value)) {
            if (attribute_of_[attribute] == object_class) choice.Take(value);
        }
        store_.SetClass(entry, ClassNumber(choice.Class()));
    }
    store_.SetClass(kRootEntry, kRootNumber);
}

void MemoryTree::PlaceMissingContainers() {
    for (EntryIndex entry = kRootEntry + 1; entry < store_.size(); ++entry) {
        if (!store_.IsPlaced(entry)) store_.Place(entry);
    }
}

EntryIndex MemoryTree::FindPath(std::string_view components) const {
    if (EqualIgnoringCase(components, kRootName)) return kRootEntry;
    // A name can hold "\" itself. Below each object the shortest name is tried first, and then, as far as
    // names with so many "\" stand there, longer ones.
    struct Attempt {
        EntryIndex parent;
        std::size_t begin;
        std::size_t search_from;
        std::size_t longer;  // how often a longer name can still be tried
        NameHash hash;       // of the name tried last, so that a longer one costs no more than what it adds
        std::size_t hashed;  // where that ends
    };
    const auto attempt_below = [this](EntryIndex parent, std::size_t begin) {
        return Attempt{parent, begin, begin, store_.BackslashesBelow(parent), NameHash(parent), begin};
    };
    std::vector<Attempt> attempts{attempt_below(kRootEntry, 0)};
    while (!attempts.empty()) {
        Attempt& attempt = attempts.back();
        const std::size_t end = std::min(components.find('\\', attempt.search_from), components.size());
        const std::string_view name = components.substr(attempt.begin, end - attempt.begin);
        attempt.hash.Add(components.substr(attempt.hashed, end - attempt.hashed));
        attempt.hashed = end;
        const EntryIndex child = store_.FindChild(attempt.parent, name, attempt.hash);
        if (child != kNoEntry && end == components.size()) return child;
        if (attempt.longer == 0 || end == components.size()) {
            attempts.pop_back();
        } else {
            --attempt.longer;
            attempt.search_from = end + 1;
        }
        if (child != kNoEntry) attempts.push_back(attempt_below(child, end + 1));
    }
    return kNoEntry;
}

EntryIndex MemoryTree::FindFullName(std::string_view full_name) const {
    const std::vector<std::string> components = SplitFullName(full_name);
    if (components.size() == 1 && EqualIgnoringCase(components.front(), kRootName)) return kRootEntry;
    EntryIndex entry = kRootEntry;
    for (auto name = components.rbegin(); name != components.rend() && entry != kNoEntry; ++name) {
        entry = store_.FindChild(entry, *name);
    }
    return entry;
}

std::string_view MemoryTree::ShortName(EntryIndex entry) const {
    return entry == kRootEntry ? kRootName : store_.name(entry);
}

std::string MemoryTree::Components(EntryIndex entry) const {
    if (entry == kRootEntry) return std::string(kRootName);
    std::vector<std::string_view> names;
    for (; entry != kRootEntry; entry = store_.parent(entry))
        names.push_back(store_.name(entry));
    std::reverse(names.begin(), names.end());
    std::string components;
    for (const std::string_view name : names) {
        if (!components.empty()) components += '\\';
        components += name;
    }
    return components;
}

std::string MemoryTree::FullName(EntryIndex entry) const {
    if (entry == kRootEntry) return std::string(kRootName);
    std::string full_name;
    for (; entry != kRootEntry; entry = store_.parent(entry))
        AppendToFullName(full_name, store_.name(entry));
    return full_name;
}

std::vector<std::string_view> EntryAttributes::Of(std::uint32_t attribute) const {
    auto value =
        std::lower_bound(values.begin(), values.end(), attribute,
                         [](const Value& before, std::uint32_t number) { return before.attribute < number; });
    std::vector<std::string_view> found;
    for (; value != values.end() && value->attribute == attribute; ++value)
        found.push_back(value->bytes);
    return found;
}

void MemoryTree::ReadAttributes(EntryIndex entry, EntryAttributes& attributes) const {
    auto& [order, numbers, values] = attributes;
    order.clear();
    numbers.clear();
    values.clear();
    std::string_view stored = store_.values(entry);
    std::uint32_t number = 0;
    std::string_view bytes;
    while (PackedValues::Take(stored, number, bytes)) {
        values.push_back({attribute_of_[number], static_cast<std::uint32_t>(values.size()), bytes});
        numbers.push_back(number);
    }
    std::sort(values.begin(), values.end(), [](const auto& left, const auto& right) {
        return left.attribute != right.attribute ? left.attribute < right.attribute
                                                 : left.place < right.place;
    });

    std::vector<bool> names_anew(values.size());  // by place: no value before is of that attribute
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (i == 0 || values[i].attribute != values[i - 1].attribute) names_anew[values[i].place] = true;
    }
    for (std::size_t place = 0; place < values.size(); ++place) {
        if (names_anew[place]) order.push_back(numbers[place]);
    }
}

std::vector<std::string_view> MemoryTree::ReadAttribute(EntryIndex entry, std::uint32_t attribute) const {
    std::vector<std::string_view> found;
    std::string_view values = store_.values(entry);
    std::uint32_t number = 0;
    std::string_view value;
    while (PackedValues::Take(values, number, value)) {
        if (attribute_of_[number] == attribute) found.push_back(value);
    }
    return found;
}

std::uint32_t MemoryTree::FindAttribute(std::string_view nds_name) const {
    if (const auto exact = exact_names_.find(nds_name); exact != exact_names_.end()) return exact->second;
    const auto found = attribute_names_.find(nds_name);
    return found == attribute_names_.end() ? kNoAttribute : found->second;
}

EntryIndex MemoryTree::FindComponents(const std::vector<NamingComponent>& components) const {
    EntryIndex entry = kRootEntry;
    for (auto name = components.rbegin(); name != components.rend() && entry != kNoEntry; ++name) {
        entry = store_.FindChild(entry, *name);
    }
    return entry;
}

EntryIndex MemoryTree::FindDN(std::string_view dn, LastContainer& last) const {
    std::vector<NamingComponent> components;
    NamingComponent component;
    std::string_view container;
    if (!TakeSimpleComponent(dn, component, container)) {
        return ParseDN(dn, components) && !components.empty() ? FindComponents(components) : kNoEntry;
    }
    if (container != last.dn || last.entry == kNoEntry) {
        last.dn = container;
        last.entry = ParseDN(container, components) ? FindComponents(components) : kNoEntry;
    }
    return last.entry == kNoEntry ? kNoEntry : store_.FindChild(last.entry, component);
}

std::string MemoryTree::FullNameOfDN(std::string_view dn) const {
    std::vector<NamingComponent> components;
    if (!ParseDN(dn, components) || components.empty()) return FromUtf8(dn);
    const EntryIndex entry = FindComponents(components);
    if (entry != kNoEntry) return FullName(entry);
    const bool foreign =
        std::any_of(components.begin(), components.end(),
                    [](const NamingComponent& component) { return !component.utf8_name.empty(); });
    for (;;) {
        std::string full_name;
        for (const NamingComponent& component : components)
            AppendToFullName(full_name, component.name);
        // Without the characters that were lost, the text can be the name of another object.
        if (!foreign || FindFullName(full_name) == kNoEntry) return full_name;
        components.front().name += "~1";
    }
}

}  // namespace zorvel

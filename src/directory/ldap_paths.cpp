#include "directory/ldap_paths.h"

#include <algorithm>
#include <array>
#include <utility>

#include "directory/class_filter.h"
#include "directory/directory.h"
#include "platform/code_page.h"

namespace zorvel {
namespace {

// The RDN types that a path's names can have, and so a search for them tries.
constexpr std::array<std::string_view, 6> kNamingTypes = {"cn", "ou", "o", "c", "l", "dc"};
// The DNs that are remembered before all are given up.
constexpr std::size_t kMostKnown = 200'000;
// The classes of the objects that lists are asked for.
constexpr std::array<std::string_view, 6> kListedClasses = {
    "Organizational Unit", "Organization", "Country", "Locality", kApplicationClass, kAliasClass};

}  // namespace

std::vector<NamingComponent> ComponentsOfDN(std::string_view dn) {
    std::vector<NamingComponent> components;
    if (!ParseDN(dn, components)) components.clear();
    return components;
}

std::string PathOfDN(const std::vector<NamingComponent>& components) {
    std::string path;
    for (auto component = components.rbegin(); component != components.rend(); ++component) {
        if (!path.empty()) path += '\\';
        path += component->name;
    }
    return path;
}

std::string FullNameOfComponents(const std::vector<NamingComponent>& components) {
    std::string full_name;
    for (const NamingComponent& component : components)
        AppendToFullName(full_name, component.name);
    return full_name;
}

std::string DNOfFirst(const std::vector<NamingComponent>& components, std::size_t depth) {
    std::string dn;
    for (std::size_t i = components.size() - depth; i < components.size(); ++i) {
        if (!dn.empty()) dn += ',';
        const NamingComponent& component = components[i];
        dn += component.type + '=' +
              EscapeForDN(component.utf8_name.empty() ? ToUtf8(component.name) : component.utf8_name);
    }
    return dn;
}

bool LiesAtOrBelow(std::string_view path, std::string_view above) {
    return above.empty() || EqualIgnoringCase(path, above) ||
           (BeginsIgnoringCase(path, above) && path.size() > above.size() && path[above.size()] == '\\');
}

LdapPaths::LdapPaths(LdapSession& session) : session_(session) {
    for (const std::string& base : session_.settings().bases)
        bases_.push_back(ComponentsOfDN(base));
}

const Schema& LdapPaths::schema() {
    const Schema& schema = session_.schema();
    if (!classes_) classes_.emplace(schema);
    return schema;
}

std::string LdapPaths::ClassOf(const LdapEntry& entry) {
    schema();
    classes_->Start();
    for (const LdapAttribute& attribute : entry.attributes) {
        if (!EqualIgnoringCase(attribute.name, "objectClass")) continue;
        for (const std::string& value : attribute.values)
            classes_->Take(value);
    }
    return classes_->Class();
}

void LdapPaths::Remember(std::string_view components, const std::string& dn, bool renamed) {
    if (known_.size() >= kMostKnown) known_.clear();
    known_.insert_or_assign(std::string(components), Remembered{dn, renamed});
}

std::optional<LdapPaths::Place> LdapPaths::Known(std::string_view components) const {
    const auto known = known_.find(components);
    if (known == known_.end()) return std::nullopt;
    return Place{known->first, known->second.dn, known->second.renamed};
}

void LdapPaths::Forget(std::string_view components) {
    if (const auto known = known_.find(components); known != known_.end()) known_.erase(known);
}

std::optional<std::string> LdapPaths::Resolve(std::string_view components) {
    if (IsRootPath(components)) return std::string();
    if (const auto known = known_.find(components); known != known_.end()) return known->second.dn;
    for (const std::vector<NamingComponent>& base : bases_) {
        const std::string path = PathOfDN(base);
        if (path.empty() || !EqualIgnoringCase(path, components)) continue;
        Remember(path, DNOfFirst(base, base.size()), false);
        return known_.find(components)->second.dn;
    }
    return ResolveBelow({}, {}, components);
}

std::optional<std::string> LdapPaths::ResolveBelow(const std::string& dn, std::string_view above,
                                                   std::string_view rest) {
    for (const Child& child : Candidates(dn, rest)) {
        std::string components(above);
        if (!components.empty()) components += '\\';
        components += child.name;
        Remember(components, child.dn, child.renamed);
        if (child.name.size() == rest.size()) return child.dn;
        if (auto found = ResolveBelow(child.dn, components, rest.substr(child.name.size() + 1))) return found;
    }
    return std::nullopt;
}

std::vector<LdapPaths::Child> LdapPaths::Candidates(const std::string& dn, std::string_view rest) {
    std::string filter = "(|";
    bool plain = true;
    for (std::size_t end = rest.find('\\');; end = rest.find('\\', end + 1)) {
        const std::string_view name = rest.substr(0, end);
        plain = plain && name.find_first_of("?+~") == std::string_view::npos;
        for (const std::string_view type : kNamingTypes)
            filter += '(' + std::string(type) + '=' + EscapeForFilter(ToUtf8(name)) + ')';
        if (end == std::string_view::npos) break;
    }
    filter += ')';
    const auto fits = [rest](const Child& child) {
        return BeginsIgnoringCase(rest, child.name) &&
               (rest.size() == child.name.size() || rest[child.name.size()] == '\\');
    };
    const auto fitting = [&](const std::string& search) {
        std::vector<Child> children = List(dn, search).value_or(std::vector<Child>());
        children.erase(std::remove_if(children.begin(), children.end(),
                                      [&](const Child& child) { return !fits(child); }),
                       children.end());
        std::stable_sort(children.begin(), children.end(), [](const Child& left, const Child& right) {
            return left.name.size() < right.name.size();
        });
        return children;
    };
    std::vector<Child> found = fitting(filter);
    // Names that are not a value as it stands are found by looking at all.
    if (found.empty() && !plain) found = fitting("(objectClass=*)");
    return found;
}

std::optional<std::vector<LdapPaths::Child>> LdapPaths::List(const std::string& dn,
                                                             const std::string& filter) {
    const auto entries = session_.List(dn, filter, {"objectClass"});
    if (!entries) return std::nullopt;
    std::vector<Child> children;
    std::vector<std::string> utf8_names;
    for (const LdapEntry& entry : *entries) {
        const std::vector<NamingComponent> components = ComponentsOfDN(entry.dn);
        if (components.empty()) continue;
        children.push_back(
            {entry.dn, components.front().name, ClassOf(entry), !components.front().utf8_name.empty()});
        utf8_names.push_back(components.front().utf8_name);
    }
    NameForeign(children, utf8_names);
    return children;
}

// Names in which characters were lost are told apart by numbers.
void LdapPaths::NameForeign(std::vector<Child>& children, const std::vector<std::string>& utf8_names) {
    AnyCaseMap<bool> taken;
    for (std::size_t i = 0; i < children.size(); ++i) {
        if (utf8_names[i].empty()) taken.emplace(children[i].name, true);
    }
    for (std::size_t i = 0; i < children.size(); ++i) {
        if (utf8_names[i].empty()) continue;
        const std::string name = children[i].name;
        for (int number = 2; !taken.emplace(children[i].name, true).second; ++number)
            children[i].name = name + '~' + std::to_string(number);
    }
}

// What lies right below some components on the way to the bases; nothing when they lie at or below one.
std::optional<std::vector<LdapPaths::Child>> LdapPaths::ListAboveBases(std::string_view components) {
    std::vector<Child> children;
    const std::size_t depth =
        IsRootPath(components)
            ? 0
            : 1 + static_cast<std::size_t>(std::count(components.begin(), components.end(), '\\'));
    for (const std::vector<NamingComponent>& base : bases_) {
        const std::string path = PathOfDN(base);
        if (LiesAtOrBelow(depth == 0 ? std::string_view() : components, path)) return std::nullopt;
        if (depth > 0 && !LiesAtOrBelow(path, components)) continue;
        const NamingComponent& next = base[base.size() - depth - 1];
        Child child{DNOfFirst(base, depth + 1), next.name, std::string(ContainerClass(next.type))};
        const auto same = [&](const Child& other) { return EqualIgnoringCase(other.name, child.name); };
        if (std::any_of(children.begin(), children.end(), same)) continue;
        if (const auto entry = session_.Read(child.dn, {"objectClass"})) child.class_name = ClassOf(*entry);
        children.push_back(std::move(child));
    }
    if (children.empty()) return std::nullopt;
    return children;
}

std::string LdapPaths::ListingFilter() {
    std::string filter = "(|";
    for (const std::string_view name : kListedClasses) {
        for (const std::string& ldap_name : schema().LdapNamesOfClass(name))
            filter += "(objectClass=" + ldap_name + ')';
    }
    return filter + ')';
}

void LdapPaths::ListAhead(const std::vector<Child>& children) {
    const ClassFilter containers(kContainerClasses);
    std::vector<std::string> dns;
    for (const Child& child : children) {
        if (containers.Passes(child.class_name) && child.class_name != kAliasClass) dns.push_back(child.dn);
    }
    session_.ListAhead(dns, ListingFilter(), {"objectClass"});
}

std::optional<std::vector<LdapPaths::Child>> LdapPaths::Children(std::string_view components, bool all) {
    std::optional<std::vector<Child>> children = ListAboveBases(components);
    if (!children) {
        const std::optional<std::string> dn = Resolve(components);
        if (dn) children = List(*dn, all ? "(objectClass=*)" : ListingFilter());
        if (!children) return std::nullopt;
    }
    const std::string below = IsRootPath(components) ? std::string() : std::string(components) + '\\';
    for (const Child& child : *children) {
        const bool usual =
            !child.renamed && child.class_name == kApplicationClass && BeginsIgnoringCase(child.dn, "cn=");
        if (!usual) Remember(below + child.name, child.dn, child.renamed);
    }
    return children;
}

}  // namespace zorvel

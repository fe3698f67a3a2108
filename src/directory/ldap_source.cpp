#include "directory/ldap_source.h"

#include <algorithm>
#include <array>
#include <utility>

#include "directory/class_filter.h"
#include "platform/code_page.h"
#include "platform/error.h"

namespace zorvel {
namespace {

// The RDN types that a path's names can have, and so a search for them tries.
constexpr std::array<std::string_view, 6> kNamingTypes = {"cn", "ou", "o", "c", "l", "dc"};
// The DNs that are remembered before all are given up.
constexpr std::size_t kMostKnown = 200'000;
const std::vector<std::string> kAllAttributes = {"*"};
constexpr std::string_view kMemberAttribute = "Member";
// The classes of the objects that lists are asked for.
constexpr std::array<std::string_view, 6> kListedClasses = {
    "Organizational Unit", "Organization", "Country", "Locality", kApplicationClass, kAliasClass};

std::vector<NamingComponent> ComponentsOfDN(std::string_view dn) {
    std::vector<NamingComponent> components;
    if (!ParseDN(dn, components)) components.clear();
    return components;
}

// The components of a DN, root first, separated by "\".
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

bool IsRoot(std::string_view components) {
    return EqualIgnoringCase(components, kRootName);
}

// The DN of the object `rdn_type`=`name` below a container.
std::string ChildDN(std::string_view rdn_type, std::string_view name, const std::string& container) {
    std::string dn = std::string(rdn_type) + '=' + EscapeForDN(ToUtf8(name));
    if (!container.empty()) dn += ',' + container;
    return dn;
}

[[noreturn]] void RaiseGone(std::string_view place) {
    throw Error(errors::kNoSuchObject).Within(place);
}

// The components of a path's or a full name's object, root first, separated by "\".
std::string ComponentsOf(std::string_view path_or_name) {
    if (const std::optional<PathParts> parts = SplitPath(path_or_name)) return std::string(parts->components);
    const std::vector<std::string> names = SplitFullName(path_or_name);
    std::string components;
    for (auto name = names.rbegin(); name != names.rend(); ++name) {
        if (!components.empty()) components += '\\';
        components += *name;
    }
    return components;
}

}  // namespace

LdapSource::LdapSource(LdapHost& host, std::string tree, LdapSettings settings)
    : session_(host, tree, std::move(settings)),
      tree_(std::move(tree)),
      names_([this](std::string_view dn) { return NameOfDN(dn); }) {
    for (const std::string& base : session_.settings().bases)
        bases_.push_back(ComponentsOfDN(base));
}

const Schema& LdapSource::schema() {
    const Schema& schema = session_.schema();
    if (!classes_) classes_.emplace(schema);
    return schema;
}

void LdapSource::MakeCurrent(bool root) {
    if (!root) return;
    session_.Server();
    listing_ = {};
    in_hand_.reset();
    known_.clear();
}

void LdapSource::EndWalk() {
    walks_ = false;
    session_.StopAhead();
}

std::string LdapSource::ClassOf(const LdapEntry& entry) {
    schema();
    classes_->Start();
    for (const LdapAttribute& attribute : entry.attributes) {
        if (!EqualIgnoringCase(attribute.name, "objectClass")) continue;
        for (const std::string& value : attribute.values)
            classes_->Take(value);
    }
    return classes_->Class();
}

void LdapSource::Remember(std::string_view components, const std::string& dn, bool renamed) {
    if (known_.size() >= kMostKnown) known_.clear();
    known_.insert_or_assign(std::string(components), Known{dn, renamed});
}

LdapSource::ObjectPtr LdapSource::MakeRoot() const {
    auto root = std::make_shared<Object>();
    root->entry = {0, std::string(kRootName), RootPath(tree_), std::string(kRootName)};
    root->full_name = kRootName;
    root->whole = true;
    return root;
}

LdapSource::ObjectPtr LdapSource::MakeObject(const LdapEntry& read, bool whole) {
    const Schema& known = schema();
    const std::vector<NamingComponent> components = ComponentsOfDN(read.dn);
    if (components.empty()) return MakeRoot();
    auto object = std::make_shared<Object>();
    object->whole = whole;
    object->full_name = FullNameOfComponents(components);
    object->entry = {0, components.front().name, JoinPath(tree_, PathOfDN(components)), ClassOf(read)};
    AnyCaseMap<std::size_t> places;
    for (const LdapAttribute& attribute : read.attributes) {
        const Schema::Attribute* const definition = known.FindAttribute(attribute.name);
        Attribute named{definition != nullptr ? definition->nds_name : FromUtf8(attribute.name),
                        definition != nullptr ? definition->syntax : Syntax::kString, attribute.values};
        const auto [place, added] = places.try_emplace(named.name, object->attributes.size());
        if (added) {
            object->attributes.push_back(std::move(named));
        } else {
            std::vector<std::string>& values = object->attributes[place->second].values;
            std::move(named.values.begin(), named.values.end(), std::back_inserter(values));
        }
    }
    return object;
}

LdapSource::ObjectPtr LdapSource::Read(const std::string& dn, const std::vector<std::string>& ldap_names) {
    const bool whole = ldap_names == kAllAttributes;
    const std::optional<LdapEntry> entry = session_.Read(dn, ldap_names);
    return entry ? MakeObject(*entry, whole) : nullptr;
}

// Gives an object the name by which it is told from its siblings.
void LdapSource::Rename(Object& object, std::string_view components) const {
    object.entry.path = JoinPath(tree_, components);
    object.entry.short_name = components.substr(components.rfind('\\') + 1);
    object.full_name = FullNameOfPath(components);
}

LdapSource::ObjectPtr LdapSource::ReadComponents(std::string_view components,
                                                 const std::vector<std::string>& ldap_names) {
    if (IsRoot(components)) return MakeRoot();
    if (ObjectPtr object = ReadKnown(components, ldap_names)) return object;
    known_.erase(std::string(components));
    if (ObjectPtr object = ReadByCn(components, ldap_names)) return object;
    return Resolve(components) ? ReadKnown(components, ldap_names) : nullptr;
}

// The object of components whose DN is known; null when it is not, or when the object is gone.
LdapSource::ObjectPtr LdapSource::ReadKnown(std::string_view components,
                                            const std::vector<std::string>& ldap_names) {
    const auto known = known_.find(components);
    if (known == known_.end()) return nullptr;
    ObjectPtr object = Read(known->second.dn, ldap_names);
    if (object && known->second.renamed) Rename(*object, known->first);
    return object;
}

// Most objects are called by their cn, below a container that is known by now.
LdapSource::ObjectPtr LdapSource::ReadByCn(std::string_view components,
                                           const std::vector<std::string>& ldap_names) {
    const std::size_t last = components.rfind('\\');
    if (last == std::string_view::npos) return nullptr;
    const std::string_view name = components.substr(last + 1);
    const std::optional<std::string> container = Resolve(components.substr(0, last));
    ObjectPtr object = container ? Read(ChildDN("cn", name, *container), ldap_names) : nullptr;
    return object && EqualIgnoringCase(object->entry.short_name, name) ? object : nullptr;
}

std::optional<std::string> LdapSource::Resolve(std::string_view components) {
    if (IsRoot(components)) return std::string();
    if (const auto known = known_.find(components); known != known_.end()) return known->second.dn;
    for (const std::vector<NamingComponent>& base : bases_) {
        const std::string path = PathOfDN(base);
        if (path.empty() || !EqualIgnoringCase(path, components)) continue;
        Remember(path, DNAbove(base, base.size()), false);
        return known_.find(components)->second.dn;
    }
    return ResolveBelow({}, {}, components);
}

std::optional<std::string> LdapSource::ResolveBelow(const std::string& dn, std::string_view above,
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

std::vector<LdapSource::Child> LdapSource::Candidates(const std::string& dn, std::string_view rest) {
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

std::optional<std::vector<LdapSource::Child>> LdapSource::List(const std::string& dn,
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
void LdapSource::NameForeign(std::vector<Child>& children, const std::vector<std::string>& utf8_names) {
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

// The DN of the first components of a base.
std::string LdapSource::DNAbove(const std::vector<NamingComponent>& base, std::size_t depth) {
    std::string dn;
    for (std::size_t i = base.size() - depth; i < base.size(); ++i) {
        if (!dn.empty()) dn += ',';
        const NamingComponent& component = base[i];
        dn += component.type + '=' +
              EscapeForDN(component.utf8_name.empty() ? ToUtf8(component.name) : component.utf8_name);
    }
    return dn;
}

// What lies right below some components on the way to the bases; nothing when they lie at or below one.
std::optional<std::vector<LdapSource::Child>> LdapSource::ListAboveBases(std::string_view components) {
    std::vector<Child> children;
    const std::size_t depth =
        IsRoot(components)
            ? 0
            : 1 + static_cast<std::size_t>(std::count(components.begin(), components.end(), '\\'));
    for (const std::vector<NamingComponent>& base : bases_) {
        const std::string path = PathOfDN(base);
        const bool above =
            depth < base.size() &&
            (depth == 0 || (BeginsIgnoringCase(path, components) && path[components.size()] == '\\'));
        if (!above) continue;
        const NamingComponent& next = base[base.size() - depth - 1];
        Child child{DNAbove(base, depth + 1), next.name, std::string(ContainerClass(next.type))};
        const auto same = [&](const Child& other) { return EqualIgnoringCase(other.name, child.name); };
        if (std::any_of(children.begin(), children.end(), same)) continue;
        if (const auto entry = session_.Read(child.dn, {"objectClass"})) child.class_name = ClassOf(*entry);
        children.push_back(std::move(child));
    }
    if (children.empty()) return std::nullopt;
    return children;
}

std::vector<std::string> LdapSource::TrusteeAttributes() {
    std::vector<std::string> names = schema().LdapNamesOfAttribute(kMemberAttribute);
    names.emplace_back("objectClass");
    return names;
}

std::string LdapSource::ListingFilter() {
    std::string filter = "(|";
    for (const std::string_view name : kListedClasses) {
        for (const std::string& ldap_name : schema().LdapNamesOfClass(name))
            filter += "(objectClass=" + ldap_name + ')';
    }
    return filter + ')';
}

std::vector<Entry> LdapSource::Entries(std::string_view path, std::string_view classes) {
    // A listing serves each of its classes once; whoever asks again wants to know what has changed.
    const std::string served(classes);
    const auto used = std::find(listing_.served.begin(), listing_.served.end(), served);
    if (listing_.path != path || used != listing_.served.end()) listing_ = ListChildren(path, classes);
    listing_.served.push_back(served);
    const ClassFilter filter(classes);
    std::vector<Entry> entries;
    for (const Child& child : listing_.children) {
        if (filter.Passes(child.class_name))
            entries.push_back({0, child.name, listing_.parent + child.name, child.class_name});
    }
    return entries;
}

LdapSource::Listing LdapSource::ListChildren(std::string_view path, std::string_view classes) {
    const std::string components = ComponentsOf(path);
    Listing listing;
    listing.path = path;
    if (auto above = ListAboveBases(components)) {
        listing.children = *std::move(above);
    } else {
        const std::optional<std::string> dn = Resolve(components);
        auto children = dn ? List(*dn, classes.empty() ? "(objectClass=*)" : ListingFilter()) : std::nullopt;
        if (!children) RaiseGone(path);
        listing.children = *std::move(children);
    }
    const std::string below = IsRoot(components) ? std::string() : components + '\\';
    listing.parent = JoinPath(tree_, below);
    for (const Child& child : listing.children) {
        const bool usual =
            !child.renamed && child.class_name == kApplicationClass && BeginsIgnoringCase(child.dn, "cn=");
        if (!usual) Remember(below + child.name, child.dn, child.renamed);
    }
    if (walks_) ListAhead(listing);
    return listing;
}

// A walk goes on with the containers of a listing, in their order.
void LdapSource::ListAhead(const Listing& listing) {
    const ClassFilter containers(kContainerClasses);
    std::vector<std::string> dns;
    for (const Child& child : listing.children) {
        if (containers.Passes(child.class_name) && child.class_name != kAliasClass) dns.push_back(child.dn);
    }
    session_.ListAhead(dns, ListingFilter(), {"objectClass"});
}

std::optional<Entry> LdapSource::Find(std::string_view path_or_name) {
    listing_ = {};
    const ObjectPtr object = LookUp(path_or_name);
    return object ? std::optional(object->entry) : std::nullopt;
}

// The object of a path or name, as it is now: what was read to learn its name serves once.
LdapSource::ObjectPtr LdapSource::LookUp(std::string_view path_or_name) {
    if (in_hand_ && in_hand_->fresh && Names(*in_hand_, path_or_name)) {
        in_hand_->fresh = false;
        return in_hand_;
    }
    // What is looked up by its path is to be read; of what is looked up by its name, as trustees are, the
    // class and the members are wanted.
    const bool whole = SplitPath(path_or_name).has_value();
    ObjectPtr object =
        ReadComponents(ComponentsOf(path_or_name), whole ? kAllAttributes : TrusteeAttributes());
    if (whole) in_hand_ = object;
    if (!whole) trustee_ = object;
    return object;
}

bool LdapSource::Names(const Object& object, std::string_view path_or_name) {
    if (path_or_name.starts_with('.')) path_or_name.remove_prefix(1);
    return EqualIgnoringCase(object.entry.path, path_or_name) ||
           EqualIgnoringCase(object.full_name, path_or_name);
}

std::optional<std::string> LdapSource::FindFullName(std::string_view path_or_name) {
    const std::string components = ComponentsOf(path_or_name);
    if (IsRoot(components)) return std::string(kRootName);
    if (const auto known = known_.find(components); known != known_.end())
        return known->second.renamed ? FullNameOfPath(known->first)
                                     : FullNameOfComponents(ComponentsOfDN(known->second.dn));
    in_hand_ = ReadComponents(components, kAllAttributes);
    if (!in_hand_) return std::nullopt;
    in_hand_->fresh = true;
    return in_hand_->full_name;
}

std::string LdapSource::FullNameOf(const Entry& entry) {
    if (const Object* const object = AtHand(entry)) return object->full_name;
    const std::string components = ComponentsOf(entry.path);
    if (IsRoot(components)) return components;
    if (const auto known = known_.find(components); known != known_.end())
        return known->second.renamed ? FullNameOfPath(known->first)
                                     : FullNameOfComponents(ComponentsOfDN(known->second.dn));
    return FullNameOfPath(components);
}

// The object of an entry, when it is one of those at hand.
const LdapSource::Object* LdapSource::AtHand(const Entry& entry) const {
    if (in_hand_ && in_hand_->entry.path == entry.path) return in_hand_.get();
    if (trustee_ && trustee_->entry.path == entry.path) return trustee_.get();
    return nullptr;
}

// The object of an entry with its attribute, or with all of them when `attribute` is empty.
const LdapSource::Object& LdapSource::WithAttribute(const Entry& entry, std::string_view attribute) {
    const Object* const known = AtHand(entry);
    if (known != nullptr && (known->whole || EqualIgnoringCase(attribute, kMemberAttribute))) return *known;
    in_hand_ = ReadComponents(ComponentsOf(entry.path), kAllAttributes);
    if (!in_hand_) RaiseGone(entry.path);
    return *in_hand_;
}

std::vector<std::string> LdapSource::AttributeNames(const Entry& entry) {
    std::vector<std::string> names;
    for (const Attribute& attribute : WithAttribute(entry, {}).attributes)
        names.push_back(attribute.name);
    return names;
}

const LdapSource::Attribute* LdapSource::FindAttribute(const Object& object, std::string_view name) {
    const auto found =
        std::find_if(object.attributes.begin(), object.attributes.end(),
                     [name](const Attribute& attribute) { return EqualIgnoringCase(attribute.name, name); });
    return found == object.attributes.end() ? nullptr : &*found;
}

const LdapSource::Attribute& LdapSource::HeldAttribute(const Entry& entry, std::string_view name) {
    const Attribute* const attribute = FindAttribute(WithAttribute(entry, name), name);
    if (attribute == nullptr || attribute->values.empty())
        throw Error(errors::kNoSuchValue).Within(entry.path + ", " + std::string(name));
    return *attribute;
}

std::string_view LdapSource::AttributeSyntax(const Entry& entry, std::string_view attribute) {
    const Attribute* const held = FindAttribute(WithAttribute(entry, attribute), attribute);
    return SyntaxName(held != nullptr ? held->syntax : Syntax::kString);
}

std::vector<std::string> LdapSource::AttributeValues(const Entry& entry, std::string_view attribute) {
    const Attribute& held = HeldAttribute(entry, attribute);
    return ValueTexts(names_, held.syntax, {held.values.begin(), held.values.end()});
}

std::vector<std::string> LdapSource::ReferencedNames(const Entry& entry, std::string_view attribute) {
    const Attribute held = HeldAttribute(entry, attribute);
    std::vector<std::string> dns;
    for (const std::string& value : held.values) {
        if (held.syntax == Syntax::kName) {
            dns.push_back(value);
            continue;
        }
        for (const std::string& text : ValueTexts(names_, held.syntax, {value})) {
            if (const std::optional<std::string> dn = Resolve(ComponentsOf(text))) dns.push_back(*dn);
        }
    }
    std::vector<std::string> names;
    for (const std::optional<LdapEntry>& object : session_.ReadAll(dns, {"1.1"})) {
        if (object) names.push_back(FullNameOfComponents(ComponentsOfDN(object->dn)));
    }
    return names;
}

std::optional<StreamBytes> LdapSource::Stream(std::string_view path_or_name, std::string_view attribute) {
    ObjectPtr object = in_hand_;
    if (!object || !object->whole || !Names(*object, path_or_name)) {
        in_hand_ = ReadComponents(ComponentsOf(path_or_name), kAllAttributes);
        object = in_hand_;
    }
    const Attribute* const held = object ? FindAttribute(*object, attribute) : nullptr;
    if (held == nullptr || held->values.empty() || held->syntax != Syntax::kStream) return std::nullopt;
    return StreamBytes{object, held->values.front()};
}

// The full name that a DN stands for, and the DN, for when the object is looked up by that name.
std::string LdapSource::NameOfDN(std::string_view dn) {
    const std::vector<NamingComponent> components = ComponentsOfDN(dn);
    if (components.empty()) return FromUtf8(dn);
    const bool foreign =
        std::any_of(components.begin(), components.end(),
                    [](const NamingComponent& component) { return !component.utf8_name.empty(); });
    if (!foreign) Remember(PathOfDN(components), std::string(dn), false);
    return FullNameOfComponents(components);
}

}  // namespace zorvel

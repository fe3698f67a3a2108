#include "directory/ldap_source.h"

#include <algorithm>
#include <array>
#include <utility>

#include "directory/class_filter.h"
#include "platform/code_page.h"
#include "platform/error.h"

namespace zorvel {
namespace {

const std::vector<std::string> kAllAttributes = {"*"};
constexpr std::string_view kMemberAttribute = "Member";
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

std::string FullNameOfPlace(const LdapPaths::Place& place) {
    return place.renamed ? FullNameOfPath(place.components) : FullNameOfComponents(ComponentsOfDN(place.dn));
}

}  // namespace

LdapSource::LdapSource(LdapHost& host, std::string tree, LdapSettings settings)
    : session_(host, tree, std::move(settings)),
      paths_(session_),
      tree_(std::move(tree)),
      names_([this](std::string_view dn) { return NameOfDN(dn); }) {}

TreeConnection LdapSource::Connection() const {
    using State = TreeConnection::State;
    const LdapServer* const server = session_.OpenServer();
    if (server == nullptr) return {State::kClosed, "Not connected yet"};
    const bool open = server->encryption == "none";
    std::string text = open ? "not encrypted" : server->encryption;
    text.front() = UpperChar(text.front());
    return {open ? State::kInTheOpen : State::kPrivate,
            text + ", server " + server->url + ", as " + server->identity};
}

void LdapSource::MakeCurrent(bool root) {
    if (!root) return;
    session_.Server();
    listing_ = {};
    in_hand_.reset();
    paths_.Clear();
}

void LdapSource::EndWalk() {
    walks_ = false;
    session_.StopAhead();
}

LdapSource::ObjectPtr LdapSource::MakeRoot() const {
    auto root = std::make_shared<Object>();
    root->entry = {0, std::string(kRootName), RootPath(tree_), std::string(kRootName)};
    root->full_name = kRootName;
    root->whole = true;
    return root;
}

LdapSource::ObjectPtr LdapSource::MakeObject(const LdapEntry& read, bool whole) {
    const Schema& known = paths_.schema();
    const std::vector<NamingComponent> components = ComponentsOfDN(read.dn);
    if (components.empty()) return MakeRoot();
    auto object = std::make_shared<Object>();
    object->whole = whole;
    object->full_name = FullNameOfComponents(components);
    object->entry = {0, components.front().name, JoinPath(tree_, PathOfDN(components)), paths_.ClassOf(read)};
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
    if (IsRootPath(components)) return MakeRoot();
    if (ObjectPtr object = ReadKnown(components, ldap_names)) return object;
    paths_.Forget(components);
    if (ObjectPtr object = ReadByCn(components, ldap_names)) return object;
    return paths_.Resolve(components) ? ReadKnown(components, ldap_names) : nullptr;
}

// The object of components whose DN is known; null when it is not, or when the object is gone.
LdapSource::ObjectPtr LdapSource::ReadKnown(std::string_view components,
                                            const std::vector<std::string>& ldap_names) {
    const std::optional<LdapPaths::Place> known = paths_.Known(components);
    if (!known) return nullptr;
    ObjectPtr object = Read(known->dn, ldap_names);
    if (object && known->renamed) Rename(*object, known->components);
    return object;
}

// Most objects are called by their cn, below a container that is known by now.
LdapSource::ObjectPtr LdapSource::ReadByCn(std::string_view components,
                                           const std::vector<std::string>& ldap_names) {
    const std::size_t last = components.rfind('\\');
    if (last == std::string_view::npos) return nullptr;
    const std::string_view name = components.substr(last + 1);
    const std::optional<std::string> container = paths_.Resolve(components.substr(0, last));
    ObjectPtr object = container ? Read(ChildDN("cn", name, *container), ldap_names) : nullptr;
    return object && EqualIgnoringCase(object->entry.short_name, name) ? object : nullptr;
}

std::vector<std::string> LdapSource::TrusteeAttributes() {
    std::vector<std::string> names = paths_.schema().LdapNamesOfAttribute(kMemberAttribute);
    names.emplace_back("objectClass");
    return names;
}

std::vector<Entry> LdapSource::Entries(std::string_view path, std::string_view classes) {
    // A listing serves each of its classes once; whoever asks again wants to know what has changed.
    const std::string served(classes);
    const auto used = std::find(listing_.served.begin(), listing_.served.end(), served);
    if (listing_.path != path || used != listing_.served.end()) listing_ = ListChildren(path, classes);
    listing_.served.push_back(served);
    const ClassFilter filter(classes);
    std::vector<Entry> entries;
    for (const LdapPaths::Child& child : listing_.children) {
        if (filter.Passes(child.class_name))
            entries.push_back({0, child.name, listing_.parent + child.name, child.class_name});
    }
    return entries;
}

LdapSource::Listing LdapSource::ListChildren(std::string_view path, std::string_view classes) {
    const std::string components = ComponentsOf(path);
    std::optional<std::vector<LdapPaths::Child>> children = paths_.Children(components, classes.empty());
    if (!children) RaiseGone(path);
    if (walks_) paths_.ListAhead(*children);
    const std::string below = IsRootPath(components) ? std::string() : components + '\\';
    return {std::string(path), JoinPath(tree_, below), *std::move(children), {}};
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
    ObjectPtr object = whole ? nullptr : TakeExpected(path_or_name);
    if (!object)
        object = ReadComponents(ComponentsOf(path_or_name), whole ? kAllAttributes : TrusteeAttributes());
    if (whole) in_hand_ = object;
    if (!whole) trustee_ = object;
    return object;
}

void LdapSource::ExpectLookUps(const std::vector<std::string_view>& full_names) {
    expected_.assign(full_names.begin(), full_names.end());
    expected_read_.clear();
}

LdapSource::ObjectPtr LdapSource::TakeExpected(std::string_view full_name) {
    if (const auto read = expected_read_.extract(std::string(full_name)); !read.empty()) return read.mapped();
    const auto name = std::find(expected_.begin(), expected_.end(), full_name);
    if (name == expected_.end()) return nullptr;
    expected_.erase(expected_.begin(), name);
    ReadExpected();
    const auto read = expected_read_.extract(std::string(full_name));
    return read.empty() ? nullptr : read.mapped();
}

// Reads the first of the expected trustees, as many as may be under way at once. One that is not there, or
// that must not be read, is left to be asked for alone.
void LdapSource::ReadExpected() {
    std::vector<std::string> names;
    std::vector<LdapPaths::Place> places;
    std::vector<std::string> dns;
    const auto most = static_cast<std::size_t>(session_.settings().read_ahead);
    for (; !expected_.empty() && dns.size() < most; expected_.pop_front()) {
        const std::optional<LdapPaths::Place> known = paths_.Known(ComponentsOf(expected_.front()));
        if (!known) continue;
        names.push_back(expected_.front());
        places.push_back(*known);
        dns.push_back(known->dn);
    }
    const std::vector<std::optional<LdapEntry>> read = session_.ReadAll(dns, TrusteeAttributes());
    for (std::size_t i = 0; i < read.size(); ++i) {
        if (!read[i]) continue;
        ObjectPtr object = MakeObject(*read[i], false);
        if (places[i].renamed) Rename(*object, places[i].components);
        expected_read_.insert_or_assign(names[i], std::move(object));
    }
}

bool LdapSource::Names(const Object& object, std::string_view path_or_name) {
    if (path_or_name.starts_with('.')) path_or_name.remove_prefix(1);
    return EqualIgnoringCase(object.entry.path, path_or_name) ||
           EqualIgnoringCase(object.full_name, path_or_name);
}

std::optional<std::string> LdapSource::FindFullName(std::string_view path_or_name) {
    const std::string components = ComponentsOf(path_or_name);
    if (IsRootPath(components)) return std::string(kRootName);
    if (const auto known = paths_.Known(components)) return FullNameOfPlace(*known);
    in_hand_ = ReadComponents(components, kAllAttributes);
    if (!in_hand_) return std::nullopt;
    in_hand_->fresh = true;
    return in_hand_->full_name;
}

std::string LdapSource::FullNameOf(const Entry& entry) {
    if (const Object* const object = AtHand(entry)) return object->full_name;
    const std::string components = ComponentsOf(entry.path);
    if (IsRootPath(components)) return components;
    if (const auto known = paths_.Known(components)) return FullNameOfPlace(*known);
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
            if (const std::optional<std::string> dn = paths_.Resolve(ComponentsOf(text))) dns.push_back(*dn);
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
    if (!foreign) paths_.Remember(PathOfDN(components), std::string(dn), false);
    return FullNameOfComponents(components);
}

}  // namespace zorvel

// How objects are named: DNs taken apart, paths and full names put together and taken apart.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zorvel {

// One naming component of a DN (a relative DN) as text of the code page.
struct NamingComponent {
    std::string type;       // the attribute type of its (first) value, as spelled
    std::string name;       // the value without escapes; several values are joined with "+"
    std::string utf8_name;  // the name in UTF-8 when characters without a code were lost, else empty
};

// Takes a DN (RFC 4514, UTF-8) apart, leaf first. False when it is not a DN. The empty DN has no component.
bool ParseDN(std::string_view dn, std::vector<NamingComponent>& components);

// Takes the first component of a DN off when nothing in it needs the whole of RFC 4514: true, and `parent` is
// what follows the comma. Else false, and ParseDN must be asked.
bool TakeSimpleComponent(std::string_view dn, NamingComponent& component, std::string_view& parent);

// A path's tree and what follows it.
struct PathParts {
    std::string_view tree;
    std::string_view components;  // naming components, root first, separated by "\"; or "[Root]"
};

// The path of `components` in a tree: "NDS:\\" + tree + "\" + components.
std::string JoinPath(std::string_view tree, std::string_view components);
// The parts of a path; nothing when the text does not begin with "NDS:\\".
std::optional<PathParts> SplitPath(std::string_view path);

// True for the components of a tree's root: "[Root]".
bool IsRootPath(std::string_view components);
// The full name of a path's components; a name that holds "\" counts as several.
std::string FullNameOfPath(std::string_view components);

// A naming value in UTF-8 as it stands in a DN (RFC 4514), and as a value in a search filter (RFC 4515).
std::string EscapeForDN(std::string_view value);
std::string EscapeForFilter(std::string_view value);

// Appends a naming component to a full name: preceded by "." unless it is the first, its own "." escaped as
// "\.".
void AppendToFullName(std::string& full_name, std::string_view component);
// The components of a full name, leaf first, without escapes; a "." before the first is passed over.
std::vector<std::string> SplitFullName(std::string_view full_name);

}  // namespace zorvel

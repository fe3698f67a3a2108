#include "directory/names.h"

#include <ldap.h>

#include <algorithm>
#include <array>
#include <memory>

#include "directory/directory.h"
#include "platform/code_page.h"
#include "platform/hex.h"

namespace zorvel {
namespace {

constexpr std::string_view kPathPrefix = R"(NDS:\\)";
// The characters that make a relative DN more than a type, "=" and a text that stands for itself.
constexpr std::array<bool, 256> kSpecial = [] {
    std::array<bool, 256> special{};
    for (const char character : {'\\', '"', '+', ';', '#', '<', '>', '=', '\0'})
        special[static_cast<unsigned char>(character)] = true;
    return special;
}();

// Few DNs have more components.
constexpr std::size_t kUsualDepth = 8;

bool IsSpecial(char character) {
    return kSpecial[static_cast<unsigned char>(character)];
}

struct DnFree {
    void operator()(LDAPRDN* dn) const { ldap_dnfree(dn); }
};

std::string_view View(const berval& value) {
    return {value.bv_val, value.bv_len};
}

bool IsTypeCharacter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9') || character == '-' || character == '.';
}

// Sets the name of a component, and keeps the UTF-8 when the code page does not hold all of it.
void SetName(NamingComponent& component, std::string_view utf8) {
    component.name = FromUtf8(utf8);
    const bool exact = component.name == utf8 || std::count(component.name.begin(), component.name.end(),
                                                            '?') == std::count(utf8.begin(), utf8.end(), '?');
    component.utf8_name = exact ? std::string_view() : utf8;
}

bool TakeComponent(const LDAPRDN rdn, NamingComponent& component) {
    std::string name;
    for (const LDAPAVA* const* ava = rdn; ava != nullptr && *ava != nullptr; ++ava) {
        if (ava == rdn) {
            component.type = View((*ava)->la_attr);
        } else {
            name += '+';
        }
        const std::string_view value = View((*ava)->la_value);
        if (value.empty() || value.find('\0') != std::string_view::npos) return false;
        name += value;
    }
    if (name.empty()) return false;
    SetName(component, name);
    return true;
}

// Where the "," behind the first component of a DN stands, or the DN's length.
std::size_t EndOfComponent(std::string_view dn) {
    std::size_t at = 0;
    while (at < dn.size() && dn[at] != ',')
        at += dn[at] == '\\' ? 2 : 1;
    return std::min(at, dn.size());
}

// Appends the component (or, should libldap see more in it, the components) of a text.
bool ParseComponent(std::string_view text, std::vector<NamingComponent>& components) {
    std::string copy(text);
    berval whole{copy.size(), copy.data()};
    LDAPDN parsed = nullptr;
    if (ldap_bv2dn(&whole, &parsed, LDAP_DN_FORMAT_LDAPV3) != LDAP_SUCCESS) return false;
    const std::unique_ptr<LDAPRDN, DnFree> owner(parsed);
    if (parsed == nullptr || *parsed == nullptr) return false;
    for (const LDAPRDN* rdn = parsed; *rdn != nullptr; ++rdn) {
        if (!TakeComponent(*rdn, components.emplace_back())) return false;
    }
    return true;
}

void AppendEscaped(std::string& text, char character) {
    text += '\\';
    AppendHex(text, static_cast<unsigned char>(character));
}

}  // namespace

bool TakeSimpleComponent(std::string_view dn, NamingComponent& component, std::string_view& parent) {
    const std::size_t comma = dn.find(',');
    const std::string_view rdn = dn.substr(0, comma);
    const std::size_t equals = rdn.find('=');
    if (equals == 0 || equals == std::string_view::npos) return false;
    const std::string_view type = rdn.substr(0, equals);
    const std::string_view value = rdn.substr(equals + 1);
    if (!std::all_of(type.begin(), type.end(), IsTypeCharacter)) return false;
    if (value.empty() || value.front() == ' ' || value.back() == ' ') return false;
    if (std::any_of(value.begin(), value.end(), IsSpecial)) return false;
    if (comma != std::string_view::npos && comma + 1 == dn.size()) return false;
    component.type = type;
    SetName(component, value);
    parent = comma == std::string_view::npos ? std::string_view() : dn.substr(comma + 1);
    return true;
}

bool ParseDN(std::string_view dn, std::vector<NamingComponent>& components) {
    components.clear();
    components.reserve(kUsualDepth);
    if (dn.find('\0') != std::string_view::npos) return false;
    while (!dn.empty()) {
        if (TakeSimpleComponent(dn, components.emplace_back(), dn)) continue;
        components.pop_back();
        // One at a time: libldap takes longer than its input grows over a great many of them.
        const std::size_t end = EndOfComponent(dn);
        if (!ParseComponent(dn.substr(0, end), components)) return false;
        if (end + 1 == dn.size()) return false;
        dn.remove_prefix(std::min(end + 1, dn.size()));
    }
    return true;
}

std::string JoinPath(std::string_view tree, std::string_view components) {
    std::string path(kPathPrefix);
    path += tree;
    path += '\\';
    path += components;
    return path;
}

std::optional<PathParts> SplitPath(std::string_view path) {
    if (!path.starts_with(kPathPrefix)) return std::nullopt;
    path.remove_prefix(kPathPrefix.size());
    const std::size_t end = std::min(path.find('\\'), path.size());
    return PathParts{path.substr(0, end), path.substr(std::min(end + 1, path.size()))};
}

bool IsRootPath(std::string_view components) {
    return EqualIgnoringCase(components, kRootName);
}

std::string FullNameOfPath(std::string_view components) {
    std::string full_name;
    while (!components.empty()) {
        const std::size_t before = components.rfind('\\');
        AppendToFullName(full_name, components.substr(before == std::string_view::npos ? 0 : before + 1));
        components = components.substr(0, before == std::string_view::npos ? 0 : before);
    }
    return full_name;
}

std::string EscapeForDN(std::string_view value) {
    std::string escaped;
    for (std::size_t at = 0; at < value.size(); ++at) {
        const bool at_end = at == 0 || at + 1 == value.size();
        const char character = value[at];
        const bool blank_or_hash = character == ' ' || character == '#';
        if (IsSpecial(character) || character == ',' || (at_end && blank_or_hash) ||
            static_cast<unsigned char>(character) < 0x20) {
            AppendEscaped(escaped, character);
        } else {
            escaped += character;
        }
    }
    return escaped;
}

std::string EscapeForFilter(std::string_view value) {
    constexpr std::string_view kSpecialInFilters("*()\\\0", 5);
    std::string escaped;
    for (const char character : value) {
        if (kSpecialInFilters.find(character) != std::string_view::npos) {
            AppendEscaped(escaped, character);
        } else {
            escaped += character;
        }
    }
    return escaped;
}

void AppendToFullName(std::string& full_name, std::string_view component) {
    if (!full_name.empty()) full_name += '.';
    for (std::size_t dot = component.find('.'); dot != std::string_view::npos; dot = component.find('.')) {
        full_name += component.substr(0, dot);
        full_name += "\\.";
        component.remove_prefix(dot + 1);
    }
    full_name += component;
}

std::vector<std::string> SplitFullName(std::string_view full_name) {
    std::vector<std::string> components(1);
    for (std::size_t at = full_name.starts_with('.') ? 1 : 0; at < full_name.size(); ++at) {
        const bool escaped = full_name[at] == '\\' && at + 1 < full_name.size() && full_name[at + 1] == '.';
        if (full_name[at] == '.') {
            components.emplace_back();
        } else {
            if (escaped) ++at;
            components.back() += full_name[at];
        }
    }
    return components;
}

}  // namespace zorvel

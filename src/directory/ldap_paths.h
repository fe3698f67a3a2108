// Where the objects of a tree that servers hold lie.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "directory/ldap_session.h"
#include "directory/names.h"
#include "directory/object_class.h"
#include "directory/schema.h"
#include "directory/text_map.h"

namespace zorvel {

// The components of a DN, leaf first; none of what is no DN.
std::vector<NamingComponent> ComponentsOfDN(std::string_view dn);
// The same as a path has them: root first, separated by "\\".
std::string PathOfDN(const std::vector<NamingComponent>& components);
// The DN of the first `depth` of the components of a DN, counted from the root.
std::string DNOfFirst(const std::vector<NamingComponent>& components, std::size_t depth);
// True when the path's object is that of `above`, or lies below it; both without a tree's name, "" the root.
bool LiesAtOrBelow(std::string_view path, std::string_view above);
std::string FullNameOfComponents(const std::vector<NamingComponent>& components);

// Paths know no RDN types, DNs do: what a path names is searched for from the root down, once a container,
// and what was found is remembered. Paths here are their components alone. All that searches can raise passes
// through.
class LdapPaths {
  public:
    // A child of a container, as a listing shows it.
    struct Child {
        std::string dn;
        std::string name;
        std::string class_name;
        bool renamed = false;  // the name is not that of the DN: the code page lacks characters of it
    };
    // Where an object was found.
    struct Place {
        std::string components;  // in its own spelling
        std::string dn;
        bool renamed = false;
    };

    // The session must live as long.
    explicit LdapPaths(LdapSession& session);

    const Schema& schema();
    // The class of an object whose objectClass values were read.
    std::string ClassOf(const LdapEntry& entry);

    // What is remembered of an object; nothing when that is nothing.
    std::optional<Place> Known(std::string_view components) const;
    void Remember(std::string_view components, const std::string& dn, bool renamed);
    void Forget(std::string_view components);
    void Clear() { known_.clear(); }

    // The DN of the object of some components; nothing when there is none.
    std::optional<std::string> Resolve(std::string_view components);
    // The children of an object: all of them, or those that lists are asked for. Nothing when there is no
    // such object.
    std::optional<std::vector<Child>> Children(std::string_view components, bool all);
    // Begins the listings of the containers among some children, in their order.
    void ListAhead(const std::vector<Child>& children);

  private:
    struct Remembered {
        std::string dn;
        bool renamed = false;
    };

    std::optional<std::string> ResolveBelow(const std::string& dn, std::string_view above,
                                            std::string_view rest);
    // The children of a container of which `rest` can begin with the name, the shortest name first.
    std::vector<Child> Candidates(const std::string& dn, std::string_view rest);
    std::string ListingFilter();
    std::optional<std::vector<Child>> List(const std::string& dn, const std::string& filter);
    std::optional<std::vector<Child>> ListAboveBases(std::string_view components);
    static void NameForeign(std::vector<Child>& children, const std::vector<std::string>& utf8_names);

    LdapSession& session_;
    std::vector<std::vector<NamingComponent>> bases_;
    std::optional<ObjectClassChoice> classes_;
    AnyCaseMap<Remembered> known_;
};

}  // namespace zorvel

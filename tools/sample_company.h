// The made-up company of a sample tree: its containers, and the people, groups and machines in them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "sample_random.h"

namespace zorvel::tools {

enum class ContainerKind : std::uint8_t {
    kOrganization,
    kSoftware,    // an OU "APPS", which holds most applications of its site or organisation
    kSite,        // an OU of one town
    kDepartment,  // an OU within a site
    kTeam,        // an OU within a department or a team
    kArchive,     // an OU that is part of names but no object of its own
    kCountry,
    kLocality
};

struct Container {
    ContainerKind kind;
    std::uint32_t parent;        // index of the parent; its own index for one directly below the tree's root
    std::uint32_t organization;  // index of the organisation or country at its top
    std::uint32_t ordinal;       // among the containers of its kind below the parent
};

// Objects that an application can be associated with.
enum class TrusteeKind { kUser, kGroup, kContainer, kWorkstation, kServer, kWorkstationGroup };

// Containers stand in the order of an export: depth first, a parent before its children. What lies in a
// container follows from the seed and the container's index alone, so nothing but the containers is kept in
// memory.
class Company {
  public:
    // A company of `containers` containers (1 or more); its first organisation is called `name`. From 40
    // containers on there are a country with a locality, an OU without an object, and OUs five deep.
    Company(std::uint64_t seed, std::string_view name, std::size_t containers);

    const std::vector<Container>& containers() const { return containers_; }
    std::string Name(std::size_t container) const;
    // "o", "ou", "c" or "l".
    static std::string_view NamingAttribute(ContainerKind kind);
    std::string DN(std::size_t container) const;
    // The nearest site of a container, or its topmost container.
    std::size_t SiteOf(std::size_t container) const;

    // How many objects of each kind a container holds; a department has one group, a site a server and a
    // workstation group.
    std::size_t UserCount(std::size_t container) const;
    std::size_t WorkstationCount(std::size_t container) const;
    bool HasGroup(std::size_t container) const;
    bool HasServer(std::size_t container) const;

    // The naming parts of a container's objects. `number` counts from 0; a number from UserCount on names
    // somebody who has left.
    struct Person {
        std::string_view given_name;
        std::string_view surname;
        std::string login;
    };
    Person User(std::size_t container, std::size_t number) const;
    std::string UserDN(std::size_t container, std::size_t number) const;
    std::string GroupName(std::size_t container) const;
    std::string GroupDN(std::size_t container) const;
    std::string WorkstationName(std::size_t container, std::size_t number) const;
    std::string WorkstationDN(std::size_t container, std::size_t number) const;
    std::string ServerName(std::size_t container) const;
    std::string ServerDN(std::size_t container) const;
    std::string WorkstationGroupName(std::size_t container) const;

    // An object of that kind near `container`, in the same organisation where there is one.
    std::string TrusteeDN(TrusteeKind kind, std::size_t container, Random& random) const;
    // A user or group that does not exist.
    std::string MissingTrusteeDN(std::size_t container, Random& random) const;

  private:
    std::uint32_t Add(ContainerKind kind, std::uint32_t parent, std::size_t ordinal);
    void AddOrganization(std::size_t ordinal, std::size_t below, bool with_specials);
    void AddCountry();
    bool Holds(TrusteeKind kind, std::size_t container) const;
    std::string Code(std::size_t container) const;

    std::uint64_t seed_;
    std::string name_;
    std::vector<Container> containers_;
};

}  // namespace zorvel::tools

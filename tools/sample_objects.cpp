#include "sample_objects.h"

#include <array>

#include "platform/code_page.h"

namespace zorvel::tools {
namespace {

// The kinds of numbers drawn, as Random tells them apart.
constexpr std::uint64_t kMembersOfContainer = 21;

void WriteUser(LdifWriter& ldif, const Company& company, std::size_t container, std::size_t number) {
    const Company::Person person = company.User(container, number);
    ldif.Record(company.UserDN(container, number));
    ldif.Text("objectClass", "user");
    ldif.Text("objectClass", "organizationalPerson");
    ldif.Text("objectClass", "person");
    ldif.Text("objectClass", "top");
    ldif.Text("cn", person.login);
    ldif.Text("sn", person.surname);
    ldif.Text("givenName", person.given_name);
    ldif.Text("fullName", Concat({person.given_name, " ", person.surname}));
    if (company.HasGroup(container)) ldif.Text("groupMembership", company.GroupDN(container));
}

void WriteGroup(LdifWriter& ldif, const Company& company, std::size_t container, Random& random) {
    ldif.Record(company.GroupDN(container));
    ldif.Text("objectClass", "group");
    ldif.Text("objectClass", "top");
    ldif.Text("cn", company.GroupName(container));
    ldif.Text("description", Concat({"Everybody in ", company.Name(container)}));
    if (random.Percent(8)) return;  // nobody has been added yet
    for (std::size_t number = 0; number < company.UserCount(container); ++number)
        ldif.Text("member", company.UserDN(container, number));
    if (random.Percent(20)) ldif.Text("member", company.MissingTrusteeDN(container, random));
}

void WriteWorkstation(LdifWriter& ldif, const Company& company, std::size_t container, std::size_t number) {
    const std::string name = company.WorkstationName(container, number);
    ldif.Record(company.WorkstationDN(container, number));
    ldif.Text("objectClass", "workstation");
    ldif.Text("objectClass", "top");
    ldif.Text("cn", name);
    ldif.Text("wMComputerName", name);
    ldif.Text("zenWorkstationIPAddress", Concat({"10.", Number(container / 250 % 250), ".",
                                                 Number(container % 250), ".", Number(number + 10)}));
    ldif.Text("wMUserHistory", company.UserDN(container, number));
}

void WriteSiteMachines(LdifWriter& ldif, const Company& company, std::size_t site) {
    ldif.Record(company.ServerDN(site));
    ldif.Text("objectClass", "nCPServer");
    ldif.Text("objectClass", "server");
    ldif.Text("objectClass", "top");
    ldif.Text("cn", company.ServerName(site));
    ldif.Text("description", Concat({"File server of ", company.Name(site)}));
    ldif.Long("status", 2);

    const std::string group = company.WorkstationGroupName(site);
    ldif.Record(Concat({RelativeDN("cn", group), ",", company.DN(site)}));
    ldif.Text("objectClass", "zenWorkstationGroup");
    ldif.Text("objectClass", "top");
    ldif.Text("cn", group);
    const auto& containers = company.containers();
    for (std::size_t i = site + 1; i < containers.size() && company.SiteOf(i) == site; ++i) {
        for (std::size_t number = 0; number < company.WorkstationCount(i); ++number)
            ldif.Text("member", company.WorkstationDN(i, number));
    }
}

void WriteAlias(LdifWriter& ldif, const Company& company, std::size_t organization) {
    const std::size_t target = organization + 1;
    ldif.Record(Concat({"ou=SOFTWARE,", company.DN(organization)}));
    ldif.Text("objectClass", "alias");
    ldif.Text("objectClass", "top");
    ldif.Text("ou", "SOFTWARE");
    ldif.Text("aliasedObjectName", company.DN(target));
}

}  // namespace

void WriteContainer(LdifWriter& ldif, const Company& company, std::size_t container) {
    const ContainerKind kind = company.containers()[container].kind;
    if (kind == ContainerKind::kArchive) return;
    constexpr std::array<std::string_view, 4> kClasses = {"organization", "organizationalUnit", "country",
                                                          "locality"};
    constexpr std::array<std::string_view, 4> kAttributes = {"o", "ou", "c", "l"};
    const std::string_view attribute = Company::NamingAttribute(kind);
    std::size_t row = 0;
    while (kAttributes[row] != attribute)
        ++row;
    ldif.Record(company.DN(container));
    ldif.Text("objectClass", kClasses[row]);
    ldif.Text("objectClass", "top");
    ldif.Text(attribute, company.Name(container));
    if (kind == ContainerKind::kSoftware) ldif.Text("description", "Applications for delivery");
}

void WriteMembers(LdifWriter& ldif, const Company& company, std::size_t container, std::uint64_t seed) {
    Random random(seed, kMembersOfContainer, container);
    for (std::size_t number = 0; number < company.UserCount(container); ++number)
        WriteUser(ldif, company, container, number);
    if (company.HasGroup(container)) WriteGroup(ldif, company, container, random);
    for (std::size_t number = 0; number < company.WorkstationCount(container); ++number)
        WriteWorkstation(ldif, company, container, number);
    if (company.HasServer(container)) WriteSiteMachines(ldif, company, container);
    const auto& containers = company.containers();
    const bool has_software =
        container + 1 < containers.size() && containers[container + 1].kind == ContainerKind::kSoftware;
    if (containers[container].kind == ContainerKind::kOrganization && has_software)
        WriteAlias(ldif, company, container);
}

}  // namespace zorvel::tools

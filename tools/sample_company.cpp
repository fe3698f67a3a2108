#include "sample_company.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>

#include "ldif_writer.h"
#include "platform/code_page.h"

namespace zorvel::tools {
namespace {

// Letters outside ASCII stand as octal codes of Windows-1252: \351 is e acute, \366 o umlaut and so on.
constexpr std::array<std::string_view, 16> kOrganizations = {
    "CORP", "NORTH",     "SOUTH", "EAST",   "WEST",  "ISLES",    "HARBOUR", "RESEARCH",
    "RAIL", "LOGISTICS", "FOODS", "MARINE", "COAST", "MIDLANDS", "RETAIL",  "FOUNDATION"};
constexpr std::array<std::string_view, 48> kTowns = {
    "LEEDS",    "MALM\326", "BRISTOL", "Z\334RICH", "ORL\311ANS", "ABERDEEN", "UTRECHT",   "GRAZ",
    "BERGEN",   "CORK",     "GHENT",   "K\326LN",   "LYON",       "PORTO",    "GENOVA",    "AARHUS",
    "TAMPERE",  "GDYNIA",   "BRNO",    "LINZ",      "BASEL",      "NANTES",   "BILBAO",    "BRAGA",
    "PARMA",    "ODENSE",   "TURKU",   "POZNAN",    "M\334NSTER", "DUNDEE",   "SWANSEA",   "DERRY",
    "EXETER",   "YORK",     "NORWICH", "LIMERICK",  "BRUGGE",     "DELFT",    "GEN\310VE", "REIMS",
    "VALENCIA", "COIMBRA",  "TRIESTE", "STAVANGER", "LULE\305",   "OULU",     "KAUNAS",    "TARTU"};
constexpr std::array<std::string_view, 20> kDepartments = {
    "PRODUCTION", "FINANCE",  "SALES",    "ENGINEERING", "PURCHASING", "HR",         "LEGAL",
    "MARKETING",  "QUALITY",  "STORES",   "DISPATCH",    "DESIGN",     "LABORATORY", "TREASURY",
    "SERVICE",    "TRAINING", "PLANNING", "AUDIT",       "SECURITY",   "CANTEEN"};
constexpr std::array<std::string_view, 3> kTeams = {"LINE-A", "PACKING", "SHIFT-2"};

constexpr std::array<std::string_view, 40> kGivenNames = {
    "Alison", "Bengt", "Carla", "Dieter", "Elaine",   "Fran\347ois", "Gita",   "Harold", "Ingrid", "Jonas",
    "Karen",  "Lars",  "Moira", "Nils",   "Olive",    "Pascal",      "Rosa",   "Stefan", "Tamsin", "Ulla",
    "Victor", "Wilma", "Yusuf", "Zo\353", "Andr\351", "Bridget",     "Colin",  "Dorota", "Emil",   "Fiona",
    "Graham", "Hanna", "Ivor",  "Judith", "Klaus",    "Leonie",      "Martin", "Nadia",  "Oscar",  "Petra"};
constexpr std::array<std::string_view, 47> kSurnames = {
    "Ashdown",  "Bergstrand", "Calloway", "Dumont",    "Ekholm",   "Fairley", "Gr\374ner",   "Hartigan",
    "Isaksen",  "Jephson",    "Kettle",   "Lindqvist", "Marchant", "Norgate", "Ostler",      "Pettifer",
    "Quennell", "Rowntree",   "S\366der", "Thackray",  "Umber",    "Vasseur", "Wadham",      "Yarrow",
    "Zeller",   "Appleby",    "Bonnet",   "Cresswell", "Delarue",  "Elphick", "Fenner",      "Garside",
    "Holm",     "Ivory",      "J\344rvi", "Kowal",     "Lamb",     "Moss",    "N\372\361ez", "Oakes",
    "Priddy",   "Rasmus",     "Sandell",  "Tolley",    "Uttley",   "Voss",    "Winther"};

// The kinds of numbers drawn, as Random tells them apart.
constexpr std::uint64_t kUsersOfContainer = 11;

// From this size on the company has everything that occurs in a tree at all.
constexpr std::size_t kFullSize = 40;
constexpr std::size_t kCountryContainers = 2;
constexpr std::size_t kSpecialContainers = 4;  // of the first organisation: the teams, and the archive

// The n-th text of a table that begins at `offset`, with a number from its second round on.
template <typename Table>
std::string Nth(const Table& table, std::size_t number, std::size_t offset = 0) {
    std::string text(table[(number + offset) % table.size()]);
    if (number >= table.size()) text += Concat({"-", Number(number / table.size() + 1)});
    return text;
}

// The letters and digits of ASCII in a name; others by their nearest, for logins and machine names.
std::string AsciiName(std::string_view name) {
    constexpr std::string_view kLetters = "\304\305\311\310\326\334\344\345\351\350\353\366\374\347\361\372";
    constexpr std::string_view kNearest = "AAEEOUaaeeeoucnu";
    std::string ascii;
    for (const char letter : name) {
        const std::size_t at = kLetters.find(letter);
        if (at != std::string_view::npos) {
            ascii += kNearest[at];
        } else if ((letter >= 'A' && letter <= 'Z') || (letter >= 'a' && letter <= 'z') ||
                   (letter >= '0' && letter <= '9')) {
            ascii += letter;
        }
    }
    return ascii;
}

}  // namespace

Company::Company(std::uint64_t seed, std::string_view name, std::size_t containers)
    : seed_(seed), name_(name) {
    containers_.reserve(containers);
    const bool full = containers >= kFullSize;
    const std::size_t rest = full ? containers - kCountryContainers - kSpecialContainers : containers;
    constexpr std::size_t kUsualSize = 18;  // of an organisation
    const std::size_t organizations = std::clamp<std::size_t>(rest / kUsualSize, 1, kOrganizations.size());
    for (std::size_t i = 0; i < organizations; ++i) {
        const std::size_t size = rest / organizations + (i < rest % organizations ? 1 : 0);
        AddOrganization(i, size - 1, full && i == 0);
    }
    if (full) AddCountry();
}

std::uint32_t Company::Add(ContainerKind kind, std::uint32_t parent, std::size_t ordinal) {
    const auto index = static_cast<std::uint32_t>(containers_.size());
    parent = std::min(parent, index);
    const std::uint32_t top = parent == index ? index : containers_[parent].organization;
    containers_.push_back({kind, parent, top, static_cast<std::uint32_t>(ordinal)});
    return index;
}

void Company::AddOrganization(std::size_t ordinal, std::size_t below, bool with_specials) {
    const std::uint32_t top = Add(ContainerKind::kOrganization, UINT32_MAX, ordinal);
    if (below == 0) return;
    Add(ContainerKind::kSoftware, top, 0);
    if (below == 1) return;
    const std::size_t in_sites = below - 1;
    const auto sites = std::max<std::size_t>(1, static_cast<std::size_t>(std::sqrt(in_sites) * 0.75));
    for (std::size_t i = 0; i < sites; ++i) {
        const std::size_t size = in_sites / sites + (i < in_sites % sites ? 1 : 0);
        const std::uint32_t site = Add(ContainerKind::kSite, top, i);
        if (size > 1) Add(ContainerKind::kSoftware, site, 0);
        for (std::size_t j = 2; j < size; ++j) {
            std::uint32_t parent = Add(ContainerKind::kDepartment, site, j - 2);
            if (with_specials && i == 0 && j == 2) {
                for (std::size_t team = 0; team < kTeams.size(); ++team)
                    parent = Add(ContainerKind::kTeam, parent, team);
            }
        }
    }
    if (with_specials) Add(ContainerKind::kArchive, top, 0);
}

void Company::AddCountry() {
    const std::uint32_t country = Add(ContainerKind::kCountry, UINT32_MAX, 0);
    Add(ContainerKind::kLocality, country, 0);
}

std::string Company::Name(std::size_t container) const {
    const Container& row = containers_[container];
    const Container& organization = containers_[row.organization];
    switch (row.kind) {
        case ContainerKind::kOrganization: {
            if (row.ordinal == 0) return name_;
            std::string name = Nth(kOrganizations, row.ordinal);
            return EqualIgnoringCase(name, name_) ? std::string(kOrganizations.front()) : name;
        }
        case ContainerKind::kSoftware:
            return "APPS";
        case ContainerKind::kSite:
            // Not all organisations have offices in the same towns, nor all offices the same departments.
            return Nth(kTowns, row.ordinal, 11 * std::size_t{organization.ordinal});
        case ContainerKind::kDepartment:
            return Nth(
                kDepartments, row.ordinal,
                3 * std::size_t{containers_[row.parent].ordinal} + 7 * std::size_t{organization.ordinal});
        case ContainerKind::kTeam:
            return std::string(kTeams[row.ordinal]);
        case ContainerKind::kArchive:
            return "ARCHIVE";
        case ContainerKind::kCountry:
            return "SE";
        case ContainerKind::kLocality:
            return "G\366teborg";
    }
    return {};
}

std::string_view Company::NamingAttribute(ContainerKind kind) {
    switch (kind) {
        case ContainerKind::kOrganization:
            return "o";
        case ContainerKind::kCountry:
            return "c";
        case ContainerKind::kLocality:
            return "l";
        default:
            return "ou";
    }
}

std::string Company::DN(std::size_t container) const {
    std::string dn;
    for (;;) {
        const Container& row = containers_[container];
        dn += RelativeDN(NamingAttribute(row.kind), Name(container));
        if (row.parent == container) return dn;
        dn += ',';
        container = row.parent;
    }
}

std::size_t Company::SiteOf(std::size_t container) const {
    while (containers_[container].kind != ContainerKind::kSite && containers_[container].parent != container)
        container = containers_[container].parent;
    return container;
}

std::size_t Company::UserCount(std::size_t container) const {
    switch (containers_[container].kind) {
        case ContainerKind::kDepartment:
            return 3 + Random(seed_, kUsersOfContainer, container).Below(4);
        case ContainerKind::kTeam:
        case ContainerKind::kLocality:
            return 2;
        case ContainerKind::kArchive:
            return 1;
        default:
            return 0;
    }
}

std::size_t Company::WorkstationCount(std::size_t container) const {
    return UserCount(container) / 2;
}

bool Company::HasGroup(std::size_t container) const {
    return containers_[container].kind == ContainerKind::kDepartment;
}

bool Company::HasServer(std::size_t container) const {
    return containers_[container].kind == ContainerKind::kSite;
}

Company::Person Company::User(std::size_t container, std::size_t number) const {
    Random random(seed_, kUsersOfContainer, container);
    random.Next();  // the number of users
    // Within a container no surname comes twice before all have come.
    const std::string_view surname =
        kSurnames[(random.Below(kSurnames.size()) + 17 * number) % kSurnames.size()];
    const std::string_view given_name =
        kGivenNames[(random.Below(kGivenNames.size()) + 7 * number) % kGivenNames.size()];
    return {given_name, surname, AsciiName(given_name).substr(0, 1) + AsciiName(surname)};
}

std::string Company::UserDN(std::size_t container, std::size_t number) const {
    return Concat({RelativeDN("cn", User(container, number).login), ",", DN(container)});
}

std::string Company::Code(std::size_t container) const {
    return UpperCase(AsciiName(Name(container))).substr(0, 5);
}

std::string Company::GroupName(std::size_t container) const {
    return Name(container) + "-USERS";
}

std::string Company::GroupDN(std::size_t container) const {
    return Concat({RelativeDN("cn", GroupName(container)), ",", DN(container)});
}

std::string Company::WorkstationName(std::size_t container, std::size_t number) const {
    return Concat({Code(SiteOf(container)), "-PC-", Number(container, 4), Number(number + 1, 2)});
}

std::string Company::WorkstationDN(std::size_t container, std::size_t number) const {
    return Concat({RelativeDN("cn", WorkstationName(container, number)), ",", DN(container)});
}

std::string Company::ServerName(std::size_t container) const {
    return Concat({"SRV-", Code(SiteOf(container)), "-1"});
}

std::string Company::ServerDN(std::size_t container) const {
    return Concat({RelativeDN("cn", ServerName(container)), ",", DN(container)});
}

std::string Company::WorkstationGroupName(std::size_t container) const {
    return Concat({"WSG-", Name(container)});
}

bool Company::Holds(TrusteeKind kind, std::size_t container) const {
    switch (kind) {
        case TrusteeKind::kUser:
            return UserCount(container) > 0;
        case TrusteeKind::kGroup:
            return HasGroup(container);
        case TrusteeKind::kContainer:
            return NamingAttribute(containers_[container].kind) == "ou";
        case TrusteeKind::kWorkstation:
            return WorkstationCount(container) > 0;
        case TrusteeKind::kServer:
        case TrusteeKind::kWorkstationGroup:
            return HasServer(container);
    }
    return false;
}

std::string Company::TrusteeDN(TrusteeKind kind, std::size_t container, Random& random) const {
    // Looks at the containers nearby, from a random one on, and takes one of the same organisation if it can.
    constexpr std::size_t kNeighbourhood = 24;
    const std::size_t first = container - std::min(container, kNeighbourhood / 2);
    const std::size_t count = std::min(containers_.size() - first, kNeighbourhood);
    const std::size_t start = random.Below(count);
    std::size_t chosen = containers_.size();
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t candidate = first + (start + i) % count;
        if (!Holds(kind, candidate)) continue;
        const bool same = containers_[candidate].organization == containers_[container].organization;
        if (same || chosen == containers_.size()) chosen = candidate;
        if (same) break;
    }
    if (chosen == containers_.size()) return DN(container);
    switch (kind) {
        case TrusteeKind::kUser:
            return UserDN(chosen, random.Below(UserCount(chosen)));
        case TrusteeKind::kGroup:
            return GroupDN(chosen);
        case TrusteeKind::kContainer:
            return DN(chosen);
        case TrusteeKind::kWorkstation:
            return WorkstationDN(chosen, random.Below(WorkstationCount(chosen)));
        case TrusteeKind::kServer:
            return ServerDN(chosen);
        case TrusteeKind::kWorkstationGroup:
            return Concat({RelativeDN("cn", WorkstationGroupName(chosen)), ",", DN(chosen)});
    }
    return {};
}

std::string Company::MissingTrusteeDN(std::size_t container, Random& random) const {
    if (random.Percent(30)) return Concat({"cn=PROJECT-2003,", DN(container)});
    return UserDN(container, UserCount(container) + random.Below(5));
}

}  // namespace zorvel::tools

#include "directory/object_class.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include "directory/directory.h"
#include "platform/code_page.h"

namespace zorvel {
namespace {

constexpr std::size_t kNoRank = std::numeric_limits<std::size_t>::max();

// The classes that an object can be known by; of several, the first here.
constexpr std::array<std::string_view, 11> kRankedClasses = {
    kApplicationClass,      kAliasClass,           "User",         "Group",   "NCP Server", "Workstation",
    kWorkstationGroupClass, "Organizational Unit", "Organization", "Country", "Locality"};

constexpr std::array<std::pair<std::string_view, std::string_view>, 12> kContainerTypes = {{
    {"o", "Organization"},
    {"organizationName", "Organization"},
    {"2.5.4.10", "Organization"},
    {"ou", "Organizational Unit"},
    {"organizationalUnitName", "Organizational Unit"},
    {"2.5.4.11", "Organizational Unit"},
    {"c", "Country"},
    {"countryName", "Country"},
    {"2.5.4.6", "Country"},
    {"l", "Locality"},
    {"localityName", "Locality"},
    {"2.5.4.7", "Locality"},
}};

}  // namespace

void ObjectClassChoice::Take(std::string_view ldap_name) {
    auto found = candidates_.find(ldap_name);
    if (found == candidates_.end()) {
        const std::string* const known = schema_.FindClass(ldap_name);
        std::string name = known != nullptr ? *known : FromUtf8(ldap_name);
        const auto* const ranked = std::find(kRankedClasses.begin(), kRankedClasses.end(), name);
        const std::size_t rank = ranked == kRankedClasses.end()
                                     ? kNoRank
                                     : static_cast<std::size_t>(ranked - kRankedClasses.begin());
        found = candidates_.emplace(ldap_name, Candidate{rank, std::move(name)}).first;
    }
    const Candidate& other = found->second;
    if (best_ == nullptr || other.rank < best_->rank || best_->rank == kNoRank) best_ = &other;
}

const std::string& ObjectClassChoice::Class() const {
    static const std::string kNone(kUnknownClass);
    return best_ == nullptr ? kNone : best_->name;
}

std::string_view ContainerClass(std::string_view type) {
    for (const auto& [known, name] : kContainerTypes) {
        if (EqualIgnoringCase(known, type)) return name;
    }
    return kUnknownClass;
}

}  // namespace zorvel

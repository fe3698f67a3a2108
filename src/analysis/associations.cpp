#include "analysis/associations.h"

#include <optional>
#include <utility>

#include "analysis/run_errors.h"
#include "platform/error.h"
#include "shell/formats.h"

namespace zorvel {
namespace {

constexpr std::string_view kMemberAttribute = "Member";

// What `read` gives, or nothing when it raises the error `number`.
template <typename Read>
auto UnlessError(std::int32_t number, Read read) -> std::optional<decltype(read())> {
    try {
        return read();
    } catch (const Error& error) {
        if (error.number() != number) throw;
        return std::nullopt;
    }
}

std::string KindOf(const ObjectDescription& description) {
    const bool workstation_group =
        description.schema_class_name == kWorkstationGroupClass && description.kind_name == kGenericKind;
    return workstation_group ? "Group" : description.kind_name;
}

}  // namespace

AssociationReader::AssociationReader(Services& services, Directory& directory, RunFiles& files,
                                     ParseProgress& progress, std::function<void(const Error&)> report)
    : services_(services),
      directory_(directory),
      files_(files),
      progress_(progress),
      report_(std::move(report)) {}

void AssociationReader::Read(std::string_view full_name, const std::vector<std::string>& values,
                             AssociationLists& lists) {
    ShowProgress(lists);
    members_.clear();
    for (const std::string& value : values) {
        try {
            ReadValue(full_name, value, lists);
        } catch (...) {
            const Error error = CurrentError();
            if (EndsRun(error)) throw;
            report_(error);
        }
    }
}

void AssociationReader::ReadValue(std::string_view full_name, std::string_view value,
                                  AssociationLists& lists) {
    const std::size_t comma = value.find(',');
    if (comma == std::string_view::npos) {
        throw Error(errors::kInvalidCall)
            .With(std::string(full_name) + ": the access control value '" + std::string(value) +
                  "' names no trustee");
    }
    const std::string_view trustee_name = value.substr(0, comma);
    const auto trustee = UnlessError(errors::kNoSuchObject, [&] { return directory_.LookUp(trustee_name); });
    if (!trustee) return;
    const std::string kind = KindOf(directory_.Describe(*trustee));
    if (kind == kGenericKind) return;
    if (kind == "User") {
        ++lists.users;
        ShowProgress(lists);
        files_.WriteAssociation(full_name, directory_.FullNameOf(*trustee), "", association_type::kUser);
    } else if (kind == "Group") {
        ReadGroup(full_name, *trustee, lists);
    } else if (kind == "Organizational Unit") {
        const std::string& container = lists.containers.emplace_back(directory_.FullNameOf(*trustee));
        files_.WriteAssociation(full_name, "", container, association_type::kContainer);
    } else if (kind == "NCP Server") {
        lists.workstations.push_back(trustee->short_name);
        lists.workstations.push_back(directory_.FullNameOf(*trustee));
        files_.WriteAssociation(full_name, "", trustee->short_name, association_type::kWorkstation);
    } else {
        services_.log.WriteLog("ERROR: Unexpected ACL attribute name '" + kind + "' - ignoring");
    }
}

void AssociationReader::ReadGroup(std::string_view full_name, const Entry& group, AssociationLists& lists) {
    const std::string group_name = lists.groups.emplace_back(directory_.FullNameOf(group));
    ShowProgress(lists);
    for (const std::string& member : MembersOf(group)) {
        ++lists.users;
        files_.WriteAssociation(full_name, member, group_name, association_type::kGroup);
    }
}

const std::vector<std::string>& AssociationReader::MembersOf(const Entry& group) {
    if (const auto known = members_.find(group.id); known != members_.end()) return known->second;
    auto members = UnlessError(errors::kNoSuchValue,
                               [&] { return directory_.ReferencedNames(group, kMemberAttribute); });
    return members_.emplace(group.id, std::move(members).value_or(std::vector<std::string>())).first->second;
}

void AssociationReader::ShowProgress(const AssociationLists& lists) {
    services_.status.SetStatus('Y',
                               "Determining Application Associations.  Users:" + GroupedOrZero(lists.users) +
                                   ", Groups: " + GroupedCount(lists.groups.size()));
    progress_.RefreshStatusCounts();
}

}  // namespace zorvel

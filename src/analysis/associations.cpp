#include "analysis/associations.h"

#include <utility>

#include "analysis/run_errors.h"
#include "platform/error.h"
#include "shell/formats.h"

namespace zorvel {

namespace {

// The full name in an access control value; empty when it names none.
std::string_view TrusteeOf(std::string_view value) {
    const std::size_t comma = value.find(',');
    return comma == std::string_view::npos ? std::string_view() : value.substr(0, comma);
}

}  // namespace

AssociationReader::AssociationReader(Services& services, Directory& directory, RunFiles& files,
                                     RunStatus& status, std::function<void(const Error&)> report)
    : services_(services), trustees_(directory), files_(files), status_(status), report_(std::move(report)) {}

void AssociationReader::Read(std::string_view full_name, const std::vector<std::string>& values,
                             AssociationLists& lists) {
    ShowProgress(lists);
    std::vector<std::string_view> trustees;
    for (const std::string& value : values)
        trustees.push_back(TrusteeOf(value));
    trustees_.Expect(trustees);
    for (const std::string& value : values) {
        try {
            ReadValue(full_name, value, lists);
        } catch (const Interrupted&) {
            throw;
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
    Trustee& trustee = trustees_.Find(value.substr(0, comma));
    const std::string& kind = trustee.kind;
    if (kind.empty() || kind == kGenericKind) return;
    if (kind == "User") {
        ++lists.users;
        ShowProgress(lists);
        files_.WriteAssociation(full_name, trustee.full_name, "", association_type::kUser);
    } else if (kind == "Group") {
        ReadGroup(full_name, trustee, lists);
    } else if (kind == "Organizational Unit") {
        lists.containers.push_back(trustee.full_name);
        files_.WriteAssociation(full_name, "", trustee.full_name, association_type::kContainer);
    } else if (kind == "NCP Server") {
        lists.workstations.push_back(trustee.entry.short_name);
        lists.workstations.push_back(trustee.full_name);
        files_.WriteAssociation(full_name, "", trustee.entry.short_name, association_type::kWorkstation);
    } else {
        services_.log.WriteLog("ERROR: Unexpected ACL attribute name '" + kind + "' - ignoring");
    }
}

void AssociationReader::ReadGroup(std::string_view full_name, Trustee& group, AssociationLists& lists) {
    lists.groups.push_back(group.full_name);
    ShowProgress(lists);
    for (const std::string& member : trustees_.Members(group)) {
        ++lists.users;
        files_.WriteAssociation(full_name, member, group.full_name, association_type::kGroup);
    }
}

void AssociationReader::ShowProgress(const AssociationLists& lists) {
    services_.status.SetStatus(StatusPicture::kYellowBall,
                               "Determining Application Associations.  Users:" + GroupedOrZero(lists.users) +
                                   ", Groups: " + GroupedCount(lists.groups.size()));
    status_.RefreshStatusCounts();
}

}  // namespace zorvel

#include "analysis/trustees.h"

#include <utility>

#include "platform/error.h"

namespace zorvel {
namespace {

constexpr std::string_view kMemberAttribute = "Member";
// So many names are kept before all are given up, which bounds the memory of a run.
constexpr std::size_t kMostNames = 10'000;

std::string KindOf(const ObjectDescription& description) {
    const bool workstation_group =
        description.schema_class_name == kWorkstationGroupClass && description.kind_name == kGenericKind;
    return workstation_group ? "Group" : description.kind_name;
}

}  // namespace

void Trustees::Expect(const std::vector<std::string_view>& full_names) {
    std::vector<std::string_view> unknown;
    for (const std::string_view name : full_names) {
        if (kept_.find(name) == kept_.end()) unknown.push_back(name);
    }
    directory_.ExpectLookUps(unknown);
}

Trustee& Trustees::Find(std::string_view full_name) {
    const auto found = kept_.find(full_name);
    if (found != kept_.end()) return found->second;
    if (kept_names_ >= kMostNames) {
        kept_.clear();
        kept_names_ = 0;
    }
    Trustee trustee = Read(full_name);
    ++kept_names_;
    return kept_.emplace(full_name, std::move(trustee)).first->second;
}

Trustee Trustees::Read(std::string_view full_name) {
    Trustee trustee;
    try {
        trustee.entry = directory_.LookUp(full_name);
    } catch (const Error& error) {
        if (error.number() != errors::kNoSuchObject) throw;
        return trustee;
    }
    trustee.kind = KindOf(directory_.Describe(trustee.entry));
    trustee.full_name = directory_.FullNameOf(trustee.entry);
    return trustee;
}

const std::vector<std::string>& Trustees::Members(Trustee& group) {
    if (group.members) return *group.members;
    try {
        group.members = directory_.ReferencedNames(group.entry, kMemberAttribute);
    } catch (const Error& error) {
        if (error.number() != errors::kNoSuchValue) throw;
        group.members.emplace();
    }
    kept_names_ += group.members->size();
    return *group.members;
}

}  // namespace zorvel

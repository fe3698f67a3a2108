// Who an application is associated with, read from its access control list.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/run_display.h"
#include "analysis/run_files.h"
#include "analysis/trustees.h"
#include "directory/directory.h"
#include "platform/error.h"
#include "shell/services.h"

namespace zorvel {

// The lists of one application, one name a line (workstations: two lines each, own name and full name), and
// how many users it reaches.
struct AssociationLists {
    std::vector<std::string> groups;
    std::vector<std::string> containers;
    std::vector<std::string> workstations;
    std::int32_t users = 0;  // direct users and the members of groups
};

class AssociationReader {
  public:
    // `report` is told of a value that cannot be read; the next one follows.
    AssociationReader(Services& services, Directory& directory, RunFiles& files, RunStatus& status,
                      std::function<void(const Error&)> report);

    // Adds the associations of one access control list to `lists` and writes a row for each. `values` begin
    // with the full name of a trustee, up to the first comma. Trustees and members that no longer exist are
    // passed over. Raises only errors that end the run.
    void Read(std::string_view full_name, const std::vector<std::string>& values, AssociationLists& lists);

  private:
    void ReadValue(std::string_view full_name, std::string_view value, AssociationLists& lists);
    void ReadGroup(std::string_view full_name, Trustee& group, AssociationLists& lists);
    void ShowProgress(const AssociationLists& lists);

    Services& services_;
    Trustees trustees_;
    RunFiles& files_;
    RunStatus& status_;
    std::function<void(const Error&)> report_;
};

}  // namespace zorvel

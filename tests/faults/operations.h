// What faults are tried on.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "faults/audit_folder.h"

namespace zorvel::test {

struct Operation {
    std::string name;
    std::vector<std::string> command;                 // as AuditFolder::Command takes it
    std::function<void(const AuditFolder&)> prepare;  // makes the folder that it works on
    bool analyses = false;                            // it makes a run, which is imported behind it
};

// The operations over made-up trees, or over the tree of an LDIF export.
std::vector<Operation> Operations(const std::string& ldif = {});

}  // namespace zorvel::test

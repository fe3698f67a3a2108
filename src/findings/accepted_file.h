// The list of accepted findings in the program folder.
#pragma once

#include "findings/accepted_findings.h"
#include "platform/files.h"

namespace zorvel {

inline constexpr const char* kAcceptedFile = "Accepted.toml";

// The list; empty when there is no file. Raises error 5, whose detail says file, line and what was expected,
// 70 or 75.
AcceptedFindings ReadAccepted(const Files& files);

// Writes an entry behind the others, or takes out the one that is like `accepted`, in the list as the file
// has it now. One program at a time may do so. Raise what ReadAccepted raises, error 58 for an entry that is
// there already and counts, 53 for one that is not there, and an OutputError.
void AddAccepted(const Files& files, const AcceptedFinding& accepted, const Date& today);
void WithdrawAccepted(const Files& files, const AcceptedFinding& accepted);

}  // namespace zorvel

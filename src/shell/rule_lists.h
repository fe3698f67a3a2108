// The administrator's own lists beside the built-in issue rules.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/input_file.h"

namespace zorvel {

inline constexpr std::string_view kRegExcludeFile = "RegExclude.dat";
inline constexpr std::string_view kFileIssueFile = "FileIssue.dat";

struct RuleLists {
    std::vector<std::string> RegExcludeList;  // beginnings of registry keys, upper case
    std::vector<std::string> FileIssueList;   // file names, upper case
};

// The entries of a rule list: every line that does not begin with ";" and is not blank, in upper case.
// Raises error 75 on a read error.
std::vector<std::string> ReadRuleList(InputFile file);

}  // namespace zorvel

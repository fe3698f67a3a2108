// FileValid: the issue rules for the targets of file copies.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zorvel {

// The code of the first file rule that `target` breaks, or "OK". `mode_text` is the copy mode without a ",
// Shared" behind it, empty for none; `FileIssueList` holds the administrator's own file names in upper case.
std::string_view FileValid(std::string_view target, std::string_view mode_text,
                           const std::vector<std::string>& FileIssueList);

}  // namespace zorvel

// RegistryValid: the issue rules for registry values.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zorvel {

// "REGISTRYUNC" for data that begins as a UNC path, "REGISTRYEXCLUDE" for a key that begins with an entry of
// `RegExcludeList` (in upper case), else "OK". The value name takes no part in the decision.
std::string_view RegistryValid(std::string_view key, std::string_view value_name, std::string_view data,
                               const std::vector<std::string>& RegExcludeList);

}  // namespace zorvel

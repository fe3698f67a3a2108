// MacroValid: the issue rules for macros.
#pragma once

#include <string_view>

namespace zorvel {

// "MACROUNC" for a value that begins as a UNC path, "MACROSTP" for a value of the macro SHORT_TARGET_PATH
// (which is exempt from the first rule) that is not a path in 8.3 form, else "OK".
std::string_view MacroValid(std::string_view macro_name, std::string_view macro_value);

}  // namespace zorvel

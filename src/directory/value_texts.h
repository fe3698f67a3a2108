// The values of attributes as texts.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "directory/memory_tree.h"

namespace zorvel {

// The texts of an attribute's stored values, in their order. Values of the syntax "Other" have no text, so
// there are none; those of a stream are its bytes.
std::vector<std::string> ValueTexts(const MemoryTree& tree, Syntax syntax,
                                    const std::vector<std::string_view>& values);

// The canonical decimal text of a whole number of any size ("+05" is "5", "-0" is "0"); other text stays as
// it is.
std::string CanonicalNumber(std::string_view text);

}  // namespace zorvel

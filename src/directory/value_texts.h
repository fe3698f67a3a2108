// The values of attributes as texts.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "directory/memory_tree.h"
#include "directory/text_map.h"

namespace zorvel {

// The full names of the DNs that values name, as MemoryTree::FullNameOfDN gives them. The same groups and
// containers are named by object after object, so the names are kept.
class DnNames {
  public:
    // The tree must live as long.
    explicit DnNames(const MemoryTree& tree) : tree_(tree) {}

    const std::string& FullNameOf(std::string_view dn);

  private:
    const MemoryTree& tree_;
    TextMap<std::string> names_;
};

// The texts of an attribute's stored values, in their order. Values of the syntax "Other" have no text, so
// there are none; those of a stream are its bytes.
std::vector<std::string> ValueTexts(DnNames& names, Syntax syntax,
                                    const std::vector<std::string_view>& values);

// The canonical decimal text of a whole number of any size ("+05" is "5", "-0" is "0"); other text stays as
// it is.
std::string CanonicalNumber(std::string_view text);

}  // namespace zorvel

// The values of attributes as texts.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "directory/schema.h"
#include "directory/text_map.h"

namespace zorvel {

// The full names of the DNs that values name. The same groups and containers are named by object after
// object, so the names are kept.
class DnNames {
  public:
    using FullNameOfDN = std::function<std::string(std::string_view dn)>;

    explicit DnNames(FullNameOfDN find) : find_(std::move(find)) {}

    const std::string& FullNameOf(std::string_view dn);
    void Clear() { names_.clear(); }

  private:
    FullNameOfDN find_;
    TextMap<std::string> names_;
};

// The texts of an attribute's stored values, in their order. Values of the syntax "Other" have no text, so
// there are none; those of a stream are its bytes.
std::vector<std::string> ValueTexts(DnNames& names, Syntax syntax,
                                    const std::vector<std::string_view>& values);

// The parts of a value of an access control list, "privileges#scope#trustee#attribute"; the trustee is a DN.
// Nothing when the value has not that form.
struct AclParts {
    std::string_view privileges;
    std::string_view trustee;
    std::string_view attribute;
};
std::optional<AclParts> SplitAcl(std::string_view value);

// The canonical decimal text of a whole number of any size ("+05" is "5", "-0" is "0"); other text stays as
// it is.
std::string CanonicalNumber(std::string_view text);

}  // namespace zorvel

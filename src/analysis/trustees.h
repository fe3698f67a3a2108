// The objects that access control lists name. The same groups and containers are named by application after
// application, so what was read of them is kept.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "directory/directory.h"
#include "directory/text_map.h"

namespace zorvel {

struct Trustee {
    Entry entry;
    std::string kind;  // empty when the object does not exist
    std::string full_name;
    std::optional<std::vector<std::string>> members;  // of a group: their full names, once they were read
};

class Trustees {
  public:
    explicit Trustees(Directory& directory) : directory_(directory) {}

    // Full names that Find will be asked for next, in this order.
    void Expect(const std::vector<std::string_view>& full_names);
    // The object with a full name, valid until the next call. Raises what the directory raises, but error
    // 601.
    Trustee& Find(std::string_view full_name);
    // The full names of a group's members that exist; none when it has none. Raises what the directory
    // raises, but error 603.
    const std::vector<std::string>& Members(Trustee& group);

  private:
    Trustee Read(std::string_view full_name);

    Directory& directory_;
    TextMap<Trustee> kept_;
    std::size_t kept_names_ = 0;  // trustees and members
};

}  // namespace zorvel

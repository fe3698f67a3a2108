// Who is handed every match when it is found.
#pragma once

#include <string_view>

namespace zorvel {

class FindListener {
  public:
    virtual ~FindListener() = default;
    // `entry_text` is an entry of the stream `stream_label` of the application `full_name`.
    virtual void AddMatch(std::string_view full_name, std::string_view stream_label,
                          std::string_view entry_text) = 0;
};

}  // namespace zorvel

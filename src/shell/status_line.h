// The status bar: traffic light, activity, and when idle the counts.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/user_interface.h"

namespace zorvel {

// What the idle status line tells of the tree.
struct TreeCounts {
    std::int32_t AppCount = 0;       // applications available in the current tree
    std::int32_t SelectedCount = 0;  // applications selected
    std::string StatusPrefix;        // the age of the tree data
};

class StatusLine {
  public:
    StatusLine(UserInterface& ui, const TreeCounts& counts);

    // Shows `picture` (yellow: busy, red: interrupted or failed, green: idle) and `text`. An empty text is
    // replaced, in the caller's variable too, by the counts text.
    void SetStatus(StatusPicture picture, std::string& text);
    void SetStatus(StatusPicture picture, std::string_view text);
    // The green ball and the counts text.
    void SetIdle() { SetStatus(StatusPicture::kGreenBall, std::string_view()); }

  private:
    std::string CountsText() const;

    UserInterface& ui_;
    const TreeCounts& counts_;
};

}  // namespace zorvel

// Where a Find run's results are shown: the Find tab.
#pragma once

#include <string_view>

namespace zorvel {

class FindDisplay {
  public:
    virtual ~FindDisplay() = default;
    // A run begins: the label labInfo disappears.
    virtual void HideLabInfo() = 0;
    // A run has ended: the rich-text file `path` is loaded into rtfDetail, on the Find tab.
    virtual void LoadResults(std::string_view path) = 0;
    // The label labInfo shows the total.
    virtual void ShowLabInfo(std::string_view text) = 0;
};

}  // namespace zorvel

// The warnings and errors among the lines of the log, and the way from one to the next.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "viewers/rich_lines.h"

namespace zorvel {

// Lines are counted from 0.
class LogProblems {
  public:
    LogProblems() = default;
    explicit LogProblems(const RichLines& log);

    // The first problem behind `line`; none behind the last one.
    std::optional<std::size_t> Next(std::size_t line) const;
    // The last problem ahead of `line`; none ahead of the first one.
    std::optional<std::size_t> Previous(std::size_t line) const;
    // What the window says while `line` is the current one: which problem it is, or how many there are.
    std::string Text(std::size_t line) const;

  private:
    std::vector<std::size_t> lines_;  // ascending
};

}  // namespace zorvel

#include "viewers/log_problems.h"

#include <algorithm>

#include "shell/formats.h"
#include "viewers/log_rtf.h"

namespace zorvel {

LogProblems::LogProblems(const RichLines& log) {
    for (std::size_t line = 0; line < log.size(); ++line)
        if (IsProblem(log.Line(line))) lines_.push_back(line);
}

std::optional<std::size_t> LogProblems::Next(std::size_t line) const {
    const auto next = std::upper_bound(lines_.begin(), lines_.end(), line);
    return next == lines_.end() ? std::nullopt : std::optional(*next);
}

std::optional<std::size_t> LogProblems::Previous(std::size_t line) const {
    const auto behind = std::lower_bound(lines_.begin(), lines_.end(), line);
    return behind == lines_.begin() ? std::nullopt : std::optional(*(behind - 1));
}

std::string LogProblems::Text(std::size_t line) const {
    if (lines_.empty()) return "No problems";
    const auto here = std::lower_bound(lines_.begin(), lines_.end(), line);
    if (here == lines_.end() || *here != line)
        return GroupedCount(lines_.size()) + (lines_.size() == 1 ? " problem" : " problems");
    const auto number = static_cast<std::size_t>(here - lines_.begin()) + 1;
    return "Problem " + GroupedCount(number) + " of " + GroupedCount(lines_.size());
}

}  // namespace zorvel

// The findings that somebody has accepted, with a reason: the list Accepted.toml.
#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/clock.h"

namespace zorvel {

using Date = std::chrono::year_month_day;

// The local date.
Date Today(const Clock& clock);
// "2027-06-01"
std::string DateText(const Date& date);
// The date that such a text is, or nothing.
std::optional<Date> DateFrom(std::string_view text);

// An entry of the list. Texts are of the code page.
struct AcceptedFinding {
    std::string code;
    std::string application;            // a pattern of full names
    std::optional<std::string> target;  // a pattern; without one any target
    std::string reason;
    std::optional<Date> until;  // the last day on which it counts; without one it always does
    std::string by;             // may be empty
    std::size_t line = 0;       // of the file, from 1; 0 for one that is not in a file

    bool IsExpired(const Date& today) const { return until && *until < today; }
    // True when both accept the same, whatever they say of it.
    bool IsLike(const AcceptedFinding& other) const {
        return code == other.code && application == other.application && target == other.target;
    }
};
using AcceptedFindings = std::vector<AcceptedFinding>;

// What is wrong with an entry's texts, or nothing: "expected ...".
std::string FaultOf(const AcceptedFinding& accepted);

// Reads the list from its TOML text; `path` is what errors call the file. Raises error 5, whose detail says
// file, line and what was expected.
AcceptedFindings ParseAccepted(std::string_view text, const std::string& path);

// The list with an entry more, behind all others, or without the entry that begins in line `line`. All else
// stays as it is, comments in and around an entry that goes among it. Raise what ParseAccepted raises, and
// error 5 for a list that is written in another form than [[accepted]] tables.
std::string WithAccepted(std::string_view text, const AcceptedFinding& accepted, const std::string& path);
std::string WithoutAccepted(std::string_view text, std::size_t line, const std::string& path);

}  // namespace zorvel

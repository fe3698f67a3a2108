// What ParseAOT reads and changes of the run, and the small interfaces through which it reaches the rest of
// it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include "shell/rule_lists.h"
#include "shell/services.h"
#include "streams/run_counters.h"

namespace zorvel {

// Where issues go.
class IssueWriter {
  public:
    virtual ~IssueWriter() = default;
    // Appends one issue of the application `full_name`; the caller counts it.
    virtual void WriteIssue(std::string_view full_name, std::string_view entry_type,
                            std::string_view target_file, std::string_view source_file,
                            std::string_view issue_code) = 0;
};

// The run's displays that a long stream keeps up to date.
class ParseProgress {
  public:
    virtual ~ParseProgress() = default;
    // Shows the counters and times.
    virtual void RefreshStatusCounts() = 0;
    // The progress bar of the current application's streams, 0 to 100.
    virtual double StreamProgress() const = 0;
    virtual void SetStreamProgress(double value) = 0;
    // The progress bar of the whole run, 0 to 100.
    virtual void SetOverallProgress(double value) = 0;
};

// The search of a Find run, as the parser uses it.
class Finder {
  public:
    virtual ~Finder() = default;
    // True when the search expression matches anywhere in a whole stream. Can raise error 430.
    virtual bool MatchesStream(std::string_view stream) = 0;
    // Takes an entry: kind 'F' for files and directories, 'R' for the registry.
    virtual void Find(char kind, std::string_view entry_text) = 0;
};

struct ParseContext {
    Services& services;
    const RuleLists& rules;
    IssueWriter& issues;
    RunCounters& counters;
    ParseProgress& progress;
    Finder* finder = nullptr;                      // set in a Find run only
    double error_wait = 1.0;                       // seconds to wait after a decoding error
    std::unordered_map<std::string, int> dumps{};  // how many dump files the run made, by their second
    bool lost_dump_told = false;                   // the user knows that dump files cannot be written
    std::int32_t parse_errors = 0;                 // handled decoding errors of the run
    bool interruption_logged = false;              // the log tells of the user's interruption of the run
    bool stream_cut = false;         // the user interrupted the stream parsed last, which had records left
    std::string application_name{};  // for the status line
    bool only_application = false;   // exactly one application is selected: the overall bar follows, too
    double progress_share = 0;       // the part of the progress bar that belongs to this stream
};

}  // namespace zorvel

// What ParseAOT reads and changes of the run, and the small interfaces through which it reaches the rest of
// it.
#pragma once

#include <cstddef>
#include <string_view>

#include "shell/rule_lists.h"
#include "streams/run_counters.h"
#include "streams/stream_failures.h"

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

// Who follows a stream through its records, and may end it early.
class ParseProgress {
  public:
    virtual ~ParseProgress() = default;
    // The first record is about to be decoded.
    virtual void Begin() = 0;
    // A record is done and others follow; the next one is at `position`, counted from 1, of the `size` bytes
    // of the stream. False when the stream shall end here.
    virtual bool GoOn(std::size_t position, std::size_t size) = 0;
    // No further record will be decoded. Not called for a stream that is rejected.
    virtual void End() = 0;
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
    const RuleLists& rules;
    IssueWriter& issues;
    RunCounters& counters;
    ParseProgress& progress;
    StreamFailures& failures;
    Finder* finder = nullptr;  // set in a Find run only
};

}  // namespace zorvel

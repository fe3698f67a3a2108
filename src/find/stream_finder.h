// The search of a Find run: tries the streams and their entries, counts the matches and lists them.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "find/find_budget.h"
#include "find/find_display.h"
#include "find/find_listener.h"
#include "find/find_results.h"
#include "find/find_run.h"
#include "platform/error.h"
#include "shell/services.h"

namespace zorvel {

class StreamFinder final : public FindRun {
  public:
    // Tells whether a text matches. Raises an Error when it cannot be told.
    using Search = std::function<bool(std::string_view text)>;
    // Makes the search for an expression. Raises an Error when there can be none.
    using SearchFactory = std::function<Search(std::string_view expression)>;
    // The searches of platform/regex.h.
    static Search MakeRegexSearch(std::string_view expression);

    StreamFinder(Services& services, FindDisplay& display, FindListener* listener = nullptr,
                 SearchFactory make_search = MakeRegexSearch);

    // Takes the expression to find. False when there is no search for it; the user was told why. To be called
    // before the run, which then replaces nothing.
    bool Prepare(std::string_view FindPattern);

    // Entries that match, and entries of which it could not be told; each of the latter is in the log.
    std::int64_t matches() const { return matches_; }
    std::int64_t failed_entries() const { return failed_entries_; }

    void Start() override;
    void BeginStream(std::string_view application_name, std::string_view full_name,
                     std::string_view stream_label) override;
    void EndStream() noexcept override;
    // Raises an OutputError when the results could not be written.
    void Finish() override;
    // A stream that is too much for the expression is taken for one that matches. Like Find, raises an error
    // that ends the run, an OutputError, once the expression has taken more time than it may.
    bool MatchesStream(std::string_view stream) override;
    void Find(char kind, std::string_view entry_text) override;

  private:
    bool Matches(std::string_view text);
    void AddMatch(std::string_view entry_text);
    void RefuseWhenSpent() const;
    void Fail(const Error& error);

    Services& services_;
    FindDisplay& display_;
    FindListener* listener_;
    SearchFactory make_search_;
    Search search_;
    std::string expression_;
    FindBudget budget_;
    FindResults results_;
    std::optional<OutputError> lost_;  // what EndStream could not write
    std::string full_name_;
    std::string stream_label_;
    std::int64_t matches_ = 0;
    std::int64_t failed_entries_ = 0;
    bool told_ = false;  // the user knows that the search fails
};

}  // namespace zorvel

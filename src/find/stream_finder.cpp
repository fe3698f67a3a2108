#include "find/stream_finder.h"

#include <utility>

#include "find/engine_failure.h"
#include "platform/regex.h"
#include "shell/report_error.h"

namespace zorvel {
namespace {

constexpr std::size_t kShown = 200;  // characters of an entry or an expression; both can be long

}  // namespace

StreamFinder::Search StreamFinder::MakeRegexSearch(std::string_view expression) {
    const auto regex = std::make_shared<const Regex>(expression);
    return [regex](std::string_view text) { return regex->Matches(text); };
}

StreamFinder::StreamFinder(Services& services, FindDisplay& display, FindListener* listener,
                           SearchFactory make_search)
    : services_(services),
      display_(display),
      listener_(listener),
      make_search_(std::move(make_search)),
      results_(services.files) {}

bool StreamFinder::Prepare(std::string_view FindPattern) {
    told_ = false;
    expression_ = FindPattern;
    try {
        search_ = make_search_(FindPattern);
        return true;
    } catch (...) {
        Fail(CurrentError());
        return false;
    }
}

void StreamFinder::Start() {
    matches_ = failed_entries_ = 0;
    budget_ = {};
    lost_.reset();
    display_.HideLabInfo();
    results_.Create();
}

void StreamFinder::BeginStream(std::string_view application_name, std::string_view full_name,
                               std::string_view stream_label) {
    if (lost_) throw OutputError(*lost_);
    full_name_ = full_name;
    stream_label_ = stream_label;
    results_.BeginStream(application_name, stream_label);
}

void StreamFinder::EndStream() noexcept {
    try {
        results_.EndStream();
    } catch (const OutputError& error) {
        lost_ = error;  // for the next call that may fail
    }
}

void StreamFinder::Finish() {
    if (lost_) throw OutputError(*lost_);
    results_.Finish();
    display_.LoadResults(results_.path());
    display_.ShowLabInfo("Total of " + std::to_string(matches_) + " match(es) found");
}

bool StreamFinder::MatchesStream(std::string_view stream) {
    bool matches = true;
    try {
        matches = Matches(stream);
    } catch (const Error& error) {
        if (error.number() == errors::kNoAutomation) throw;
        services_.log.WriteLog("WARNING: Find: stream '" + stream_label_ + "' of '" + full_name_ +
                               "' could not be searched as a whole (" + error.description() +
                               "), its entries are searched one by one");
    }
    RefuseWhenSpent();
    return matches;
}

void StreamFinder::Find(char /*kind*/, std::string_view entry_text) {
    bool matches = false;
    try {
        matches = Matches(entry_text);
    } catch (const Error& error) {
        ++failed_entries_;
        Fail(error.With("stream '" + stream_label_ + "' of '" + full_name_ + "', entry '" +
                        std::string(entry_text.substr(0, kShown)) + "'"));
    }
    if (matches) AddMatch(entry_text);
    RefuseWhenSpent();
}

bool StreamFinder::Matches(std::string_view text) {
    const FindBudget::Charge charge(budget_, services_.clock, text.size());
    return search_(text);
}

void StreamFinder::AddMatch(std::string_view entry_text) {
    ++matches_;
    results_.AddEntry(entry_text);
    if (listener_ != nullptr) listener_->AddMatch(full_name_, stream_label_, entry_text);
}

// What was found until then would pass for the whole, so the run fails as one whose results are lost.
void StreamFinder::RefuseWhenSpent() const {
    if (!budget_.IsSpent()) return;
    const Error refusal(errors::kInvalidCall,
                        "The expression '" + expression_.substr(0, kShown) +
                            "' is refused: its searches took " +
                            std::to_string(static_cast<std::int64_t>(budget_.seconds())) + " seconds");
    throw OutputError(
        refusal.With("the search ended in stream '" + stream_label_ + "' of '" + full_name_ + "'"));
}

// The log names every failure; the user is told of the first only, as an expression that fails once is likely
// to fail for thousands of entries.
void StreamFinder::Fail(const Error& error) {
    if (!std::exchange(told_, true)) {
        if (error.number() == errors::kNoAutomation) {
            OfferEngineDownload(services_.ui, error, "Find");
        } else {
            services_.ui.Tell("Error" + ErrorText(error) + " occurred during Find", MessageIcon::kCritical,
                              error.detail());
        }
    }
    LogUnexpectedError(services_.log, error, "Finder");
}

}  // namespace zorvel

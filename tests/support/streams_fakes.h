// Stand-ins for what the stream parser reaches of a run, and one call that parses a stream with them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/error.h"
#include "streams/parse_aot.h"
#include "support/temp_folder.h"

namespace zorvel::test {

// Notes each issue as "application|entry type|target|source|code", and calls `on_issue` first.
class FakeIssueWriter final : public IssueWriter {
  public:
    std::vector<std::string> issues;
    std::function<void()> on_issue = [] {};

    void WriteIssue(std::string_view full_name, std::string_view entry_type, std::string_view target_file,
                    std::string_view source_file, std::string_view issue_code) override {
        on_issue();
        std::string issue(full_name);
        for (const std::string_view field : {entry_type, target_file, source_file, issue_code}) {
            issue += '|';
            issue += field;
        }
        issues.push_back(std::move(issue));
    }
};

// Notes the place behind each record that others follow, and ends the stream behind `cut_after` of them.
class FakeParseProgress final : public ParseProgress {
  public:
    std::vector<std::string> places;
    std::size_t cut_after = 0;
    int ended = 0;

    void Begin() override { places.clear(); }
    bool GoOn(std::size_t position, std::size_t size) override {
        places.push_back(std::to_string(position) + " of " + std::to_string(size));
        return places.size() != cut_after;
    }
    void End() override { ++ended; }
};

// Notes each error as its number + "|" + the step it struck at; error 430 ends the stream.
class FakeFailures final : public StreamFailures {
  public:
    std::vector<std::string> noted;

    void RefuseStream() override { noted.emplace_back("refused"); }
    bool Handle(const Error& error, const ParsePlace& place) override {
        const int step = static_cast<int>(place.phase);
        noted.push_back(std::to_string(error.number()) + "|" + std::to_string(step));
        return error.number() != errors::kNoAutomation;
    }
};

// Notes each entry as kind + ":" + text. The numbers are errors to raise; 0 raises none.
class FakeFinder final : public Finder {
  public:
    bool matches = true;
    std::int32_t stream_error = 0;
    std::int32_t entry_error = 0;
    std::vector<std::string> entries;

    bool MatchesStream(std::string_view /*stream*/) override {
        if (stream_error != 0) throw Error(stream_error);
        return matches;
    }
    void Find(char kind, std::string_view entry_text) override {
        if (entry_error != 0) throw Error(entry_error);
        entries.push_back(std::string(1, kind) + ":" + std::string(entry_text));
    }
};

// A run as the parser sees it, in memory, for the application Word.APPS.SITE.
struct TestParser {
    static constexpr std::string_view kFullName = "Word.APPS.SITE";

    RuleLists rules;
    FakeIssueWriter issues;
    RunCounters counters;
    FakeParseProgress progress;
    FakeFailures failures;
    ParseContext context{
        .rules = rules, .issues = issues, .counters = counters, .progress = progress, .failures = failures};
    std::int32_t signature = -1;  // of the stream parsed last
    std::string rows;             // of the stream parsed last
    std::optional<TempFolder> folder;

    ParseResult Parse(std::string_view stream) {
        failures.noted.clear();
        if (!folder) folder.emplace();
        OutputFile file(folder->path() / "rows", "rows", OutputFile::Mode::kTruncate);
        const ParseResult result = ParseAOT(context, file, kFullName, stream, signature);
        file.Close();
        rows = folder->Read("rows");
        return result;
    }
};

// The lines of a row or of several: each text with its line end.
inline std::string Lines(std::initializer_list<std::string_view> texts) {
    std::string lines;
    for (const std::string_view text : texts) {
        lines += text;
        lines += "\r\n";
    }
    return lines;
}

}  // namespace zorvel::test

// Stand-ins for what the stream parser reaches of a run, and one call that parses a stream with them.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/error.h"
#include "streams/parse_aot.h"
#include "support/fakes.h"

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

class FakeParseProgress final : public ParseProgress {
  public:
    int refreshes = 0;
    double stream_progress = 0;
    std::vector<double> stream_values;
    std::vector<double> overall_values;

    void RefreshStatusCounts() override { ++refreshes; }
    double StreamProgress() const override { return stream_progress; }
    void SetStreamProgress(double value) override {
        stream_progress = value;
        stream_values.push_back(value);
    }
    void SetOverallProgress(double value) override { overall_values.push_back(value); }
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

// A run as the parser sees it, for the application Word.APPS.SITE.
struct TestParser {
    static constexpr std::string_view kFullName = "Word.APPS.SITE";

    TestShell shell;
    RuleLists rules;
    FakeIssueWriter issues;
    RunCounters counters;
    FakeParseProgress progress;
    ParseContext context{.services = shell.services,
                         .rules = rules,
                         .issues = issues,
                         .counters = counters,
                         .progress = progress,
                         .application_name = "Word"};
    std::int32_t signature = -1;  // of the stream parsed last
    std::string rows;             // of the stream parsed last

    ParseResult Parse(std::string_view stream) {
        OutputFile file = shell.files.Create(shell.files.Path("TempData\\rows"));
        const ParseResult result = ParseAOT(context, file, kFullName, stream, signature);
        file.Close();
        rows = shell.folder.Read("TempData/rows");
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

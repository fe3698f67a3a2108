// Entries per second of ParseAOT, by record type, with rules, issues and rows.
#include <benchmark/benchmark.h>

#include <functional>
#include <string>

#include "analysis/stream_failure_reports.h"
#include "analysis/stream_progress.h"
#include "stream_builder.h"
#include "streams/parse_aot.h"
#include "support/fakes.h"

namespace zorvel {
namespace {

constexpr int kEntries = 10'000;

class NullIssueWriter final : public IssueWriter {
  public:
    void WriteIssue(std::string_view, std::string_view, std::string_view target, std::string_view,
                    std::string_view code) override {
        benchmark::DoNotOptimize(target.size() + code.size());
    }
};

class NullDisplay final : public RunDisplay {
    bool OfferImport(const std::string& /*summary*/, const std::string& /*question*/) override {
        return false;
    }
};

void ParseStream(benchmark::State& state,
                 const std::function<void(StreamBuilder&, const std::string&)>& add) {
    StreamBuilder builder;
    for (int entry = 0; entry < kEntries; ++entry)
        add(builder, std::to_string(entry));

    test::TestShell shell;
    SystemClock clock;
    Services services{shell.files,  clock,         shell.ui,       shell.log,    shell.status,
                      shell.sounds, shell.options, shell.activity, shell.writers};
    RuleLists rules;
    for (int entry = 0; entry < 40; ++entry) {
        rules.FileIssueList.push_back("UNWANTED" + std::to_string(entry) + ".EXE");
        rules.RegExcludeList.push_back("HKEY_LOCAL_MACHINE\\SOFTWARE\\MICROSOFT\\WINDOWS\\PART" +
                                       std::to_string(entry));
    }
    NullIssueWriter issues;
    NullDisplay display;
    RunStatus status(clock, shell.ui, display);
    StreamProgress progress(services, status, 1, false);
    StreamFailureReports failures(services, 0);
    const ParseContext context{.rules = rules,
                               .issues = issues,
                               .counters = status.counters,
                               .progress = progress,
                               .failures = failures};
    OutputFile rows("/dev/null", "rows", OutputFile::Mode::kTruncate);
    std::int32_t signature = 0;
    for ([[maybe_unused]] const auto round : state) {
        ParseAOT(context, rows, "Office Suite.APPLICATIONS.SITE", builder.bytes(), signature);
        benchmark::DoNotOptimize(signature);
    }
    if (failures.count() != 0) state.SkipWithError("the stream has faults");
    state.SetItemsProcessed(state.iterations() * kEntries);
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(builder.bytes().size()));
}

void FileCopies(benchmark::State& state) {
    ParseStream(state, [](StreamBuilder& builder, const std::string& number) {
        builder.FileCopy("\\\\SERVER\\SYS\\PUBLIC\\APPS\\OFFICE\\FILE" + number + ".DLL",
                         "C:\\Program Files\\Office Suite\\Shared Components\\File" + number + ".dll");
    });
}
BENCHMARK(FileCopies);

void FileCopiesWithIssues(benchmark::State& state) {
    ParseStream(state, [](StreamBuilder& builder, const std::string& number) {
        builder.FileCopy("\\\\SERVER\\SYS\\PUBLIC\\APPS\\OFFICE\\FILE" + number + ".DLL",
                         "C:\\Windows\\System32\\File" + number + ".dll");
    });
}
BENCHMARK(FileCopiesWithIssues);

void RegistryValues(benchmark::State& state) {
    ParseStream(state, [](StreamBuilder& builder, const std::string& number) {
        builder.RegistryValue("HKEY_LOCAL_MACHINE\\Software\\Vendor\\Office Suite\\Settings\\Page" + number,
                              "Value" + number, "some data of a value " + number);
    });
}
BENCHMARK(RegistryValues);

void IniValues(benchmark::State& state) {
    ParseStream(state, [](StreamBuilder& builder, const std::string& number) {
        builder.IniValue("%*WinDir%\\office.ini", "Settings", "Item" + number, "value of the item " + number);
    });
}
BENCHMARK(IniValues);

void Macros(benchmark::State& state) {
    ParseStream(state, [](StreamBuilder& builder, const std::string& number) {
        builder.Macro("TARGET_PATH" + number, "C:\\Program Files\\Office Suite\\" + number);
    });
}
BENCHMARK(Macros);

}  // namespace
}  // namespace zorvel

BENCHMARK_MAIN();

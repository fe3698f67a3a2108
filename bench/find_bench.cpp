// Find: the search of whole streams, and Find runs in which nothing is found.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "analysis/analysis_run.h"
#include "analysis/stream_table.h"
#include "bench_tree.h"
#include "find/predefined_searches.h"
#include "find/stream_finder.h"
#include "platform/regex.h"
#include "search_streams.h"

namespace zorvel {
namespace {

// The search of streams in which nothing matches. Arguments: number of the predefined search, bytes of each
// stream.
void SearchStreams(benchmark::State& state) {
    constexpr std::size_t kBytes = std::size_t{16} * 1024 * 1024;
    const PredefinedSearch& search = PredefinedSearches.at(static_cast<std::size_t>(state.range(0)));
    const auto size = static_cast<std::size_t>(state.range(1));
    std::vector<std::string> streams;
    for (std::size_t made = 0; made < kBytes; made += size)
        streams.push_back(tools::StreamWithoutMatch(size, streams.size()));
    const Regex regex(search.expression);
    std::int64_t bytes = 0;
    for ([[maybe_unused]] const auto round : state) {
        for (const std::string& stream : streams) {
            if (regex.Matches(stream)) state.SkipWithError("a stream matches");
            bytes += static_cast<std::int64_t>(stream.size());
        }
    }
    state.SetLabel(std::string(search.name));
    state.SetBytesProcessed(bytes);
}
BENCHMARK(SearchStreams)->ArgsProduct({{0, 1, 2, 3, 4}, {4096, 65536, 4194304}});

// A Find run that reads every stream and searches none.
class NoSearch final : public FindRun {
  public:
    void Start() override {}
    void BeginStream(std::string_view /*name*/, std::string_view /*full_name*/,
                     std::string_view /*label*/) override {}
    void EndStream() noexcept override {}
    void Finish() override {}
    bool MatchesStream(std::string_view /*stream*/) override { return false; }
    void Find(char /*kind*/, std::string_view /*text*/) override {}
};

class NoDisplay final : public FindDisplay {
  public:
    void HideLabInfo() override {}
    void LoadResults(std::string_view /*path*/) override {}
    void ShowLabInfo(std::string_view /*text*/) override {}
};

// A tree whose applications are all selected, and runs over it. Arguments: applications, entries of each.
class Finding {
  public:
    explicit Finding(const benchmark::State& state)
        : tree(100, static_cast<std::size_t>(state.range(0)), static_cast<std::size_t>(state.range(1))) {
        tree.loader.RefreshOUView("T1", true);
        for (AppRecord& application : tree.lists.AppList)
            tree.lists.Select(application, true);
        slots_.Fill();
        tree.directory.NWDSCreateContextHandle(context);
    }

    void Run(FindRun& find) {
        const RunInputs inputs{tree.services, tree.directory, tree.lists, rules_,
                               slots_,        context,        display_,   {0, 0}};
        AnalysisRun(inputs, &find).Run();
    }

    Tree tree;
    std::uint32_t context = 0;

  private:
    AppIssueSlots slots_;
    RuleLists rules_;
    SilentRunDisplay display_;
};

void ReadWithoutSearch(benchmark::State& state) {
    Finding finding(state);
    NoSearch find;
    for ([[maybe_unused]] const auto round : state)
        finding.Run(find);
}
BENCHMARK(ReadWithoutSearch)->Args({10000, 40})->Args({10000, 200})->Unit(benchmark::kMillisecond);

// A Find run for what no stream holds.
void FindNothing(benchmark::State& state, std::string_view expression) {
    Finding finding(state);
    NoDisplay display;
    StreamFinder find(finding.tree.services, display);
    find.Prepare(expression);
    for ([[maybe_unused]] const auto round : state)
        finding.Run(find);
    if (find.matches() != 0) state.SkipWithError("something matches");
}
BENCHMARK_CAPTURE(FindNothing, text, "no such entry")
    ->Args({10000, 40})
    ->Args({10000, 200})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(FindNothing, ip_addresses, PredefinedSearches[0].expression)
    ->Args({10000, 40})
    ->Args({10000, 200})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(FindNothing, web_addresses, PredefinedSearches[4].expression)
    ->Args({10000, 40})
    ->Args({10000, 200})
    ->Unit(benchmark::kMillisecond);

// The streams alone, opened and read into one buffer; with `search`, searched as well.
void StreamsAlone(benchmark::State& state, bool search) {
    Finding finding(state);
    Tree& tree = finding.tree;
    const Regex regex("no such entry");
    std::string bytes;
    std::int64_t total = 0;
    for ([[maybe_unused]] const auto round : state) {
        for (const AppRecord& application : tree.lists.AppList) {
            const std::string path =
                std::string(application.Container) + '\\' + std::string(application.Name);
            const std::string name = '.' + tree.directory.FullName(path);
            for (const StreamRow& row : kStreamTable) {
                int handle = 0;
                if (tree.directory.NWDSOpenStream(finding.context, name, row.attribute, 1, handle) != 0)
                    continue;
                tree.directory.ReadFile(handle, tree.directory.GetFileSize(handle), bytes);
                tree.directory.CloseHandle(handle);
                if (search) benchmark::DoNotOptimize(regex.Matches(bytes));
                total += static_cast<std::int64_t>(bytes.size());
            }
        }
    }
    state.SetBytesProcessed(total);
}
BENCHMARK_CAPTURE(StreamsAlone, read, false)
    ->Args({10000, 40})
    ->Args({10000, 200})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(StreamsAlone, searched, true)
    ->Args({10000, 40})
    ->Args({10000, 200})
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zorvel

BENCHMARK_MAIN();

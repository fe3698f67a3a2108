// Whole analyses, and the loading of a tree: figures for docs/performance.md.
#include <benchmark/benchmark.h>

#include "analysis/analysis_run.h"
#include "bench_tree.h"
#include "shell/formats.h"

namespace zorvel {
namespace {

// The entries that a run read, as its capture record counts them.
std::int64_t EntriesOf(const Files& files) {
    const CaptureRecord record = ReadCaptureRecord(files).value();
    std::int64_t entries = 0;
    for (std::size_t i = 0; i + 1 < record.totals.size(); ++i)
        entries += WholeValue(record.totals[i]);
    return entries;
}

// An analysis of a tree that is loaded already, without pauses. Arguments: applications, entries of each.
void Analysis(benchmark::State& state) {
    Tree tree(100, static_cast<std::size_t>(state.range(0)), static_cast<std::size_t>(state.range(1)));
    tree.loader.RefreshOUView("T1", true);
    for (AppRecord& application : tree.lists.AppList)
        tree.lists.Select(application, true);
    AppIssueSlots slots;
    slots.Fill();
    const RuleLists rules{{"HKEY_CURRENT_USER\\SOFTWARE\\POLICIES"}, {"THUMBS.DB"}};
    std::uint32_t context = 0;
    tree.directory.NWDSCreateContextHandle(context);
    SilentRunDisplay display;
    for ([[maybe_unused]] auto iteration : state) {
        const RunInputs inputs{tree.services, tree.directory, tree.lists, rules,
                               slots,         context,        display,    {0, 0}};
        AnalysisRun(inputs).Run();
    }
    state.SetItemsProcessed(state.iterations() * EntriesOf(tree.shell.files));
}
BENCHMARK(Analysis)
    ->Args({1000, 200})
    ->Args({10000, 200})
    ->Args({1000, 40})
    ->Args({10000, 40})
    ->Args({10000, 10})
    ->Unit(benchmark::kMillisecond);

// Reading a tree from its LDIF and walking it. Arguments: containers, applications.
void WalkTree(benchmark::State& state) {
    Tree tree(static_cast<std::size_t>(state.range(0)), static_cast<std::size_t>(state.range(1)), 0);
    tree.loader.RefreshOUView("T1", true);
    for ([[maybe_unused]] auto iteration : state)
        tree.loader.RefreshOUView("T1", true);
    state.SetItemsProcessed(state.iterations() * state.range(1));
}
BENCHMARK(WalkTree)->Args({10000, 50000})->Args({100000, 500000})->Unit(benchmark::kMillisecond);

// Loading a tree from its cache files. Arguments: containers, applications.
void LoadFromCache(benchmark::State& state) {
    Tree tree(static_cast<std::size_t>(state.range(0)), static_cast<std::size_t>(state.range(1)), 0);
    tree.loader.RefreshOUView("T1", true);
    for ([[maybe_unused]] auto iteration : state)
        tree.loader.RefreshOUView("T1", false);
    state.SetItemsProcessed(state.iterations() * state.range(1));
}
BENCHMARK(LoadFromCache)->Args({10000, 50000})->Args({100000, 500000})->Unit(benchmark::kMillisecond);

// Every application found by its container and name. Arguments: containers, applications.
void FindApp(benchmark::State& state) {
    Tree tree(static_cast<std::size_t>(state.range(0)), static_cast<std::size_t>(state.range(1)), 0);
    tree.loader.RefreshOUView("T1", true);
    for ([[maybe_unused]] auto iteration : state) {
        for (const AppRecord& application : tree.lists.AppList) {
            benchmark::DoNotOptimize(tree.lists.FindApp(application.Container, application.Name));
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(1));
}
BENCHMARK(FindApp)->Args({10000, 50000})->Args({100000, 500000})->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zorvel

BENCHMARK_MAIN();

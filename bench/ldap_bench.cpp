// Trees that a server holds: figures for docs/performance.md. The server is slapd on this machine.
#include <benchmark/benchmark.h>

#include "analysis/analysis_run.h"
#include "bench_tree.h"
#include "support/served_sample.h"
#include "support/slapd.h"
#include "support/slow_proxy.h"

namespace zorvel {
namespace {

// A generated tree that slapd serves, read through it.
struct LiveTree {
    Tree tree;
    test::Slapd server;
    test::SlowProxy proxy{server.folder().path() / "socket"};

    LiveTree(std::size_t containers, std::size_t applications, std::size_t entries)
        : tree(containers, applications, entries),
          server(Served(tree),
                 {.access = "limits * size.soft=unlimited size.hard=unlimited\naccess to * by * read\n"}) {}

    void Open(const std::string& url, std::int64_t read_ahead) {
        tree.shell.folder.Write("Directory.toml", "[[tree]]\nname = \"T1\"\nldap = [\"" + url +
                                                      "\"]\nread_ahead = " + std::to_string(read_ahead) +
                                                      "\n");
        tree.directory.NWCallsInit();
    }

  private:
    static std::string Served(const Tree& tree) {
        return test::Servable(tree.shell.folder.Read("Trees/T1.ldif"));
    }
};

// An analysis without pauses, its tree listed already. Arguments: applications, entries of each.
void LiveAnalysis(benchmark::State& state) {
    LiveTree live(100, static_cast<std::size_t>(state.range(0)), static_cast<std::size_t>(state.range(1)));
    live.Open(live.server.url(), 16);
    Tree& tree = live.tree;
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
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(LiveAnalysis)->Args({2000, 40})->Args({2000, 200})->Unit(benchmark::kMillisecond)->UseRealTime();

// The same applications by OpenLDAP's own tool, in one search: what a run is held against.
void LdapSearchTool(benchmark::State& state) {
    const LiveTree live(100, static_cast<std::size_t>(state.range(0)),
                        static_cast<std::size_t>(state.range(1)));
    for ([[maybe_unused]] auto iteration : state) {
        const int status =
            test::RunProgram({"ldapsearch", "-x", "-LLL", "-E", "pr=500/noprompt", "-H", live.server.url(),
                              "-b", "", "(objectClass=appApplication)", "*"});
        if (status != 0) state.SkipWithError(("ldapsearch: " + std::to_string(status)).c_str());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(LdapSearchTool)->Args({2000, 40})->Args({2000, 200})->Unit(benchmark::kMillisecond)->UseRealTime();

// The seconds that one round trip through the live tree's proxy takes.
double RoundTrip(LiveTree& live) {
    constexpr int kReads = 50;
    TreeDirectory& directory = live.tree.directory;
    directory.SetCurrentObject(RootPath("T1"));
    directory.SetCurrentObject(directory.Entries(RootPath("T1"), kContainerClasses).front().path);
    const int before = live.proxy.answers;
    const double begun = live.tree.clock.Timer();
    for (int i = 0; i < kReads; ++i)
        directory.CurrentEntry();
    return (live.tree.clock.Timer() - begun) / (live.proxy.answers - before);
}

// Listing a tree through a network that takes 20 ms more a round trip; "in_round_trips" is the time in round
// trips a container. Arguments: containers, read_ahead.
void DelayedWalk(benchmark::State& state) {
    LiveTree live(static_cast<std::size_t>(state.range(0)), 4000, 0);
    live.Open(live.proxy.url(), state.range(1));
    live.proxy.delay = std::chrono::milliseconds(20);
    const double round_trip = RoundTrip(live);
    const double begun = live.tree.clock.Timer();
    for ([[maybe_unused]] auto iteration : state)
        live.tree.loader.RefreshOUView("T1", true);
    state.counters["in_round_trips"] =
        (live.tree.clock.Timer() - begun) / round_trip / static_cast<double>(state.range(0));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(DelayedWalk)
    ->Args({2000, 1})
    ->Args({2000, 16})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(1);

}  // namespace
}  // namespace zorvel

BENCHMARK_MAIN();

// Whole analyses, and the loading of a tree: figures for docs/performance.md.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <filesystem>
#include <string>

#include "analysis/analysis_run.h"
#include "directory/memory_directory.h"
#include "directory/ou_view_loader.h"
#include "sample_tree_writer.h"
#include "shell/formats.h"
#include "support/fake_window.h"
#include "support/fakes.h"
#include "support/program_folder.h"

namespace zorvel {
namespace {

// A user who is shown much and says nothing.
class SilentUserInterface final : public UserInterface {
  public:
    Answer Show(const MessageBox& box) override {
        return box.buttons == Buttons::kYesNo ? Answer::kYes : Answer::kOk;
    }
    void ShowStatus(StatusPicture /*picture*/, std::string_view /*text*/) override {}
    void PlaySound(std::string_view /*path*/) override {}
    void OpenDocument(std::string_view /*address*/) override {}
    void EditTextFile(std::string_view /*path*/) override {}
    void ProcessEvents() override {}
};

// The entries that a run read, as its capture record counts them.
std::int64_t EntriesOf(const Files& files) {
    const CaptureRecord record = ReadCaptureRecord(files).value();
    std::int64_t entries = 0;
    for (std::size_t i = 0; i + 1 < record.totals.size(); ++i)
        entries += WholeValue(record.totals[i]);
    return entries;
}

// A program folder over a generated tree, loaded once.
struct Tree {
    test::TestShell shell;
    SystemClock clock;
    SilentUserInterface ui;
    TreeLists lists;
    StatusLine status{ui, lists.counts};
    Services services{shell.files, clock, ui, shell.log, status, shell.sounds, shell.options, shell.activity};
    MemoryDirectory directory{shell.files, shell.log};
    test::FakeOUViewDisplay display;
    OUViewLoader loader{services, directory, lists, display, 0};
    std::uintmax_t ldif_size = 0;

    Tree(std::size_t containers, std::size_t applications, std::size_t entries) {
        test::FillProgramFolder(shell.folder, "");
        const std::filesystem::path ldif = shell.folder.path() / "Trees/T1.ldif";
        OutputFile out(ldif, ldif.string(), OutputFile::Mode::kTruncate);
        tools::SampleTreeOptions options;
        options.containers = containers;
        options.applications = applications;
        options.entries = entries;
        tools::WriteSampleTree(options, out);
        out.Close();
        ldif_size = std::filesystem::file_size(ldif);
        directory.NWCallsInit();
    }
};

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
    class Display final : public test::FakeRunDisplay {
        void ShowStatusCounts(const RunStatus& /*status*/) override {}
        void ShowCurrentApplication(std::string_view /*count*/, std::string_view /*name*/) override {}
        void ShowStreamProgress(double /*value*/) override {}
    } display;
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

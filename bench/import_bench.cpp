// The import of a run, by its number of rows and by its number of applications.
#include <benchmark/benchmark.h>

#include "database/catalogue.h"
#include "database/import.h"
#include "database/make_databases.h"
#include "import_data.h"
#include "support/fakes.h"

namespace {

using namespace zorvel;

class NoDisplay final : public ImportDisplay {
  public:
    void ShowStatusFrame() override {}
    void Status(std::string_view /*application*/, std::string_view /*section*/, std::string_view /*activity*/,
                std::string_view /*count*/) override {}
    void Progress(int /*value*/, int /*maximum*/) override {}
};

void ImportRun(benchmark::State& state) {
    const tools::ImportSize size{.rows = state.range(0), .applications = state.range(1)};
    test::TestShell shell;
    MakeDatabases(ZORVEL_SOURCE_DIR "/src/database/schema.sql", shell.folder.path() / "Empty_Zorvel.mdb",
                  shell.folder.path() / "Databases/ZorvelMaster.mdb");
    tools::WriteImportData(shell.files, size);
    const std::string path = shell.files.Path(R"(Databases\ZorvelMaster.mdb)");
    Database master(shell.files.Resolve(path), path);
    Catalogue catalogue(master);
    NoDisplay display;
    CatalogueRow details;
    details.Captured = "16/11/2026 17:28:05";
    for ([[maybe_unused]] auto iteration : state) {
        shell.ui.answers = {Answer::kYes};
        if (Import(shell.services, catalogue, display).Run(details) != ImportResult::kDone) {
            state.SkipWithError(shell.ui.boxes.back().text.c_str());
            break;
        }
    }
    state.SetItemsProcessed(state.iterations() * size.rows);
}

// By rows, at one size of an application.
BENCHMARK(ImportRun)
    ->Args({10'000, 100})
    ->Args({100'000, 100})
    ->Args({1'000'000, 100})
    ->Unit(benchmark::kMillisecond);
// By applications, with ten rows each.
BENCHMARK(ImportRun)
    ->Args({10'000, 1'000})
    ->Args({100'000, 10'000})
    ->Args({1'000'000, 100'000})
    ->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();

// The findings of a dataset: read, filtered, sorted and written; by their number, 200 of each application.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <cstdint>
#include <memory>
#include <numeric>
#include <string>

#include "database/import_record.h"
#include "database/make_databases.h"
#include "findings/finding_filter.h"
#include "findings/finding_list.h"
#include "platform/write_in_place.h"
#include "report_data.h"
#include "support/temp_folder.h"

namespace {

using namespace zorvel;

constexpr Date kToday{std::chrono::year{2026}, std::chrono::month{11}, std::chrono::day{23}};

// A dataset of so many findings, kept until another number is asked for.
class Dataset {
  public:
    static const Dataset& Of(const benchmark::State& state) {
        static std::unique_ptr<const Dataset> last;
        if (last == nullptr || last->rows_ != state.range(0)) {
            last.reset();
            last = std::make_unique<const Dataset>(state.range(0));
        }
        return *last;
    }

    explicit Dataset(std::int64_t rows) : rows_(rows) {
        row_.DBName = "Zorvel_Rows.MDB";
        row_.Captured = "16/11/2026 17:28:05";
        const auto path = folder_.path() / "Databases" / row_.DBName;
        MakeDatabases(ZORVEL_SOURCE_DIR "/src/database/schema.sql", path,
                      folder_.path() / "Databases/ZorvelMaster.mdb");
        Database dataset(path, row_.DBName);
        const DateTime now{2026, 11, 16, 17, 28, 5};
        BeginImportRecord(dataset, row_, now);
        tools::FillFindings(dataset, {rows, rows / 200, 100});
        CompleteImportRecord(dataset, now);
    }

    Findings Read() const { return Findings(files_, row_, kToday); }
    std::filesystem::path Beside(const char* name) const { return folder_.path() / name; }

  private:
    std::int64_t rows_;
    test::TempFolder folder_;
    Files files_{folder_.path()};
    CatalogueRow row_;
};

std::vector<std::uint32_t> AllRows(const Findings& findings) {
    std::vector<std::uint32_t> rows(findings.table().size());
    std::iota(rows.begin(), rows.end(), 0U);
    return rows;
}

// All that the page needs until it shows its first rows, and the memory that it keeps.
void OpenPage(benchmark::State& state) {
    const Dataset& dataset = Dataset::Of(state);
    for ([[maybe_unused]] auto iteration : state) {
        const std::size_t before = mallinfo2().uordblks + mallinfo2().hblkhd;
        const Findings findings = dataset.Read();
        FindingFilter filter(findings.table(), findings.states());
        FindingOrder order(findings.table(), findings.states());
        std::vector<std::uint32_t> rows = filter.Apply();
        order.Sort(rows, FindingColumn::kSeverity);
        state.counters["kept"] = static_cast<double>(mallinfo2().uordblks + mallinfo2().hblkhd - before);
    }
}

// A filter with its facets, and the sort of what is left.
void Filter(benchmark::State& state, const char* text) {
    const Findings findings = Dataset::Of(state).Read();
    FindingFilter filter(findings.table(), findings.states());
    FindingOrder order(findings.table(), findings.states());
    filter.SetText(text);
    for ([[maybe_unused]] auto iteration : state) {
        std::vector<std::uint32_t> rows = filter.Apply();
        order.Sort(rows, FindingColumn::kSeverity);
        state.counters["rows"] = static_cast<double>(rows.size());
    }
}

void Sort(benchmark::State& state, FindingColumn column) {
    const Findings findings = Dataset::Of(state).Read();
    std::vector<std::uint32_t> rows = AllRows(findings);
    for ([[maybe_unused]] auto iteration : state) {
        FindingOrder order(findings.table(), findings.states());  // the first time, too
        order.Sort(rows, column);
    }
}

void WriteAs(benchmark::State& state, std::size_t format) {
    const Dataset& dataset = Dataset::Of(state);
    const Findings findings = dataset.Read();
    const std::vector<std::uint32_t> rows = AllRows(findings);
    for ([[maybe_unused]] auto iteration : state) {
        WriteInPlace(dataset.Beside("x"), [&](OutputFile& file) {
            FindingFormats()[format].write({findings, rows, "now", "1.0"}, file, {});
        });
    }
    state.SetBytesProcessed(state.iterations() *
                            static_cast<std::int64_t>(std::filesystem::file_size(dataset.Beside("x"))));
}

void BySize(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(OpenPage)->Apply(BySize);
BENCHMARK_CAPTURE(Filter, Nothing, "")->Apply(BySize);
BENCHMARK_CAPTURE(Filter, Words, "part3 readme")->Apply(BySize);
BENCHMARK_CAPTURE(Filter, Fields, "code:FILEPWL app:SITE7")->Apply(BySize);
BENCHMARK_CAPTURE(Sort, ByReach, FindingColumn::kReach)->Apply(BySize);
BENCHMARK_CAPTURE(Sort, ByTarget, FindingColumn::kTarget)->Apply(BySize);
BENCHMARK_CAPTURE(WriteAs, Csv, 0)->Apply(BySize);
BENCHMARK_CAPTURE(WriteAs, Sarif, 2)->Apply(BySize);

}  // namespace

BENCHMARK_MAIN();

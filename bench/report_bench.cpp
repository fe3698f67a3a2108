// The report "Registry Details": prepared, laid out, drawn, and as files; by the number of its rows and of
// its applications, which are its inner groups.
#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

#include "database/make_databases.h"
#include "paper/report_fonts.h"
#include "paper/report_painter.h"
#include "paper/report_pdf.h"
#include "platform/files.h"
#include "platform/write_in_place.h"
#include "report_data.h"
#include "reporting/report_export.h"
#include "support/temp_folder.h"

namespace {

using namespace zorvel;

constexpr int kBigPage = 2;  // pixels a point, as on a large screen

// A dataset of some size, kept until another size is asked for.
class Dataset {
  public:
    static const Dataset& Of(const tools::ReportSize& size) {
        static std::unique_ptr<const Dataset> last;
        if (last == nullptr || last->size_ != size) {
            last.reset();
            last = std::make_unique<const Dataset>(size);
        }
        return *last;
    }

    explicit Dataset(const tools::ReportSize& size) : size_(size) {
        MakeDatabases(ZORVEL_SOURCE_DIR "/src/database/schema.sql", path(),
                      folder_.path() / "Databases/ZorvelMaster.mdb");
        Database dataset(path(), "Zorvel_Rows.MDB");
        tools::FillRegistry(dataset, size);
    }

    std::unique_ptr<const Report> Prepare() const {
        const Files program(ZORVEL_SOURCE_DIR "/program");
        const std::string file = program.Path(R"(Reports\Zorvel_RegistryDetails.rpt)");
        ReportDefinition definition = ParseReportDefinition(program.Read(file), file);
        const std::string query = definition.query;
        ReportFacts facts;
        facts.caption = "Registry Details";
        return std::make_unique<const Report>(
            std::move(definition), std::move(facts),
            Database(path(), "Zorvel_Rows.MDB", Database::Access::kReadOnly), query);
    }
    std::filesystem::path Beside(const char* name) const { return folder_.path() / name; }

  private:
    std::filesystem::path path() const { return folder_.path() / "Zorvel_Rows.MDB"; }

    test::TempFolder folder_;
    tools::ReportSize size_;
};

const Dataset& DatasetOf(const benchmark::State& state) {
    return Dataset::Of({state.range(0), state.range(1), state.range(2)});
}

void DrawPage(const PageLayout& layout, const PaperFonts& fonts, std::size_t page) {
    QImage image(static_cast<int>(layout.page_width() * kBigPage),
                 static_cast<int>(layout.page_height() * kBigPage), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    ReportPainter canvas(painter, fonts, kBigPage);
    layout.Draw(page, canvas);
}

// The query, the groups and the totals.
void Prepare(benchmark::State& state) {
    const Dataset& dataset = DatasetOf(state);
    for ([[maybe_unused]] auto iteration : state)
        benchmark::DoNotOptimize(dataset.Prepare());
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void LayOut(benchmark::State& state) {
    const auto report = DatasetOf(state).Prepare();
    const PaperFonts fonts;
    for ([[maybe_unused]] auto iteration : state) {
        const PageLayout layout(*report, fonts.metrics());
        state.counters["pages"] = static_cast<double>(layout.page_count());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// From the query until the first page is drawn.
void OpenReport(benchmark::State& state) {
    const Dataset& dataset = DatasetOf(state);
    for ([[maybe_unused]] auto iteration : state) {
        const auto report = dataset.Prepare();
        const PaperFonts fonts;
        const PageLayout layout(*report, fonts.metrics());
        DrawPage(layout, fonts, 0);
    }
}

void DrawLastPage(benchmark::State& state) {
    const auto report = DatasetOf(state).Prepare();
    const PaperFonts fonts;
    const PageLayout layout(*report, fonts.metrics());
    for ([[maybe_unused]] auto iteration : state)
        DrawPage(layout, fonts, layout.page_count() - 1);
}

void WriteCsvFile(benchmark::State& state) {
    const Dataset& dataset = DatasetOf(state);
    const auto report = dataset.Prepare();
    for ([[maybe_unused]] auto iteration : state)
        WriteInPlace(dataset.Beside("x.csv"), [&](OutputFile& file) { WriteCsv(*report, file); });
    state.SetBytesProcessed(state.iterations() *
                            static_cast<std::int64_t>(std::filesystem::file_size(dataset.Beside("x.csv"))));
}

// Laid out and written, all pages.
void WritePdfFile(benchmark::State& state) {
    const Dataset& dataset = DatasetOf(state);
    const auto report = dataset.Prepare();
    for ([[maybe_unused]] auto iteration : state)
        WritePdf(*report, dataset.Beside("x.pdf"));
    state.SetBytesProcessed(state.iterations() *
                            static_cast<std::int64_t>(std::filesystem::file_size(dataset.Beside("x.pdf"))));
}

void BySize(benchmark::internal::Benchmark* benchmark) {
    // By rows, with 200 of each application and 100 containers.
    for (const std::int64_t rows : {20'000, 200'000, 1'000'000})
        benchmark->Args({rows, rows / 200, 100});
    // Two rows of each application, and then each of those in a container of its own.
    benchmark->Args({200'000, 100'000, 100})->Args({200'000, 100'000, 100'000});
    benchmark->Unit(benchmark::kMillisecond);
}

BENCHMARK(Prepare)->Apply(BySize);
BENCHMARK(LayOut)->Apply(BySize);
BENCHMARK(OpenReport)->Args({200'000, 1'000, 100})->Unit(benchmark::kMillisecond);
BENCHMARK(DrawLastPage)->Args({200'000, 1'000, 100})->Unit(benchmark::kMillisecond);
BENCHMARK(WriteCsvFile)->Args({200'000, 1'000, 100})->Unit(benchmark::kMillisecond);
BENCHMARK(WritePdfFile)
    ->Args({100'000, 500, 100})
    ->Args({200'000, 1'000, 100})
    ->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argument_count, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argument_count, arguments);
    benchmark::Initialize(&argument_count, arguments);
    if (benchmark::ReportUnrecognizedArguments(argument_count, arguments)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

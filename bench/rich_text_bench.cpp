// Bytes per second of the log viewer: the log made rich text, the rich text read and searched, and all that
// opening the window takes before it is painted.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "support/fakes.h"
#include "support/temp_folder.h"
#include "viewers/log_rtf.h"
#include "viewers/log_view.h"
#include "viewers/rich_lines.h"
#include "viewers/rich_text.h"
#include "viewers/text_search.h"

namespace zorvel {
namespace {

// A log as a session leaves it: mostly plain lines with paths, some warnings and errors.
std::string MakeLog(std::size_t size) {
    constexpr std::string_view kLines[] = {
        "16/11/2026 17:28:05    Processing application object Word.APPS.LONDON.CORP\r\n",
        "16/11/2026 17:28:05    Opening C:\\Zorvel\\TempData\\Zorvel_FileCopy.CSV for output\r\n",
        "16/11/2026 17:28:05    Reading attributes and associations, then eleven streams of the object\r\n",
        "16/11/2026 17:28:05 WARNING: the stream {0002A500-0000-0000-C000-000000000046} ends early\r\n",
        "16/11/2026 17:28:05    42 registry settings, 7 file copies\r\n",
        "16/11/2026 17:28:05 ERROR: Unexpected error # 53 (File not found) occurred in ParseAOT\r\n",
    };
    std::string log;
    for (std::size_t at = 0; log.size() < size; at = (at + 1) % std::size(kLines))
        log += kLines[at];
    return log;
}

// Takes what a document builder would take, and builds nothing.
class CountingSink final : public RichTextSink {
  public:
    std::size_t count = 0;
    void Text(std::string_view utf8, const CharacterFormat&) override { count += utf8.size(); }
    void EndParagraph(const ParagraphFormat&) override { ++count; }
};

void Read(benchmark::State& state, const std::string& rtf) {
    CountingSink sink;
    for ([[maybe_unused]] const auto round : state)
        ReadRichText(rtf, sink);
    benchmark::DoNotOptimize(sink.count);
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(rtf.size()));
}

void GenerateLogRtf(benchmark::State& state) {
    const test::TempFolder folder;
    const std::string log = MakeLog(static_cast<std::size_t>(state.range(0)));
    folder.Write("Zorvel.log", log);
    const Files files(folder.path());
    for ([[maybe_unused]] const auto round : state) {
        OutputFile rtf = files.Create(files.Path("TempData\\Zorvel.rt$"));
        WriteLogAsRtf(files.Open(files.Path("Zorvel.log")),
                      [&](std::string_view bytes) { rtf.Write(bytes); });
        rtf.Close();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(log.size()));
}
BENCHMARK(GenerateLogRtf)->Arg(1 << 20)->Arg(100 << 20)->Unit(benchmark::kMillisecond);

void ReadLogRtf(benchmark::State& state) {
    const test::TempFolder folder;
    folder.Write("Zorvel.log", MakeLog(static_cast<std::size_t>(state.range(0))));
    const Files files(folder.path());
    std::string rtf;
    WriteLogAsRtf(files.Open(files.Path("Zorvel.log")), [&](std::string_view bytes) { rtf += bytes; });
    Read(state, rtf);
}
BENCHMARK(ReadLogRtf)->Arg(1 << 20)->Arg(100 << 20)->Unit(benchmark::kMillisecond);

// The slowest there is to read: formats that change with every character.
void ReadFormatChanges(benchmark::State& state) {
    std::string rtf = "{\\rtf1{\\fonttbl{\\f0 A;}}";
    while (rtf.size() < static_cast<std::size_t>(state.range(0)))
        rtf += "{\\b x}\\'e9";
    Read(state, rtf + "}");
}
BENCHMARK(ReadFormatChanges)->Arg(1 << 20)->Arg(16 << 20)->Unit(benchmark::kMillisecond);

void OpenLog(benchmark::State& state) {
    test::TestShell shell;
    const std::string log = MakeLog(static_cast<std::size_t>(state.range(0)));
    shell.log.Close();
    shell.folder.Write("Zorvel.log", log);
    shell.log.Open(true);
    std::size_t count = 0;
    for ([[maybe_unused]] const auto round : state) {
        LogView(shell.services).Open([&](std::string_view path) {
            RichLines lines;
            lines.ReadFile(shell.files, path);
            count += lines.size();
        });
    }
    benchmark::DoNotOptimize(count);
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(log.size()));
}
BENCHMARK(OpenLog)->Arg(1 << 20)->Arg(100 << 20)->Unit(benchmark::kMillisecond);

// A text that is nowhere in the log, forwards and, with range(1), backwards.
void SearchLog(benchmark::State& state) {
    const std::string log = MakeLog(static_cast<std::size_t>(state.range(0)));
    const TextSearch search("Unexpected errors", false);
    for ([[maybe_unused]] const auto round : state) {
        auto place = state.range(1) == 0 ? search.Next(log, 0) : search.Previous(log, log.size());
        benchmark::DoNotOptimize(place);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(log.size()));
}
BENCHMARK(SearchLog)->Args({100 << 20, 0})->Args({100 << 20, 1})->Unit(benchmark::kMillisecond);

// Matches that begin at every character and never end.
void SearchAlmostMatches(benchmark::State& state) {
    const std::string text(static_cast<std::size_t>(state.range(0)), 'a');
    const TextSearch search(std::string(1000, 'a') + 'b', false);
    for ([[maybe_unused]] const auto round : state) {
        auto place = search.Next(text, 0);
        benchmark::DoNotOptimize(place);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(SearchAlmostMatches)->Arg(1 << 20)->Arg(100 << 20)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zorvel

BENCHMARK_MAIN();

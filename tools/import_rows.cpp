// zorvel_import_rows FOLDER ROWS APPLICATIONS: writes the data files of a made-up run into a program folder,
// imports them and prints the seconds that the import took and the peak memory in kilobytes.
#include <sys/resource.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>

#include "database/catalogue.h"
#include "database/import.h"
#include "import_data.h"
#include "support/fakes.h"

namespace {

class NoDisplay final : public zorvel::ImportDisplay {
  public:
    void ShowStatusFrame() override {}
    void Status(std::string_view /*application*/, std::string_view /*section*/, std::string_view /*activity*/,
                std::string_view /*count*/) override {}
    void Progress(int /*value*/, int /*maximum*/) override {}
};

int Run(const char* folder, zorvel::tools::ImportSize size) {
    using namespace zorvel;
    const Files files{folder};
    tools::WriteImportData(files, size);

    SystemClock clock;
    test::FakeUserInterface ui;
    Log log{files, clock};
    log.Open(false);
    TreeCounts counts;
    StatusLine status{ui, counts};
    WriterLock writers{files, clock, ui, log};
    Options options{files, ui, log, writers};
    EventSounds sounds{files, ui, options.session.SoundsEnabled};
    Activity activity;
    Services services{files, clock, ui, log, status, sounds, options, activity, writers};
    const std::string master_path = files.Path(R"(Databases\ZorvelMaster.mdb)");
    Database master(files.Resolve(master_path), master_path);
    Catalogue catalogue(master);
    NoDisplay display;

    CatalogueRow details;
    details.Captured = "16/11/2026 17:28:05";
    const auto start = std::chrono::steady_clock::now();
    const ImportResult result = Import(services, catalogue, display).Run(details);
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    for (const MessageBox& box : ui.boxes)
        std::fprintf(stderr, "%s\n", box.text.c_str());

    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("%.2f seconds, %ld kB\n", seconds.count(), usage.ru_maxrss);
    return result == ImportResult::kDone ? 0 : 1;
}

}  // namespace

int main(int argument_count, char** arguments) {
    if (argument_count != 4) {
        std::fputs("usage: zorvel_import_rows FOLDER ROWS APPLICATIONS\n", stderr);
        return 2;
    }
    try {
        return Run(arguments[1], {std::atoll(arguments[2]), std::atoll(arguments[3])});
    } catch (...) {
        const zorvel::Error error = zorvel::CurrentError();
        std::fprintf(stderr, "zorvel_import_rows: %s %s\n", error.what(), error.detail().c_str());
        return 1;
    }
}

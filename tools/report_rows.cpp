// zorvel_report_rows FOLDER ROWS APPLICATIONS CONTAINERS [findings]: adds a dataset with a made-up run, of
// registry settings or of findings, to the program folder and prints the name of its file.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "database/catalogue.h"
#include "database/import_record.h"
#include "platform/error.h"
#include "platform/files.h"
#include "platform/store_files.h"
#include "report_data.h"

namespace {

void Run(const char* folder, const zorvel::tools::ReportSize& size, bool findings) {
    using namespace zorvel;
    const Files files{folder};
    CatalogueRow details;
    details.Captured = "16/11/2026 17:28:05";
    details.DBName = "Zorvel_Rows.MDB";
    details.AppCount = static_cast<std::int32_t>(size.applications);
    const std::string path = files.Path("Databases\\" + details.DBName);
    CopyDatabase(files, files.Path("Empty_Zorvel.mdb"), path);
    Database dataset(files.Resolve(path), path);
    const DateTime now{2026, 11, 16, 17, 28, 5};
    BeginImportRecord(dataset, details, now);
    if (findings) {
        tools::FillFindings(dataset, size);
    } else {
        tools::FillRegistry(dataset, size);
    }
    CompleteImportRecord(dataset, now);
    const std::string master_path = files.Path(R"(Databases\ZorvelMaster.mdb)");
    Database master(files.Resolve(master_path), master_path);
    Catalogue(master).Add(details);
    std::puts(details.DBName.c_str());
}

}  // namespace

int main(int argument_count, char** arguments) {
    constexpr int kArguments = 5;
    const bool findings =
        argument_count == kArguments + 1 && std::strcmp(arguments[kArguments], "findings") == 0;
    if (argument_count != kArguments && !findings) {
        std::fputs("usage: zorvel_report_rows FOLDER ROWS APPLICATIONS CONTAINERS [findings]\n", stderr);
        return 2;
    }
    try {
        Run(arguments[1], {std::atoll(arguments[2]), std::atoll(arguments[3]), std::atoll(arguments[4])},
            findings);
        return 0;
    } catch (...) {
        const zorvel::Error error = zorvel::CurrentError();
        std::fprintf(stderr, "zorvel_report_rows: %s %s\n", error.what(), error.detail().c_str());
        return 1;
    }
}

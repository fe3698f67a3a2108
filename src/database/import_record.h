// What a dataset says of its own import, in its table Zorvel_Import.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "database/catalogue.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/store.h"

namespace zorvel {

// What is said of a dataset whose import failed, was killed, or still goes on.
inline constexpr std::string_view kImportNotCompleted = "import not completed";

// The tables that an import fills, without their "Zorvel_".
inline constexpr std::array<std::string_view, 9> kImportedTables = {
    "Apps",        "AppDetails",       "Macros",          "Issues",      "CopyFiles",
    "INISettings", "RegistrySettings", "AppAssociations", "Associations"};

// Says that the import of the run `details` begins, and that it is completed. Raise 0x80004005, or 61 on a
// full disk.
void BeginImportRecord(Database& dataset, const CatalogueRow& details, const DateTime& now);
void CompleteImportRecord(Database& dataset, const DateTime& now);

// Raises 0x80004005 when the database is no dataset.
void RequireDataset(const Database& database);
// True when the import of the dataset was completed; also for a dataset of an older version, which cannot
// tell. Raises 0x80004005.
bool IsImportCompleted(const Database& dataset);

// What a dataset says of the import that was completed in it.
struct ImportRecord {
    CatalogueRow details;                                     // with no DBName
    std::array<std::int64_t, kImportedTables.size()> rows{};  // of each of kImportedTables
};
// Nothing for a dataset that is not completed or older. Raises 0x80004005.
std::optional<ImportRecord> ReadImportRecord(const Database& dataset);

// The rows that the table `table` of kImportedTables has. Raises 0x80004005.
std::int64_t RowsOf(const Database& dataset, std::string_view table);

enum class ImportState {
    kNoDataset,  // there is no such file
    kCompleted,
    kNotCompleted,
    kUnreadable,  // the file is no dataset, or another program keeps it to itself
};
// The state of a dataset file (a path text).
ImportState ImportStateOf(const Files& files, std::string_view path);
// True when the dataset `name` of Databases says that its import was not completed.
bool LacksCompletion(const Files& files, std::string_view name);

}  // namespace zorvel

// The delivered databases, made in a test's folder.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "database/import_record.h"
#include "database/make_databases.h"
#include "support/program_folder.h"

namespace zorvel::test {

// The dataset template, and the master catalogue unless the folder has one.
inline void AddDatabases(const TempFolder& folder) {
    MakeDatabases(ZORVEL_SOURCE_DIR "/src/database/schema.sql", folder.path() / "Empty_Zorvel.mdb",
                  folder.path() / "Databases/ZorvelMaster.mdb");
}

// A dataset of Databases without applications, whose import was completed or just begun.
inline void AddDataset(const TempFolder& folder, const std::string& name, bool completed = true) {
    const std::filesystem::path path = folder.path() / "Databases" / name;
    std::filesystem::copy_file(folder.path() / "Empty_Zorvel.mdb", path);
    CatalogueRow details;
    details.Captured = "16/11/2026 17:28:05";
    details.Tree = "CORP_TREE";
    Database dataset(path, name);
    BeginImportRecord(dataset, details, {2026, 11, 16, 17, 30, 0});
    if (completed) CompleteImportRecord(dataset, {2026, 11, 16, 17, 30, 1});
}

// A program folder as FillProgramFolder makes it, in which runs can be imported.
inline void FillWholeProgramFolder(const TempFolder& folder, std::string_view ldif) {
    FillProgramFolder(folder, ldif);
    std::filesystem::remove(folder.path() / "Databases/ZorvelMaster.mdb");
    AddDatabases(folder);
}

}  // namespace zorvel::test

// The delivered databases, made in a test's folder.
#pragma once

#include <filesystem>
#include <string_view>

#include "database/make_databases.h"
#include "support/program_folder.h"

namespace zorvel::test {

// The dataset template, and the master catalogue unless the folder has one.
inline void AddDatabases(const TempFolder& folder) {
    MakeDatabases(ZORVEL_SOURCE_DIR "/src/database/schema.sql", folder.path() / "Empty_Zorvel.mdb",
                  folder.path() / "Databases/ZorvelMaster.mdb");
}

// A program folder as FillProgramFolder makes it, in which runs can be imported.
inline void FillWholeProgramFolder(const TempFolder& folder, std::string_view ldif) {
    FillProgramFolder(folder, ldif);
    std::filesystem::remove(folder.path() / "Databases/ZorvelMaster.mdb");
    AddDatabases(folder);
}

}  // namespace zorvel::test

// A small dataset that reports of any definition are made from, as a report opens it: for SELECTs alone.
#pragma once

#include <sqlite3.h>

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

#include "platform/interruption.h"
#include "platform/store.h"
#include "reporting/report_fixture.h"

namespace zorvel::fuzz {

class ReportDataset {
  public:
    ReportDataset() {
        // A query may ask for any memory: the engine refuses what is too much, before libFuzzer does.
        constexpr sqlite3_int64 kMostMemory = 64 * 1024 * 1024;
        sqlite3_hard_heap_limit64(kMostMemory);
        folder_.Fill(std::string(kRows));
        before_ = State();
    }

    // Opens the dataset. Queries end, with Interrupted, after some ten thousand steps.
    Database Open() const {
        constexpr int kMostQuestions = 100;
        const std::filesystem::path path = folder_.folder.path() / "Databases" / folder_.dataset;
        Database database(path, folder_.dataset, Database::Access::kSelect);
        database.EndWhen([asked = 0]() mutable { return ++asked > kMostQuestions; });
        return database;
    }
    // False once a file of the folder has changed, come or gone.
    bool IsUnchanged() const { return State() == before_; }

  private:
    static constexpr std::string_view kRows =
        "INSERT INTO Zorvel_Apps (AppUniqueRef,AppName,AppOU) VALUES "
        "(1,'Word','APPS.SITE'),(2,'\xC4','APPS');"
        "INSERT INTO Zorvel_Issues VALUES (1,'FILE','C:\\A.INI','Z:\\A.INI','SLOWINI'),"
        "(1,'REG','HKLM\\X','','9223372036854775807'),(2,'REG','HKLM\\X',NULL,'-1e400');"
        "INSERT INTO Zorvel_CopyFiles VALUES (1,'C:\\A.EXE','Z:\\A.EXE','Copy always'),(2,'','','');"
        "INSERT INTO Zorvel_Macros VALUES (1,'M','%WINDIR%',9,'Where?');";

    // The files of the folder with their sizes and times.
    std::string State() const {
        std::string state;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder_.folder.path())) {
            state += entry.path().string();
            if (!entry.is_regular_file()) continue;
            state += ' ' + std::to_string(entry.file_size()) + ' ' +
                     std::to_string(entry.last_write_time().time_since_epoch().count()) + '\n';
        }
        return state;
    }

    test::ReportFolder folder_;
    std::string before_;
};

}  // namespace zorvel::fuzz

// What datasets, catalogue and leftovers are found to lack, and what the repair makes of them.
#include "database/dataset_check.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "database/dataset_folder.h"

namespace zorvel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class DatasetCheck : public testing::Test {
  protected:
    static std::string Name(int day) { return DatasetName(std::to_string(day) + "/11/2026 08:00:00"); }
    // The dataset of a day: in the catalogue, or as a file, or both.
    void List(int day) { folder_.catalogue->Add(test::DatasetOfDay(day, "listed")); }
    void Make(int day, bool completed = true, const std::string& end = "") {
        test::AddDataset(folder_.folder, Name(day) + end, completed);
    }
    void Execute(int day, const std::string& script) { folder_.Open(Name(day)).ExecuteScript(script); }
    std::vector<std::string> Faults() {
        std::vector<std::string> lines;
        for (const DatasetFault& fault : FindDatasetFaults(folder_.files, *folder_.catalogue))
            lines.push_back(fault.what + '|' + fault.file + '|' + fault.details);
        return lines;
    }
    // Repairs all that can be; what is done, in words.
    std::vector<std::string> Repair() {
        std::vector<std::string> done;
        for (const DatasetFault& fault : FindDatasetFaults(folder_.files, *folder_.catalogue)) {
            RepairDataset(folder_.files, *folder_.catalogue, fault);
            if (const std::string text = RepairText(fault); !text.empty()) done.push_back(text);
        }
        return done;
    }
    std::vector<std::string> Files() { return folder_.files.List(folder_.files.Path("Databases"), "", ""); }

    test::DatasetFolder folder_;
};

TEST_F(DatasetCheck, FindsNothingWhereAllFits) {
    for (const int day : {11, 12}) {
        List(day);
        Make(day);
    }
    List(12);                                 // imported twice
    Execute(12, "DROP TABLE Zorvel_Import");  // of an older version
    EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(DatasetCheck, BringsCatalogueAndFilesTogether) {
    Make(11);
    Make(12);
    Execute(
        12,
        "DROP TABLE Zorvel_Import; INSERT INTO Zorvel_Apps (AppUniqueRef,AppName,AppOU) VALUES (1,'A','B.C');"
        "INSERT INTO Zorvel_Issues VALUES (1,'','','',''), (1,'','','','')");
    Make(13, false);
    List(14);
    for (const char* name : {"Zorvel_1.MDB.partial", "Zorvel_1.MDB_New.mdb", "Zorvel_1.MDB-journal",
                             "x.mdb-wal", "x.mdb-shm", "x.new"})
        folder_.folder.Write(std::string("Databases/") + name, "left behind");
    for (const char* name : {"Zorvel.ini.new", "TempData/T1.AppCache.new"})
        folder_.folder.Write(name, "left behind");
    const std::vector<std::string> before = Files();
    EXPECT_THAT(
        Faults(),
        ElementsAre("dataset without a row|Zorvel_261111080000.MDB|",
                    "dataset without a row|Zorvel_261112080000.MDB|",
                    "dataset without a row|Zorvel_261113080000.MDB|import not completed",
                    "row without a file|Zorvel_261114080000.MDB|", "journal|Zorvel_1.MDB-journal|",
                    "unfinished copy|Zorvel_1.MDB.partial|", "unfinished compaction|Zorvel_1.MDB_New.mdb|",
                    "journal|x.mdb-shm|", "journal|x.mdb-wal|", "temporary file|x.new|",
                    R"(temporary file|.\Zorvel.ini.new|)", R"(temporary file|TempData\T1.AppCache.new|)"));
    EXPECT_EQ(Files(), before);
    EXPECT_THAT(
        Repair(),
        ElementsAre("enter 'Zorvel_261111080000.MDB' in the catalogue",
                    "enter 'Zorvel_261112080000.MDB' in the catalogue", "delete 'Zorvel_261113080000.MDB'",
                    "remove 'Zorvel_261114080000.MDB' from the catalogue", "delete 'Zorvel_1.MDB-journal'",
                    "delete 'Zorvel_1.MDB.partial'", "delete 'Zorvel_1.MDB_New.mdb'", "delete 'x.mdb-shm'",
                    "delete 'x.mdb-wal'", "delete 'x.new'", R"(delete '.\Zorvel.ini.new')",
                    R"(delete 'TempData\T1.AppCache.new')"));
    EXPECT_THAT(Faults(), IsEmpty());
    EXPECT_THAT(Files(), ElementsAre("ZorvelMaster.mdb", Name(11), Name(12)));
    EXPECT_THAT(
        test::DatasetFolder::Select(*folder_.master, "Captured, Tree, OU, AppCount, DBName, CountIssues",
                                    "Zorvel_CaptureDetails"),
        ElementsAre("2026-11-16 17:28:05|CORP_TREE||0|Zorvel_261111080000.MDB|0",
                    "2026-11-12 08:00:00||B.C|1|Zorvel_261112080000.MDB|2"));
}

TEST_F(DatasetCheck, PutsBackWhatWasSetAsideWhereNothingWholeTookItsPlace) {
    const std::string aside = ".previous";
    for (const int day : {11, 12, 13}) {
        List(day);
        Make(day, true, aside);
    }
    Make(11, false);
    Make(13);
    Make(14, true, aside);
    EXPECT_THAT(Repair(), ElementsAre("rename '" + Name(11) + aside + "' to '" + Name(11) + "'",
                                      "rename '" + Name(12) + aside + "' to '" + Name(12) + "'",
                                      "delete '" + Name(13) + aside + "'",
                                      "rename '" + Name(14) + aside + "' to '" + Name(14) + "'"));
    EXPECT_THAT(Faults(), IsEmpty());
    EXPECT_THAT(Files(), ElementsAre("ZorvelMaster.mdb", Name(11), Name(12), Name(13), Name(14)));
    EXPECT_EQ(folder_.catalogue->List().size(), 4U);
}

TEST_F(DatasetCheck, LeavesWhatOnlyTheUserCanDecide) {
    for (const int day : {11, 12, 13})
        List(day);
    Make(11, false);
    Make(12);
    Execute(12, "INSERT INTO Zorvel_Macros VALUES (1,'','','','')");
    folder_.folder.Write("Databases/" + Name(13),
                         "damaged, and longer than a header.......................................");
    folder_.folder.Write("Databases/" + Name(14), "");
    const std::vector<std::string> faults = Faults();
    EXPECT_THAT(faults, ElementsAre("import not completed|" + Name(11) + "|to be imported again, or deleted",
                                    "rows do not agree|" + Name(12) + "|Zorvel_Macros has 1, imported were 0",
                                    "unreadable dataset|" + Name(13) + "|file is not a database",
                                    "unreadable dataset|" + Name(14) +
                                        "|the file is no dataset: it has no table Zorvel_Apps"));
    EXPECT_THAT(Repair(), IsEmpty());
    EXPECT_EQ(Faults(), faults);
}

}  // namespace
}  // namespace zorvel

// The dialog that compacts and deletes datasets.
#include "database/maintenance.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "database/dataset_folder.h"
#include "shell/formats.h"
#include "support/file_size_limit.h"

namespace zorvel {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* kEmpty =
    "There are no Zorvel databases to maintain - please try again after Zorvelling and importing at least "
    "one NAL object";

class Maintenance : public testing::Test {
  protected:
    // Imports the run, with rows to fill and delete.
    void Import() {
        test::Records records(300, {"Word.APPS.SITE", "Notes", std::string(1000, 'n')});
        folder_.Write(data_files::kAppDetails, records);
        folder_.ui.answers = {Answer::kYes};
        ASSERT_EQ(folder_.RunImport(), ImportResult::kDone);
        folder_.ui.boxes.clear();
        folder_.ui.answers.clear();
    }
    DatabaseMaintenance& Opened() {
        dialog_.emplace(folder_.services, *folder_.catalogue).Open();
        return *dialog_;
    }
    void Answer(zorvel::Answer answer) { folder_.ui.answers = {answer}; }

    test::DatasetFolder folder_;
    std::optional<DatabaseMaintenance> dialog_;
    std::string file_ = folder_.files.Path("databases\\" + folder_.dataset);
};

TEST_F(Maintenance, SaysThatThereIsNothingToMaintain) {
    DatabaseMaintenance& dialog = Opened();
    EXPECT_EQ(folder_.ui.boxes.at(0).icon, MessageIcon::kExclamation);
    EXPECT_EQ(folder_.OnlyBox(), kEmpty);
    EXPECT_FALSE(dialog.butCompactEnabled);
    EXPECT_FALSE(dialog.butDeleteEnabled);
    EXPECT_THAT(folder_.LogLines(), ElementsAre("    DBMaint: Reading CaptureDetails from Master DB...",
                                                "    No Zorvel DBs in Master found to maintain..."));
    EXPECT_EQ(dialog.Compact(), MaintenanceResult::kDeclined);
    EXPECT_EQ(dialog.Delete(), MaintenanceResult::kDeclined);
}

TEST_F(Maintenance, ListsTheDatasetsAndSelectsTheNewest) {
    Import();
    EXPECT_EQ(Opened().list_caption, "Please select Zorvel dataset to delete or compact (1 is on file)");
    CatalogueRow newer = test::DatasetOfDay(17, "");
    newer.AppCount = 0;
    folder_.catalogue->Add(newer);
    DatabaseMaintenance& dialog = Opened();
    EXPECT_EQ(dialog.list_caption, "Please select Zorvel dataset to delete or compact (2 are on file)");
    EXPECT_EQ(dialog.lstCapture, ListItems(folder_.catalogue->List()));
    EXPECT_EQ(dialog.summary.tree, "TREE_17");
    EXPECT_EQ(dialog.summary.applications, "0");
    dialog.Select(1);
    EXPECT_EQ(dialog.summary.tree, "CORP_TREE");
    EXPECT_TRUE(dialog.SelectDataset("Zorvel_261117080000.MDB"));
    EXPECT_EQ(dialog.summary.tree, "TREE_17");
    EXPECT_FALSE(dialog.SelectDataset("Zorvel_none.MDB"));
    EXPECT_TRUE(folder_.ui.boxes.empty());
}

TEST_F(Maintenance, FindsADatasetByItsNameWhateverItsCommentSays) {
    folder_.comment = "after Zorvel_ was updated";
    Import();
    DatabaseMaintenance& dialog = Opened();
    EXPECT_TRUE(dialog.SelectDataset("zorvel_261116172805.mdb"));
    EXPECT_EQ(dialog.summary.tree, "CORP_TREE");
    Answer(Answer::kYes);
    EXPECT_EQ(dialog.Delete(), MaintenanceResult::kDone);
    EXPECT_FALSE(folder_.files.Exists(file_));
}

TEST_F(Maintenance, ShowsAnEmptyListAfterAnError) {
    Import();
    DatabaseMaintenance& dialog = Opened();
    EXPECT_EQ(dialog.lstCapture.size(), 1U);
    folder_.master->Execute("UPDATE Zorvel_CaptureDetails SET CountIssues=5000000000");
    dialog.Open();
    EXPECT_THAT(folder_.OnlyBox(), HasSubstr("(Overflow)"));
    EXPECT_THAT(folder_.LogLines().back(),
                HasSubstr("the catalogue's row of 'Zorvel_261116172805.MDB', CountIssues: Overflow"));
    EXPECT_TRUE(dialog.lstCapture.empty());
    EXPECT_EQ(dialog.list_caption, "");
    EXPECT_FALSE(dialog.butDeleteEnabled);
}

TEST_F(Maintenance, CompactsTheSelectedDataset) {
    Import();
    folder_.Open(folder_.dataset).Execute("DELETE FROM Zorvel_AppDetails WHERE rowid > 10");
    folder_.folder.Write("Databases/" + folder_.dataset + "_New.mdb", "left by an earlier attempt");
    folder_.folder.Write("Databases/" + folder_.dataset + "_New.mdb-journal", "and its journal");
    const auto old_size = static_cast<std::int64_t>(folder_.files.Size(file_));
    DatabaseMaintenance& dialog = Opened();
    Answer(Answer::kYes);
    EXPECT_EQ(dialog.Compact(), MaintenanceResult::kDone);
    const auto new_size = static_cast<std::int64_t>(folder_.files.Size(file_));
    EXPECT_LT(new_size, old_size);
    ASSERT_EQ(folder_.ui.boxes.size(), 2U);
    EXPECT_EQ(folder_.ui.boxes[0].text, "Are you sure you wish to Compact the selected Zorvelrun dataset?");
    EXPECT_EQ(folder_.ui.boxes[0].icon, MessageIcon::kExclamation);
    EXPECT_EQ(folder_.ui.boxes[0].default_answer, Answer::kNo);
    EXPECT_EQ(folder_.ui.boxes[1].text,
              "The selected Zorvel database was successfully Compacted.\n\nOriginal size was " +
                  Grouped(old_size) + " bytes, new size is " + Grouped(new_size) + " bytes.");
    EXPECT_EQ(folder_.ui.boxes[1].icon, MessageIcon::kInformation);
    const std::vector<std::string> log = folder_.LogLines();
    EXPECT_THAT(
        std::vector<std::string>(log.end() - 3, log.end()),
        ElementsAre("    Attempting Compact on '" + file_ + "'", "    Deleting old backup DB '" + file_ + "'",
                    "    Renaming '" + file_ + "_new.mdb' to '" + file_ + "'"));
    EXPECT_EQ(folder_.Table("Zorvel_AppDetails", "Data").size(), 10U);
    EXPECT_FALSE(folder_.files.Exists(file_ + "_New.mdb"));
    EXPECT_FALSE(folder_.files.Exists(file_ + "_New.mdb-journal"));
}

TEST_F(Maintenance, DoesNothingOnNo) {
    Import();
    DatabaseMaintenance& dialog = Opened();
    const std::vector<std::string> log = folder_.LogLines();
    EXPECT_EQ(dialog.Compact(), MaintenanceResult::kDeclined);
    EXPECT_EQ(dialog.Delete(), MaintenanceResult::kDeclined);
    EXPECT_EQ(folder_.LogLines(), log);
    EXPECT_TRUE(folder_.files.Exists(file_));
    EXPECT_EQ(folder_.catalogue->List().size(), 1U);
}

TEST_F(Maintenance, LeavesADatasetAsItWasThatAnotherProgramUses) {
    Import();
    const std::string before = folder_.folder.Read("Databases/" + folder_.dataset);
    Database other = folder_.Open(folder_.dataset);
    other.ExecuteScript("BEGIN IMMEDIATE");
    DatabaseMaintenance& dialog = Opened();
    Answer(Answer::kYes);
    EXPECT_EQ(dialog.Compact(), MaintenanceResult::kFailed);
    EXPECT_EQ(folder_.ui.boxes.back().text,
              "An error occurred when attempting to compact the Zorvel database - this may be because the "
              "database is already opened exclusively elsewhere.");
    EXPECT_EQ(folder_.ui.boxes.back().icon, MessageIcon::kExclamation);
    EXPECT_THAT(folder_.LogLines(),
                Contains(" WARNING: Attempt to Compact DB failed, possibly opened exclusively elsewhere..."));
    EXPECT_THAT(folder_.LogLines().back(), HasSubstr("database is locked"));
    EXPECT_EQ(folder_.folder.Read("Databases/" + folder_.dataset), before);
    EXPECT_FALSE(folder_.files.Exists(file_ + "_New.mdb"));
    Answer(Answer::kYes);
    EXPECT_EQ(dialog.Delete(), MaintenanceResult::kFailed);
    EXPECT_EQ(folder_.ui.boxes.back().text,
              "Error no. -2147467259 (database is locked) occurred in butDelete at Line 3");
    EXPECT_THAT(folder_.ui.boxes.back().detail, HasSubstr("Zorvel_261116172805.MDB: database is locked"));
    EXPECT_TRUE(folder_.files.Exists(file_));
}

TEST_F(Maintenance, DeletesEveryRowAndTheFileOfADatasetImportedTwice) {
    Import();
    Import();
    DatabaseMaintenance& dialog = Opened();
    EXPECT_EQ(dialog.lstCapture.size(), 2U);
    Answer(Answer::kYes);
    EXPECT_EQ(dialog.Compact(), MaintenanceResult::kDone);
    folder_.ui.boxes.clear();
    folder_.folder.Write("Databases/" + folder_.dataset + "_New.mdb", "left by an earlier attempt");
    const std::size_t logged = folder_.LogLines().size();
    Answer(Answer::kYes);
    EXPECT_EQ(dialog.Delete(), MaintenanceResult::kDone);
    ASSERT_EQ(folder_.ui.boxes.size(), 2U);
    EXPECT_EQ(folder_.ui.boxes[0].text,
              "Are you sure you wish to PERMANENTLY DELETE the selected Zorvelrun dataset?");
    EXPECT_EQ(folder_.ui.boxes[0].default_answer, Answer::kNo);
    EXPECT_EQ(folder_.ui.boxes[1].text, kEmpty);
    const std::vector<std::string> log = folder_.LogLines();
    ASSERT_EQ(log.size(), logged + 4);
    EXPECT_EQ(log[logged], "    Deleting 'Zorvel_261116172805.MDB' database details from the MasterDB");
    EXPECT_EQ(log[logged + 1], "    Physically deleting '" + file_ + "'");
    EXPECT_FALSE(folder_.files.Exists(file_));
    EXPECT_FALSE(folder_.files.Exists(file_ + "_New.mdb"));
    EXPECT_TRUE(folder_.catalogue->List().empty());
    EXPECT_FALSE(dialog.butDeleteEnabled);
    EXPECT_EQ(dialog.summary.tree, "");
}

TEST_F(Maintenance, LeavesNoCopyWhenTheDiskIsFull) {
    Import();
    const std::string before = folder_.folder.Read("Databases/" + folder_.dataset);
    DatabaseMaintenance& dialog = Opened();
    Answer(Answer::kYes);
    {
        const test::FileSizeLimit limit(before.size() / 2);
        EXPECT_EQ(dialog.Compact(), MaintenanceResult::kFailed);
    }
    EXPECT_EQ(folder_.ui.boxes.back().text,
              "Unexpected error 61 (Disk full) occurred in Compact routine at Line 4");
    EXPECT_EQ(folder_.folder.Read("Databases/" + folder_.dataset), before);
    EXPECT_EQ(folder_.files.List(folder_.files.Path("Databases"), "", "").size(), 2U);
}

TEST_F(Maintenance, DeletesTheFileFirstWhenTheDiskIsFull) {
    Import();
    DatabaseMaintenance& dialog = Opened();
    Answer(Answer::kYes);
    {
        const test::FileSizeLimit limit(4000);  // not even the removal of a row can be noted
        EXPECT_EQ(dialog.Delete(), MaintenanceResult::kFailed);
    }
    EXPECT_EQ(folder_.ui.boxes.back().text, "Error no. 61 (Disk full) occurred in butDelete at Line 2");
    EXPECT_FALSE(folder_.files.Exists(file_));
    EXPECT_THAT(folder_.LogLines(),
                Contains(HasSubstr(" WARNING: The disk is full: the file of '" + folder_.dataset)));
    EXPECT_EQ(folder_.catalogue->List().size(), 1U);
}

TEST_F(Maintenance, DeletesHalfAnImportWithoutTheWholeOneThatWasSetAside) {
    const std::string name = test::DatasetOfDay(16, "").DBName;
    for (const bool whole : {false, true}) {
        test::AddDataset(folder_.folder, name, whole);
        if (!whole) test::AddDataset(folder_.folder, name + ".previous");
        folder_.catalogue->Add(test::DatasetOfDay(16, ""));
        DatabaseMaintenance& dialog = Opened();
        folder_.ui.answers = {zorvel::Answer::kYes};
        EXPECT_EQ(dialog.Delete(), MaintenanceResult::kDone);
        EXPECT_FALSE(folder_.folder.Has("Databases/" + name));
        EXPECT_EQ(folder_.folder.Has("Databases/" + name + ".previous"), !whole);
    }
    EXPECT_THAT(folder_.LogLines(),
                Contains(HasSubstr(" WARNING: The dataset that was set aside for it stays: '")));
}

TEST_F(Maintenance, TellsWhichStepFailedWhenTheFileIsGone) {
    Import();
    folder_.files.Remove(file_);
    DatabaseMaintenance& dialog = Opened();
    Answer(Answer::kYes);
    EXPECT_EQ(dialog.Compact(), MaintenanceResult::kFailed);
    EXPECT_EQ(folder_.ui.boxes.back().text,
              "Unexpected error 53 (File not found) occurred in Compact routine at Line 2");
    EXPECT_THAT(folder_.ui.boxes.back().detail, HasSubstr("Zorvel_261116172805.MDB: File not found"));
    EXPECT_EQ(folder_.ui.boxes.back().icon, MessageIcon::kCritical);
    Answer(Answer::kYes);
    EXPECT_EQ(dialog.Delete(), MaintenanceResult::kFailed);
    EXPECT_EQ(folder_.ui.boxes.back().text, "Error no. 53 (File not found) occurred in butDelete at Line 3");
    EXPECT_EQ(folder_.ui.boxes.back().icon, MessageIcon::kNone);
    const std::vector<std::string> log = folder_.LogLines();
    EXPECT_THAT(log, Contains(" WARNING: Unexpected error # 53 (File not found) occurred in Compact routine "
                              "at Line  2 - continuing..."));
    EXPECT_THAT(log, Contains(" ERROR: Unexpected error # 53 (File not found) occurred in butDelete "
                              "procedure at Line 3 - continuing"));
    EXPECT_TRUE(folder_.catalogue->List().empty());
}

}  // namespace
}  // namespace zorvel

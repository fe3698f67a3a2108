// The dialog that confirms an import.
#include "database/capture_details.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "database/dataset_folder.h"

namespace zorvel {
namespace {

using testing::ElementsAre;

struct Dialog : test::DatasetFolder {
    CaptureDetails dialog{services, *catalogue};

    void WriteRecord(const std::string& text) { folder.Write("TempData/Zorvel_CaptureDetails.CSV", text); }
};

constexpr const char* kRecord =
    "16/11/2026 17:28:05,CORP_TREE,\"APPS, all.SITE\",1234,10,,30,40,50,60,Zorvelrun\r\n";

TEST(CaptureDetails, SaysThatThereIsNoRun) {
    Dialog test;
    EXPECT_FALSE(test.dialog.Open());
    EXPECT_EQ(test.ui.boxes.at(0).icon, MessageIcon::kExclamation);
    EXPECT_EQ(test.OnlyBox(),
              "There is no record of a successful Zorvelrun having been done. Please retry the import once a "
              "successful analysis of at least one NAL object has been completed.");
}

TEST(CaptureDetails, ShowsTheLastRun) {
    Dialog test;
    test.WriteRecord(kRecord);
    ASSERT_TRUE(test.dialog.Open());
    EXPECT_EQ(test.dialog.caption, "Please confirm details of last Zorvelrun..");
    EXPECT_THAT(test.dialog.labData,
                ElementsAre("16/11/2026 17:28:05", "CORP_TREE", "APPS, all.SITE", "1,234"));
    EXPECT_EQ(test.dialog.labWarning, "");
    EXPECT_EQ(test.dialog.txtComments, "(Please enter your comments about this Zorvelrun)");
    EXPECT_TRUE(test.dialog.butOkVisible);
    EXPECT_FALSE(test.dialog.frameStatusVisible);
    test.dialog.Cancel();
    EXPECT_TRUE(test.dialog.closed);
    EXPECT_TRUE(test.ui.boxes.empty());
}

TEST(CaptureDetails, WarnsOfARunThatWasImported) {
    Dialog test;
    test.WriteRecord(kRecord);
    test.folder.Write("Databases/zorvel_261116172805.mdb", "");
    ASSERT_TRUE(test.dialog.Open());
    EXPECT_EQ(test.dialog.labWarning, "Note that this Zorvelrun already appears to have been imported..");
    test.files.Remove(test.files.Path("Databases\\zorvel_261116172805.mdb"));
    test::AddDataset(test.folder, "Zorvel_261116172805.MDB", false);
    ASSERT_TRUE(test.dialog.Open());
    EXPECT_EQ(test.dialog.labWarning, "Note that an earlier import of this Zorvelrun was not completed..");
}

TEST(CaptureDetails, ImportsWithTheUsersComment) {
    Dialog test;
    test.WriteRecord(kRecord);
    ASSERT_TRUE(test.dialog.Open());
    test.dialog.txtComments = "it's mine";
    test.ui.on_events = [&] {
        EXPECT_EQ(test.dialog.caption, "Importing last Zorvelrun..");
        EXPECT_FALSE(test.dialog.butOkVisible);
        EXPECT_TRUE(test.dialog.frameStatusVisible);
        test.dialog.Cancel();
        EXPECT_FALSE(test.dialog.closed) << "an import that runs goes on";
    };
    EXPECT_EQ(test.dialog.BeginImport(test.display), ImportResult::kDone);
    EXPECT_TRUE(test.dialog.closed);
    const auto rows = test.catalogue->List();
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows[0].Captured, "16/11/2026 17:28:05");
    EXPECT_EQ(rows[0].Tree, "CORP_TREE");
    EXPECT_EQ(rows[0].Description, "it's mine");
    EXPECT_EQ(rows[0].DBName, test.dataset);
    EXPECT_EQ(rows[0].OU, "APPS, all.SITE");
    EXPECT_EQ(rows[0].AppCount, 1234);
    EXPECT_THAT(rows[0].Counts, ElementsAre(10, 0, 30, 40, 50, 60));
}

TEST(CaptureDetails, SaysWhatIsWrongWithTheRecord) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"", "62 (Input past end of file)"},
        {"16/11/2026 17:28:05,CORP_TREE", "62 (Input past end of file)"},
        {"yesterday,T,O,1,1,1,1,1,1,1,Find\r\n", "13 (Type mismatch)"},
        {"16/11/2026 17:28:05,T,O,99999999999,1,1,1,1,1,1,Find\r\n", "6 (Overflow)"},
    };
    for (const auto& [record, text] : cases) {
        Dialog test;
        test.WriteRecord(record);
        EXPECT_FALSE(test.dialog.Open());
        EXPECT_THAT(test.ui.boxes.at(0).detail, testing::HasSubstr("TempData\\Zorvel_CaptureDetails.CSV"));
        EXPECT_EQ(test.OnlyBox(), "ERROR: Unexpected error # " + text + " occurred in frmCaptureDetails");
        EXPECT_THAT(test.LogLines(), testing::Contains(" ERROR: Unexpected error # " + text +
                                                       " occurred in frmCaptureDetails"));
    }
}

}  // namespace
}  // namespace zorvel

// The master catalogue, and the list and summary made of it.
#include "database/catalogue.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "database/dataset_folder.h"
#include "database/dataset_list.h"
#include "platform/error.h"

namespace zorvel {
namespace {

CatalogueRow Row(const std::string& captured, const std::string& name, const std::string& description) {
    CatalogueRow row;
    row.Captured = captured;
    row.Tree = "CORP_TREE";
    row.OU = "APPS.SITE";
    row.Description = description;
    row.AppCount = 1234;
    row.DBName = name;
    row.Counts = {10, 20, 30, 40, 50, 6000};
    return row;
}

class CatalogueOfThree : public testing::Test {
  protected:
    CatalogueOfThree() {
        folder_.catalogue->Add(Row("31/01/2026 10:00:00", "Zorvel_260131100000.MDB", "first"));
        folder_.catalogue->Add(Row("01/02/2026 09:00:00", "Zorvel_260201090000.MDB", "it's the \xE9lite's"));
        folder_.catalogue->Add(Row("28/12/2025 23:59:59", "Zorvel_251228235959.MDB", ""));
    }
    test::DatasetFolder folder_;
};

TEST_F(CatalogueOfThree, ListsTheNewestRunFirst) {
    EXPECT_EQ(
        ListItems(folder_.catalogue->List()),
        (std::vector<std::string>{"01/02/2026 09:00:00  -  it's the \xE9lite's  -  Zorvel_260201090000.MDB",
                                  "31/01/2026 10:00:00  -  first  -  Zorvel_260131100000.MDB",
                                  "28/12/2025 23:59:59  -    -  Zorvel_251228235959.MDB"}));
}

TEST_F(CatalogueOfThree, HoldsTheColumnsInTheOrderOfTheTable) {
    EXPECT_EQ(test::DatasetFolder::Select(*folder_.master,
                                          "Captured, Tree, OU, Description, AppCount, DBName, CountFiles, "
                                          "CountINI, CountText, CountMacros, CountRegistry, CountIssues",
                                          "Zorvel_CaptureDetails")[1],
              "2026-02-01 09:00:00|CORP_TREE|APPS.SITE|it's the "
              "\xE9lite's|1234|Zorvel_260201090000.MDB|10|20|30|40|50|"
              "6000");
}

TEST_F(CatalogueOfThree, SummarisesTheChosenDataset) {
    const DatasetSummary summary = SummaryOf(folder_.files, *folder_.catalogue, "Zorvel_260131100000.MDB");
    EXPECT_EQ(summary.captured, "31/01/2026 10:00:00");
    EXPECT_EQ(summary.tree, "CORP_TREE");
    EXPECT_EQ(summary.container, "APPS.SITE");
    EXPECT_EQ(summary.applications, "1,234");
    EXPECT_EQ(summary.issues, "6,000");
    EXPECT_EQ(summary.comments, "first");
    EXPECT_EQ(SummaryOf(folder_.files, *folder_.catalogue, "Zorvel_none").tree, "");
}

TEST_F(CatalogueOfThree, RemovesEveryRowOfADataset) {
    folder_.catalogue->Add(Row("31/01/2026 10:00:00", "Zorvel_260131100000.MDB", "again"));
    folder_.catalogue->Remove("Zorvel_260131100000.MDB");
    EXPECT_EQ(folder_.catalogue->List().size(), 2U);
    EXPECT_FALSE(folder_.catalogue->Fetch("Zorvel_260131100000.MDB"));
}

TEST_F(CatalogueOfThree, TellsWhatTheLastImportOfARunSaid) {
    folder_.catalogue->Add(Row("31/01/2026 10:00:00", "Zorvel_260131100000.MDB", "again"));
    EXPECT_EQ(SummaryOf(folder_.files, *folder_.catalogue, "Zorvel_260131100000.MDB").comments, "again");
}

TEST_F(CatalogueOfThree, RunsNothingThatStandsInANameOrAContainer) {
    // A comment can look like the name of a dataset.
    for (const char* name :
         {"Zorvel_x' OR '1'='1", "Zorvel_'; DELETE FROM Zorvel_CaptureDetails; --", "Zorvel_O'Brien"}) {
        folder_.catalogue->Remove(name);
        EXPECT_FALSE(folder_.catalogue->Fetch(name)) << name;
    }
    CatalogueRow row = Row("31/01/2026 10:00:00", "Zorvel_1.MDB", "");
    row.OU = "O'Brien.SITE";
    EXPECT_THROW(folder_.catalogue->Add(row), Error);
    row.OU = "x'||'y";
    EXPECT_THROW(folder_.catalogue->Add(row), Error);
    EXPECT_EQ(folder_.catalogue->List().size(), 3U);
}

TEST(DatasetOf, TakesTheTextFromTheFirstMark) {
    EXPECT_EQ(DatasetOf("31/01/2026  -  all  -  Zorvel_1.MDB"), "Zorvel_1.MDB");
    EXPECT_EQ(DatasetOf("31/01/2026  -  my Zorvel_ run  -  Zorvel_1.MDB"), "Zorvel_ run  -  Zorvel_1.MDB");
}

}  // namespace
}  // namespace zorvel

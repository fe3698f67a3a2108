// The delivered databases: tables, columns, defaults and the issue catalogue.
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "database/dataset_folder.h"
#include "database/key_allocator.h"
#include "issues/issue_catalogue.h"
#include "platform/error.h"

namespace zorvel {
namespace {

using test::DatasetFolder;

std::string Columns(const Database& database, const std::string& table) {
    std::string columns;
    Rows rows = database.Query("SELECT name FROM pragma_table_info('" + table + "') ORDER BY cid");
    while (rows.Next())
        columns += (columns.empty() ? "" : ", ") + rows.Text("name");
    return columns;
}

Database Template(const DatasetFolder& folder) {
    const std::string path = folder.files.Path("Empty_Zorvel.mdb");
    return {folder.files.Resolve(path), path};
}

TEST(Schema, HasEveryTableWithItsColumnsInOrder) {
    const DatasetFolder folder;
    const Database dataset = Template(folder);
    const std::vector<std::pair<std::string, std::string>> tables = {
        {"Zorvel_Apps",
         "AppUniqueRef, AppName, AppOU, AppCaption, AppIconOrder, AFDisconnectable, AFWaitOnForceRun, "
         "AFShowProgress, AFDistributeAlways, AFPromptBeforeDist, AFPromptForReboot, AFInstallOnly, "
         "AFRunOnce, AFForceRunIfWS, AFRun16BitSeparate, AFClearUpNetwork, AFPreInstallSched, AFRebootType, "
         "AFExeSecLevel, AFRunOption, DAFForceCache, DAFQuickLaunch, DAFSysTray, DAFDesktop, DAFStartMenu, "
         "DAFForceRun, DAFAppLaunch"},
        {"Zorvel_AppDetails", "AppUniqueRef, Attribute, Data"},
        {"Zorvel_Macros", "AppUniqueRef, Macro, Value, MinSpace, Prompt"},
        {"Zorvel_Issues", "AppUniqueRef, EntryType, TargetFile, SourceFile, IssueCode"},
        {"Zorvel_CopyFiles", "AppUniqueRef, Target, Source, CopyMode"},
        {"Zorvel_INISettings", "AppUniqueRef, Data, Section, Value, Target, Notes"},
        {"Zorvel_RegistrySettings", "AppUniqueRef, Key, Data, Value, Mode"},
        {"Zorvel_AppAssociations",
         "AppUniqueRef, AssocByGroup, AssocByOU, AssocByWS, TotAssociations, AppFingerPrint"},
        {"Zorvel_Associations", "AppUniqueRef, FullUserID, FullAssociation, AssociationType"},
        {"Zorvel_Settings", "Setting, Value"},
        {"Zorvel_Import",
         "Run, Tree, OU, Description, AppCount, CountFiles, CountINI, CountText, CountMacros, CountRegistry, "
         "CountIssues, Begun, Completed, Apps, AppDetails, Macros, Issues, CopyFiles, INISettings, "
         "RegistrySettings, AppAssociations, Associations"},
        {"Zorvel_Resolutions", "IssueCode, IssueShortDesc, Resolution, Severity"},
        {"Zorvel_CaptureDetails", ""},
    };
    for (const auto& [table, columns] : tables)
        EXPECT_EQ(Columns(dataset, table), columns);
    EXPECT_EQ(
        Columns(*folder.master, "Zorvel_CaptureDetails"),
        "Captured, Tree, OU, Description, AppCount, DBName, CountFiles, CountINI, CountText, CountMacros, "
        "CountRegistry, CountIssues");
}

TEST(Schema, GivesANewApplicationTheValuesOfClearFlags) {
    const DatasetFolder folder;
    Database dataset = Template(folder);
    dataset.Execute(
        "INSERT INTO Zorvel_Apps (AppUniqueRef,AppName,AppOU,AppCaption,AppIconOrder) VALUES "
        "(1,'A','B','',0)");
    EXPECT_EQ(
        DatasetFolder::Select(dataset, Columns(dataset, "Zorvel_Apps"), "Zorvel_Apps"),
        std::vector<std::string>{"1|A|B||0|1|0|1|0|0|1|0|0|0|0|1|0|If Needed|User|Normal|0|0|0|0|0|0|0"});
    EXPECT_THROW(dataset.Execute("INSERT INTO Zorvel_Apps (AppUniqueRef,AppName,AppOU) VALUES (2,'A','B')"),
                 Error);
}

TEST(Schema, ExplainsEveryIssueOfTheCatalogue) {
    const DatasetFolder folder;
    const Database dataset = Template(folder);
    Rows rows = dataset.Query("SELECT * FROM Zorvel_Resolutions ORDER BY rowid");
    for (const IssueDescription& issue : IssueCatalogue()) {
        ASSERT_TRUE(rows.Next()) << issue.code;
        EXPECT_EQ(rows.Text("IssueCode"), issue.code);
        EXPECT_EQ(rows.Text("IssueShortDesc"), issue.short_text);
        EXPECT_EQ(rows.Text("Resolution"), issue.remedy);
        EXPECT_EQ(rows.Text("Severity"), SeverityText(issue.severity));
    }
    EXPECT_FALSE(rows.Next());
}

TEST(Schema, KeepsTheMasterCatalogueThatIsThere) {
    DatasetFolder folder;
    CatalogueRow row;
    row.Captured = "16/11/2026 17:28:05";
    row.DBName = folder.dataset;
    folder.catalogue->Add(row);
    test::AddDatabases(folder.folder);
    EXPECT_EQ(Catalogue(*folder.master).List().size(), 1U);
    EXPECT_EQ(folder.files.List(folder.files.ProgramFolder(), "", ".new").size(), 0U);
}

TEST(KeyAllocator, HandsOutConsecutiveKeysAndKeepsTheLast) {
    const DatasetFolder folder;
    Database dataset = Template(folder);
    KeyAllocator keys(dataset);
    EXPECT_EQ(keys.Next(), "1");
    EXPECT_EQ(keys.Next(), "2");
    EXPECT_EQ(DatasetFolder::Select(dataset, "Setting, [Value]", "Zorvel_Settings"),
              std::vector<std::string>{"NextAppUniqueRef|2"});
    dataset.Execute("UPDATE Zorvel_Settings SET [Value]='41 and more'");
    EXPECT_EQ(keys.Next(), "42");
    dataset.Execute("DELETE FROM Zorvel_Settings");
    EXPECT_THROW(keys.Next(), Error);
}

}  // namespace
}  // namespace zorvel

// Reports from the menu entry to the prepared report: catalogue, log, query, failures.
#include "reporting/reports.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "reporting/report_fixture.h"
#include "reporting/report_query.h"

namespace zorvel {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class ReportsTest : public testing::Test {
  protected:
    ReportsTest() {
        for (const CatalogueReport& report : CatalogueReports()) {
            std::filesystem::copy_file(ZORVEL_SOURCE_DIR "/program/Reports/" + std::string(report.definition),
                                       folder_.folder.path() / "Reports" / report.definition);
        }
        folder_.Fill(
            "INSERT INTO Zorvel_Apps (AppUniqueRef, AppName, AppOU, AppCaption) VALUES (1, 'Word', 'A.SITE', "
            "'Z'),"
            " (2, 'Calc', 'A.SITE', 'Y'), (3, 'Draw', 'B.SITE', 'X');"
            "INSERT INTO Zorvel_Issues VALUES (1, 'File', 't', 's', 'FILEOLD'), (1, 'File', 'u', 's', "
            "'FILEOLD'),"
            " (2, 'File', 't', 's', 'FILEBAK'), (3, 'Application', '', '', 'NOSUCHRULE');");
        display_.choose = [this](ReportChoice& choice) {
            choice.dataset = folder_.dataset;
            choice.sort = "Application Caption";
        };
    }
    ReportOutcome Generate(const std::string& caption) {
        return Reports(folder_.services, *folder_.catalogue, choice_, display_).Generate(caption);
    }
    // The values of a field, from top to bottom.
    std::vector<std::string> Values(const std::string& field) const {
        const ReportRows& rows = display_.report->rows();
        std::size_t number = 0;
        while (rows.fields().at(number) != field)
            ++number;
        std::vector<std::string> values;
        for (std::size_t row = 0; row < rows.size(); ++row)
            values.emplace_back(rows.Value(row, number));
        return values;
    }
    std::string Folder() const { return folder_.files.ProgramFolder(); }
    void WriteQuery(const std::string& query) const {
        folder_.folder.Write("Reports/Zorvel_AppIssues.rpt",
                             "title = \"t\"\nquery = \"" + query + "\"\n[[column]]\nfield = \"x\"\n");
    }

    test::ReportFolder folder_;
    test::FakeDisplay display_;
    ReportChoice choice_;
};

TEST(ReportCatalogue, SortAndFilterTextsFollowTheCatalogue) {
    const struct {
        const char* caption;
        const char* sort;
        bool descending;
        const char* text;
    } kCases[] = {
        {"Issue Summary", "Application Name", false,
         "`Zorvel_Apps`.`AppOU`, `Zorvel_Apps`.`AppName` ASC, `Zorvel_Issues`.`EntryType`"},
        {"Issue Detail", "Application Caption", true,
         "`Zorvel_Apps`.`AppOU`, `Zorvel_Apps`.`AppCaption` DESC, `Zorvel_Issues`.`TargetFile`, "
         "`Zorvel_Issues`.`EntryType`"},
        {"Run Order Summary", "Application Icon/Run Order", false,
         "`Zorvel_Apps`.`AppOU`, `Zorvel_Apps`.`AppIconOrder` ASC"},
        {"Macro Details", "Application Icon/Run Order", false, ""},
        {"Associations Summary", "Application Caption", false, ""},
        {"Associations by User", "Application Name", false, ""},
        {"Application 'Fingerprint' Summary", "Application Name", true, ""},
        {"Registry Details", "", true, ""},
    };
    for (const auto& test : kCases)
        EXPECT_EQ(FindReport(test.caption)->SortText(test.sort, test.descending), test.text) << test.caption;
    EXPECT_EQ(FindReport("Issue Summary")->FilterText("'A','B'"),
              "WHERE `Zorvel_Issues`.`IssueCode` NOT IN ('A','B')");
    EXPECT_EQ(FindReport("Issue Summary")->FilterText(""), "");
    EXPECT_EQ(FindReport("Registry Details")->FilterText("'A'"), "");
    EXPECT_EQ(FindReport("issue summary"), nullptr);
}

TEST(ReportQuery, OrderIsReplacedAndFilterPutAheadOfIt) {
    const struct {
        const char* query;
        const char* sort;
        const char* filter;
        const char* imposed;
    } kCases[] = {
        {"SELECT a FROM t ORDER BY a, b", "c DESC", "", "SELECT a FROM t ORDER BY c DESC"},
        {"SELECT a FROM t\norder by\ta", "c", "WHERE x", "SELECT a FROM t\nWHERE x\r\norder by\tc"},
        {"SELECT a FROM t ORDER BY a", "", "WHERE x", "SELECT a FROM t WHERE x\r ORDER BY a"},
        {"SELECT a FROM t", "c", "WHERE x", "SELECT a FROM t"},
        {"ORDER BY a", "c", "WHERE x", "ORDER BY a"},
        {"SELECT a ORDER BY", "c", "", "SELECT a ORDER BYc"},
        {"SELECT (SELECT 1 ORDER BY 1) ORDER BY a", "c", "", "SELECT (SELECT 1 ORDER BY c"},
    };
    for (const auto& test : kCases)
        EXPECT_EQ(ImposeFilter(ImposeSort(test.query, test.sort), test.filter), test.imposed) << test.query;
}

TEST_F(ReportsTest, AReportIsPreparedInTheOrderAndWithoutTheIssuesThatWereChosen) {
    display_.choose = [this](ReportChoice& choice) {
        EXPECT_EQ(choice.caption, "Issue Summary");
        choice = {choice.caption, folder_.dataset, "Application Name", true, "'FILEBAK','FILEPWL'", false};
    };
    EXPECT_EQ(Generate("Issue Summary"), ReportOutcome::kShown);
    EXPECT_THAT(Values("AppName"), ElementsAre("Word", "Draw"));
    EXPECT_THAT(Values("Issues"), ElementsAre("2", "1"));
    EXPECT_THAT(Values("IssueShortDesc"),
                ElementsAre("Superseded copy of a file (.OLD)", "An issue without a description"));
    const ReportFacts& facts = display_.report->facts();
    EXPECT_EQ(facts.order, "Application Name, descending");
    EXPECT_EQ(facts.excluded, "'FILEBAK','FILEPWL'");
    EXPECT_EQ(facts.tree, "CORP_TREE");
    EXPECT_EQ(facts.captured, "16/11/2026 17:28:05");
    EXPECT_EQ(facts.comment, "O'Brien's run");
    EXPECT_THAT(folder_.LogLines(),
                ElementsAre("    Creating Zorvel System DSN if neccessary...",
                            "    Reporting: Source DB set to '" + Folder() + "\\Databases\\Zorvel_1.MDB'",
                            "    Reporting: Launching '" + Folder() + "\\Reports\\Zorvel_AppIssues.rpt'"));
    EXPECT_EQ(folder_.folder.Read("odbc.ini"), "[Zorvel]\nDriver = SQLite3\nDatabase =\n");
}

TEST_F(ReportsTest, FilesAndFoldersStandWithTheirWholePathsWhateverIsDoneToThem) {
    folder_.Fill(
        "INSERT INTO Zorvel_CopyFiles VALUES (1, 'C:\\T.DLL', 's:\\t.dll', 'Copy Always'),"
        " (1, '', 'c:\\x\\o.tmp', 'Delete'), (1, 'App', 'C:\\P', 'Create Directory'),"
        " (1, 'Old', NULL, 'Delete Directory')");
    EXPECT_EQ(Generate("FIL File Details"), ReportOutcome::kShown);
    EXPECT_THAT(Values("Path"), ElementsAre("c:\\x\\o.tmp", "C:\\P\\App", "C:\\T.DLL", "Old"));
    EXPECT_THAT(Values("CopiedFrom"), ElementsAre("", "", "s:\\t.dll", ""));
}

TEST_F(ReportsTest, AQueryWithoutOrderStaysAsItIsAndTheReportDoesNotClaimOtherwise) {
    folder_.folder.Write("Reports/Zorvel_AppIssues.rpt",
                         "title = \"t\"\nquery = \"SELECT IssueCode FROM Zorvel_Issues\"\n"
                         "[[column]]\nfield = \"IssueCode\"\n");
    display_.choose = [this](ReportChoice& choice) {
        choice = {choice.caption, folder_.dataset, "Application Name", true, "'FILEBAK'", false};
    };
    EXPECT_EQ(Generate("Issue Summary"), ReportOutcome::kShown);
    EXPECT_THAT(Values("IssueCode"),
                testing::UnorderedElementsAre("FILEOLD", "FILEOLD", "FILEBAK", "NOSUCHRULE"));
    EXPECT_EQ(display_.report->facts().order, "");
    EXPECT_EQ(display_.report->facts().excluded, "");
}

TEST_F(ReportsTest, CaptureDetailsAsksNothingAndReportsOnTheMasterCatalogue) {
    EXPECT_EQ(Generate("Capture Details Summary"), ReportOutcome::kShown);
    EXPECT_EQ(display_.asked, 0);
    EXPECT_EQ(choice_.dataset, "ZorvelMaster.mdb");
    EXPECT_THAT(Values("DBName"), ElementsAre("Zorvel_1.MDB"));
}

TEST_F(ReportsTest, ACancelledReportLeavesNothingBehind) {
    display_.choose = [](ReportChoice& choice) { choice.cancelled = true; };
    EXPECT_EQ(Generate("Issue Summary"), ReportOutcome::kCancelled);
    EXPECT_EQ(display_.report, nullptr);
    EXPECT_THAT(folder_.LogLines(), IsEmpty());
    EXPECT_FALSE(folder_.folder.Has("odbc.ini"));
}

TEST_F(ReportsTest, TheDataSourceIsRegisteredOnceAndBesideOthers) {
    folder_.folder.Write("odbc.ini", "[Other]\nDriver = X");
    Generate("Issue Summary");
    Generate("Issue Summary");
    EXPECT_EQ(folder_.folder.Read("odbc.ini"),
              "[Other]\nDriver = X\n[Zorvel]\nDriver = SQLite3\nDatabase =\n");
}

TEST_F(ReportsTest, AFailedRegistrationIsLoggedAndTheReportGoesOn) {
    std::filesystem::create_directory(folder_.folder.path() / "odbc.ini");
    EXPECT_EQ(Generate("Issue Summary"), ReportOutcome::kShown);
    EXPECT_THAT(folder_.LogLines(), testing::Contains(" ERROR: DSN creation procedure failed.."));
    EXPECT_THAT(folder_.ui.boxes, IsEmpty());
}

TEST_F(ReportsTest, TheUserCanEndItWhereverItIsAndIsToldNothing) {
    int asked = 0;
    const auto generate = [&](int last) {
        asked = 0;
        display_.report = nullptr;
        display_.interrupted = [this, &asked, last] {
            EXPECT_TRUE(folder_.activity.Busy);
            return asked++ == last;
        };
        const ReportOutcome outcome = Generate("Issue Summary");
        EXPECT_FALSE(folder_.activity.Busy);
        EXPECT_EQ(display_.report != nullptr, outcome == ReportOutcome::kShown);
        return outcome;
    };
    const std::string numbers = "WITH N(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM N";
    WriteQuery(numbers + ") SELECT count(*) AS x FROM N");
    EXPECT_EQ(generate(100), ReportOutcome::kInterrupted) << "a query without an end";

    WriteQuery(numbers + " LIMIT 3000) SELECT x FROM N");
    std::ofstream(folder_.folder.path() / "Reports/Zorvel_AppIssues.rpt", std::ios::app)
        << "[[group]]\nby = \"x\"\nheading = \"{x}\"\n[[total]]\nheading = \"t\"\nsum = \"x\"\n"
           "[[chart]]\nheading = \"c\"\nby = \"x\"\nlabel = \"{x}\"\n";
    ASSERT_EQ(generate(-1), ReportOutcome::kShown);
    const int all = asked;
    // The last questions come while rows are gathered and added up.
    for (const int last : {0, all / 2, all - 12, all - 9, all - 6, all - 3, all - 1})
        EXPECT_EQ(generate(last), ReportOutcome::kInterrupted) << last << " of " << all;
    EXPECT_THAT(folder_.ui.boxes, IsEmpty());
    EXPECT_THAT(folder_.LogLines(), testing::Contains("    Reporting: Interrupted at user request").Times(8));
}

TEST_F(ReportsTest, WhatFailsIsToldAndTheProgramGoesOn) {
    folder_.folder.Write("Databases/text.mdb", "this is no database, however long it may be...............");
    const struct {
        const char* name;
        std::function<void()> prepare;
        std::string box;  // beginning
        std::string log;
    } kCases[] = {
        {"a missing definition",
         [&] { std::filesystem::remove(folder_.folder.path() / "Reports/Zorvel_AppIssues.rpt"); },
         "Error No. 53 (File not found) has occurred in 'Report Launch'|" + Folder() +
             "\\Reports\\Zorvel_AppIssues.rpt: File not found",
         "WARNING: Unexpected error # 53 (File not found) occurred in Report Launch - continuing..."},
        {"a bad definition", [&] { folder_.folder.Write("Reports/Zorvel_AppIssues.rpt", "title = 5\n"); },
         "Error No. 13 (" + Folder() +
             "\\Reports\\Zorvel_AppIssues.rpt, line 1: \"title\": expected a text in quotes)",
         "WARNING: Unexpected error # 13 ("},
        {"a query that fails", [&] { WriteQuery("SELECT x FROM nowhere ORDER BY x"); },
         "Zorvel_AppIssues.rpt, line 2: the query failed: no such table: nowhere; expected a SELECT over the "
         "tables of Zorvel_1.MDB)",
         "Zorvel_1.MDB: no such table"},
        {"a query that does not bear the order",
         [&] { WriteQuery("SELECT IssueCode FROM Zorvel_Issues ORDER BY IssueCode"); },
         "line 2: the query failed: no such column: Zorvel_Apps.AppOU; expected one ORDER BY, at the query's "
         "end, no WHERE, and tables without an alias, `Zorvel_Apps` among them)",
         "Zorvel_1.MDB: no such column"},
        {"a query that writes",
         [&] { WriteQuery("VACUUM INTO '" + (folder_.folder.path() / "Copy.mdb").string() + "'"); },
         "Zorvel_AppIssues.rpt, line 2: the query failed: the statement is no SELECT; expected a SELECT over "
         "the tables of Zorvel_1.MDB)",
         "Zorvel_1.MDB: the statement is no SELECT"},
        {"a query that changes how the store works", [&] { WriteQuery("PRAGMA synchronous=0"); },
         "line 2: the query failed: not authorized; expected a SELECT over the tables of Zorvel_1.MDB)",
         "Zorvel_1.MDB: not authorized"},
        {"a missing dataset", [&] { folder_.dataset = "gone.mdb"; }, "Error No. -2147467259 (",
         "Report Launch"},
        {"a dataset that is none", [&] { folder_.dataset = "text.mdb"; },
         "Error No. -2147467259 (file is not a database)", "Report Launch"},
        {"options that fail",
         [&] { display_.choose = [](ReportChoice&) { throw Error(errors::kStore, "gone"); }; },
         "Error No. -2147467259 (gone) has occurred in 'Reporting'",
         "WARNING: Unexpected error # -2147467259 (gone) occurred in Reporting module - continuing..."},
    };
    for (const auto& test : kCases) {
        test.prepare();
        EXPECT_EQ(Generate("Issue Summary"), ReportOutcome::kFailed) << test.name;
        EXPECT_THAT(folder_.ui.boxes.back().icon, MessageIcon::kExclamation);
        const std::string detail = folder_.ui.boxes.back().detail;
        EXPECT_THAT(folder_.OnlyBox() + "|" + detail, HasSubstr(test.box)) << test.name;
        EXPECT_THAT(folder_.LogLines(), testing::Contains(HasSubstr(test.log))) << test.name;
        EXPECT_THAT(folder_.ui.sounds.empty(), !folder_.options.session.SoundsEnabled);
    }
    EXPECT_EQ(display_.report, nullptr);
    EXPECT_FALSE(folder_.folder.Has("Copy.mdb"));
}

}  // namespace
}  // namespace zorvel

// zorvel-batch reports and report as a shell user meets them.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <fstream>
#include <limits>
#include <sstream>
#include <thread>

#include "batch/batch_run.h"
#include "batch/interrupting_buffer.h"
#include "paper/headless_pdf.h"
#include "support/databases.h"
#include "support/file_size_limit.h"

namespace zorvel {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

using Result = test::BatchResult;

// A program folder that holds the reports and, once Analyse was called, a dataset of three applications.
class BatchReport : public testing::Test {
  protected:
    BatchReport() {
        using namespace test;
        FillWholeProgramFolder(
            folder_, LdifOrganization("S\xC3\xA9") +
                         LdifApplication("Word", "o=S\xC3\xA9", "appCaption: Editor\nappIconOrder: 5000\n") +
                         LdifApplication("Calc", "o=S\xC3\xA9", "appCaption: Sums\nappIconOrder: 9\n") +
                         LdifApplication("Draw", "o=S\xC3\xA9", "appCaption: Art\nappIconOrder: 7\n"));
        std::filesystem::copy(ZORVEL_SOURCE_DIR "/program/Reports", folder_.path() / "Reports");
    }

    Result Run(const std::vector<std::string>& arguments) const {
        return test::RunBatch(folder_, arguments, WritePdfWithoutDisplay);
    }
    // Makes a report, by default into the file "out.csv" of the folder.
    Result Report(std::vector<std::string> arguments, const std::string& output = "out.csv") const {
        arguments.insert(arguments.begin(), {"report", "--output", (folder_.path() / output).string()});
        return Run(arguments);
    }
    // Makes the dataset, whose name it keeps, and beside it an older copy of it.
    void Analyse() {
        const Result analysis = Run({"analyse", "--all", "--pace", "0", "--import"});
        ASSERT_EQ(analysis.status, 0) << analysis.err;
        const std::string line = Run({"datasets"}).out;
        dataset_ = line.substr(line.find("Zorvel_"), 23);
        Sql("Databases/ZorvelMaster.mdb",
            "INSERT INTO Zorvel_CaptureDetails (Captured, Tree, OU, Description, AppCount, DBName) VALUES "
            "('2001-02-03 04:05:06', 'OLD_TREE', 'OLD', '', 1, 'Zorvel_OLD.MDB')");
        std::filesystem::copy(folder_.path() / "Databases" / dataset_,
                              folder_.path() / "Databases/Zorvel_OLD.MDB");
        Sql("Databases/Zorvel_OLD.MDB", "UPDATE Zorvel_Apps SET AppCaption = 'Older ' || AppCaption");
    }
    void Sql(const std::string& file, const std::string& statement) const {
        Database(folder_.path() / file, file).Execute(statement);
    }
    std::string Written() const { return folder_.Read("out.csv"); }
    // The applications of the rows of "out.csv".
    std::string Applications() const {
        std::istringstream lines(Written());
        std::string line;
        std::getline(lines, line);
        std::string names;
        while (std::getline(lines, line))  // a row begins with the application's key
            names += (line.front() == '1' ? "Word " : line.front() == '2' ? "Calc " : "Draw ");
        return names;
    }

    test::TempFolder folder_;
    std::string dataset_;
};

TEST_F(BatchReport, TheCaptionsComeALineEachInTheOrderOfTheMenu) {
    const Result result = Run({"reports"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out,
              "Issue Summary\nIssue Detail\nFIL File Details\nRegistry Details\nMacro Details\n"
              "INI File Details\nAttribute Details\nRun Order Summary\nCapture Details Summary\n"
              "Associations Summary\nAssociations by Application\nAssociations by User\n"
              "Application 'Fingerprint' Summary\nApplication Flags Summary\n");
}

TEST_F(BatchReport, TheEndingDecidesTheFormat) {
    Analyse();
    const struct {
        const char* name;
        const char* beginning;
    } kCases[] = {{"a.pdf", "%PDF-1."},
                  {"b.html", "<!DOCTYPE html>"},
                  {"c.csv",
                   "\xEF\xBB\xBF"
                   "AppUniqueRef,"},
                  {"d.json", "{"},
                  {"e.PDF", "%PDF-1."},
                  {"f.b.Csv", "\xEF\xBB\xBF"}};
    for (const auto& c : kCases) {
        const Result result = Report({"run order summary"}, c.name);
        EXPECT_EQ(result.status, 0) << c.name << result.err;
        EXPECT_EQ(result.out + result.err, "");
        EXPECT_THAT(folder_.Read(c.name), StartsWith(c.beginning)) << c.name;
    }
}

TEST_F(BatchReport, OptionsChooseDatasetOrderAndIssues) {
    Analyse();
    const struct {
        std::vector<std::string> arguments;
        const char* applications;
    } kCases[] = {
        {{"Run Order Summary"}, "Draw Calc Word "},
        {{"Run Order Summary", "--descending"}, "Word Calc Draw "},
        {{"Run Order Summary", "--sort", "application NAME"}, "Calc Draw Word "},
        {{"Run Order Summary", "--sort", "Application Name", "--descending"}, "Word Draw Calc "},
        {{"Run Order Summary", "--sort", "Application Caption"}, "Draw Word Calc "},
        {{"Issue Summary"}, "Draw Draw Draw Word Word Word Word Calc Calc Calc "},
        {{"Issue Summary", "--exclude", "APPNODESC"}, "Draw Draw Word Word Word Calc Calc "},
        {{"Issue Detail", "--exclude", "APPNODESC", "--exclude", "INVALIDRO"},
         "Draw Draw Word Word Calc Calc "},
        {{"--exclude", "APPNODESC", "--exclude", "INVALIDRO", "Issue Detail"},
         "Draw Draw Word Word Calc Calc "},
    };
    for (const auto& c : kCases) {
        const Result result = Report(c.arguments);
        EXPECT_EQ(result.status, 0) << testing::PrintToString(c.arguments) << result.err;
        EXPECT_EQ(result.out + result.err, "");
        EXPECT_EQ(Applications(), c.applications) << testing::PrintToString(c.arguments);
    }
    const Result fixed = Report({"Associations by User"});
    EXPECT_EQ(fixed.err, "");
    for (const auto& options : {std::vector<std::string>{"--descending"}, {"--sort", "Application Name"}}) {
        std::vector<std::string> arguments{"Associations by User"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const Result result = Report(arguments);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.err,
                  "Zorvel: The order of this report is fixed; --sort and --descending have no effect.\n");
    }
    EXPECT_EQ(Report({"Run Order Summary", "--dataset", "zorvel_old.mdb"}).status, 0);
    EXPECT_THAT(Written(), HasSubstr(",Calc,Older Sums,9,"));
}

TEST_F(BatchReport, IssueReportsTellAcceptedOnesApart) {
    Analyse();
    folder_.Write("Accepted.toml",
                  "[[accepted]]\ncode = 'APPNODESC'\napplication = '*'\nreason = 'x'\n"
                  "[[accepted]]\ncode = 'FILEPWL'\napplication = 'Gone.*'\nreason = 'x'\n");
    ASSERT_EQ(Report({"Issue Summary", "--exclude", "INVALIDRO"}, "out.json").status, 0);
    EXPECT_THAT(
        folder_.Read("out.json"),
        HasSubstr("\"findings\": \"9 findings: 0 critical, 0 high, 0 medium, 9 low; 6 open, 3 accepted, 0 "
                  "expired\\nAccepted.toml, line 5: FILEPWL of Gone.* matches nothing any more\""));
    ASSERT_EQ(Report({"Issue Detail"}, "out.html").status, 0);
    EXPECT_THAT(folder_.Read("out.html"), HasSubstr("7 open, 3 accepted, 0 expired"));
    ASSERT_EQ(Report({"Macro Details"}, "out.json").status, 0);
    EXPECT_THAT(folder_.Read("out.json"), testing::Not(HasSubstr("\"findings\"")));
}

TEST_F(BatchReport, AllIssuesAreLeftOutOnlyByAYes) {
    Analyse();
    std::vector<std::string> arguments{"Issue Detail"};
    const Database empty(folder_.path() / "Empty_Zorvel.mdb", "Empty_Zorvel.mdb");
    for (Rows rows = empty.Query("SELECT IssueCode FROM Zorvel_Resolutions"); rows.Next();)
        arguments.insert(arguments.end(), {"--exclude", rows.Text("IssueCode")});
    const char* const kWarning = "all issues have been disabled in the Advanced report options";

    const Result no = Report(arguments);
    EXPECT_EQ(no.status, 1);
    EXPECT_THAT(no.err, HasSubstr(kWarning));
    EXPECT_THAT(no.err, HasSubstr("zorvel-batch: nothing was reported\n"));
    EXPECT_FALSE(folder_.Has("out.csv"));

    arguments.insert(arguments.begin(),
                     {"--yes", "report", "--output", (folder_.path() / "out.csv").string()});
    const Result yes = Run(arguments);
    EXPECT_EQ(yes.status, 0) << yes.err;
    EXPECT_THAT(yes.err, HasSubstr(kWarning));
    EXPECT_THAT(Written(), HasSubstr(",Target,Source\r\n"));
    EXPECT_EQ(Applications(), "");
}

TEST_F(BatchReport, CaptureDetailsAreOfTheMasterCatalogueAndHaveNoOptions) {
    Result result = Report({"Capture Details Summary"});  // of nothing, but a report
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(Applications(), "");
    Analyse();
    result = Report({"Capture Details Summary"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(Written(), HasSubstr(",Zorvel_OLD.MDB\r\n"));
    EXPECT_THAT(Written(), HasSubstr(',' + dataset_ + "\r\n"));
    for (const std::vector<std::string>& option : {std::vector<std::string>{"--dataset", dataset_},
                                                   {"--sort", "Application Name"},
                                                   {"--descending"},
                                                   {"--exclude", "FILEOLD"}}) {
        std::vector<std::string> arguments{"Capture Details Summary"};
        arguments.insert(arguments.end(), option.begin(), option.end());
        result = Report(arguments, "refused.csv");
        EXPECT_EQ(result.status, 1) << option.front();
        EXPECT_EQ(result.err, "zorvel-batch: 'Capture Details Summary' has no options\n");
        EXPECT_FALSE(folder_.Has("refused.csv"));
    }
}

TEST_F(BatchReport, AnotherDefinitionCanBeNamed) {
    Analyse();
    std::string definition = folder_.Read("Reports/Zorvel_AppRunOrderSummary.rpt");
    definition.replace(definition.find("heading = \"Order\""), 17, "heading = \"Place\"");
    folder_.Write("Reports/Own.rpt", definition);
    const Result result = Report({"Run Order Summary", "--definition", "own.RPT", "--descending"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(Written(), HasSubstr(",Caption,Place,"));
    EXPECT_EQ(Applications(), "Word Calc Draw ");
}

TEST_F(BatchReport, WhatCannotBeReportedFailsWithItsReasonAndTheOlderFileStays) {
    folder_.Write("out.csv", "older");
    const Result nothing = Report({"Issue Summary"});
    EXPECT_EQ(nothing.status, 1);
    EXPECT_THAT(nothing.err, HasSubstr("There are no recorded Zorvelled applications to report on"));
    EXPECT_EQ(Written(), "older");
    Analyse();

    const std::string output = (folder_.path() / "out.csv").string();
    const struct {
        std::vector<std::string> arguments;
        int status;
        const char* reason;
    } kCases[] = {
        {{"Issue Summary"}, 2, "--output is required"},
        {{"--output", output}, 2, "CAPTION is required"},
        {{"Issue Summary", "--output", "report.txt"}, 2, "its name must end in .pdf, .html, .csv or .json"},
        {{"Issue Summary", "--output", "pdf"}, 2, "its name must end in .pdf, .html, .csv or .json"},
        {{"Issues", "--output", output}, 1, "there is no report 'Issues'"},
        {{"Issue Summary", "--output", output, "--dataset", "Gone.mdb"}, 1, "there is no dataset 'Gone.mdb'"},
        {{"Issue Summary", "--output", output, "--sort", "Caption"},
         1,
         "this report cannot be ordered by 'Caption', only by 'Application Name', 'Application Caption', "
         "'Application Icon/Run Order'"},
        {{"Macro Details", "--output", output, "--sort", "Application Icon/Run Order"},
         1,
         "only by 'Application Name', 'Application Caption'\n"},
        {{"Application 'Fingerprint' Summary", "--output", output, "--sort", "Application Name"},
         1,
         "the order of this report is fixed"},
        {{"Issue Detail", "--output", output, "--exclude", "FILEOLD", "--exclude", "FILENEW"},
         1,
         "there is no issue 'FILENEW'"},
        {{"Issue Detail", "--output", output, "--exclude", "BP"}, 1, "there is no issue 'BP'"},
        {{"Macro Details", "--output", output, "--exclude", "FILEOLD"},
         1,
         "this report has no issues to exclude"},
        {{"Issue Summary", "--output", output, "--definition", "Gone.rpt"}, 1, "Gone.rpt: File not found"},
        {{"Issue Summary", "--output", (folder_.path() / "Gone/out.csv").string()}, 1, "Path not found"},
        {{"Issue Summary", "--output", (folder_.path() / "Gone/out.pdf").string()}, 1, "Path not found"},
        {{"Issue Summary", "--output", output + "/out.json"}, 1, "out.csv/out.json: "},
        {{"Issue Summary", "--output", (folder_.path() / "folder.html").string()}, 1, "folder.html: "},
        {{"Issue Detail", "--output", output, "--definition", "Bad.rpt"},
         1,
         "Bad.rpt, line 1: \"title\": expected a text in quotes"},
        {{"Macro Details", "--output", output, "--dataset", "Zorvel_OLD.MDB"}, 1, "file is not a database"},
    };
    std::filesystem::create_directory(folder_.path() / "folder.html");
    folder_.Write("Reports/Bad.rpt", "title = 5\n");
    folder_.Write("Databases/Zorvel_OLD.MDB", "this is no database, however long it may be................");
    for (const auto& c : kCases) {
        std::vector<std::string> arguments{"report"};
        arguments.insert(arguments.end(), c.arguments.begin(), c.arguments.end());
        const Result result = Run(arguments);
        EXPECT_EQ(result.status, c.status) << testing::PrintToString(c.arguments) << result.err;
        EXPECT_THAT(result.err, HasSubstr(c.reason)) << testing::PrintToString(c.arguments);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(Written(), "older");
    }
}

// A run writes names and values in two kinds of files; the import brings them together, the report shows
// them.
TEST_F(BatchReport, ShowsEveryValueThatTheDirectoryHolds) {
    using namespace std::string_literals;
    folder_.Write("Trees/T1.ldif", test::LdifOrganization("S") +
                                       "dn: ou=O\\0D\\0AU\\0D\\2C,o=S\nobjectClass: organizationalUnit\n\n"
                                       "dn: cn=U\\0D,o=S\nobjectClass: user\n\n"
                                       "dn: cn=W\\0D'\\0A\\22B,ou=O\\0D\\0AU\\0D\\2C,o=S\n"
                                       "objectClass: appApplication\naCL: 2#entry#cn=U\\0D,o=S#x\n" +
                                       test::StreamLine("appCaption", "Cap\0tion"s) +
                                       test::StreamLine("appDescription", "\0,\"'\r\nend\0"s));
    const Result analysis = Run({"analyse", "--all", "--pace", "0", "--import"});
    ASSERT_EQ(analysis.status, 0) << analysis.err;
    EXPECT_THAT(Run({"datasets"}).out, HasSubstr("\tO  U ,.S\t1\t"));
    ASSERT_EQ(Report({"Attribute Details"}, "out.json").status, 0);
    const std::string json = folder_.Read("out.json");
    EXPECT_THAT(json, HasSubstr(R"("AppOU": "O\nU\n,.S", "AppName": "W\n'\n\"B")"));
    EXPECT_THAT(json, HasSubstr(R"("AppCaption": "Cap\u0000tion")"));
    EXPECT_THAT(json, HasSubstr(R"("\u0000,\"'\nend\u0000")"));
    ASSERT_EQ(Report({"Associations by User"}).status, 0);
    EXPECT_THAT(Written(), HasSubstr("\"W\n'\n\"\"B\",Cap\u2400tion,"));
    EXPECT_THAT(Written(), HasSubstr("\"U\r.S\""));
}

TEST_F(BatchReport, HalfAnImportIsCalledSoUntilItIsRepaired) {
    Analyse();
    folder_.Write("TempData/Zorvel_Macros.CSV", "Gone.S\r\nM\r\n\r\n\r\n\r\n");
    ASSERT_EQ(Run({"--yes", "import"}).status, 1);
    const std::string aside = dataset_ + ".previous";

    EXPECT_THAT(Run({"datasets"}).out, HasSubstr(dataset_ + "\t\timport not completed\n"));
    EXPECT_THAT(Run({"datasets"}).out, testing::EndsWith("\tZorvel_OLD.MDB\t\n"));
    ASSERT_EQ(Report({"Run Order Summary"}).status, 0);
    EXPECT_THAT(Written(), testing::ContainsRegex("^\xEF\xBB\xBF"
                                                  "AppUniqueRef,.*,import not completed\r\n"));
    EXPECT_THAT(Written(), HasSubstr(",yes\r\n"));
    ASSERT_EQ(Report({"Run Order Summary"}, "out.json").status, 0);
    EXPECT_THAT(folder_.Read("out.json"), HasSubstr("\n\"import\": \"import not completed\"\n"));
    ASSERT_EQ(Report({"Run Order Summary"}, "out.html").status, 0);
    EXPECT_THAT(folder_.Read("out.html"), HasSubstr("import not completed"));
    ASSERT_EQ(Report({"Capture Details Summary"}).status, 0);
    EXPECT_THAT(Written(), HasSubstr(dataset_ + ",yes\r\n"));
    EXPECT_THAT(Written(), HasSubstr("Zorvel_OLD.MDB,\r\n"));
    // The data of the run is the only whole one.
    EXPECT_THAT(Run({"analyse", "--all", "--pace", "0"}).err,
                HasSubstr("doesn't appear to have been imported"));

    const Result check = Run({"datasets", "--check"});
    EXPECT_EQ(check.status, 1);
    EXPECT_EQ(check.out, "set-aside dataset\t" + aside + "\tnothing whole took its place\n");
    const Result asked = Run({"datasets", "--repair"});
    EXPECT_EQ(asked.status, 1);
    EXPECT_THAT(asked.err, HasSubstr("rename '" + aside + "' to '" + dataset_ + "'"));
    EXPECT_TRUE(folder_.Has("Databases/" + aside));
    const Result repaired = Run({"--yes", "datasets", "--repair"});
    EXPECT_EQ(repaired.status, 0) << repaired.err;
    EXPECT_EQ(repaired.out, "repaired\t" + aside + "\trename '" + aside + "' to '" + dataset_ + "'\n");
    EXPECT_EQ(Run({"datasets", "--check"}).out, "");
    EXPECT_THAT(Run({"datasets"}).out, testing::Not(HasSubstr("not completed")));
    ASSERT_EQ(Report({"Run Order Summary"}).status, 0);
    EXPECT_THAT(Written(), testing::Not(HasSubstr("not completed")));
}

TEST_F(BatchReport, AFullDiskIsToldAndTheOlderFileStays) {
    Analyse();
    Sql("Databases/" + dataset_, "UPDATE Zorvel_AppDetails SET Data = hex(randomblob(20000))");
    for (const std::string name : {"out.pdf", "out.html", "out.csv", "out.json"}) {
        folder_.Write(name, "older");
        std::filesystem::remove(folder_.path() / "Zorvel.log");
        const auto full = [&] {
            const test::FileSizeLimit limit(8000);
            return Report({"Attribute Details"}, name);
        }();
        EXPECT_EQ(full.status, 1) << name;
        EXPECT_EQ(full.err, "zorvel-batch: " + (folder_.path() / name).string() + ": Disk full\n");
        EXPECT_EQ(folder_.Read(name), "older");
        for (const auto& entry : std::filesystem::directory_iterator(folder_.path()))
            EXPECT_NE(entry.path().extension(), ".tmp");
        EXPECT_EQ(Report({"Attribute Details"}, name).status, 0);
        EXPECT_GT(folder_.Read(name).size(), 8000U);
    }
}

TEST_F(BatchReport, CtrlCEndsItAndTheOlderFileStays) {
    Analyse();
    const auto write_pdf = [](const auto& report, const auto& path, const auto& interrupted) {
        BatchWindow::Interrupt();
        return WritePdfWithoutDisplay(report, path, interrupted);
    };
    folder_.Write("Reports/Endless.rpt",
                  "title = \"t\"\nquery = \"WITH N(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM N) SELECT "
                  "count(*) AS x FROM N\"\n[[column]]\nfield = \"x\"\n");
    struct Case {
        const char* name;
        std::vector<std::string> arguments;  // with an order, a message comes ahead of the report
    };
    for (const Case& c :
         {Case{"out.pdf", {"Run Order Summary"}}, Case{"out.csv", {"Associations by User", "--descending"}},
          Case{"out.csv", {"Associations by User", "--definition", "Endless.rpt", "--descending"}}}) {
        folder_.Write(c.name, "older");
        std::vector<std::string> arguments{"report", "--output", (folder_.path() / c.name).string()};
        arguments.insert(arguments.end(), c.arguments.begin(), c.arguments.end());
        std::ostringstream out;
        test::InterruptingBuffer buffer;
        std::ostream err(&buffer);
        EXPECT_EQ(RunBatchProgram(arguments, folder_.path(), false, out, err, write_pdf), 3) << c.name;
        EXPECT_EQ(folder_.Read(c.name), "older");
        for (const auto& entry : std::filesystem::directory_iterator(folder_.path()))
            EXPECT_NE(entry.path().extension(), ".tmp") << entry.path();
        EXPECT_THAT(folder_.Read("Zorvel.log"), HasSubstr("    Reporting: Interrupted at user request\r\n"));
    }
}

TEST_F(BatchReport, CtrlCWhileAFileIsWrittenEndsIt) {
    Analyse();
    Sql("Databases/" + dataset_, "UPDATE Zorvel_AppDetails SET Data = hex(randomblob(40000))");
    const std::filesystem::path pipe = folder_.path() / "out.csv";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    std::thread reader([&pipe] {
        std::ifstream file(pipe, std::ios::binary);
        file.get();
        BatchWindow::Interrupt();  // the rest, which no pipe holds, is still to be written
        file.ignore(std::numeric_limits<std::streamsize>::max());
    });
    EXPECT_EQ(Report({"Attribute Details"}).status, 3);
    reader.join();
}

}  // namespace
}  // namespace zorvel

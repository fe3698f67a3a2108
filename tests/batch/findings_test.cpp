// zorvel-batch findings, explain, accept and accepted as a shell user meets them.
#include <gmock/gmock.h>

#include "batch/batch_run.h"
#include "findings/findings_fixture.h"

namespace zorvel {
namespace {

using test::BatchResult;
using testing::EndsWith;
using testing::HasSubstr;

// The program folder of the findings tests, with the dataset in the catalogue.
class BatchFindings : public test::FindingsTest {
  protected:
    BatchFindings() {
        std::filesystem::remove(folder_.path() / "Databases/ZorvelMaster.mdb");
        test::FillWholeProgramFolder(folder_, test::LdifOrganization("CORP"));
        Fill();
        Database master(folder_.path() / "Databases/ZorvelMaster.mdb", "master");
        Catalogue(master).Add(details_);
    }
    BatchResult Run(const std::vector<std::string>& arguments) const {
        return test::RunBatch(folder_, arguments);
    }
};

TEST_F(BatchFindings, AreListedTheMostSevereFirstAndFiltered) {
    const BatchResult all = Run({"findings"});
    EXPECT_EQ(all.status, 0) << all.err;
    EXPECT_EQ(
        all.out,
        "critical\tFILEPWL\tWord.APPS.LEEDS.CORP\tFile\tC:\\WINNT\\A.PWL\t\\\\FS1\\PACK\\a.pwl\t3 users, 2 "
        "workstations\topen\n"
        "critical\tFILEPWL\tReader "
        "7\\.0.APPS.K\u00D6LN.NORTH\tFile\tC:\\WINNT\\b.PWL\t%SOURCE_PATH%\\1.fil\t1 "
        "user\topen\n"
        "medium\tREGISTRYUNC\tcalc.APPS.LEEDS.CORP\tRegistry\tHKEY_CURRENT_"
        "USER\\Software\\Folio\\Share\t\\\\FS2"
        "\\FOLIO\tcontainer\topen\n"
        "medium\tREGISTRYUNC\tcalc.APPS.LEEDS.CORP\tRegistry\tHKEY_LOCAL_"
        "MACHINE\\SOFTWARE\\FOLIO\t\\\\FS2\\X\t"
        "container\topen\n"
        "medium\tREGISTRYUNC\tReader "
        "7\\.0.APPS.K\u00D6LN.NORTH\tRegistry\tHKEY_LOCAL_MACHINE\\SOFTWARE\\Folio\\"
        "Share\t\\\\FS1\\FOLIO\t1 user\topen\n"
        "low\tAPPNODESC\tWord.APPS.LEEDS.CORP\tApplication\t\t\t3 users, 2 workstations\topen\n"
        "low\tFILEOLD\tDraw.CORP\tFile\tc:\\winnt\\A.OLD\t\tnobody\topen\n"
        "7 findings: 2 critical, 0 high, 3 medium, 2 low; 7 open, 0 accepted, 0 expired\n");
    folder_.Write("Accepted.toml",
                  "[[accepted]]\ncode = 'FILEPWL'\napplication = '*'\nreason = 'x'\n"
                  "[[accepted]]\ncode = 'APPNODESC'\napplication = '*'\nreason = 'x'\nuntil = 2001-01-01\n");
    const struct {
        std::vector<std::string> options;
        const char* last_line;
        int status;
    } kCases[] = {
        {{}, "7 findings: 2 critical, 0 high, 3 medium, 2 low; 4 open, 2 accepted, 1 expired\n", 0},
        {{"--state", "open"},
         "5 findings: 0 critical, 0 high, 3 medium, 2 low; 4 open, 0 accepted, 1 expired\n",
         0},
        {{"--state", "expired"},
         "1 finding: 0 critical, 0 high, 0 medium, 1 low; 0 open, 0 accepted, 1 expired\n",
         0},
        {{"--severity", "medium"},
         "5 findings: 2 critical, 0 high, 3 medium, 0 low; 3 open, 2 accepted, 0 expired\n",
         0},
        {{"--code", "fileold", "--code", "APPNODESC"},
         "2 findings: 0 critical, 0 high, 0 medium, 2 low; 1 open, 0 accepted, 1 expired\n",
         0},
        {{"--application", "*.K\u00D6LN.*"},
         "2 findings: 1 critical, 0 high, 1 medium, 0 low; 1 open, 1 accepted, 0 expired\n",
         0},
        // Accepted ones do not fail; expired ones do.
        {{"--fail-on", "high"}, "4 open, 2 accepted, 1 expired\n", 0},
        {{"--fail-on", "medium"}, "4 open, 2 accepted, 1 expired\n", 4},
        {{"--fail-on", "low", "--state", "accepted"}, "0 open, 2 accepted, 0 expired\n", 0},
        {{"--fail-on", "low", "--code", "APPNODESC"}, "0 open, 0 accepted, 1 expired\n", 4},
    };
    for (const auto& c : kCases) {
        std::vector<std::string> arguments = {"findings"};
        arguments.insert(arguments.end(), c.options.begin(), c.options.end());
        const BatchResult result = Run(arguments);
        EXPECT_EQ(result.status, c.status) << testing::PrintToString(c.options);
        EXPECT_THAT(result.out, EndsWith(c.last_line)) << testing::PrintToString(c.options);
        EXPECT_EQ(result.err,
                  "zorvel-batch: Accepted.toml, line 5: APPNODESC of * expired on 2001-01-01; 1 finding open "
                  "again\n");
    }
}

TEST_F(BatchFindings, GoToAFileInTheFormatThatIsAskedFor) {
    const std::string output = (folder_.path() / "out").string();
    const std::pair<const char*, const char*> kCases[] = {{"text", "critical\tFILEPWL"},
                                                          {"csv", "\xEF\xBB\xBFSeverity,"},
                                                          {"json", "{\n\"dataset\""},
                                                          {"sarif", "{\n\"$schema\""}};
    for (const auto& [format, beginning] : kCases) {
        const BatchResult result = Run({"findings", "--format", format, "--output", output});
        EXPECT_EQ(result.status, 0) << format << result.err;
        EXPECT_EQ(result.out, "");
        const std::string written = folder_.Read("out");
        EXPECT_THAT(written, testing::StartsWith(beginning));
        EXPECT_EQ(Run({"findings", "--format", format, "--state", "all"}).out.size(), written.size());
    }
    AddIssue("1", "File", "\x1B]0;x\x07\t\r\nnext", "", "FILEPWL");
    EXPECT_THAT(Run({"findings"}).out, HasSubstr("\tFile\t ]0;x    next\t\t"));
}

TEST_F(BatchFindings, ExplainPrintsTheCataloguesEntry) {
    EXPECT_EQ(
        Run({"explain", "filedump"}).out,
        "FILEDUMP\tMemory dump of a crash\nCategory: File Related Issues\nSeverity: critical\n"
        "Why: The file holds what lay in memory at the crash, passwords and documents included.\n"
        "Raised by: a file rule\nWhat to do: Remove the entry: the file is large and may hold confidential "
        "data. Find out why the capture workstation crashed.\n");
    EXPECT_THAT(Run({"explain", "FILEDA0"}).out, HasSubstr("\nRemark: The registry of Windows 95"));
}

TEST_F(BatchFindings, AcceptAddsAnEntryAndAcceptedListsThemAll) {
    folder_.Write("Accepted.toml", "# ours\n");
    BatchResult result = Run({"accept", "--code", "registryunc", "--application", "*.LEEDS.CORP", "--target",
                              "HKLM\\*", "--reason", "until \"May\"", "--until", "2999-12-31", "--by", "us"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "1 finding of Zorvel_261116172805.MDB\n");
    EXPECT_EQ(folder_.Read("Accepted.toml"),
              "# ours\n\n[[accepted]]\ncode = \"REGISTRYUNC\"\napplication = \"*.LEEDS.CORP\"\ntarget = "
              "\"HKLM\\\\*\"\nreason = \"until \\\"May\\\"\"\nuntil = 2999-12-31\nby = \"us\"\n");
    EXPECT_EQ(Run({"accept", "--code", "FILEOLD", "--application", "*.NONE", "--reason", "r", "--until",
                   "2001-01-01"})
                  .out,
              "0 findings of Zorvel_261116172805.MDB\n");
    result = Run({"accepted"});
    EXPECT_EQ(result.out,
              "REGISTRYUNC\t*.LEEDS.CORP\tHKLM\\*\tuntil \"May\"\t2999-12-31\tus\t1\tused\n"
              "FILEOLD\t*.NONE\t\tr\t2001-01-01\t\t0\texpired, unused\n");
}

TEST_F(BatchFindings, WhatIsWrongEndsWithItsReason) {
    const struct {
        std::vector<std::string> arguments;
        int status;
        const char* reason;
    } kCases[] = {
        {{"findings", "--severity", "worst"}, 2, "--severity: worst not in {critical,high,medium,low}"},
        {{"findings", "--format", "xml"}, 2, "--format: xml not in"},
        {{"findings", "--code", "FILENEW"}, 1, "there is no issue 'FILENEW'"},
        {{"findings", "--dataset", "Gone.mdb"}, 1, "there is no dataset 'Gone.mdb'"},
        {{"findings", "--output", (folder_.path() / "Gone/out").string()}, 1, "Path not found"},
        {{"explain", "FILENEW"}, 1, "there is no issue 'FILENEW'"},
        {{"accept", "--code", "FILEOLD", "--application", "*"}, 2, "--reason is required"},
        {{"accept", "--code", "FILEOLD", "--application", "*", "--reason", "r", "--until", "2027-02-30"},
         2,
         "expected a date, as 2027-06-01"},
        {{"accept", "--code", "FILENEW", "--application", "*", "--reason", "r"},
         1,
         "\"code\": expected the code of an issue"},
        {{"accept", "--code", "FILEOLD", "--application", "*", "--reason", "  "},
         1,
         "\"reason\": expected a reason"},
        {{"accepted"},
         1,
         "Accepted.toml, line 1: there is no \"x\" here; expected tables under [[accepted]]; nothing counts "
         "as accepted\n"},
    };
    folder_.Write("Accepted.toml", "x = 5\n");
    for (const auto& c : kCases) {
        const BatchResult result = Run(c.arguments);
        EXPECT_EQ(result.status, c.status) << testing::PrintToString(c.arguments);
        EXPECT_THAT(result.err, HasSubstr(c.reason)) << testing::PrintToString(c.arguments);
    }
    // A mistake in the list: nothing counts as accepted, neither is the list changed.
    EXPECT_THAT(Run({"findings"}).err, HasSubstr("nothing counts as accepted\n"));
    EXPECT_EQ(Run({"accept", "--code", "FILEOLD", "--application", "*", "--reason", "r"}).status, 1);
    EXPECT_EQ(folder_.Read("Accepted.toml"), "x = 5\n");
    Database(folder_.path() / "Databases/ZorvelMaster.mdb", "master")
        .Execute("DELETE FROM Zorvel_CaptureDetails");
    EXPECT_THAT(Run({"findings"}).err, HasSubstr("there is no dataset: import a run first\n"));
}

}  // namespace
}  // namespace zorvel

// The pieces of a run: data files, attribute texts and the fingerprint.
#include <gtest/gtest.h>

#include "analysis/attribute_text.h"
#include "analysis/data_files.h"
#include "analysis/fingerprint.h"
#include "analysis/run_display.h"
#include "analysis/run_files.h"
#include "platform/error.h"
#include "support/fake_window.h"
#include "support/fakes.h"

namespace zorvel {
namespace {

TEST(AttributeText, FollowsTheSyntax) {
    struct Case {
        const char* syntax;
        std::vector<std::string> values;
        std::string text;
    };
    for (const Case& c :
         {Case{"Long", {"7", "8"}, "7"}, Case{"String", {"a", "b"}, "a\nb"},
          Case{"NWPath", {"a\n", "b\n"}, "a\n\nb\n"}, Case{"NWACL", {"A,x,1", "B"}, "A,x,1\nB"},
          Case{"NWOctetString", {"48656C6C6F"}, "Hello"}, Case{"NWOctetString", {"48000A"}, "48000A"},
          Case{"NWOctetString",
               {"1F41"},
               "\x1F"
               "A"},
          Case{"NWOctetString", {"41", "42"}, "41\n42"}, Case{"NWOctetString", {""}, ""},
          Case{"Other", {"x"}, ""}, Case{"String", {}, ""}}) {
        EXPECT_EQ(AttributeText(c.syntax, c.values), c.text) << c.syntax << testing::PrintToString(c.values);
    }
}

TEST(Fingerprint, ShowsSixSumsAndRefusesOverflow) {
    SignatureSet sums;
    EXPECT_EQ(sums.AppFingerPrint(), "00000000-00000000-00000000-00000000-00000000-00000000");
    sums.Add(Signature::kFileCopies, 0xA1F3);
    sums.Add(Signature::kFileCopies, 1);
    sums.Add(Signature::kIni, 0x12C4);
    sums.Add(Signature::kTextFiles, -1);
    sums.Add(Signature::kApplication, 0x7FFFFFFF);
    EXPECT_EQ(sums.AppFingerPrint(), "0000A1F4-00000000-000012C4-00000000-FFFFFFFF-7FFFFFFF");
    EXPECT_THROW(sums.Add(Signature::kApplication, 1), Error);
    EXPECT_EQ(sums.AppFingerPrint().substr(45), "7FFFFFFF");
}

TEST(RunFiles, HoldRecordsOfOneShapeWhateverTheirTexts) {
    test::TestShell shell;
    RunFiles files(shell.files);
    files.WriteIssue("A.B", "File", "C:\\X", "a\r\nb", "FILEOLD");
    files.WriteAttribute("A.B", "App:Caption", "one\r\ntwo\rthree");
    files.WriteAssociation("A.B", "say \"hi\".B", "", association_type::kUser);
    files.WriteAppAssociations("A.B", "G1.B\nG2.B", "", "", 12, "F-P");
    files.Close();
    EXPECT_EQ(shell.folder.Read("TempData/Zorvel_Issues.CSV"), "A.B\r\nFile\r\nC:\\X\r\na\nb\r\nFILEOLD\r\n");
    EXPECT_EQ(shell.folder.Read("TempData/Zorvel_AppDetails.CSV"), "A.B\r\nApp:Caption\r\none\ntwothree\r\n");
    EXPECT_EQ(shell.folder.Read("TempData/Zorvel_Associations.CSV"),
              "\"A.B\",\"say \"\"hi\"\".B\",\"\",\"User\"\r\n");
    EXPECT_EQ(shell.folder.Read("TempData/Zorvel_AppAssociations.CSV"),
              "\"A.B\",\"G1.B\nG2.B\",\"\",\"\", 12,F-P\r\n");
}

TEST(CaptureRecord, ComesBackWithAnyNames) {
    test::TestShell shell;
    EXPECT_FALSE(ReadCaptureRecord(shell.files).has_value());
    CaptureRecord record;
    record.captured = "16/11/2026 17:28:05";
    record.tree = "A,\"B\"";
    record.container = "APPS.SITE";
    record.totals = {"1", "", "3", "", "5", "6"};
    record.mode = "Find";
    WriteCaptureRecord(shell.files, record);
    EXPECT_EQ(shell.folder.Read("TempData/Zorvel_CaptureDetails.CSV"),
              "16/11/2026 17:28:05,\"A,\"\"B\"\"\",APPS.SITE,,1,,3,,5,6,Find\r\n");
    const std::optional<CaptureRecord> read = ReadCaptureRecord(shell.files);
    ASSERT_TRUE(read.has_value());
    EXPECT_EQ(read->tree, record.tree);
    EXPECT_EQ(read->app_count, "");
    EXPECT_EQ(read->totals, record.totals);
    EXPECT_EQ(read->mode, "Find");
    EXPECT_EQ(DatasetName(read->captured), "Zorvel_261116172805.MDB");
    EXPECT_THROW(DatasetName("yesterday"), Error);
}

TEST(RunStatus, ReckonsTheRestOnceThereIsSomethingToReckonFrom) {
    test::FakeClock clock;
    test::FakeRunDisplay display;
    test::FakeUserInterface ui;
    RunStatus status(clock, ui, display);
    status.StartRun();
    clock.Sleep(5);
    status.SetOverallProgress(4);
    EXPECT_EQ(status.OverallTimeText(), "00:00:05");
    status.SetOverallProgress(25);
    EXPECT_EQ(status.OverallTimeText(), "00:00:05   (00:00:15 remains)");
    status.SetOverallProgress(100);
    EXPECT_EQ(status.OverallTimeText(), "00:00:05");
    status.StartApplication();
    clock.Sleep(61);
    EXPECT_EQ(status.ApplicationTimeText(), "00:01:01");
}

}  // namespace
}  // namespace zorvel

// zorvel-batch as a shell user meets it: output, messages, exit status and files.
#include <gmock/gmock.h>

#include <sstream>

#include "batch/batch_run.h"
#include "batch/interrupting_buffer.h"
#include "platform/folder_lock.h"
#include "support/databases.h"

namespace zorvel {
namespace {

using Result = test::BatchResult;
using testing::HasSubstr;
using testing::Not;

class Batch : public testing::Test {
  protected:
    Batch() {
        using namespace test;
        FillWholeProgramFolder(
            folder_, LdifOrganization("S\xC3\xA9") + LdifUnit("APPS", "o=S\xC3\xA9") +
                         LdifApplication("Word", "ou=APPS,o=S\xC3\xA9", "appIconOrder: 5000\n") +
                         LdifApplication("Calc", "ou=APPS,o=S\xC3\xA9") + LdifOrganization("EMPTY"));
    }

    Result Run(const std::vector<std::string>& arguments) { return test::RunBatch(folder_, arguments); }

    test::TempFolder folder_;
};

TEST_F(Batch, TreesAndContainersComeALineEach) {
    EXPECT_EQ(Run({"trees"}).out, "T1\n");
    const Result result = Run({"containers"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out,
              "NDS:\\\\T1\\[Root]\t0\nNDS:\\\\T1\\S\xC3\xA9\t0\nNDS:\\\\T1\\S\xC3\xA9\\APPS\t2\nNDS:"
              "\\\\T1\\EMPTY\t0\n");
    EXPECT_EQ(result.err, "");
}

TEST_F(Batch, NoNameCommandsTheTerminalOrBreaksALine) {
    folder_.Write("Trees/T1.ldif", "dn: o=A\\1B[2JB\\09C\\0AD\nobjectClass: organization\n");
    EXPECT_EQ(Run({"containers"}).out, "NDS:\\\\T1\\[Root]\t0\nNDS:\\\\T1\\A [2JB C D\t0\n");
    const Result failed = Run({"analyse", "--container", "A\x1B[2J\x7F\tB\rC\nD"});
    EXPECT_THAT(failed.err, HasSubstr("there is no container 'A [2J  B\nC\nD'\n"));
    folder_.Write("Directory.toml", "[[tree]]\nname = \"T\\u008D1\"\nldif = \"Trees/T1.ldif\"\n");
    EXPECT_EQ(Run({"trees"}).out, "T 1\n");
    EXPECT_THAT(Run({"compact", "\x1B]0;x\x07"}).err, HasSubstr("there is no dataset ' ]0;x '\n"));
}

TEST_F(Batch, AnAnalysisPrintsItsSummaryAndRepeatsItsBytes) {
    const Result first = Run({"analyse", "--all", "--pace", "0"});
    EXPECT_EQ(first.status, 0);
    EXPECT_EQ(first.out, "Zorvelrun finished without any stream parsing errors.\n");
    EXPECT_THAT(first.err, HasSubstr("Zorvel: When convenient, you can import"));
    const std::string issues = folder_.Read("TempData/Zorvel_Issues.CSV");
    EXPECT_THAT(issues, HasSubstr("Word.APPS.S\xE9\r\nApplication\r\n\r\n\r\nINVALIDRO\r\n"));

    folder_.Write("TempData/Zorvel_Issues.CSV", "kept");
    const Result kept = Run({"analyse", "--all", "--pace", "0"});
    EXPECT_EQ(kept.status, 1);
    EXPECT_THAT(kept.err, HasSubstr("Zorvel: The data from the last Zorvelrun (on "));
    EXPECT_EQ(folder_.Read("TempData/Zorvel_Issues.CSV"), "kept");

    const Result again = Run({"--yes", "analyse", "--all", "--refresh", "--pace", "0"});
    EXPECT_EQ(again.status, 0);
    EXPECT_EQ(folder_.Read("TempData/Zorvel_Issues.CSV"), issues);
}

TEST_F(Batch, TreesAreTestedALineAFinding) {
    folder_.Write("Directory.toml",
                  "[[tree]]\nname = 'a\xC3\xA9'\nldif = 'Trees/none.ldif'\n"
                  "[[tree]]\nname = 'b'\nldap = ['ldapi://%2Fnone']\nbind_dn = 'cn=x'\n"
                  "[[tree]]\nname = 'c'\nldif = 'Trees/T1.ldif'\n");
    const Result result = Run({"trees", "--check"});
    const std::string folder = folder_.path().string();
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(
        result.out,
        "a\xC3\xA9\tfailed\tfile\t" + folder + "\\Trees\\none.ldif: File not found\n" +
            "b\tfailed\tserver\tNobody gave the password of 'cn=x' - choose the tree again to be asked\n" +
            "c\tok\tfile\t" + folder + "\\Trees\\T1.ldif\nc\tok\tcontainers\t3\n" +
            "c\tok\tapplications\t2\n");
    EXPECT_EQ(result.err, "zorvel-batch: not all trees can be read\n");
    folder_.Write("Directory.toml", "[[tree]]\nname = 'c'\nldif = 'Trees/T1.ldif'\n");
    EXPECT_EQ(Run({"trees", "--check"}).status, 0);
}

TEST_F(Batch, OneProgramWritesAndTheOthersTouchNothing) {
    FolderLock lock(folder_.path() / "Zorvel.lock", "Zorvel.lock");
    ASSERT_TRUE(lock.TryAcquire("zorvel"));
    for (const std::vector<std::string>& command : {std::vector<std::string>{"analyse", "--all"},
                                                    {"find", "a", "--all"},
                                                    {"import"},
                                                    {"compact", "x"},
                                                    {"--wait", "0.1", "delete", "x"}}) {
        const Result result = Run(command);
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.err, HasSubstr("Zorvel: Nothing was changed: 'zorvel' (process "));
        EXPECT_FALSE(folder_.Has("Zorvel.log"));
    }
    EXPECT_EQ(Run({"datasets"}).status, 0);
    EXPECT_EQ(Run({"containers"}).status, 1) << "the tree would have to be read";
    EXPECT_TRUE(std::filesystem::is_empty(folder_.path() / "TempData"));
    lock.Release();
    EXPECT_EQ(Run({"containers"}).status, 0);
}

TEST_F(Batch, OneContainerOrASelectionCanBeChosen) {
    EXPECT_EQ(Run({"analyse", "--container", "nds:\\\\t1\\S\xC3\x89\\apps", "--pace", "0"}).status, 0);
    EXPECT_THAT(folder_.Read("Zorvel.log"), HasSubstr("2 application(s) selected to Zorvel"));
    folder_.Write("saved", "x\r\n16/11/2026, 1\r\n\"c\"\r\n\"Calc\",\"NDS:\\\\T1\\S\xE9\\APPS\"\r\n");
    const std::string saved = (folder_.path() / "saved").string();
    const Result result = Run({"--yes", "analyse", "--selection", saved, "--pace", "0"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.err, HasSubstr("Application selections loaded - 1 of 1 previously saved"));
    EXPECT_THAT(folder_.Read("TempData/Zorvel_AppDetails.CSV"), Not(HasSubstr("Word")));
}

TEST_F(Batch, WhatCannotBeDoneFailsWithItsReason) {
    struct Case {
        std::vector<std::string> arguments;
        int status;
        const char* reason;
    };
    const std::string huge = (folder_.path() / "TempData/huge.AppSelection").string();
    folder_.Write("TempData/huge.AppSelection", "x\r\n16/11/2026, 99999999999\r\n\"c\"\r\n");
    for (const Case& c :
         {Case{{"analyse", "--selection", huge},
               1,
               "AppSelection, line 2: the number '99999999999' is too large"},
          Case{{"analyse", "--container", "NDS:\\\\T1\\GONE"}, 1, "there is no container 'NDS:\\\\T1\\GONE'"},
          Case{{"analyse", "--container", "NDS:\\\\T1\\EMPTY"}, 1, "there is no application to analyse"},
          Case{{"analyse", "--tree", "T9", "--all"}, 1, "there is no tree 'T9'"},
          Case{{"analyse", "--selection", "/nowhere"}, 1, "/nowhere: File not found"},
          Case{{"analyse"}, 2, "[--all,--container,--selection] is required"},
          Case{{"analyse", "--all", "--pace", "-1"}, 2, "--pace"},
          Case{{"analyse", "--all", "--container", "x"}, 2, "2 were given"},
          Case{{"fly"}, 2, "A subcommand is required"}, Case{{}, 2, ""},
          Case{{"--folder", "/nowhere", "trees"}, 2, "/nowhere"}}) {
        const Result result = Run(c.arguments);
        EXPECT_EQ(result.status, c.status) << testing::PrintToString(c.arguments) << result.err;
        EXPECT_THAT(result.err, HasSubstr(c.reason));
        EXPECT_FALSE(folder_.Has("TempData/Zorvel_Issues.CSV"));
    }
    folder_.Write("Trees/T1.ldif", "dn: o=X\nwhat is this\n");
    const Result broken = Run({"analyse", "--refresh", "--all"});
    EXPECT_EQ(broken.status, 1);
    EXPECT_THAT(broken.err, HasSubstr("the tree 'T1' could not be loaded"));
    std::filesystem::remove(folder_.path() / "RegExclude.dat");
    EXPECT_EQ(Run({"trees"}).status, 1);
    EXPECT_EQ(Run({"--help"}).status, 0);
}

TEST_F(Batch, AnImportBecomesADatasetThatCanBeCompactedAndDeleted) {
    EXPECT_EQ(Run({"datasets"}).out, "");
    const Result nothing = Run({"import"});
    EXPECT_EQ(nothing.status, 1);
    EXPECT_THAT(nothing.err, HasSubstr("There is no record of a successful Zorvelrun having been done."));

    const Result first =
        Run({"analyse", "--all", "--pace", "0", "--import", "--comment", "caf\xC3\xA9\tone"});
    EXPECT_EQ(first.status, 0) << first.err;
    const std::string line = Run({"datasets"}).out;
    EXPECT_THAT(line, testing::MatchesRegex(
                          "[0-9/]+ [0-9:]+\tT1\tAPPS\\.S\xC3\xA9\t2\t[0-9]+\tZorvel_[0-9]+\\.MDB\tcaf"
                          "\xC3\xA9 one\n"));
    const std::string dataset = line.substr(line.find("Zorvel_"), 23);
    EXPECT_TRUE(folder_.Has("Databases/" + dataset));

    EXPECT_EQ(Run({"import"}).status, 1);  // it is there already
    EXPECT_EQ(Run({"--yes", "import", "--comment", "again"}).status, 0);
    EXPECT_THAT(Run({"datasets"}).out, HasSubstr("\tagain\n"));
    EXPECT_EQ(Run({"compact", dataset}).status, 1);  // asks, too
    EXPECT_EQ(Run({"--yes", "compact", dataset}).status, 0);
    EXPECT_EQ(Run({"delete", dataset}).status, 1);  // the question's default is No
    EXPECT_TRUE(folder_.Has("Databases/" + dataset));
    EXPECT_EQ(Run({"--yes", "delete", dataset}).status, 0);
    EXPECT_FALSE(folder_.Has("Databases/" + dataset));
    EXPECT_EQ(Run({"datasets"}).out, "");
    EXPECT_THAT(Run({"delete", "Zorvel_1.MDB"}).err, HasSubstr("there is no dataset 'Zorvel_1.MDB'"));
}

TEST_F(Batch, CtrlCEndsTheRunInGoodOrder) {
    std::string ldif = test::LdifOrganization("SITE");
    for (int i = 0; i < 50; ++i) {
        ldif += test::LdifApplication("A" + std::to_string(i), "o=SITE", "aCL: no trustee\n");
    }
    folder_.Write("Trees/T1.ldif", ldif);
    ASSERT_EQ(Run({"containers"}).status, 0);
    test::InterruptingBuffer buffer;
    std::ostream err(&buffer);
    std::ostringstream out;
    EXPECT_EQ(RunBatchProgram({"analyse", "--all", "--pace", "0"}, folder_.path(), false, out, err, {}), 3);
    EXPECT_THAT(folder_.Read("TempData/Zorvel_CaptureDetails.CSV"), HasSubstr(",T1,SITE,1,"));
    EXPECT_EQ(out.str(), "Zorvelrun finished without any stream parsing errors.\n");
}

TEST_F(Batch, TheLogComesAsRichTextAndStaysAsItIs) {
    const Result missing = Run({"log"});
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.out, "");
    EXPECT_THAT(missing.err, HasSubstr("Zorvel.log: File not found\n"));
    EXPECT_FALSE(folder_.Has("Zorvel.log"));

    const std::string log = "16/11/2026 17:28:05 ERROR: C:\\x\r\n16/11/2026 17:28:06    caf\xE9";
    folder_.Write("Zorvel.log", log);
    const Result result = Run({"log"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(result.out, testing::StartsWith("{\\rtf1\\ansi"));
    EXPECT_THAT(result.out,
                testing::EndsWith("\\plain\\f2\\fs20 16/11/2026 17:28:06    caf\xE9\\par\r\n}\r\n"));
    EXPECT_EQ(folder_.Read("Zorvel.log"), log);
}

}  // namespace
}  // namespace zorvel

// Whole runs over small trees: what lies in the data files and what the user is told.
#include <gmock/gmock.h>

#include "analysis/run_fixture.h"

namespace zorvel::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

TEST_F(Run, AHealthyApplicationLeavesItsRecordsAndNoIssue) {
    LoadApplication(
        kHealthy + "appPath: %*WinDir%\\w.exe\nappParameters: /a\n" +
        StreamLine("appMacros", StreamBuilder().Macro("SRC", "X:\\apps").bytes()) +
        StreamLine("appCopyFiles", StreamBuilder().FileCopy("x:\\a.txt", "d:\\a.txt", 4).bytes()) +
        StreamLine("appCopyFilesAlways", StreamBuilder().FileCopy("x:\\a.txt", "d:\\a.txt").bytes()) +
        StreamLine("appEnvironmentSettings", StreamBuilder().EnvironmentSetting("P", "v", 'S').bytes()));
    display_.import_answer = true;
    EXPECT_EQ(Go(), RunOutcome::kFinished);
    EXPECT_TRUE(import_wanted_);
    EXPECT_THAT(Issues(), IsEmpty());
    EXPECT_EQ(Data("Macros"), "Word.SITE\r\nSRC\r\nX:\\apps\r\n\r\n\r\n");
    EXPECT_EQ(Data("CopyFiles"), "Word.SITE\r\nD:\\A.TXT\r\nx:\\a.txt\r\nCopy If Does Not Exist\r\n");
    EXPECT_EQ(Data("CopyFilesAlways"), "Word.SITE\r\nD:\\A.TXT\r\nx:\\a.txt\r\nCopy Always\r\n");
    EXPECT_EQ(Data("EnvironmentSettings"), "P\r\nv\r\nS\r\n");
    EXPECT_EQ(Data("AppDetails"),
              "Word.SITE\r\nObject Class\r\nappApplication\r\nWord.SITE\r\nCN\r\nWord\r\n"
              "Word.SITE\r\nApp:Description\r\nd\r\n"
              "Word.SITE\r\nACL\r\nBob.SITE,[All Attributes Rights],3\r\n"
              "Word.SITE\r\nApp:Path\r\n%*WinDir%\\w.exe\r\nWord.SITE\r\nApp:Parameters\r\n/a\r\n"
              "Word.SITE\r\nApp:Administrator Notes\r\nn\r\n");
    // Twice "D:\A.TXT"; "SRCX:\APPS"; the path and the parameters.
    EXPECT_EQ(Data("AppAssociations"),
              "\"Word.SITE\",\"\",\"\",\"\", 1,00000492-00000000-00000000-0000030A-00000000-00000474\r\n");
    EXPECT_EQ(Capture(), "16/11/2026 17:28:05,T1,SITE,1,2,,,1,,,Zorvelrun\r\n");
    EXPECT_EQ(display_.summary, "Zorvelrun finished without any stream parsing errors.");
    EXPECT_THAT(display_.generate_enabled, ElementsAre(false, true));
    EXPECT_EQ(display_.stream_progress.back(), 99);
    EXPECT_EQ(display_.overall_progress.back(), 100);
    EXPECT_FALSE(shell_.activity.Busy);
}

TEST_F(Run, IssuesComeInTheirOrderAndAreCounted) {
    shell_.options.session.AppNamesWithSpacesIllegal = true;
    shell_.options.controls.checkGeneral[1] = 1;
    shell_.options.controls.txtSlowINIThreshold = "1";
    StreamBuilder ini;
    ini.IniValue("a", "b", "c", "d").IniValue("a", "b", "c", "d");
    StreamBuilder copies;
    copies.FileCopy("s", R"(C:\windows\x.old)", 1);
    Load(LdifApplication(
        "My Word", "o=SITE",
        "appDescription:: ICAg\nappPath: c:\\windows\\w.exe\nappWorkingDirectory: C:\\WinNT\n"
        "appIconOrder: 1000\n" +
            StreamLine("appINISettings", ini.bytes()) + StreamLine("appCopyFiles", copies.bytes())));
    ASSERT_EQ(Go(), RunOutcome::kFinished);
    EXPECT_THAT(
        Issues(),
        ElementsAre("My Word.SITE|Application|||INVALIDAN",
                    R"(My Word.SITE|Path to Executable|C:\WINDOWS\W.EXE||FILEPORTABLE)",
                    R"(My Word.SITE|Working Directory|C:\WINNT||FILEPORTABLE)",
                    "My Word.SITE|Application|||INVALIDRO", R"(My Word.SITE|File|C:\WINDOWS\X.OLD|s|FILEOLD)",
                    R"(My Word.SITE|File|C:\WINDOWS\X.OLD|s|FILEPORTABLE)",
                    "My Word.SITE|Application|||APPNODESC", "My Word.SITE|Application|||APPNOADMIN",
                    "My Word.SITE|Application|||APPNOASSOC", "My Word.SITE|Application|||APPCOMPLEXINI"));
    EXPECT_EQ(Capture(), "16/11/2026 17:28:05,T1,SITE,1,1,2,,,,10,Zorvelrun\r\n");
    EXPECT_EQ(display_.last_counters, (std::vector<std::string>{"1", "2", "-", "-", "-", "10"}));
}

TEST_F(Run, IconOrdersAndThresholdsHoldAtTheirLimits) {
    struct Case {
        const char* order;
        bool issue;
    };
    std::string ldif;
    const std::vector<Case> cases = {
        {"-1", false}, {"0", false}, {"999", false}, {"-2", true}, {"1000", true}};
    for (std::size_t i = 0; i < cases.size(); ++i) {
        ldif += LdifApplication(
            "A" + std::to_string(i), "o=SITE",
            Healthy(i % 2 == 0 ? "appDescription" : "zENAppPackageDescription") +
                "appIconOrder: " + cases[i].order + "\n" +
                StreamLine("appINISettings", StreamBuilder().IniValue("a", "b", "c", "d").bytes()));
    }
    shell_.options.controls.checkGeneral[1] = 1;
    shell_.options.controls.txtSlowINIThreshold = "1";  // one entry is not more than one
    Load(ldif);
    ASSERT_EQ(Go(), RunOutcome::kFinished);
    EXPECT_THAT(Issues(), ElementsAre("A3.SITE|Application|||INVALIDRO", "A4.SITE|Application|||INVALIDRO"));
}

TEST_F(Run, AssociationsReachUsersGroupsContainersAndWorkstations) {
    LoadApplication(
        "aCL: 1#entry#cn=bob,o=site#[All Attributes Rights]\naCL: 1#entry#cn=Gone,o=SITE#x\n"
        "aCL: 1#entry#cn=Team,o=SITE#x\naCL: 1#entry#cn=Nobody,o=SITE#x\naCL: 1#entry#ou=LAB,o=SITE#x\n"
        "aCL: 1#entry#cn=PC1,o=SITE#x\naCL: 1#entry#o=SITE#x\naCL: 1#entry#[Public]#x\naCL: nonsense\n"
        "aCL: 1#entry#cn=WSG,o=SITE#x\n\n"
        "dn: cn=Team,o=SITE\nobjectClass: groupOfNames\ncn: Team\nmember: cn=Bob,o=SITE\nmember: "
        "cn=Gone,o=SITE\n"
        "member: cn=PC1,o=SITE\n\n"
        "dn: cn=Nobody,o=SITE\nobjectClass: groupOfNames\ncn: Nobody\n\n"
        "dn: cn=WSG,o=SITE\nobjectClass: zenWorkstationGroup\ncn: WSG\nmember: cn=PC1,o=SITE\n\n"
        "dn: cn=PC1,o=SITE\nobjectClass: workstation\ncn: PC1\n\n" +
        LdifUnit("LAB", "o=SITE"));
    ASSERT_EQ(Go(), RunOutcome::kFinished);
    EXPECT_EQ(Data("Associations"),
              "\"Word.SITE\",\"Bob.SITE\",\"\",\"User\"\r\n"
              "\"Word.SITE\",\"Bob.SITE\",\"Team.SITE\",\"Group\"\r\n"
              "\"Word.SITE\",\"PC1.SITE\",\"Team.SITE\",\"Group\"\r\n"
              "\"Word.SITE\",\"\",\"LAB.SITE\",\"OU\"\r\n"
              "\"Word.SITE\",\"\",\"PC1\",\"WS\"\r\n"
              "\"Word.SITE\",\"PC1.SITE\",\"WSG.SITE\",\"Group\"\r\n");
    EXPECT_THAT(
        Data("AppAssociations"),
        StartsWith("\"Word.SITE\",\"Team.SITE\nNobody.SITE\nWSG.SITE\",\"LAB.SITE\",\"PC1\nPC1.SITE\", 4,"));
    EXPECT_THAT(Issues(), Not(Contains(HasSubstr("APPNOASSOC"))));
    const std::vector<std::string> log = shell_.LogLines();
    EXPECT_THAT(log, Contains(" ERROR: Unexpected ACL attribute name 'Organization' - ignoring"));
    EXPECT_THAT(log, Contains(" ERROR: Unexpected error # 5 (Invalid procedure call or argument) occurred in "
                              "butGenerate procedure at Line 8 - continuing"));
    EXPECT_THAT(log, Contains(HasSubstr("'nonsense' names no trustee")));
    EXPECT_THAT(shell_.ui.statuses, Contains("Determining Application Associations.  Users:3, Groups: 3"));
}

TEST_F(Run, TheLogNamesTheAttributeThatCannotBeJudged) {
    LoadApplication(kHealthy + "appIconOrder: 1e999\n");
    ASSERT_EQ(Go(), RunOutcome::kFinished);
    EXPECT_THAT(shell_.LogLines(),
                Contains(" ERROR: Word.SITE, App:Icon Order: the number '1e999' is too large"));
}

// A list that names one group with each of very many attributes; nobody waits for as many looks at its
// members.
TEST_F(Run, TheMembersOfAGroupAreReadOnceForAnAccessControlList) {
    constexpr int kMany = 30'000;
    std::string attributes;
    std::string group = "\ndn: cn=Team,o=SITE\nobjectClass: groupOfNames\ncn: Team\nmember: cn=Bob,o=SITE\n";
    for (int i = 0; i < kMany; ++i) {
        attributes += "aCL: 1#entry#cn=Team,o=SITE#a" + std::to_string(i) + '\n';
        group += "member: cn=gone" + std::to_string(i) + ",o=SITE\n";
    }
    LoadApplication(attributes + group);
    ASSERT_EQ(Go(), RunOutcome::kFinished);
    EXPECT_THAT(shell_.ui.statuses,
                Contains("Determining Application Associations.  Users:29,999, Groups: 30,000"));
}

TEST_F(Run, PausesBetweenApplicationsAndThrottlesAllButTheLast) {
    Load(LdifUnit("X", "o=SITE") + LdifApplication("A", "ou=X,o=SITE", kHealthy) +
         LdifApplication("B", "o=SITE", kHealthy));
    shell_.options.controls.checkGeneral[6] = 1;
    shell_.options.controls.txtThrottle = "3";
    ASSERT_EQ(Go(), RunOutcome::kFinished);
    EXPECT_NEAR(shell_.clock.slept, 0.5 + 3 + 0.5, 1e-6);
    EXPECT_THAT(shell_.ui.statuses, Contains("Throttling option enabled - pausing for 3 second(s)"));
    EXPECT_EQ(Capture(), "16/11/2026 17:28:05,T1,[Multiple OUs],2,,,,,,,Zorvelrun\r\n");
}

TEST_F(Run, ANumberOptionThatHoldsNoneIsLeftOutAndToldOnce) {
    StreamBuilder entries;
    entries.IniValue("a", "b", "c", "d").TextFileChange(1, "f", "t").RegistryKeyCreate("k");
    Load(LdifApplication("A", "o=SITE", kHealthy + StreamLine("appINISettings", entries.bytes())) +
         LdifApplication("B", "o=SITE", kHealthy));
    OptionControls& controls = shell_.options.controls;
    for (const std::size_t box : {1U, 2U, 6U, 7U})
        controls.checkGeneral[box] = 1;
    controls.txtSlowINIThreshold = "1E999";
    controls.txtSlowTextThreshold = "-1E999";
    controls.txtThrottle = "99999999999";
    controls.txtSlowRegistryThreshold = "0";
    ASSERT_EQ(Go(), RunOutcome::kFinished);
    EXPECT_THAT(Issues(), ElementsAre("A.SITE|Application|||APPCOMPLEXREG"));
    EXPECT_NEAR(shell_.clock.slept, 0.5 + 0.5, 1e-6) << "no throttle";
    const auto told = [](const char* value_and_option) {
        return testing::Field(&MessageBox::text,
                              StartsWith("The value " + std::string(value_and_option) + " is not a number"));
    };
    EXPECT_THAT(shell_.ui.boxes, ElementsAre(told("'1E999' of the option SlowINIFileThreshold"),
                                             told("'-1E999' of the option SlowTextFileThreshold"),
                                             told("'99999999999' of the option eDirThrottle"),
                                             testing::_ /* the offer to import */));
}

TEST_F(Run, AFindRunSearchesTheStreamsAndReadsNoAssociations) {
    LoadApplication(kHealthy + StreamLine("appMacros", StreamBuilder().Macro("A", "B").bytes()) +
                    StreamLine("appCopyFiles", StreamBuilder().FileCopy("findme", "t").bytes()));
    FakeFindRun find;
    ASSERT_EQ(Go(&find), RunOutcome::kFinished);
    EXPECT_THAT(find.calls,
                ElementsAre("start", "Word Word.SITE (Macros)", "end", "Word Word.SITE (Copy Files)", "F T",
                            "end", "Word Word.SITE (Administrator Notes)", "end", "finish"));
    EXPECT_EQ(Data("Macros"), "");
    EXPECT_EQ(Data("Associations"), "");
    EXPECT_THAT(Data("AppDetails"), HasSubstr("Word.SITE\r\nACL\r\n\r\n"));
    EXPECT_EQ(Capture(), "16/11/2026 17:28:05,T1,SITE,1,1,,,,,,Find\r\n");
    EXPECT_EQ(display_.summary, "");
    find.results_lost = true;
    EXPECT_EQ(Go(&find), RunOutcome::kFailed);  // a Find run's data may go without asking
    EXPECT_EQ(shell_.ui.boxes.back().text, "Error no. 61 (Disk full) occurred in butGenerate at Line 11");
}

}  // namespace
}  // namespace zorvel::test

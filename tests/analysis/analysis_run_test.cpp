// Whole runs over small trees: what lies in the data files and what the user is told.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <algorithm>

#include "analysis/analysis_run.h"
#include "browser/tree_refresh.h"
#include "directory/memory_directory.h"
#include "shell/formats.h"
#include "stream_builder.h"
#include "support/fake_window.h"
#include "support/fakes.h"
#include "support/file_size_limit.h"
#include "support/program_folder.h"

namespace zorvel {
namespace {

using test::StreamLine;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

// An application that has nothing to complain about, described by an attribute.
std::string Healthy(const std::string& description) {
    return description + ": d\naCL: 3#entry#cn=Bob,o=SITE#[All Attributes Rights]\n" +
           StreamLine("appAdministratorNotes", "n");
}
const std::string kHealthy = Healthy("appDescription");
const std::string kBob = "dn: cn=Bob,o=SITE\nobjectClass: inetOrgPerson\ncn: Bob\n\n";

// Notes what a Find run asks of its search.
class FakeFindRun final : public FindRun {
  public:
    std::vector<std::string> calls;
    bool results_lost = false;
    std::int32_t stream_error = 0;
    void Start() override { calls.emplace_back("start"); }
    void BeginStream(std::string_view name, std::string_view full_name, std::string_view label) override {
        calls.push_back(std::string(name) + " " + std::string(full_name) + " " + std::string(label));
    }
    void EndStream() noexcept override { calls.emplace_back("end"); }
    void Finish() override {
        calls.emplace_back("finish");
        if (results_lost) throw OutputError(Error(errors::kDiskFull));
    }
    bool MatchesStream(std::string_view stream) override {
        if (stream_error != 0) throw Error(stream_error);
        return stream.find("findme") != std::string_view::npos;
    }
    void Find(char kind, std::string_view text) override {
        calls.push_back(std::string(1, kind) + " " + std::string(text));
    }
};

class Run : public testing::Test {
  protected:
    // Makes the tree T1 of `ldif`, loads it and selects every application.
    void Load(const std::string& ldif) {
        test::FillProgramFolder(shell_.folder, test::LdifOrganization("SITE") + kBob + ldif);
        directory_.NWCallsInit();
        directory_.NWDSCreateContextHandle(context_handle_);
        test::FakeOUViewDisplay display;
        ASSERT_TRUE(TreeRefresh(shell_.services, directory_, lists_, display, 0).RefreshOUView("T1", true));
        for (AppRecord& application : lists_.AppList)
            lists_.Select(application, true);
        slots_.Fill();
        shell_.clock.slept = 0;
        shell_.ui.statuses.clear();
    }
    void LoadApplication(const std::string& attributes) {
        Load(test::LdifApplication("Word", "o=SITE", attributes));
    }

    RunOutcome Go(FindRun* find = nullptr) {
        const RunInputs inputs{shell_.services,
                               directory_,
                               lists_,
                               rules_,
                               slots_,
                               context_handle_,
                               display_,
                               {},
                               [this](const std::string& path) { return shell_.files.Exists(path); }};
        AnalysisRun run(inputs, find);
        const RunOutcome outcome = run.Run();
        import_wanted_ = run.import_wanted();
        return outcome;
    }

    std::string Data(const std::string& name) const {
        return shell_.folder.Read("TempData/Zorvel_" + name + ".CSV");
    }
    // The issues as "application|type|target|source|code".
    std::vector<std::string> Issues() const {
        std::vector<std::string> issues;
        DataFileReader reader(shell_.files, data_files::kIssues);
        for (std::vector<std::string> r; reader.Next(r);) {
            issues.push_back(r[0] + "|" + r[1] + "|" + r[2] + "|" + r[3] + "|" + r[4]);
        }
        return issues;
    }
    std::string Capture() const { return Data("CaptureDetails"); }

    test::TestShell shell_;
    MemoryDirectory directory_{shell_.files, shell_.log};
    TreeLists lists_;
    RuleLists rules_;
    AppIssueSlots slots_;
    std::uint32_t context_handle_ = 0;
    test::FakeRunDisplay display_;
    bool import_wanted_ = false;
};

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
    Load(test::LdifApplication(
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
        ldif += test::LdifApplication(
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
        test::LdifUnit("LAB", "o=SITE"));
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

TEST_F(Run, ARejectedStreamEndsTheStreamsOfItsApplicationOnly) {
    Load(test::LdifApplication("Bad", "o=SITE",
                               kHealthy + StreamLine("appMacros", "not a stream of ours") +
                                   StreamLine("appCopyFiles", StreamBuilder().FileCopy("a", "b").bytes())) +
         test::LdifApplication(
             "Good", "o=SITE",
             kHealthy + StreamLine("appCopyFiles", StreamBuilder().FileCopy("a", "b").bytes())));
    ASSERT_EQ(Go(), RunOutcome::kFinished);
    EXPECT_EQ(Data("CopyFiles"), "Good.SITE\r\nB\r\na\r\nCopy Always\r\n");
    EXPECT_THAT(Issues(), ElementsAre("Bad.SITE|Application|||APPNOADMIN"));
    EXPECT_THAT(shell_.LogLines(),
                Contains(" WARNING: Stream '(Macros)' of 'Bad.SITE' could not be read to its end"));
}

TEST_F(Run, StreamErrorsAreCountedInTheSummary) {
    LoadApplication(kHealthy +
                    StreamLine("appMacros", StreamBuilder().Macro("A", "B").bytes() + std::string(20, '\7')));
    ASSERT_EQ(Go(), RunOutcome::kFinished);
    EXPECT_EQ(Data("Macros"), "Word.SITE\r\nA\r\nB\r\n\r\n\r\n");
    EXPECT_EQ(display_.question,
              "Zorvelrun finished but there were 2 minor stream parsing error(s), refer to the log file (via "
              "Help/Zorvel "
              "log file...) for further information.\r\rWould you like to import the generated data now?");
    EXPECT_EQ(
        shell_.ui.boxes.back().text,
        "When convenient, you can import the generated data from the LAST Zorvelrun via the Database menu..");
}

TEST_F(Run, ApplicationsThatAreGoneAreToldAtTheEnd) {
    shell_.options.session.AppNamesWithSpacesIllegal = true;
    Load(test::LdifApplication("Word", "o=SITE", kHealthy));
    lists_.Clear();
    lists_.AddApp(R"(NDS:\\T1\SITE)", "Not there");
    lists_.AppList[0].Selected = true;
    lists_.counts.SelectedCount = 1;
    ASSERT_EQ(Go(), RunOutcome::kFinished);
    EXPECT_EQ(display_.summary,
              "Zorvelrun finished without any stream parsing errors.\r\rHowever, Zorvel encountered 1 "
              "application(s) which "
              "couldn't be Zorvelled as it wasn't physically found in the NDS - this may be due to the "
              "cached version of "
              "the Tree not accurately reflecting the current physical version and you are advised to "
              "refresh the cache "
              "as soon as possible.");
    EXPECT_THAT(Issues(), ElementsAre("Not there.SITE|Application|||INVALIDAN"));
    EXPECT_EQ(Data("AppAssociations"), "");
    EXPECT_EQ(Capture(), "16/11/2026 17:28:05,T1,SITE,,,,,,,1,Zorvelrun\r\n");
    EXPECT_EQ(shell_.clock.slept, 0);
}

TEST_F(Run, EscapeFinishesTheApplicationAtHandAndCutsNoStreamButTheOneItMeets) {
    StreamBuilder copies;
    copies.FileCopy("s", "a").FileCopy("s", "b").FileCopy("s", "findme").FileCopy("s", "d");
    StreamBuilder keys;
    keys.RegistryKeyCreate("k1").RegistryKeyCreate("k2").RegistryKeyCreate("findme");
    const std::string streams =
        StreamLine("appCopyFiles", copies.bytes()) + StreamLine("appRegistrySettings", keys.bytes());
    Load(test::LdifApplication("A", "o=SITE", kHealthy + streams) +
         test::LdifApplication("B", "o=SITE", kHealthy + streams));
    shell_.clock.tick = 0.11;  // pending events run after every record
    int events = 0;
    shell_.ui.on_events = [&] {
        if (!shell_.ui.statuses.empty() &&
            shell_.ui.statuses.back() == "Querying eDirectory for 'A' (Copy Files)" && ++events == 2)
            shell_.activity.UserInterrupt = true;
    };
    FakeFindRun find;
    for (FindRun* search : {static_cast<FindRun*>(nullptr), static_cast<FindRun*>(&find)}) {
        events = 0;
        shell_.log.Open(false);
        shell_.ui.answers = {Answer::kYes};  // the data of the run before may go
        ASSERT_EQ(Go(search), RunOutcome::kFinished);
        EXPECT_THAT(Data("CopyFiles"), HasSubstr("\r\nB\r\n"));
        EXPECT_THAT(Data("CopyFiles"), Not(HasSubstr("\r\nFINDME\r\n")));
        EXPECT_THAT(Data("RegistrySettings"), HasSubstr("A.SITE\r\nfindme\r\n"));
        EXPECT_THAT(Capture(), HasSubstr("T1,SITE,1,2,,,,3,"));
        EXPECT_THAT(Data("AppDetails"), Not(HasSubstr("B.SITE")));
        const std::vector<std::string> log = shell_.LogLines();
        const std::string line = "    ParseAOT: User interrupted Zorvelrun with ESC key";
        EXPECT_EQ(std::count(log.begin(), log.end(), line), 1);
        EXPECT_THAT(
            log, Contains(" WARNING: Stream '(Copy Files)' of 'A.SITE' was cut by the user's interruption"));
        EXPECT_EQ(log.back(), " WARNING: The " + std::string(search == nullptr ? "Zorvelrun" : "Find") +
                                  " ended after 1 of 2 application(s) - Stream '(Copy Files)' of 'A.SITE' "
                                  "was cut");
    }
}

TEST_F(Run, WhatInterruptedARunDoesNotReachTheTreeReadBehindIt) {
    const std::string macros = StreamLine("appMacros", StreamBuilder().Macro("A", "B").bytes());
    Load(test::LdifApplication("A", "o=SITE", kHealthy + macros) + test::LdifUnit("LAB", "o=SITE"));
    const std::string cache = shell_.folder.Read("TempData/T1.TreeCache");
    ASSERT_THAT(cache, HasSubstr("LAB"));
    const auto escape = [&] { shell_.activity.UserInterrupt = true; };
    FakeFindRun find;
    struct Case {
        const char* what;
        std::function<void()> on_events;
        FindRun* find;
        std::int32_t engine_error, directory_error;
        RunOutcome outcome;
    };
    for (const Case& c : {Case{"a Find", escape, &find, 0, 0, RunOutcome::kFinished},
                          Case{"error 430", {}, &find, errors::kNoAutomation, 0, RunOutcome::kFinished},
                          Case{"a failure", escape, nullptr, 0, 600, RunOutcome::kFailed},
                          Case{"a Zorvelrun", escape, nullptr, 0, 0, RunOutcome::kFinished},
                          Case{"kept data", {}, nullptr, 0, 0, RunOutcome::kAbandoned}}) {
        shell_.ui.on_events = c.on_events;
        find.stream_error = c.engine_error;
        directory_.faults.error_600_everywhere = c.directory_error != 0;
        shell_.activity.UserInterrupt = true;  // whatever was left
        EXPECT_EQ(Go(c.find), c.outcome) << c.what;
        shell_.ui.on_events = {};
        directory_.faults.error_600_everywhere = false;
        test::FakeOUViewDisplay display;
        EXPECT_TRUE(TreeRefresh(shell_.services, directory_, lists_, display, 0).RefreshOUView("T1", true));
        ASSERT_EQ(shell_.folder.Read("TempData/T1.TreeCache"), cache) << "after " << c.what;
        lists_.Select(lists_.AppList[0], true);
    }
}

TEST_F(Run, PausesBetweenApplicationsAndThrottlesAllButTheLast) {
    Load(test::LdifUnit("X", "o=SITE") + test::LdifApplication("A", "ou=X,o=SITE", kHealthy) +
         test::LdifApplication("B", "o=SITE", kHealthy));
    shell_.options.controls.checkGeneral[6] = 1;
    shell_.options.controls.txtThrottle = "3";
    ASSERT_EQ(Go(), RunOutcome::kFinished);
    EXPECT_NEAR(shell_.clock.slept, 0.5 + 3 + 0.5, 1e-6);
    EXPECT_THAT(shell_.ui.statuses, Contains("Throttling option enabled - pausing for 3 second(s)"));
    EXPECT_EQ(Capture(), "16/11/2026 17:28:05,T1,[Multiple OUs],2,,,,,,,Zorvelrun\r\n");
}

TEST_F(Run, DataThatWasNotImportedIsReplacedOnlyWithConsent) {
    LoadApplication(kHealthy);
    ASSERT_EQ(Go(), RunOutcome::kFinished);
    shell_.ui.boxes.clear();
    const std::string details = Data("AppDetails");
    shell_.folder.Write("TempData/Zorvel_AppDetails.CSV", "kept");
    EXPECT_EQ(Go(), RunOutcome::kAbandoned);
    EXPECT_EQ(Data("AppDetails"), "kept");
    ASSERT_EQ(shell_.ui.boxes.size(), 1U);
    EXPECT_EQ(shell_.ui.boxes[0].text,
              "The data from the last Zorvelrun (on 16/11/2026 17:28:05) doesn't appear to have been "
              "imported yet.\n\n"
              "Starting a new Zorvelrun will generate a new set of raw data, overwriting the existing one - "
              "are you sure "
              "you wish to continue and generate a new data set?");
    EXPECT_EQ(shell_.ui.boxes[0].default_answer, Answer::kNo);
    shell_.ui.answers = {Answer::kYes};
    EXPECT_EQ(Go(), RunOutcome::kFinished);
    EXPECT_EQ(Data("AppDetails"), details);
    shell_.ui.boxes.clear();
    shell_.folder.Write("Databases/ZORVEL_261116172805.mdb", "");  // imported: nothing to ask
    EXPECT_EQ(Go(), RunOutcome::kFinished);
    EXPECT_EQ(shell_.ui.boxes.size(), 1U);
}

TEST_F(Run, WithoutItsFilesARunEndsAndLeavesNoCaptureRecord) {
    LoadApplication(kHealthy + "appPath: c:\\windows\\x.exe\n");
    struct Case {
        const char* what;
        std::function<void()> spoil;
        const char* message;
        rlim_t most_bytes = RLIM_INFINITY;
    };
    const std::filesystem::path data = shell_.folder.path() / "TempData";
    for (const Case& c :
         {Case{"full disk", [&] {}, "Error no. 61 (Disk full) occurred in butGenerate at Line 9", 0},
          Case{"no capture record",
               [&] { std::filesystem::create_directory(data / "Zorvel_CaptureDetails.CSV.new"); },
               "Error no. 75 (Path/File access error) occurred in butGenerate at Line 9"},
          Case{"a pipe", [&] { mkfifo((data / "Zorvel_Issues.CSV").c_str(), 0600); },
               "Error no. 75 (Path/File access error) occurred in butGenerate at Line 6"},
          Case{"in the way", [&] { std::filesystem::create_directory(data / "Zorvel_Macros.CSV"); },
               "Error no. 75 (Path/File access error) occurred in butGenerate at Line 6"},
          Case{"no folder", [&] {}, "Error no. 76 (Path not found) occurred in butGenerate at Line 6"}}) {
        std::filesystem::remove_all(data);
        if (std::string_view(c.what) != "no folder") std::filesystem::create_directory(data);
        c.spoil();
        const test::FileSizeLimit disk(c.most_bytes);
        EXPECT_EQ(Go(), RunOutcome::kFailed) << c.what;
        EXPECT_EQ(shell_.ui.boxes.back().text, c.message);
        EXPECT_FALSE(std::filesystem::exists(data / "Zorvel_CaptureDetails.CSV"));
        EXPECT_FALSE(shell_.activity.Busy);
        EXPECT_TRUE(display_.generate_enabled.back());
    }
}

TEST_F(Run, ADirectoryThatFailsEndsTheRunOnce) {
    Load(test::LdifApplication("A", "o=SITE", kHealthy) + test::LdifApplication("B", "o=SITE", kHealthy));
    directory_.faults.error_600_everywhere = true;
    EXPECT_EQ(Go(), RunOutcome::kFailed);
    EXPECT_EQ(shell_.ui.boxes.size(), 1U);
    EXPECT_FALSE(shell_.folder.Has("TempData/Zorvel_CaptureDetails.CSV"));
    EXPECT_EQ(shell_.ui.statuses.back(), "The Zorvelrun has ended: The directory could not be read");
}

TEST_F(Run, ADamagedCaptureRecordStandsForDataThatWasNotImported) {
    LoadApplication(kHealthy);
    const std::string file = "TempData/Zorvel_CaptureDetails.CSV";
    const struct {
        std::string record;
        const char *captured, *damage;  // no date: the time of the file
    } cases[] = {
        {"yesterday,T1,SITE,1,,,,,,,Zorvelrun\r\n", "",
         "13 (Type mismatch): 'yesterday' is not a date of the form dd/mm/yyyy"},
        {"16/11/2026 17:28:05,T1,SITE\r\n", "16/11/2026 17:28:05",
         "CaptureDetails.CSV, line 1: the row has not the 11 fields of its file"},
        {"16/11/2026 17:28:05,T1,SITE,1,,,,,,,Find", "16/11/2026 17:28:05",
         "CaptureDetails.CSV, line 1: the file ends within a record"},
        {"16/11/2026 17:2", "", "CaptureDetails.CSV, line 1: the file ends within a record"},
        {"", "", "CaptureDetails.CSV, line 1: the file is empty"},
    };
    for (const auto& row : cases) {
        shell_.folder.Write(file, row.record);
        const std::string written =
            DateAndTime(shell_.files.Modified(shell_.files.Path(data_files::kCaptureDetails.name)));
        shell_.ui.boxes.clear();
        EXPECT_EQ(Go(), RunOutcome::kAbandoned);
        EXPECT_THAT(shell_.OnlyBox(), HasSubstr("(on " + (*row.captured != 0 ? row.captured : written) +
                                                ") doesn't appear to have been imported yet."));
        EXPECT_EQ(shell_.folder.Read(file), row.record);
        EXPECT_THAT(shell_.LogLines().back(),
                    testing::AllOf(StartsWith(" WARNING: The capture record of the last run is damaged - "),
                                   HasSubstr(row.damage)));
    }
}

TEST_F(Run, ANumberOptionThatHoldsNoneIsLeftOutAndToldOnce) {
    StreamBuilder entries;
    entries.IniValue("a", "b", "c", "d").TextFileChange(1, "f", "t").RegistryKeyCreate("k");
    Load(test::LdifApplication("A", "o=SITE", kHealthy + StreamLine("appINISettings", entries.bytes())) +
         test::LdifApplication("B", "o=SITE", kHealthy));
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
}  // namespace zorvel

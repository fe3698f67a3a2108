// How runs end: what fails in them, is cut or is gone, and whose data a new one may replace.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <algorithm>

#include "analysis/run_fixture.h"
#include "shell/formats.h"
#include "support/file_size_limit.h"

namespace zorvel::test {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

TEST_F(Run, ARejectedStreamEndsTheStreamsOfItsApplicationOnly) {
    Load(LdifApplication("Bad", "o=SITE",
                         kHealthy + StreamLine("appMacros", "not a stream of ours") +
                             StreamLine("appCopyFiles", StreamBuilder().FileCopy("a", "b").bytes())) +
         LdifApplication("Good", "o=SITE",
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
              "Help/Zorvel log file...) for further information.\r\rWould you like to import the generated "
              "data now?");
    EXPECT_EQ(
        shell_.ui.boxes.back().text,
        "When convenient, you can import the generated data from the LAST Zorvelrun via the Database menu..");
}

TEST_F(Run, ApplicationsThatAreGoneAreToldAtTheEnd) {
    shell_.options.session.AppNamesWithSpacesIllegal = true;
    Load(LdifApplication("Word", "o=SITE", kHealthy));
    lists_.Clear();
    lists_.AddApp(R"(NDS:\\T1\SITE)", "Not there");
    lists_.AppList[0].Selected = true;
    lists_.counts.SelectedCount = 1;
    ASSERT_EQ(Go(), RunOutcome::kFinished);
    EXPECT_EQ(display_.summary,
              "Zorvelrun finished without any stream parsing errors.\r\rHowever, Zorvel encountered 1 "
              "application(s) which couldn't be Zorvelled as it wasn't physically found in the NDS - this "
              "may be due to the cached version of the Tree not accurately reflecting the current physical "
              "version and you are advised to refresh the cache as soon as possible.");
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
    Load(LdifApplication("A", "o=SITE", kHealthy + streams) +
         LdifApplication("B", "o=SITE", kHealthy + streams));
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
    Load(LdifApplication("A", "o=SITE", kHealthy + macros) + LdifUnit("LAB", "o=SITE"));
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
        FakeOUViewDisplay display;
        EXPECT_TRUE(TreeRefresh(shell_.services, directory_, lists_, display, 0).RefreshOUView("T1", true));
        ASSERT_EQ(shell_.folder.Read("TempData/T1.TreeCache"), cache) << "after " << c.what;
        lists_.Select(lists_.AppList[0], true);
    }
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
              "imported yet.\n\nStarting a new Zorvelrun will generate a new set of raw data, overwriting "
              "the existing one - are you sure you wish to continue and generate a new data set?");
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
        const FileSizeLimit disk(c.most_bytes);
        EXPECT_EQ(Go(), RunOutcome::kFailed) << c.what;
        EXPECT_EQ(shell_.ui.boxes.back().text, c.message);
        EXPECT_FALSE(std::filesystem::exists(data / "Zorvel_CaptureDetails.CSV"));
        EXPECT_FALSE(shell_.activity.Busy);
        EXPECT_TRUE(display_.generate_enabled.back());
    }
}

TEST_F(Run, ADirectoryThatFailsEndsTheRunOnce) {
    Load(LdifApplication("A", "o=SITE", kHealthy) + LdifApplication("B", "o=SITE", kHealthy));
    directory_.faults.error_600_everywhere = true;
    EXPECT_EQ(Go(), RunOutcome::kFailed);
    EXPECT_EQ(shell_.ui.boxes.size(), 1U);
    EXPECT_FALSE(shell_.folder.Has("TempData/Zorvel_CaptureDetails.CSV"));
    EXPECT_EQ(shell_.ui.statuses.back(), "The Zorvelrun has ended: The directory could not be read");
}

TEST_F(Run, AnApplicationThatCannotBeReadIsNotCountedAsRead) {
    Load(LdifApplication("A", "o=SITE", kHealthy) + LdifApplication("B", "o=SITE", kHealthy));
    directory_.faults.lost_object = R"(NDS:\\T1\SITE\A)";
    EXPECT_EQ(Go(), RunOutcome::kFinished);
    EXPECT_EQ(Capture(), "16/11/2026 17:28:05,T1,SITE,1,,,,,,,Zorvelrun\r\n");
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
                    AllOf(StartsWith(" WARNING: The capture record of the last run is damaged - "),
                          HasSubstr(row.damage)));
    }
}

}  // namespace
}  // namespace zorvel::test

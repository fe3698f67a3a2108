// Log, status line, sounds, pauses, rule lists and options: what a session writes and shows on the way.
#include <gmock/gmock.h>
#include <unistd.h>

#include "shell/pause.h"
#include "shell/rule_lists.h"
#include "support/fakes.h"
#include "support/file_size_limit.h"

namespace zorvel {
namespace {

using test::TestShell;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(Log, WarningsAndErrorsStandOut) {
    TestShell shell;
    for (const char* message : {"Reading", "", "WARNING: a", "Warning: b", "ERROR: c", "ERRORS", "WARN"}) {
        shell.log.WriteLog(message);
    }
    EXPECT_THAT(shell.LogLines(), ElementsAre("    Reading", "    ", " WARNING: a", " Warning: b",
                                              " ERROR: c", " ERRORS", "    WARN"));
    EXPECT_EQ(shell.folder.Read("Zorvel.log").substr(0, 19), "16/11/2026 17:28:05");
    shell.clock.now.second = 6;
    shell.log.WriteLog("a second later");
    EXPECT_THAT(shell.folder.Read("Zorvel.log"),
                testing::EndsWith("16/11/2026 17:28:06    a second later\r\n"));
}

TEST(Log, IsSilentWhileClosedAndGoesOnWhereItStopped) {
    TestShell shell;
    shell.log.WriteLog("one");
    shell.log.Close();
    shell.log.WriteLog("lost");
    shell.log.Open(true);
    shell.log.WriteLog("two");
    EXPECT_THAT(shell.LogLines(), ElementsAre("    one", "    two"));
    shell.log.Open(false);
    EXPECT_THAT(shell.LogLines(), IsEmpty());
}

TEST(Log, KeepsTheLinesOfEveryProgramThatUsesIt) {
    TestShell shell;
    shell.log.WriteLog("window");
    EXPECT_EQ(shell.folder.Read("Zorvel.log"), "16/11/2026 17:28:05    window\r\n") << "not yet closed";
    {
        Log batch(shell.files, shell.clock);
        batch.Open(false);
        batch.WriteLog("batch");
        shell.log.WriteLog("window again");
        shell.log.Close();  // to be viewed
        batch.Open(false);
        shell.log.Open(true);
    }
    EXPECT_THAT(shell.LogLines(), ElementsAre("    window", "    batch", "    window again"));
}

TEST(Log, LinesThatAFullDiskDidNotTakeFollowLater) {
    TestShell shell;
    {
        const test::FileSizeLimit full_disk(0);
        shell.log.WriteLog("one");
    }
    shell.log.WriteLog("two");
    EXPECT_THAT(shell.LogLines(), ElementsAre("    one", "    two"));
}

TEST(WriterLock, OneProgramWritesAndTheOtherIsToldWhich) {
    TestShell shell;
    WriterLock other(shell.files, shell.clock, shell.ui, shell.log);
    other.command = "zorvel-batch analyse --all";
    {
        const auto hold = other.Acquire();
        const auto nested = other.Acquire();
        EXPECT_TRUE(hold && nested);
        shell.options.controls.txtCache = "77";
        EXPECT_FALSE(shell.options.WriteOptions());
        EXPECT_FALSE(shell.folder.Has("Zorvel.ini"));
        EXPECT_THAT(shell.OnlyBox(), testing::StartsWith("Nothing was changed: 'zorvel-batch analyse --all' "
                                                         "(process " +
                                                         std::to_string(getpid()) + " on "));
        shell.writers.patience = 30;
        EXPECT_FALSE(shell.writers.Acquire());
        EXPECT_NEAR(shell.clock.slept, 30, 0.2);
        // Who has just taken it is given the time to say so.
        const std::string holder = shell.folder.Read("Zorvel.lock");
        shell.folder.Write("Zorvel.lock", "");
        shell.ui.boxes.clear();
        shell.ui.on_events = [&] { shell.folder.Write("Zorvel.lock", holder); };
        shell.writers.patience = 0;
        EXPECT_FALSE(shell.writers.Acquire());
        EXPECT_THAT(shell.OnlyBox(), testing::HasSubstr("'zorvel-batch analyse --all'"));
    }
    EXPECT_TRUE(shell.options.WriteOptions());
    EXPECT_THAT(shell.folder.Read("Zorvel.ini"), testing::HasSubstr("AutoTreeCacheRefresh=77\r\n"));
}

TEST(StatusLine, TellsHowMuchIsAvailableAndSelected) {
    struct Case {
        std::int32_t available, selected;
        const char* text;
    };
    for (const Case& c : {Case{0, 0, "Ready. No applications available to Zorvel ! P"},
                          Case{1, 1, "Ready. 1 applications available, all selected. P"},
                          Case{1234, 17, "Ready. 1,234 applications available, 17 selected. P"},
                          Case{5, 0, "Ready. 5 applications available, none selected. P"}}) {
        TestShell shell;
        shell.counts = {c.available, c.selected, "P"};
        std::string text;
        shell.status.SetStatus(StatusPicture::kGreenBall, text);
        EXPECT_EQ(text, c.text);
        EXPECT_EQ(shell.ui.statuses.back(), c.text);
    }
}

TEST(StatusLine, ATextAloneLeavesThePicture) {
    TestShell shell;
    shell.status.SetStatus(StatusPicture::kRedBall, "stop");
    shell.status.SetStatus(StatusPicture::kUnchanged, "still");
    EXPECT_EQ(shell.ui.picture, StatusPicture::kRedBall);
    EXPECT_EQ(shell.ui.statuses.back(), "still");
    shell.status.SetIdle();
    EXPECT_EQ(shell.ui.picture, StatusPicture::kGreenBall);
}

TEST(EventSounds, PlayOnlyWhatExistsAndOnlyWhenEnabled) {
    TestShell shell;
    shell.folder.Write("Ding.WAV", "");
    shell.sounds.PlayEventSound("ding");
    EXPECT_THAT(shell.ui.sounds, IsEmpty());
    shell.options.session.SoundsEnabled = true;
    for (const char* path : {"ding", "ding.wav", "missing", ""})
        shell.sounds.PlayEventSound(path);
    EXPECT_THAT(shell.ui.sounds, ElementsAre(shell.files.Path("ding.WAV"), shell.files.Path("ding.wav")));
}

TEST(Pause, WaitsWhileEventsRunAndEndsAtMidnight) {
    TestShell shell;
    int events = 0;
    shell.ui.on_events = [&] { ++events; };
    Pause(shell.clock, shell.ui, 0.5);
    EXPECT_NEAR(shell.clock.slept, 0.5, 1e-6);
    EXPECT_GT(events, 10);
    events = 0;
    Pause(shell.clock, shell.ui, 0);
    EXPECT_EQ(events, 1);
    shell.clock.timer = 86399.95;
    shell.clock.slept = 0;
    Pause(shell.clock, shell.ui, 60);
    EXPECT_LT(shell.clock.slept, 0.2);
}

TEST(RuleLists, KeepEveryLineThatSaysSomethingInUpperCase) {
    TestShell shell;
    std::string lines = "; comment\r\n   \r\n\r\n  Lead\xE9 \r\nx ; y\n";
    for (int i = 0; i < 51; ++i)
        lines += "entry" + std::to_string(i) + "\r\n";
    shell.folder.Write("FileIssue.dat", lines);
    const std::vector<std::string> entries =
        ReadRuleList(shell.files.Open(shell.files.Path("fileissue.DAT")));
    ASSERT_EQ(entries.size(), 53U);
    EXPECT_EQ(entries[0], "  LEAD\xC9 ");
    EXPECT_EQ(entries[1], "X ; Y");
    EXPECT_EQ(entries[52], "ENTRY50");
}

TEST(Options, AFileReadsAsItsRecordsSay) {
    TestShell shell;
    shell.folder.Write("Zorvel.ini",
                       " appendtolog=true\r\n"
                       "eDirThrottle=7\r\n"
                       "eDirThrottleEnabled=yes\r\n"  // copies the state of the last true or false
                       "SlowINIFileThreshold =9\r\n"  // a blank before "=" makes the key unknown
                       "Unknown=1\r\n"
                       "WarningSound=c:\\a,b.wav\r\n"  // cut at the comma, then set again
                       "FinishedSound=\"x\r\n");
    EXPECT_TRUE(shell.options.ReadOptions());
    EXPECT_TRUE(shell.options.session.AppendToLog);
    EXPECT_EQ(shell.options.controls.txtThrottle, "7");
    EXPECT_TRUE(shell.options.controls.enabled.Throttle);
    EXPECT_EQ(shell.options.controls.txtSlowINIThreshold, "200");
    EXPECT_EQ(shell.options.session.WarningSound, "B.WAV");
    EXPECT_EQ(shell.options.session.FinishedSound, "\"X");
    EXPECT_TRUE(shell.options.warning_boxes);
    EXPECT_THAT(shell.ui.boxes, IsEmpty());
}

TEST(Options, SavingWritesAllSeventeenInOrder) {
    TestShell shell;
    shell.options.controls.checkGeneral = {1, 0, 1, 0, 1, 0, 2, 1, 0};
    shell.options.controls.txtSound = {"W.WAV", "F.WAV"};
    shell.options.WriteOptions();
    EXPECT_EQ(
        shell.folder.Read("Zorvel.ini"),
        "AppNamesWithSpacesIllegal=True\r\nSlowINIFileThresholdEnabled=False\r\nSlowINIFileThreshold=200\r\n"
        "SlowTextFileThresholdEnabled=True\r\nSlowTextFileThreshold=200\r\nSlowRegistryThresholdEnabled="
        "True\r\n"
        "SlowRegistryThreshold=1000\r\nIgnoreStreamParsingErrors=False\r\nCreateDMPFileOnError=True\r\n"
        "AppendToLog=False\r\neDirThrottleEnabled=False\r\neDirThrottle=1\r\n"
        "AutoTreeCacheRefreshEnabled=False\r\nAutoTreeCacheRefresh=30\r\nSoundsEnabled=False\r\n"
        "WarningSound=W.WAV\r\nFinishedSound=F.WAV\r\n");
}

TEST(Options, AMissingOrUnwritableFileIsTold) {
    TestShell shell;
    EXPECT_FALSE(shell.options.ReadOptions());
    ASSERT_EQ(shell.ui.boxes.size(), 1U);
    EXPECT_EQ(shell.ui.boxes[0].text, "Error 53 (File not found) occurred during Options File Read.");
    EXPECT_EQ(shell.ui.boxes[0].icon, MessageIcon::kCritical);
    EXPECT_EQ(shell.ui.boxes[0].detail, shell.files.Path("Zorvel.ini") + ": File not found");
    std::filesystem::create_directory(shell.folder.path() / "Zorvel.ini");
    shell.options.WriteOptions();
    EXPECT_EQ(shell.ui.boxes.back().text,
              "Error 75 (Path/File access error) occurred during Options File Write.");
    EXPECT_EQ(shell.ui.boxes.back().detail, shell.files.Path("Zorvel.ini") + ": not an ordinary file");
    EXPECT_THAT(shell.LogLines(), testing::Contains(" ERROR: Unexpected error # 75 (Path/File access error) "
                                                    "occurred in Options File Write procedure"));
}

TEST(Options, ANumberIsGivenAndAnythingElseToldOnceAValue) {
    struct Box {
        NumberText box;
        const char* option;
    };
    for (const Box& box : {Box{&OptionControls::txtSlowINIThreshold, "SlowINIFileThreshold"},
                           Box{&OptionControls::txtSlowTextThreshold, "SlowTextFileThreshold"},
                           Box{&OptionControls::txtSlowRegistryThreshold, "SlowRegistryThreshold"},
                           Box{&OptionControls::txtThrottle, "eDirThrottle"},
                           Box{&OptionControls::txtCache, "AutoTreeCacheRefresh"}}) {
        TestShell shell;
        std::string& text = shell.options.controls.*box.box;
        for (const auto& [valid, number] : {std::pair{"0", 0.0},
                                            {"4.9", 4.9},
                                            {" 1e3 DAYS", 1000},
                                            {"2147483647", 2147483647},
                                            {"-1", -1},
                                            {"LOTS", 0}}) {
            text = valid;
            EXPECT_EQ(shell.options.Number(box.box), number);
        }
        EXPECT_THAT(shell.ui.boxes, IsEmpty());
        for (const char* wrong : {"99999999999999", "2147483648", "-2147483649", "1E999", "-1E999"}) {
            text = wrong;
            for (int times = 2; times > 0; --times)
                EXPECT_EQ(shell.options.Number(box.box), std::nullopt);
            const std::string told = "The value '" + text + "' of the option " + box.option +
                                     " is not a number of 32 bits - the option is left out of account";
            EXPECT_EQ(shell.OnlyBox(), told);
            EXPECT_EQ(shell.LogLines().back(), " WARNING: " + told);
        }
    }
}

TEST(Options, ASpinnerMovesTheNumberItFindsAndKeepsTheRange) {
    struct Case {
        const char* text;
        int steps;
        const char* result;
    };
    for (const Case& c :
         {Case{"200", 1, "201"}, Case{"200", -10, "190"}, Case{"10000", 1, "10000"}, Case{"50", -1, "50"},
          Case{"99999", -1, "10000"}, Case{"-7", 1, "50"}, Case{"", 1, "50"}, Case{"many", -1, "50"},
          Case{"60.9 lines", 1, "61"}, Case{"1e999", 1, "10000"}, Case{"-1e999", 1, "50"},
          Case{"2147483647", 1, "10000"}, Case{"99999999999", -1, "10000"}}) {
        EXPECT_EQ(Spin(c.text, c.steps, {50, 10000}), c.result) << c.text;
    }
}

}  // namespace
}  // namespace zorvel

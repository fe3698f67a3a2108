// Saving and loading selections of applications, through the classes behind their dialogs.
#include "browser/saved_selections.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <deque>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "shell/formats.h"
#include "support/fakes.h"
#include "support/file_size_limit.h"

namespace zorvel {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const std::string kSite = R"(NDS:\\T1\SITE)";
const std::string kApps = R"(NDS:\\T1\SITE\APPS)";
const std::string kHeading = "Zorvel Application Selections Cache - Do not modify!\r\n";
constexpr const char* kOverwrite =
    "Please note that loading another application selection will over-write your current selection(s) - are "
    "you sure?";

// Selects in the lists, and notes what it is told.
class NotingTarget final : public SelectionTarget {
  public:
    explicit NotingTarget(TreeLists& lists) : lists_(lists) {}

    void ClearSelection() override {
        told.emplace_back("clear");
        lists_.ClearSelection();
    }
    void SelectApplication(std::size_t app) override {
        told.push_back(std::to_string(app));
        lists_.SelectApplication(app);
    }
    void ShowSelection() override { told.emplace_back("show"); }

    std::vector<std::string> told;

  private:
    TreeListsSelection lists_;
};

class SavedSelections : public testing::Test {
  protected:
    SavedSelections() {
        lists_.AddApp(kSite, "Word");
        lists_.AddApp(kApps, "Word");
        lists_.AddApp(kApps, "Calc");
        lists_.counts.AppCount = 3;
        shell_.folder.Write("done.wav", "");
        shell_.options.session.FinishedSound = "done";
        shell_.options.session.SoundsEnabled = true;
    }

    void Mark(std::size_t app) { lists_.Select(lists_.AppList[app - 1], true); }
    std::vector<bool> Marks() const {
        std::vector<bool> marks;
        for (const AppRecord& application : lists_.AppList)
            marks.push_back(application.Selected);
        return marks;
    }
    SaveSelections Saver(std::deque<double> fractions = {0.5}) {
        return {shell_.services, lists_, "T1", [fractions]() mutable {
                    const double fraction = fractions.front();
                    fractions.pop_front();
                    return fraction;
                }};
    }
    // A selection file with these lines after its heading, and the dialog opened over it.
    LoadSelections& Opened(const std::string& lines, const std::string& number = "1234567") {
        shell_.folder.Write("TempData/T1-" + number + ".AppSelection", kHeading + lines);
        return Opened();
    }
    LoadSelections& Opened() {
        loader_.emplace(shell_.services, lists_, target_, "T1").Open();
        return *loader_;
    }

    test::TestShell shell_;
    TreeLists lists_;
    NotingTarget target_{lists_};
    std::optional<LoadSelections> loader_;
};

TEST_F(SavedSelections, SavingWritesTheMarkedApplicationsInTheirOrder) {
    Mark(3);
    Mark(1);
    SaveSelections saver = Saver();
    saver.txtComment = "my, comment \xE9";
    saver.Save();
    EXPECT_TRUE(saver.closed);
    EXPECT_EQ(shell_.folder.Read("TempData/T1-50000000.AppSelection"),
              kHeading + "16/11/2026, 2\r\n\"my, comment \xE9\"\r\n\"Word\",\"" + kSite +
                  "\"\r\n\"Calc\",\"" + kApps + "\"\r\n");
    const std::string path = shell_.files.Path("TempData\\T1-50000000.AppSelection");
    EXPECT_THAT(shell_.LogLines(), ElementsAre("    Saving current application selections to '" + path + "'",
                                               "    Finished updating Application Selection Cache file"));
    ASSERT_EQ(shell_.ui.statuses.size(), 2U);
    EXPECT_EQ(shell_.ui.statuses[0], "Saving Application Selections...");
    EXPECT_THAT(shell_.ui.statuses[1], HasSubstr("Ready. "));
    EXPECT_EQ(shell_.ui.picture, StatusPicture::kGreenBall);
    EXPECT_THAT(shell_.ui.sounds, ElementsAre(shell_.files.Path("done.WAV")));
    EXPECT_EQ(shell_.ui.boxes.at(0).icon, MessageIcon::kInformation);
    EXPECT_EQ(shell_.ui.boxes.at(0).title, "Zorvel");
    EXPECT_EQ(shell_.OnlyBox(), "Current selection of 2 applications has been successfully saved!");
}

TEST_F(SavedSelections, FileNumbersAreRoundedPaddedAndNeverUsedTwice) {
    shell_.folder.Write("TempData/t1-0000012.appselection", "kept");
    // 12.4 is taken, whatever the case of its name; 12.5 is the next number.
    SaveSelections saver = Saver({12.4e-8, 12.4e-8, 12.5e-8});
    saver.Save();
    EXPECT_EQ(shell_.folder.Read("TempData/t1-0000012.appselection"), "kept");
    EXPECT_EQ(shell_.folder.Read("TempData/T1-0000013.AppSelection"), kHeading + "16/11/2026, 0\r\n\"\"\r\n");
    EXPECT_EQ(shell_.OnlyBox(), "Current selection of  applications has been successfully saved!");
}

TEST_F(SavedSelections, RandomFractionsDifferWhileTheClockStandsStill) {
    const RandomFraction draw = TimerSeededFractions(shell_.clock);
    double least = 1;
    double greatest = 0;
    double before = -1;
    for (int i = 0; i < 2000; ++i) {
        const double fraction = draw();
        EXPECT_NE(fraction, before);
        before = fraction;
        least = std::min(least, fraction);
        greatest = std::max(greatest, fraction);
    }
    EXPECT_GE(least, 0);
    EXPECT_LT(least, 0.02);
    EXPECT_GT(greatest, 0.98);
    EXPECT_LE(greatest, 1 - 1.0 / (1 << 24));
}

TEST_F(SavedSelections, AFailureToSaveKeepsTheDialogAndLeavesNoFile) {
    Mark(1);
    SaveSelections saver = Saver({0.5, 0.25});
    saver.txtComment = "typed with care";
    {
        const test::FileSizeLimit full_disk(0);
        saver.Save();
    }
    EXPECT_FALSE(saver.closed);
    EXPECT_EQ(saver.txtComment, "typed with care");
    EXPECT_TRUE(std::filesystem::is_empty(shell_.folder.path() / "TempData"));
    EXPECT_EQ(shell_.ui.boxes.at(0).icon, MessageIcon::kExclamation);
    EXPECT_THAT(shell_.ui.boxes.at(0).detail, HasSubstr("T1-50000000.AppSelection: Disk full"));
    EXPECT_EQ(shell_.OnlyBox(), "ERROR: Unexpected error # 61 (Disk full) occurred in frmSaveSelections");
    EXPECT_THAT(shell_.ui.sounds, IsEmpty());
    EXPECT_EQ(shell_.ui.picture, StatusPicture::kGreenBall);
    EXPECT_THAT(shell_.LogLines().back(), HasSubstr("T1-50000000.AppSelection: Disk full"));

    std::filesystem::remove_all(shell_.folder.path() / "TempData");
    saver.Save();
    EXPECT_EQ(shell_.OnlyBox(),
              "ERROR: Unexpected error # 76 (Path not found) occurred in frmSaveSelections");
    EXPECT_FALSE(saver.closed);
}

TEST_F(SavedSelections, ACommentIsReadAsFarAsItsFirstQuoteAndStaysOneLine) {
    Mark(1);
    struct Case {
        const char *typed, *line, *read;
    };
    for (const Case& c :
         {Case{"", "\"\"", ""}, Case{"two\r\nlines\nor\rmore", "\"two lines or more\"", "two lines or more"},
          Case{"the \"big\" one", "\"the \"big\" one\"", "the "}, Case{"5\"", "\"5\"\"", "5"},
          Case{"12, 13", "\"12, 13\"", "12, 13"}}) {
        SaveSelections saver = Saver();
        saver.txtComment = c.typed;
        saver.Save();
        EXPECT_EQ(shell_.folder.Read("TempData/T1-50000000.AppSelection"),
                  kHeading + "16/11/2026, 1\r\n" + c.line + "\r\n\"Word\",\"" + kSite + "\"\r\n");
        LoadSelections& loader = Opened();
        EXPECT_EQ(loader.txtComment, c.read);
        shell_.ui.answers = {Answer::kYes};
        loader.Load();
        EXPECT_EQ(shell_.ui.boxes.back().text,
                  "Application selections loaded - 1 of 1 previously saved selections successfully made.");
        std::filesystem::remove(shell_.folder.path() / "TempData/T1-50000000.AppSelection");
    }
}

TEST_F(SavedSelections, ListsTheFilesOfItsTreeByName) {
    Opened("16/11/2026, 0\r\n\"second\"\r\n", "2000000");
    shell_.folder.Write("TempData/T2-1000000.AppSelection", "");
    shell_.folder.Write("TempData/T1.AppSelection", "");
    LoadSelections& loader = Opened("16/11/2026, 0\r\n\"first\"\r\n", "1000000");
    const std::string created =
        ShortYearDateAndTime(shell_.files.Modified(shell_.files.Path("TempData\\T1-1000000.AppSelection")));
    ASSERT_EQ(loader.lstLoad.size(), 2U);
    EXPECT_EQ(loader.lstLoad[0], "Application Selections #1  -  created " + created);
    EXPECT_THAT(loader.lstLoad[1], testing::StartsWith("Application Selections #2  -  created "));
    EXPECT_EQ(loader.txtComment, "first");
    loader.Select(1);
    EXPECT_EQ(loader.txtComment, "second");

    for (int number = 100; number < 250; ++number)
        shell_.folder.Write("TempData/T1-0000" + std::to_string(number) + ".AppSelection",
                            kHeading + ",\r\n\"c\"\r\n");
    EXPECT_EQ(Opened().lstLoad.size(), 100U);
}

TEST_F(SavedSelections, ATreeWithoutSelectionsHasAnEmptyListAndLoadsNothing) {
    std::filesystem::remove_all(shell_.folder.path() / "TempData");
    Mark(1);
    LoadSelections& loader = Opened();
    EXPECT_THAT(loader.lstLoad, IsEmpty());
    loader.Load();
    EXPECT_FALSE(loader.closed);
    EXPECT_THAT(shell_.ui.boxes, IsEmpty());
    EXPECT_EQ(lists_.counts.SelectedCount, 1);
}

TEST_F(SavedSelections, LoadingReplacesTheSelectionAfterItsQuestion) {
    Mark(1);
    LoadSelections& loader = Opened("16/11/2026, 3\r\n\"my, comment\"\r\n\"Word\",\"" + kApps +
                                    "\"\r\n\"Gone\",\"" + kSite + "\"\r\n\"Calc\",\"" + kApps + "\"\r\n");
    loader.Load();
    EXPECT_EQ(shell_.ui.boxes.at(0).icon, MessageIcon::kExclamation);
    EXPECT_EQ(shell_.ui.boxes.at(0).default_answer, Answer::kNo);
    EXPECT_EQ(shell_.OnlyBox(), kOverwrite);
    EXPECT_FALSE(loader.closed);
    EXPECT_THAT(target_.told, IsEmpty());

    shell_.ui.answers = {Answer::kYes};
    loader.Load();
    EXPECT_TRUE(loader.closed);
    EXPECT_THAT(target_.told, ElementsAre("clear", "2", "3", "show"));
    EXPECT_THAT(Marks(), ElementsAre(false, true, true));
    EXPECT_EQ(lists_.counts.SelectedCount, 2);
    EXPECT_THAT(shell_.ui.statuses.back(), HasSubstr("Ready. "));
    EXPECT_EQ(shell_.ui.boxes.back().icon, MessageIcon::kInformation);
    EXPECT_EQ(shell_.ui.boxes.back().text,
              "Application selections loaded - 2 of 3 previously saved selections successfully made.");
}

TEST_F(SavedSelections, UnusualFilesLoadWhatTheyHold) {
    const std::string word = "\"Word\",\"" + kSite + "\"\r\n";
    struct Case {
        std::string lines;
        std::int32_t selected;
        const char* numbers;
    };
    for (const Case& c : {Case{"16/11/2026\r\n\"7 days\"\r\n" + word, 0, " of "},
                          Case{"16/11/2026, many\r\n\"c\"\r\n" + word, 0, " of "},
                          Case{"16/11/2026, 1\r\n\"c\"\r\n" + word + word, 1, "1 of 1"},
                          // Names with quotes of their own are not found; what follows them is.
                          Case{"16/11/2026, 4\r\n\"c\"\r\n\"17\"\",\"" + kSite + "\"\r\n\"a\"b\",\"" + kSite +
                                   "\"\r\n\"Word\",\"x\"\"\r\n" + word,
                               1, "1 of 4"}}) {
        LoadSelections& loader = Opened(c.lines);
        loader.Load();
        EXPECT_EQ(shell_.OnlyBox(), "Application selections loaded - " + std::string(c.numbers) +
                                        " previously saved selections successfully made.");
        EXPECT_EQ(lists_.counts.SelectedCount, c.selected) << c.lines;
        lists_.Select(lists_.AppList[0], false);
    }
}

TEST_F(SavedSelections, AFileThatCannotBeReadLeavesTheSelectionAndTheDialog) {
    Mark(1);
    struct Case {
        const char *lines, *number, *reason;
    };
    for (const Case& c :
         {Case{"16/11/2026, 2\r\n\"c\"\r\n\"Calc\",\"x\"\r\n", "62 (Input past end of file)",
               "line 4: the file"},
          Case{"16/11/2026, 1\r\n\"c\"\r\n\"Calc\"", "62 (Input past end of file)", "line 4: the file ends"},
          Case{"16/11/2026, 99999999999\r\n\"c\"\r\n", "6 (Overflow)",
               "line 2: the number '99999999999' is too large"},
          Case{"16/11/2026, 1e999\r\n\"c\"\r\n", "6 (Overflow)", "line 2: the number '1e999' is too large"},
          Case{nullptr, "53 (File not found)", "T1-1234567.AppSelection: File not found"}}) {
        LoadSelections& loader = Opened(c.lines == nullptr ? ",\r\n\"c\"\r\n" : c.lines);
        if (c.lines == nullptr)
            std::filesystem::remove(shell_.folder.path() / "TempData/T1-1234567.AppSelection");
        shell_.ui.boxes.clear();
        shell_.ui.answers = {Answer::kYes};
        loader.Load();
        const std::string text =
            "ERROR: Unexpected error # " + std::string(c.number) + " occurred in frmLoadSelections";
        EXPECT_EQ(shell_.ui.boxes.back().text, text);
        EXPECT_THAT(shell_.LogLines(), testing::Contains(" " + text));
        EXPECT_THAT(shell_.LogLines().back(), HasSubstr(c.reason));
        EXPECT_FALSE(loader.closed);
        EXPECT_THAT(Marks(), ElementsAre(true, false, false));
        EXPECT_THAT(target_.told, IsEmpty());
    }
}

TEST_F(SavedSelections, ALineWhoseFileVanishedHasNoCommentAndTheOthersStayUsable) {
    Opened("16/11/2026, 1\r\n\"first\"\r\n\"Calc\",\"" + kApps + "\"\r\n", "1000000");
    LoadSelections& loader = Opened("16/11/2026, 0\r\n\"second\"\r\n", "2000000");
    std::filesystem::remove(shell_.folder.path() / "TempData/T1-2000000.AppSelection");
    loader.Select(1);
    EXPECT_EQ(loader.txtComment, "");
    EXPECT_EQ(shell_.OnlyBox(),
              "ERROR: Unexpected error # 53 (File not found) occurred in frmLoadSelections");
    loader.Select(0);
    EXPECT_EQ(loader.txtComment, "first");
    loader.Load();
    EXPECT_TRUE(loader.closed);
    EXPECT_THAT(Marks(), ElementsAre(false, false, true));
}

}  // namespace
}  // namespace zorvel

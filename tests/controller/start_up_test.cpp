// The start-up sequence and the main controller's events, without a window.
#include <gmock/gmock.h>

#include <memory>

#include "controller/main_controller.h"
#include "directory/open_directory.h"
#include "support/fake_window.h"
#include "support/fakes.h"
#include "support/faulty_directory.h"
#include "support/program_folder.h"

namespace zorvel {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class StartUp : public testing::Test {
  protected:
    StartUp() {
        test::FillProgramFolder(folder_,
                                test::LdifOrganization("SITE") + test::LdifApplication("Word", "o=SITE"));
    }

    bool Start() {
        controller_.emplace(
            files_, clock_, ui_, window_, [this](const Files& files, Log& log, const LdapPorts& ports) {
                return std::make_unique<test::FaultyDirectory>(OpenDirectory(files, log, ports), faults_);
            });
        return controller_->StartUp("-x y");
    }

    void WriteTrees(const std::string& preferred, const std::vector<std::string>& names) {
        std::string toml = preferred.empty() ? "" : "preferred = \"" + preferred + "\"\n";
        for (const std::string& name : names) {
            toml += "[[tree]]\nname = \"" + name + "\"\nldif = \"Trees/T1.ldif\"\n";
        }
        folder_.Write("Directory.toml", toml);
    }

    // The log without its times; ends the session.
    std::vector<std::string> LogLines() {
        controller_.reset();
        std::vector<std::string> lines;
        std::istringstream log(folder_.Read("Zorvel.log"));
        for (std::string line; std::getline(log, line);)
            lines.push_back(line.substr(20, line.size() - 21));
        return lines;
    }

    test::TempFolder folder_;
    Files files_{folder_.path()};
    test::FakeClock clock_;
    test::FakeUserInterface ui_;
    test::FakeMainWindow window_;
    test::DirectoryFaults faults_;
    std::optional<MainController> controller_;
};

TEST_F(StartUp, LogsEveryStepInOrder) {
    ASSERT_TRUE(Start());
    EXPECT_EQ(ui_.statuses.front(), "Initializing...");
    EXPECT_EQ(ui_.statuses.back(),
              "Ready. 1 applications available, none selected. Tree last read on 16/11/2026 17:28");
    EXPECT_EQ(ui_.picture, StatusPicture::kGreenBall);
    EXPECT_EQ(window_.nodes, 2U);
    const std::string folder = files_.ProgramFolder();
    const std::string rule(45, '-');
    EXPECT_THAT(
        LogLines(),
        ElementsAre("   ", "   " + rule, "   " + window_.caption, "   " + rule,
                    "   Command line parameters: -x y", "   Initial Initialization...",
                    "   Zorvel.INI Options file successfully read", "   Connected to 1 tree(s)",
                    "   Tree #1, 'T1'", "   Connecting to Master DB...", "   Master DB was opened ok...",
                    "   Reading " + folder + "\\RegExclude.dat file...", "   1 entry(s) were read",
                    "   Reading " + folder + "\\FileIssue.dat file...", "   1 entry(s) were read",
                    "   Finding Preferred Tree...", "   Changing Tree to 'NDS:\\\\T1\\[Root]'",
                    "   Reading physical Tree, 'T1'",
                    "   Writing fresh Tree cache, '" + folder + "\\TempData\\T1.TreeCache'",
                    "   Writing fresh Applications Cache, '" + folder + "\\TempData\\T1.AppCache'",
                    "   Finished updating Application Cache file", "   Initial initilization finished"));
}

TEST_F(StartUp, ThePreferredTreeIsTheLastWhoseNameBeginsThePreferredOne) {
    struct Case {
        const char* preferred;
        std::vector<std::string> trees;
        int chosen;
    };
    for (const Case& c :
         {Case{"CORP_TREE_2", {"CORP_TREE", "CORP_TREE_2"}, 1},
          Case{"CORP_TREE_2", {"CORP_TREE_2", "CORP_TREE"}, 1}, Case{"CORP_TREE_2", {"CORP_TREE"}, 0},
          Case{"CORP_TREE", {"ALPHA", "corp_tree"}, 0}, Case{"", {"A", "B"}, 0}, Case{"B", {"A", "B"}, 1}}) {
        WriteTrees(c.preferred, c.trees);
        window_ = {};
        ASSERT_TRUE(Start());
        EXPECT_EQ(window_.selected_tree, c.chosen) << c.preferred;
        EXPECT_EQ(controller_->session().current_tree, c.trees[static_cast<std::size_t>(c.chosen)]);
    }
}

TEST_F(StartUp, WithoutATreeTheRestStaysUsable) {
    WriteTrees("", {});
    ASSERT_TRUE(Start());
    EXPECT_EQ(window_.directory_access, DirectoryAccess::kNone);
    EXPECT_EQ(window_.current_ou, "No Trees found!");
    ASSERT_EQ(ui_.boxes.size(), 1U);
    EXPECT_EQ(
        ui_.boxes[0].text,
        "Zorvel didn't find any Trees.\n\nYour machine may not be correctly authenticated to the NDS.  While "
        "eDirectory analysis functions will be disabled, other functions - such as reporting - should be "
        "fine.");
    EXPECT_TRUE(controller_->session().MasterConnection.has_value());
    EXPECT_EQ(ui_.statuses.back(), "Ready. No applications available to Zorvel ! ");
    const std::vector<std::string> log = LogLines();
    EXPECT_THAT(log, Contains("WARNING: No Trees were found"));
    EXPECT_EQ(log.back(), "   Initial initilization finished");
}

TEST_F(StartUp, AnUnreadableDirectoryIsReportedAndStartUpGoesOn) {
    faults_.error_600_everywhere = true;
    ASSERT_TRUE(Start());
    EXPECT_THAT(ui_.boxes[0].text,
                HasSubstr("Zorvel encountered an error while attempting to retrieve Directory "
                          "Services information.\n\nYour machine"));
    EXPECT_THAT(LogLines(),
                Contains("ERROR: DS error 600 returned during OU control refresh - may not be correctly "
                         "authenticated to NDS"));
}

// Every box says which file and why; what would only fail again is not tried; until a read goes well there is
// no more to do than to try again.
TEST_F(StartUp, ATreeThatCannotBeReadIsNamedWithFileAndReasonAndReadLater) {
    const std::string tree = folder_.Read("Trees/T1.ldif");
    ASSERT_TRUE(Start());
    LogLines();
    struct Case {
        const char *ldif, *reason;
        bool cached;
        std::size_t boxes;
        double waited;  // seconds of notice before the tree would be read
    };
    for (const Case& c : {
             Case{"dn: o=X\no:: %%%\n", "Trees\\T1.ldif, line 2: ", false, 1, 5},
             Case{nullptr, "Trees\\T1.ldif: File not found", true, 2, 0},
             Case{nullptr, "Trees\\T1.ldif: File not found", false, 2, 0},
         }) {
        std::filesystem::remove(folder_.path() / "Trees/T1.ldif");
        if (c.ldif != nullptr) folder_.Write("Trees/T1.ldif", c.ldif);
        if (!c.cached) std::filesystem::remove(folder_.path() / "TempData/T1.TreeCache");
        ui_.boxes.clear();
        clock_.slept = 0;
        ASSERT_TRUE(Start());
        EXPECT_EQ(controller_->session().tree_loaded, c.cached);
        EXPECT_EQ(window_.directory_access, DirectoryAccess::kRetry) << c.reason;
        EXPECT_EQ(ui_.boxes.size(), c.boxes) << c.reason;
        for (const MessageBox& box : ui_.boxes)
            EXPECT_THAT(box.detail, HasSubstr(c.reason));
        EXPECT_NEAR(clock_.slept, c.waited, 1e-6);
        folder_.Write("Trees/T1.ldif", tree);
        controller_->RefreshTree();
        EXPECT_EQ(window_.directory_access, DirectoryAccess::kFull);
        EXPECT_TRUE(controller_->session().tree_loaded);
        EXPECT_THAT(LogLines(), testing::Contains(HasSubstr(c.reason)).Times(static_cast<int>(c.boxes)));
    }
}

TEST_F(StartUp, ASwitchToATreeThatCannotBeReadShowsNothingOfTheOther) {
    folder_.Write("Directory.toml",
                  "[[tree]]\nname = \"T1\"\nldif = \"Trees/T1.ldif\"\n"
                  "[[tree]]\nname = \"T2\"\nldif = \"Trees/T2.ldif\"\n");
    ASSERT_TRUE(Start());
    clock_.slept = 0;
    controller_->SwitchTree(1);
    ASSERT_EQ(ui_.boxes.size(), 1U);
    EXPECT_EQ(ui_.boxes[0].text,
              "ERROR: Unexpected error # 600 (The directory could not be read) occurred in comTree_Click");
    EXPECT_EQ(ui_.boxes[0].detail, files_.Path("Trees\\T2.ldif") + ": File not found");
    EXPECT_EQ(clock_.slept, 0);
    EXPECT_EQ(window_.nodes, 0U);
    EXPECT_TRUE(controller_->session().tree.OUList.empty());
    controller_->SwitchTree(0);
    EXPECT_EQ(window_.directory_access, DirectoryAccess::kFull);
    EXPECT_EQ(window_.nodes, 2U);
}

TEST_F(StartUp, ClientFailuresEndItOrAreLogged) {
    faults_.nw_net_init = 34;
    faults_.create_context_handle = -5;
    ASSERT_TRUE(Start());
    const std::vector<std::string> log = LogLines();
    EXPECT_THAT(log, Contains("ERROR: NWNetInit call failed with 34"));
    EXPECT_THAT(log, Contains("ERROR: CreateContext failed with-5"));

    faults_.nw_calls_init = 1;
    EXPECT_FALSE(Start());
    EXPECT_EQ(ui_.boxes.back().text,
              "The NetWare Client libraries could not be initialised - is the Client correctly installed?");
    EXPECT_EQ(LogLines().back(), "ERROR: The NetWare Libraries could not be initialised - Terminating");
}

TEST_F(StartUp, ADirectoryFileThatDoesNotParseIsNamedWithItsLine) {
    folder_.Write("Directory.toml", "preferred = \"T1\"\n[[tree]\n");
    EXPECT_FALSE(Start());
    EXPECT_THAT(ui_.boxes.back().detail, testing::MatchesRegex(".*Directory.toml, line 2.*"));
    EXPECT_THAT(LogLines(), Contains("ERROR: " + ui_.boxes.back().detail));
}

TEST_F(StartUp, AMissingFileEndsItAtItsStep) {
    struct Case {
        const char *file, *line;
    };
    for (const Case& c : {Case{"RegExclude.dat", "17"}, Case{"FileIssue.dat", "18"}}) {
        std::filesystem::rename(folder_.path() / c.file, folder_.path() / "away");
        EXPECT_FALSE(Start());
        EXPECT_EQ(
            ui_.boxes.back().text,
            std::string("Error 53 (File not found) occurred during Zorvel initialisation at Line ") + c.line);
        EXPECT_EQ(ui_.boxes.back().icon, MessageIcon::kCritical);
        EXPECT_EQ(ui_.boxes.back().detail, files_.Path(c.file) + ": File not found");
        EXPECT_THAT(
            LogLines(),
            Contains(std::string("ERROR: Unexpected error # 53 (File not found) occurred in Form_Load "
                                 "procedure at Line ") +
                     c.line + " - Terminating"));
        std::filesystem::rename(folder_.path() / "away", folder_.path() / c.file);
    }
    std::filesystem::remove(folder_.path() / "Databases/ZorvelMaster.mdb");
    EXPECT_FALSE(Start());
    EXPECT_THAT(ui_.boxes.back().text, HasSubstr("occurred during Zorvel initialisation at Line 15"));
}

TEST_F(StartUp, TheWelcomeWindowComesUntilItIsSuppressed) {
    ASSERT_TRUE(Start());
    EXPECT_TRUE(window_.welcome_shown);
    EXPECT_FALSE(window_.reenable_welcome_enabled);

    window_ = {};
    window_.suppress_welcome = true;
    ASSERT_TRUE(Start());
    EXPECT_EQ(folder_.Read("TempData/welcome.nal"),
              "Welcome screen suppressed - delete this file to re-instate\r\n");
    EXPECT_TRUE(window_.reenable_welcome_enabled);

    window_ = {};
    ASSERT_TRUE(Start());
    EXPECT_FALSE(window_.welcome_shown);
    controller_->ReenableWelcome();
    EXPECT_FALSE(folder_.Has("TempData/welcome.nal"));
    EXPECT_FALSE(window_.reenable_welcome_enabled);
}

TEST_F(StartUp, TheLogGrowsOnlyWhenTheOptionSaysSo) {
    ASSERT_TRUE(Start());
    const std::size_t once = LogLines().size();
    ASSERT_TRUE(Start());
    EXPECT_LE(LogLines().size(), once);
    folder_.Write("Zorvel.ini", "AppendToLog=True\r\n");
    ASSERT_TRUE(Start());
    EXPECT_GT(LogLines().size(), once + once / 2);
}

TEST_F(StartUp, EscapeCountsOnlyWhileBusy) {
    ASSERT_TRUE(Start());
    controller_->PressEscape();
    EXPECT_FALSE(controller_->session().activity.UserInterrupt);
    controller_->session().activity.Busy = true;
    controller_->PressEscape();
    EXPECT_TRUE(controller_->session().activity.UserInterrupt);
    EXPECT_EQ(ui_.statuses.back(), "Interrupted at user request... Please wait a moment");
    EXPECT_EQ(ui_.picture, StatusPicture::kRedBall);
    EXPECT_NEAR(clock_.slept, 5 + 0.8, 1e-6);  // the notice before the tree was read, and this one
    EXPECT_THAT(window_.generate_enabled, ElementsAre(true));
}

TEST_F(StartUp, EditingARuleListAsksFirst) {
    ASSERT_TRUE(Start());
    controller_->EditRuleList(RuleListFile::kRegistryIssues);
    EXPECT_THAT(ui_.edited, IsEmpty());
    EXPECT_EQ(ui_.boxes.back().text,
              "Warning! - Incorrectly altering the Registry Issue List may cause unexpected Zorvel "
              "behaviour.\r\rAlso, please note that Zorvel must be restarted for any alterations to take "
              "effect.\r\rAre you sure you wish to continue?");
    EXPECT_EQ(ui_.boxes.back().default_answer, Answer::kNo);
    ui_.answers = {Answer::kYes};
    controller_->EditRuleList(RuleListFile::kCustomFileIssues);
    EXPECT_THAT(ui_.edited, ElementsAre(files_.Path("FileIssue.dat")));
}

TEST_F(StartUp, SwitchingTreesLoadsTheOtherAndForgetsSelections) {
    WriteTrees("T1", {"T1", "T2"});
    ASSERT_TRUE(Start());
    TreeLists& tree = controller_->session().tree;
    tree.Select(tree.AppList[0], true);
    controller_->SwitchTree(1);
    EXPECT_EQ(tree.counts.SelectedCount, 0);
    EXPECT_EQ(tree.OUList[0].Path, "NDS:\\\\T2\\[Root]");
    EXPECT_TRUE(folder_.Has("TempData/T2.TreeCache"));
    controller_->Exit();
    EXPECT_FALSE(controller_->session().MasterConnection.has_value());
    const std::vector<std::string> log = LogLines();
    EXPECT_EQ(log.back(), "   Exiting Zorvel at user request");
    EXPECT_THAT(log, Not(Contains(HasSubstr("ERROR"))));
}

}  // namespace
}  // namespace zorvel

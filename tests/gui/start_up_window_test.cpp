// The main window at start-up and at its end.
#include "gui/main_window.h"

namespace zorvel::test {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

class StartUpWindow : public MainWindowTest {};

TEST_F(StartUpWindow, OpensThePreferredTreeAndWaitsForASelection) {
    ASSERT_TRUE(Start());
    EXPECT_THAT(window_->windowTitle().toStdString(), StartsWith("Zorvel v"));
    EXPECT_EQ(Get<QComboBox>("comTree").currentText(), "T1");
    EXPECT_EQ(Get<QComboBox>("comTree").count(), 2);
    EXPECT_THAT(Nodes(), ElementsAre("[Root]", " ACME (1)", " SITE (0)", "  APPS (3)", "  EMPTY (0)",
                                     "   DEEP (1)", "  BARE (0)"));
    EXPECT_TRUE(tree().isExpanded(Node("[Root]")));
    EXPECT_TRUE(tree().isExpanded(Node("SITE (0)"))) << "read from the directory, the first level is open";
    EXPECT_FALSE(tree().isExpanded(Node("EMPTY (0)")));
    EXPECT_THAT(Status().toStdString(),
                StartsWith("Ready. 5 applications available, none selected. Tree last read on "));
    EXPECT_EQ(tabs().currentIndex(), 0);
    EXPECT_TRUE(tabs().isTabEnabled(1));
    EXPECT_FALSE(tabs().isTabEnabled(2));
    EXPECT_FALSE(tabs().isTabEnabled(3));
    EXPECT_FALSE(Get<QAbstractButton>("butGenerate").isEnabled());
    EXPECT_FALSE(Menu("mnuFileExit_1").isEnabled());
    EXPECT_TRUE(Menu("mnuFileExit_2").isEnabled());
    EXPECT_EQ(Text("labCurrentOU"), "(select from the OU browser)");
    EXPECT_TRUE(boxes_.empty());
}

TEST_F(StartUpWindow, LoadedFromItsCacheShowsTheRootAloneExpanded) {
    ASSERT_TRUE(Start());
    ASSERT_TRUE(Start());
    EXPECT_TRUE(tree().isExpanded(Node("[Root]")));
    EXPECT_FALSE(tree().isExpanded(Node("SITE (0)")));
}

TEST_F(StartUpWindow, SwitchesToAnotherTree) {
    ASSERT_TRUE(Start());
    ClickNode("ACME (1)");
    ClickItem(0);
    Get<QComboBox>("comTree").setFocus();
    PressKey(Qt::Key_Down);
    EXPECT_THAT(Nodes(), ElementsAre("[Root]", " ZETA (1)"));
    EXPECT_THAT(Items(), ElementsAre("Tool")) << "the old lines stay until a node is clicked, unselected";
    EXPECT_FALSE(Get<QAbstractButton>("butGenerate").isEnabled());
}

TEST_F(StartUpWindow, WithoutATreeStartsForItsOtherFunctions) {
    folder_.Write("Directory.toml", "");
    ASSERT_TRUE(Start());
    EXPECT_EQ(Text("labCurrentOU"), "No Trees found!");
    EXPECT_EQ(Text("labApps"), "No applications in this branch");
    for (int i = 0; i < 7; ++i)
        EXPECT_FALSE(Get<QToolButton>(qPrintable(QString("butTreeControl_%1").arg(i))).isEnabled()) << i;
    EXPECT_FALSE(Get<QComboBox>("comTree").isEnabled());
    EXPECT_FALSE(Menu("mnuFileExit_2").isEnabled());
    EXPECT_TRUE(Menu("mnuDatabaseItem_3").isEnabled());
}

TEST_F(StartUpWindow, ATreeThatCannotBeReadLeavesTheChoiceToTryAgain) {
    const auto usable = [this](bool all) {
        for (int i = 0; i < 6; ++i) {
            const bool other_mode = i == 3;  // all OUs are shown already
            EXPECT_EQ(Get<QToolButton>(qPrintable(QString("butTreeControl_%1").arg(i))).isEnabled(),
                      all && !other_mode)
                << i;
        }
        EXPECT_EQ(tree().isEnabled(), all);
        EXPECT_EQ(Menu("mnuFileExit_2").isEnabled(), all);
        EXPECT_TRUE(Get<QToolButton>("butTreeControl_6").isEnabled());
        EXPECT_TRUE(Get<QComboBox>("comTree").isEnabled());
    };
    const std::string ldif = folder_.Read("Trees/T1.ldif");
    const std::filesystem::path file = folder_.path() / "Trees/T1.ldif";
    std::filesystem::remove(file);
    ASSERT_TRUE(Start());
    ASSERT_EQ(boxes_.size(), 2U);
    EXPECT_THAT(boxes_[0],
                testing::EndsWith("\n\n" + folder_.path().string() + "\\Trees\\T1.ldif: File not found"));
    usable(false);
    folder_.Write("Trees/T1.ldif", ldif);
    Answer(QMessageBox::Yes);
    Click("butTreeControl_6");
    usable(true);
    // A file that goes bad later: the tree is there from its cache, and fails at the first look into it.
    ASSERT_TRUE(Start());
    Click("butTreeControl_5");
    folder_.Write("Trees/T1.ldif", "nonsense\n");
    ClickNode("APPS (3)");
    EXPECT_THAT(boxes_.back(), testing::HasSubstr("\\Trees\\T1.ldif, line 1: "));
    usable(false);
    EXPECT_FALSE(Get<QAbstractButton>("butGenerate").isEnabled());
    folder_.Write("Trees/T1.ldif", ldif);
    auto& trees = Get<QComboBox>("comTree");
    trees.setFocus();
    QTest::keyClick(&trees, Qt::Key_Space);
    QTest::keyClick(QApplication::activePopupWidget()->focusWidget(), Qt::Key_Return);
    usable(true);
}

TEST_F(StartUpWindow, ClosedWhileItReadsATreeLeavesTheCachesAsTheyAre) {
    ASSERT_TRUE(Start());
    window_.reset();
    const std::string caches = folder_.Read("TempData/T1.TreeCache") + folder_.Read("TempData/T1.AppCache");
    struct Case {
        int countdown;
        const char* status;  // what the window says when it is closed
    };
    for (const Case& c : {Case{30, "Ready."}, Case{0, "Reading NDS:"}}) {
        settings_.tree_read_countdown = c.countdown;
        ASSERT_TRUE(Start());
        boxes_.clear();
        clock_.on_timer = [&] {
            if (!window_->controller().session().activity.Busy || !Status().startsWith(c.status)) return;
            clock_.on_timer = nullptr;
            window_->close();
            EXPECT_TRUE(window_->isVisible()) << "first the reading has to stop";
        };
        Answer(QMessageBox::Yes);
        Click("butTreeControl_6");
        EXPECT_EQ(clock_.on_timer, nullptr);
        EXPECT_FALSE(window_->isVisible());
        EXPECT_EQ(boxes_.size(), 1U) << "only whether the user is sure";
        EXPECT_THAT(LogText(), testing::HasSubstr("Exiting Zorvel at user request"));
        EXPECT_EQ(folder_.Read("TempData/T1.TreeCache") + folder_.Read("TempData/T1.AppCache"), caches);
    }
}

TEST_F(StartUpWindow, WelcomesUntilTheUserSuppressesIt) {
    std::filesystem::remove(folder_.path() / "TempData/welcome.nal");
    OnDialog([](QDialog& dialog) {
        dialog.findChild<QCheckBox*>()->setFocus();
        PressKey(Qt::Key_Space);
        dialog.reject();
    });
    ASSERT_TRUE(Start());
    EXPECT_TRUE(std::filesystem::exists(folder_.path() / "TempData/welcome.nal"));
    ASSERT_TRUE(Menu("mnuHelpItem_5").isEnabled());
    Menu("mnuHelpItem_5").trigger();
    EXPECT_FALSE(std::filesystem::exists(folder_.path() / "TempData/welcome.nal"));
    EXPECT_FALSE(Menu("mnuHelpItem_5").isEnabled());
}

// Whatever waits for the user, a program that is to end waits no longer, and does nothing that he did not
// want.
TEST_F(StartUpWindow, EndsWithoutAskingWhateverIsOpen) {
    const auto press = [](const char* button) {
        return [button](QDialog& dialog) {
            QTest::mouseClick(&Control<QAbstractButton>(dialog, button), Qt::LeftButton);
        };
    };
    ASSERT_TRUE(Start());
    Click("butTreeControl_5");
    OnDialog(press("butSave"));
    Menu("mnuFileExit_1").trigger();
    window_.reset();
    const std::string cache = folder_.Read("TempData/T1.TreeCache");
    const auto end = [this](QDialog& /*dialog*/) { window_->End(); };
    const std::pair<const char*, std::function<void()>> cases[] = {
        {"nothing", [this] { window_->End(); }},
        {"a question whose default is No",
         [&] {
             OnDialog(end);
             Click("butTreeControl_6");
         }},
        {"a message, and the dialog behind it",
         [&] {
             OnDialog(end);
             OnDialog([](QDialog& /*dialog*/) {});  // goes by itself, perhaps before it is seen
             Menu("mnuDatabaseItem_3").trigger();
         }},
        {"a dialog with a question of its own",
         [&] {
             Click("butTreeControl_5");
             OnDialog(press("butLoad"));
             OnDialog(end);
             Menu("mnuFileExit_2").trigger();
         }},
        {"a menu",
         [this] {
             auto& trees = Get<QComboBox>("comTree");
             trees.setFocus();
             QTest::keyClick(&trees, Qt::Key_Space);
             window_->End();
         }},
    };
    for (const auto& [name, open] : cases) {
        ASSERT_TRUE(Start());
        open();
        EXPECT_TRUE(QTest::qWaitFor([this] { return !window_->isVisible(); })) << name;
        ForgetActions();
        EXPECT_THAT(LogText(), testing::EndsWith("Exiting Zorvel at user request\r\n")) << name;
        EXPECT_EQ(folder_.Read("TempData/T1.TreeCache"), cache) << name;
    }
    // The welcome window stands in the midst of the start, which goes on to its end.
    std::filesystem::remove(folder_.path() / "TempData/welcome.nal");
    OnDialog(end);
    EXPECT_FALSE(Start()) << "it takes no keys";
    EXPECT_FALSE(window_->isVisible());
    EXPECT_FALSE(folder_.Has("TempData/welcome.nal"));
    EXPECT_THAT(LogText(), testing::EndsWith("Exiting Zorvel at user request\r\n"));
}

TEST_F(StartUpWindow, ComesToTheFrontWithTheDialogThatIsOpen) {
    ASSERT_TRUE(Start());
    window_->showMinimized();
    window_->ComeToFront("a token");
    EXPECT_FALSE(window_->isMinimized());
    EXPECT_EQ(qgetenv("XDG_ACTIVATION_TOKEN"), "a token") << "where Qt looks for it";
    qunsetenv("XDG_ACTIVATION_TOKEN");
    OnDialog([this](QDialog& dialog) {
        QWidget other;
        ShowActive(other);
        window_->ComeToFront({});
        EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
        dialog.reject();
    });
    Menu("mnuHelpItem_2").trigger();
}

TEST_F(StartUpWindow, LogsItsEndButNotThatByTheMenu) {
    struct Case {
        const char* name;
        std::function<void()> leave;
        bool logged;
    };
    const Case cases[] = {
        {"exit button", [this] { Click("butExit"); }, true},
        {"close box", [this] { window_->close(); }, true},
        {"menu", [this] { Menu("mnuFileExit_4").trigger(); }, false},
    };
    for (const Case& one : cases) {
        ASSERT_TRUE(Start());
        one.leave();
        const std::string log = LogText();
        EXPECT_EQ(log.find("Exiting Zorvel at user request") != std::string::npos, one.logged) << one.name;
    }
}

}  // namespace
}  // namespace zorvel::test

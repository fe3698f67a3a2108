// The Reports menu of the main window, through clicks and keys, and the windows that it opens.
#include <QAbstractButton>
#include <QMenu>
#include <QMenuBar>

#include "gui/main_window.h"

namespace zorvel::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class ReportMenu : public MainWindowTest {
  protected:
    void SetUp() override {
        std::filesystem::copy(ZORVEL_SOURCE_DIR "/program/Reports", folder_.path() / "Reports");
    }
    // A dataset with one application with an issue, put on file on a day of 2026.
    void AddDataset(const std::string& day, const std::string& container) {
        const std::string name = "Zorvel_" + day + ".MDB";
        test::AddDataset(folder_, name);
        Database(folder_.path() / "Databases" / name, name)
            .ExecuteScript("INSERT INTO Zorvel_Apps (AppUniqueRef, AppName, AppOU) VALUES (1, 'Word', '" +
                           container +
                           "'); INSERT INTO Zorvel_Issues VALUES (1, 'Application', '', '', 'APPNODESC')");
        Database(folder_.path() / "Databases/ZorvelMaster.mdb", "master")
            .Execute("INSERT INTO Zorvel_CaptureDetails (Captured, Tree, OU, DBName) VALUES ('2026-11-" +
                     day + " 08:00:00', 'T1', '" + container + "', '" + name + "')");
    }
    // Two datasets, the newer one of container "NEW", and the program.
    void StartWithDatasets() {
        AddDataset("16", "OLD");
        AddDataset("17", "NEW");
        ASSERT_TRUE(Start());
    }
    QMenu& Reports() { return *window_->findChild<QMenu*>("mnuReports"); }
    // The menu that is in front, once it has this title.
    static QMenu& OpenMenu(const QString& title) {
        QMenu* menu = nullptr;
        const bool open = QTest::qWaitFor([&] {
            menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            return menu != nullptr && menu->title() == title;
        });
        if (!open) throw std::runtime_error("the menu is not open: " + title.toStdString());
        return *menu;
    }
    static void ClickEntry(QMenu& menu, const QString& text) {
        for (QAction* entry : menu.actions()) {
            if (entry->text() != text) continue;
            QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(entry).center());
            return;
        }
        FAIL() << "there is no " << text.toStdString();
    }
    void Choose(const QString& group, const QString& report) {
        QMenuBar& bar = *window_->menuBar();
        QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.actionGeometry(Reports().menuAction()).center());
        ClickEntry(OpenMenu("&Reports"), group);
        ClickEntry(OpenMenu(group), report);
        QCoreApplication::processEvents();
    }
    // Presses a button of the report options when they ask, after `keys` on their list of datasets.
    void OnOptions(const char* button, const QList<Qt::Key>& keys = {}) {
        OnDialog([this, button, keys](QDialog& dialog) {
            EXPECT_EQ(dialog.objectName(), "frmReportOptions");
            asked_.push_back(dialog.windowTitle().toStdString());
            for (const Qt::Key key : keys)
                PressKey(key);
            QTest::mouseClick(&Control<QAbstractButton>(dialog, button), Qt::LeftButton);
        });
    }
    // The report windows that are open: title, and first group if there is one.
    static std::vector<std::string> Windows() {
        std::vector<std::string> windows;
        for (const QWidget* window : QApplication::topLevelWidgets()) {
            if (window->objectName() != "frmReport" || !window->isVisible()) continue;
            const QAbstractItemModel* groups = Control<QTreeView>(*window, "treeGroups").model();
            windows.push_back(window->windowTitle().toStdString());
            if (groups != nullptr)
                windows.back() += ": " + groups->index(0, 0).data().toString().toStdString();
        }
        std::sort(windows.begin(), windows.end());
        return windows;
    }

    std::vector<std::string> asked_;
};

TEST_F(ReportMenu, HasFourteenReportsInThreeMenus) {
    ASSERT_TRUE(Start());
    std::vector<std::string> shown;
    for (const QAction* group : Reports().actions()) {
        shown.push_back(group->text().toStdString());
        for (const QAction* report : group->menu()->actions())
            shown.push_back("  " + report->text().toStdString());
    }
    EXPECT_EQ(Reports().title(), "&Reports");
    EXPECT_THAT(shown, ElementsAre("Zorvelrun", "  Issue Summary", "  Issue Detail", "Application Components",
                                   "  FIL File Details", "  Registry Details", "  Macro Details",
                                   "  INI File Details", "  Attribute Details", "  Run Order Summary",
                                   "Miscellaneous", "  Capture Details Summary", "  Associations Summary",
                                   "  Associations by Application", "  Associations by User",
                                   "  Application 'Fingerprint' Summary", "  Application Flags Summary"));
}

TEST_F(ReportMenu, OpensAWindowForEachReportOnceItsOptionsAreChosen) {
    StartWithDatasets();
    OnOptions("butCancel");
    Choose("Zorvelrun", "Issue Summary");
    EXPECT_THAT(asked_, ElementsAre("Reporting options for Issue Summary"));
    EXPECT_THAT(Windows(), IsEmpty());

    OnOptions("butOk");
    Choose("Zorvelrun", "Issue Summary");
    EXPECT_THAT(Windows(), ElementsAre("Issue Summary: NEW"));
    OnOptions("butOk", {Qt::Key_Down});
    Choose("Application Components", "Run Order Summary");
    OnOptions("butOk", {Qt::Key_Down});
    Choose("Zorvelrun", "Issue Summary");
    Choose("Miscellaneous", "Capture Details Summary");
    EXPECT_THAT(Windows(), ElementsAre("Capture Details Summary: T1", "Issue Summary: NEW",
                                       "Issue Summary: OLD", "Run Order Summary: OLD"));
    EXPECT_EQ(asked_.size(), 4U) << "nothing is asked ahead of the capture details";
    EXPECT_THAT(boxes_, IsEmpty());

    window_->close();
    EXPECT_FALSE(window_->isVisible());
    EXPECT_THAT(Windows(), IsEmpty());
}

TEST_F(ReportMenu, IsUsedByKeys) {
    StartWithDatasets();
    OnDialog([](QDialog&) { PressKey(Qt::Key_Return); });
    PressKey(Qt::Key_R, Qt::AltModifier);
    OpenMenu("&Reports");
    PressKey(Qt::Key_Up);  // to the last one
    PressKey(Qt::Key_Right);
    OpenMenu("Miscellaneous");
    PressKey(Qt::Key_Up);
    PressKey(Qt::Key_Return);
    EXPECT_THAT(Windows(), ElementsAre("Application Flags Summary: NEW"));
}

TEST_F(ReportMenu, WithoutADatasetThereIsNothingToReportOn) {
    ASSERT_TRUE(Start());
    Answer(QMessageBox::Ok);
    OnDialog([](QDialog& dialog) {
        EXPECT_FALSE(Control<QAbstractButton>(dialog, "butOk").isEnabled());
        PressKey(Qt::Key_Escape);
    });
    Choose("Miscellaneous", "Associations by User");
    EXPECT_THAT(boxes_, ElementsAre("There are no recorded Zorvelled applications to report on - please try "
                                    "again after Zorvelling at least one NAL object"));
    EXPECT_THAT(Windows(), IsEmpty());
    Choose("Miscellaneous", "Capture Details Summary");
    EXPECT_THAT(Windows(), ElementsAre("Capture Details Summary"));
}

TEST_F(ReportMenu, EscapeEndsAQueryThatWouldNotEndAndNothingIsShown) {
    StartWithDatasets();
    folder_.Write("Reports/Zorvel_AppIssues.rpt",
                  "title = \"t\"\nquery = \"WITH N(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM N) SELECT "
                  "count(*) AS x FROM N\"\n[[column]]\nfield = \"x\"\n");
    std::vector<std::string> status;
    const std::function<void()> press_escape = [&] {
        if (!window_->controller().session().activity.Busy) {
            QTimer::singleShot(1, window_.get(), press_escape);
            return;
        }
        status.push_back(Status().toStdString());
        QTest::mouseClick(tabs().tabBar(), Qt::LeftButton, {}, tabs().tabBar()->tabRect(1).center());
        QTimer::singleShot(0, window_.get(), [&] { status.push_back(Status().toStdString()); });
        QTest::keyClick(window_.get(), Qt::Key_Escape);
    };
    OnDialog([&](QDialog& dialog) {
        press_escape();
        QTest::mouseClick(&Control<QAbstractButton>(dialog, "butOk"), Qt::LeftButton);
    });
    Choose("Zorvelrun", "Issue Summary");
    EXPECT_THAT(status, ElementsAre("Creating 'Issue Summary'...",
                                    "Interrupted at user request... Please wait a moment"));
    EXPECT_THAT(Status().toStdString(), testing::StartsWith("Ready. "));
    EXPECT_EQ(tabs().currentIndex(), 0) << "the click was dropped";
    EXPECT_THAT(Windows(), IsEmpty());
    EXPECT_THAT(boxes_, IsEmpty());
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);

    OnOptions("butOk");
    Choose("Zorvelrun", "Issue Detail");
    EXPECT_THAT(Windows(), ElementsAre("Issue Detail: NEW"));
    EXPECT_THAT(LogText(), HasSubstr("    Reporting: Interrupted at user request\r\n"));
}

TEST_F(ReportMenu, AMissingDefinitionIsToldAndTheProgramGoesOn) {
    StartWithDatasets();
    std::filesystem::remove(folder_.path() / "Reports/Zorvel_AppIssues.rpt");
    for (const char* report : {"Issue Summary", "Issue Detail"}) {
        OnOptions("butOk");
        Choose("Zorvelrun", report);
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    }
    EXPECT_THAT(boxes_, ElementsAre(HasSubstr("\\Reports\\Zorvel_AppIssues.rpt: File not found")));
    EXPECT_THAT(Windows(), ElementsAre("Issue Detail: NEW"));
    window_.reset();
    EXPECT_THAT(Windows(), IsEmpty()) << "gone with the main window";
}

}  // namespace
}  // namespace zorvel::test

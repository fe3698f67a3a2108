// A report in its window, for tests of what the window shows and of what it writes.
#pragma once

#include <QPointer>
#include <QSpinBox>
#include <QToolBar>
#include <filesystem>
#include <memory>
#include <vector>

#include "gui/controls.h"
#include "gui/report/frm_report.h"
#include "gui/report/report_view.h"
#include "platform/store.h"
#include "support/fakes.h"

namespace zorvel::test {

inline constexpr const char* kGroups = R"(
[[group]]
by = "Site"
heading = "Site {Site}"
[[group]]
by = ["Site", "App"]
heading = "{App}"
note = "Installed at {Site}"
)";

// A report over 3 sites with 4 applications each, and 40 settings in each of them.
class ReportWindowTest : public testing::Test {
  protected:
    ReportWindowTest() {
        QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        Database database(DatabasePath(), "Rows.mdb", Database::Access::kCreate);
        database.Execute("CREATE TABLE Settings (Site TEXT, App TEXT, Key TEXT, Data TEXT, Size INTEGER)");
        database.Begin();
        Command insert = database.Prepare("INSERT INTO Settings VALUES (?1, ?2, ?3, ?4, ?5)");
        for (int row = 0; row < 480; ++row) {
            const std::string site = std::to_string(row / 160 + 1);
            const std::string app = std::to_string(row / 40 % 4 + 1);
            const std::string key = "Key\\" + std::to_string(row / 2);
            const std::string data = row == 10 || row == 300 ? "the Caf\xE9 here" : "data";
            insert.Execute(std::vector<std::string>{site, "App " + site + "." + app, key, data,
                                                    std::to_string(row * 10)});
        }
        database.Complete();
    }
    std::filesystem::path DatabasePath() const { return shell_.folder.path() / "Databases/Rows.mdb"; }

    std::shared_ptr<const Report> MakeReport(const std::string& groups = kGroups,
                                             const std::string& where = "",
                                             const std::string& orientation = "portrait") const {
        const std::string query = "SELECT * FROM Settings " + where + " ORDER BY rowid";
        const std::string text = "title = \"Settings\"\nquery = \"" + query + "\"\n[page]\norientation = \"" +
                                 orientation + "\"\n" + groups +
                                 "[[column]]\nfield = \"Key\"\nwidth = 3\nblank_repeats = true\n"
                                 "[[column]]\nfield = \"Data\"\nwidth = 3\n"
                                 "[[column]]\nfield = \"Size\"\nformat = \"number\"\n";
        ReportFacts facts;
        facts.caption = "Registry Details";
        const Database database(DatabasePath(), "Rows.mdb", Database::Access::kReadOnly);
        return std::make_shared<const Report>(ParseReportDefinition(text, "Settings.rpt"), facts, database,
                                              query);
    }
    void Open(const std::shared_ptr<const Report>& report) {
        window_ = new frmReport(shell_.services, report);
        window_->resize(1000, 700);
        ShowActive(*window_);
    }
    void TearDown() override { delete window_; }

    // Gives a window that is shown the keyboard again.
    static void Activate(QWidget& window) {
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    ReportView& view() { return Control<ReportView>(*window_, "viewReport"); }
    void Press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        PressKey(key, modifiers);
        QCoreApplication::processEvents();
    }
    void Click(const char* action) {
        auto* button = qobject_cast<QToolButton*>(
            Control<QToolBar>(*window_, "barTools").widgetForAction(window_->findChild<QAction*>(action)));
        ASSERT_NE(button, nullptr) << action;
        QTest::mouseClick(button, Qt::LeftButton);
        QCoreApplication::processEvents();
    }
    std::string Pages() { return Control<QSpinBox>(*window_, "txtPage").text().toStdString(); }
    int LastPage() { return Control<QSpinBox>(*window_, "txtPage").maximum(); }

    TestShell shell_;
    QPointer<frmReport> window_;
};

}  // namespace zorvel::test

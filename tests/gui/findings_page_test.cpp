// The Findings tab as a user works through it.
#include <QClipboard>
#include <QFileDialog>
#include <QHeaderView>
#include <QTableView>
#include <QTextBrowser>
#include <QTreeWidget>

#include "gui/main_window.h"

namespace zorvel::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class FindingsPageTest : public MainWindowTest {
  protected:
    static constexpr int kFindingsTab = 4;
    static constexpr const char* kDataset = "Zorvel_261116172805.MDB";

    void AddFindings() {
        AddDataset(folder_, kDataset);
        Database dataset(folder_.path() / "Databases" / kDataset, kDataset);
        dataset.Execute(
            "INSERT INTO Zorvel_Apps (AppUniqueRef,AppName,AppOU) VALUES (1,'Word','APPS.SITE'),"
            "(2,'Calc','ACME')");
        dataset.Execute("INSERT INTO Zorvel_Associations VALUES (1,'Ann.SITE','','User')");
        dataset.Execute(
            "INSERT INTO Zorvel_Issues VALUES (1,'Application','','','APPNODESC'),"
            "(1,'File','C:\\<b>A.PWL','S','FILEPWL'),(2,'File','C:\\B.PWL','T','FILEPWL'),"
            "(2,'Registry','HKEY_LOCAL_MACHINE\\X','\\\\FS1','REGISTRYUNC')");
        dataset.Execute("INSERT INTO Zorvel_CopyFiles VALUES (1,'C:\\<b>A.PWL','S','Copy Always')");
        Database master(folder_.path() / "Databases/ZorvelMaster.mdb", "master");
        CatalogueRow row;
        row.Captured = "16/11/2026 17:28:05";
        row.Tree = "CORP_TREE";
        row.DBName = kDataset;
        Catalogue(master).Add(row);
    }
    // Starts the program and clicks on the tab.
    void Open() {
        ASSERT_TRUE(Start());
        QTest::mouseClick(tabs().tabBar(), Qt::LeftButton, {},
                          tabs().tabBar()->tabRect(kFindingsTab).center());
        ASSERT_EQ(tabs().currentIndex(), kFindingsTab);
    }
    QTableView& table() { return Get<QTableView>("tabFindings"); }
    // The codes and targets of the lines, with the state of those that are not open.
    std::vector<std::string> Lines() {
        std::vector<std::string> lines;
        for (int row = 0; row < table().model()->rowCount(); ++row) {
            const auto field = [&](int column) {
                return table().model()->index(row, column).data().toString().toStdString();
            };
            lines.push_back(field(1) + ' ' + field(3) + (field(9) == "open" ? "" : ' ' + field(9)));
        }
        return lines;
    }
    void ClickLine(int row, Qt::KeyboardModifiers keys = Qt::NoModifier) {
        QTest::mouseClick(table().viewport(), Qt::LeftButton, keys,
                          table().visualRect(table().model()->index(row, 1)).center());
    }
    void ClickHeader(int column) {
        const QHeaderView& header = *table().horizontalHeader();
        QTest::mouseClick(header.viewport(), Qt::LeftButton, {},
                          {header.sectionViewportPosition(column) + 5, header.height() / 2});
    }
    void Filter(const QString& text) {
        Get<QLineEdit>("txtFilter").setFocus();
        PressKey(Qt::Key_A, Qt::ControlModifier);
        TypeText(text);
        PressKey(Qt::Key_Return);
    }
    std::string Details() { return Get<QTextBrowser>("txtDetails").toPlainText().toStdString(); }
};

TEST_F(FindingsPageTest, WithoutADatasetItSaysWhatToDo) {
    Open();
    EXPECT_THAT(Text("labEmpty").toStdString(), HasSubstr("There is no dataset yet. Select applications"));
    for (const char* button :
         {"butAccept", "butWithdraw", "butCopy", "butExport", "butRule", "butApplication"})
        EXPECT_FALSE(Get<QPushButton>(button).isEnabled()) << button;
}

TEST_F(FindingsPageTest, ShowsTheNewestDatasetFilteredAndSorted) {
    AddFindings();
    Open();
    EXPECT_THAT(Lines(), ElementsAre("FILEPWL Word", "FILEPWL Calc", "REGISTRYUNC Calc", "APPNODESC Word"));
    EXPECT_EQ(Text("labCounts"),
              "4 findings: 2 critical, 0 high, 1 medium, 1 low; 4 open, 0 accepted, 0 expired");
    EXPECT_THAT(Details(),
                testing::AllOf(HasSubstr("FILEPWL: Windows password list"), HasSubstr("C:\\<b>A.PWL"),
                               HasSubstr("Copy Always"), HasSubstr("user Ann.SITE")));
    ClickHeader(1);
    EXPECT_THAT(Lines(), ElementsAre("APPNODESC Word", "FILEPWL Word", "FILEPWL Calc", "REGISTRYUNC Calc"));
    ClickHeader(1);
    EXPECT_EQ(Lines().front(), "REGISTRYUNC Calc");
    Filter("app:acme");
    EXPECT_THAT(Lines(), ElementsAre("REGISTRYUNC Calc", "FILEPWL Calc"));
    EXPECT_EQ(QApplication::focusWidget(), &table());
    PressKey(Qt::Key_Down);
    QTRY_VERIFY_WITH_TIMEOUT(Details().starts_with("FILEPWL"), 5000);
    Click("butRule");
    EXPECT_THAT(Lines(), ElementsAre("FILEPWL Calc", "FILEPWL Word"));
    EXPECT_EQ(Get<QLineEdit>("txtFilter").text(), "code:FILEPWL");
    ClickLine(1);
    Click("butApplication");
    EXPECT_THAT(Lines(), ElementsAre("FILEPWL Word", "APPNODESC Word"));
    Filter("nothing such");
    EXPECT_EQ(Text("labEmpty"), "No finding is as the filter asks. Clear the filter to see all.");
    Click("butClear");
    EXPECT_EQ(Lines().size(), 4U);
}

TEST_F(FindingsPageTest, AFacetIsChosenWithTheSpaceBar) {
    AddFindings();
    Open();
    auto& facets = Get<QTreeWidget>("treeFacets");
    QTreeWidgetItem& rules = *facets.topLevelItem(2);
    ASSERT_EQ(rules.child(1)->text(0), "FILEPWL");
    EXPECT_EQ(rules.child(1)->text(1), "2");
    facets.setFocus();
    facets.setCurrentItem(rules.child(1));
    PressKey(Qt::Key_Space);
    EXPECT_THAT(Lines(), ElementsAre("FILEPWL Word", "FILEPWL Calc"));
    EXPECT_EQ(rules.child(2)->text(1), "1") << "another rule counts as if it were chosen";
    EXPECT_TRUE(facets.topLevelItem(0)->child(3)->isHidden()) << "no low one is left";
    PressKey(Qt::Key_Space);
    EXPECT_EQ(Lines().size(), 4U);
}

TEST_F(FindingsPageTest, AcceptsAndWithdrawsTheChosenOnes) {
    AddFindings();
    Open();
    ClickLine(0);
    ClickLine(1, Qt::ControlModifier);
    OnDialog([](QDialog& dialog) {
        EXPECT_EQ(Control<QLineEdit>(dialog, "txtCode").text(), "FILEPWL");
        EXPECT_EQ(Control<QLineEdit>(dialog, "txtApplication").text(), "*");
        EXPECT_EQ(Control<QLabel>(dialog, "labCoverage").text(), "Covers 2 findings, 2 of the 2 chosen");
        EXPECT_FALSE(Control<QPushButton>(dialog, "butOk").isEnabled());
        TypeText("they know");
        Control<QLineEdit>(dialog, "txtUntil").setFocus();
        TypeText("soon");
        EXPECT_EQ(Control<QLabel>(dialog, "labFault").text(),
                  "\"until\": expected a date, such as 2027-06-01, or nothing");
        PressKey(Qt::Key_A, Qt::ControlModifier);
        TypeText("2999-01-01");
        Control<QLineEdit>(dialog, "txtApplication").setFocus();
        PressKey(Qt::Key_A, Qt::ControlModifier);
        TypeText("word.*");
        EXPECT_EQ(Control<QLabel>(dialog, "labCoverage").text(), "Covers 1 finding, 1 of the 2 chosen");
        PressKey(Qt::Key_Return);
    });
    Click("butAccept");
    EXPECT_EQ(folder_.Read("Accepted.toml"),
              "[[accepted]]\ncode = \"FILEPWL\"\napplication = \"word.*\"\nreason = \"they know\"\nuntil = "
              "2999-01-01\n");
    EXPECT_EQ(Lines().front(), "FILEPWL Word accepted");
    EXPECT_THAT(Details(), HasSubstr("State: accepted until 2999-01-01: they know"));
    ClickLine(1);
    EXPECT_FALSE(Get<QPushButton>("butWithdraw").isEnabled());
    ClickLine(0);
    Click("butWithdraw");  // No is the default
    EXPECT_EQ(Lines().front(), "FILEPWL Word accepted");
    Answer(QMessageBox::Yes);
    Click("butWithdraw");
    EXPECT_EQ(Lines().front(), "FILEPWL Word");
    EXPECT_EQ(folder_.Read("Accepted.toml"), "");
    EXPECT_THAT(boxes_.back(), HasSubstr("FILEPWL of word.*: they know (1 finding)"));
}

TEST_F(FindingsPageTest, AnImportOffersItsFindings) {
    AddFindings();
    Open();
    EXPECT_EQ(Lines().size(), 4U);
    Click("butTreeControl_5");
    Answer(QMessageBox::Yes);  // the import
    OnDialog([](QDialog& dialog) { Control<QPushButton>(dialog, "butOk").click(); });
    Answer(QMessageBox::Ok);   // it is done
    Answer(QMessageBox::Yes);  // the offer
    Click("butGenerate");
    EXPECT_EQ(boxes_.back(), "Do you want to see the findings of this dataset?");
    EXPECT_EQ(tabs().currentIndex(), kFindingsTab);
    EXPECT_EQ(Get<QComboBox>("comDataset").count(), 2);
    EXPECT_THAT(Lines(), testing::Contains("APPNODESC Excel"));
    window_->activateWindow();  // as a window manager does when the last dialog closes
    ASSERT_TRUE(TakesKeyboard(*window_));
    Get<QComboBox>("comDataset").setFocus();
    PressKey(Qt::Key_Down);
    EXPECT_EQ(Lines().size(), 4U) << "the older one again";
}

TEST_F(FindingsPageTest, CopiesAndExportsWhatIsShown) {
    AddFindings();
    folder_.Write("Accepted.toml", "[[accepted]]\n");
    Open();
    EXPECT_THAT(Text("labNotes").toStdString(),
                HasSubstr("Accepted.toml, line 1: [[accepted]]: expected a text \"code\""));
    ClickLine(3);
    PressKey(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(),
              "Severity\tCode\tWhat\tApplication\tContainer\tWhere\tTarget\tSource\tReach\tState\n"
              "low\tAPPNODESC\tThe application has no description\tWord\tAPPS.SITE\tApplication\t\t\t1 "
              "user\topen\n");
    const QString file = QString::fromStdString((folder_.path() / "out.sarif").string());
    OnDialog([&file](QDialog& dialog) {
        auto& files = static_cast<QFileDialog&>(dialog);
        files.selectFile(file);
        files.findChild<QLineEdit*>("fileNameEdit")->setText(file);
        PressKey(Qt::Key_Return);
    });
    Filter("code:FILEPWL");
    Click("butExport");
    const std::string written = folder_.Read("out.sarif");
    EXPECT_THAT(written, testing::AllOf(testing::StartsWith("{\n\"$schema\""), HasSubstr("C:\\\\B.PWL")));
    EXPECT_EQ(written.find("APPNODESC"), std::string::npos);
}

TEST_F(FindingsPageTest, ColumnsStayWhereTheyWereMoved) {
    AddFindings();
    Open();
    table().horizontalHeader()->moveSection(8, 0);
    table().horizontalHeader()->resizeSection(8, 123);
    ASSERT_TRUE(window_->close());
    window_.reset();
    ASSERT_TRUE(Start());
    EXPECT_EQ(table().horizontalHeader()->visualIndex(8), 0);
    EXPECT_EQ(table().horizontalHeader()->sectionSize(8), 123);
    ASSERT_TRUE(window_->close());
    folder_.Write("TempData/Findings.columns", "99 Reach\r\n99 Reach\r\n");
    ASSERT_TRUE(Start());
    EXPECT_EQ(table().horizontalHeader()->visualIndex(8), 8);
}

}  // namespace
}  // namespace zorvel::test

// The window that compacts and deletes datasets.
#include <QGroupBox>
#include <optional>
#include <vector>

#include "gui/dataset_dialog.h"
#include "gui/dialogs/frm_db_maint.h"

namespace zorvel {
namespace {

using test::Control;
using test::PressKey;
using test::ShowActive;
using testing::ElementsAre;
using testing::HasSubstr;

class DBMaintDialog : public testing::Test {
  protected:
    // A dataset of the `day`th November with its file.
    void Add(int day, const std::string& comment, bool completed = true) {
        const CatalogueRow row = test::DatasetOfDay(day, comment);
        folder_.catalogue->Add(row);
        test::AddDataset(folder_.folder, row.DBName, completed);
    }
    std::string File(int day) const {
        return folder_.files.Path("Databases\\" + DatasetName(std::to_string(day) + "/11/2026 08:00:00"));
    }
    frmDBMaint& Opened() {
        maintenance_.Open();
        ShowActive(window_.emplace(maintenance_));
        return *window_;
    }
    QListWidget& List() { return Control<QListWidget>(*window_, "lstCapture"); }
    // Presses a button with the mouse and answers its question.
    void Press(const char* button, Answer answer) {
        folder_.ui.boxes.clear();
        folder_.ui.answers = {answer};
        QTest::mouseClick(&Control<QPushButton>(*window_, button), Qt::LeftButton);
    }
    std::vector<std::string> Summary() { return test::SummaryShown(*window_); }

    test::DatasetFolder folder_;
    DatabaseMaintenance maintenance_{folder_.services, *folder_.catalogue};
    std::optional<frmDBMaint> window_;
};

TEST_F(DBMaintDialog, ListsTheDatasetsAndSummarisesTheChosenOne) {
    Add(16, "older");
    Add(17, "<b>newer</b>");
    frmDBMaint& window = Opened();
    EXPECT_EQ(window.windowTitle(), "Database Maintenance");
    EXPECT_EQ(Control<QGroupBox>(window, "frameCapture").title(),
              "Please select Zorvel dataset to delete or compact (2 are on file)");
    EXPECT_EQ(List().item(1)->text(), "16/11/2026 08:00:00  -  older  -  Zorvel_261116080000.MDB");
    EXPECT_EQ(List().currentRow(), 0);
    EXPECT_EQ(window.focusWidget(), &List());
    EXPECT_THAT(Summary(), ElementsAre("17/11/2026 08:00:00", "TREE_17", "APPS & all.SITE", "1,234", "0",
                                       "<b>newer</b>"));
    PressKey(Qt::Key_Down);
    EXPECT_EQ(Summary()[1], "TREE_16");
    QTest::mouseClick(&Control<QPushButton>(window, "butClose"), Qt::LeftButton);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(DBMaintDialog, MarksADatasetWhoseImportWasNotCompleted) {
    Add(16, "whole");
    Add(17, "half", false);
    const QWidget& window = Opened();
    EXPECT_EQ(List().item(0)->text(), "17/11/2026 08:00:00  -  half  -  Zorvel_261117080000.MDB");
    EXPECT_EQ(List().item(0)->toolTip(), "import not completed");
    EXPECT_FALSE(List().item(0)->icon().isNull());
    EXPECT_TRUE(Control<QLabel>(window, "labNote").isVisible());
    EXPECT_EQ(Control<QLabel>(window, "labNote").text(), "import not completed");
    QTest::keyClick(&List(), Qt::Key_Down);
    EXPECT_FALSE(Control<QLabel>(window, "labNote").isVisible());
    EXPECT_TRUE(List().item(1)->icon().isNull());
    EXPECT_EQ(List().item(1)->toolTip(), "");
}

TEST_F(DBMaintDialog, ActsOnTheChosenDatasetUntilNoneIsLeft) {
    Add(16, "older");
    Add(17, "newer");
    frmDBMaint& window = Opened();
    PressKey(Qt::Key_Down);
    Press("butCompact", Answer::kYes);
    EXPECT_THAT(folder_.ui.boxes.back().text, HasSubstr("was successfully Compacted."));
    EXPECT_THAT(folder_.LogLines(),
                testing::Contains("    Attempting Compact on '" +
                                  folder_.files.Path("databases\\Zorvel_261116080000.MDB") + "'"));
    Press("butDelete", Answer::kNo);
    EXPECT_EQ(List().currentRow(), 1);
    Press("butDelete", Answer::kYes);
    EXPECT_FALSE(folder_.files.Exists(File(16)));
    EXPECT_TRUE(folder_.files.Exists(File(17)));
    EXPECT_EQ(List().count(), 1);
    EXPECT_EQ(Summary()[1], "TREE_17");
    EXPECT_THAT(Control<QGroupBox>(window, "frameCapture").title().toStdString(),
                HasSubstr("(1 is on file)"));
    Press("butDelete", Answer::kYes);
    EXPECT_EQ(List().count(), 0);
    EXPECT_THAT(Summary(), ElementsAre("", "", "", "", "", ""));
    EXPECT_FALSE(Control<QPushButton>(window, "butDelete").isEnabled());
    EXPECT_FALSE(Control<QPushButton>(window, "butCompact").isEnabled());
    PressKey(Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(DBMaintDialog, AFailureKeepsTheChosenLine) {
    Add(16, "older");
    Add(17, "newer");
    Opened();
    PressKey(Qt::Key_Down);
    folder_.files.Remove(File(16));
    for (int press = 0; press < 2; ++press) {
        Press("butDelete", Answer::kYes);
        EXPECT_THAT(folder_.ui.boxes.back().text, HasSubstr("occurred in butDelete at Line"));
        EXPECT_EQ(List().currentRow(), 1);
    }
    EXPECT_TRUE(folder_.files.Exists(File(17)));
}

}  // namespace
}  // namespace zorvel

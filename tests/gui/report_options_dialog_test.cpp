// The window of the report options.
#include <QGroupBox>
#include <QTreeWidget>
#include <functional>
#include <optional>
#include <vector>

#include "gui/dataset_dialog.h"
#include "gui/report/frm_report_options.h"
#include "support/errors.h"

namespace zorvel {
namespace {

using test::Control;
using test::PressKey;
using test::ShowActive;
using testing::Each;
using testing::ElementsAre;
using testing::StartsWith;

class ReportOptionsDialog : public testing::Test {
  protected:
    void Add(int day, const std::string& comment) {
        folder_.catalogue->Add(test::DatasetOfDay(day, comment));
    }
    frmReportOptions& Opened(const std::string& caption) {
        choice_.caption = caption;
        options_.emplace(folder_.services, *folder_.catalogue, choice_).Open();
        return window_.emplace(*options_);
    }
    frmReportOptions& Shown(const std::string& caption) {
        ShowActive(Opened(caption));
        return *window_;
    }
    template <typename Widget>
    Widget& Get(const char* name) {
        return Control<Widget>(*window_, name);
    }
    void Press(const char* button) {
        QTest::mouseClick(&Get<QAbstractButton>(button), Qt::LeftButton);
        QCoreApplication::processEvents();
    }
    // Presses a key on a control that the tab key leads to.
    void PressOn(const char* control, Qt::Key key) {
        Get<QWidget>(control).setFocus();
        PressKey(key);
    }
    QTreeWidget& Tree() { return Get<QTreeWidget>("treeRO"); }
    QTreeWidgetItem& Item(const QString& text) {
        return *Tree().findItems(text, Qt::MatchStartsWith | Qt::MatchRecursive).at(0);
    }
    // Presses the space bar on an item.
    void Toggle(const QString& text) {
        Tree().setCurrentItem(&Item(text));
        PressOn("treeRO", Qt::Key_Space);
    }
    // A category as it is shown: "[*]" checked and bold, "[x]" checked, "[ ]" neither.
    static std::string Mark(const QTreeWidgetItem& item) {
        const bool bold = item.data(0, Qt::FontRole).value<QFont>().bold();
        const std::string mark =
            item.checkState(0) == Qt::Checked ? (bold ? "[*] " : "[x] ") : (bold ? "[b] " : "[ ] ");
        return mark + item.text(0).toStdString();
    }
    std::vector<std::string> Categories() {
        std::vector<std::string> marks;
        marks.reserve(6);
        for (int i = 0; i < Tree().topLevelItemCount(); ++i)
            marks.push_back(Mark(*Tree().topLevelItem(i)));
        return marks;
    }
    std::vector<std::string> Summary() { return test::SummaryShown(*window_); }

    test::DatasetFolder folder_;
    ReportChoice choice_;
    std::optional<ReportOptions> options_;
    std::optional<frmReportOptions> window_;
};

TEST_F(ReportOptionsDialog, ShowsTheDatasetsAndTheOrders) {
    Add(16, "older");
    Add(17, "<b>newer</b>");
    frmReportOptions& window = Shown("Run Order Summary");
    EXPECT_EQ(window.windowTitle(), "Reporting options for Run Order Summary");
    EXPECT_TRUE(window.isModal());
    EXPECT_EQ(Get<QGroupBox>("frameCapture").title(),
              "Please select Zorvel dataset to report on (2 are on file)");
    auto& list = Get<QListWidget>("lstCapture");
    EXPECT_EQ(window.focusWidget(), &list);
    EXPECT_EQ(list.item(1)->text(), "16/11/2026 08:00:00  -  older  -  Zorvel_261116080000.MDB");
    EXPECT_EQ(Summary().back(), "<b>newer</b>");
    PressKey(Qt::Key_Down);
    EXPECT_EQ(Summary().back(), "older");
    auto& orders = Get<QComboBox>("comboSortBy");
    EXPECT_EQ(orders.currentText(), "Application Icon/Run Order");
    PressOn("comboSortBy", Qt::Key_Up);
    PressOn("chkOrder", Qt::Key_Space);
    EXPECT_FALSE(Get<QPushButton>("butAdvanced").isEnabled());
    // Enter on the list presses the default button.
    PressOn("lstCapture", Qt::Key_Return);
    EXPECT_EQ(window.result(), QDialog::Accepted);
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(choice_.dataset, "Zorvel_261116080000.MDB");
    EXPECT_EQ(choice_.sort, "Application Caption");
    EXPECT_TRUE(choice_.descending);
    EXPECT_FALSE(choice_.cancelled);
}

TEST_F(ReportOptionsDialog, MarksADatasetWhoseImportWasNotCompleted) {
    Add(16, "half");
    test::AddDataset(folder_.folder, test::DatasetOfDay(16, "").DBName, false);
    Shown("Run Order Summary");
    EXPECT_EQ(Get<QListWidget>("lstCapture").item(0)->toolTip(), "import not completed");
    EXPECT_FALSE(Get<QListWidget>("lstCapture").item(0)->icon().isNull());
    EXPECT_EQ(Get<QLabel>("labNote").text(), "import not completed");
    EXPECT_TRUE(Get<QLabel>("labNote").isVisible());
}

TEST_F(ReportOptionsDialog, CancelsInEveryWayOfLeaving) {
    Add(16, "a run");
    const std::vector<std::function<void()>> ways = {
        [this] { Press("butCancel"); },
        [] { PressKey(Qt::Key_C, Qt::AltModifier); },
        [] { PressKey(Qt::Key_Escape); },
        [this] { window_->close(); },
    };
    for (const auto& leave : ways) {
        choice_ = {};
        Shown("Application 'Fingerprint' Summary");
        EXPECT_FALSE(Get<QComboBox>("comboSortBy").isEnabled() || Get<QCheckBox>("chkOrder").isEnabled());
        leave();
        // A button that a key reaches is pressed for a moment before it acts.
        EXPECT_TRUE(QTest::qWaitFor([this] { return !window_->isVisible(); }));
        EXPECT_EQ(window_->result(), QDialog::Rejected);
        EXPECT_TRUE(choice_.cancelled);
        EXPECT_EQ(choice_.dataset, "");
    }
}

TEST_F(ReportOptionsDialog, GrowsByTheAdvancedArea) {
    Add(16, "a run");
    frmReportOptions& window = Shown("Issue Summary");
    auto& advanced = Get<QPushButton>("butAdvanced");
    EXPECT_EQ(advanced.text(), "Advanced >>");
    EXPECT_EQ(advanced.toolTip(), "Show advanced options for this report");
    EXPECT_FALSE(Tree().isVisible());
    const QSize shut = window.size();
    const int list_height = Get<QListWidget>("lstCapture").height();
    for (int round = 0; round < 2; ++round) {
        Press("butAdvanced");
        EXPECT_EQ(advanced.text(), "Advanced <<");
        EXPECT_TRUE(Tree().isVisible());
        EXPECT_EQ(window.width(), shut.width());
        EXPECT_GE(window.height(), shut.height() + Tree().height());
        EXPECT_NEAR(Get<QListWidget>("lstCapture").height(), list_height, 2);
        Press("butAdvanced");
        EXPECT_EQ(advanced.text(), "Advanced >>");
        EXPECT_FALSE(Tree().isVisible());
        EXPECT_EQ(window.size(), shut);
    }
}

TEST_F(ReportOptionsDialog, ExcludesTheUncheckedIssues) {
    Add(16, "a run");
    Shown("Issue Detail");
    Press("butAdvanced");
    Press("butTreeROControl_3");
    EXPECT_THAT(Categories(), Each(StartsWith("[ ] ")));
    Press("butTreeROControl_1");
    EXPECT_THAT(Categories(), Each(StartsWith("[*] ")));
    PressOn("butTreeROControl_2", Qt::Key_Space);
    EXPECT_THAT(Categories(), Each(StartsWith("[ ] ")));
    Press("butOk");
    EXPECT_THAT(folder_.OnlyBox(), StartsWith("Warning: all issues have been disabled"));
    EXPECT_TRUE(window_->isVisible());
    Press("butTreeROControl_1");
    Toggle("Registry Related Issues");
    EXPECT_EQ(Item("Registry value holds").checkState(0), Qt::Unchecked);
    // With the mouse, on the box itself.
    Item("File Related Issues").setExpanded(true);
    QTreeWidgetItem& old = Item("Superseded copy of a file (.OLD)");
    Tree().scrollToItem(&old);
    const QRect line = Tree().visualItemRect(&old);
    const int box = Tree().style()->pixelMetric(QStyle::PM_IndicatorWidth);
    QTest::mouseClick(Tree().viewport(), Qt::LeftButton, {}, {line.left() + box / 2 + 2, line.center().y()});
    EXPECT_THAT(Categories(), ElementsAre("[*] Application Complexity", "[*] Best Practices",
                                          "[*] Miscellaneous Issues", "[x] File Related Issues",
                                          "[ ] Registry Related Issues", "[*] Macro Related Issues"));
    Press("butOk");
    EXPECT_EQ(choice_.excluded_codes, "'FILEOLD','REGISTRYEXCLUDE','REGISTRYUNC'");
}

TEST_F(ReportOptionsDialog, TabLeadsThroughTheControls) {
    Add(16, "a run");
    Shown("Issue Summary");
    Press("butAdvanced");
    Get<QListWidget>("lstCapture").setFocus();
    std::vector<std::string> order;
    do {
        order.push_back(window_->focusWidget()->objectName().toStdString());
        PressKey(Qt::Key_Tab);
    } while (window_->focusWidget()->objectName() != "lstCapture" && order.size() < 20);
    EXPECT_THAT(order, ElementsAre("lstCapture", "txtComments", "comboSortBy", "chkOrder", "butAdvanced",
                                   "treeRO", "butTreeROControl_1", "butTreeROControl_2", "butTreeROControl_3",
                                   "butOk", "butCancel"));
}

TEST_F(ReportOptionsDialog, ClosesOnAFailureAndRaisesIt) {
    Add(16, "older");
    Add(17, "newer");
    Opened("Issue Summary");
    QTimer::singleShot(0, &*window_, [this] {
        folder_.master->Execute("DROP TABLE Zorvel_CaptureDetails");
        ASSERT_TRUE(test::TakesKeyboard(*window_));
        PressKey(Qt::Key_Down);
    });
    EXPECT_EQ(test::RaisedBy([this] { window_->exec(); }).number(), errors::kStore);
    EXPECT_FALSE(window_->isVisible());
    EXPECT_TRUE(choice_.cancelled);
}

}  // namespace
}  // namespace zorvel

// A run in the main window: its display, ESC, closing, and the import that follows.
#include <QDesktopServices>

#include "gui/main_window.h"

namespace zorvel::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class RunWindow : public MainWindowTest {
  protected:
    void SelectAll() {
        ASSERT_TRUE(Start());
        Click("butTreeControl_5");
    }
    bool CaptureRecordExists() const {
        return std::filesystem::exists(folder_.path() / "TempData/Zorvel_CaptureDetails.CSV");
    }
};

TEST_F(RunWindow, ShowsItsProgressAndOffersTheImport) {
    SelectAll();
    Answer(QMessageBox::No);
    Click("butGenerate");
    ASSERT_EQ(boxes_.size(), 2U);
    EXPECT_THAT(boxes_[0], HasSubstr("Would you like to import the generated data now?"));
    EXPECT_EQ(tabs().currentIndex(), 3);
    EXPECT_TRUE(Get<QAbstractButton>("butGenerate").isEnabled());
    EXPECT_TRUE(CaptureRecordExists());
    EXPECT_THAT(Status().toStdString(), StartsWith("Ready. 5 applications available, all selected."));
    Click("butGenerate");
    EXPECT_THAT(boxes_.back(), HasSubstr("doesn't appear to have been imported yet.")) << "answered No";
}

TEST_F(RunWindow, ImportsAtOnceAndMaintainsTheDataset) {
    SelectAll();
    Answer(QMessageBox::Yes);
    OnDialog([](QDialog& dialog) {
        TypeText("First audit");
        QTest::mouseClick(&Control<QAbstractButton>(dialog, "butOk"), Qt::LeftButton);
    });
    Click("butGenerate");
    OnDialog([](QDialog& dialog) {
        auto& datasets = Control<QListWidget>(dialog, "lstCapture");
        ASSERT_EQ(datasets.count(), 1);
        EXPECT_THAT(datasets.item(0)->text().toStdString(), HasSubstr("First audit"));
        QTest::mouseClick(&Control<QAbstractButton>(dialog, "butClose"), Qt::LeftButton);
    });
    Menu("mnuDatabaseItem_3").trigger();
}

TEST_F(RunWindow, WithoutARunThereIsNothingToImport) {
    ASSERT_TRUE(Start());
    Menu("mnuDatabaseItem_1").trigger();
    ASSERT_EQ(boxes_.size(), 1U);
    EXPECT_THAT(boxes_[0], StartsWith("There is no record of a successful Zorvelrun having been done."));
}

TEST_F(RunWindow, EscapeEndsItAfterTheCurrentApplicationAndNothingElse) {
    settings_.pace = {30, 0};  // without ESC the test would take minutes
    SelectAll();
    bool busy_seen = false;
    QTimer::singleShot(100, window_.get(), [&] {
        busy_seen = window_->controller().session().activity.Busy;
        EXPECT_FALSE(Get<QAbstractButton>("butGenerate").isEnabled());
        EXPECT_EQ(Text("labSelected"), "5");
        QTest::mouseClick(tabs().tabBar(), Qt::LeftButton, {}, tabs().tabBar()->tabRect(1).center());
        EXPECT_EQ(tabs().currentIndex(), 3) << "the click was dropped";
        PressKey(Qt::Key_Escape);
    });
    Answer(QMessageBox::No);
    Click("butGenerate");
    EXPECT_TRUE(busy_seen);
    EXPECT_THAT(folder_.Read("TempData/Zorvel_CaptureDetails.CSV"), HasSubstr(",1,"));
    EXPECT_FALSE(window_->controller().session().activity.Busy);

    const std::string cache = folder_.Read("TempData/T1.TreeCache");
    QTest::mouseClick(tabs().tabBar(), Qt::LeftButton, {}, tabs().tabBar()->tabRect(0).center());
    Click("butTreeControl_6");  // the forced refresh reads the whole tree
    EXPECT_THAT(cache, HasSubstr("DEEP"));
    EXPECT_EQ(folder_.Read("TempData/T1.TreeCache"), cache);
}

TEST_F(RunWindow, ClosingTheWindowEndsTheRunAndThenTheProgram) {
    settings_.pace = {30, 0};
    SelectAll();
    QTimer::singleShot(100, window_.get(), [&] {
        window_->close();
        EXPECT_TRUE(window_->isVisible()) << "first the run has to stop";
    });
    Click("butGenerate");
    EXPECT_FALSE(window_->isVisible());
    EXPECT_TRUE(boxes_.empty());
    EXPECT_TRUE(CaptureRecordExists());
    EXPECT_THAT(LogText(), HasSubstr("Exiting Zorvel at user request"));
}

class EditedFiles : public QObject {
    Q_OBJECT
  public:
    QStringList files;
  public Q_SLOTS:
    void Open(const QUrl& url) { files << url.fileName(); }
};

TEST_F(RunWindow, EditsTheRuleListsAfterAWarning) {
    ASSERT_TRUE(Start());
    EditedFiles editor;
    QDesktopServices::setUrlHandler("file", &editor, "Open");
    Answer(QMessageBox::Yes);
    Menu("mnuAdvancedItem_1").trigger();
    Answer(QMessageBox::Yes);
    Menu("mnuAdvancedItem_2").trigger();
    QDesktopServices::unsetUrlHandler("file");
    EXPECT_EQ(editor.files, QStringList({"RegExclude.dat", "FileIssue.dat"}));
    EXPECT_THAT(boxes_[0], HasSubstr("Incorrectly altering the Registry Issue List may cause"));
    EXPECT_THAT(boxes_[1], HasSubstr("Incorrectly altering the Custom File Issue List may cause"));
}

}  // namespace
}  // namespace zorvel::test

#include "run_window_test.moc"

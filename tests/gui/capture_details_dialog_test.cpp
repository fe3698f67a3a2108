// The window that confirms an import and shows it at work.
#include <QFrame>
#include <QProgressBar>
#include <vector>

#include "database/dataset_folder.h"
#include "gui/controls.h"
#include "gui/dialogs/frm_capture_details.h"

namespace zorvel {
namespace {

using test::Control;
using test::PressKey;
using test::ShowActive;
using test::TypeText;
using testing::Contains;

// Notes what the labels of a frame say each time it is painted.
class PaintNotes final : public QObject {
  public:
    explicit PaintNotes(QWidget& window) : window_(window) {
        Control<QFrame>(window, "frameStatus").installEventFilter(this);
    }
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            std::string note;
            for (const char* name : {"labApp", "labSection", "labCount"})
                note += Control<QLabel>(window_, name).text().toStdString() + '|';
            note += Control<QLineEdit>(window_, "txtCurrent").text().toStdString();
            if (notes.empty() || notes.back() != note) notes.push_back(note);
        }
        return QObject::eventFilter(watched, event);
    }
    std::vector<std::string> notes;

  private:
    QWidget& window_;
};

class CaptureDetailsDialog : public testing::Test {
  protected:
    CaptureDetailsDialog() {
        folder_.folder.Write(
            "TempData/Zorvel_CaptureDetails.CSV",
            "16/11/2026 17:28:05,<i>TREE</i>,APPS & all.SITE,1234,10,,30,40,50,60,Zorvelrun\r\n");
        EXPECT_TRUE(details_.Open());
    }

    test::DatasetFolder folder_;
    CaptureDetails details_{folder_.services, *folder_.catalogue};
};

TEST_F(CaptureDetailsDialog, ShowsTheLastRunAndWaits) {
    details_.labWarning = "Note that";
    frmCaptureDetails window(details_);
    ShowActive(window);
    EXPECT_EQ(window.windowTitle(), "Please confirm details of last Zorvelrun..");
    const char* shown[] = {"16/11/2026 17:28:05", "<i>TREE</i>", "APPS & all.SITE", "1,234"};
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(Control<QLabel>(window, qPrintable(QString("labData_%1").arg(i))).text(), shown[i]);
    EXPECT_TRUE(Control<QLabel>(window, "labWarning").isVisible());
    EXPECT_FALSE(Control<QFrame>(window, "frameStatus").isVisible());
    auto& comments = Control<QLineEdit>(window, "txtComments");
    EXPECT_EQ(window.focusWidget(), &comments);
    EXPECT_EQ(comments.selectedText(), "(Please enter your comments about this Zorvelrun)");
    EXPECT_EQ(Control<QPushButton>(window, "butOk").text(), "&Begin Import");
    QTest::mouseClick(&Control<QPushButton>(window, "butCancel"), Qt::LeftButton);
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(window.result(), QDialog::Rejected);
    EXPECT_TRUE(folder_.catalogue->List().empty());
}

TEST_F(CaptureDetailsDialog, ImportsUnderTheTypedCommentAndCannotBeClosedMeanwhile) {
    frmCaptureDetails window(details_);
    ShowActive(window);
    EXPECT_FALSE(Control<QLabel>(window, "labWarning").isVisible());
    const int height = window.height();
    TypeText("it's mine");
    int calls = 0;
    int bar = -1;
    folder_.ui.on_events = [&] {
        ++calls;
        EXPECT_EQ(window.windowTitle(), "Importing last Zorvelrun..");
        EXPECT_GT(window.height(), height);
        EXPECT_TRUE(Control<QFrame>(window, "frameStatus").isVisible());
        EXPECT_FALSE(Control<QPushButton>(window, "butOk").isVisible());
        EXPECT_FALSE(window.close());
        PressKey(Qt::Key_Escape);
        PressKey(Qt::Key_Return);
        QTest::mouseClick(&Control<QPushButton>(window, "butCancel"), Qt::LeftButton);
        EXPECT_TRUE(window.isVisible());
        EXPECT_EQ(Control<QProgressBar>(window, "pbarImport").maximum(), 8);
        EXPECT_GE(Control<QProgressBar>(window, "pbarImport").value(), bar);
        bar = Control<QProgressBar>(window, "pbarImport").value();
    };
    PressKey(Qt::Key_Return);
    EXPECT_GE(calls, 10);
    EXPECT_EQ(bar, 8);
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(window.result(), QDialog::Accepted);
    ASSERT_EQ(folder_.catalogue->List().size(), 1U);
    EXPECT_EQ(folder_.catalogue->List()[0].Description, "it's mine");
}

TEST_F(CaptureDetailsDialog, PaintsTheLastStateOfEachSection) {
    folder_.Write(data_files::kAppDetails, test::Records(450, {"Word.SITE", "Notes", "text"}));
    folder_.Write(data_files::kMacros, test::Records(300, {"Word.SITE", "M", "v", "0", "p"}));
    frmCaptureDetails window(details_);
    ShowActive(window);
    PaintNotes paints(window);
    QTest::mouseClick(&Control<QPushButton>(window, "butOk"), Qt::LeftButton);
    EXPECT_THAT(paints.notes,
                Contains("|Initialization:||Creating fresh Zorvel database to receive import data ..."));
    EXPECT_THAT(paints.notes, Contains("Word.SITE|Apps:|400 entries|Adding:Word.SITE ..."));
    EXPECT_THAT(paints.notes, Contains("Word.SITE|Macros:|300 entries|Adding:M ..."));
    EXPECT_THAT(paints.notes, Contains("|Registry:||Adding application registry entries to database.."));
}

TEST_F(CaptureDetailsDialog, PaintsALateStateByItself) {
    folder_.Write(data_files::kAppDetails, test::Records(200, {"Word.SITE", "Notes", "text"}));
    frmCaptureDetails window(details_);
    ShowActive(window);
    int calls = 0;
    folder_.ui.on_events = [&] {
        // The beginning, the catalogue, the section, 100 records; now nothing more comes after record 200.
        if (++calls != 5) return;
        const auto& count = Control<QLabel>(window, "labCount");
        EXPECT_TRUE(QTest::qWaitFor([&] { return count.text() == "200 entries"; }));
    };
    QTest::mouseClick(&Control<QPushButton>(window, "butOk"), Qt::LeftButton);
    EXPECT_GE(calls, 5);
}

TEST_F(CaptureDetailsDialog, ClosesAfterAFailure) {
    folder_.files.Remove(folder_.files.Path("Empty_Zorvel.mdb"));
    frmCaptureDetails window(details_);
    ShowActive(window);
    QTest::mouseClick(&Control<QPushButton>(window, "butOk"), Qt::LeftButton);
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(window.result(), QDialog::Rejected);
}

}  // namespace
}  // namespace zorvel

// The windows that save and load selections of applications.
#include <QPlainTextEdit>
#include <filesystem>
#include <functional>
#include <optional>

#include "gui/controls.h"
#include "gui/dialogs/frm_load_selections.h"
#include "gui/dialogs/frm_save_selections.h"
#include "gui/widgets/qt_text.h"
#include "support/fakes.h"

namespace zorvel {
namespace {

using test::Control;
using test::PressKey;
using test::ShowActive;
using test::TypeText;
using testing::HasSubstr;

const std::string kFile = "TempData/T1-50000000.AppSelection";

class SelectionDialogs : public testing::Test {
  protected:
    SelectionDialogs() {
        lists_.AddApp("SITE", "Word");
        lists_.AddApp("SITE", "Calc");
        lists_.Select(lists_.AppList[0], true);
    }

    // A selection file with one application.
    void WriteFile(const std::string& number, const std::string& comment, const std::string& application) {
        shell_.folder.Write(
            "TempData/T1-" + number + ".AppSelection",
            "heading\r\n16/11/2026, 1\r\n\"" + comment + "\"\r\n\"" + application + "\",\"SITE\"\r\n");
    }
    frmLoadSelections& Loader() {
        load_.Open();
        ShowActive(loader_.emplace(load_));
        return *loader_;
    }
    QString Comment() { return Control<QPlainTextEdit>(*loader_, "txtComment").toPlainText(); }

    test::TestShell shell_;
    TreeLists lists_;
    TreeListsSelection target_{lists_};
    SaveSelections save_{shell_.services, lists_, "T1", [] { return 0.5; }};
    LoadSelections load_{shell_.services, lists_, target_, "T1"};
    std::optional<frmLoadSelections> loader_;
};

TEST_F(SelectionDialogs, SavesUnderTheTypedComment) {
    frmSaveSelections window(save_);
    ShowActive(window);
    EXPECT_EQ(Control<QLabel>(window, "labComment").text(), ToQString(SaveSelections::labComment));
    auto& comment = Control<QLineEdit>(window, "txtComment");
    EXPECT_EQ(window.focusWidget(), &comment);
    TypeText(QStringLiteral("caf\u00E9"));
    QTest::mouseClick(&Control<QPushButton>(window, "butSave"), Qt::LeftButton);
    EXPECT_THAT(shell_.folder.Read(kFile), HasSubstr("\r\n\"caf\xE9\"\r\n\"Word\",\"SITE\"\r\n"));
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(window.result(), QDialog::Accepted);
}

TEST_F(SelectionDialogs, SavesOnEnterAndNotOnExit) {
    frmSaveSelections window(save_);
    ShowActive(window);
    QTest::mouseClick(&Control<QPushButton>(window, "butExit"), Qt::LeftButton);
    EXPECT_EQ(window.result(), QDialog::Rejected);
    EXPECT_FALSE(shell_.folder.Has(kFile));
    ShowActive(window);
    Control<QLineEdit>(window, "txtComment").setFocus();
    TypeText("mine");
    std::filesystem::rename(shell_.folder.path() / "TempData", shell_.folder.path() / "away");
    PressKey(Qt::Key_Return);
    EXPECT_TRUE(window.isVisible()) << "it could not be saved";
    EXPECT_EQ(Control<QLineEdit>(window, "txtComment").text(), "mine");
    std::filesystem::rename(shell_.folder.path() / "away", shell_.folder.path() / "TempData");
    PressKey(Qt::Key_Return);
    EXPECT_FALSE(window.isVisible());
    EXPECT_TRUE(shell_.folder.Has(kFile));
}

TEST_F(SelectionDialogs, ShowsTheCommentOfTheLineThatIsChosen) {
    WriteFile("1000000", "of <b>word</b>", "Word");
    WriteFile("2000000", "of calc", "Calc");
    frmLoadSelections& window = Loader();
    auto& list = Control<QListWidget>(window, "lstLoad");
    EXPECT_EQ(Control<QLabel>(window, "labChoose").text(),
              "Please choose a previously saved application selection from the list below");
    EXPECT_EQ(list.count(), 2);
    EXPECT_EQ(list.item(1)->text(), ToQString(load_.lstLoad[1]));
    EXPECT_EQ(list.currentRow(), 0);
    EXPECT_EQ(window.focusWidget(), &list);
    EXPECT_EQ(Comment(), "of <b>word</b>");
    PressKey(Qt::Key_Down);
    EXPECT_EQ(Comment(), "of calc");
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(list.item(0)).center());
    EXPECT_EQ(Comment(), "of <b>word</b>");
    QTest::mouseClick(&Control<QPushButton>(window, "butExit"), Qt::LeftButton);
    EXPECT_FALSE(window.isVisible());
    EXPECT_TRUE(lists_.AppList[0].Selected);
}

TEST_F(SelectionDialogs, LoadsByButtonEnterOrDoubleClick) {
    WriteFile("1000000", "of word", "Word");
    WriteFile("2000000", "of calc", "Calc");
    using Way = void (*)(frmLoadSelections&, QListWidget&);
    for (const Way how : {Way([](frmLoadSelections&window, QListWidget&) {
                              QTest::mouseClick(&Control<QPushButton>(window, "butLoad"), Qt::LeftButton);
                          }),
                          Way([](frmLoadSelections&, QListWidget&) { PressKey(Qt::Key_Return); }),
                          Way([](frmLoadSelections&, QListWidget&list) {
                              const QPoint place = list.visualItemRect(list.item(1)).center();
                              QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place);
                              QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, place);
                          })}) {
        lists_.Select(lists_.AppList[1], false);
        LoadSelections load(shell_.services, lists_, target_, "T1");
        load.Open();
        frmLoadSelections window(load);
        ShowActive(window);
        auto& list = Control<QListWidget>(window, "lstLoad");
        PressKey(Qt::Key_Down);
        lists_.Select(lists_.AppList[0], true);  // so that there is something to ask about
        how(window, list);
        EXPECT_TRUE(window.isVisible()) << "No is the default";
        shell_.ui.boxes.clear();
        shell_.ui.answers = {Answer::kYes};
        how(window, list);
        EXPECT_FALSE(window.isVisible());
        EXPECT_EQ(window.result(), QDialog::Accepted);
        EXPECT_EQ(shell_.ui.boxes.size(), 2U) << "its question and its result, once";
        EXPECT_TRUE(lists_.AppList[1].Selected);
    }
}

TEST_F(SelectionDialogs, HasNothingToLoadWithoutSavedSelections) {
    frmLoadSelections& window = Loader();
    EXPECT_EQ(Control<QListWidget>(window, "lstLoad").count(), 0);
    EXPECT_EQ(Comment(), "");
    EXPECT_FALSE(Control<QPushButton>(window, "butLoad").isEnabled());
    PressKey(Qt::Key_Return);
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(shell_.ui.boxes.empty());
}

}  // namespace
}  // namespace zorvel

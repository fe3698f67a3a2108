// The Find tab in the main window, through clicks and keys.
#include <gmock/gmock.h>

#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QMimeData>
#include <QTextEdit>

#include "find/predefined_searches.h"
#include "gui/main_window.h"
#include "gui/text/line_view.h"
#include "stream_builder.h"

namespace zorvel::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class FindWindow : public MainWindowTest {
  protected:
    // One application that copies two programs and a text, all applications selected, on the Find tab.
    void SetUp() override {
        const std::string stream = StreamLine("appCopyFiles", CopiedFiles());
        folder_.Write("Trees/T1.ldif", LdifOrganization("ACME") + LdifApplication("Tool", "o=ACME", stream));
        ASSERT_TRUE(Start());
        Click("butTreeControl_5");
        tabs().setCurrentIndex(2);
        ASSERT_EQ(Get<QAbstractButton>("butGenerate").text(), "&Find");
    }
    static std::string CopiedFiles();
    QComboBox& Box() { return Get<QComboBox>("comFind"); }
    std::string Selected() { return Box().lineEdit()->selectedText().toStdString(); }
    void ClickBox() {
        const QPoint place(20, Box().height() / 2);
        QTest::mouseClick(window_->windowHandle(), Qt::LeftButton, {}, Box().mapTo(window_.get(), place));
        QCoreApplication::processEvents();
    }
    // Replaces what stands in the box.
    void Type(const QString& text) {
        Box().setFocus();
        PressKey(Qt::Key_A, Qt::ControlModifier);
        TypeText(text);
    }
    QString Prompt() { return Get<QTextEdit>("rtfPrompt").toPlainText(); }
    bool ResultsShown() { return Get<LineView>("rtfResults").isVisible(); }
    std::string Results() { return Get<LineView>("rtfResults").lines().text(); }
    QString Info() { return Get<QWidget>("labInfo").property("title").toString(); }
};

std::string FindWindow::CopiedFiles() {
    StreamBuilder builder;
    for (const char* target : {"C:\\Tool\\setup.exe", "C:\\Tool\\readme.txt", "C:\\Tool\\run.CMD"})
        builder.FileCopy("\\\\SRV\\Apps", target);
    return builder.bytes();
}

TEST_F(FindWindow, ListsTheMatchesOfAPredefinedSearch) {
    EXPECT_EQ(Box().currentText(), "(enter text)");
    EXPECT_EQ(Info(), "Zorvel Find");
    for (std::size_t i = 0; i < PredefinedSearches.size(); ++i)
        EXPECT_EQ(Box().itemText(static_cast<int>(i)).toStdString(), PredefinedSearches[i].name);
    Box().setFocus();
    PressKey(Qt::Key_Down);
    PressKey(Qt::Key_Down);
    EXPECT_EQ(Box().currentText(), "Executables - Basic");
    EXPECT_THAT(Prompt().toStdString(), StartsWith("Basic executable file search"));
    Click("butGenerate");
    EXPECT_EQ(tabs().currentIndex(), 2);
    EXPECT_EQ(Info(), "Total of 2 match(es) found");
    EXPECT_THAT(Results(), HasSubstr("Tool - (Copy Files)\n"));
    EXPECT_THAT(Results(), HasSubstr("C:\\TOOL\\SETUP.EXE"));
    EXPECT_THAT(Results(), testing::Not(HasSubstr("README")));
    EXPECT_THAT(folder_.Read("TempData/Zorvel_CaptureDetails.CSV"), HasSubstr("Find"));

    Click("butToClipBoard");
    EXPECT_EQ(boxes_.back(), "Results of Find have been sent to Clipboard..");
    const QMimeData& mime = *QGuiApplication::clipboard()->mimeData();
    EXPECT_THAT(mime.text().toStdString(), HasSubstr("C:\\TOOL\\RUN.CMD"));
    EXPECT_TRUE(mime.hasHtml());
    EXPECT_TRUE(mime.hasFormat("text/rtf"));
}

TEST_F(FindWindow, SearchesWhatIsTypedAsItIsTyped) {
    Type("Exe");  // the name of a predefined search begins so
    EXPECT_EQ(Box().currentText(), "Exe");
    EXPECT_THAT(Prompt().toStdString(), StartsWith("Please enter the text to find"));
    PressKey(Qt::Key_Return);
    EXPECT_EQ(Info(), "Total of 1 match(es) found");
    EXPECT_TRUE(ResultsShown());
    Box().setFocus();
    for (const auto key : {Qt::Key_Left, Qt::Key_Shift, Qt::Key_Tab})
        PressKey(key);
    EXPECT_TRUE(ResultsShown()) << "keys that enter nothing leave the results";
    Type("t");
    EXPECT_FALSE(ResultsShown());
}

TEST_F(FindWindow, SelectsItsTextWhenItIsEnteredAndPromptsWhenItChanges) {
    ClickBox();
    EXPECT_EQ(Selected(), "(enter text)");
    ClickBox();
    EXPECT_EQ(Selected(), "") << "it was entered before";
    PressKey(Qt::Key_Tab);
    PressKey(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(Selected(), "(enter text)");
    QGuiApplication::clipboard()->setText("pasted");
    const std::function<void()> changes[] = {
        [] { TypeText("x"); },
        [] { PressKey(Qt::Key_Backspace); },
        [] { PressKey(Qt::Key_V, Qt::ControlModifier); },
    };
    for (const auto& change : changes) {
        PressKey(Qt::Key_Down);
        EXPECT_FALSE(Prompt().startsWith("Please enter the text")) << "a predefined search was chosen";
        change();
        EXPECT_TRUE(Prompt().startsWith("Please enter the text")) << Box().currentText().toStdString();
    }
}

TEST_F(FindWindow, StartsNothingForABlankText) {
    Type("  ");
    PressKey(Qt::Key_Return);
    Click("butGenerate");
    EXPECT_FALSE(std::filesystem::exists(folder_.path() / "TempData/Zorvel.$$$"));
    EXPECT_TRUE(boxes_.empty());
}

TEST_F(FindWindow, RefusesCharactersThatStreamsCannotHold) {
    const auto paste_and_start = [this](const char16_t* text) {
        QGuiApplication::clipboard()->setText(QString::fromUtf16(text));
        Type("");
        PressKey(Qt::Key_V, Qt::ControlModifier);
        PressKey(Qt::Key_Return);
    };
    paste_and_start(u"caf\u00E9");
    EXPECT_EQ(Info(), "Total of 0 match(es) found");
    paste_and_start(u"\u4E2D");
    ASSERT_EQ(boxes_.size(), 1U);
    EXPECT_EQ(boxes_[0], "The expression holds a character that the code page of the streams lacks.");
}

TEST_F(FindWindow, TellsWhereAnExpressionIsWrongAndReadsNothing) {
    Type("set(up");
    Click("butGenerate");
    ASSERT_EQ(boxes_.size(), 1U);
    EXPECT_THAT(boxes_[0], StartsWith("Error 5 ("));
    EXPECT_THAT(boxes_[0], HasSubstr("occurred during Find"));
    EXPECT_EQ(tabs().currentIndex(), 2);
    EXPECT_EQ(Info(), "Zorvel Find");
    EXPECT_FALSE(std::filesystem::exists(folder_.path() / "TempData/Zorvel_CaptureDetails.CSV"));
}

}  // namespace
}  // namespace zorvel::test

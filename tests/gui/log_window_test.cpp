// The window that shows the log, and its search.
#include <filesystem>

#include "gui/controls.h"
#include "gui/text/frm_view_log.h"
#include "gui/text/line_view.h"
#include "support/fakes.h"

namespace zorvel {
namespace {

using test::Control;
using test::ShowActive;
using test::TestShell;

class LogWindow : public testing::Test {
  protected:
    LogWindow() {
        shell_.log.WriteLog("Word.APPS.SITE is read");
        shell_.log.WriteLog("ERROR: Unexpected error # 53 (File not found)");
        shell_.log.WriteLog("WARNING: the stream {0002A500} is empty");
    }
    void Open() {
        ASSERT_TRUE(window_.Open(shell_.services));
        ShowActive(window_);
    }
    void Press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) { test::PressKey(key, modifiers); }
    void Search(const char* needle) {
        Press(Qt::Key_F, Qt::ControlModifier);
        test::TypeText(needle);
    }
    LineView& view() { return Control<LineView>(window_, "RichTextBox1"); }
    // The line of the selection, and the selection.
    std::string Match() {
        const std::string& text = view().lines().text();
        return std::to_string(view().lines().LineAt(view().selection_begin())) + ":" +
               text.substr(view().selection_begin(), view().selection_end() - view().selection_begin());
    }
    std::string Said() { return Control<QLabel>(window_, "labFound").text().toStdString(); }
    bool Says(const std::string& text) {
        return QTest::qWaitFor([&] { return Said() == text; });
    }

    TestShell shell_;
    frmViewLog window_;
};

TEST_F(LogWindow, ShowsTheLogOfTheMomentUntilOk) {
    bool hourglass = false;
    shell_.ui.on_events = [&] { hourglass = hourglass || QGuiApplication::overrideCursor() != nullptr; };
    Open();
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(window_.windowTitle(), "Current Zorvel Log File");
    EXPECT_EQ(window_.focusWidget(), &view());
    const RichLines& lines = view().lines();
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_EQ(lines.Line(2), "16/11/2026 17:28:05 WARNING: the stream {0002A500} is empty");
    EXPECT_EQ(lines.Background(1), (RichTextColour{255, 0, 0}));
    EXPECT_EQ(lines.Background(2), (RichTextColour{255, 255, 0}));
    EXPECT_EQ(Control<QPushButton>(window_, "cmdOK").text(), "&Ok!");
    QTest::mouseClick(&Control<QPushButton>(window_, "cmdOK"), Qt::LeftButton);
    EXPECT_FALSE(window_.isVisible());
}

TEST_F(LogWindow, FollowsTheSizeOfTheWindow) {
    Open();
    const QSize before = view().size();
    window_.resize(window_.width() + 120, window_.height() + 80);
    QCoreApplication::processEvents();
    EXPECT_EQ(view().size(), before + QSize(120, 80));
}

TEST_F(LogWindow, OpensAtItsEndAndLeadsFromProblemToProblem) {
    for (int i = 0; i < 200; ++i)
        shell_.log.WriteLog("Word.APPS.SITE is read");
    Open();
    auto& next = Control<QPushButton>(window_, "butNextProblem");
    auto& previous = Control<QPushButton>(window_, "butPreviousProblem");
    const auto at = [&](const char* text, bool before, bool behind) {
        EXPECT_EQ(Control<QLabel>(window_, "labProblem").text(), text);
        EXPECT_EQ(previous.isEnabled(), before) << text;
        EXPECT_EQ(next.isEnabled(), behind) << text;
        const double y = view().CharacterRect(view().selection_begin()).top();
        EXPECT_TRUE(y >= 0 && y < view().viewport()->height()) << text << " is in sight";
        EXPECT_EQ(window_.focusWidget(), &view());
    };
    EXPECT_EQ(view().verticalScrollBar()->value(), view().verticalScrollBar()->maximum());
    at("2 problems", true, false);
    QTest::mouseClick(&previous, Qt::LeftButton);
    EXPECT_EQ(Match(), "2:" + std::string(view().lines().Line(2)));
    at("Problem 2 of 2", true, false);
    Press(Qt::Key_F8, Qt::ShiftModifier);
    EXPECT_EQ(Match(), "1:" + std::string(view().lines().Line(1)));
    at("Problem 1 of 2", false, true);
    Press(Qt::Key_F8, Qt::ShiftModifier);  // there is none before it
    EXPECT_EQ(Match().substr(0, 2), "1:");
    QTest::mouseClick(&next, Qt::LeftButton);
    at("Problem 2 of 2", true, false);
    Press(Qt::Key_Home, Qt::ControlModifier);  // where the cursor stands is where one goes on
    at("2 problems", false, true);
    Press(Qt::Key_F8);
    at("Problem 1 of 2", false, true);
    EXPECT_TRUE(window_.isVisible());
}

TEST_F(LogWindow, SaysThatThereAreNoProblems) {
    shell_.log.Open(false);
    Open();
    EXPECT_EQ(Control<QLabel>(window_, "labProblem").text(), "No problems");
    EXPECT_FALSE(Control<QPushButton>(window_, "butNextProblem").isEnabled());
    EXPECT_FALSE(Control<QPushButton>(window_, "butPreviousProblem").isEnabled());
    Press(Qt::Key_F8);
    EXPECT_EQ(Match(), "0:");
}

TEST_F(LogWindow, EnterAndEscCloseIt) {
    for (const int key : {Qt::Key_Return, Qt::Key_Escape}) {
        Open();
        Press(key);
        EXPECT_FALSE(window_.isVisible());
    }
}

TEST_F(LogWindow, FindsAsOneTypesAndGoesOnInBothDirections) {
    Open();
    Press(Qt::Key_Home, Qt::ControlModifier);
    auto& bar = Control<QWidget>(window_, "barSearch");
    EXPECT_FALSE(bar.isVisible());
    Search("er");
    EXPECT_TRUE(bar.isVisible());
    EXPECT_EQ(Match(), "1:ER");
    Press(Qt::Key_R);
    EXPECT_EQ(Match(), "1:ERR");
    EXPECT_TRUE(Says("2 matches"));
    Press(Qt::Key_Return);
    EXPECT_EQ(Match(), "1:err");
    Press(Qt::Key_F3);
    EXPECT_EQ(Match(), "1:ERR");
    EXPECT_EQ(Said(), "2 matches - went on from the top");
    Press(Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(Match(), "1:err");
    EXPECT_EQ(Said(), "2 matches - went on from the end");
    Press(Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(Match(), "1:ERR");
    QTest::mouseClick(&Control<QPushButton>(window_, "butNext"), Qt::LeftButton);
    EXPECT_EQ(Match(), "1:err");
    EXPECT_EQ(Said(), "2 matches");
    QTest::mouseClick(&Control<QPushButton>(window_, "butPrevious"), Qt::LeftButton);
    EXPECT_EQ(Match(), "1:ERR");
    EXPECT_TRUE(window_.isVisible());
    // ESC closes the bar, and only then the window; F3 goes on without the bar.
    Press(Qt::Key_Escape);
    EXPECT_FALSE(bar.isVisible());
    EXPECT_EQ(window_.focusWidget(), &view());
    Press(Qt::Key_F3);
    EXPECT_EQ(Match(), "1:err");
    EXPECT_FALSE(bar.isVisible());
    Press(Qt::Key_Escape);
    EXPECT_FALSE(window_.isVisible());
}

TEST_F(LogWindow, SaysWhenNothingIsFound) {
    Open();
    Search("stream {0002a500}");
    EXPECT_TRUE(Says("1 match"));
    EXPECT_EQ(Match(), "2:stream {0002A500}");
    auto& match_case = Control<QAbstractButton>(window_, "checkCase");
    QTest::mouseClick(&match_case, Qt::LeftButton, {}, QPoint(5, match_case.height() / 2));
    EXPECT_EQ(Said(), "Nothing was found");
    EXPECT_EQ(Match(), "2:stream {0002A500}");
    QTest::qWait(400);
    EXPECT_EQ(Said(), "Nothing was found");
    // A character that the log cannot hold is not taken for another.
    auto& needle = Control<QLineEdit>(window_, "txtSearch");
    needle.setText(QStringLiteral("\u2665"));
    EXPECT_EQ(Said(), "Nothing was found");
    needle.clear();
    EXPECT_EQ(Said(), "");
    EXPECT_FALSE(Control<QPushButton>(window_, "butNext").isEnabled());
    // The selection is what one is likely to look for.
    view().Select(view().lines().LineBegin(1) + 20, view().lines().LineBegin(1) + 25);
    Press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(needle.text(), "ERROR");
    EXPECT_EQ(needle.selectedText(), "ERROR");
}

TEST_F(LogWindow, ALogThatCannotBeCopiedIsTold) {
    std::filesystem::remove(shell_.folder.path() / "Zorvel.log");
    EXPECT_FALSE(window_.Open(shell_.services));
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_THAT(shell_.OnlyBox(), testing::HasSubstr("occurred in frmViewLog"));
}

}  // namespace
}  // namespace zorvel

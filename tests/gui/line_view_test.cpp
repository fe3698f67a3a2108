// The view of many lines through mouse and keys, and what it paints.
#include "gui/text/line_view.h"

#include <QMimeData>
#include <QPainter>

#include "gui/controls.h"
#include "gui/text/rich_text_colours.h"

namespace zorvel {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

constexpr char kHead[] =
    "{\\rtf1{\\colortbl;\\red0\\green0\\blue0;\\red128\\green0\\blue0;\\red255\\green0\\blue0;}";

class LineViewTest : public testing::Test {
  protected:
    LineViewTest() { view_.resize(500, 300); }

    void Show(const std::string& body) {
        view_.SetRichText(kHead + body + "}");
        test::ShowActive(view_);
        view_.setFocus();
    }
    // "line 0" to "line 499", the number of the line in three digits.
    void ShowNumbered() {
        std::string body;
        for (int i = 0; i < 500; ++i)
            body += "line " + std::string(i < 10 ? "00" : i < 100 ? "0" : "") + std::to_string(i) + "\\par ";
        Show(body);
    }
    void Key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) { test::PressKey(key, modifiers); }
    QPoint At(std::size_t offset) const {
        const QRectF place = view_.CharacterRect(offset);
        return {static_cast<int>(place.left()) + 1, static_cast<int>(place.center().y())};
    }
    std::string Selected() const {
        return view_.lines().text().substr(view_.selection_begin(),
                                           view_.selection_end() - view_.selection_begin());
    }
    QString Copied() {
        Key(Qt::Key_C, Qt::ControlModifier);
        return QApplication::clipboard()->text();
    }
    // The colours of the cell of a character: the one behind it, and whether another one occurs in it.
    QColor Background(std::size_t offset) {
        const QRect cell = view_.CharacterRect(offset).toAlignedRect();
        return view_.viewport()->grab(cell).toImage().pixelColor(1, 0);
    }
    bool HasColour(std::size_t offset, const QColor& colour) {
        const QImage cell = view_.viewport()->grab(view_.CharacterRect(offset).toAlignedRect()).toImage();
        for (int y = 0; y < cell.height(); ++y)
            for (int x = 0; x < cell.width(); ++x)
                if (cell.pixelColor(x, y) == colour) return true;
        return false;
    }

    LineView view_;
};

TEST_F(LineViewTest, KeysMoveThroughTheTextAndSelectWithShift) {
    ShowNumbered();
    const std::size_t line = std::string("line 000\n").size();
    const std::size_t end = view_.lines().End();
    const struct {
        int key;
        Qt::KeyboardModifiers modifiers;
        std::size_t begin;
        std::size_t end;
    } kSteps[] = {
        {Qt::Key_Down, Qt::NoModifier, line, line},
        {Qt::Key_Right, Qt::NoModifier, line + 1, line + 1},
        {Qt::Key_Right, Qt::ShiftModifier, line + 1, line + 2},
        {Qt::Key_Down, Qt::ShiftModifier, line + 1, 2 * line + 2},
        {Qt::Key_Home, Qt::ShiftModifier, line + 1, 2 * line},
        {Qt::Key_Up, Qt::ShiftModifier, line, line + 1},
        {Qt::Key_Up, Qt::ShiftModifier, 0, line + 1},
        {Qt::Key_Up, Qt::ShiftModifier, 0, line + 1},
        {Qt::Key_End, Qt::NoModifier, 8, 8},
        {Qt::Key_Right, Qt::NoModifier, 9, 9},
        {Qt::Key_Left, Qt::NoModifier, 8, 8},
        {Qt::Key_End, Qt::ControlModifier, end, end},
        {Qt::Key_Right, Qt::NoModifier, end, end},
        {Qt::Key_Home, Qt::ControlModifier | Qt::ShiftModifier, 0, end},
        {Qt::Key_Left, Qt::NoModifier, 0, 0},
        {Qt::Key_A, Qt::ControlModifier, 0, end},
    };
    for (std::size_t i = 0; i < std::size(kSteps); ++i) {
        Key(kSteps[i].key, kSteps[i].modifiers);
        EXPECT_EQ(view_.selection_begin(), kSteps[i].begin) << i;
        EXPECT_EQ(view_.selection_end(), kSteps[i].end) << i;
    }
    Key(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(view_.verticalScrollBar()->value(), view_.verticalScrollBar()->maximum());
    EXPECT_TRUE(view_.viewport()->rect().contains(At(end)));
    Key(Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(view_.verticalScrollBar()->value(), 0);
}

TEST_F(LineViewTest, PagesAndTheWheelScroll) {
    ShowNumbered();
    const int page = view_.verticalScrollBar()->pageStep();
    ASSERT_GT(page, 5);
    Key(Qt::Key_PageDown);
    Key(Qt::Key_PageDown);
    EXPECT_EQ(view_.verticalScrollBar()->value(), 2 * page);
    EXPECT_EQ(view_.lines().LineAt(view_.selection_end()), static_cast<std::size_t>(2 * page));
    Key(Qt::Key_PageUp);
    EXPECT_EQ(view_.verticalScrollBar()->value(), page);
    Key(Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(view_.verticalScrollBar()->value(), page + 1);
    QWheelEvent wheel(QPointF(10, 10), view_.viewport()->mapToGlobal(QPointF(10, 10)), {}, {0, -120},
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(view_.viewport(), &wheel);
    EXPECT_EQ(view_.verticalScrollBar()->value(), page + 1 + QApplication::wheelScrollLines());
}

TEST_F(LineViewTest, TheMouseSelectsCharactersAndWords) {
    ShowNumbered();
    QTest::mousePress(view_.viewport(), Qt::LeftButton, {}, At(2));
    QTest::mouseMove(view_.viewport(), At(12));
    QTest::mouseRelease(view_.viewport(), Qt::LeftButton, {}, At(12));
    EXPECT_EQ(Selected(), "ne 000\nlin");
    EXPECT_EQ(Copied(), "ne 000\nlin");
    QTest::mouseClick(view_.viewport(), Qt::LeftButton, Qt::ShiftModifier, At(6));
    EXPECT_EQ(Selected(), "ne 0");
    QTest::mouseDClick(view_.viewport(), Qt::LeftButton, {}, At(15));
    EXPECT_EQ(Selected(), "001");
    QTest::mouseRelease(view_.viewport(), Qt::LeftButton, {}, At(15));
    QTest::mouseClick(view_.viewport(), Qt::LeftButton, {}, At(3));
    EXPECT_EQ(Selected(), "");
    // To the right of a line is its end, below the text its last line.
    QTest::mouseClick(view_.viewport(), Qt::LeftButton, {}, {400, At(0).y()});
    EXPECT_EQ(view_.selection_end(), 8U);
}

TEST_F(LineViewTest, ASelectionGoesOnWhileTheMouseIsHeldOutside) {
    ShowNumbered();
    QCursor::setPos(view_.viewport()->mapToGlobal(QPoint(10, view_.viewport()->height() + 40)));
    QTest::mousePress(view_.viewport(), Qt::LeftButton, {}, At(0));
    QTest::mouseMove(view_.viewport(), {10, view_.viewport()->height() + 40});
    EXPECT_TRUE(QTest::qWaitFor([&] { return view_.verticalScrollBar()->value() > 5; }));
    QTest::mouseRelease(view_.viewport(), Qt::LeftButton, {}, {10, 10});
    EXPECT_GT(view_.selection_end(), 9U * static_cast<std::size_t>(view_.verticalScrollBar()->pageStep()));
    EXPECT_EQ(view_.selection_begin(), 0U);
}

TEST_F(LineViewTest, CopiesAsPlainTextHtmlAndRtf) {
    Show("plain \\'e9\\par{\\b\\cf2 bold}\\par");
    EXPECT_EQ(Copied(), QApplication::clipboard()->text());  // nothing is selected: the clipboard stays
    Key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(Copied(), QString::fromUtf8("plain \xC3\xA9\nbold"));
    const QMimeData& data = *QApplication::clipboard()->mimeData();
    EXPECT_THAT(data.html().toStdString(),
                HasSubstr("<span style=\"color:#800000;font-weight:bold;\">bold</span>"));
    for (const char* type : {"text/rtf", "application/rtf"}) {
        EXPECT_TRUE(data.hasFormat(type));
        EXPECT_THAT(data.data(type).toStdString(), StartsWith("{\\rtf1\\ansi"));
        EXPECT_THAT(data.data(type).toStdString(), HasSubstr("\\b bold"));
    }
    // What was copied stays when the view shows something else.
    view_.Clear();
    EXPECT_EQ(data.text(), QString::fromUtf8("plain \xC3\xA9\nbold"));
    EXPECT_EQ(view_.lines().size(), 0U);
    for (const int key : {Qt::Key_Down, Qt::Key_PageUp, Qt::Key_End, Qt::Key_Right, Qt::Key_Home})
        Key(key);
    QTest::mouseDClick(view_.viewport(), Qt::LeftButton, {}, {20, 20});
    EXPECT_EQ(view_.selection_end(), 0U);
}

TEST_F(LineViewTest, PaintsBackgroundsSelectionAndLongLines) {
    Show("{\\highlight3\\cf1 bar}\\par{\\highlight3 run} of it\\par");
    const QColor red(255, 0, 0);
    const QColor base = view_.palette().color(QPalette::Base);
    EXPECT_EQ(Background(0), red);
    EXPECT_TRUE(HasColour(0, Qt::black));
    const QRect bar = view_.CharacterRect(0).toAlignedRect();
    const QImage window = view_.viewport()->grab().toImage();
    // A line of one background is a bar from edge to edge; a run ends where its text ends.
    EXPECT_EQ(window.pixelColor(0, bar.top() + 1), red);
    EXPECT_EQ(window.pixelColor(window.width() - 1, bar.top() + 1), red);
    EXPECT_EQ(Background(4), red);
    EXPECT_EQ(Background(7), base);
    EXPECT_EQ(window.pixelColor(window.width() - 1, bar.bottom() + bar.height() / 2), base);
    view_.Select(1, 2);
    EXPECT_EQ(Background(1), view_.palette().color(QPalette::Active, QPalette::Highlight));
    EXPECT_EQ(Background(2), red);

    Show("start " + std::string(200000, '-') + "\\tab{\\highlight3 end}\\par");
    const std::size_t end = view_.lines().End();
    EXPECT_FALSE(HasColour(end - 1, red));
    Key(Qt::Key_End);
    EXPECT_TRUE(view_.viewport()->rect().contains(At(end)));
    EXPECT_TRUE(HasColour(end - 3, red));
    EXPECT_EQ(Background(end - 4), base);  // the tab
    EXPECT_EQ((view_.lines().Column(end) - 3) % RichLines::kTabColumns, 0U);
}

TEST_F(LineViewTest, TextStaysReadableOnDarkPalettes) {
    QPalette dark;
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    dark.setColor(QPalette::Text, QColor(230, 230, 230));
    const QPalette light;
    const RichTextColour red{255, 0, 0};
    const RichTextColour dark_red{128, 0, 0};
    const RichTextColour black{0, 0, 0};
    const RichTextColour yellow{255, 255, 0};
    EXPECT_EQ(TextColour({}, {}, dark), QColor(230, 230, 230));
    EXPECT_EQ(TextColour(black, red, dark), QColor(0, 0, 0));
    EXPECT_EQ(TextColour({}, yellow, dark), QColor(0, 0, 0));
    EXPECT_EQ(TextColour({}, RichTextColour{0, 0, 128}, light), QColor(255, 255, 255));
    EXPECT_EQ(TextColour(dark_red, {}, light), QColor(128, 0, 0));
    EXPECT_EQ(TextColour(black, {}, dark), QColor(255, 255, 255));
    EXPECT_EQ(TextColour(yellow, {}, dark), QColor(255, 255, 0));
    const QColor readable = TextColour(dark_red, {}, dark);
    EXPECT_EQ(readable.hslHue(), 0);
    EXPECT_GT(readable.lightness(), 170);

    view_.setPalette(dark);
    Show("{\\b\\cf2 ===}\\par");
    EXPECT_EQ(Background(1), QColor(30, 30, 30));
    EXPECT_TRUE(HasColour(1, readable));
}

}  // namespace
}  // namespace zorvel

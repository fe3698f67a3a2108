// The window that shows a document of the program, and how rich text looks in it.
#include <QTextBlock>
#include <QTextBrowser>
#include <vector>

#include "gui/controls.h"
#include "gui/text/frm_document.h"
#include "gui/text/rich_text_document.h"
#include "support/errors.h"
#include "support/temp_folder.h"

namespace zorvel {
namespace {

using test::Control;
using test::PressKey;
using test::ShowActive;
using test::TypeText;
using testing::ElementsAre;

class DocumentWindow : public testing::Test {
  protected:
    DocumentWindow() {
        folder_.Write("a.rtf",
                      "{\\rtf1 First line\\par See https://example.org/a?b=c, first.\\par Last\\par}");
    }
    frmDocument Window() {
        return {files_, files_.Path("A.RTF"), "Program \xC9",
                [this](std::string_view address) { opened_.emplace_back(address); }};
    }

    test::TempFolder folder_;
    Files files_{folder_.path()};
    std::vector<std::string> opened_;
};

TEST_F(DocumentWindow, ShowsTheDocumentUntilItIsClosed) {
    for (const bool by_key : {true, false}) {
        frmDocument window = Window();
        ShowActive(window);
        EXPECT_EQ(window.windowTitle(), QString::fromUtf8("Program \xC3\x89"));
        auto& browser = Control<QTextBrowser>(window, "txtDocument");
        EXPECT_EQ(browser.toPlainText(), "First line\nSee https://example.org/a?b=c, first.\nLast");
        EXPECT_TRUE(browser.isReadOnly());
        EXPECT_EQ(browser.textCursor().position(), 0);
        TypeText("x");
        EXPECT_TRUE(browser.toPlainText().startsWith("First"));
        if (by_key)
            PressKey(Qt::Key_Escape);
        else
            QTest::mouseClick(&Control<QPushButton>(window, "butClose"), Qt::LeftButton);
        EXPECT_FALSE(window.isVisible());
    }
}

TEST_F(DocumentWindow, LinksAreHandedOn) {
    frmDocument window = Window();
    ShowActive(window);
    auto& browser = Control<QTextBrowser>(window, "txtDocument");
    QTextCursor link = browser.document()->find("example");
    EXPECT_EQ(link.charFormat().anchorHref(), "https://example.org/a?b=c");
    QTest::mouseClick(browser.viewport(), Qt::LeftButton, {}, browser.cursorRect(link).center());
    EXPECT_THAT(opened_, ElementsAre("https://example.org/a?b=c"));
    EXPECT_FALSE(browser.document()->find(", first").charFormat().isAnchor());
    EXPECT_TRUE(window.isVisible());
}

TEST_F(DocumentWindow, IsSearchedAsTheLogIs) {
    frmDocument window = Window();
    ShowActive(window);
    auto& browser = Control<QTextBrowser>(window, "txtDocument");
    auto& said = Control<QLabel>(window, "labFound");
    const auto place = [&] { return browser.textCursor().selectionStart(); };
    PressKey(Qt::Key_F, Qt::ControlModifier);
    TypeText("first");
    EXPECT_EQ(place(), 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return said.text() == "2 matches"; }));
    PressKey(Qt::Key_Return);
    EXPECT_EQ(place(), browser.toPlainText().lastIndexOf("first"));
    PressKey(Qt::Key_F3);
    EXPECT_EQ(place(), 0);
    EXPECT_EQ(said.text(), "2 matches - went on from the top");
    PressKey(Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(place(), browser.toPlainText().lastIndexOf("first"));
    EXPECT_EQ(said.text(), "2 matches - went on from the end");
    TypeText("x");
    EXPECT_EQ(said.text(), "Nothing was found");
}

TEST_F(DocumentWindow, AMissingDocumentIsAnError) {
    const auto open = [this] { const frmDocument window(files_, files_.Path("none.rtf"), "None", {}); };
    EXPECT_EQ(test::RaisedBy(open).number(), errors::kFileNotFound);
}

// Where each document builder goes wrong first: formats at the places where they change.
TEST(RichTextDocument, HasTheFormatsOfTheText) {
    QTextDocument document;
    QPalette light;
    light.setColor(QPalette::Base, Qt::white);
    light.setColor(QPalette::Text, Qt::black);
    {
        RichTextDocument sink(document, light);
        ReadRichText(
            "{\\rtf1\\deff0\\deftab1440{\\fonttbl{\\f0\\fswiss Arial;}{\\f1\\fmodern Courier;}}"
            "{\\colortbl;\\red0\\green0\\blue128;\\red255\\green255\\blue0;}"
            "\\pard\\qc\\sb120\\sa240\\fs36{\\b Title}\\par"
            "\\pard\\qr\\li720\\fi-360\\fs20 a{\\i\\ul b}{\\f1 c}{\\cf1 d}{\\highlight2 e}\\par\\pard\\par}",
            sink);
    }
    EXPECT_EQ(document.toPlainText(), "Title\nabcde\n");
    EXPECT_FALSE(document.isUndoRedoEnabled());
    EXPECT_EQ(document.defaultTextOption().tabStopDistance(), 96);
    const QTextBlock title = document.firstBlock();
    EXPECT_EQ(title.blockFormat().alignment(), Qt::AlignHCenter);
    EXPECT_EQ(title.blockFormat().topMargin(), 8);
    EXPECT_EQ(title.blockFormat().bottomMargin(), 16);
    const QTextBlock text = title.next();
    EXPECT_EQ(text.blockFormat().alignment(), Qt::AlignRight);
    EXPECT_EQ(text.blockFormat().leftMargin(), 48);
    EXPECT_EQ(text.blockFormat().textIndent(), -24);
    EXPECT_EQ(text.next().blockFormat().alignment(), Qt::AlignLeft);
    const auto format = [&](int position) {
        QTextCursor cursor(&document);
        cursor.setPosition(position + 1);
        return cursor.charFormat();
    };
    EXPECT_EQ(format(0).fontPointSize(), 18);
    EXPECT_EQ(format(0).fontWeight(), QFont::Bold);
    EXPECT_EQ(format(0).fontFamilies().toStringList(), QStringList("Arial"));
    EXPECT_EQ(format(6).fontPointSize(), 10);
    EXPECT_EQ(format(6).fontWeight(), QFont::Normal);
    EXPECT_TRUE(format(7).fontItalic() && format(7).fontUnderline());
    EXPECT_EQ(format(8).fontStyleHint(), QFont::Monospace);
    EXPECT_EQ(format(9).foreground().color(), QColor(0, 0, 128));
    EXPECT_EQ(format(10).background().color(), QColor(255, 255, 0));
    EXPECT_EQ(format(10).foreground().color(), QColor(0, 0, 0));
}

}  // namespace
}  // namespace zorvel

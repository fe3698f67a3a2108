// The window that shows a report, through clicks and keys.
#include <QAbstractItemModelTester>
#include <QMenu>
#include <QWheelEvent>
#include <functional>

#include "gui/report/group_tree_model.h"
#include "gui/report_window_fixture.h"
#include "gui/tool_tip.h"

namespace zorvel {
namespace {

using test::Control;
using test::kGroups;
using testing::StartsWith;

class ReportWindow : public test::ReportWindowTest {
  protected:
    QTreeView& tree() { return Control<QTreeView>(*window_, "treeGroups"); }
    std::string Zoom() { return Control<QLabel>(*window_, "labZoom").text().toStdString(); }
    std::string Said() { return Control<QLabel>(*window_, "labFound").text().toStdString(); }
    // What is marked, where it comes from, and whether it is marked in what is seen.
    std::string Mark() {
        if (!view().mark()) return "nothing";
        const TextPlace& place = view().mark()->place;
        const char* kinds[] = {"furniture", "cell", "heading", "note"};
        std::string text = std::string(kinds[static_cast<int>(place.kind)]) + ' ' +
                           std::to_string(place.index) + '.' + std::to_string(place.column) + '@' +
                           std::to_string(place.offset) + ' ' + view().SelectedNeedle().toStdString();
        return text + (MarkSeen().isEmpty() ? " out of sight" : "");
    }
    // Where the colour of marked text is seen.
    QRect MarkSeen() {
        const QImage seen = Seen();
        QRect area;
        for (int y = 0; y < seen.height(); ++y) {
            for (int x = 0; x < seen.width(); ++x) {
                if (seen.pixelColor(x, y) == QColor(255, 224, 112)) area |= QRect(x, y, 1, 1);
            }
        }
        return area;
    }
    QImage Seen() { return view().viewport()->grab().toImage(); }
    void Search(const char* needle) {
        Press(Qt::Key_F, Qt::ControlModifier);
        test::TypeText(needle);
    }
    QModelIndex Node(int row, const QModelIndex& parent = {}) {
        return tree().model()->index(row, 0, parent);
    }
    void ClickNode(const QModelIndex& index) {
        tree().scrollTo(index);
        QTest::mouseClick(tree().viewport(), Qt::LeftButton, {}, tree().visualRect(index).center());
        QCoreApplication::processEvents();
    }
    std::string Selected() { return tree().currentIndex().data().toString().toStdString(); }
};

TEST_F(ReportWindow, OpensOnTheFirstPageAcrossTheWindow) {
    Open(MakeReport());
    EXPECT_EQ(window_->windowTitle(), "Registry Details");
    EXPECT_FALSE(window_->isModal());
    EXPECT_EQ(window_->focusWidget(), &view());
    EXPECT_THAT(Pages(), StartsWith("1 of "));
    EXPECT_GT(LastPage(), 8);
    EXPECT_EQ(Control<QLabel>(*window_, "labSize").text().toStdString(),
              "480 rows on " + std::to_string(LastPage()) + " pages");
    EXPECT_TRUE(window_->findChild<QAction*>("actFitWidth")->isChecked());
    const QImage image = Seen();
    const QColor desk = image.pixelColor(2, 2);
    EXPECT_NE(desk, QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(14, 20), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(image.width() - 15, 20), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(image.width() - 3, 20), desk);
    bool dark = false;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            dark = dark || qGray(image.pixel(x, y)) < 100;
    EXPECT_TRUE(dark) << "no text is to be seen";
}

TEST_F(ReportWindow, TurnsPages) {
    Open(MakeReport());
    const int last = LastPage();
    const auto page = [](int number) { return number; };
    struct Step {
        std::function<void()> turn;
        int page;
    };
    const Step steps[] = {
        {[this] { Click("actNext"); }, page(2)},
        {[this] { Press(Qt::Key_PageDown, Qt::ControlModifier); }, page(3)},
        {[this] { Press(Qt::Key_PageUp, Qt::ControlModifier); }, page(2)},
        {[this] { Click("actLast"); }, last},
        {[this] { Click("actPrevious"); }, last - 1},
        {[this] { Click("actFirst"); }, 1},
        {[this] { Press(Qt::Key_End); }, last},
        {[this] { Press(Qt::Key_Home); }, 1},
    };
    for (const Step& step : steps) {
        step.turn();
        EXPECT_EQ(Pages(), std::to_string(step.page) + " of " + std::to_string(last)) << &step - steps;
        EXPECT_EQ(window_->findChild<QAction*>("actPrevious")->isEnabled(), step.page > 1);
        EXPECT_EQ(window_->findChild<QAction*>("actNext")->isEnabled(), step.page < last);
    }
    auto& box = Control<QSpinBox>(*window_, "txtPage");
    box.setFocus();
    box.selectAll();
    test::TypeText("5");
    EXPECT_EQ(view().page(), 0U) << "not before Enter";
    Press(Qt::Key_Return);
    EXPECT_EQ(view().page(), 4U);
    EXPECT_EQ(window_->focusWidget(), &view());
    // Arrows and PageDown move what is seen; the box follows.
    QScrollBar& bar = *view().verticalScrollBar();
    const int before = bar.value();
    Press(Qt::Key_Down);
    EXPECT_EQ(bar.value(), before + bar.singleStep());
    Press(Qt::Key_Up);
    EXPECT_EQ(bar.value(), before);
    Press(Qt::Key_PageDown);
    Press(Qt::Key_PageDown);
    EXPECT_GT(bar.value(), before);
    EXPECT_THAT(Pages(), StartsWith("6 of "));
}

TEST_F(ReportWindow, Zooms) {
    Open(MakeReport());
    const std::string width = Zoom();
    Press(Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(Zoom(), "100 %");
    EXPECT_FALSE(window_->findChild<QAction*>("actFitWidth")->isChecked());
    Click("actZoomIn");
    EXPECT_EQ(Zoom(), "125 %");
    Press(Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_EQ(Zoom(), "150 %");
    Press(Qt::Key_Minus, Qt::ControlModifier);
    Click("actZoomOut");
    EXPECT_EQ(Zoom(), "100 %");
    const auto wheel = [this](int delta) {
        const QPointF place(view().viewport()->rect().center());
        QWheelEvent event(place, view().viewport()->mapToGlobal(place), {}, {0, delta}, Qt::NoButton,
                          Qt::ControlModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(view().viewport(), &event);
    };
    wheel(120);
    EXPECT_EQ(Zoom(), "120 %");
    wheel(-120);
    EXPECT_EQ(Zoom(), "100 %");
    for (int i = 0; i < 30; ++i)
        Press(Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_EQ(Zoom(), "10 %");
    for (int i = 0; i < 30; ++i)
        Press(Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_EQ(Zoom(), "600 %");
    EXPECT_GT(view().horizontalScrollBar()->maximum(), 0);
    Press(Qt::Key_1, Qt::ControlModifier);
    EXPECT_EQ(Zoom(), width);
    EXPECT_EQ(view().horizontalScrollBar()->maximum(), 0);
    // A whole page follows the window, and PageDown then turns it.
    Click("actFitPage");
    Press(Qt::Key_PageDown);
    EXPECT_THAT(Pages(), StartsWith("2 of "));
    const std::string whole = Zoom();
    window_->resize(1000, 500);
    QCoreApplication::processEvents();
    EXPECT_NE(Zoom(), whole);
    EXPECT_THAT(Pages(), StartsWith("2 of "));
}

TEST_F(ReportWindow, FindsWhatIsShown) {
    Open(MakeReport());
    Search("caf");
    EXPECT_EQ(Mark(), "cell 10.1@4 Caf");
    test::TypeText(QString::fromUtf8("\xC3\xA9"));
    EXPECT_EQ(Mark(), "cell 10.1@4 Caf\xC3\xA9");
    EXPECT_TRUE(QTest::qWaitFor([&] { return Said() == "2 matches"; }));
    Press(Qt::Key_Return);
    EXPECT_EQ(Mark(), "cell 300.1@4 Caf\xC3\xA9");
    EXPECT_THAT(Pages(), testing::Not(StartsWith("1 of")));
    Press(Qt::Key_F3);
    EXPECT_EQ(Mark(), "cell 10.1@4 Caf\xC3\xA9");
    EXPECT_EQ(Said(), "2 matches - went on from the top");
    Press(Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(Mark(), "cell 300.1@4 Caf\xC3\xA9");
    EXPECT_EQ(Said(), "2 matches - went on from the end");
    struct Case {
        const char* needle;
        const char* mark;
        const char* said;
    };
    const Case cases[] = {
        {"site 2", "heading 5.0@0 Site 2", "1 match"},
        {"installed at 3", "note 11.0@0 Installed at 3", "4 matches"},
        {"4,790", "cell 479.2@0 4,790", "1 match"},
        {"4790", "cell 47.2@0 47", "Nothing was found"},
        {"key\\120", "cell 240.0@0 Key\\120", "1 match"},  // the row below repeats it
    };
    for (const Case& test : cases) {
        Search(test.needle);
        EXPECT_TRUE(QTest::qWaitFor([&] { return Said().rfind(test.said, 0) == 0; }))
            << test.needle << ": " << Said();
        EXPECT_EQ(Mark(), test.mark);
    }
    // ESC closes the bar, not the window; the button opens it.
    Press(Qt::Key_Escape);
    EXPECT_FALSE(Control<QWidget>(*window_, "barSearch").isVisible());
    EXPECT_EQ(window_->focusWidget(), &view());
    Press(Qt::Key_Escape);
    EXPECT_TRUE(window_->isVisible());
    Click("actSearch");
    EXPECT_EQ(Control<QLineEdit>(*window_, "txtSearch").selectedText(), "Key\\120");
}

TEST_F(ReportWindow, FindsFromThePageThatIsShown) {
    Open(MakeReport());
    Click("actLast");
    Search("data");
    EXPECT_THAT(Mark(), testing::MatchesRegex("cell 4[5-7][0-9].1@0 data"));
    EXPECT_EQ(static_cast<int>(view().page()) + 1, LastPage());
}

TEST_F(ReportWindow, CopiesWhatWasFoundAndWhatStandsUnderThePointer) {
    Open(MakeReport());
    Search("caf");
    view().setFocus();
    QGuiApplication::clipboard()->clear();
    Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QString::fromUtf8("the Caf\xC3\xA9 here"));

    const struct {
        Qt::Key entry;
        const char* copied;
    } kCases[] = {{Qt::Key_V, "the Caf\xC3\xA9 here"}, {Qt::Key_R, "Key\\5\tthe Caf\xC3\xA9 here\t100"}};
    for (const auto& c : kCases) {
        Q_EMIT view().customContextMenuRequested(MarkSeen().center());
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        test::PressKey(c.entry);
        EXPECT_EQ(QGuiApplication::clipboard()->text(), QString::fromUtf8(c.copied));
    }
    Q_EMIT view().customContextMenuRequested(QPoint(1, 1));
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(ReportWindow, JumpsToGroupsAndFollowsThePages) {
    const auto report = MakeReport();
    Open(report);
    const QAbstractItemModelTester tester(tree().model());
    EXPECT_EQ(tree().model()->rowCount(), 3);
    EXPECT_EQ(Selected(), "Site 1");
    ClickNode(Node(2));
    EXPECT_EQ(Selected(), "Site 3");
    const std::size_t third = view().page();
    EXPECT_GT(third, 3U);
    // The heading stands at the top, on its band.
    const QImage image = Seen();
    bool band = false;
    for (int y = 0; y < 30; ++y)
        band = band || image.pixelColor(image.width() / 2, y) == PaperColour(PageColour::kBand);
    EXPECT_TRUE(band);
    Click("actPrevious");
    EXPECT_EQ(Selected(), "Site 2") << "App 2.4 is on the page, and its site is closed";
    Click("actFirst");
    EXPECT_EQ(Selected(), "Site 1");
    tree().expand(Node(1));
    ClickNode(Node(3, Node(1)));
    EXPECT_EQ(Selected(), "App 2.4");
    EXPECT_LE(view().page(), third);
    Click("actFirst");
    ClickNode(Node(1));
    const std::size_t second = view().page();
    Click("actNext");
    EXPECT_THAT(Selected(), StartsWith("App 2.")) << "the site is open";
    ClickNode(Node(1));
    EXPECT_EQ(view().page(), second);
    Press(Qt::Key_Down);
    EXPECT_EQ(Selected(), "App 2.1");
}

TEST_F(ReportWindow, AClickOnAGroupJumpsOnce) {
    Open(MakeReport());
    const QModelIndex site = Node(1);
    const QPoint place = tree().visualRect(site).center();
    QTest::mousePress(tree().viewport(), Qt::LeftButton, {}, place);
    QScrollBar& bar = *view().verticalScrollBar();
    bar.setValue(bar.value() + 1);
    const int moved = bar.value();
    QTest::mouseRelease(tree().viewport(), Qt::LeftButton, {}, place);
    EXPECT_EQ(Selected(), "Site 2");
    EXPECT_EQ(bar.value(), moved);
    ClickNode(site);
    EXPECT_EQ(bar.value(), moved - 1);
}

TEST_F(ReportWindow, AGroupsToolTipShowsWhatLooksLikeMarkup) {
    Open(MakeReport("[[group]]\nby = \"Site\"\nheading = \"<i>Site</i> {Site}\"\n"));
    EXPECT_EQ(test::ShownTip(Node(0).data(Qt::ToolTipRole).toString()), "<i>Site</i> 1");
}

TEST_F(ReportWindow, HasNoTreeWithoutGroups) {
    for (const auto& report : {MakeReport(""), MakeReport(kGroups, "WHERE Site = 'none'")}) {
        Open(report);
        EXPECT_FALSE(tree().isVisible());
        EXPECT_EQ(view().width(), window_->width());
        Search("app");
        EXPECT_EQ(Said(), "Nothing was found");
        delete window_;
    }
}

TEST_F(ReportWindow, ThereCanBeSeveralAndEachKeepsItsReport) {
    auto first_report = MakeReport();
    const std::weak_ptr<const Report> kept = first_report;
    Open(first_report);
    first_report.reset();
    const QPointer<frmReport> first = window_;
    Open(MakeReport("", "WHERE Site = '1'"));
    EXPECT_NE(LastPage(), Control<QSpinBox>(*first, "txtPage").maximum());
    EXPECT_TRUE(first->isVisible());
    Activate(*first);
    test::PressKey(Qt::Key_W, Qt::ControlModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return first.isNull(); }));
    EXPECT_TRUE(kept.expired());
    Activate(*window_);
    Press(Qt::Key_End);
    EXPECT_EQ(static_cast<int>(view().page()) + 1, LastPage());
}

}  // namespace
}  // namespace zorvel

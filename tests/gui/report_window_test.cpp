// The window that shows a report, through clicks and keys, and what it prints and saves.
#include <gmock/gmock.h>
#include <sys/resource.h>

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QProcess>
#include <QProgressDialog>
#include <QPushButton>
#include <QScrollBar>
#include <QSpinBox>
#include <QStatusBar>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QTreeView>
#include <QWheelEvent>
#include <csignal>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "gui/controls.h"
#include "gui/frm_report.h"
#include "gui/group_tree_model.h"
#include "gui/report_print.h"
#include "gui/report_view.h"
#include "platform/error.h"
#include "platform/store.h"
#include "support/fakes.h"

namespace zorvel {
namespace {

using test::Control;
using test::ShowActive;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

constexpr const char* kGroups = R"(
[[group]]
by = "Site"
heading = "Site {Site}"
[[group]]
by = ["Site", "App"]
heading = "{App}"
note = "Installed at {Site}"
)";

// A report over 3 sites with 4 applications each, and 40 settings in each of them.
class ReportWindow : public testing::Test {
  protected:
    ReportWindow() {
        QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        Database database(DatabasePath(), "Rows.mdb", Database::Access::kCreate);
        database.Execute("CREATE TABLE Settings (Site TEXT, App TEXT, Key TEXT, Data TEXT, Size INTEGER)");
        database.Begin();
        Command insert = database.Prepare("INSERT INTO Settings VALUES (?1, ?2, ?3, ?4, ?5)");
        for (int row = 0; row < 480; ++row) {
            const std::string site = std::to_string(row / 160 + 1);
            const std::string app = std::to_string(row / 40 % 4 + 1);
            const std::string key = "Key\\" + std::to_string(row / 2);
            const std::string data = row == 10 || row == 300 ? "the Caf\xE9 here" : "data";
            insert.Execute(std::vector<std::string>{site, "App " + site + "." + app, key, data,
                                                    std::to_string(row * 10)});
        }
        database.Complete();
    }
    std::filesystem::path DatabasePath() const { return shell_.folder.path() / "Databases/Rows.mdb"; }

    std::shared_ptr<const Report> MakeReport(const std::string& groups = kGroups,
                                             const std::string& where = "",
                                             const std::string& orientation = "portrait") const {
        const std::string query = "SELECT * FROM Settings " + where + " ORDER BY rowid";
        const std::string text = "title = \"Settings\"\nquery = \"" + query + "\"\n[page]\norientation = \"" +
                                 orientation + "\"\n" + groups +
                                 "[[column]]\nfield = \"Key\"\nwidth = 3\nblank_repeats = true\n"
                                 "[[column]]\nfield = \"Data\"\nwidth = 3\n"
                                 "[[column]]\nfield = \"Size\"\nformat = \"number\"\n";
        ReportFacts facts;
        facts.caption = "Registry Details";
        const Database database(DatabasePath(), "Rows.mdb", Database::Access::kReadOnly);
        return std::make_shared<const Report>(ParseReportDefinition(text, "Settings.rpt"), facts, database,
                                              query);
    }
    void Open(const std::shared_ptr<const Report>& report) {
        window_ = new frmReport(shell_.services, report);
        window_->resize(1000, 700);
        ShowActive(*window_);
    }
    void TearDown() override { delete window_; }

    // Gives a window that is shown the keyboard again.
    static void Activate(QWidget& window) {
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    ReportView& view() { return Control<ReportView>(*window_, "viewReport"); }
    QTreeView& tree() { return Control<QTreeView>(*window_, "treeGroups"); }
    void Press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(window_->focusWidget(), static_cast<Qt::Key>(key), modifiers);
        QCoreApplication::processEvents();
    }
    void Click(const char* action) {
        auto* button = qobject_cast<QToolButton*>(
            Control<QToolBar>(*window_, "barTools").widgetForAction(window_->findChild<QAction*>(action)));
        ASSERT_NE(button, nullptr) << action;
        QTest::mouseClick(button, Qt::LeftButton);
        QCoreApplication::processEvents();
    }
    std::string Pages() { return Control<QSpinBox>(*window_, "txtPage").text().toStdString(); }
    std::string Zoom() { return Control<QLabel>(*window_, "labZoom").text().toStdString(); }
    std::string Said() { return Control<QLabel>(*window_, "labFound").text().toStdString(); }
    std::string Status() { return Control<QStatusBar>(*window_, "barStatus").currentMessage().toStdString(); }
    int LastPage() { return Control<QSpinBox>(*window_, "txtPage").maximum(); }
    // What is marked, where it comes from, and whether it is marked in what is seen.
    std::string Mark() {
        if (!view().mark()) return "nothing";
        const TextPlace& place = view().mark()->place;
        const char* kinds[] = {"furniture", "cell", "heading", "note"};
        std::string text = std::string(kinds[static_cast<int>(place.kind)]) + ' ' +
                           std::to_string(place.index) + '.' + std::to_string(place.column) + '@' +
                           std::to_string(place.offset) + ' ' + view().SelectedNeedle().toStdString();
        const auto area = view().MarkRect();
        if (!area) return text + " out of sight";
        const QPoint corner = area->toAlignedRect().topLeft() + QPoint(1, 1);
        const bool marked = Seen().pixelColor(corner) == QColor(255, 224, 112);
        return text + (marked ? "" : " unmarked");
    }
    QImage Seen() { return view().viewport()->grab().toImage(); }
    void Search(const char* needle) {
        Press(Qt::Key_F, Qt::ControlModifier);
        QTest::keyClicks(window_->focusWidget(), needle);
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

    // Answers the next dialog with `answer`, however long it takes to come.
    template <typename Dialog>
    void WhenAsked(const std::function<void(Dialog&)>& answer) {
        QTimer::singleShot(5, &timers_, [this, answer] {
            auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
            if (dialog != nullptr && dialog->isVisible())
                answer(*dialog);
            else
                WhenAsked<Dialog>(answer);
        });
    }
    // Saves through the dialog, under a name of the test's folder.
    void SaveAs(const std::string& name, int filter = 0) {
        Activate(*window_);
        WhenAsked<QFileDialog>([&, name, filter](QFileDialog& dialog) {
            auto& filters = Control<QComboBox>(dialog, "fileTypeCombo");
            for (int step = 0; step < filter; ++step)
                QTest::keyClick(&filters, Qt::Key_Down);
            auto& box = Control<QLineEdit>(dialog, "fileNameEdit");
            offered_ = box.text().toStdString();
            box.setText(QString::fromStdString((shell_.folder.path() / name).string()));
            QTest::keyClick(&box, Qt::Key_Return);
        });
        Press(Qt::Key_S, Qt::ControlModifier);
    }

    test::TestShell shell_;
    QPointer<frmReport> window_;
    QObject timers_;
    std::string offered_;
};

// The file may not grow beyond this, as on a full disk.
class FullDisk {
  public:
    explicit FullDisk(rlim_t bytes) {
        getrlimit(RLIMIT_FSIZE, &before_);
        rlimit limit = before_;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, signal_);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

  private:
    void (*signal_)(int) = std::signal(SIGXFSZ, SIG_IGN);
    rlimit before_{};
};

std::string OutputOf(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished()) return "could not be run";
    return process.readAllStandardOutput().toStdString();
}

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
    QTest::keyClicks(&box, "5");
    EXPECT_EQ(view().page(), 0U) << "not before Enter";
    QTest::keyClick(&box, Qt::Key_Return);
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
    Control<QLineEdit>(*window_, "txtFind").insert(QString::fromUtf8("\xC3\xA9"));
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
        Control<QLineEdit>(*window_, "txtFind").selectAll();
        QTest::keyClicks(&Control<QLineEdit>(*window_, "txtFind"), test.needle);
        EXPECT_TRUE(QTest::qWaitFor([&] { return Said().rfind(test.said, 0) == 0; }))
            << test.needle << ": " << Said();
        EXPECT_EQ(Mark(), test.mark);
    }
    // ESC closes the bar, not the window; the button opens it.
    Press(Qt::Key_Escape);
    EXPECT_FALSE(Control<QWidget>(*window_, "barFind").isVisible());
    EXPECT_EQ(window_->focusWidget(), &view());
    Press(Qt::Key_Escape);
    EXPECT_TRUE(window_->isVisible());
    Click("actFind");
    EXPECT_EQ(Control<QLineEdit>(*window_, "txtFind").selectedText(), "Key\\120");
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
        Q_EMIT view().customContextMenuRequested(view().MarkRect()->center().toPoint());
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        QTest::keyClick(menu, c.entry);
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
    QTest::keyClick(&tree(), Qt::Key_Down);
    EXPECT_EQ(Selected(), "App 2.1");
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
    QTest::keyClick(first->focusWidget(), Qt::Key_W, Qt::ControlModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return first.isNull(); }));
    EXPECT_TRUE(kept.expired());
    Activate(*window_);
    Press(Qt::Key_End);
    EXPECT_EQ(static_cast<int>(view().page()) + 1, LastPage());
}

TEST_F(ReportWindow, SavesInTheChosenFormat) {
    Open(MakeReport());
    struct Case {
        const char* name;
        int filter;
        const char* file;
        const char* begins;
    };
    const Case cases[] = {
        {"a", 0, "a.pdf", "%PDF-"},
        {"a", 1, "a.html", "<!DOCTYPE html>"},
        {"a", 2, "a.csv", "\xEF\xBB\xBFSite,App,Key"},
        {"a", 3, "a.json", "{"},
        {"b.JSON", 0, "b.JSON", "{"},
        {"v1.2", 2, "v1.2.csv", "\xEF\xBB\xBFSite,App,Key"},
    };
    for (const Case& test : cases) {
        SaveAs(test.name, test.filter);
        const std::string begins = test.begins;
        EXPECT_EQ(shell_.folder.Read(test.file).substr(0, begins.size()), begins) << test.file;
        EXPECT_EQ(Status(), "Saved as " + (shell_.folder.path() / test.file).string());
    }
    EXPECT_EQ(offered_, "Registry Details");
    EXPECT_TRUE(shell_.ui.boxes.empty());
    // A name that the dialog could not ask about.
    shell_.ui.answers = {Answer::kNo};
    shell_.folder.Write("v1.2.csv", "old");
    SaveAs("v1.2", 2);
    ASSERT_EQ(shell_.ui.boxes.size(), 1U);
    EXPECT_THAT(shell_.ui.boxes[0].text, EndsWith("v1.2.csv already exists.\nDo you want to replace it?"));
    EXPECT_EQ(shell_.folder.Read("v1.2.csv"), "old");
}

TEST_F(ReportWindow, TheTextOfAPdfCanBeSearched) {
    for (const char* orientation : {"portrait", "landscape"}) {
        Open(MakeReport(kGroups, "", orientation));
        const std::string name = std::string(orientation) + ".pdf";
        SaveAs(name);
        const QString path = QString::fromStdString((shell_.folder.path() / name).string());
        const std::string text = OutputOf("pdftotext", {"-layout", path, "-"});
        EXPECT_THAT(text, HasSubstr("Installed at 3"));
        EXPECT_THAT(text,
                    testing::ContainsRegex("Key.149 +the Caf\xC3\xA9 here|the Caf\xC3\xA9 here +3,000"));
        EXPECT_THAT(text, HasSubstr("4,790"));
        const std::string facts = OutputOf("pdfinfo", {path});
        EXPECT_THAT(facts, testing::ContainsRegex("Title: +Registry Details"));
        EXPECT_THAT(facts, testing::ContainsRegex("Creator: +Zorvel"));
        EXPECT_THAT(facts, testing::ContainsRegex("Pages: +" + std::to_string(LastPage())));
        EXPECT_THAT(facts,
                    HasSubstr(orientation == std::string("portrait") ? " 595 x 842 pts" : " 842 x 595 pts"));
        delete window_;
    }
}

TEST_F(ReportWindow, AFullDiskIsToldAndTheOldFileStays) {
    Open(MakeReport());
    int filter = 0;
    for (const char* name : {"full.pdf", "full.html", "full.csv", "full.json"}) {
        shell_.folder.Write(name, "old");
        shell_.ui.boxes.clear();
        Activate(*window_);
        WhenAsked<QFileDialog>([this, name, filter](QFileDialog& dialog) {
            for (int step = 0; step < filter; ++step)
                QTest::keyClick(&Control<QComboBox>(dialog, "fileTypeCombo"), Qt::Key_Down);
            auto& box = Control<QLineEdit>(dialog, "fileNameEdit");
            box.setText(QString::fromStdString((shell_.folder.path() / name).string()));
            WhenAsked<QMessageBox>([](QMessageBox& question) {
                QTest::mouseClick(question.button(QMessageBox::Yes), Qt::LeftButton);
            });
            QTest::keyClick(&box, Qt::Key_Return);
        });
        {
            const FullDisk disk(8'000);
            Press(Qt::Key_S, Qt::ControlModifier);
        }
        ASSERT_EQ(shell_.ui.boxes.size(), 1U) << name;
        EXPECT_EQ(shell_.ui.boxes[0].text, "ERROR: Unexpected error # 61 (Disk full) occurred in frmReport");
        EXPECT_EQ(shell_.ui.boxes[0].icon, MessageIcon::kExclamation);
        EXPECT_THAT(shell_.LogLines().back(), HasSubstr(std::string(name) + ": Disk full"));
        EXPECT_EQ(shell_.folder.Read(name), "old");
        ++filter;
    }
    // The window goes on.
    Click("actNext");
    EXPECT_THAT(Pages(), StartsWith("2 of "));
}

TEST_F(ReportWindow, AFileThatCannotBeMadeIsAnError) {
    const auto report = MakeReport();
    shell_.folder.Write("file", "");
    struct Case {
        const char* path;
        std::int32_t number;
    };
    for (const Case& test :
         {Case{"missing/a.pdf", errors::kPathNotFound}, Case{"file/a.pdf", errors::kPathNotFound}}) {
        try {
            WritePdf(*report, shell_.folder.path() / test.path);
            ADD_FAILURE() << test.path;
        } catch (const OutputError& error) {
            EXPECT_EQ(error.number(), test.number) << test.path;
            EXPECT_THAT(error.detail(), HasSubstr(test.path));
        }
    }
}

TEST_F(ReportWindow, ALongSaveCanBeStopped) {
    const auto report = MakeReport();
    const PaperFonts fonts;
    const PageLayout layout(*report, fonts.metrics());
    shell_.folder.Write("a.pdf", "old");
    std::vector<std::size_t> told;
    EXPECT_FALSE(WritePdf(*report, layout, fonts, AllPages(layout), shell_.folder.path() / "a.pdf",
                          [&](std::size_t done, std::size_t pages) {
                              EXPECT_EQ(pages, layout.page_count());
                              told.push_back(done);
                              return done < 2;
                          }));
    EXPECT_THAT(told, ElementsAre(0, 1, 2));
    EXPECT_EQ(shell_.folder.Read("a.pdf"), "old");
    const std::filesystem::directory_iterator folder(shell_.folder.path());
    for (const auto& entry : folder)
        EXPECT_THAT(entry.path().filename().string(),
                    testing::AnyOf("a.pdf", testing::Not(HasSubstr("a.pdf"))));
}

TEST_F(ReportWindow, PrintsTheChosenPages) {
    Open(MakeReport(kGroups, "", "landscape"));
    const std::string file = (shell_.folder.path() / "printed.pdf").string();
    std::size_t asked = 0;
    window_->SetAskPrinter([&](QPrinter& printer, std::size_t pages, QWidget* window) {
        EXPECT_EQ(window, window_);
        EXPECT_EQ(printer.docName(), "Registry Details");
        asked = pages;
        printer.setOutputFileName(QString::fromStdString(file));
        printer.setPrintRange(QPrinter::PageRange);
        printer.setFromTo(2, 3);
        return true;
    });
    Press(Qt::Key_P, Qt::ControlModifier);
    EXPECT_EQ(static_cast<int>(asked), LastPage());
    EXPECT_EQ(Status(), "2 pages printed");
    const std::string facts = OutputOf("pdfinfo", {QString::fromStdString(file)});
    EXPECT_THAT(facts, testing::ContainsRegex("Pages: +2\n"));
    EXPECT_THAT(facts, testing::ContainsRegex("Page size: +84[12][.0-9]* x 595"));
    const std::string text = OutputOf("pdftotext", {"-layout", QString::fromStdString(file), "-"});
    EXPECT_THAT(text, HasSubstr("Page 2 of"));
    EXPECT_THAT(text, testing::Not(HasSubstr("Page 1 of")));
    // Nobody prints, and nothing is said.
    window_->SetAskPrinter([](QPrinter&, std::size_t, QWidget*) { return false; });
    std::filesystem::remove(file);
    Press(Qt::Key_P, Qt::ControlModifier);
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_TRUE(shell_.ui.boxes.empty());
}

TEST_F(ReportWindow, AFileThatCannotBePrintedIsTold) {
    Open(MakeReport());
    window_->SetAskPrinter([&](QPrinter& printer, std::size_t, QWidget*) {
        printer.setOutputFileName(QString::fromStdString((shell_.folder.path() / "none/a.pdf").string()));
        return true;
    });
    Press(Qt::Key_P, Qt::ControlModifier);
    ASSERT_EQ(shell_.ui.boxes.size(), 1U);
    EXPECT_EQ(shell_.ui.boxes[0].text, "ERROR: Unexpected error # 76 (Path not found) occurred in frmReport");
    EXPECT_THAT(shell_.LogLines().back(), HasSubstr("none/a.pdf"));
    Press(Qt::Key_End);
    EXPECT_EQ(static_cast<int>(view().page()) + 1, LastPage());
}

TEST_F(ReportWindow, PrintersGetTheirPages) {
    const auto report = MakeReport(kGroups, "", "landscape");
    const PaperFonts fonts;
    const PageLayout layout(*report, fonts.metrics());
    QPrinter printer;
    const QString path = QString::fromStdString((shell_.folder.path() / "printed.pdf").string());
    printer.setOutputFileName(path);
    PreparePrinter(printer, *report, layout);
    EXPECT_TRUE(PrintPages(printer, layout, fonts, {2, 0}, {}));
    const std::string text = OutputOf("pdftotext", {"-layout", path, "-"});
    EXPECT_THAT(text, testing::ContainsRegex("Page 3 of .*\f"));
    EXPECT_LT(text.find("Page 3 of"), text.find("Page 1 of"));
    const std::string facts = OutputOf("pdfinfo", {path});
    EXPECT_THAT(facts, testing::ContainsRegex("Pages: +2\n"));
    EXPECT_THAT(facts, testing::ContainsRegex("Page size: +842 x 595"));
    // On a smaller paper all of a page is still there.
    printer.setPageSize(QPageSize(QPageSize::A5));
    EXPECT_TRUE(PrintPages(printer, layout, fonts, {0}, {}));
    EXPECT_THAT(OutputOf("pdftotext", {"-layout", path, "-"}), HasSubstr("Page 1 of"));
    EXPECT_FALSE(PrintPages(printer, layout, fonts, {0, 1}, [](std::size_t, std::size_t) { return false; }));
    printer.setOutputFileName(QString::fromStdString((shell_.folder.path() / "none/a.pdf").string()));
    try {
        PrintPages(printer, layout, fonts, {0}, {});
        ADD_FAILURE();
    } catch (const OutputError& error) {
        EXPECT_EQ(error.number(), errors::kPathFileAccess);
        EXPECT_THAT(error.detail(), HasSubstr("none/a.pdf"));
    }
}

TEST(PagesToPrint, AreThoseOfTheSettings) {
    using Pages = std::vector<std::size_t>;
    QPrinter printer;
    printer.setOutputFormat(QPrinter::PdfFormat);
    EXPECT_EQ(PagesToPrint(printer, 3, 1), (Pages{0, 1, 2}));
    printer.setPageOrder(QPrinter::LastPageFirst);
    EXPECT_EQ(PagesToPrint(printer, 3, 1), (Pages{2, 1, 0}));
    printer.setPageOrder(QPrinter::FirstPageFirst);
    printer.setPrintRange(QPrinter::CurrentPage);
    EXPECT_EQ(PagesToPrint(printer, 3, 1), (Pages{1}));
    printer.setPrintRange(QPrinter::PageRange);
    printer.setPageRanges(QPageRanges::fromString("1,3-4"));
    EXPECT_EQ(PagesToPrint(printer, 9, 1), (Pages{0, 2, 3}));
}

}  // namespace
}  // namespace zorvel

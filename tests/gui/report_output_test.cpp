// What the window of a report saves and prints.
#include <QFileDialog>
#include <QPdfWriter>
#include <QProcess>
#include <QStatusBar>
#include <filesystem>
#include <functional>
#include <string_view>
#include <vector>

#include "gui/report/report_print.h"
#include "gui/report_window_fixture.h"
#include "paper/report_painter.h"
#include "platform/error.h"
#include "support/errors.h"
#include "support/file_size_limit.h"

namespace zorvel {
namespace {

using test::Control;
using test::kGroups;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

class ReportOutput : public test::ReportWindowTest {
  protected:
    std::string Status() { return Control<QStatusBar>(*window_, "barStatus").currentMessage().toStdString(); }
    // Answers the next dialog with `answer`, however long it takes to come.
    template <typename Dialog>
    void WhenAsked(const std::function<void(Dialog&)>& answer) {
        QTimer::singleShot(5, &timers_, [this, answer] {
            auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
            if (dialog != nullptr && QApplication::activeWindow() == dialog)
                answer(*dialog);
            else
                WhenAsked<Dialog>(answer);
        });
    }
    // Saves through the dialog, under a name of the test's folder; over an older file when `over` is set.
    void SaveAs(const std::string& name, int filter = 0, bool over = false) {
        Activate(*window_);
        WhenAsked<QFileDialog>([this, name, filter, over](QFileDialog& dialog) {
            Control<QComboBox>(dialog, "fileTypeCombo").setFocus();
            for (int step = 0; step < filter; ++step)
                test::PressKey(Qt::Key_Down);
            auto& box = Control<QLineEdit>(dialog, "fileNameEdit");
            offered_ = box.text().toStdString();
            box.setText(QString::fromStdString((shell_.folder.path() / name).string()));
            if (over) {
                WhenAsked<QMessageBox>([](QMessageBox& question) {
                    QTest::mouseClick(question.button(QMessageBox::Yes), Qt::LeftButton);
                });
            }
            box.setFocus();
            test::PressKey(Qt::Key_Return);
        });
        Press(Qt::Key_S, Qt::ControlModifier);
    }

    QObject timers_;
    std::string offered_;
};

std::string OutputOf(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished()) return "could not be run";
    return process.readAllStandardOutput().toStdString();
}

TEST_F(ReportOutput, SavesInTheChosenFormat) {
    Open(MakeReport());
    struct Case {
        const char* name;
        int filter;
        std::string file, begins;
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
        EXPECT_THAT(shell_.folder.Read(test.file), StartsWith(test.begins)) << test.file;
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

TEST_F(ReportOutput, TheTextOfAPdfCanBeSearched) {
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

TEST_F(ReportOutput, AFullDiskIsToldAndTheWindowGoesOn) {
    Open(MakeReport());
    shell_.folder.Write("full.html", "old");
    {
        const test::FileSizeLimit limit(8'000);
        SaveAs("full.html", 1, true);
    }
    EXPECT_EQ(shell_.OnlyBox(), "ERROR: Unexpected error # 61 (Disk full) occurred in frmReport");
    EXPECT_THAT(shell_.LogLines().back(), HasSubstr("full.html: Disk full"));
    EXPECT_EQ(shell_.folder.Read("full.html"), "old");
    Click("actNext");
    EXPECT_THAT(Pages(), StartsWith("2 of "));
}

TEST_F(ReportOutput, AFileThatCannotBeMadeIsAnError) {
    const auto report = MakeReport();
    shell_.folder.Write("file", "");
    for (const char* path : {"missing/a.pdf", "file/a.pdf"}) {
        const Error error = test::RaisedBy([&] { WritePdf(*report, shell_.folder.path() / path); });
        EXPECT_TRUE(error.IsOutputError());
        EXPECT_EQ(error.number(), errors::kPathNotFound) << path;
        EXPECT_THAT(error.detail(), HasSubstr(path));
    }
}

TEST_F(ReportOutput, ALongSaveCanBeStopped) {
    const auto report = MakeReport();
    const PaperFonts fonts;
    const PageLayout layout(*report, fonts.metrics());
    shell_.folder.Write("a.pdf", "old");
    std::vector<std::size_t> told;
    EXPECT_FALSE(WritePdf(*report, layout, fonts, AllPages(layout), PaperOf(layout),
                          shell_.folder.path() / "a.pdf", [&](std::size_t done, std::size_t pages) {
                              EXPECT_EQ(pages, layout.page_count());
                              told.push_back(done);
                              return done < 2;
                          }));
    EXPECT_THAT(told, ElementsAre(0, 1, 2));
    EXPECT_EQ(shell_.folder.Read("a.pdf"), "old");
    for (const auto& entry : std::filesystem::directory_iterator(shell_.folder.path()))
        EXPECT_NE(entry.path().extension(), ".tmp") << entry.path();
}

TEST_F(ReportOutput, PrintsTheChosenPages) {
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
    // On a smaller paper all of a page is still there.
    window_->SetAskPrinter([&](QPrinter& printer, std::size_t, QWidget*) {
        printer.setOutputFileName(QString::fromStdString(file));
        printer.setPageSize(QPageSize(QPageSize::A5));
        return true;
    });
    Press(Qt::Key_P, Qt::ControlModifier);
    EXPECT_THAT(OutputOf("pdfinfo", {QString::fromStdString(file)}),
                testing::ContainsRegex("Page size: +59[45][.0-9]* x (419|420)"));
    EXPECT_THAT(OutputOf("pdftotext", {"-layout", QString::fromStdString(file), "-"}),
                HasSubstr("Page 1 of"));
    // Nobody prints, and nothing is said.
    window_->SetAskPrinter([](QPrinter&, std::size_t, QWidget*) { return false; });
    std::filesystem::remove(file);
    Press(Qt::Key_P, Qt::ControlModifier);
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_TRUE(shell_.ui.boxes.empty());
}

TEST_F(ReportOutput, AFileThatCannotBePrintedIsTold) {
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

TEST_F(ReportOutput, PrintersGetTheirPages) {
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
    EXPECT_FALSE(PrintPages(printer, layout, fonts, {0, 1}, [](std::size_t, std::size_t) { return false; }));
    printer.setOutputFileName(QString::fromStdString((shell_.folder.path() / "none/a.pdf").string()));
    const Error error = test::RaisedBy([&] { PrintPages(printer, layout, fonts, {0}, {}); });
    EXPECT_TRUE(error.IsOutputError());
    EXPECT_EQ(error.number(), errors::kPathFileAccess);
    EXPECT_THAT(error.detail(), HasSubstr("none/a.pdf"));
}

// A device that takes one page only.
class OnePage final : public QPdfWriter {
  public:
    using QPdfWriter::QPdfWriter;
    bool newPage() override { return false; }
};

TEST_F(ReportOutput, ADeviceThatTakesNoMorePagesIsAnError) {
    const auto report = MakeReport();
    const PaperFonts fonts;
    const PageLayout layout(*report, fonts.metrics());
    OnePage device(QString::fromStdString((shell_.folder.path() / "a.pdf").string()));
    EXPECT_TRUE(DrawPages(device, "Tray 2", layout, fonts, std::vector<std::size_t>{3}, {}));
    const Error error =
        test::RaisedBy([&] { DrawPages(device, "Tray 2", layout, fonts, AllPages(layout), {}); });
    EXPECT_TRUE(error.IsOutputError());
    EXPECT_EQ(error.detail(), "Tray 2: Path/File access error");
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

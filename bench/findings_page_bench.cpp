// The Findings page over a million findings: from the click on its tab, or a key or click in it, until all is
// painted.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <fstream>
#include <memory>
#include <string>

#include "directory/open_directory.h"
#include "gui/main/frm_zorvel.h"
#include "report_data.h"
#include "support/databases.h"

namespace zorvel {
namespace {

constexpr int kFindingsTab = 4;
constexpr std::int64_t kFindings = 1'000'000;
constexpr const char* kDataset = "Zorvel_261116172805.MDB";

// A program folder with the dataset, and the window over it.
class Window {
  public:
    Window() {
        test::FillWholeProgramFolder(folder_, test::LdifOrganization("CORP"));
        test::AddDataset(folder_, kDataset);
        {
            Database dataset(folder_.path() / "Databases" / kDataset, kDataset);
            tools::FillFindings(dataset, {kFindings, kFindings / 200, 100});
        }
        CatalogueRow row;
        row.Captured = "16/11/2026 17:28:05";
        row.DBName = kDataset;
        Database master(folder_.path() / "Databases/ZorvelMaster.mdb", "master");
        Catalogue(master).Add(row);
        folder_.Write("TempData/welcome.nal", "suppressed\r\n");
    }

    void Start() {
        window_.reset();
        ControllerSettings settings;
        settings.tree_read_countdown = 0;
        files_ = std::make_unique<Files>(folder_.path());
        window_ = std::make_unique<frmZorvel>(*files_, clock_, OpenDirectory, settings);
        if (!window_->StartUp("")) std::abort();
        Paint();
    }
    void Paint() const {
        QApplication::processEvents();
        window_->repaint();
    }
    void OpenPage() const {
        window_->findChild<QTabWidget*>("SSTab1")->setCurrentIndex(kFindingsTab);
        Paint();
    }
    void Filter(const QString& text) const {
        auto* const box = window_->findChild<QLineEdit*>("txtFilter");
        box->setText(text);
        QTest::keyClick(box, Qt::Key_Return);
        Paint();
    }
    void Sort(int column) const {
        Q_EMIT window_->findChild<QTableView*>("tabFindings")->horizontalHeader()->sectionClicked(column);
        Paint();
    }

  private:
    test::TempFolder folder_;
    SystemClock clock_;
    std::unique_ptr<Files> files_;
    std::unique_ptr<frmZorvel> window_;
};

std::unique_ptr<Window>& TheWindow() {
    static std::unique_ptr<Window> window;
    return window;
}

// The memory of the process, in bytes.
double Memory() {
    constexpr double kPage = 4096;
    double size = 0;
    double resident = 0;
    std::ifstream("/proc/self/statm") >> size >> resident;
    return resident * kPage;
}

void OpenPage(benchmark::State& state) {
    Window& window = *TheWindow();
    for ([[maybe_unused]] const auto round : state) {
        state.PauseTiming();
        window.Start();
        const double before = Memory();
        state.ResumeTiming();
        window.OpenPage();
        state.counters["process"] = Memory();
        state.counters["page"] = Memory() - before;
    }
}
BENCHMARK(OpenPage)->Iterations(3)->Unit(benchmark::kMillisecond);

void Filter(benchmark::State& state) {
    const Window& window = *TheWindow();
    bool narrow = false;
    for ([[maybe_unused]] const auto round : state)
        window.Filter((narrow = !narrow) ? "part3 readme" : "");
}
BENCHMARK(Filter)->Unit(benchmark::kMillisecond);

// By the column whose number is given: code, target, reach.
void Sort(benchmark::State& state) {
    const Window& window = *TheWindow();
    for ([[maybe_unused]] const auto round : state)
        window.Sort(static_cast<int>(state.range(0)));
    state.counters["process"] = Memory();
}
BENCHMARK(Sort)->Arg(1)->Arg(6)->Arg(8)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zorvel

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    zorvel::TheWindow() = std::make_unique<zorvel::Window>();
    benchmark::RunSpecifiedBenchmarks();
    zorvel::TheWindow().reset();
    return 0;
}

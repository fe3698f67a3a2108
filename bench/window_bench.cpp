// The main window over a tree of 100,000 containers with 500,000 applications: start from the cache, filter,
// select.
#include <benchmark/benchmark.h>

#include <QAbstractButton>
#include <QApplication>
#include <QItemSelectionModel>
#include <QListView>
#include <QTreeView>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "database/make_databases.h"
#include "directory/open_directory.h"
#include "gui/main/frm_zorvel.h"
#include "support/program_folder.h"

namespace zorvel {
namespace {

constexpr int kOrganizations = 100;
constexpr int kUnits = 999;  // of each
constexpr int kApplications = 500'000;
constexpr int kInFirstUnit = 5'000;
constexpr int kInSecondUnit = 50'000;

void WriteApplications(std::ostream& ldif, const std::string& parent, int count) {
    for (int i = 0; i < count; ++i)
        ldif << "dn: cn=Application " << i << ',' << parent << "\nobjectClass: appApplication\n\n";
}

void WriteTree(const std::filesystem::path& path) {
    constexpr int kElsewhere = (kApplications - kInFirstUnit - kInSecondUnit) / (kOrganizations * kUnits - 2);
    std::ofstream ldif(path);
    for (int organization = 0; organization < kOrganizations; ++organization) {
        const std::string dn = "o=ORG" + std::to_string(organization);
        ldif << "dn: " << dn << "\nobjectClass: organization\n\n";
        for (int unit = 0; unit < kUnits; ++unit) {
            const std::string unit_dn = "ou=UNIT" + std::to_string(unit) + ',' + dn;
            ldif << "dn: " << unit_dn << "\nobjectClass: organizationalUnit\n\n";
            int count = kElsewhere + unit % 2;
            if (organization == 0 && unit < 2) count = unit == 0 ? kInFirstUnit : kInSecondUnit;
            WriteApplications(ldif, unit_dn, count);
        }
    }
}

// A program folder whose tree is in the cache, and the window over it.
class Window {
  public:
    Window() {
        test::FillProgramFolder(folder_, "");
        WriteTree(folder_.path() / "Trees/T1.ldif");
        std::filesystem::remove(folder_.path() / "Databases/ZorvelMaster.mdb");
        MakeDatabases(ZORVEL_SOURCE_DIR "/src/database/schema.sql", folder_.path() / "Empty_Zorvel.mdb",
                      folder_.path() / "Databases/ZorvelMaster.mdb");
        folder_.Write("TempData/welcome.nal", "suppressed\r\n");
        Start();
    }

    void Start() {
        window_.reset();
        files_ = std::make_unique<Files>(folder_.path());
        ControllerSettings settings;
        settings.tree_read_countdown = 0;
        window_ = std::make_unique<frmZorvel>(*files_, clock_, OpenDirectory, settings);
        if (!window_->StartUp("")) std::abort();
        Paint();
    }
    void Paint() const {
        QApplication::processEvents();
        window_->repaint();
    }
    void Click(const char* button) const {
        window_->findChild<QAbstractButton*>(button)->click();
        Paint();
    }
    // Clicks unit `row` of the first organisation.
    void ClickUnit(int row) const {
        const QAbstractItemModel& nodes = *tree().model();
        const QModelIndex organization = nodes.index(0, 0, nodes.index(0, 0));
        tree().setCurrentIndex(nodes.index(row, 0, organization));
        Paint();
    }
    QTreeView& tree() const { return *window_->findChild<QTreeView*>("TreeView1"); }
    QListView& list() const { return *window_->findChild<QListView*>("ListView1"); }

  private:
    test::TempFolder folder_;
    SystemClock clock_;
    std::unique_ptr<Files> files_;
    std::unique_ptr<frmZorvel> window_;
};

// Made after the application, and gone before it ends.
std::unique_ptr<Window>& TheWindow() {
    static std::unique_ptr<Window> window;
    return window;
}

void StartFromCache(benchmark::State& state) {
    Window& window = *TheWindow();
    for ([[maybe_unused]] const auto round : state)
        window.Start();
}
BENCHMARK(StartFromCache)->Unit(benchmark::kMillisecond);

void FilterAndUnfilter(benchmark::State& state) {
    const Window& window = *TheWindow();
    for ([[maybe_unused]] const auto round : state) {
        window.Click("butTreeControl_2");
        window.Click("butTreeControl_3");
    }
}
BENCHMARK(FilterAndUnfilter)->Unit(benchmark::kMillisecond);

void ExpandAll(benchmark::State& state) {
    const Window& window = *TheWindow();
    for ([[maybe_unused]] const auto round : state)
        window.Click("butTreeControl_0");
    window.Click("butTreeControl_1");
}
BENCHMARK(ExpandAll)->Unit(benchmark::kMillisecond);

void SelectAllInTree(benchmark::State& state) {
    const Window& window = *TheWindow();
    for ([[maybe_unused]] const auto round : state) {
        window.Click("butTreeControl_5");
        state.PauseTiming();
        window.Click("butTreeControl_4");
        state.ResumeTiming();
    }
}
BENCHMARK(SelectAllInTree)->Unit(benchmark::kMillisecond);

// Unit 0 holds 5,000 applications, unit 1 50,000; the tree is in memory.
void ClickContainer(benchmark::State& state) {
    const Window& window = *TheWindow();
    for ([[maybe_unused]] const auto round : state) {
        window.ClickUnit(static_cast<int>(state.range(0)));
        state.PauseTiming();
        window.ClickUnit(2);
        state.ResumeTiming();
    }
}
BENCHMARK(ClickContainer)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

// One more line of a list of 5,000 or 50,000 is selected, and unselected, while many already are.
void ChangeSelection(benchmark::State& state) {
    const Window& window = *TheWindow();
    window.Click("butTreeControl_5");
    window.ClickUnit(static_cast<int>(state.range(0)));
    const QListView& list = window.list();
    for ([[maybe_unused]] const auto round : state) {
        list.selectionModel()->select(list.model()->index(7, 0), QItemSelectionModel::Toggle);
        window.Paint();
    }
}
BENCHMARK(ChangeSelection)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

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

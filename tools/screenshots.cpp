// Renders the windows over the sample tree into pictures: screenshots PROGRAM_FOLDER OUTPUT_FOLDER
#include <QApplication>
#include <QDir>
#include <QItemSelectionModel>
#include <QListView>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTreeView>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <memory>
#include <stdexcept>

#include "directory/memory_directory.h"
#include "gui/frm_zorvel.h"
#include "platform/clock.h"
#include "platform/files.h"

namespace {

using zorvel::frmZorvel;

class Photographer {
  public:
    explicit Photographer(const QString& folder) : folder_(folder) { QDir().mkpath(folder); }

    void Take(QWidget& window, const char* name) const {
        QCoreApplication::processEvents();
        if (!window.grab().save(folder_.filePath(QString(name) + ".png")))
            throw std::runtime_error("cannot write " + folder_.filePath(name).toStdString());
    }

  private:
    QDir folder_;
};

// Opens the container whose node begins with `name` and selects the first `count` of its applications.
void SelectApplications(const frmZorvel& window, const QString& name, int count) {
    auto* tree = window.findChild<QTreeView*>("TreeView1");
    tree->expandAll();
    const QModelIndexList found = tree->model()->match(tree->model()->index(0, 0), Qt::DisplayRole, name, 1,
                                                       Qt::MatchStartsWith | Qt::MatchRecursive);
    if (found.isEmpty()) throw std::runtime_error("no container " + name.toStdString());
    tree->setCurrentIndex(found.front());
    QCoreApplication::processEvents();
    auto* list = window.findChild<QListView*>("ListView1");
    for (int row = 0; row < count; ++row)
        list->selectionModel()->select(list->model()->index(row, 0), QItemSelectionModel::Select);
}

void TakeAll(frmZorvel& window, const Photographer& photographer) {
    SelectApplications(window, "Design", 2);
    photographer.Take(window, "applications");
    auto* tabs = window.findChild<QTabWidget*>("SSTab1");
    tabs->setCurrentIndex(1);
    photographer.Take(window, "options");
    tabs->setCurrentIndex(3);
    photographer.Take(window, "status");
}

int Run(const std::filesystem::path& program_folder, const QString& output) {
    const QTemporaryDir copy;
    const std::filesystem::path folder = copy.path().toStdString();
    std::filesystem::copy(program_folder, folder, std::filesystem::copy_options::recursive);
    std::ofstream(folder / "TempData/welcome.nal") << "suppressed\r\n";

    const zorvel::Files files(folder);
    zorvel::SystemClock clock;
    zorvel::ControllerSettings settings;
    settings.tree_read_countdown = 0;
    settings.pace = {0, 0};
    frmZorvel window(
        files, clock,
        [](const zorvel::Files& root, zorvel::Log& log) {
            return std::make_unique<zorvel::MemoryDirectory>(root, log);
        },
        settings);
    if (!window.StartUp("")) return 1;
    TakeAll(window, Photographer(output));
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    if (argc != 3) {
        std::cerr << "usage: screenshots PROGRAM_FOLDER OUTPUT_FOLDER\n";
        return 2;
    }
    try {
        return Run(argv[1], argv[2]);
    } catch (const std::exception& error) {
        std::cerr << "screenshots: " << error.what() << '\n';
        return 1;
    }
}

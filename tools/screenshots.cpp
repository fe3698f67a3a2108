// Renders the windows over the sample tree into pictures: screenshots PROGRAM_FOLDER OUTPUT_FOLDER [dark]
#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <QTreeWidget>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <memory>
#include <stdexcept>

#include "directory/open_directory.h"
#include "gui/dialogs/frm_welcome.h"
#include "gui/main/frm_zorvel.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "support/certificates.h"
#include "support/program_folder.h"

namespace {

using zorvel::frmZorvel;

constexpr QSize kLogSize(940, 480);
constexpr QSize kReportSize(1180, 820);
constexpr QSize kFindingsSize(1366, 768 - 60);  // a small screen, without the desktop's own bars

// The trees, with two that a server of their own holds: one that needs a password, and one whose certificate
// has expired.
class LiveTrees {
  public:
    // Adds them to the program folder's Directory.toml.
    explicit LiveTrees(const std::filesystem::path& folder)
        : certificates_(scratch_),
          tls_("ldaps://127.0.0.1:" + std::to_string(zorvel::test::FreePort())),
          server_(Content(), {.access = "access to attrs=userPassword by * auth\naccess to * by * read\n",
                              .global = certificates_.ServerLines("server", "IP:127.0.0.1", "-1"),
                              .addresses = {tls_}}) {
        std::filesystem::remove(Link());  // of one that was killed
        std::filesystem::create_directory_symlink(server_.folder().path(), Link());
        std::ofstream(folder / "Directory.toml", std::ios::app)
            << "\n[[tree]]\nname = \"LIVE_TREE\"\nldap = [\"ldapi://%2Ftmp%2Fedir1%2Fsocket\"]\n"
               "bind_dn = \"cn=zorvel,o=LAB\"\n"
               "\n[[tree]]\nname = \"OLD_TREE\"\nldap = [\"" +
                   tls_ + "\"]\nca_file = \"" + certificates_.Path("ca.pem") + "\"\n";
    }
    ~LiveTrees() { std::filesystem::remove(Link()); }
    LiveTrees(const LiveTrees&) = delete;
    LiveTrees& operator=(const LiveTrees&) = delete;

  private:
    static std::filesystem::path Link() { return "/tmp/edir1"; }
    static std::string Content() {
        using namespace zorvel::test;
        std::string text = LdifOrganization("LAB") + LdifUnit("APPS", "o=LAB");
        for (const char* const name : {"Reader 7.0", "Payround 9.5", "Lexikon", "Planner"})
            text += LdifApplication(name, "ou=APPS,o=LAB", "appPath: x\n");
        return text + "dn: cn=zorvel,o=LAB\nobjectClass: user\ncn: zorvel\nuserPassword: secret\n";
    }

    zorvel::test::TempFolder scratch_;
    zorvel::test::Certificates certificates_;
    std::string tls_;
    zorvel::test::Slapd server_;
};

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

// Answers the questions that come with one button, until it goes.
class Answers : public QObject {
  public:
    explicit Answers(QMessageBox::StandardButton button) : button_(button) { Watch(); }

  private:
    void Watch() {
        QTimer::singleShot(10, this, [this] {
            Watch();
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box == nullptr) return;
            QAbstractButton* const button = box->button(button_);
            (button != nullptr ? button : box->button(QMessageBox::Ok))->click();
        });
    }

    QMessageBox::StandardButton button_;
};

// Opens a modal window with `open`, lets `prepare` change it, photographs it and leaves it.
void TakeModal(
    const Photographer& photographer, const char* name, const std::function<void()>& open,
    const std::function<void(QWidget&)>& prepare = [](QWidget&) {},
    const std::function<void(QWidget&)>& leave = [](QWidget& window) { window.close(); }) {
    QTimer::singleShot(100, [&] {
        QWidget* const window = QApplication::activeModalWidget();
        if (window == nullptr) return;
        prepare(*window);
        photographer.Take(*window, name);
        leave(*window);
    });
    open();
}

// Asks for the Issue Summary, opens the advanced options, and photographs them and the report.
void TakeReport(frmZorvel& window, const Photographer& photographer) {
    const auto open = [&window] {
        for (QAction* const action : window.findChildren<QAction*>()) {
            if (action->text() == "Issue Summary") action->trigger();
        }
    };
    TakeModal(
        photographer, "report-options", open,
        [](QWidget& dialog) {
            dialog.findChild<QAbstractButton*>("butAdvanced")->click();
            auto* tree = dialog.findChild<QTreeView*>("treeRO");
            tree->expand(tree->model()->index(0, 0));
        },
        [](QWidget& dialog) { dialog.findChild<QAbstractButton*>("butOk")->click(); });
    for (QWidget* const report : QApplication::topLevelWidgets()) {
        if (report->objectName() != "frmReport") continue;
        report->showNormal();
        report->resize(kReportSize);
        photographer.Take(*report, "report");
        report->close();
    }
}

// Narrows the findings to one severity, accepts one of them, and photographs the page and the dialog.
void TakeFindings(frmZorvel& window, const Photographer& photographer) {
    const QSize before = window.size();
    window.resize(kFindingsSize);
    window.findChild<QTabWidget*>("SSTab1")->setCurrentIndex(4);
    photographer.Take(window, "findings");
    TakeModal(
        photographer, "accept", [&window] { window.findChild<QAbstractButton*>("butAccept")->click(); },
        [](QWidget& dialog) {
            QTest::keyClicks(dialog.findChild<QWidget*>("txtReason"),
                             "The file server stays until the move in May");
        },
        [](QWidget& dialog) { dialog.findChild<QAbstractButton*>("butOk")->click(); });
    auto* filter = window.findChild<QWidget*>("txtFilter");
    QTest::keyClicks(filter, "severity:critical app:CORP");
    QTest::keyClick(filter, Qt::Key_Return);
    photographer.Take(window, "findings-filtered");
    window.resize(before);
}

void TakeAll(frmZorvel& window, const Photographer& photographer) {
    const auto menu = [&](const char* name) {
        return [&window, name] { window.findChild<QAction*>(name)->trigger(); };
    };
    const auto press = [&](const char* button) { window.findChild<QAbstractButton*>(button)->click(); };
    auto* tabs = window.findChild<QTabWidget*>("SSTab1");

    SelectApplications(window, "APPS", 3);
    photographer.Take(window, "applications");
    press("butTreeControl_2");
    photographer.Take(window, "filtered");
    press("butTreeControl_3");
    tabs->setCurrentIndex(1);
    photographer.Take(window, "options");
    const auto press_in = [](const char* button) {
        return [button](QWidget& dialog) {
            const Answers answers(QMessageBox::Yes);
            dialog.findChild<QAbstractButton*>(button)->click();
        };
    };
    TakeModal(
        photographer, "save-selections", menu("mnuFileExit_1"),
        [](QWidget& dialog) {
            QTest::keyClicks(dialog.findChild<QWidget*>("txtComment"), "Office suite, second wave");
        },
        press_in("butSave"));
    TakeModal(photographer, "load-selections", menu("mnuFileExit_2"));

    tabs->setCurrentIndex(0);
    press("butTreeControl_5");
    {
        const Answers answers(QMessageBox::No);
        press("butGenerate");
    }
    photographer.Take(window, "status");
    {
        const Answers answers(QMessageBox::Yes);  // of the import, and of the offer to see its findings
        TakeModal(
            photographer, "import", menu("mnuDatabaseItem_1"),
            [](QWidget& dialog) {
                QTest::keyClicks(dialog.findChild<QWidget*>("txtComments"), "Before the migration");
            },
            [](QWidget& dialog) { dialog.findChild<QAbstractButton*>("butOk")->click(); });
    }
    TakeFindings(window, photographer);
    TakeModal(photographer, "maintenance", menu("mnuDatabaseItem_3"));
    TakeReport(window, photographer);
    // The log's warnings and errors, with one of each put into it.
    zorvel::Log& log = window.controller().services().log;
    log.WriteLog("WARNING: Stream '(Copy Files)' of 'Reader.APPS.CORP' could not be read to its end");
    log.WriteLog(
        "ERROR: DS error 601 returned during Node click on 'NDS:\\\\CORP_TREE\\CORP\\OLD' - cached version "
        "of Tree likely out of date");
    TakeModal(photographer, "log", menu("mnuHelpItem_2"), [](QWidget& viewer) {
        viewer.resize(kLogSize);
        auto* text = viewer.findChild<QWidget*>("RichTextBox1");
        QTest::keyClick(text, Qt::Key_End, Qt::ControlModifier);
        QTest::keyClick(text, Qt::Key_Home);
    });
    TakeModal(photographer, "history", menu("mnuHelpItem_1"));
    TakeModal(photographer, "license", menu("mnuHelpItem_3"));

    tabs->setCurrentIndex(2);
    auto* find = window.findChild<QComboBox*>("comFind");
    find->setCurrentIndex(1);
    Q_EMIT find->activated(1);
    photographer.Take(window, "find-prompt");
    {
        const Answers answers(QMessageBox::Yes);
        press("butGenerate");
    }
    photographer.Take(window, "find");

    zorvel::frmWelcome welcome(&window);
    welcome.show();
    photographer.Take(welcome, "welcome");
}

// The Trees dialog with a test and a form, the trouble that a server can give, and the window over a server.
void TakeTrees(frmZorvel& window, const Photographer& photographer) {
    const auto open = [&window] { window.findChild<QAction*>("mnuFileTrees")->trigger(); };
    const auto select = [](QWidget& dialog, int row) {
        auto* list = dialog.findChild<QTreeWidget*>("lstTrees");
        list->setCurrentItem(list->topLevelItem(row));
    };
    const auto press = [](QWidget& dialog, const char* button) {
        dialog.findChild<QAbstractButton*>(button)->click();
    };
    const auto choose = [&window](int row) {
        auto* trees = window.findChild<QComboBox*>("comTree");
        trees->setCurrentIndex(row);
        Q_EMIT trees->activated(row);
    };
    const auto type = [](const char* password) {
        return [password](QWidget& dialog) {
            QTest::keyClicks(dialog.findChild<QLineEdit*>(), password);
            QTest::keyClick(&dialog, Qt::Key_Return);
        };
    };
    window.findChild<QTabWidget*>("SSTab1")->setCurrentIndex(0);
    TakeModal(photographer, "trees", open, [&](QWidget& dialog) { select(dialog, 2); });
    TakeModal(
        photographer, "tree-server", open, [](QWidget&) {},
        [&](QWidget& dialog) {
            select(dialog, 2);
            TakeModal(photographer, "tree-server", [&] { press(dialog, "butEdit"); });
            dialog.close();
        });
    TakeModal(photographer, "tree-test", open, [&](QWidget& dialog) {
        select(dialog, 2);
        TakeModal(
            photographer, "password", [&] { press(dialog, "butTest"); }, [](QWidget&) {}, type("secret"));
    });
    QTimer::singleShot(100, [&] { type("wrong")(*QApplication::activeModalWidget()); });
    QTimer::singleShot(600, [&] {
        photographer.Take(*QApplication::activeModalWidget(), "wrong-password");
        QApplication::activeModalWidget()->close();
    });
    choose(2);
    TakeModal(photographer, "expired-certificate", [&] { choose(3); });
    QTimer::singleShot(100, [&] { type("secret")(*QApplication::activeModalWidget()); });
    choose(2);
    SelectApplications(window, "APPS", 3);
    photographer.Take(window, "server");
    choose(0);
}

// A palette as dark desktops have it.
QPalette DarkPalette() {
    QPalette dark;
    const auto set = [&](std::initializer_list<QPalette::ColorRole> roles, const QColor& colour) {
        for (const QPalette::ColorRole role : roles)
            dark.setColor(role, colour);
    };
    set({QPalette::Window, QPalette::Button, QPalette::AlternateBase, QPalette::ToolTipBase},
        QColor(45, 45, 48));
    set({QPalette::Base}, QColor(30, 30, 32));
    set({QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText},
        QColor(230, 230, 230));
    set({QPalette::Highlight}, QColor(42, 130, 218));
    set({QPalette::HighlightedText}, Qt::white);
    set({QPalette::PlaceholderText}, QColor(150, 150, 150));
    set({QPalette::Link}, QColor(110, 170, 255));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        dark.setColor(QPalette::Disabled, role, QColor(130, 130, 130));
    return dark;
}

int Run(const std::filesystem::path& program_folder, const QString& output) {
    // A plain name: the log shows it.
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "Zorvel";
    std::filesystem::remove_all(folder);
    std::filesystem::copy(program_folder, folder, std::filesystem::copy_options::recursive);
    std::ofstream(folder / "TempData/welcome.nal") << "suppressed\r\n";

    const LiveTrees live(folder);
    const zorvel::Files files(folder);
    zorvel::SystemClock clock;
    zorvel::ControllerSettings settings;
    settings.tree_read_countdown = 0;
    settings.pace = {0, 0};
    frmZorvel window(files, clock, zorvel::OpenDirectory, settings);
    if (!window.StartUp("")) return 1;
    const Photographer photographer(output);
    TakeTrees(window, photographer);
    TakeAll(window, photographer);
    std::filesystem::remove_all(folder);
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    if (argc < 3) {
        std::cerr << "usage: screenshots PROGRAM_FOLDER OUTPUT_FOLDER [dark]\n";
        return 2;
    }
    QApplication::setStyle("Fusion");
    if (argc > 3) QApplication::setPalette(DarkPalette());
    try {
        return Run(argv[1], argv[2]);
    } catch (const std::exception& error) {
        std::cerr << "screenshots: " << error.what() << '\n';
        return 1;
    }
}

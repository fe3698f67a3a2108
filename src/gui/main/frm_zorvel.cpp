#include "gui/main/frm_zorvel.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QScopedValueRollback>
#include <QThread>
#include <QTimer>
#include <algorithm>
#include <optional>
#include <utility>

#include "analysis/analysis_run.h"
#include "browser/saved_selections.h"
#include "database/capture_details.h"
#include "database/maintenance.h"
#include "find/stream_finder.h"
#include "gui/dialogs/chosen_file.h"
#include "gui/dialogs/close_dialogs.h"
#include "gui/dialogs/frm_cache_tree.h"
#include "gui/dialogs/frm_capture_details.h"
#include "gui/dialogs/frm_db_maint.h"
#include "gui/dialogs/frm_load_selections.h"
#include "gui/dialogs/frm_save_selections.h"
#include "gui/dialogs/frm_trees.h"
#include "gui/dialogs/frm_welcome.h"
#include "gui/dialogs/password_dialog.h"
#include "gui/main/applications_page.h"
#include "gui/main/bar_status.h"
#include "gui/main/find_page.h"
#include "gui/main/findings_page.h"
#include "gui/main/options_page.h"
#include "gui/main/status_page.h"
#include "gui/report/report_windows.h"
#include "gui/text/frm_document.h"
#include "gui/text/frm_view_log.h"
#include "gui/widgets/qt_text.h"
#include "shell/report_error.h"
#include "ui_frm_zorvel.h"

namespace zorvel {
namespace {

constexpr QSize kFirstSize(940, 640);

constexpr int kPatience = 20;  // milliseconds until what does not close at once is closed again

// While a tree is read its nodes are shown at most so often (milliseconds), and so seldom that showing them
// takes no more than one part in so many of the time.
constexpr qint64 kNodesInterval = 200;
constexpr qint64 kNodesShare = 10;

BarStatus& MakeBarStatus(QMainWindow& window) {
    auto* bar = new BarStatus(&window);
    window.setStatusBar(bar);
    return *bar;
}

}  // namespace

frmZorvel::frmZorvel(const Files& files, Clock& clock, const MainController::DirectoryFactory& make_directory,
                     ControllerSettings settings)
    : ui_(std::make_unique<Ui::frmZorvel>()),
      user_(files, *this, MakeBarStatus(*this)),
      controller_(files, clock, user_, *this, make_directory, settings),
      busy_input_filter_(controller_.session().activity, [this] { controller_.PressEscape(); }),
      applications_page_(new ApplicationsPage(this)),
      options_page_(new OptionsPage(controller_.services(), this)),
      find_page_(new FindPage(files, user_, this)),
      status_page_(new StatusPage(this)),
      findings_page_(new FindingsPage(
          controller_, [this](const std::function<void()>& operation) { Handle("Findings", operation); },
          this)),
      cache_tree_(new frmCacheTree(this)),
      browser_(controller_.services(), controller_.directory(), controller_.session().tree,
               *applications_page_, [this] { RefreshTree(); }) {
    ui_->setupUi(this);
    resize(kFirstSize);
    setAcceptDrops(true);
    MakeTabs();
    ConnectMenus();
    connect(ui_->butGenerate, &QPushButton::clicked, this,
            [this] { Handle("butGenerate", [this] { Generate(); }); });
    connect(ui_->butExit, &QPushButton::clicked, this, &QWidget::close);
    EnableControls();
}

frmZorvel::~frmZorvel() = default;

bool frmZorvel::StartUp(std::string_view command_line) {
    bool started = false;
    Operate([&] { started = controller_.StartUp(command_line); });
    return started;
}

void frmZorvel::MakeTabs() {
    ui_->SSTab1->addTab(applications_page_, "Applications");
    ui_->SSTab1->addTab(options_page_, "Options");
    ui_->SSTab1->addTab(find_page_, "Find");
    ui_->SSTab1->addTab(status_page_, "Status");
    ui_->SSTab1->addTab(findings_page_, "Findings");
    // The pages were made first: so the tab key leads from the tabs into the page, to the buttons, and round.
    setTabOrder(ui_->butExit, ui_->SSTab1);
    applications_page_->SetBrowser(browser_);
    connect(applications_page_, &ApplicationsPage::TitleShown, this, &frmZorvel::EnableControls);
    connect(applications_page_, &ApplicationsPage::TreeChosen, this,
            [this](std::size_t index) { Operate([&] { ChooseTree(index); }); });
    connect(find_page_, &FindPage::SearchWanted, ui_->butGenerate, &QPushButton::click);
    connect(ui_->SSTab1, &QTabWidget::currentChanged, this, &frmZorvel::TabChanged);
}

void frmZorvel::ConnectMenus() {
    const auto on = [this](QAction* action, const char* procedure, void (frmZorvel::*operation)()) {
        connect(action, &QAction::triggered, this,
                [this, procedure, operation] { Handle(procedure, [&] { (this->*operation)(); }); });
    };
    on(ui_->mnuFileExit_1, "frmSaveSelections", &frmZorvel::OpenSaveSelections);
    on(ui_->mnuFileExit_2, "frmLoadSelections", &frmZorvel::OpenLoadSelections);
    connect(ui_->mnuFileTrees, &QAction::triggered, this,
            [this] { Handle("frmTrees", [this] { OpenTrees({}); }); });
    // Ends the program at once, without the line that the exit button logs.
    connect(ui_->mnuFileExit_4, &QAction::triggered, this, [] { QCoreApplication::exit(); });
    on(ui_->mnuDatabaseItem_1, "frmCaptureDetails", &frmZorvel::OpenImport);
    on(ui_->mnuDatabaseItem_3, "frmDBMaint", &frmZorvel::OpenMaintenance);
    report_windows_ = std::make_unique<ReportWindows>(
        controller_, *ui_->mnuReports, *this,
        [this](const std::function<void()>& operation) { Handle("mnuReports", operation); });
    const auto edit = [this](QAction* action, RuleListFile list) {
        connect(action, &QAction::triggered, this, [this, list] {
            Handle("mnuAdvancedItem procedure", [&] { controller_.EditRuleList(list); });
        });
    };
    edit(ui_->mnuAdvancedItem_1, RuleListFile::kRegistryIssues);
    edit(ui_->mnuAdvancedItem_2, RuleListFile::kCustomFileIssues);
    const auto show = [this](QAction* action, const char* file_name, const char* caption) {
        connect(action, &QAction::triggered, this, [this, file_name, caption] {
            Handle("mnuHelpItem procedure", [&] { ShowDocument(file_name, caption); });
        });
    };
    on(ui_->mnuHelpItem_2, "frmViewLog", &frmZorvel::OpenLogViewer);
    show(ui_->mnuHelpItem_1, "About_Zorvel.rtf", "Program History");
    show(ui_->mnuHelpItem_3, "Zorvel_License.rtf", "Zorvel License");
    connect(ui_->mnuHelpItem_5, &QAction::triggered, this,
            [this] { Handle("mnuHelpItem procedure", [this] { controller_.ReenableWelcome(); }); });
}

void frmZorvel::ChooseTree(std::size_t index) {
    // The tree that is there already is not loaded again, which would lose the selection.
    const Session& session = controller_.session();
    const bool there = session.tree_loaded && session.directory_access == DirectoryAccess::kFull;
    if (!there || session.trees.at(index) != session.current_tree) controller_.SwitchTree(index);
}

void frmZorvel::RefreshTree() {
    Operate([this] {
        controller_.RefreshTree();
        ShowPendingNodes();
    });
}

void frmZorvel::Operate(const std::function<void()>& operation) {
    // Input is kept away by BusyInputFilter; an action of an assistive tool is no input.
    if (operating_) return;
    {
        const QScopedValueRollback operating(operating_, true);
        operation();
    }
    if (std::exchange(datasets_wanted_, false)) ListDatasets();
    if (closing()) close();
}

void frmZorvel::Handle(std::string_view procedure, const std::function<void()>& operation) {
    Operate([&] {
        try {
            operation();
        } catch (...) {
            TellUnexpectedError(user_, controller_.services().log, CurrentError(), procedure);
        }
    });
}

void frmZorvel::SetCaption(std::string_view caption) {
    setWindowTitle(ToQString(caption));
}

void frmZorvel::LayOut() {
    ui_->SSTab1->setCurrentIndex(kApplicationsTab);
    options_page_->Refresh();
    status_page_->LayOut();
}

void frmZorvel::Show() {
    show();
    user_.ProcessEvents();
}

std::optional<std::string> frmZorvel::AskPassword(std::string_view tree, std::string_view identity) {
    QWidget* const dialog = QApplication::activeModalWidget();
    return AskForPassword(dialog != nullptr ? dialog : this, tree, identity);
}

bool frmZorvel::ShowWelcome() {
    frmWelcome welcome(this);
    welcome.exec();
    return welcome.suppress();
}

void frmZorvel::EnableReenableWelcome(bool enabled) {
    ui_->mnuHelpItem_5->setEnabled(enabled);
}

void frmZorvel::ClearTrees() {
    applications_page_->ClearTrees();
}

void frmZorvel::AddTree(std::string_view name) {
    applications_page_->AddTree(name);
}

void frmZorvel::SelectTree(std::size_t index) {
    applications_page_->SelectTree(index);
}

void frmZorvel::AllowDirectory(DirectoryAccess access) {
    ui_->mnuFileExit_2->setEnabled(access == DirectoryAccess::kFull);
    applications_page_->AllowDirectory(access);
}

void frmZorvel::SetCurrentOU(std::string_view text) {
    browser_.labCurrentOU = text;
}

void frmZorvel::RefreshAppTitle() {
    ShowPendingNodes();
    browser_.RefreshAppTitle();
}

void frmZorvel::EnableGenerate(bool enabled) {
    generate_enabled_ = enabled;
    EnableControls();
}

void frmZorvel::EnableControls() {
    const bool selection = browser_.selection_exists;
    const bool directory = controller_.session().directory_access == DirectoryAccess::kFull;
    ui_->butGenerate->setEnabled(selection && directory && generate_enabled_);
    ui_->SSTab1->setTabEnabled(kFindTab, selection);
    ui_->SSTab1->setTabEnabled(kStatusTab, selection);
    ui_->mnuFileExit_1->setEnabled(selection);
    applications_page_->ShowConnection(
        controller_.directory().ConnectionOf(controller_.session().current_tree));
}

void frmZorvel::TabChanged(int tab) {
    ui_->butGenerate->setText(tab == kFindTab ? "&Find" : "&Zorvel!");
    browser_.application_tab_showing = tab == kApplicationsTab;
    browser_.RefreshAppTitle();
    ListDatasets();
}

void frmZorvel::ListDatasets() {
    if (ui_->SSTab1->currentIndex() != kFindingsTab || closing()) return;
    datasets_wanted_ = operating_;
    Handle("Findings", [this] { findings_page_->ListDatasets(); });
}

void frmZorvel::ClearBrowser() {
    browser_.ClearNodes();
    nodes_pending_ = false;
    nodes_cost_ = 0;
    nodes_shown_.start();
}

void frmZorvel::AddNode(std::size_t ou_number, bool expanded) {
    browser_.AddNode(ou_number, expanded);
    nodes_pending_ = true;
}

void frmZorvel::RedrawBrowser() {
    if (nodes_shown_.elapsed() >= std::max(kNodesInterval, nodes_cost_ * kNodesShare)) ShowPendingNodes();
}

void frmZorvel::ShowPendingNodes() {
    if (!std::exchange(nodes_pending_, false)) return;
    QElapsedTimer cost;
    cost.start();
    browser_.ArrangeNodes();
    nodes_cost_ = cost.elapsed();
    nodes_shown_.start();
}

void frmZorvel::ShowCacheTree(std::string_view title) {
    cache_tree_->ShowCacheTree(title);
}

void frmZorvel::SetLabOU(std::string_view text) {
    cache_tree_->SetLabOU(text);
}

void frmZorvel::SetLabOUCount(std::string_view text) {
    cache_tree_->SetLabOUCount(text);
}

void frmZorvel::SetLabApps(std::string_view text) {
    cache_tree_->SetLabApps(text);
}

void frmZorvel::SetLabElapsed(std::string_view text) {
    cache_tree_->SetLabElapsed(text);
}

void frmZorvel::CloseCacheTree() {
    cache_tree_->CloseCacheTree();
}

void frmZorvel::Generate() {
    if (ui_->SSTab1->currentIndex() == kFindTab) {
        Find();
    } else {
        Analyse();
    }
}

void frmZorvel::Analyse() {
    AnalysisRun run(controller_.MakeRunInputs());
    run.Run();
    status_page_->Flush();
    if (run.import_wanted()) OpenImport();
}

void frmZorvel::Find() {
    const std::optional<std::string> pattern = find_page_->PatternToFind();
    if (!pattern) return;
    StreamFinder finder(controller_.services(), *find_page_);
    if (!finder.Prepare(*pattern)) return;
    const RunOutcome outcome = AnalysisRun(controller_.MakeRunInputs(), &finder).Run();
    status_page_->Flush();
    if (outcome == RunOutcome::kFinished) ui_->SSTab1->setCurrentIndex(kFindTab);
    if (outcome == RunOutcome::kFailed) find_page_->ShowLabInfo("Zorvel Find");
}

void frmZorvel::ShowStatusTab() {
    ui_->SSTab1->setCurrentIndex(kStatusTab);
}

void frmZorvel::ShowSelectedCount(std::string_view text) {
    status_page_->ShowSelectedCount(text);
}

void frmZorvel::ShowCurrentApplication(std::string_view count, std::string_view name) {
    status_page_->ShowCurrentApplication(count, name);
}

void frmZorvel::ShowStatusCounts(const RunStatus& status) {
    status_page_->ShowStatusCounts(status);
}

void frmZorvel::ShowStreamProgress(double value) {
    status_page_->ShowStreamProgress(value);
}

void frmZorvel::ShowOverallProgress(double value) {
    status_page_->ShowOverallProgress(value);
}

bool frmZorvel::OfferImport(const std::string& /*summary*/, const std::string& question) {
    status_page_->Flush();
    return !closing() && user_.Ask(question, MessageIcon::kQuestion, Answer::kYes);
}

void frmZorvel::OpenSaveSelections() {
    Session& session = controller_.session();
    SaveSelections selections(controller_.services(), session.tree, session.current_tree,
                              TimerSeededFractions(controller_.services().clock));
    frmSaveSelections(selections, this).exec();
}

void frmZorvel::OpenLoadSelections() {
    Session& session = controller_.session();
    LoadSelections selections(controller_.services(), session.tree, browser_, session.current_tree);
    selections.Open();
    frmLoadSelections(selections, this).exec();
    browser_.RefreshAppTitle();
}

void frmZorvel::OpenTrees(const QString& dropped) {
    TreeEditor editor(controller_);
    frmTrees trees(editor, this);
    if (!dropped.isEmpty()) QTimer::singleShot(0, &trees, [&trees, dropped] { trees.AddExport(dropped); });
    trees.exec();
    editor.Finish();
}

void frmZorvel::dragEnterEvent(QDragEnterEvent* event) {
    if (!operating_ && !DroppedFile(event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void frmZorvel::dropEvent(QDropEvent* event) {
    // The one who drags waits until this returns.
    QTimer::singleShot(0, this, [this, path = DroppedFile(event->mimeData())] {
        Handle("frmTrees", [&] { OpenTrees(path); });
    });
    event->acceptProposedAction();
}

void frmZorvel::OpenImport() {
    Catalogue catalogue(*controller_.session().MasterConnection);
    CaptureDetails details(controller_.services(), catalogue);
    if (!details.Open()) return;
    const std::size_t datasets = catalogue.List().size();
    frmCaptureDetails(details, this).exec();
    if (catalogue.List().size() > datasets) OfferFindings();
}

void frmZorvel::OfferFindings() {
    if (closing() ||
        !user_.Ask("Do you want to see the findings of this dataset?", MessageIcon::kQuestion, Answer::kYes))
        return;
    ui_->SSTab1->setCurrentIndex(kFindingsTab);
    ListDatasets();
}

void frmZorvel::OpenMaintenance() {
    Catalogue catalogue(*controller_.session().MasterConnection);
    DatabaseMaintenance maintenance(controller_.services(), catalogue);
    maintenance.Open();
    frmDBMaint(maintenance, this).exec();
    ListDatasets();
}

void frmZorvel::ShowDocument(const char* file_name, const char* caption) {
    const Files& files = controller_.services().files;
    const auto open_link = [this](std::string_view address) { user_.OpenDocument(address); };
    frmDocument(files, files.Path(file_name), caption, open_link, this).exec();
}

void frmZorvel::OpenLogViewer() {
    frmViewLog viewer(this);
    if (viewer.Open(controller_.services())) viewer.exec();
}

void frmZorvel::End() {
    controller_.session().activity.Closing = true;
    user_.StopAsking();
    CloseDialogs();
    // What has opened the dialogs goes on first.
    if (QThread::currentThread()->loopLevel() <= 1) close();
    if (isVisible()) QTimer::singleShot(kPatience, this, &frmZorvel::End);
}

void frmZorvel::ComeToFront(const QByteArray& activation_token) {
    if (!isVisible()) return;  // it is starting or ending
    if (!activation_token.isEmpty())
        qputenv("XDG_ACTIVATION_TOKEN", activation_token);  // Qt takes it from there
    setWindowState(windowState() & ~Qt::WindowMinimized);
    raise();
    QWidget* const dialog = QApplication::activeModalWidget();
    QWidget& front = dialog != nullptr ? *dialog : *this;
    front.raise();
    front.activateWindow();
}

void frmZorvel::closeEvent(QCloseEvent* event) {
    if (operating_ || controller_.session().activity.Busy) {
        // What runs is interrupted as by ESC, a tree read is given up; the window closes when it has stopped.
        event->ignore();
        controller_.session().activity.Closing = true;
        user_.StopAsking();
        if (!controller_.session().activity.UserInterrupt) controller_.PressEscape();
        return;
    }
    if (!report_windows_->CloseAll()) {
        event->ignore();
        // Who asked for it while something was busy is not there to ask again.
        if (closing()) {
            QTimer::singleShot(kPatience, this, [this] {
                if (isVisible()) close();
            });
        }
        return;
    }
    findings_page_->SaveColumns();
    controller_.Exit();
    event->accept();
}

}  // namespace zorvel

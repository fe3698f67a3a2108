// The main window: five tabs, menus, status bar. It shows what the main controller's session holds and passes
// the user's events on.
#pragma once

#include <QElapsedTimer>
#include <QMainWindow>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "analysis/run_display.h"
#include "browser/ou_browser.h"
#include "controller/main_controller.h"
#include "controller/main_window.h"
#include "gui/main/busy_input_filter.h"
#include "gui/main/window_user_interface.h"
#include "platform/files.h"

namespace Ui {
class frmZorvel;
}

namespace zorvel {

class ApplicationsPage;
class FindPage;
class FindingsPage;
class OptionsPage;
class ReportWindows;
class StatusPage;
class frmCacheTree;

class frmZorvel final : public QMainWindow, public MainWindow {
    Q_OBJECT

  public:
    frmZorvel(const Files& files, Clock& clock, const MainController::DirectoryFactory& make_directory,
              ControllerSettings settings = {});
    ~frmZorvel() override;

    // Starts the session and shows the window; `command_line` is only logged. False when the program is to
    // end.
    bool StartUp(std::string_view command_line);

    // Closes the window without the user, who is asked nothing: boxes answer themselves with their default,
    // dialogs close, and what is busy ends as when the window is closed.
    void End();
    // Shows the window, and the dialog that is open over it, ahead of others; `activation_token` is what the
    // desktop gave the start that asks for it, and may be empty.
    void ComeToFront(const QByteArray& activation_token);

    MainController& controller() { return controller_; }

    // MainWindow
    void SetCaption(std::string_view caption) override;
    void LayOut() override;
    void Show() override;
    bool ShowWelcome() override;
    void EnableReenableWelcome(bool enabled) override;
    void ClearTrees() override;
    void AddTree(std::string_view name) override;
    void SelectTree(std::size_t index) override;
    void AllowDirectory(DirectoryAccess access) override;
    std::optional<std::string> AskPassword(std::string_view tree, std::string_view identity) override;
    void SetCurrentOU(std::string_view text) override;
    void RefreshAppTitle() override;

    // OUViewDisplay
    void ClearBrowser() override;
    void AddNode(std::size_t ou_number, bool expanded) override;
    void RedrawBrowser() override;
    void ShowCacheTree(std::string_view title) override;
    void SetLabOU(std::string_view text) override;
    void SetLabOUCount(std::string_view text) override;
    void SetLabApps(std::string_view text) override;
    void SetLabElapsed(std::string_view text) override;
    void CloseCacheTree() override;

    // RunDisplay
    void EnableGenerate(bool enabled) override;
    void ShowStatusTab() override;
    void ShowSelectedCount(std::string_view text) override;
    void ShowCurrentApplication(std::string_view count, std::string_view name) override;
    void ShowStatusCounts(const RunStatus& status) override;
    void ShowStreamProgress(double value) override;
    void ShowOverallProgress(double value) override;
    bool OfferImport(const std::string& summary, const std::string& question) override;

  protected:
    void closeEvent(QCloseEvent* event) override;
    // An LDIF export that is dropped becomes a tree.
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    // The tabs of SSTab1.
    enum Tab { kApplicationsTab, kOptionsTab, kFindTab, kStatusTab, kFindingsTab };

    void MakeTabs();
    void ConnectMenus();
    void ChooseTree(std::size_t index);
    void RefreshTree();
    void TabChanged(int tab);
    // The user has closed the window while something was busy.
    bool closing() { return controller_.session().activity.Closing; }
    void EnableControls();
    // butGenerate: a Find run on the Find tab, else a Zorvelrun.
    void Generate();
    void Analyse();
    void Find();
    void ShowPendingNodes();
    // Runs something that can take long, unless something runs already; when the user wanted to close the
    // window meanwhile, it closes after.
    void Operate(const std::function<void()>& operation);
    // The same, with its errors shown and logged as having occurred in `procedure`.
    void Handle(std::string_view procedure, const std::function<void()>& operation);

    void OpenSaveSelections();
    void OpenLoadSelections();
    // The trees; with the path of an LDIF file it is added first.
    void OpenTrees(const QString& dropped);
    void OpenImport();
    // Brings the Findings page up to date when it is shown: now, or when what is under way has ended.
    void ListDatasets();
    // A dataset was imported: its findings are offered.
    void OfferFindings();
    void OpenMaintenance();
    void OpenLogViewer();
    void ShowDocument(const char* file_name, const char* caption);

    std::unique_ptr<Ui::frmZorvel> ui_;
    WindowUserInterface user_;
    MainController controller_;
    BusyInputFilter busy_input_filter_;
    ApplicationsPage* applications_page_;
    OptionsPage* options_page_;
    FindPage* find_page_;
    StatusPage* status_page_;
    FindingsPage* findings_page_;
    frmCacheTree* cache_tree_;
    OUBrowser browser_;
    std::unique_ptr<ReportWindows> report_windows_;
    QElapsedTimer nodes_shown_;
    qint64 nodes_cost_ = 0;       // milliseconds that showing the nodes took last
    bool nodes_pending_ = false;  // some are not shown yet
    bool generate_enabled_ = true;
    bool operating_ = false;
    bool datasets_wanted_ = false;  // once what is under way has ended
};

}  // namespace zorvel

// The main window's controller: owns the session, starts it up, switches trees, and ends it.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "analysis/analysis_run.h"
#include "controller/main_window.h"
#include "controller/session.h"
#include "directory/directory.h"
#include "directory/ldap_ports.h"
#include "directory/tree_check.h"
#include "shell/services.h"

namespace zorvel {

// What differs between the desktop program and unattended runs.
struct ControllerSettings {
    int tree_read_countdown = 5;  // seconds of notice before a tree is read from the directory
    RunPace pace;
};

// Which tree start-up opens.
struct TreeRequest {
    bool open = true;
    std::string name;      // empty: the one that the directory client prefers
    bool refresh = false;  // read from the directory even when there are caches
};

// The two rule lists that the Advanced menu edits.
enum class RuleListFile { kRegistryIssues, kCustomFileIssues };

class MainController {
  public:
    using DirectoryFactory = std::function<std::unique_ptr<Directory>(const Files&, Log&, const LdapPorts&)>;

    MainController(const Files& files, Clock& clock, UserInterface& ui, MainWindow& window,
                   const DirectoryFactory& make_directory, ControllerSettings settings = {});

    // Starts the session; `command_line` is only logged. False when the program has to end: the user was told
    // why.
    bool StartUp(std::string_view command_line, const TreeRequest& request = {});

    // Makes tree `index` the current one and loads it, from the directory when `force` is set.
    void SwitchTree(std::size_t index, bool force = false);
    // Reads the current tree from the directory.
    void RefreshTree();
    // Lists the trees anew, after Directory.toml was changed; the current one stays as it is. Raises error 5
    // when the file cannot be used.
    void ListTreesAgain();
    // Opens the tree of that name, or the preferred one when there is none.
    void OpenListedTree(std::string_view name);

    // Tests a tree, Busy meanwhile; nothing when the user ended the test.
    std::optional<std::vector<TreeFinding>> TestTree(const DirectoryConfig::Tree& tree);

    // Sets UserInterrupt when something is Busy; does nothing else.
    void PressEscape();
    // Ends the session. Files still open are closed with the controller.
    void Exit();

    // Deletes the marker that keeps the welcome window away.
    void ReenableWelcome();
    // After a warning, opens a rule list in the text editor. The list in memory stays until the next start.
    void EditRuleList(RuleListFile list);

    // What a run over this session works with.
    RunInputs MakeRunInputs();

    // What the directory's client needs while it waits for a server, and to be let in.
    LdapPorts MakeLdapPorts();

    Session& session() { return session_; }
    Services& services() { return services_; }
    Directory& directory() { return *directory_; }

    // The window's caption: product name and version.
    static std::string Caption();
    // "1.0"
    static std::string Version();

  private:
    // Ends start-up; the user has been told.
    struct Terminated {};
    // Runs one operation that may fail.
    using Guard = std::function<void(const std::function<void()>&)>;

    // Runs an operation of start-up step `step`. Error 600 is reported and start-up goes on after the
    // operation; any other error is reported and raises Terminated.
    void Step(int step, const std::function<void()>& operation);
    // Lets pending events run while something is Busy. Raises Interrupted when the program is closed, or some
    // time after ESC: an answer that is on its way still counts.
    void WhileWaiting();
    void RunStartUp(std::string_view command_line, const TreeRequest& request);
    void LogHeading(std::string_view command_line, bool options_read);
    void InitialiseDirectoryClient();
    void ShowWelcomeOnce();
    void ListTrees();
    void ShowNoTree();
    void OpenMasterCatalogue();
    std::vector<std::string> LoadRuleList(std::string_view name);
    void OpenFirstTree(const TreeRequest& request);
    std::size_t PreferredTree();
    // Loads the current tree, unless that would only repeat what has just failed.
    void LoadTree(bool force);
    void AllowDirectory(DirectoryAccess access);
    void OpenTree(std::size_t index, bool force, const Guard& guard);
    std::string WelcomeMarker() const { return files_.Path("TempData\\welcome.nal"); }

    const Files& files_;
    Clock& clock_;
    UserInterface& ui_;
    MainWindow& window_;
    ControllerSettings settings_;
    Session session_;
    Log log_;
    WriterLock writers_;
    StatusLine status_;
    Options options_;
    EventSounds sounds_;
    Services services_;
    std::optional<double> escaped_;  // the clock's Timer when a wait first saw the ESC that it is to end for
    std::unique_ptr<Directory> directory_;
    TreeRefresh tree_refresh_;
};

}  // namespace zorvel

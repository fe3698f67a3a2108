#include "controller/main_controller.h"

#include <algorithm>

#include "database/import_record.h"
#include "platform/interruption.h"
#include "shell/pause.h"
#include "shell/report_error.h"

namespace zorvel {

MainController::MainController(const Files& files, Clock& clock, UserInterface& ui, MainWindow& window,
                               const DirectoryFactory& make_directory, ControllerSettings settings)
    : files_(files),
      clock_(clock),
      ui_(ui),
      window_(window),
      settings_(settings),
      log_(files, clock),
      writers_(files, clock, ui, log_),
      status_(ui, session_.tree.counts),
      options_(files, ui, log_, writers_),
      sounds_(files, ui, options_.session.SoundsEnabled),
      services_{files, clock, ui, log_, status_, sounds_, options_, session_.activity, writers_},
      directory_(make_directory(files, log_, MakeLdapPorts())),
      tree_refresh_(services_, *directory_, session_.tree, window, settings.tree_read_countdown) {
    directory_->on_unreadable = [this] { AllowDirectory(DirectoryAccess::kRetry); };
}

LdapPorts MainController::MakeLdapPorts() {
    return {[this] { WhileWaiting(); },
            [this](std::string_view tree, std::string_view identity) {
                return window_.AskPassword(tree, identity);
            }};
}

void MainController::WhileWaiting() {
    constexpr double kPatience = 1.5;  // seconds
    const Activity& activity = session_.activity;
    if (activity.Busy) ui_.ProcessEvents();
    if (activity.Closing) throw Interrupted{};
    if (!activity.UserInterrupt) {
        escaped_.reset();
        return;
    }
    if (!escaped_) escaped_ = clock_.Timer();
    if (SecondsSince(clock_, *escaped_) >= kPatience) throw Interrupted{};
}

void MainController::AllowDirectory(DirectoryAccess access) {
    session_.directory_access = access;
    window_.AllowDirectory(access);
}

void MainController::OpenTree(std::size_t index, bool force, const Guard& guard) {
    session_.current_tree = session_.trees.at(index);
    const std::string root = RootPath(session_.current_tree);
    log_.WriteLog("Changing Tree to '" + root + "'");
    AllowDirectory(DirectoryAccess::kFull);
    guard([&] { directory_->SetCurrentObject(root); });
    guard([&] { LoadTree(force); });
    guard([&] { window_.RefreshAppTitle(); });
}

void MainController::SwitchTree(std::size_t index, bool force) {
    OpenTree(index, force, [&](const std::function<void()>& operation) {
        try {
            operation();
        } catch (...) {
            TellUnexpectedError(ui_, log_, CurrentError(), "comTree_Click");
        }
    });
}

void MainController::RefreshTree() {
    AllowDirectory(DirectoryAccess::kFull);
    LoadTree(true);
}

void MainController::ListTreesAgain() {
    if (directory_->NWCallsInit() != 0)
        throw Error(errors::kInvalidCall).With(directory_->InitialisationFailure());
    session_.trees.clear();
    window_.ClearTrees();
    for (int i = 0; i < directory_->TreeCount(); ++i) {
        session_.trees.push_back(directory_->TreeName(i));
        window_.AddTree(session_.trees.back());
        if (session_.trees.back() == session_.current_tree) window_.SelectTree(session_.trees.size() - 1);
    }
}

void MainController::OpenListedTree(std::string_view name) {
    if (session_.trees.empty()) {
        session_.current_tree.clear();
        session_.tree_loaded = false;
        tree_refresh_.Clear();
        ShowNoTree();
        return;
    }
    const auto found = std::find(session_.trees.begin(), session_.trees.end(), name);
    const std::size_t index = found != session_.trees.end()
                                  ? static_cast<std::size_t>(found - session_.trees.begin())
                                  : PreferredTree();
    window_.SelectTree(index);
    SwitchTree(index);
}

std::optional<std::vector<TreeFinding>> MainController::TestTree(const DirectoryConfig::Tree& tree) {
    const BusyPeriod busy(session_.activity);
    log_.WriteLog("Testing the tree '" + tree.name + "'");
    LdapHost host{files_, log_, MakeLdapPorts()};
    try {
        return CheckTree(host, tree);
    } catch (const Interrupted&) {
        log_.WriteLog("The test was ended at user request");
        return std::nullopt;
    }
}

void MainController::LoadTree(bool force) {
    session_.tree_loaded = false;
    const bool readable = session_.directory_access == DirectoryAccess::kFull;
    if (readable || !tree_refresh_.ReadsDirectory(session_.current_tree, force)) {
        session_.tree_loaded = tree_refresh_.RefreshOUView(session_.current_tree, force);
        return;
    }
    tree_refresh_.Clear();
    session_.tree.counts.StatusPrefix.clear();
}

void MainController::PressEscape() {
    constexpr double kNotice = 0.8;
    if (!session_.activity.Busy) return;
    session_.activity.UserInterrupt = true;
    window_.EnableGenerate(true);
    status_.SetStatus(StatusPicture::kRedBall, "Interrupted at user request... Please wait a moment");
    Pause(clock_, ui_, kNotice);
}

void MainController::Exit() {
    log_.WriteLog("Exiting Zorvel at user request");
    session_.MasterConnection.reset();
}

void MainController::ReenableWelcome() {
    if (files_.Exists(WelcomeMarker())) files_.Remove(WelcomeMarker());
    window_.EnableReenableWelcome(false);
}

void MainController::EditRuleList(RuleListFile list) {
    const bool registry = list == RuleListFile::kRegistryIssues;
    const std::string label = registry ? "Registry Issue List" : "Custom File Issue List";
    const bool confirmed = ui_.Ask("Warning! - Incorrectly altering the " + label +
                                       " may cause unexpected Zorvel behaviour.\r\rAlso, please note that "
                                       "Zorvel must be restarted for any alterations to take effect.\r\rAre "
                                       "you sure you wish to continue?",
                                   MessageIcon::kExclamation, Answer::kNo);
    if (confirmed) ui_.EditTextFile(files_.Path(registry ? kRegExcludeFile : kFileIssueFile));
}

RunInputs MainController::MakeRunInputs() {
    return {
        services_,
        *directory_,
        session_.tree,
        session_.rule_lists,
        session_.app_issue_slots,
        session_.ContextHandle,
        window_,
        settings_.pace,
        [this](const std::string& path) { return ImportStateOf(files_, path) == ImportState::kCompleted; }};
}

}  // namespace zorvel

// The start-up sequence of the main controller. Its steps are numbered for error reports.
#include <algorithm>

#include "controller/main_controller.h"
#include "controller/version.h"
#include "database/catalogue.h"
#include "shell/formats.h"
#include "shell/report_error.h"

namespace zorvel {
namespace {

constexpr std::string_view kRule = "---------------------------------------------";
constexpr std::string_view kSeparator = "\n\n";
// The client's buffer for the preferred connection name holds 129 bytes, the last of them a NUL.
constexpr std::size_t kPreferredNameSize = 128;

std::string NotAuthenticatedText(std::string_view what_happened) {
    std::string text(kProductName);
    text += what_happened;
    text += kSeparator;
    text +=
        "Your machine may not be correctly authenticated to the NDS.  While eDirectory analysis functions "
        "will be disabled, other functions - such as reporting - should be fine.";
    return text;
}

}  // namespace

std::string MainController::Caption() {
    return std::string(kProductName) + " v" + Version();
}

std::string MainController::Version() {
    return std::to_string(kMajorVersion) + "." + std::to_string(kMinorVersion);
}

bool MainController::StartUp(std::string_view command_line, const TreeRequest& request) {
    try {
        RunStartUp(command_line, request);
        return true;
    } catch (const Terminated&) {
        return false;
    }
}

void MainController::Step(int step, const std::function<void()>& operation) {
    try {
        operation();
    } catch (const Terminated&) {
        throw;
    } catch (...) {
        const Error error = CurrentError();
        if (error.number() == errors::kDirectoryUnreadable) {
            ui_.Tell(
                NotAuthenticatedText(
                    " encountered an error while attempting to retrieve Directory Services information."),
                MessageIcon::kExclamation, error.detail());
            log_.WriteLog(
                "ERROR: DS error 600 returned during OU control refresh - may not be correctly authenticated "
                "to NDS");
            LogDetail(log_, error);
            return;
        }
        ui_.Tell(
            "Error" + ErrorText(error) + " occurred during Zorvel initialisation at Line" + PlainNumber(step),
            MessageIcon::kCritical, error.detail());
        LogUnexpectedError(log_, error, "Form_Load procedure at Line" + PlainNumber(step) + " - Terminating");
        throw Terminated{};
    }
}

void MainController::RunStartUp(std::string_view command_line, const TreeRequest& request) {
    bool options_read = false;
    Step(1, [&] {
        session_.tree.Clear();
        session_.rule_lists = {};
    });
    Step(2, [&] { options_read = options_.ReadOptions(); });
    Step(3, [&] { log_.Open(options_.session.AppendToLog); });
    Step(4, [&] { window_.SetCaption(Caption()); });
    LogHeading(command_line, options_read);  // steps 5 and 6
    status_.SetStatus(StatusPicture::kYellowBall, "Initializing...");
    Step(8, [&] { window_.LayOut(); });
    InitialiseDirectoryClient();  // step 9
    Step(10, [&] { window_.Show(); });
    Step(11, [&] { ShowWelcomeOnce(); });
    ListTrees();  // steps 12 to 14
    Step(15, [&] { OpenMasterCatalogue(); });
    Step(16, [&] { session_.app_issue_slots.Fill(); });
    Step(17, [&] { session_.rule_lists.RegExcludeList = LoadRuleList(kRegExcludeFile); });
    Step(18, [&] { session_.rule_lists.FileIssueList = LoadRuleList(kFileIssueFile); });
    OpenFirstTree(request);  // steps 19 and 20
    log_.WriteLog("Initial initilization finished");
    status_.SetIdle();
}

void MainController::LogHeading(std::string_view command_line, bool options_read) {
    log_.WriteLog("");
    log_.WriteLog(kRule);
    log_.WriteLog(Caption());
    log_.WriteLog(kRule);
    log_.WriteLog("Command line parameters: " + std::string(command_line));
    log_.WriteLog("Initial Initialization...");
    log_.WriteLog(options_read ? "Zorvel.INI Options file successfully read"
                               : "WARNING: Problem occurred reading Zorvel.INI Options File");
}

void MainController::InitialiseDirectoryClient() {
    constexpr int kStep = 9;
    Step(kStep, [&] {
        if (directory_->NWCallsInit() == 0) return;
        log_.WriteLog("ERROR: The NetWare Libraries could not be initialised - Terminating");
        ui_.Tell("The NetWare Client libraries could not be initialised - is the Client correctly installed?",
                 MessageIcon::kExclamation, directory_->InitialisationFailure());
        throw Terminated{};
    });
    Step(kStep, [&] {
        const int result = directory_->NWNetInit();
        if (result != 0) log_.WriteLog("ERROR: NWNetInit call failed with" + PlainNumber(result));
    });
    Step(kStep, [&] {
        const int result = directory_->NWDSCreateContextHandle(session_.ContextHandle);
        if (result != 0) log_.WriteLog("ERROR: CreateContext failed with" + PlainNumber(result));
    });
}

void MainController::ShowWelcomeOnce() {
    const bool suppressed = files_.Exists(WelcomeMarker());
    window_.EnableReenableWelcome(suppressed);
    if (suppressed || !window_.ShowWelcome()) return;
    files_.WriteInPlace(WelcomeMarker(), [](OutputFile& marker) {
        marker.Write("Welcome screen suppressed - delete this file to re-instate\r\n");
    });
    window_.EnableReenableWelcome(true);
}

void MainController::ListTrees() {
    int count = 0;
    Step(12, [&] { count = directory_->TreeCount(); });
    if (count > 0) {
        log_.WriteLog("Connected to" + PlainNumber(count) + " tree(s)");
    } else {
        log_.WriteLog("WARNING: No Trees were found");
        ui_.Tell(NotAuthenticatedText(" didn't find any Trees."), MessageIcon::kExclamation);
    }
    for (int i = 0; i < count; ++i) {
        Step(14, [&] {
            const std::string name = directory_->TreeName(i);
            session_.trees.push_back(name);
            window_.AddTree(name);
            log_.WriteLog("Tree #" + std::to_string(i + 1) + ", '" + name + "'");
        });
    }
}

void MainController::OpenMasterCatalogue() {
    log_.WriteLog("Connecting to Master DB...");
    const std::string path = files_.Path("Databases\\" + std::string(kMasterCatalogueFile));
    session_.MasterConnection.emplace(files_.Resolve(path), path);
    log_.WriteLog("Master DB was opened ok...");
}

std::vector<std::string> MainController::LoadRuleList(std::string_view name) {
    const std::string path = files_.Path(name);
    log_.WriteLog("Reading " + path + " file...");
    std::vector<std::string> entries = ReadRuleList(files_.Open(path));
    log_.WriteLog(std::to_string(entries.size()) + " entry(s) were read");
    return entries;
}

void MainController::OpenFirstTree(const TreeRequest& request) {
    constexpr int kStep = 19;
    log_.WriteLog("Finding Preferred Tree...");
    if (session_.trees.empty()) {
        Step(kStep + 1, [&] { ShowNoTree(); });
        return;
    }
    if (!request.open) return;
    std::size_t index = 0;
    if (request.name.empty()) {
        Step(kStep, [&] { index = PreferredTree(); });
    } else {
        const auto found = std::find(session_.trees.begin(), session_.trees.end(), request.name);
        if (found == session_.trees.end()) return;
        index = static_cast<std::size_t>(found - session_.trees.begin());
    }
    Step(kStep, [&] { window_.SelectTree(index); });
    const Guard guard = [&](const std::function<void()>& operation) { Step(kStep, operation); };
    OpenTree(index, request.refresh, guard);
    Step(kStep, [&] { directory_->SetCurrentObject(RootPath(session_.current_tree)); });
}

void MainController::ShowNoTree() {
    AllowDirectory(DirectoryAccess::kNone);
    window_.SetCurrentOU("No Trees found!");
    window_.RefreshAppTitle();
}

std::size_t MainController::PreferredTree() {
    std::string preferred;
    if (directory_->NWGetPreferredConnName(preferred) != 0) return 0;
    preferred.resize(std::min(preferred.size(), kPreferredNameSize));
    std::size_t chosen = 0;
    for (std::size_t i = 0; i < session_.trees.size(); ++i) {
        if (preferred.starts_with(session_.trees[i])) chosen = i;
    }
    return chosen;
}

}  // namespace zorvel

#include "batch/batch_session.h"

#include <memory>

#include "directory/open_directory.h"

namespace zorvel {

BatchSession::BatchSession(const BatchOptions& options, std::ostream& out, std::ostream& err)
    : command_line_(options.command_line),
      wait_(options.wait),
      out_(out),
      files_(options.folder),
      window_(out, err, options.manners) {}

bool BatchSession::StartUp(FolderUse use, const TreeRequest& request, RunPace pace) {
    ControllerSettings settings;
    settings.tree_read_countdown = 0;
    settings.pace = pace;
    controller_.emplace(files_, clock_, window_, window_, OpenDirectory, settings);
    controller_->services().log.on_detail = [this](std::string_view detail) { window_.Fail(detail); };
    window_.on_interrupt = [this] { controller_->PressEscape(); };
    WriterLock& writers = controller_->services().writers;
    writers.command = "zorvel-batch " + command_line_;
    writers.patience = wait_;
    writers.stop_waiting = [this] { return window_.interrupted(); };
    if (use == FolderUse::kWrite && !(hold_ = writers.Acquire())) return false;
    return controller_->StartUp(command_line_, request);
}

bool BatchSession::Start(FolderUse use, RunPace pace) {
    return StartUp(use, {.open = false, .name = {}, .refresh = false}, pace);
}

ExitStatus BatchSession::StartWithTree(FolderUse use, const std::string& tree, bool refresh, RunPace pace) {
    if (!StartUp(use, {.open = true, .name = tree, .refresh = refresh}, pace)) return Ended(kFailed);
    if (window_.interrupted()) return kInterrupted;
    const Session& session = controller_->session();
    if (session.trees.empty()) return Fail("no tree was found");
    if (session.current_tree.empty()) return Fail("there is no tree '" + tree + "'");
    if (!session.tree_loaded) return Fail("the tree '" + session.current_tree + "' could not be loaded");
    return kDone;
}

ExitStatus BatchSession::Fail(std::string_view reason) {
    window_.Fail(reason);
    return kFailed;
}

ExitStatus BatchSession::Ended(ExitStatus status) const {
    return window_.interrupted() ? kInterrupted : status;
}

}  // namespace zorvel

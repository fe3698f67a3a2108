// The core as a command of zorvel-batch uses it.
#pragma once

#include <filesystem>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>

#include "batch/batch_window.h"
#include "controller/main_controller.h"
#include "platform/clock.h"
#include "platform/files.h"

namespace zorvel {

// The exit status of a command.
enum ExitStatus : int { kDone = 0, kFailed = 1, kUsage = 2, kInterrupted = 3, kThreshold = 4 };

// What stands before the command on the command line, and the command line itself.
struct BatchOptions {
    std::filesystem::path folder;  // the program folder
    std::string command_line;      // for the log
    BatchManners manners;
    double wait = 0;  // seconds for another program that writes to the folder
};

// What a command does to the program folder. One program at a time may write to it.
enum class FolderUse { kRead, kWrite };

class BatchSession {
  public:
    // Raises a std::filesystem::filesystem_error when the program folder does not exist.
    BatchSession(const BatchOptions& options, std::ostream& out, std::ostream& err);

    // Starts the core without opening a tree. False when that failed, or when another program writes to the
    // folder and this one was to do so, too: nothing was touched then. The user was told why.
    bool Start(FolderUse use, RunPace pace = {});
    // The same with a tree: `tree` or, when it is empty, the preferred one. Anything but kDone is the exit
    // status to end with; the user was told why.
    ExitStatus StartWithTree(FolderUse use, const std::string& tree, bool refresh, RunPace pace = {});

    // The core; there once it was started.
    MainController& controller() { return *controller_; }
    // The program folder's files, for commands that need no more.
    const Files& files() const { return files_; }
    BatchWindow& window() { return window_; }
    std::ostream& out() { return out_; }

    // Writes the reason to standard error; returns kFailed.
    ExitStatus Fail(std::string_view reason);
    // kInterrupted when the user interrupted the program, else `status`.
    ExitStatus Ended(ExitStatus status) const;

  private:
    bool StartUp(FolderUse use, const TreeRequest& request, RunPace pace);

    std::string command_line_;
    double wait_;
    std::ostream& out_;
    Files files_;
    SystemClock clock_;
    BatchWindow window_;
    std::optional<MainController> controller_;
    std::optional<WriterLock::Hold> hold_;
};

}  // namespace zorvel

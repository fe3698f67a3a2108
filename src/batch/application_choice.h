// Which applications a run reads, and at what pace: the options that the commands with a run share.
#pragma once

#include <string>
#include <vector>

#include "batch/batch_session.h"

namespace CLI {
class App;
}

namespace zorvel {

class ApplicationChoice {
  public:
    // Adds --tree, --refresh, the choice of applications and --pace to a command; `verb` says in the help
    // what happens to the applications.
    void AddOptions(CLI::App& command, const std::string& verb);

    // Starts the core, loads the tree and selects the applications. Anything but kDone is the exit status to
    // end with; the user was told why.
    ExitStatus Start(BatchSession& session) const;

  private:
    ExitStatus Select(BatchSession& session) const;
    ExitStatus SelectFromFile(BatchSession& session, TreeLists& tree) const;
    ExitStatus CheckSelection(BatchSession& session) const;

    std::string verb_;
    std::string tree_;
    bool refresh_ = false;
    bool all_ = false;
    std::vector<std::string> containers_;
    std::string selection_;
    double pace_ = -1;
};

// Does the run. kDone: its data is complete for the applications that it read. kFailed: it is not; the user
// was told why.
ExitStatus DoRun(BatchSession& session, AnalysisRun& run);

// Ends a command with a run: `status`, but kInterrupted after an interruption, else kFailed when there are
// applications that could not be read.
ExitStatus EndOfRun(BatchSession& session, const AnalysisRun& run, ExitStatus status);

}  // namespace zorvel

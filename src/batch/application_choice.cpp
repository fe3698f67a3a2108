#include "batch/application_choice.h"

#include <CLI/CLI.hpp>

#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "browser/selection_file.h"
#include "platform/code_page.h"
#include "platform/error.h"
#include "shell/formats.h"

namespace zorvel {
namespace {

// Finds the containers that paths name: in their exact spelling or, failing that, in any case.
class ContainerFinder {
  public:
    explicit ContainerFinder(const TreeLists& tree) : tree_(tree) {}

    // The number of the container, or 0.
    std::size_t Find(const std::string& path) {
        if (const std::size_t number = tree_.FindOU(path); number != 0) return number;
        for (; indexed_ < tree_.OUList.size(); ++indexed_) {
            by_upper_path_.try_emplace(UpperCase(tree_.OUList[indexed_].Path), indexed_ + 1);
        }
        const auto found = by_upper_path_.find(UpperCase(path));
        return found == by_upper_path_.end() ? 0 : found->second;
    }

  private:
    const TreeLists& tree_;
    std::unordered_map<std::string, std::size_t> by_upper_path_;
    std::size_t indexed_ = 0;
};

}  // namespace

void ApplicationChoice::AddOptions(CLI::App& command, const std::string& verb) {
    verb_ = verb;
    command.add_option("--tree", tree_, "The tree (default: the preferred one)");
    command.add_flag("--refresh", refresh_, "Read the tree from the directory even when it is cached");
    CLI::Option_group* choice = command.add_option_group("applications", "Which applications to " + verb);
    choice->add_flag("--all", all_, "All applications of the tree");
    choice->add_option("--container", containers_, "The applications directly in these containers (paths)");
    choice->add_option("--selection", selection_, "The applications of a saved selection (a file)");
    choice->require_option(1);
    command
        .add_option("--pace", pace_,
                    "Seconds to wait after each application (default 0.5) and each parsing error (default 1)")
        ->check(CLI::NonNegativeNumber);
}

ExitStatus ApplicationChoice::Start(BatchSession& session) const {
    const RunPace pace = pace_ < 0 ? RunPace{} : RunPace{pace_, pace_};
    const ExitStatus status = session.StartWithTree(FolderUse::kWrite, FromUtf8(tree_), refresh_, pace);
    return status == kDone ? Select(session) : status;
}

ExitStatus ApplicationChoice::Select(BatchSession& session) const {
    TreeLists& tree = session.controller().session().tree;
    if (!selection_.empty()) return SelectFromFile(session, tree);
    std::unordered_set<std::string_view> chosen;
    ContainerFinder finder(tree);
    for (const std::string& argument : containers_) {
        const std::string path = FromUtf8(argument);
        const std::size_t number = finder.Find(path);
        if (number == 0) return session.Fail("there is no container '" + path + "'");
        chosen.insert(tree.OUList[number - 1].Path);
    }
    for (AppRecord& application : tree.AppList) {
        tree.Select(application, all_ || chosen.count(application.Container) != 0);
    }
    return CheckSelection(session);
}

ExitStatus ApplicationChoice::SelectFromFile(BatchSession& session, TreeLists& tree) const {
    try {
        const SavedSelection selection = ReadSelection(InputFile(selection_, FromUtf8(selection_)));
        TreeListsSelection target(tree);
        const std::int32_t selected = SelectSaved(target, tree, selection);
        session.window().Tell(SelectionLoadedText(selected, selection), MessageIcon::kInformation);
    } catch (const Error& error) {
        return session.Fail(error.Reason());
    }
    return CheckSelection(session);
}

ExitStatus ApplicationChoice::CheckSelection(BatchSession& session) const {
    const bool any = session.controller().session().tree.counts.SelectedCount > 0;
    return any ? kDone : session.Fail("there is no application to " + verb_);
}

ExitStatus DoRun(BatchSession& session, AnalysisRun& run) {
    switch (run.Run()) {
        case RunOutcome::kAbandoned:
            return session.Fail("the data of the last run was kept; --yes replaces it");
        case RunOutcome::kFailed:
            return session.Fail("the run could not be finished");
        case RunOutcome::kFinished:
            break;
    }
    return kDone;
}

ExitStatus EndOfRun(BatchSession& session, const AnalysisRun& run, ExitStatus status) {
    if (run.failed_applications() > 0) {
        status = session.Fail(Grouped(run.failed_applications()) + " application(s) could not be read");
    }
    return session.Ended(status);
}

}  // namespace zorvel

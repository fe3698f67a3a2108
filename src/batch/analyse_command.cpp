// zorvel-batch analyse: a Zorvelrun over the chosen applications.
#include <CLI/CLI.hpp>

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "batch/command.h"
#include "batch/import_run.h"
#include "directory/selection_file.h"
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

class AnalyseCommand final : public BatchCommand {
  public:
    CLI::App* Register(CLI::App& program) override {
        CLI::App* command =
            program.add_subcommand("analyse", "Analyse applications and write the data files");
        command->add_option("--tree", tree_, "The tree (default: the preferred one)");
        command->add_flag("--refresh", refresh_, "Read the tree from the directory even when it is cached");
        CLI::Option_group* choice =
            command->add_option_group("applications", "Which applications to analyse");
        choice->add_flag("--all", all_, "All applications of the tree");
        choice->add_option("--container", containers_,
                           "The applications directly in these containers (paths)");
        choice->add_option("--selection", selection_, "The applications of a saved selection (a file)");
        choice->require_option(1);
        command
            ->add_option(
                "--pace", pace_,
                "Seconds to wait after each application (default 0.5) and each parsing error (default 1)")
            ->check(CLI::NonNegativeNumber);
        CLI::Option* import =
            command->add_flag("--import", import_, "Import the data when the run has finished");
        command->add_option("--comment", comment_, "What the catalogue says of the run")->needs(import);
        return command;
    }

    ExitStatus Run(BatchSession& session) override {
        const RunPace pace = pace_ < 0 ? RunPace{} : RunPace{pace_, pace_};
        ExitStatus status = session.StartWithTree(FromUtf8(tree_), refresh_, pace);
        if (status == kDone) status = Select(session);
        return status == kDone ? Analyse(session) : status;
    }

  private:
    ExitStatus Select(BatchSession& session) {
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

    static ExitStatus CheckSelection(BatchSession& session) {
        const bool any = session.controller().session().tree.counts.SelectedCount > 0;
        return any ? kDone : session.Fail("there is no application to analyse");
    }

    ExitStatus SelectFromFile(BatchSession& session, TreeLists& tree) {
        try {
            const SavedSelection selection = ReadSelection(InputFile(selection_, FromUtf8(selection_)));
            TreeListsSelection target(tree);
            const std::int32_t selected = SelectSaved(target, tree, selection);
            session.window().Tell(SelectionLoadedText(selected, selection), MessageIcon::kInformation);
        } catch (const Error& error) {
            return session.Fail(error.detail());
        }
        return CheckSelection(session);
    }

    ExitStatus Analyse(BatchSession& session) {
        session.window().import_wanted = import_;
        AnalysisRun run(session.controller().MakeRunInputs(session.window()));
        switch (run.Run()) {
            case RunOutcome::kAbandoned:
                return session.Fail("the data of the last run was kept; --yes replaces it");
            case RunOutcome::kFailed:
                return session.Fail("the run could not be finished");
            case RunOutcome::kFinished:
                break;
        }
        ExitStatus status = run.import_wanted() ? ImportLastRun(session, comment_) : kDone;
        if (run.failed_applications() > 0) {
            status = session.Fail(Grouped(run.failed_applications()) + " application(s) could not be read");
        }
        return session.Ended(status);
    }

    std::string tree_;
    bool refresh_ = false;
    bool all_ = false;
    std::vector<std::string> containers_;
    std::string selection_;
    double pace_ = -1;
    bool import_ = false;
    std::string comment_;
};

}  // namespace

std::unique_ptr<BatchCommand> MakeAnalyseCommand() {
    return std::make_unique<AnalyseCommand>();
}

}  // namespace zorvel

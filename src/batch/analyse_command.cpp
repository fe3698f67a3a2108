// zorvel-batch analyse: a Zorvelrun over the chosen applications.
#include <CLI/CLI.hpp>

#include <string>
#include <vector>

#include "batch/command.h"
#include "batch/import_run.h"
#include "directory/selection_file.h"
#include "platform/code_page.h"
#include "platform/error.h"

namespace zorvel {
namespace {

// The container that `path` names, in its exact spelling or, failing that, in any case; nothing when there is
// none.
const OURecord* FindContainer(const TreeLists& tree, std::string_view path) {
    if (const std::size_t number = tree.FindOU(path); number != 0) return &tree.OUList[number - 1];
    for (const OURecord& container : tree.OUList) {
        if (EqualIgnoringCase(container.Path, path)) return &container;
    }
    return nullptr;
}

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
        if (all_) {
            for (AppRecord& application : tree.AppList)
                tree.Select(application, true);
        }
        for (const std::string& argument : containers_) {
            const std::string path = FromUtf8(argument);
            const OURecord* container = FindContainer(tree, path);
            if (container == nullptr) return session.Fail("there is no container '" + path + "'");
            for (AppRecord& application : tree.AppList) {
                if (application.Container == container->Path) tree.Select(application, true);
            }
        }
        return tree.counts.SelectedCount > 0 ? kDone : session.Fail("there is no application to analyse");
    }

    ExitStatus SelectFromFile(BatchSession& session, TreeLists& tree) {
        try {
            const SavedSelection selection = ReadSelection(InputFile(selection_, FromUtf8(selection_)));
            const std::int32_t selected = SelectSaved(tree, selection);
            session.window().Tell(SelectionLoadedText(selected, selection), MessageIcon::kInformation);
        } catch (const Error& error) {
            return session.Fail(error.description() + ": " + error.detail());
        }
        return tree.counts.SelectedCount > 0 ? kDone : session.Fail("there is no application to analyse");
    }

    ExitStatus Analyse(BatchSession& session) {
        session.window().import_wanted = import_;
        AnalysisRun run(session.controller().MakeRunInputs(session.window()));
        switch (run.Run()) {
            case RunOutcome::kAbandoned:
                return session.Fail("the data of the last run was kept; --yes replaces it");
            case RunOutcome::kFailed:
                return session.Fail("the data files could not be written");
            case RunOutcome::kFinished:
                break;
        }
        if (!run.import_wanted()) return session.Ended(kDone);
        return session.Ended(ImportLastRun(session, comment_));
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

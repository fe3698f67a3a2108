// zorvel-batch containers: the containers of a tree with the number of their applications.
#include <CLI/CLI.hpp>

#include "batch/command.h"
#include "batch/field.h"
#include "platform/code_page.h"

namespace zorvel {
namespace {

class ContainersCommand final : public BatchCommand {
  public:
    CLI::App* Register(CLI::App& program) override {
        CLI::App* command = program.add_subcommand(
            "containers", "List a tree's containers: path, TAB, number of applications directly in it");
        command->add_option("--tree", tree_, "The tree (default: the preferred one)");
        command->add_flag("--refresh", refresh_, "Read the tree from the directory even when it is cached");
        return command;
    }

    ExitStatus Run(BatchSession& session) override {
        const ExitStatus started = session.StartWithTree(FolderUse::kRead, FromUtf8(tree_), refresh_);
        if (started != kDone) return started;
        for (const OURecord& container : session.controller().session().tree.OUList) {
            session.out() << Field(container.Path) << '\t' << container.AppsHere << '\n';
        }
        return kDone;
    }

  private:
    std::string tree_;
    bool refresh_ = false;
};

}  // namespace

std::unique_ptr<BatchCommand> MakeContainersCommand() {
    return std::make_unique<ContainersCommand>();
}

}  // namespace zorvel

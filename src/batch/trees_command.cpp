// zorvel-batch trees: the trees that can be analysed, one a line.
#include <CLI/CLI.hpp>

#include "batch/command.h"
#include "batch/field.h"

namespace zorvel {
namespace {

class TreesCommand final : public BatchCommand {
  public:
    CLI::App* Register(CLI::App& program) override {
        return program.add_subcommand("trees", "List the trees, one a line");
    }

    ExitStatus Run(BatchSession& session) override {
        if (!session.Start(FolderUse::kRead)) return kFailed;
        for (const std::string& tree : session.controller().session().trees)
            session.out() << Field(tree) << '\n';
        return kDone;
    }
};

}  // namespace

std::unique_ptr<BatchCommand> MakeTreesCommand() {
    return std::make_unique<TreesCommand>();
}

}  // namespace zorvel

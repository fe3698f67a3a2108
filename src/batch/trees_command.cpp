// zorvel-batch trees: the trees that can be analysed, one a line.
#include <CLI/CLI.hpp>

#include "batch/command.h"
#include "platform/code_page.h"

namespace zorvel {
namespace {

class TreesCommand final : public BatchCommand {
  public:
    CLI::App* Register(CLI::App& program) override {
        return program.add_subcommand("trees", "List the trees, one a line");
    }

    ExitStatus Run(BatchSession& session) override {
        if (!session.Start()) return kFailed;
        for (const std::string& tree : session.controller().session().trees)
            session.out() << ToUtf8(tree) << '\n';
        return kDone;
    }
};

}  // namespace

std::unique_ptr<BatchCommand> MakeTreesCommand() {
    return std::make_unique<TreesCommand>();
}

}  // namespace zorvel

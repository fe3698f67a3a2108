// zorvel-batch trees: the trees that can be analysed, one a line; whether they can be read.
#include <CLI/CLI.hpp>

#include "batch/command.h"
#include "batch/field.h"

namespace zorvel {
namespace {

class TreesCommand final : public BatchCommand {
  public:
    CLI::App* Register(CLI::App& program) override {
        CLI::App* command = program.add_subcommand("trees", "List the trees, one a line");
        command->add_flag("--check", check_,
                          "Test each tree: tree, ok or missing or failed, subject, what was found");
        return command;
    }

    ExitStatus Run(BatchSession& session) override {
        if (!session.Start(FolderUse::kRead)) return kFailed;
        if (check_) return Check(session);
        for (const std::string& tree : session.controller().session().trees)
            session.out() << Field(tree) << '\n';
        return kDone;
    }

  private:
    static ExitStatus Check(BatchSession& session) {
        bool passed = true;
        for (const DirectoryConfig::Tree& tree : ReadDirectoryConfig(session.files()).trees) {
            const auto findings = session.controller().TestTree(tree);
            if (!findings) return kInterrupted;
            passed = passed && Passed(*findings);
            for (const TreeFinding& finding : *findings) {
                session.out() << Field(tree.name) << '\t' << StateName(finding.state) << '\t'
                              << Field(finding.subject) << '\t' << Field(finding.text) << '\n';
            }
            session.out().flush();
        }
        return passed ? kDone : session.Fail("not all trees can be read");
    }

    bool check_ = false;
};

}  // namespace

std::unique_ptr<BatchCommand> MakeTreesCommand() {
    return std::make_unique<TreesCommand>();
}

}  // namespace zorvel

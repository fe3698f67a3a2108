// zorvel-batch import: the data of the last run becomes a dataset.
#include <CLI/CLI.hpp>

#include <string>

#include "batch/command.h"
#include "batch/import_run.h"

namespace zorvel {
namespace {

class ImportCommand final : public BatchCommand {
  public:
    CLI::App* Register(CLI::App& program) override {
        CLI::App* command =
            program.add_subcommand("import", "Import the data of the last run into a dataset");
        command->add_option("--comment", comment_, "What the catalogue says of the run");
        return command;
    }

    ExitStatus Run(BatchSession& session) override {
        return session.Start(FolderUse::kWrite) ? ImportLastRun(session, comment_) : kFailed;
    }

  private:
    std::string comment_;
};

}  // namespace

std::unique_ptr<BatchCommand> MakeImportCommand() {
    return std::make_unique<ImportCommand>();
}

}  // namespace zorvel

// zorvel-batch analyse: a Zorvelrun over the chosen applications.
#include <CLI/CLI.hpp>

#include <string>

#include "batch/application_choice.h"
#include "batch/command.h"
#include "batch/import_run.h"

namespace zorvel {
namespace {

class AnalyseCommand final : public BatchCommand {
  public:
    CLI::App* Register(CLI::App& program) override {
        CLI::App* command =
            program.add_subcommand("analyse", "Analyse applications and write the data files");
        applications_.AddOptions(*command, "analyse");
        CLI::Option* import =
            command->add_flag("--import", import_, "Import the data when the run has finished");
        command->add_option("--comment", comment_, "What the catalogue says of the run")->needs(import);
        return command;
    }

    ExitStatus Run(BatchSession& session) override {
        ExitStatus status = applications_.Start(session);
        if (status != kDone) return status;
        session.window().import_wanted = import_;
        AnalysisRun run(session.controller().MakeRunInputs());
        status = DoRun(session, run);
        if (status != kDone) return status;
        if (run.import_wanted()) status = ImportLastRun(session, comment_);
        return EndOfRun(session, run, status);
    }

  private:
    ApplicationChoice applications_;
    bool import_ = false;
    std::string comment_;
};

}  // namespace

std::unique_ptr<BatchCommand> MakeAnalyseCommand() {
    return std::make_unique<AnalyseCommand>();
}

}  // namespace zorvel

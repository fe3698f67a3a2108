// zorvel-batch compact and delete: the maintenance of datasets.
#include <CLI/CLI.hpp>

#include <string>

#include "batch/command.h"
#include "database/maintenance.h"
#include "platform/code_page.h"

namespace zorvel {
namespace {

// A command that does one thing to one dataset.
class MaintenanceCommand final : public BatchCommand {
  public:
    using Operation = MaintenanceResult (DatabaseMaintenance::*)();

    MaintenanceCommand(std::string name, std::string description, Operation operation)
        : name_(std::move(name)), description_(std::move(description)), operation_(operation) {}

    CLI::App* Register(CLI::App& program) override {
        CLI::App* command = program.add_subcommand(name_, description_);
        command->add_option("DATASET", dataset_, "The dataset's file, as `datasets` names it")->required();
        return command;
    }

    ExitStatus Run(BatchSession& session) override {
        if (!session.Start(FolderUse::kWrite)) return kFailed;
        Catalogue catalogue(*session.controller().session().MasterConnection);
        DatabaseMaintenance maintenance(session.controller().services(), catalogue);
        maintenance.Open();
        const std::string dataset = FromUtf8(dataset_);
        if (!maintenance.SelectDataset(dataset)) return session.Fail("there is no dataset '" + dataset + "'");
        switch ((maintenance.*operation_)()) {
            case MaintenanceResult::kDone:
                return kDone;
            case MaintenanceResult::kDeclined:
                return session.Fail("nothing was done to '" + dataset + "'");
            case MaintenanceResult::kFailed:
                break;
        }
        return session.Fail("the operation failed");
    }

  private:
    std::string name_;
    std::string description_;
    Operation operation_;
    std::string dataset_;
};

}  // namespace

std::unique_ptr<BatchCommand> MakeCompactCommand() {
    return std::make_unique<MaintenanceCommand>(
        "compact", "Rewrite a dataset without its unused space (asks first: needs --yes)",
        &DatabaseMaintenance::Compact);
}

std::unique_ptr<BatchCommand> MakeDeleteCommand() {
    return std::make_unique<MaintenanceCommand>("delete", "Delete a dataset (asks first: needs --yes)",
                                                &DatabaseMaintenance::Delete);
}

}  // namespace zorvel

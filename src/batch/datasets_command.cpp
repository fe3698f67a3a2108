// zorvel-batch datasets: the imported runs, newest first.
#include <CLI/CLI.hpp>

#include "batch/command.h"
#include "batch/field.h"
#include "database/catalogue.h"

namespace zorvel {
namespace {

class DatasetsCommand final : public BatchCommand {
  public:
    CLI::App* Register(CLI::App& program) override {
        return program.add_subcommand(
            "datasets", "List the datasets: captured, tree, container, applications, issues, file, comment");
    }

    ExitStatus Run(BatchSession& session) override {
        if (!session.Start(FolderUse::kRead)) return kFailed;
        const Catalogue catalogue(*session.controller().session().MasterConnection);
        for (const CatalogueRow& row : catalogue.List()) {
            session.out() << Field(row.Captured) << '\t' << Field(row.Tree) << '\t' << Field(row.OU) << '\t'
                          << row.AppCount << '\t' << row.CountIssues() << '\t' << Field(row.DBName) << '\t'
                          << Field(row.Description) << '\n';
        }
        return kDone;
    }
};

}  // namespace

std::unique_ptr<BatchCommand> MakeDatasetsCommand() {
    return std::make_unique<DatasetsCommand>();
}

}  // namespace zorvel

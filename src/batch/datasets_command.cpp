// zorvel-batch datasets: the imported runs, newest first; what of them does not fit, and its repair.
#include <CLI/CLI.hpp>

#include <string>
#include <vector>

#include "batch/command.h"
#include "batch/field.h"
#include "database/catalogue.h"
#include "database/dataset_check.h"
#include "database/import_record.h"

namespace zorvel {
namespace {

using Faults = std::vector<DatasetFault>;

class DatasetsCommand final : public BatchCommand {
  public:
    CLI::App* Register(CLI::App& program) override {
        CLI::App* command = program.add_subcommand(
            "datasets", "List the datasets: captured, tree, container, applications, issues, file, comment");
        command->add_flag("--check", check_, "List what does not fit instead: what, file, details");
        command->add_flag("--repair", repair_, "Mend what does not fit (asks first: needs --yes)");
        return command;
    }

    ExitStatus Run(BatchSession& session) override {
        if (!session.Start(repair_ ? FolderUse::kWrite : FolderUse::kRead)) return kFailed;
        Catalogue catalogue(*session.controller().session().MasterConnection);
        if (repair_) return Repair(session, catalogue);
        if (check_) return Check(session, catalogue);
        List(session, catalogue);
        return kDone;
    }

  private:
    static void List(BatchSession& session, const Catalogue& catalogue) {
        for (const CatalogueRow& row : catalogue.List()) {
            session.out() << Field(row.Captured) << '\t' << Field(row.Tree) << '\t' << Field(row.OU) << '\t'
                          << row.AppCount << '\t' << row.CountIssues() << '\t' << Field(row.DBName) << '\t'
                          << Field(row.Description);
            if (LacksCompletion(session.files(), row.DBName)) session.out() << '\t' << kImportNotCompleted;
            session.out() << '\n';
        }
    }

    static void Print(BatchSession& session, std::string_view what, std::string_view file,
                      std::string_view details) {
        session.out() << Field(what) << '\t' << Field(file) << '\t' << Field(details) << '\n';
    }

    // Lists what is found. kDone when that is nothing.
    static ExitStatus Check(BatchSession& session, const Catalogue& catalogue) {
        const Faults faults = FindDatasetFaults(session.files(), catalogue);
        for (const DatasetFault& fault : faults)
            Print(session, fault.what, fault.file, fault.details);
        return faults.empty() ? kDone : session.Fail("not all datasets fit");
    }

    static ExitStatus Repair(BatchSession& session, Catalogue& catalogue) {
        Services& services = session.controller().services();
        const Faults faults = FindDatasetFaults(session.files(), catalogue);
        std::string plan;
        for (const DatasetFault& fault : faults) {
            if (const std::string text = RepairText(fault); !text.empty()) plan += '\n' + text;
        }
        if (plan.empty()) return Check(session, catalogue);
        if (!services.ui.Ask("Do you want to repair the datasets? This will" + plan,
                             MessageIcon::kExclamation, Answer::kNo)) {
            return session.Fail("nothing was changed; --yes repairs the datasets");
        }
        for (const DatasetFault& fault : faults)
            RepairOne(session, catalogue, fault);
        return Check(session, catalogue);
    }

    static void RepairOne(BatchSession& session, Catalogue& catalogue, const DatasetFault& fault) {
        const std::string text = RepairText(fault);
        if (text.empty()) return;
        session.controller().services().log.WriteLog("Repairing the datasets: " + text);
        try {
            RepairDataset(session.files(), catalogue, fault);
            Print(session, "repaired", fault.file, text);
        } catch (const Error& error) {
            session.controller().services().log.WriteDetail(error.detail().empty() ? error.description()
                                                                                   : error.detail());
        }
    }

    bool check_ = false;
    bool repair_ = false;
};

}  // namespace

std::unique_ptr<BatchCommand> MakeDatasetsCommand() {
    return std::make_unique<DatasetsCommand>();
}

}  // namespace zorvel

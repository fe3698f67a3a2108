// zorvel-batch reports: the captions of the reports.
#include <CLI/CLI.hpp>

#include "batch/command.h"
#include "reporting/report_catalogue.h"

namespace zorvel {
namespace {

class ReportsCommand final : public BatchCommand {
  public:
    CLI::App* Register(CLI::App& program) override {
        return program.add_subcommand("reports", "List the reports, a caption a line");
    }

    ExitStatus Run(BatchSession& session) override {
        for (const CatalogueReport& report : CatalogueReports())
            session.out() << report.caption << '\n';
        return kDone;
    }
};

}  // namespace

std::unique_ptr<BatchCommand> MakeReportsCommand() {
    return std::make_unique<ReportsCommand>();
}

}  // namespace zorvel

// One command of zorvel-batch.
#pragma once

#include <memory>
#include <vector>

#include "batch/batch_session.h"
#include "batch/report_writer.h"

namespace CLI {
class App;
}

namespace zorvel {

class BatchCommand {
  public:
    virtual ~BatchCommand() = default;
    // Adds the command, with its options, to the command line.
    virtual CLI::App* Register(CLI::App& program) = 0;
    // Does the command's work, after its options were read.
    virtual ExitStatus Run(BatchSession& session) = 0;
};

std::unique_ptr<BatchCommand> MakeTreesCommand();
std::unique_ptr<BatchCommand> MakeContainersCommand();
std::unique_ptr<BatchCommand> MakeAnalyseCommand();
std::unique_ptr<BatchCommand> MakeFindCommand();
std::unique_ptr<BatchCommand> MakeImportCommand();
std::unique_ptr<BatchCommand> MakeDatasetsCommand();
std::unique_ptr<BatchCommand> MakeCompactCommand();
std::unique_ptr<BatchCommand> MakeDeleteCommand();
std::unique_ptr<BatchCommand> MakeExportLdifCommand();
std::unique_ptr<BatchCommand> MakeLogCommand();
std::unique_ptr<BatchCommand> MakeFindingsCommand();
std::unique_ptr<BatchCommand> MakeExplainCommand();
std::unique_ptr<BatchCommand> MakeAcceptCommand();
std::unique_ptr<BatchCommand> MakeAcceptedCommand();
std::unique_ptr<BatchCommand> MakeReportsCommand();
// `write_pdf` makes a report's PDF.
std::unique_ptr<BatchCommand> MakeReportCommand(ReportWriter write_pdf);

}  // namespace zorvel

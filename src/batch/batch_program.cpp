#include "batch/batch_program.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <memory>
#include <utility>

#include "batch/command.h"
#include "batch/field.h"
#include "platform/code_page.h"
#include "platform/error.h"

namespace zorvel {
namespace {

std::string CommandLine(const std::vector<std::string>& arguments) {
    std::string line;
    for (const std::string& argument : arguments)
        line += (line.empty() ? "" : " ") + argument;
    return FromUtf8(line);
}

ExitStatus RunCommand(BatchCommand& command, const BatchOptions& options, std::ostream& out,
                      std::ostream& err) {
    try {
        BatchSession session(options, out, err);
        const ExitStatus status = command.Run(session);
        out.flush();
        return out ? status : session.Fail("standard output could not be written");
    } catch (...) {
        err << "zorvel-batch: " << Message(CurrentError().Reason()) << std::endl;
        return kFailed;
    }
}

}  // namespace

int RunBatchProgram(const std::vector<std::string>& arguments, const std::filesystem::path& folder,
                    bool show_progress, std::ostream& out, std::ostream& err, const ReportWriter& write_pdf) {
    CLI::App program("Zorvel without a window: analyses of application delivery from a shell",
                     "zorvel-batch");
    BatchOptions options{folder, CommandLine(arguments), {.yes = false, .show_progress = show_progress}, 0};
    program.add_option("--folder", options.folder, "The program folder (default: the folder of the program)")
        ->check(CLI::ExistingDirectory);
    program.add_flag("--yes", options.manners.yes,
                     "Answer every question Yes instead of with its default button");
    program
        .add_option("--wait", options.wait,
                    "Seconds to wait for another program that writes to the program folder (default 0)")
        ->check(CLI::NonNegativeNumber);
    program.require_subcommand(1);

    std::vector<std::unique_ptr<BatchCommand>> commands;
    commands.push_back(MakeTreesCommand());
    commands.push_back(MakeContainersCommand());
    commands.push_back(MakeExportLdifCommand());
    commands.push_back(MakeAnalyseCommand());
    commands.push_back(MakeFindCommand());
    commands.push_back(MakeImportCommand());
    commands.push_back(MakeDatasetsCommand());
    commands.push_back(MakeCompactCommand());
    commands.push_back(MakeDeleteCommand());
    commands.push_back(MakeReportsCommand());
    commands.push_back(MakeReportCommand(write_pdf));
    commands.push_back(MakeFindingsCommand());
    commands.push_back(MakeExplainCommand());
    commands.push_back(MakeAcceptCommand());
    commands.push_back(MakeAcceptedCommand());
    commands.push_back(MakeLogCommand());
    std::vector<std::pair<CLI::App*, BatchCommand*>> registered;
    registered.reserve(commands.size());
    for (const auto& command : commands)
        registered.emplace_back(command->Register(program), command.get());

    try {
        std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());  // as the parser wants them
        program.parse(std::move(reversed));
    } catch (const CLI::ParseError& error) {
        return program.exit(error, out, err) == 0 ? kDone : kUsage;
    }
    for (const auto& [parsed, command] : registered) {
        if (parsed->parsed()) return RunCommand(*command, options, out, err);
    }
    return kUsage;
}

}  // namespace zorvel

// zorvel-batch log: the log of the last session as rich text.
#include <CLI/CLI.hpp>

#include "batch/command.h"
#include "platform/clock.h"
#include "shell/log.h"
#include "viewers/log_rtf.h"

namespace zorvel {
namespace {

class LogCommand final : public BatchCommand {
  public:
    CLI::App* Register(CLI::App& program) override {
        return program.add_subcommand("log", "Print the log as rich text (RTF)");
    }

    ExitStatus Run(BatchSession& session) override {
        // The core is not started: it would begin a log of its own.
        const SystemClock clock;
        const std::string name = Log(session.files(), clock).LogFileName();
        WriteLogAsRtf(session.files().Open(name), [&](std::string_view rtf) { session.out() << rtf; });
        return kDone;
    }
};

}  // namespace

std::unique_ptr<BatchCommand> MakeLogCommand() {
    return std::make_unique<LogCommand>();
}

}  // namespace zorvel

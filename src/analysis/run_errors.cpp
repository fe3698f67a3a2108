#include "analysis/run_errors.h"

#include "shell/formats.h"
#include "shell/report_error.h"

namespace zorvel {

bool EndsRun(const Error& error) {
    return error.IsOutputError() || error.number() == errors::kDirectoryUnreadable;
}

RunErrors::RunErrors(Services& services) : services_(services) {}

void RunErrors::Report(const Error& error, int line, std::string_view consequence) {
    services_.sounds.PlayEventSound(services_.options.session.WarningSound);
    services_.ui.Tell("Error no." + ErrorText(error) + " occurred in butGenerate at Line" + PlainNumber(line),
                      MessageIcon::kNone, error.detail());
    LogUnexpectedError(services_.log, error,
                       "butGenerate procedure at Line" + PlainNumber(line) + std::string(consequence));
}

}  // namespace zorvel

#include "shell/report_error.h"

#include "shell/formats.h"

namespace zorvel {

std::string ErrorText(const Error& error) {
    return PlainNumber(error.number()) + " (" + error.description() + ")";
}

void LogUnexpectedError(Log& log, const Error& error, std::string_view where) {
    log.WriteLog("ERROR: Unexpected error #" + ErrorText(error) + " occurred in " + std::string(where));
    LogDetail(log, error);
}

void LogDetail(Log& log, const Error& error) {
    if (!error.detail().empty()) log.WriteLog("ERROR: " + error.detail());
}

}  // namespace zorvel

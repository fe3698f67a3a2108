#include "shell/report_error.h"

#include "shell/formats.h"

namespace zorvel {

std::string ErrorText(const Error& error) {
    return PlainNumber(error.number()) + " (" + error.description() + ")";
}

std::string NumberAndDescription(const Error& error) {
    return ' ' + std::to_string(error.number()) + " (" + error.description() + ')';
}

std::string LogUnexpectedError(Log& log, const Error& error, std::string_view where) {
    std::string text = "ERROR: Unexpected error #" + ErrorText(error) + " occurred in " + std::string(where);
    log.WriteLog(text);
    LogDetail(log, error);
    return text;
}

void TellUnexpectedError(UserInterface& ui, Log& log, const Error& error, std::string_view where,
                         MessageIcon icon) {
    ui.Tell(LogUnexpectedError(log, error, where), icon, error.detail());
}

void LogDetail(Log& log, const Error& error) {
    if (!error.detail().empty()) log.WriteDetail(error.detail());
}

}  // namespace zorvel

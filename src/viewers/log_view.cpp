#include "viewers/log_view.h"

#include <exception>

#include "platform/error.h"
#include "shell/report_error.h"
#include "viewers/log_rtf.h"

namespace zorvel {

bool LogView::Open(const ShowDocument& show) {
    bool shown = false;
    services_.log.WriteLog("Committing current Zorvel log file in preparation to view");
    services_.status.SetStatus(StatusPicture::kYellowBall, "Please wait a moment - Processing log file...");
    try {
        CopyLog();
        services_.log.WriteLog("Copy of log file taken successfully");
        GenerateRTF();
        // After a failure that is what an earlier conversion left, and there may be nothing.
        if (services_.files.Exists(RTFFileName())) show(RTFFileName());
        shown = true;
    } catch (...) {
        TellUnexpectedError(services_.ui, services_.log, CurrentError(), "frmViewLog",
                            MessageIcon::kCritical);
    }
    services_.status.SetIdle();
    return shown;
}

void LogView::CopyLog() {
    const Files& files = services_.files;
    Log& log = services_.log;
    log.Close();
    std::exception_ptr failure;
    try {
        if (files.Exists(CopyName())) files.Remove(CopyName());
        files.Copy(log.LogFileName(), CopyName());
    } catch (...) {
        failure = std::current_exception();
    }
    log.Open(true);  // the session goes on with it, whatever became of the copy
    if (failure) std::rethrow_exception(failure);
}

void LogView::GenerateRTF() {
    try {
        InputFile copy = services_.files.Open(CopyName());
        OutputFile rtf = services_.files.Create(RTFFileName());
        WriteLogAsRtf(std::move(copy), [&](std::string_view bytes) { rtf.Write(bytes); });
        rtf.Close();
    } catch (...) {
        const Error error = CurrentError();
        services_.ui.Tell("Unexpected error" + ErrorText(error) + " occurred in GenerateRTF routine.",
                          MessageIcon::kCritical, error.detail());
        services_.log.WriteLog("WARNING: GenerateRTF: Unexpected error #" + ErrorText(error) +
                               " occurred - continuing...");
        LogDetail(services_.log, error);
    }
}

}  // namespace zorvel

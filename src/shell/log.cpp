#include "shell/log.h"

#include "platform/code_page.h"
#include "platform/error.h"
#include "shell/formats.h"

namespace zorvel {

Log::Log(const Files& files, const Clock& clock) : files_(files), clock_(clock) {}

std::string Log::LogFileName() const {
    return files_.Path("Zorvel.log");
}

void Log::Open(bool append) {
    file_.reset();
    file_ = append ? files_.Append(LogFileName()) : files_.Create(LogFileName());
}

void Log::Close() {
    file_.reset();
}

void Log::WriteDetail(std::string_view detail) {
    WriteLog("ERROR: " + std::string(detail));
    if (on_detail) on_detail(detail);
}

void Log::WriteLog(std::string_view message) {
    if (!file_) return;
    const bool severe = BeginsIgnoringCase(message, "WARNING") || BeginsIgnoringCase(message, "ERROR");
    const DateTime now = clock_.Now();
    if (now != time_ || time_text_.empty()) {
        time_ = now;
        time_text_ = DateAndTime(now);
    }
    try {
        file_->Write(time_text_);
        file_->Write(severe ? " " : "    ");
        file_->Write(message);
        file_->Write("\r\n");
    } catch (const OutputError&) {
        // The log tells of errors; its own would only hide the one that is being told.
    }
}

}  // namespace zorvel

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
    if (!use_) use_.emplace(files_.Resolve(LogFileName()), LogFileName());
    if (!append && use_->TryAlone()) files_.Create(LogFileName()).Close();
    file_ = files_.Append(LogFileName());
    use_->Share();
}

void Log::Close() {
    file_.reset();
}

void Log::WriteDetail(std::string_view detail) {
    WriteLog("ERROR: " + std::string(detail));
    if (on_detail) on_detail(detail);
}

void Log::WriteWarning(std::string_view text) {
    WriteLog("WARNING: " + std::string(text));
    if (on_detail) on_detail(text);
}

void Log::WriteLog(std::string_view message) {
    if (!file_) return;
    AddLine(message);
    WriteLines();
}

void Log::WriteLog(std::span<const std::string> messages) {
    if (!file_) return;
    for (const std::string& message : messages)
        AddLine(message);
    WriteLines();
}

void Log::AddLine(std::string_view message) {
    const bool severe = BeginsIgnoringCase(message, "WARNING") || BeginsIgnoringCase(message, "ERROR");
    const DateTime now = clock_.Now();
    if (now != time_ || time_text_.empty()) {
        time_ = now;
        time_text_ = DateAndTime(now);
    }
    lines_ += time_text_;
    lines_ += severe ? " " : "    ";
    lines_ += message;
    lines_ += "\r\n";
}

void Log::WriteLines() {
    try {
        file_->Write(lines_);
        file_->Flush();
    } catch (const OutputError&) {
        // The log tells of errors; its own would only hide the one that is being told.
    }
    lines_.clear();
}

}  // namespace zorvel

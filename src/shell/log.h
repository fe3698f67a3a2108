// The session log, Zorvel.log in the program folder.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/clock.h"
#include "platform/file_lock.h"
#include "platform/files.h"

namespace zorvel {

class Log {
  public:
    Log(const Files& files, const Clock& clock);

    // The path text of the log file.
    std::string LogFileName() const;

    // Opens the log for appending, unless `append` is set without its older lines; those of a program that
    // has it open now stay in any case. Raises an error when it cannot be opened.
    void Open(bool append);
    // Closes the log until it is opened again; others do not empty it meanwhile.
    void Close();

    // Appends one line: the local time, and the message indented by three blanks unless it begins with
    // "WARNING" or "ERROR" in any case. Does nothing while the log is closed. The line is in the file when
    // this returns; lines that a full disk does not take follow when it takes them, as far as there are few.
    void WriteLog(std::string_view message);
    // Appends a line for each of several messages of one moment, all at once.
    void WriteLog(std::span<const std::string> messages);
    // Appends the detail of an error as an ERROR line, or a WARNING line, and tells on_detail of it.
    void WriteDetail(std::string_view detail);
    void WriteWarning(std::string_view text);
    // Called with each detail and warning; set where there is nobody to read the log.
    std::function<void(std::string_view)> on_detail;

  private:
    void AddLine(std::string_view message);
    void WriteLines();

    const Files& files_;
    const Clock& clock_;
    std::optional<FileLock> use_;  // tells other programs that the file is in use
    std::optional<OutputFile> file_;
    DateTime time_;  // of the last line, and its text: most lines share their second with the one before
    std::string time_text_;
    std::string lines_;  // those that are being written
};

}  // namespace zorvel

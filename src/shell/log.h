// The session log, Zorvel.log in the program folder.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/clock.h"
#include "platform/files.h"

namespace zorvel {

class Log {
  public:
    Log(const Files& files, const Clock& clock);

    // The path text of the log file.
    std::string LogFileName() const;

    // Opens the log, truncated or for appending. Raises an OutputError.
    void Open(bool append);
    // Closes the log, so that others can read the file whole.
    void Close();
    bool is_open() const { return file_.has_value(); }

    // Appends one line: the local time, and the message indented by three blanks unless it begins with
    // "WARNING" or "ERROR" in any case. Does nothing while the log is closed. Lines that the disk no longer
    // takes are dropped.
    void WriteLog(std::string_view message);
    // Appends the detail of an error as an ERROR line, and tells on_detail of it.
    void WriteDetail(std::string_view detail);
    // Called with each detail; set where there is nobody to read the log.
    std::function<void(std::string_view)> on_detail;

  private:
    const Files& files_;
    const Clock& clock_;
    std::optional<OutputFile> file_;
    DateTime time_;  // of the last line, and its text: most lines share their second with the one before
    std::string time_text_;
};

}  // namespace zorvel

// The results file of a Find run: rich text that lists the entries found under their applications and
// streams.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/files.h"

namespace zorvel {

class FindResults {
  public:
    explicit FindResults(const Files& files);

    // Replaces the file of the last run by one without results. This and everything below raises an
    // OutputError when the file cannot be written.
    void Create();
    // What AddEntry adds from now on belongs to this stream; its heading comes before its first entry.
    void BeginStream(std::string_view application_name, std::string_view stream_label);
    void AddEntry(std::string_view entry_text);
    // Closes the file, which is open from a stream's first entry to its end.
    void EndStream();
    // Completes the file.
    void Finish();

    const std::string& path() const { return path_; }

  private:
    void WriteHeading();

    const Files& files_;
    std::string path_;
    std::string application_name_;
    std::string stream_label_;
    std::optional<OutputFile> file_;
    std::string line_;
};

}  // namespace zorvel

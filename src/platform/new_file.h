// A file that is written beside the one it is to replace.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "platform/output_file.h"

namespace zorvel {

// How the name of a file of the program ends while it is written beside the one that it is to replace.
inline constexpr std::string_view kNewFileEnd = ".new";

class NewFile {
  public:
    // Begins a file that is to take the place of `target` (a real path), or of the file that a link there
    // leads to; `name` is what errors call it. A file of the program's stands beside it as `target` +
    // kNewFileEnd, where a killed program leaves it for the next to overwrite; one of the user's has a name
    // that nobody can guess. Raises an OutputError (61, 70, 75, 76), 70 when `target` is write-protected.
    NewFile(const std::filesystem::path& target, std::string name, OutputFile::Kind kind);
    // Removes the file unless it was moved to its place.
    ~NewFile();
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;
    NewFile(NewFile&&) = delete;
    NewFile& operator=(NewFile&&) = delete;

    OutputFile& file() { return *file_; }
    // Puts the file, which is whole and closed, in the place of the older one, whose permissions it gets.
    // Raises an OutputError, and then the older one is as it was.
    void MoveIntoPlace();

  private:
    std::filesystem::path target_;
    std::filesystem::path beside_;
    std::string name_;
    std::optional<std::filesystem::perms> older_permissions_;
    std::optional<OutputFile> file_;
    bool moved_ = false;
};

}  // namespace zorvel

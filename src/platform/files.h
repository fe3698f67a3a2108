// The program folder's files, under the path texts that the program shows and logs.
//
// A path text is the real program folder followed by "\" and names separated by "\". Names are found as a
// case-insensitive file system would find them. A text that does not begin with the program folder is a path
// of its own, separated by "\" or "/".
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/clock.h"
#include "platform/input_file.h"
#include "platform/output_file.h"

namespace zorvel {

class Files {
  public:
    // `program_folder` must exist; it is made absolute.
    explicit Files(const std::filesystem::path& program_folder);

    // The real program folder as text of the code page, without a separator at its end.
    const std::string& ProgramFolder() const { return program_folder_; }
    // The path text of a file beneath the program folder: ProgramFolder + "\" + `relative`.
    std::string Path(std::string_view relative) const;

    // The real path of a path text: each name as it is spelled on disk, exact spelling first; names that do
    // not exist stay as given. Raises error 76 when a name holds "/" or a NUL or is "..".
    std::filesystem::path Resolve(std::string_view path) const;

    // True when `path` is an existing file (not a folder); false also when that cannot be found out. Raises
    // error 76 as Resolve does.
    bool Exists(std::string_view path) const;
    // Opens a file. Raises error 53 (no such file), 70, 75 (also for what is no ordinary file) or 76 (no such
    // folder).
    InputFile Open(std::string_view path) const;
    // The whole content of a file. Raises what Open raises, and error 75 on a read error.
    std::string Read(std::string_view path) const;
    // Creates a file for its owner alone, emptying an older one. Raises an OutputError with number 61, 70, 75
    // or 76.
    OutputFile Create(std::string_view path) const;
    // Writes a file of the program's in the place of `path`: beside it first, as `path` + ".new", so that at
    // every moment, also when writing fails or the program is killed, the older or the new one is there,
    // whole. It keeps an older file's permissions and does not replace what is write-protected. One process
    // at a time may do so. Raises what `write` raises, and an OutputError that names `path`.
    void WriteInPlace(std::string_view path, const std::function<void(OutputFile&)>& write) const;
    // Opens a file for appending, creating it when it does not exist. Raises an OutputError as Create does.
    OutputFile Append(std::string_view path) const;
    // Deletes a file. Raises error 53, 70, 75 or 76 (a file in the place of a folder).
    void Remove(std::string_view path) const;
    // Copies a file byte for byte, replacing an older one. Raises 53 for a missing source, an OutputError for
    // the target.
    void Copy(std::string_view from, std::string_view to) const;
    // Renames a file within its folder. Raises error 53, 58 (the new name exists), 70, 75 or 76.
    void Rename(std::string_view from, std::string_view to) const;
    // Puts a file in the place of another of its folder, at once: `to` is one or the other at every moment.
    // Raises error 53, 70, 75 or 76.
    void Replace(std::string_view from, std::string_view to) const;
    // The size of a file in bytes. Raises error 53, 70, 75 (no ordinary file, a read error) or 76.
    std::uint64_t Size(std::string_view path) const;
    // The local time at which a file or folder was last modified. Raises error 53, 70, 75 (a read error)
    // or 76.
    DateTime Modified(std::string_view path) const;
    // The names of the files in `folder` that begin with `prefix` and end with `suffix`, without regard to
    // case, sorted. A folder that is missing or cannot be read has none. Raises error 76 as Resolve does.
    std::vector<std::string> List(std::string_view folder, std::string_view prefix,
                                  std::string_view suffix) const;

  private:
    std::filesystem::path folder_;
    std::string program_folder_;
};

}  // namespace zorvel

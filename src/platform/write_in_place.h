// Writing a file so that the one it replaces is whole until the new one is.
#pragma once

#include <filesystem>
#include <functional>

#include "platform/output_file.h"

namespace zorvel {

// Writes a file of the user's in the place of `path` (a real path): beside it first, so that an older file of
// that name stays when writing fails. It replaces the file that a link leads to, keeps an older file's
// permissions, and does not replace what is write-protected; pipes and devices are written to directly.
// Raises what `write` raises, and an OutputError (61, 70, 75, 76) that names `path`.
void WriteInPlace(const std::filesystem::path& path, const std::function<void(OutputFile&)>& write);

}  // namespace zorvel

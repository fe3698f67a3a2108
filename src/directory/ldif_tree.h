// Reads an LDIF export into a tree.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string_view>

#include "directory/memory_tree.h"
#include "directory/schema.h"
#include "platform/files.h"

namespace zorvel {

// The schema of trees whose export holds none, relative to the program folder.
inline constexpr std::string_view kBundledSchema = R"(Trees\nds-schema.ldif)";

// Reads the LDIF file `path` (a path text). Raises error 600 when it, or the schema it needs, cannot be read;
// the detail says where ("file, line N: ...") and why.
std::unique_ptr<MemoryTree> LoadLdifTree(const Files& files, std::string_view path);

// The schema of trees that hold none. Raises error 600 as LoadLdifTree does.
Schema LoadBundledSchema(const Files& files);

// Reads the tree of an LDIF export; what its URLs name must lie in the folder of `path`, where it lies
// itself, or below it. `open_schema` opens the schema for a tree that holds none. Raises error 600 with the
// place and the reason for what is no tree, and the file errors of both.
std::unique_ptr<MemoryTree> ReadLdifTree(InputFile file, std::filesystem::path path,
                                         const std::function<InputFile()>& open_schema);

}  // namespace zorvel

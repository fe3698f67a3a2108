// Makes the databases that the program is delivered with.
#pragma once

#include <filesystem>

namespace zorvel {

// Makes the dataset template and the empty master catalogue from the schema file. An older template is
// replaced; a master catalogue that exists stays, with the datasets it lists. Raises an error when a file
// cannot be read or made.
void MakeDatabases(const std::filesystem::path& schema, const std::filesystem::path& template_file,
                   const std::filesystem::path& master_file);

}  // namespace zorvel

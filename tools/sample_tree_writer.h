// Writes a made-up directory tree, of any size, as an LDIF export.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "platform/output_file.h"

namespace zorvel::tools {

struct SampleTreeOptions {
    std::string tree = "CORP_TREE";  // names the first organisation, too, by what precedes "_TREE"
    std::uint64_t seed = 1;
    std::size_t containers = 60;  // 1 or more
    std::size_t applications = 150;
    std::size_t entries = 40;  // of the streams of an application, on average; its flaws can add some
    bool addresses = true;     // whether entries hold addresses: of machines, of web pages
};

// The same options give the same bytes on every machine. Memory is needed for the containers only, 16 bytes
// each, and for the largest stream. Raises error 5 for no containers or a
// tree without a name, and OutputErrors.
void WriteSampleTree(const SampleTreeOptions& options, OutputFile& file);

}  // namespace zorvel::tools

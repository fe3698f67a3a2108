// Streams in which none of the predefined searches finds anything, for measuring how fast that is found out.
#pragma once

#include <cstddef>
#include <string>

namespace zorvel::tools {

// A stream of file copies and registry values, about `size` bytes long. The same arguments give the same
// bytes.
std::string StreamWithoutMatch(std::size_t size, std::size_t number);

}  // namespace zorvel::tools

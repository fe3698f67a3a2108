// What the engine of regular expressions knows of the code page's characters.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace zorvel {

// The engine's tables of the 256 codes (those that pcre2_maketables makes in any locale), in which every
// letter of the code page has its other case and ASCII alone has digits, white space and word characters.
// Raises error 430 when `made` is not laid out as it is known to be.
std::vector<std::uint8_t> CharacterTables(std::span<const std::uint8_t> made);

}  // namespace zorvel

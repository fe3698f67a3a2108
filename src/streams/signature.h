// The signature value of a text, from which fingerprints are summed.
#pragma once

#include <cstdint>
#include <string>

namespace zorvel {

// Turns `text` into upper case, in place, and returns the sum of its characters' codes.
// Raises error 6 when the sum exceeds 32 bits (signed).
std::int32_t ConvertToSig(std::string& text);

// `total` + `signature`. Raises error 6 when the sum does not fit 32 bits.
std::int32_t AddSignature(std::int32_t total, std::int32_t signature);

}  // namespace zorvel

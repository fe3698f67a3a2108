// Base64 (RFC 4648, section 4), decoded strictly.
#pragma once

#include <cstddef>
#include <optional>
#include <span>

namespace zorvel {

// Decodes `text` in place: the bytes stand at its beginning, and their number is returned. Nothing is
// returned when the text is not base64: a character outside the alphabet, padding elsewhere than at the end,
// or a length that is no multiple of four. `fault` is then the offset of the first character at fault, or the
// length of a text cut short.
std::optional<std::size_t> DecodeBase64(std::span<char> text, std::size_t& fault);

}  // namespace zorvel

// Records laid out by their offsets, for streams that no builder makes.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace zorvel::test {

struct RawHeader {
    int type = 0;
    int action = 1;
    int length = 0;                    // the length value, as a word
    std::optional<int> flags = {};     // a word
    std::optional<int> at_first = {};  // the byte for the first string's length, or for a code
    char unused = 0;                   // all other bytes
};

// A header of 20 bytes, and one of 16.
inline std::string Header(const RawHeader& header, std::size_t size = 20) {
    std::string bytes(size, header.unused);
    const auto put = [&](std::size_t offset, int value) { bytes[offset] = static_cast<char>(value); };
    put(0, header.type);
    put(4, header.action);
    put(8, header.length & 0xFF);
    put(9, header.length >> 8);
    if (header.flags) put(12, *header.flags & 0xFF);
    if (header.flags) put(13, *header.flags >> 8);
    if (header.at_first) put(size - 4, *header.at_first);
    return bytes;
}
inline std::string ShortHeader(const RawHeader& header) {
    return Header(header, 16);
}

// A string behind the slot with its length, or with that of a longer one.
inline std::string Slot(std::string_view text, std::size_t length = 0, char unused = 0) {
    if (length == 0) length = text.size();
    std::string bytes(4, unused);
    bytes[0] = static_cast<char>(length & 0xFF);
    if (length > 0xFF) bytes[1] = static_cast<char>(length >> 8);
    return bytes + std::string(text);
}

}  // namespace zorvel::test

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

inline std::string HeaderBytes(const RawHeader& header, std::size_t size) {
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

// The headers of 20 and of 16 bytes.
inline std::string Header(const RawHeader& header) {
    return HeaderBytes(header, 20);
}
inline std::string ShortHeader(const RawHeader& header) {
    return HeaderBytes(header, 16);
}

// A string behind the slot with its length, or with that of a longer one.
inline std::string Slot(std::string_view text, std::size_t length, char unused = 0) {
    std::string bytes(4, unused);
    bytes[0] = static_cast<char>(length & 0xFF);
    if (length > 0xFF) bytes[1] = static_cast<char>(length >> 8);
    return bytes + std::string(text);
}
inline std::string Slot(std::string_view text) {
    return Slot(text, text.size());
}

}  // namespace zorvel::test

// One record of a stream, as its header describes it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "streams/stream_cursor.h"

namespace zorvel {

// How the header of a record type lies in the stream. Offsets are counted from the record's first byte; 0
// stands for a field that the type does not have.
struct HeaderLayout {
    // What the length value says of the bytes after the header.
    enum class Data {
        kNone,         // nothing: the fields are read from the stream by their own lengths
        kFirstString,  // it bounds the first string, and nothing else
        kRecord,   // it is the record's length, header included; 0 leaves that to the lengths of the strings
        kBounded,  // the same, and no field may lie beyond it
    };

    std::size_t size = 0;             // bytes of the header
    std::size_t length_bytes = 0;     // 1 or 2: the size of the length value at offset 8
    std::size_t first_length_at = 0;  // the byte with the first string's length
    bool has_flags = false;           // a flags word at offset 12
    Data data = Data::kNone;
};

struct Record {
    // What a report of a failure tells of the record; all 0 until it is read.
    std::uint8_t type = 0;
    std::uint8_t action = 0;
    std::int32_t header_length = 0;  // in force: 0 when the length value does not include the header
    std::int32_t length_value = 0;
    std::int32_t first_length = 0;
    std::int32_t flags = 0;

    StreamCursor header;  // the header's bytes
    StreamCursor fields;  // what follows it, within the record's length where the type is bounded by it
    std::size_t first_size = 0;  // bytes of the first string as actually read

    // Takes the first string of a type that has a length value. The length value can cut it short.
    // Raises error 9 when the stream ends before the string does.
    std::string_view TakeFirstString();
};

// Reads the header of the record at the beginning of `rest`, a stream's remaining bytes, into `record`, whose
// type is set. Raises error 9 when the header is not whole, error 5 when a length value is below the length
// of the header that it includes.
void ReadHeader(std::string_view rest, const HeaderLayout& layout, Record& record);

}  // namespace zorvel
